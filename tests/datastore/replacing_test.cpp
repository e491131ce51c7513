// What gives its place to a copy: nobody's rows may go with it, and nobody may go on in it.
#include "datastore/replacing.h"

#include <atomic>
#include <thread>

#include <gmock/gmock.h>
#include <sqlite3.h>

#include "datastore/engine/connection.h"
#include "datastore/small_database.h"
#include "support/other_program.h"
#include "support/test_server.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::HasSubstr;

constexpr const char* kCount = "select count(*) from people";
constexpr const char* kAdd = "insert into people (client) values ('Z99')";

/// Keeps what it is told, a line for each table.
struct Told {
    TableLook Look() {
        return [this](const std::string& database, const std::string& table, long rows) {
            lines.push_back(database + " " + table + " " + std::to_string(rows));
        };
    }
    std::vector<std::string> lines;
};

void Refuse(const std::string& /*database*/, const std::string& /*table*/, long /*rows*/) {
    throw EngineError(1, "no");
}

class HeldFilesTest : public testing::Test {
  protected:
    void SetUp() override {
        if (TestServer::Wanted())
            GTEST_SKIP() << "about files";
        small = std::make_unique<SmallDatabase>();
        file = small->File();
    }
    void Close() { small->database.reset(); }
    std::int64_t Count() { return small->workspace.OpenDatabase(file)->Lookup(kCount).ToInteger(); }

    std::unique_ptr<SmallDatabase> small;
    fs::path file;
};

TEST_F(HeldFilesTest, AreNobodyElses) {
    EXPECT_THAT(WordsOf([&] { HeldFiles held({file}); }), HasSubstr("is open in another program"));
    Close();
    Told told;
    {
        const HeldFiles held({file});
        held.Look(told.Look());
        EXPECT_THAT(told.lines, Contains(file.string() + " people 4"));
        sqlite3* other = nullptr;
        EXPECT_EQ(sqlite3_open(file.c_str(), &other), SQLITE_OK);
        EXPECT_EQ(
            sqlite3_exec(other, "insert into people (client) values ('Z99')", nullptr, nullptr, nullptr),
            SQLITE_BUSY);
        sqlite3_close(other);
        EXPECT_EQ(ErrorOf([&] { held.Look(Refuse); }), 1);
    }
    EXPECT_EQ(Count(), 4) << "as before when they are let go";
    EXPECT_FALSE(fs::exists(file.string() + "-wal"));
    small->workspace.OpenDatabase(file)->Execute(kAdd);
    EXPECT_EQ(Count(), 5);
}

/// The file is open, but nothing has been read of it yet.
TEST_F(HeldFilesTest, WhoComesJustThenDoesNotGoOnInALostFile) {
    Close();
    sqlite3* late = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &late), SQLITE_OK);
    HeldFiles held({file});
    held.Drop();
    EXPECT_FALSE(fs::exists(file));
    const auto ask = [&](const char* pragma) {
        std::string answer;
        sqlite3_exec(
            late, pragma,
            [](void* to, int, char** values, char**) {
                *static_cast<std::string*>(to) = values[0];
                return 0;
            },
            &answer, nullptr);
        return answer;
    };
    EXPECT_EQ(ask("pragma application_id"), "0") << "none of this program's";
    EXPECT_EQ(ask("pragma journal_mode"), "delete") << "without the log of what comes to its place";
    sqlite3_close(late);
    EXPECT_TRUE(fs::is_empty(file.parent_path())) << "nothing stays beside it";
}

class ServerTurnTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!TestServer::Wanted())
            GTEST_SKIP() << "about the server";
        small = std::make_unique<SmallDatabase>();
        server = small->Place().server;
        other = std::make_unique<OtherProgram>(server);
        seat.CreateDatabase(DatabasePlace(server, "beside"),
                            "create table people (client text(10), place text(10))");
    }
    Database& Small() { return **small; }
    static TableLook Silent() {
        return [](const std::string&, const std::string&, long) {};
    }

    std::unique_ptr<SmallDatabase> small;
    std::string server;
    std::unique_ptr<OtherProgram> other;
    Workspace seat;
    const std::vector<std::pair<std::string, std::string>> moves = {{"beside", "small"}};
};

