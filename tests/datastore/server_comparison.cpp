#include "datastore/server_comparison.h"

#include <bit>

#include <gtest/gtest.h>

#include "base/numbers.h"
#include "base/text.h"

namespace kv::test {

std::string Text(std::string_view text) {
    return fmt::format("('{}'::text COLLATE kv.ci)", ReplaceAll(text, "'", "''"));
}

std::string Number(double number) {
    return fmt::format("'{}'::float8", number);
}

std::string Bits(double number) {
    return fmt::format("{:016x}", std::bit_cast<std::uint64_t>(number));
}

std::string BitsOf(const std::string& expression) {
    return fmt::format("encode(float8send({}), 'hex')", expression);
}

std::string Moment(Date date) {
    return "timestamp '" + IsoText(date) + "'";
}

const char* const Comparison::kAttempt = R"(
CREATE FUNCTION attempt(expression text) RETURNS text LANGUAGE plpgsql AS $$
DECLARE answer text;
BEGIN
    EXECUTE 'SELECT (' || expression || ')::text' INTO answer;
    RETURN answer;
EXCEPTION WHEN OTHERS THEN
    RETURN SQLSTATE;
END $$)";

void Comparison::Add(std::string expression, std::string expected) {
    expressions_.push_back(std::move(expression));
    expected_.push_back(std::move(expected));
}

void Comparison::Run(PGconn* connection) const {
    std::string list;
    for (const std::string& expression : expressions_)
        list += (list.empty() ? "\"" : ",\"") +
                ReplaceAll(ReplaceAll(expression, "\\", "\\\\"), "\"", "\\\"") + "\"";
    list = "{" + list + "}";
    const char* values[] = {list.c_str()};
    const Result result(PQexecParams(connection,
                                     "SELECT attempt(e) FROM unnest($1::text[]) WITH ORDINALITY AS t (e, n) "
                                     "ORDER BY n",
                                     1, nullptr, values, nullptr, nullptr, 0),
                        PQclear);
    ASSERT_EQ(PQresultStatus(result.get()), PGRES_TUPLES_OK) << PQerrorMessage(connection);
    ASSERT_EQ(static_cast<std::size_t>(PQntuples(result.get())), expected_.size());
    for (std::size_t i = 0; i < expected_.size(); ++i) {
        const int row = static_cast<int>(i);
        const std::string found =
            PQgetisnull(result.get(), row, 0) ? "<Null>" : PQgetvalue(result.get(), row, 0);
        EXPECT_EQ(found, expected_[i]) << expressions_[i];
    }
}

}  // namespace kv::test
