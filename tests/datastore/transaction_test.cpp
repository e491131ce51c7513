// What a transaction has written is there for its own statements, and for nobody else until its end.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "datastore/engine/connection.h"
#include "datastore/small_database.h"
#include "support/test_server.h"

namespace kv::test {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

class Transactions : public testing::Test {
  protected:
    Transactions() : theirs(otherSeat.OpenDatabase(small.Place())) {}

    static void AddVisit(Recordset& visits, const std::string& client, double hrs) {
        visits.AddNew();
        visits.Set("client", client);
        visits.Set("hrs", hrs);
        visits.Update();
    }
    static void SetHours(Recordset& visits, double hrs) {
        visits.Edit();
        visits.Set("hrs", hrs);
        visits.Update();
    }

    SmallDatabase small;
    Workspace otherSeat;
    DatabasePtr theirs;
};

TEST_F(Transactions, RowsAreThereForTheirOwnStatements) {
    constexpr const char* kHours = "select sequence, hrs from visits where client in ('new', 'A01')";
    Recordset visits = small->OpenRecordset("select * from visits order by sequence");
    Transaction all = small->BeginTransaction();
    for (int i = 0; i < 5; ++i)
        AddVisit(visits, "new", i);
    visits.MoveFirst();
    for (const double hrs : {7.0, 8.0}) {
        SetHours(visits, hrs);
        EXPECT_EQ(visits.Get("hrs"), Value(hrs)) << "also in the recordset itself";
    }
    visits.MoveLast();
    SetHours(visits, 9);  // a row that is new itself
    EXPECT_THAT(RowsOf(*small, "select code from [TWO WORDS]"), ElementsAre("'x'"));
    EXPECT_THAT(RowsOf(*small, kHours),
                ElementsAre("1 | 8", "2 | 2.5", "4 | 0", "5 | 1", "6 | 2", "7 | 3", "8 | 9"));
    SetHours(visits, 10);
    EXPECT_EQ(small->Execute("update visits set hrs = hrs + 1 where client = 'new'"), 5);
    visits.Delete();
    AddVisit(visits, "new", 20);
    EXPECT_EQ(small->Lookup("select sum(hrs) from visits where client = 'new'"), Value(1 + 2 + 3 + 4 + 20.0));
    all.Commit();
    EXPECT_THAT(RowsOf(*theirs, kHours),
                ElementsAre("1 | 8", "2 | 2.5", "4 | 1", "5 | 2", "6 | 3", "7 | 4", "9 | 20"));

    {
        Transaction undone = small->BeginTransaction();
        for (int i = 0; i < 5; ++i)
            AddVisit(visits, "gone", i);
        visits.MoveFirst();
        SetHours(visits, 99);
    }
    EXPECT_EQ(visits.Get("hrs"), Value(8.0));
    EXPECT_THAT(RowsOf(*small, "select hrs from visits where client = 'gone' or hrs = 99"), ElementsAre());
}

/// Many rows at once and a few go different ways to a server.
TEST_F(Transactions, EveryValueArrivesAsItIs) {
    const std::vector<std::string> texts = {
        "a\tb",       "line\nfeed", "re\rturn", "back\\slash",      "\\N", "\\.", "\\t", "", " blank ",
        "\"quoted\"", "don't",      "{a,b}",    "Zoë \xE2\x82\xAC", "NULL"};
    for (const std::size_t count : {std::size_t{2}, texts.size()}) {
        std::vector<std::string> expected;
        Recordset words = small->OpenRecordset("two words");
        Recordset visits = small->OpenRecordset("visits");
        Transaction all = small->BeginTransaction();
        small->Execute("delete from [two words]");
        for (std::size_t i = 0; i < count; ++i) {
            words.AddNew();
            words.Set("code", std::to_string(i));
            words.Set("description", texts[i]);
            words.Update();
            expected.push_back(Shown(Value(std::to_string(i))) + " | " + Shown(Value(texts[i])));
            visits.AddNew();
            visits.Set("client", "kinds");
            visits.Set("date", Date::FromCivil(2026, 2, 28).AddDays(0.5));
            visits.Set("hrs", 0.1 + 0.2);
            visits.Set("amount", Currency::FromDouble(-1234.5678));
            visits.Set("cancelled", i % 2 == 0);
            visits.Update();
        }
        all.Commit();
        EXPECT_THAT(RowsOf(*theirs, "select * from [two words] order by val(code)"),
                    ElementsAreArray(expected));
        EXPECT_EQ(
            theirs->Lookup("select count(*) from visits where client = 'kinds' and [time] is null and hrs = "
                           "0.30000000000000004 and amount = -1234.5678 and type = 'A' and [date] = "
                           "#2026/02/28 12:00#"),
            Value(static_cast<long long>(count)));
        EXPECT_EQ(small->Execute("delete from visits where client = 'kinds' and cancelled"), (count + 1) / 2);
        small->Execute("delete from visits where client = 'kinds'");
    }
}

TEST_F(Transactions, AValueThatCantBeKeptFailsAlone) {
    if (!TestServer::Wanted())
        GTEST_SKIP() << "about the server";
    Recordset words = small->OpenRecordset("two words");
    Transaction all = small->BeginTransaction();
    const auto add = [&](const std::string& text) {
        words.AddNew();
        words.Set("description", text);
        words.Update();
    };
    add("before");
    EXPECT_EQ(ErrorOf([&] { add(std::string("nu\0ll", 5)); }), 3421);
    words.CancelUpdate();
    EXPECT_EQ(ErrorOf([&] { add("no text: \xFF"); }), 3421);
    words.CancelUpdate();
    add("behind");
    all.Commit();
    EXPECT_THAT(RowsOf(*theirs, "select description from [two words] where code is null"),
                ElementsAre("'before'", "'behind'"));
}

TEST_F(Transactions, ARowThatWentMeanwhileFailsAlone) {
    if (!TestServer::Wanted())
        GTEST_SKIP() << "about the server: elsewhere nobody writes beside a transaction";
    Recordset visits = small->OpenRecordset("select * from visits order by sequence");
    Transaction all = small->BeginTransaction();
    AddVisit(visits, "new", 1);
    theirs->Execute("delete from visits where sequence = 1");  // by a statement, which asks for no row
    visits.MoveFirst();
    EXPECT_EQ(ErrorOf([&] { SetHours(visits, 5); }), 3167);
    visits.CancelUpdate();
    AddVisit(visits, "new", 2);
    all.Commit();
    EXPECT_THAT(RowsOf(*theirs, "select sequence, hrs from visits"),
                ElementsAre("2 | 2.5", "3 | 8", "4 | 1", "5 | 2"));
}

TEST_F(Transactions, ReservedRowsAreKeptUntilItsEnd) {
    if (!TestServer::Wanted())
        GTEST_SKIP() << "about the server: elsewhere nobody writes beside a transaction";
    constexpr int kBusy = 3260;
    theirs->Engine().Query("SET lock_timeout TO '20ms'", {});
    const auto change = [&] {
        Recordset row = theirs->OpenRecordset("select * from visits where sequence = 1");
        SetHours(row, 6);
    };
    Recordset held = theirs->OpenRecordset("select * from visits where sequence = 3");
    held.Edit();
    {
        Transaction stroke = small->BeginTransaction();
        small->ReserveRows("visits", {3, 1, 2, 99});
        small->ReserveRows("visits", {2});  // once more is no matter
        Recordset mine = small->OpenRecordset("select * from visits where sequence in (1, 3)");
        SetHours(mine, 5);
        mine.MoveNext();
        EXPECT_EQ(ErrorOf([&] { SetHours(mine, 5); }), 3186) << "a row in edit stays with its seat";
        mine.CancelUpdate();
        EXPECT_EQ(ErrorOf(change), 3186);
        EXPECT_EQ(ErrorOf([&] { theirs->Execute("delete from visits where sequence = 2"); }), kBusy);
        EXPECT_EQ(ErrorOf([&] {
                      Transaction other = theirs->BeginTransaction();
                      theirs->ReserveRows("visits", {2});
                  }),
                  kBusy);
        stroke.Commit();
    }
    change();
    EXPECT_THAT(RowsOf(*small, "select hrs from visits"), ElementsAre("6", "2.5", "8"));
}

}  // namespace
}  // namespace kv::test
