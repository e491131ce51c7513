// The private server of the tests itself.
#include "support/test_server.h"

#include <memory>

#include <gtest/gtest.h>
#include <libpq-fe.h>

namespace kv::test {
namespace {

/// The first field of a statement's answer, or what went wrong.
std::string Ask(const std::string& database, const char* statement) {
    const std::unique_ptr<PGconn, decltype(&PQfinish)> connection(
        PQconnectdb(TestServer::Get().Connection(database).c_str()), PQfinish);
    if (PQstatus(connection.get()) != CONNECTION_OK)
        return PQerrorMessage(connection.get());
    const std::unique_ptr<PGresult, decltype(&PQclear)> result(PQexec(connection.get(), statement), PQclear);
    return PQntuples(result.get()) > 0 ? PQgetvalue(result.get(), 0, 0) : PQerrorMessage(connection.get());
}

TEST(TestServerTest, ADatabaseIsClonedAndOutlivesAFallOfTheServer) {
    TestServer& server = TestServer::Get();
    const std::string original = server.FreshName();
    const std::string copy = server.FreshName();
    server.MakeDatabase(original);
    Ask(original, "create table people (name text); insert into people values ('Smith')");
    server.MakeDatabase(copy, original);
    Ask(copy, "insert into people values ('Jones')");

    server.Stop();
    EXPECT_NE(Ask(copy, "select 1"), "1");
    server.Start();
    EXPECT_EQ(Ask(copy, "select string_agg(name, ' ' order by name) from people"), "Jones Smith");
    EXPECT_EQ(Ask(original, "select string_agg(name, ' ') from people"), "Smith");

    server.DropDatabase(copy);
    EXPECT_EQ(Ask("postgres", "select count(*) from pg_database where datname like 'kv\\_test\\_%'"), "1");
    server.DropDatabase(original);
    EXPECT_THROW(server.MakeDatabase(copy, original), std::runtime_error);
}

}  // namespace
}  // namespace kv::test
