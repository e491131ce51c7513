// What only the engine of a database server has: connections that break, counters and rows of other programs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "datastore/engine/connection.h"
#include "datastore/small_database.h"
#include "support/other_program.h"
#include "support/test_server.h"

namespace kv::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kRow = "select * from people where client = 'A01'";

/// Saves as an operator does who is told that the connection was lost: once more. A connection that is cut
/// just now may still look sound.
void SaveAgain(Recordset& rows) {
    try {
        rows.Update();
    } catch (const EngineError& error) {
        if (error.Number() != engine_error::kConnectionFailed)
            throw;
        rows.Update();
    }
}

class ServerEngine : public testing::Test {
  protected:
    void SetUp() override {
        if (!TestServer::Wanted())
            GTEST_SKIP() << "about the server";
        small = std::make_unique<SmallDatabase>();
        other = std::make_unique<OtherProgram>(small->Place().server);
    }
    void TearDown() override {
        if (TestServer::Wanted())
            TestServer::Get().Start();
    }
    Database& Small() { return **small; }
    std::string Name() { return Small().Lookup("select lastname from people where client = 'A01'").ToText(); }

    std::unique_ptr<SmallDatabase> small;
    std::unique_ptr<OtherProgram> other;
};

TEST_F(ServerEngine, AReadGoesOnWhenTheServerIsThereAgain) {
    Recordset rows = Small().OpenRecordset("select * from people order by client");
    TestServer::Get().Stop();
    EXPECT_THAT(WordsOf([&] { Name(); }), HasSubstr("3151 The database server can't be reached"));
    TestServer::Get().Start();
    EXPECT_EQ(Name(), "Smith");
    rows.MoveNext();
    EXPECT_EQ(rows.Text("client"), "A02") << "what was open before is still there";
    OtherProgram(small->Place().server).CutAll();
    EXPECT_EQ(Name(), "Smith") << "a connection that was cut is made again without a word";
}

TEST_F(ServerEngine, AnEditOutlivesItsConnection) {
    Workspace otherSeat;
    const DatabasePtr theirs = otherSeat.OpenDatabase(small->Place());
    Recordset mine = Small().OpenRecordset(kRow);
    mine.Edit();
    mine.Set("lastname", "Mine");
    other->CutAll();
    SaveAgain(mine);
    EXPECT_EQ(Name(), "Mine") << "the row was taken again, and nobody had changed it";

    EXPECT_EQ(mine.Text("firstnam"), "Ann");
    mine.Edit();
    mine.Set("lastname", "Again");
    other->CutAll();
    Recordset taken = theirs->OpenRecordset(kRow);
    taken.Edit();  // the lock of the first seat went with its connection
    taken.Set("firstnam", "Taken");
    EXPECT_THAT([&] { SaveAgain(mine); },
                testing::Throws<EngineError>(testing::Property(&EngineError::Number, 3186)));
    taken.Update();
    EXPECT_EQ(ErrorOf([&] { mine.Update(); }), 3197) << "what the other wrote meanwhile is told first";
    mine.Update();
    EXPECT_EQ(Name(), "Again");
    EXPECT_EQ(mine.Text("firstnam"), "Taken");
}

TEST_F(ServerEngine, NoChangeIsMadeTwiceOrInSilence) {
    const auto write = [&] { Small().Execute("update people set lastname = 'Rest' where client = 'A02'"); };
    {
        Transaction lost = Small().BeginTransaction();
        Small().Execute("update people set lastname = 'Half' where client = 'A01'");
        other->CutAll();
        EXPECT_THAT(WordsOf(write), HasSubstr("3151 The connection to the database server was lost"));
        EXPECT_THAT(WordsOf([&] { lost.Commit(); }), HasSubstr("3151"));
    }
    EXPECT_EQ(Name(), "Smith");
    write();
    EXPECT_EQ(Small().Lookup("select lastname from people where client = 'A02'"), Value("Rest"));
}

