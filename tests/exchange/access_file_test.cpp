#include "exchange/access_file.h"

#include <random>

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "base/numbers.h"
#include "base/platform.h"
#include "base/text.h"
#include "support/jet_file.h"
#include "support/test_agency.h"

namespace kv {
namespace {

using namespace test;
using namespace test::jet_type;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::size_t kPage = 4096;

std::string RealFile() {
    return ReadFile(KV_SOURCE_DIR "/tests/exchange/data/users.mdb").value();
}

/// A file of the tests' own in a folder of its own.
class Written {
  public:
    explicit Written(const std::string& content) : path_(folder_.Path() / "kestrava.mdb") {
        ReplaceFile(path_, content);
    }
    explicit Written(const std::vector<JetTable>& tables) : Written(JetFile(tables)) {}
    const std::filesystem::path& Path() const { return path_; }
    AccessFile Open() const { return AccessFile(path_); }

  private:
    TempFolder folder_;
    std::filesystem::path path_;
};

std::string Shown(const Value& value) {
    if (value.IsNull())
        return "Null";
    return value.Type() == ValueType::Date ? IsoText(value.ToDate()) : value.ToText();
}

/// Each row in one line, a row that can't be read as its words.
std::vector<std::string> Lines(AccessTable table) {
    std::vector<std::string> lines;
    std::vector<Value> row;
    for (bool more = true; more;) {
        try {
            more = table.Next(row);
            if (!more)
                break;
            std::vector<std::string> cells;
            for (const Value& value : row)
                cells.push_back(Shown(value));
            lines.push_back(Join(cells, "|"));
        } catch (const AccessError& error) {
            lines.push_back(std::string("error: ") + error.what());
        }
    }
    return lines;
}

std::string WordsOf(const std::filesystem::path& path) {
    try {
        const AccessFile file(path);
        return "opened";
    } catch (const AccessError& error) {
        return error.what();
    }
}

JetTable People() {
    JetTable people{"People", {{"id", kLong, 4, true}, {"name", kText, 60}, {"note", kMemo, 0}}, {}, {}, {}};
    people.indexes = {{"PrimaryKey", {0}, true, true}, {"byName", {1, 0}, false, false}};
    for (int i = 1; i <= 5; ++i)
        people.rows.push_back({JetLong(i), JetText(u"somebody"), JetText(std::u16string(3000, u'n'))});
    return people;
}

std::vector<std::string> IndexesOf(const AccessTable& table) {
    std::vector<std::string> indexes;
    for (const IndexInfo& index : table.Info().indexes)
        indexes.push_back(index.name +
                          (index.primary  ? " primary"
                           : index.unique ? " unique"
                                          : "") +
                          " on " + Join(index.columns, ","));
    return indexes;
}

TEST(AccessFile, ReadsWhatAccessWrote) {
    const AccessFile file(KV_SOURCE_DIR "/tests/exchange/data/users.mdb");
    EXPECT_THAT(file.TableNames(), ElementsAre("Users"));
    EXPECT_THAT(file.Untaken(), IsEmpty());
    const AccessTable users = file.OpenTable("Users");
    EXPECT_EQ(users.StatedRows(), 3);
    std::vector<std::string> columns;
    for (const ColumnInfo& column : users.Info().columns)
        columns.push_back(fmt::format("{} {} {}{}", column.name, static_cast<int>(column.type), column.size,
                                      column.counter ? " counter" : ""));
    EXPECT_THAT(columns, ElementsAre("UserId 2 0 counter", "UserName 6 255", "UserSex 6 255",
                                     "UserBirthday 5 0", "UserMarried 0 0"));
    EXPECT_THAT(
        Lines(file.OpenTable("Users")),
        ElementsAre("1|Nuintun|Male|1989-01-25 00:00:00|True", "2|Angela|Female|1988-12-18 00:00:00|False",
                    "3|\u5F20\u4E09|\u7537|1986-12-18 00:00:00|True"));
}

TEST(AccessFile, KeepsEachTypeAndTellsNullFromEmptyText) {
    const std::string guid(16, '\x11');
    const Written written(std::vector<JetTable>{
        {"Kinds",
         {{"id", kLong, 4, true},
          {"b", kBoolean},
          {"by", kByte},
          {"mo", kMoney},
          {"dt", kMoment},
          {"tx", kText, 60},
          {"me", kMemo, 0},
          {"pic", kOle, 0},
          {"gu", kGuid},
          {"de", kDecimal, 17, false, 18, 2},
          {"fine", kDecimal, 17, false, 28, 10},
          {"raw", kBinary, 20}},
         {},
         {{JetLong(7), "", "\xC8", JetNumber(127505, 8), JetDouble(-1.25), JetText(u"a"), JetText(u"memo"),
           "pic", guid, std::string(13, '\0') + JetNumber(1250, 4), std::string(13, '\0') + JetNumber(1, 4),
           "raw"},
          {JetLong(9), {}, {}, {}, {}, "", "", {}, {}, {}, {}, {}},
          {JetLong(8), {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}}},
         {},
         1},
        {"Away", {}, {}, {}, {}, 6}});
    const AccessFile file = written.Open();
    EXPECT_THAT(file.TableNames(), ElementsAre("Kinds"));
    EXPECT_THAT(file.Untaken(), ElementsAre("table Away: it is linked, its rows lie in another file"));
    const AccessTable kinds = file.OpenTable("Kinds");
    EXPECT_THAT(kinds.Untaken(), ElementsAre("column pic: binary content is not kept",
                                             "column raw: binary content is not kept"));
    EXPECT_EQ(kinds.Info().columns[5].size, 30) << "characters, not bytes";
    EXPECT_THAT(
        Lines(file.OpenTable("Kinds")),
        ElementsAre("7|True|200|12.7505|1899-12-29 06:00:00|a|memo|{11111111-1111-1111-1111-111111111111}|"
                    "12.5|0.0000000001",
                    "9|False|Null|Null|Null|||Null|Null|Null",
                    "8|False|Null|Null|Null|Null|Null|Null|Null|Null"));
}

TEST(AccessFile, MemosComeWholeWhereverTheyLie) {
    JetTable memos{"Memos", {{"note", kMemo, 0}}, {}, {}, {}, 1};
    std::vector<std::string> expected;
    for (const std::size_t length : {1U, 32U, 33U, 2000U, 2001U, 4000U, 70000U}) {
        std::u16string text;
        for (std::size_t i = 0; i < length; ++i)
            text += static_cast<char16_t>(u'a' + i % 26);
        memos.rows.push_back({JetText(text)});
        expected.emplace_back(text.begin(), text.end());
    }
    const Written written(std::vector<JetTable>{memos});
    const std::vector<std::string> read = Lines(written.Open().OpenTable("Memos"));
    ASSERT_EQ(read.size(), expected.size());
    for (std::size_t i = 0; i < read.size(); ++i)
        EXPECT_TRUE(read[i] == expected[i]) << read[i].size() << " for " << expected[i].size();
}

TEST(AccessFile, ReadsKeysManyPagesAndWideTablesWithoutWhatWasDeleted) {
    JetTable many{"Many", {{"id", kLong, 4, true}, {"name", kText, 60}}, {}, {}, {}, 1};
    many.indexes = {
        {"PrimaryKey", {0}, true, true}, {"byName", {1, 0}, false, false}, {"once", {1}, false, true}};
    for (int i = 0; i < 3000; ++i)
        many.rows.push_back({JetLong(i), JetText(u"name")});
    for (std::size_t i = 0; i < 3000; i += 3)
        many.deleted.insert(i);
    JetTable wide{"Wide", {}, {}, {{}}, {}, 1};
    for (int i = 0; i < 250; ++i) {
        wide.columns.push_back({.name = fmt::format("a_column_with_a_long_name_{}", i), .type = kShort});
        wide.rows[0].push_back(JetNumber(static_cast<std::uint64_t>(i), 2));
    }
    const Written written(std::vector<JetTable>{many, wide});
    const AccessFile file = written.Open();

    const std::vector<std::string> rows = Lines(file.OpenTable("Many"));
    ASSERT_EQ(rows.size(), 2000U);
    EXPECT_EQ(rows.front(), "1|name");
    EXPECT_EQ(rows.back(), "2999|name");
    const AccessTable table = file.OpenTable("Many");
    EXPECT_EQ(table.StatedRows(), 2000);
    EXPECT_THAT(IndexesOf(table),
                ElementsAre("PrimaryKey primary on id", "byName on name,id", "once unique on name"));

    const std::vector<std::string> one = Lines(file.OpenTable("Wide"));
    ASSERT_EQ(one.size(), 1U);
    EXPECT_THAT(one[0], testing::EndsWith("|248|249"));
}

TEST(AccessFile, ReadsJet3) {
    // Rows of more than 256 and 512 bytes have tables of jumps.
    const std::string memo(5000, 'm');
    JetTable people{"People",
                    {{"id", kLong, 4, true},
                     {"name", kText, 60},
                     {"about", kText, 255},
                     {"more", kText, 255},
                     {"note", kMemo, 0},
                     {"here", kBoolean}},
                    {{"PrimaryKey", {0}, true, true}},
                    {{JetLong(1), "Zo\xEB", "a", "b", "short", ""},
                     {JetLong(2), "Ann", std::string(250, 'a'), std::string(250, 'b'), memo, {}},
                     {JetLong(3), "", std::string(255, 'a'), {}, {}, ""},
                     {JetLong(4), "Zo\x81", {}, {}, {}, {}},
                     {JetLong(5), std::string("a\0b\0\0", 5), {}, {}, {}, {}},
                     {JetLong(6), std::string("ab\0\0", 4), {}, {}, {}, {}}},
                    {},
                    1};
    const auto read = [&](int codePage) {
        const Written written(
            JetFile({people}, {.version = JetVersion::Jet3, .key = 0, .codePage = codePage}));
        return Lines(written.Open().OpenTable("People"));
    };
    EXPECT_THAT(
        read(1252),
        ElementsAre("1|Zo\u00EB|a|b|short|True",
                    "2|Ann|" + std::string(250, 'a') + "|" + std::string(250, 'b') + "|" + memo + "|False",
                    "3||" + std::string(255, 'a') + "|Null|Null|True",
                    "error: column name: the text is damaged", "error: column name: the text is damaged",
                    "6|ab|Null|Null|Null|False"));
    EXPECT_THAT(read(1251), testing::Contains("1|Zo\u043B|a|b|short|True"));

    const Written written(JetFile({people}, {.version = JetVersion::Jet3}));
    const AccessFile file = written.Open();
    const AccessTable table = file.OpenTable("People");
    EXPECT_EQ(table.Info().columns[1].size, 60);
    EXPECT_THAT(IndexesOf(table), ElementsAre("PrimaryKey primary on id"));
}

TEST(AccessFile, ReadsWhatJetEncipheredAndTellsOfWhatAccess2007Encrypted) {
    const std::vector<std::string> sound = Lines(Written({People()}).Open().OpenTable("People"));
    const auto read = [](const std::string& content) {
        return Lines(Written(content).Open().OpenTable("People"));
    };
    EXPECT_EQ(read(JetFile({People()}, {.key = 0x1234ABCD})), sound);
    EXPECT_EQ(read(JetFile({People()}, {.version = JetVersion::Ace2007})), sound);
    // A password alone encrypts nothing.
    std::string locked = JetFile({People()});
    locked[0x42] ^= 0x55;
    EXPECT_EQ(read(locked), sound);

    const std::string encrypted = JetFile({People()}, {.version = JetVersion::Ace2007, .key = 0x1234ABCD});
    EXPECT_THAT(WordsOf(Written(encrypted).Path()),
                testing::EndsWith("can't be read: it is encrypted with a password; take the password off in "
                                  "Access first"));
}

TEST(AccessFile, ColumnsThatCameLaterAreNullInTheRowsBefore) {
    // What stands behind the mask of a short row is the count of columns of the one before: odd, so that its
    // lowest bit would tell that the ninth column is there.
    JetTable grown{"Grown", {}, {}, {}, {}, 1};
    for (int i = 0; i < 8; ++i)
        grown.columns.push_back({.name = fmt::format("n{}", i), .type = kLong, .deleted = i == 1});
    grown.columns.push_back({.name = "later", .type = kLong});
    grown.columns.push_back({.name = "text", .type = kText});
    grown.columns.push_back({.name = "tick", .type = kBoolean});
    grown.indexes = {{"byThird", {2}, false, false}};
    const JetRow full(11, JetLong(0x01010101));
    const JetRow early(8, JetLong(0x01010101));
    grown.rows = {full, early};
    grown.rows[0][9] = JetText(u"x");
    const Written written(std::vector<JetTable>{grown});
    const std::string number = std::to_string(0x01010101);
    const std::string seven = Join(std::vector<std::string>(7, number), "|");
    const AccessFile file = written.Open();
    EXPECT_THAT(IndexesOf(file.OpenTable("Grown")), ElementsAre("byThird on n2"));
    EXPECT_THAT(Lines(file.OpenTable("Grown")),
                ElementsAre(seven + "|" + number + "|x|True", seven + "|Null|Null|False"));
}

TEST(AccessFile, CalculatedColumnsOfAccess2010AreTold) {
    // Their values have a head of their own.
    const JetTable orders{"Orders", {{"id", kLong}, {.name = "total", .type = kText, .calculated = true}},
                          {},       {{JetLong(1), std::string(23, '\x02')}},
                          {},       1};
    const Written written(JetFile({orders}, {.version = JetVersion::Ace2010}));
    const AccessFile file = written.Open();
    EXPECT_THAT(file.OpenTable("Orders").Untaken(),
                ElementsAre("column total: calculated values are not kept"));
    EXPECT_THAT(Lines(file.OpenTable("Orders")), ElementsAre("1"));
}

TEST(AccessFile, WhatIsNoSoundFileIsRefusedWithWords) {
    const std::string real = RealFile();
    std::string strange = real;
    strange[0x14] = '\x63';  // the form's number
    std::string listless = real;
    listless.replace(2 * kPage, kPage, kPage, '\0');
    std::string lostList = real;
    lostList.replace(17 * kPage, kPage, kPage, '\0');  // the list's own rows
    std::string older = real;
    older[0x14] = '\0';  // Jet 3, whose pages are of another size
    std::string key = real;
    key[0x3E] ^= 0x10;
    const std::pair<std::string, const char*> cases[] = {
        {"", "is no Access file"},
        {"This is a text.", "is no Access file"},
        {real.substr(0, 100), "can't be read: "},
        {real.substr(0, 3 * kPage), "list of tables is damaged"},
        {strange, "a form of Access that is not known"},
        {listless, "list of tables is damaged"},
        {lostList, "list of tables is damaged"},
        {older, "list of tables is damaged"},
        {key, "list of tables is damaged"},
    };
    for (const auto& [content, words] : cases)
        EXPECT_THAT(WordsOf(Written(content).Path()), HasSubstr(words)) << content.size();
    EXPECT_THAT(WordsOf("/nowhere/kestrava.mdb"), HasSubstr("can't be found"));
}

TEST(AccessFile, ATableWhoseDefinitionBreaksOffIsRefused) {
    // All of the definition but the last column's name is on the first page.
    JetTable wide{"Wide", {}, {}, {{}}, {}, 1};
    for (int i = 0; i < 32; ++i) {
        wide.columns.push_back({.name = fmt::format("{:_>{}}", i, i == 0 ? 55 : 51), .type = kShort});
        wide.rows[0].push_back(JetNumber(7, 2));
    }
    const auto read = [&](std::optional<std::size_t> goesOnAt) {
        std::string content = JetFile({wide});
        if (goesOnAt)
            content.replace(3 * kPage + 4, 4, JetNumber(*goesOnAt, 4));
        const Written written(content);
        try {
            return Lines(written.Open().OpenTable("Wide")).at(0);
        } catch (const AccessError& error) {
            return std::string(error.what());
        }
    };
    EXPECT_THAT(read(std::nullopt), testing::StartsWith("7|7|7|"));
    // Nowhere, outside the file, on a page of rows, on the first page again.
    for (const std::size_t page : {0, 9999, 4, 3})
        EXPECT_EQ(read(page), "its definition is damaged") << page;
}

TEST(AccessFile, ADamagedPageCostsItsOwnRowsAlone) {
    const std::string whole = JetFile({People()});
    const auto rowsOf = [](const std::string& content) {
        const Written written(content);
        std::vector<std::string> lines = Lines(written.Open().OpenTable("People"));
        for (std::string& line : lines)
            line = Left(line, 40) + fmt::format("... {}", line.size());
        return lines;
    };
    const std::vector<std::string> good = rowsOf(whole);
    std::string lostMemo = whole;
    lostMemo.replace(whole.find("LVAL") - 4, kPage, kPage, '\0');
    EXPECT_THAT(rowsOf(lostMemo), ElementsAre(HasSubstr("error: column note: the memo is"), good[1], good[2],
                                              good[3], good[4]));
    // It would be read as a text.
    std::string otherPage = whole;
    otherPage.replace(whole.find("LVAL"), 4, JetNumber(3, 4));
    EXPECT_THAT(rowsOf(otherPage)[0], HasSubstr("error: column note: the memo is"));
    std::string lostRows = whole;
    lostRows.replace(whole.find(JetText(u"somebody")) / kPage * kPage, kPage, kPage, '\0');
    const Written written(lostRows);
    EXPECT_THAT(Lines(written.Open().OpenTable("People")), IsEmpty());
    EXPECT_EQ(written.Open().OpenTable("People").StatedRows(), 5) << "so that the loss can be told";
}

/// Reads all that can be read; how many rows and faults there were.
std::pair<long, long> ReadAll(const std::filesystem::path& path) {
    std::pair<long, long> counts;
    try {
        const AccessFile file(path);
        for (const std::string& name : file.TableNames()) {
            try {
                const auto lines = Lines(file.OpenTable(name));
                for (const std::string& line : lines)
                    ++(line.rfind("error: ", 0) == 0 ? counts.second : counts.first);
            } catch (const AccessError&) {
                ++counts.second;
            }
        }
    } catch (const AccessError&) {
        ++counts.second;
    }
    return counts;
}

TEST(AccessFile, DamageOfAnyKindEndsInRowsOrWords) {
    const std::vector<std::string> sources = {RealFile(), JetFile({People()})};
    std::mt19937 random(20260304);
    const auto below = [&](std::size_t end) { return random() % end; };
    long rows = 0;
    long faults = 0;
    for (int round = 0; round < 240; ++round) {
        std::string content = sources[static_cast<std::size_t>(round) % sources.size()];
        if (round % 8 == 0) {
            content.resize(below(content.size()));
        } else {
            // On one page, where its head and its tables of offsets are hit often.
            const std::size_t page = (1 + below(content.size() / kPage - 1)) * kPage;
            const std::size_t reach = round % 3 == 0 ? kPage : 64;
            for (std::size_t flips = 1 + below(40); flips > 0; --flips)
                content[page + below(reach)] = static_cast<char>(random());
        }
        const auto counts = ReadAll(Written(content).Path());
        rows += counts.first;
        faults += counts.second;
    }
    EXPECT_GT(rows, 100);
    EXPECT_GT(faults, 20);
}

}  // namespace
}  // namespace kv
