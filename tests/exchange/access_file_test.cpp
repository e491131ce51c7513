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
    std::vector<std::string> indexes;
    for (const IndexInfo& index : table.Info().indexes)
        indexes.push_back(index.name +
                          (index.primary  ? " primary"
                           : index.unique ? " unique"
                                          : "") +
                          " on " + Join(index.columns, ","));
    EXPECT_THAT(indexes, ElementsAre("PrimaryKey primary on id", "byName on name,id", "once unique on name"));

    const std::vector<std::string> one = Lines(file.OpenTable("Wide"));
    ASSERT_EQ(one.size(), 1U);
    EXPECT_THAT(one[0], testing::EndsWith("|248|249"));
}

TEST(AccessFile, WhatIsNoSoundFileIsRefusedWithWords) {
    const std::string real = RealFile();
    std::string strange = real;
    strange[0x14] = '\x63';  // the form's number
    std::string listless = real;
    listless.replace(2 * kPage, kPage, kPage, '\0');
    std::string lostList = real;
    lostList.replace(17 * kPage, kPage, kPage, '\0');  // the list's own rows
    const std::pair<std::string, const char*> cases[] = {
        {"", "is no Access file"},
        {"This is a text.", "is no Access file"},
        {real.substr(0, 100), "can't be read: "},
        {real.substr(0, 3 * kPage), "list of tables is damaged"},
        {strange, "a form of Access that is not known"},
        {listless, "list of tables is damaged"},
        {lostList, "list of tables is damaged"},
    };
    for (const auto& [content, words] : cases)
        EXPECT_THAT(WordsOf(Written(content).Path()), HasSubstr(words)) << content.size();
    EXPECT_THAT(WordsOf("/nowhere/kestrava.mdb"), HasSubstr("can't be found"));
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