TEST_F(ServerEngine, AFailureInsideATransactionUndoesItselfAlone) {
    Transaction all = Small().BeginTransaction();
    Small().Execute("update people set lastname = 'One' where client = 'A01'");
    EXPECT_EQ(ErrorOf([&] { Small().Execute("update people set client = 'A02' where client = 'A01'"); }),
              3022);
    EXPECT_EQ(ErrorOf([&] { Small().Lookup("select cdate(lastname) from people"); }), 3421);
    Small().Execute("update people set firstnam = 'Two' where client = 'A01'");
    all.Commit();
    EXPECT_THAT(RowsOf(Small(), "select lastname, firstnam from people where client = 'A01'"),
                ElementsAre("'One' | 'Two'"));
}

TEST_F(ServerEngine, OtherProgramsSeeDatesMoneyAndPlainNames) {
    EXPECT_EQ(other->Ask("select bdate from small.People where CLIENT = 'a01'"), "1950-02-03 00:00:00");
    EXPECT_EQ(other->Ask("select Rate * 2 from small.people where client = 'A01'"), "25.0000");
    EXPECT_EQ(other->Ask("select count(*) from small.people where active and lastname = 'SMITH'"), "1");
    EXPECT_EQ(other->Ask("select count(*) from small_views.People where LastName like 'Sm%'"), "1");
    other->Ask("insert into small.visits (client, amount) values ('A03', 1234.5678)");
    EXPECT_THAT(RowsOf(Small(), "select sequence, cancelled, amount from visits where client = 'a03'"),
                ElementsAre("4 | false | $1234.5678"));
    EXPECT_EQ(Small().NextCounter("visits"), 5);

    // A table that another program makes is there when its rows can be told apart, without what this one
    // can't hold.
    other->Ask("create table small.Strange (id integer)");
    EXPECT_EQ(ErrorOf([&] { Small().OpenRecordset("strange"); }), 3078);
    other->Ask(
        "create table small.Theirs (id integer, amount real, seen date, place point, kv_row bigint "
        "generated by default as identity primary key)");
    other->Ask("insert into small.theirs values (1, 2.5, '2026-03-04', '(1,2)')");
    EXPECT_THAT(RowsOf(Small(), "select * from theirs"), ElementsAre("1 | 2.5 | #2026/03/04#"));
    other->Ask("alter table small.people add column extra varchar(7)");
    EXPECT_THAT(RowsOf(Small(), "select client, extra from people where client = 'A01'"),
                ElementsAre("'A01' | null"));
}

TEST_F(ServerEngine, NewerFunctionsAreBroughtByTheFirstSeat) {
    const auto functions = [&] {
        return other->Ask("select count(*) from pg_proc where proname = 'raise_counter'");
    };
    const auto open = [&](const DatabasePlace& place) {
        Workspace workspace;
        workspace.OpenDatabase(place, SchemaCheck::Ignored);
    };
    const auto lower = [&](const std::string& version) {
        other->Ask("comment on schema kv is '" + version + "'; drop function if exists kv.raise_counter");
    };
    const std::string present = other->Ask("select obj_description('kv'::regnamespace)");
    lower("99");
    open(small->Place());
    EXPECT_EQ(functions(), "0") << "newer ones are left alone";
    lower("1");
    other->Ask(
        "create role kv_clerk login; grant usage on schema kv, small to kv_clerk; "
        "grant select on kv.databases to kv_clerk");
    EXPECT_THAT(WordsOf([&] {
                    open({small->Place().server + " user=kv_clerk", "small"});
                }),
                HasSubstr("older functions"));
    EXPECT_EQ(functions(), "0");
    open(small->Place());
    EXPECT_EQ(functions(), "1");
    EXPECT_EQ(other->Ask("select obj_description('kv'::regnamespace)"), present);
    other->Ask("drop owned by kv_clerk; drop role kv_clerk");
}

TEST_F(ServerEngine, ABusyRowIsWaitedForAndThenTold) {
    OtherProgram holder(small->Place().server);
    holder.Ask("begin; update small.people set lastname = 'Held' where client = 'A01'");
    Small().Engine().Query("SET lock_timeout TO '20ms'", {});
    EXPECT_THAT(WordsOf([&] { Small().Execute("update people set lastname = 'Mine'"); }),
                HasSubstr("3260 The database is busy"));
    EXPECT_EQ(Name(), "Smith") << "readers never wait";
    holder.Ask("rollback");
    Small().Execute("update people set lastname = 'Mine' where client = 'A01'");
    EXPECT_EQ(Name(), "Mine");
}

}  // namespace
}  // namespace kv::test
