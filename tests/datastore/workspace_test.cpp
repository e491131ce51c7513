// Opening and making databases, spans, transactions, and what the operator reads when a file can't be used.
#include <chrono>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "datastore/engine/connection.h"
#include "datastore/schema.h"
#include "datastore/small_database.h"
#include "support/test_server.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

void WriteFile(const fs::path& file, std::string_view content) {
    std::ofstream(file, std::ios::binary) << content;
}

/// Changes the file as a program of another make or version would.
void RunRaw(const fs::path& file, const std::string& sql) {
    sqlite3* raw = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &raw), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(raw, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(raw);
    sqlite3_close(raw);
}

/// Sets the engine's own knobs.
void RunOnEngine(Database& database, const std::string& sql) {
    EXPECT_TRUE(database.Engine().Query(sql, {})->Next());
}

struct Refused {
    std::string name;
    int error;
    std::string words;
};

TEST(Workspace, TellsWhyAFileIsNoDatabase) {
    TempFolder folder;
    Workspace workspace;
    WriteFile(folder.Path() / "empty.mdb", "");
    WriteFile(folder.Path() / "text.mdb", "This is a letter to the agency and no database at all.");
    WriteFile(folder.Path() / "jet.mdb",
              std::string("\0\1\0\0Standard Jet DB\0\1\0\0\0", 24) + std::string(4096, '\0'));
    WriteFile(folder.Path() / "ace.accdb",
              std::string("\0\1\0\0Standard ACE DB\0\2\0\0\0", 24) + std::string(4096, '\0'));
    WriteFile(folder.Path() / "torn.mdb", "SQLite format 3" + std::string(200, '\x7f'));
    fs::create_directory(folder.Path() / "folder.mdb");
    RunRaw(folder.Path() / "other.mdb", "create table t (a)");
    for (const auto& [name, change] : {std::pair{"older.mdb", "pragma user_version = 0"},
                                       std::pair{"newer.mdb", "pragma user_version = 99"}}) {
        workspace.CreateDatabase(folder.Path() / name, "create table t (a LONG)");
        RunRaw(folder.Path() / name, change);
    }
    const Refused cases[] = {
        {"none.mdb", 3024, "none.mdb"},
        {"nowhere/kestrava.mdb", 3024, "kestrava.mdb"},
        {"empty.mdb", 3343, "not a database of this program"},
        {"text.mdb", 3343, "not a database of this program"},
        {"torn.mdb", 3343, "not a database of this program"},
        {"other.mdb", 3343, "not a database of this program"},
        {"jet.mdb", 3343, "Access file. Import it into a database"},
        {"ace.accdb", 3343, "Access file"},
        {"folder.mdb", 3051, "can't be opened"},
        {"older.mdb", 3343, "kvtool copy"},
        {"newer.mdb", 3343, "newer version"},
    };
    for (const Refused& entry : cases) {
        try {
            workspace.OpenDatabase(folder.Path() / entry.name);
            ADD_FAILURE() << entry.name << " was opened";
        } catch (const EngineError& error) {
            EXPECT_EQ(error.Number(), entry.error) << entry.name;
            EXPECT_THAT(error.Description(), HasSubstr(entry.words)) << entry.name;
        }
    }
    const DatabasePtr older = workspace.OpenDatabase(folder.Path() / "older.mdb", SchemaCheck::Ignored);
    EXPECT_EQ(RowsOf(*older, "t").size(), 0U);
    EXPECT_EQ(ErrorOf([&] { workspace.OpenDatabase(folder.Path() / "older.mdb"); }), 3343)
        << "that it is open already makes it no newer";
}

TEST(Workspace, AnOldLogIsNotPlayedIntoANewDatabase) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "a.mdb";
    Workspace workspace;
    {
        const DatabasePtr old = workspace.CreateDatabase(file, "create table t (a long)");
        old->Execute("insert into t (a) values (1)");
        // What a killed program leaves when somebody deletes the database alone.
        fs::copy(file.string() + "-wal", folder.Path() / "kept");
    }
    fs::remove(file);
    fs::rename(folder.Path() / "kept", file.string() + "-wal");
    const DatabasePtr made = workspace.CreateDatabase(file, "create table t (a long)");
    EXPECT_EQ(RowsOf(*made, "t").size(), 0U);
}