TEST_F(ServerTurnTest, IsOneProgramsUntilItEnds) {
    {
        const ServerTurn mine(server);
        EXPECT_THAT(WordsOf([&] { ServerTurn theirs(server); }), HasSubstr("3260 Another copy"));
    }
    ServerTurn lost(server);
    other->CutAll();
    const ServerTurn theirs(server);
    EXPECT_THAT(WordsOf([&] { lost.Move(moves, Silent()); }), HasSubstr("3151")) << "not on the others' turn";
    EXPECT_EQ(other->Ask("select count(*) from small.people"), "4");
}

TEST_F(ServerTurnTest, NobodyWritesBehindTheLook) {
    ServerTurn turn(server);
    const DatabasePtr theirs = seat.OpenDatabase(small->Place());
    theirs->Engine().Query("SET lock_timeout TO '20ms'", {});
    Told told;
    turn.Try({"small", "none"}, [&](const std::string& database, const std::string& table, long rows) {
        told.Look()(database, table, rows);
        EXPECT_EQ(ErrorOf([&] { theirs->Execute(kAdd); }), 3260);
    });
    EXPECT_THAT(told.lines, Contains("small people 4"));
    EXPECT_EQ(ErrorOf([&] { turn.Move(moves, Refuse); }), 1);
    theirs->Execute(kAdd);
    EXPECT_EQ(Small().Lookup(kCount).ToInteger(), 5) << "all is as it was, and free";

    // A row that waits meanwhile stands in what took the place.
    theirs->Engine().Query("SET lock_timeout TO '60s'", {});
    std::thread waiting;
    std::atomic<bool> written = false;
    turn.Move(moves, [&](const std::string&, const std::string&, long) {
        if (waiting.joinable())
            return;
        waiting = std::thread([&] {
            theirs->Execute("insert into people (client) values ('W01')");
            written = true;
        });
        while (!written && other->Ask("select count(*) from pg_locks where not granted") == "0") {
        }
        EXPECT_FALSE(written);
    });
    waiting.join();
    EXPECT_EQ(other->Ask("select client || coalesce(place, '') from small.people"), "W01");
}

TEST_F(ServerTurnTest, WhatOthersBuiltIsNamedAndStays) {
    struct Case {
        const char *made, *named, *removed;
    };
    const Case cases[] = {
        {"create schema reports; create view reports.names as select lastname from small_views.people",
         "view reports.names depends on view small_views.people",
         "drop view reports.names; drop schema reports"},
        {"create view small_views.names as select lastname from small.people",
         "view small_views.names depends on table small.people", "drop view small_views.names"},
        {"create table public.notes (client varchar collate kv.ci references small.people (client))",
         "public.notes depends on table small.people", "drop table public.notes"},
        {"create function small.own() returns integer language sql as 'select 1'",
         "function small.own() depends on schema small", "drop function small.own()"},
    };
    other->Ask("create unique index on small.people (client)");
    ServerTurn turn(server);
    for (const Case& c : cases) {
        other->Ask(c.made);
        for (const std::string& words :
             {WordsOf([&] { turn.Try({"small"}, Silent()); }), WordsOf([&] { turn.Move(moves, Silent()); }),
              WordsOf([&] { Workspace::DropDatabase(small->Place()); })}) {
            EXPECT_THAT(words, HasSubstr("3219 ")) << c.made;
            EXPECT_THAT(words, HasSubstr(c.named));
        }
        EXPECT_EQ(other->Ask("select count(*) from small_views.people"), "4") << "nothing was taken away";
        other->Ask(c.removed);
    }
    turn.Move(moves, Silent());
    EXPECT_EQ(other->Ask("select count(*) from small_views.people"), "0");
    EXPECT_FALSE(Workspace::HasDatabase(DatabasePlace(server, "beside")));
}

}  // namespace
}  // namespace kv::test
