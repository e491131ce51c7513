// What is worked out for one statement serves another of the same shape, and no other.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "datastore/dialect/lexer.h"
#include "datastore/small_database.h"

namespace kv::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Pair {
    const char* a;
    const char* b;
    bool same;
};

TEST(Shape, LeavesOutLiteralsAndNothingElse) {
    const Pair cases[] = {
        {"select a from t where b = 1", "select a from t where b = 22", true},
        {"select a from t where b = 'x'", "select a from t where b = ''", true},
        {"select a from t where b = #2026/01/01#", "select a from t where b = #12/31/1999 10:00#", true},
        {"select a from t where b in (1, 2)", "select a from t where b in (3, 4)", true},
        {"select a from t where b in (1, 2)", "select a from t where b in (1, 2, 3)", false},
        {"select a from t where b = 1", "select a from t where b = '1'", false},
        {"select a from t where b = 1", "select a from t where b = 1.5", false},
        {"select a from t where b = 1", "select a from t where b = null", false},
        {"select a from t where b = true", "select a from t where b = false", false},
        {"select a from t where b = 1", "select a from t where c = 1", false},
        {"select top 2 a from t", "select top 3 a from t", false},
        {"select a from t order by 1", "select a from t order by 2", false},
        {"select a from t order by left(b, 1)", "select a from t order by left(b, 2)", false},
        {"select left(a, 1) from t group by left(a, 1)", "select left(a, 2) from t group by left(a, 2)",
         false},
        {"update t set 900 = 'x',0 = ''", "update t set 900 = 'y',0 = 'z'", true},
        {"update t set 900 = 'x'", "update t set 915 = 'x'", false},
        {"update t set 900ID = 5, a = iif(b, 1, 2)", "update t set 900ID = 6, a = iif(b, 3, 4)", true},
        {"update t set 900ID = 5 where b in (1, 2)", "update t set 900ID = 5 where b in (3, 4)", true},
        {"insert into t (900) values (1)", "insert into t (900) values (2)", true},
        {"insert into t (900) values (1)", "insert into t (915) values (1)", false},
    };
    for (const Pair& pair : cases)
        EXPECT_EQ(dialect::Lex(pair.a).shape == dialect::Lex(pair.b).shape, pair.same) << pair.a << "\n"
                                                                                       << pair.b;
}

TEST(Shape, EachStatementHasItsOwnValues) {
    SmallDatabase small;
    const auto clients = [&](const std::string& where) {
        return RowsOf(*small, "select client from people where " + where + " order by client");
    };
    for (int round = 0; round < 2; ++round) {
        EXPECT_THAT(clients("lastname = 'smith'"), ElementsAre("'A01'"));
        EXPECT_THAT(clients("lastname = 'jones'"), ElementsAre("'A03'"));
        EXPECT_THAT(clients("lastname = null"), IsEmpty());
        EXPECT_EQ(ErrorOf([&] { clients("lastname = 5"); }), 3464);
        EXPECT_EQ(ErrorOf([&] { clients("lastname = 'O'Brien'"); }), 3075);
        EXPECT_THAT(clients("rate = 12.5"), ElementsAre("'A01'"));
        EXPECT_THAT(clients("rate = 0"), ElementsAre("'A02'"));
    }
    EXPECT_EQ(small->Execute("update people set lastname = 'x', rate = 1 where client = 'A01'"), 1);
    EXPECT_EQ(small->Execute("update people set lastname = 'y', rate = 2 where client = 'A02'"), 1);
    EXPECT_EQ(ErrorOf([&] {
                  small->Execute(
                      "update people set lastname = '123456789012345678901', rate = 2 where client = 'A02'");
              }),
              3163);
    EXPECT_THAT(
        RowsOf(*small, "select lastname, rate from people where rate between 1 and 2 order by client"),
        ElementsAre("'x' | $1", "'y' | $2"));

    Recordset rows = small->OpenRecordset("select * from visits where client = 'A01' order by sequence");
    rows.FindFirst("hrs = 2.5 and user = 'bob'");
    EXPECT_EQ(rows.AbsolutePosition(), 1);
    rows.FindFirst("hrs = 4.0 and user = 'ann'");
    EXPECT_EQ(rows.AbsolutePosition(), 0);
    Recordset others = small->OpenRecordset("select * from visits where client = 'A02' order by sequence");
    others.FindFirst("hrs = 4.0 and user = 'ann'");
    EXPECT_TRUE(others.NoMatch());
}

TEST(Shape, NewTablesAreSeenByWhatWasCompiledBefore) {
    SmallDatabase small;
    Workspace otherSeat;
    const DatabasePtr other = otherSeat.OpenDatabase(small.Place());
    EXPECT_EQ(ErrorOf([&] { small->OpenRecordset("select * from late"); }), 3078);
    other->Execute("create table late (a LONG)");
    other->Execute("insert into late values (5)");
    EXPECT_THAT(RowsOf(*small, "select * from late"), ElementsAre("5"));
    other->Execute("drop table late");
    other->Execute("create table late (a LONG, b LONG)");
    other->Execute("insert into late values (1, 2)");
    EXPECT_THAT(RowsOf(*small, "select b from late"), ElementsAre("2"));
}

}  // namespace
}  // namespace kv::test