TEST(Workspace, FindsAFileUnderAnySpelling) {
    if (TestServer::Wanted())
        GTEST_SKIP() << "about files";
    SmallDatabase small;
    const std::string folder = small.places.Folder().Path().string();
    const DatabasePtr upper = small.workspace.OpenDatabase(folder + "/SMALL.MDB");
    const DatabasePtr backslash = small.workspace.OpenDatabase(folder + "\\small.mdb");
    EXPECT_EQ(upper->Name(), small.File().filename());
    EXPECT_EQ(&upper->Engine(), &small->Engine());
    EXPECT_EQ(&backslash->Engine(), &small->Engine());
}

TEST(Workspace, ClosesTheFileWithItsLastHandle) {
    if (TestServer::Wanted())
        GTEST_SKIP() << "about files";
    SmallDatabase small;
    DatabasePtr second = small.workspace.OpenDatabase(small.Place());
    small.database.reset();
    EXPECT_EQ(second->Lookup("select count(*) from people").ToInteger(), 4);
    second.reset();
    EXPECT_FALSE(fs::exists(small.File().string() + "-wal"));
    EXPECT_EQ(small.workspace.OpenDatabase(small.Place())->Lookup("select count(*) from people").ToInteger(),
              4);
}

TEST(Workspace, MakesADatabaseWholeOrNotAtAll) {
    TempFolder folder;
    Workspace workspace;
    const fs::path file = folder.Path() / "made.mdb";
    EXPECT_EQ(
        ErrorOf([&] { workspace.CreateDatabase(file, "create table a (x LONG); create table b (x WHAT)"); }),
        3290);
    EXPECT_TRUE(fs::is_empty(folder.Path()));
    const DatabasePtr made = workspace.CreateDatabase(file, R"(-- a remark; with a semicolon
        create table a (x TEXT(5) DEFAULT ';');

        -- another
        create index a_x on a (x);;)");
    EXPECT_EQ(made->Tables().Names(), std::vector<std::string>{"a"});
    EXPECT_EQ(made->Tables().Find("A")->columns[0].defaultValue, Value(";"));
    EXPECT_EQ(
        ErrorOf([&] { workspace.CreateDatabase(folder.Path() / "MADE.mdb", "create table a (x LONG)"); }),
        3204);
    EXPECT_EQ(ErrorOf([&] { workspace.CreateDatabase(folder.Path() / "no/made.mdb", ""); }), 3024);
    EXPECT_THAT(made->CheckIntegrity(), testing::IsEmpty());
}

TEST(Workspace, ReadsTheCatalogueBackFromTheFile) {
    SmallDatabase small;
    small.database.reset();
    const DatabasePtr again = small.workspace.OpenDatabase(small.Place());
    const TableInfo& people = *again->Tables().Find("PEOPLE");
    EXPECT_EQ(again->Tables().Names().size(), 5U);
    ASSERT_EQ(people.columns.size(), 10U);
    EXPECT_EQ(people.columns[1].size, 20);
    EXPECT_TRUE(people.columns[0].required);
    EXPECT_EQ(people.columns[2].defaultValue, Value("unknown"));
    EXPECT_EQ(people.columns[4].type, ColumnType::DateTime);
    EXPECT_EQ(people.columns[5].defaultValue, Value(0));
    EXPECT_EQ(people.columns[6].defaultValue, Value(false));
    EXPECT_EQ(people.columns[7].defaultValue, Value(Currency()));
    EXPECT_EQ(people.columns[8].type, ColumnType::Memo);
    ASSERT_EQ(people.indexes.size(), 2U);
    EXPECT_TRUE(people.indexes[0].primary);
    EXPECT_EQ(people.indexes[1].name, "people_name");
    EXPECT_THAT(people.indexes[1].columns, ElementsAre("lastname", "firstnam"));
    const TableInfo& visits = *again->Tables().Find("visits");
    EXPECT_EQ(visits.Counter(), 0U);
    EXPECT_TRUE(visits.indexes[0].primary);
    EXPECT_THAT(again->Tables().Find("keyed")->indexes[0].columns, ElementsAre("a", "b"));
}

TEST(Workspace, EveryDatabaseOfTheSchemaIsMade) {
    TempFolder folder;
    Workspace workspace;
    for (const std::string& name : SchemaNames()) {
        const DatabasePtr made =
            workspace.CreateDatabase(folder.Path() / (name + ".mdb"), SchemaScript(name));
        EXPECT_FALSE(made->Tables().Names().empty()) << name;
        for (const std::string& table : made->Tables().Names())
            EXPECT_EQ(made->Lookup("select count(*) from [" + table + "]"), Value(0)) << table;
    }
}

