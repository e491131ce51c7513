#include "support/other_program.h"

#include <gtest/gtest.h>

namespace kv::test {

OtherProgram::OtherProgram(const std::string& server) : connection_(PQconnectdb(server.c_str()), PQfinish) {
    EXPECT_EQ(PQstatus(connection_.get()), CONNECTION_OK);
}

std::string OtherProgram::Ask(const std::string& sql) {
    const std::unique_ptr<PGresult, decltype(&PQclear)> result(PQexec(connection_.get(), sql.c_str()),
                                                               PQclear);
    const ExecStatusType status = PQresultStatus(result.get());
    EXPECT_TRUE(status == PGRES_TUPLES_OK || status == PGRES_COMMAND_OK)
        << sql << ": " << PQerrorMessage(connection_.get());
    return PQntuples(result.get()) > 0 ? PQgetvalue(result.get(), 0, 0) : "";
}

void OtherProgram::CutAll() {
    const std::string others =
        " from pg_stat_activity where pid <> pg_backend_pid() and datname = current_database()";
    Ask("select count(pg_terminate_backend(pid))" + others);
    while (Ask("select count(*)" + others) != "0") {
    }
}

}  // namespace kv::test
