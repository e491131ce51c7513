#include <gmock/gmock.h>

#include "base/platform.h"
#include "support/jet_file.h"
#include "tool/tool_run.h"

namespace kv {
namespace {

using namespace test;
using namespace test::jet_type;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<std::string> Skipped(const nlohmann::ordered_json& document) {
    return document["skipped"].get<std::vector<std::string>>();
}

/// import-mdb of one file with these tables, which must succeed; its document.
nlohmann::ordered_json Import(const ToolFolder& folder, const std::string& name,
                              const std::vector<JetTable>& tables) {
    const Answer answer = folder.Run({"import-mdb", folder.Write(name, JetFile(tables))});
    EXPECT_EQ(answer.status, 0) << answer.err;
    return answer.status == 0 ? answer.Document() : nlohmann::ordered_json();
}

std::string Text(std::string_view text) {
    return JetText(std::u16string(text.begin(), text.end()));
}

JetTable Holidays(std::vector<JetRow> rows) {
    return {"HOLIDAYS", {{"date", kMoment}, {"description", kText, 100}, {"own_note", kMemo, 0}},
            {},         std::move(rows),
            {},         1};
}

TEST(ImportMdb, FillsTheSchemasTablesAndMakesTheOthers) {
    const ToolFolder folder;
    JetTable clients{
        "clientpr", {{"client", kText, 20}, {"own_color", kText, 40}, {"own_pay", kMoney}}, {}, {}, {}, 1};
    clients.rows = {{Text("00017"), Text("green"), JetNumber(125001, 8)}, {Text("00018"), "", std::nullopt}};
    JetTable visits{"Sch_day", {{"sequence", kLong, 4, true}, {"client", kText, 20}, {"paperwork", kBoolean}},
                    {},        {},
                    {},        1};
    visits.rows = {{JetLong(40), Text("00017"), ""}, {JetLong(7), Text("00018"), std::nullopt}};
    JetTable own{
        "Our notes", {{"no", kLong, 4, true}, {"order", kText, 20}, {"said", kMemo, 0}}, {}, {}, {}, 1};
    own.indexes = {{"PrimaryKey", {0}, true, true}, {"by order", {1}, false, true}};
    own.rows = {{JetLong(5), Text("x"), JetText(std::u16string(40000, u'y'))}};
    const auto document = Import(folder, "KESTRAVA.MDB", {clients, visits, own});
    EXPECT_EQ(document.dump(), R"({"tables":3,"rows":5,"skipped":[]})");

    EXPECT_EQ(folder.Rows("select client, own_color, own_pay, lastname from clientpr order by client"),
              R"([["00017","green",12.5001,null],["00018","",null,null]])");
    EXPECT_EQ(folder.Rows("select sequence, client, paperwork from sch_day order by sequence"),
              R"([[7,"00018",false],[40,"00017",true]])");
    EXPECT_EQ(folder.Rows("select [no], [order], len(said) from [our notes]"), R"([[5,"x",40000]])");
    // Counters go on, keys and indexes hold.
    folder.Do({"sql", "insert into sch_day (client) values ('00018')"});
    folder.Do({"sql", "insert into [our notes] ([order]) values ('z')"});
    EXPECT_EQ(folder.Rows("select max(sequence) from sch_day"), "[[41]]");
    EXPECT_EQ(folder.Rows("select max([no]) from [our notes]"), "[[6]]");
    EXPECT_THAT(folder.Run({"sql", "insert into [our notes] ([order]) values ('z')"}).err, HasSubstr("3022"));
    EXPECT_THAT(folder.Run({"sql", "insert into clientpr (client) values ('00017')"}).err, HasSubstr("3022"));
    EXPECT_EQ(folder.Run({"check"}).Document()["problems"].dump(), "[]");
}

TEST(ImportMdb, TrueIsOneInAColumnOfNumbers) {
    const ToolFolder folder;
    JetTable skills{"skills", {{"code", kText, 20}, {"critical", kBoolean}, {"own_mark", kBoolean}},
                    {},       {{Text("OX"), "", ""}, {Text("CO"), std::nullopt, std::nullopt}},
                    {},       1};
    JetTable known{"Holidays", {{"date", kMoment}, {"own_count", kLong}}, {}, {}, {}, 1};
    known.rows = {{JetDouble(46000), JetLong(-1)}};
    EXPECT_EQ(Import(folder, "main.mdb", {skills, known})["skipped"].dump(), "[]");
    EXPECT_EQ(folder.Rows("select code, critical, own_mark from skills order by code", "main"),
              R"([["CO",0,false],["OX",1,true]])");
    EXPECT_EQ(folder.Rows("select code from skills where critical = 1", "main"), R"([["OX"]])")
        << "so the search for a caregiver asks for it";
    EXPECT_EQ(folder.Rows("select own_count from holidays", "main"), "[[-1]]") << "a number stays";
}

TEST(ImportMdb, NamesEachRowAndColumnThatIsLeftBehind) {
    const ToolFolder folder;
    JetTable clients{
        "ClientPR", {{"CLIENT", kText, 100}, {"zip", kMemo, 0}, {"picture", kOle, 0}}, {}, {}, {}, 1};
    clients.rows = {{Text("00001"), Text("12345"), "\x01"},
                    {Text("00002"), Text(std::string(300, '1')), std::nullopt},
                    {Text("00001"), std::nullopt, std::nullopt},
                    {std::nullopt, std::nullopt, std::nullopt},
                    {Text("00003"), std::nullopt, std::nullopt}};
    JetTable visits{"sch_day", {{"sequence", kDouble}, {"st_date", kMoment}}, {}, {}, {}, 1};
    visits.rows = {
        {JetDouble(1.5), std::nullopt}, {JetDouble(9), JetDouble(1e300)}, {JetDouble(3), JetDouble(46000)}};
    const auto document =
        Import(folder, "kestrava.mdb",
               {clients, visits, {"Linked", {}, {}, {}, {}, 6}, {"Pictures", {{"p", kOle}}, {}, {}, {}, 1}});
    EXPECT_EQ(document["rows"], 3);
    EXPECT_EQ(document["tables"], 2);
    EXPECT_THAT(
        Skipped(document),
        ElementsAre(
            "kestrava.mdb: table Linked: it is linked, its rows lie in another file",
            "kestrava.mdb: table ClientPR, column picture: binary content is not kept",
            HasSubstr(
                "kestrava.mdb: table ClientPR, row 2 (CLIENT 00002), column ZIP: The field is too small"),
            HasSubstr("table ClientPR, row 3 (CLIENT 00001): The changes you requested"),
            HasSubstr("table ClientPR, row 4: The field 'CLIENT' cannot contain a Null"),
            "kestrava.mdb: table sch_day, row 1 (sequence 1.5), column sequence: 1.5 is no whole number",
            "kestrava.mdb: table sch_day, row 2, column st_date: the value is damaged",
            "kestrava.mdb: table Pictures, column p: binary content is not kept",
            "kestrava.mdb: table Pictures: none of its columns can be kept"));
    EXPECT_EQ(folder.Rows("select client, zip from clientpr order by client"),
              R"([["00001","12345"],["00003",null]])");
    EXPECT_EQ(folder.Rows("select sequence from sch_day"), "[[3]]");
}

TEST(ImportMdb, AnAgencyThatComesInReplacesTheOneOfANewFolder) {
    const auto agency = [](std::vector<JetRow> rows) {
        return JetTable{"Agency", {{"ag_name", kText, 100}, {"own_code", kLong}}, {}, std::move(rows), {}, 1};
    };
    const ToolFolder filled;
    EXPECT_EQ(Import(filled, "main.mdb", {agency({{Text("Our House"), JetLong(3)}})})["rows"], 1);
    EXPECT_EQ(filled.Rows("select ag_name, own_code, wkending from agency", "main"),
              R"([["Our House",3,null]])");
    // Without one that the program can take its own stays, with the columns that came.
    const ToolFolder none;
    EXPECT_EQ(Import(none, "main.mdb",
                     {agency({{Text(std::string(51, 'x')), std::nullopt}}), Holidays({})})["rows"],
              0);
    EXPECT_EQ(none.Rows("select ag_name, own_code, wkending from agency", "main"),
              R"([["Home Care Agency",null,"SAT"]])");
    EXPECT_EQ(none.Run({"check"}).Document()["problems"].dump(), "[]");
}

TEST(ImportMdb, ReadsAFileThatAccessWrote) {
    const ToolFolder folder;
    const auto real = ReadFile(KV_SOURCE_DIR "/tests/exchange/data/users.mdb");
    const Answer answer = folder.Run({"import-mdb", folder.Write("Archive.mdb", real.value())});
    EXPECT_EQ(answer.out, "{\"tables\":1,\"rows\":3,\"skipped\":[]}\n") << answer.err;
    EXPECT_EQ(folder.Rows("select userid, username, userbirthday, usermarried from users", "archive"),
              "[[1,\"Nuintun\",\"1989-01-25 00:00:00\",true],[2,\"Angela\",\"1988-12-18 00:00:00\",false],"
              "[3,\"\u5F20\u4E09\",\"1986-12-18 00:00:00\",true]]");
}

TEST(ImportMdb, WhatCantBeUsedIsRefusedAndChangesNothing) {
    const std::string good = JetFile({Holidays({{JetDouble(46000), Text("New"), std::nullopt}})});
    struct Case {
        std::vector<std::pair<std::string, std::string>> files;
        const char* words;
    };
    const Case cases[] = {
        {{{"main.mdb", good}, {"tempassign.mdb", good}}, "is named for no database"},
        {{{"main.mdb", good}, {"old/MAIN.mdb", good}}, "Two files are named for the database main"},
        {{{"main.mdb", good}, {"kestrava.mdb", ""}}, "kestrava.mdb' is no Access file"},
        {{{"main.mdb", good}, {"kestrava.mdb", good.substr(0, 5000)}}, "kestrava.mdb' can't be read"},
        {{{"main.mdb", good}, {"archive.mdb", JetFile({{"Sch_day", {{"client"}}, {}, {}, {}, 1}})}},
         "The table Sch_day of archive"},
    };
    const ToolFolder folder;
    std::filesystem::create_directory(folder.Path("old"));
    folder.Do({"sql", "--db", "archive", "insert into sch_day (client) values ('00001')"});
    for (const Case& c : cases) {
        std::vector<std::string> arguments = {"import-mdb"};
        for (const auto& [name, content] : c.files)
            arguments.push_back(folder.Write(name, content));
        const Answer answer = folder.Run(arguments);
        EXPECT_EQ(answer.status, 1) << c.words;
        EXPECT_THAT(answer.err, HasSubstr(c.words));
        EXPECT_EQ(folder.Rows("select count(*) from holidays", "main"), "[[0]]") << c.words;
    }
    EXPECT_EQ(folder.Run({"import-mdb"}).status, 2);
    const ToolFolder empty(ToolFolder::Empty);
    EXPECT_THAT(empty.Run({"import-mdb", folder.Path("main.mdb").string()}).err, HasSubstr("3024"));
}

TEST(ImportMdb, ALostPageIsToldWithTheNumberOfItsRows) {
    const ToolFolder folder;
    std::string content = JetFile({Holidays({{JetDouble(46000), Text("Lost day"), std::nullopt}})});
    constexpr std::size_t kPage = 4096;
    content.replace(content.find(Text("Lost day")) / kPage * kPage, kPage, kPage, '\0');
    const Answer answer = folder.Run({"import-mdb", folder.Write("main.mdb", content)});
    EXPECT_THAT(Skipped(answer.Document()),
                ElementsAre("main.mdb: table HOLIDAYS: 1 of its 1 rows can't be found: it is damaged"));
}

}  // namespace
}  // namespace kv