TEST(Spans, ShareOneViewUntilTheyWrite) {
    SmallDatabase small;
    Workspace otherSeat;
    const DatabasePtr other = otherSeat.OpenDatabase(small.Place());
    const auto count = [&] { return small->Lookup("select count(*) from visits").ToInteger(); };
    const std::int64_t before = small->ChangeStamp();
    EXPECT_EQ(small->ChangeStamp(), before);
    {
        const ReadSpan outer = small->BeginRead();
        EXPECT_EQ(count(), 3);
        {
            const ReadSpan inner = small->BeginRead();
            other->Execute("insert into visits (client) values ('x')");
            EXPECT_EQ(count(), 3);
        }
        EXPECT_EQ(count(), 3);
        // On a view that another made old the engine itself would refuse to write.
        small->Execute("insert into visits (client) values ('y')");
        EXPECT_EQ(count(), 5);
        other->Execute("delete from visits where client = 'x'");
        EXPECT_EQ(count(), 5);
        Recordset rows = small->OpenRecordset("visits");
        rows.AddNew();
        rows.Set("client", "z");
        rows.Update();
        EXPECT_EQ(count(), 5);
    }
    EXPECT_NE(small->ChangeStamp(), before);
    EXPECT_EQ(count(), 5);
}

TEST(Spans, TransactionsInsideAndOutside) {
    SmallDatabase small;
    const auto count = [&] { return small->Lookup("select count(*) from visits").ToInteger(); };
    {
        const ReadSpan span = small->BeginRead();
        EXPECT_EQ(count(), 3);
        {
            Transaction undone = small->BeginTransaction();
            small->Execute("delete from visits");
            EXPECT_EQ(count(), 0);
            small->BeginTransaction().Commit();  // belongs to the one around it
            EXPECT_EQ(count(), 0);
            EXPECT_EQ(ErrorOf([&] { small->Execute("insert into visits (sequence) values (null)"); }), 0);
        }
        EXPECT_EQ(count(), 3);
        {
            Transaction half = small->BeginTransaction();
            small->Execute("delete from visits");
            { const Transaction inner = small->BeginTransaction(); }
            EXPECT_EQ(ErrorOf([&] { half.Commit(); }), 3219) << "a step of it was undone";
        }
        EXPECT_EQ(count(), 3);
        Transaction done = small->BeginTransaction();
        small->Execute("delete from visits where sequence = 1");
        done.Commit();
        EXPECT_EQ(count(), 2);
    }
    small->Execute("delete from visits");
    EXPECT_EQ(count(), 0);
}

TEST(Spans, AStampTellsOfEveryWriter) {
    SmallDatabase small;
    Workspace otherSeat;
    const DatabasePtr other = otherSeat.OpenDatabase(small.Place());
    std::int64_t last = small->ChangeStamp();
    const auto changed = [&] {
        const std::int64_t now = small->ChangeStamp();
        return std::exchange(last, now) != now;
    };
    EXPECT_FALSE(changed());
    other->Execute("update visits set hrs = 1");
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    bool seen = changed();  // a server does not tell, so that it may take a moment
    while (!seen && std::chrono::steady_clock::now() < end)
        seen = changed();
    EXPECT_TRUE(seen);
    EXPECT_FALSE(changed());
    small->Execute("update visits set hrs = 2");
    EXPECT_TRUE(changed());
    EXPECT_FALSE(changed());
    small->Lookup("select count(*) from visits");
    EXPECT_FALSE(changed());
}

TEST(Engine, ABusyDatabaseFailsWithClearWords) {
    if (TestServer::Wanted())
        GTEST_SKIP() << "about files";
    SmallDatabase small;
    Workspace otherSeat;
    const DatabasePtr other = otherSeat.OpenDatabase(small.Place());
    const Transaction holding = other->BeginTransaction();
    RunOnEngine(*small, "pragma busy_timeout = 20");
    EXPECT_EQ(ErrorOf([&] { small->Execute("delete from visits"); }), 3260);
    EXPECT_EQ(ErrorOf([&] { small->BeginTransaction(); }), 3260);
    EXPECT_EQ(small->Lookup("select count(*) from visits").ToInteger(), 3);  // readers never wait
}

TEST(Engine, AFullDiskFailsWithClearWords) {
    if (TestServer::Wanted())
        GTEST_SKIP() << "about files";
    SmallDatabase small;
    // The engine answers as on a full disk when the file may not grow.
    RunOnEngine(*small, "pragma max_page_count = 1");
    EXPECT_EQ(ErrorOf([&] {
                  Recordset rows = small->OpenRecordset("people");
                  rows.Edit();
                  rows.Set("notes", std::string(1000000, 'x'));
                  rows.Update();
              }),
              3183);
    EXPECT_EQ(small->Lookup("select notes from people where client = 'A01'"), Value("first"));
}

TEST(Values, JoinIntoStatementsAsTypedValues) {
    EXPECT_EQ(Sql("a = {} and b = {} and c in ({}) and d = {} and e = {} order by {}", "x", 5,
                  TextList{{"1", "2"}}, Date::FromCivil(2026, 1, 31), Value(), Raw{"f desc"}),
              "a = 'x' and b = 5 and c in ('1','2') and d = #2026/01/31# and e = null order by f desc");
    EXPECT_EQ(Sql("{} {} {} {}", true, 2.5, Currency::FromDouble(1.25), Value(Date(46023.5))),
              "true 2.5 1.25 #2026/01/01 12:00:00#");
    EXPECT_EQ(Sql("{}", DoubledApostrophes{"C:\\O'Brien.doc"}), "'C:\\O''Brien.doc'");
    EXPECT_EQ(ErrorOf([] { Sql("a = {}", "O'Brien"); }), 3075);
    EXPECT_EQ(ErrorOf([] { Sql("a in ({})", TextList{{"x", "O'Brien"}}); }), 3075);
    EXPECT_EQ(ErrorOf([] { Sql("a = {}", Value("O'Brien")); }), 3075);
    EXPECT_THROW(Sql("a = {} and b = {}", 1), std::logic_error);
}

struct Conversion {
    Value value;
    std::string text;
    double number;
};

TEST(Values, Convert) {
    const Conversion cases[] = {
        {true, "True", -1},
        {false, "False", 0},
        {-7, "-7", -7},
        {2.5, "2.5", 2.5},
        {Currency::FromDouble(1234.56785), "1234.5679", 1234.5679},
        {Date::FromCivil(2026, 1, 31, 15, 5), "1/31/2026 3:05:00 PM", 46053 + 905.0 / 1440},
        {Date::FromCivil(2026, 1, 31), "1/31/2026", 46053},
        {Date::FromTime(15, 5), "3:05:00 PM", 905.0 / 1440},
        {" 1,250.5 ", " 1,250.5 ", 1250.5},
    };
    for (const Conversion& entry : cases) {
        EXPECT_EQ(entry.value.ToText(), entry.text);
        EXPECT_DOUBLE_EQ(entry.value.ToDouble(), entry.number) << entry.text;
    }
    EXPECT_EQ(Value(2.5).ToInteger(), 2);
    EXPECT_EQ(Value(3.5).ToInteger(), 4);
    EXPECT_EQ(Value(-2.5).ToInteger(), -2);
    EXPECT_EQ(Value(2.6).ToInteger(), 3);
    EXPECT_EQ(Value("Yes").ToBoolean(), true);
    EXPECT_EQ(Value("-1").ToBoolean(), true);
    EXPECT_EQ(Value("2026-01-31").ToDate(), Date(46053));
    EXPECT_EQ(Value(nullptr).NumberOr(7), 7);
    EXPECT_FALSE(Value(nullptr).IsTrue());
    EXPECT_EQ(ErrorOf([] { Value(nullptr).ToDouble(); }), 94);
    EXPECT_EQ(ErrorOf([] { Value("many").ToDouble(); }), 3421);
    EXPECT_EQ(ErrorOf([] { Value("many").ToBoolean(); }), 3421);
    EXPECT_EQ(ErrorOf([] { Value("31.31.31").ToDate(); }), 3421);
    EXPECT_EQ(ErrorOf([] { Value(1e300).ToInteger(); }), 3421);
    EXPECT_TRUE(IsBlank(Value("  ")));
    EXPECT_TRUE(IsBlank(Value()));
    EXPECT_FALSE(IsBlank(Value(0)));
}

}  // namespace
}  // namespace kv::test
