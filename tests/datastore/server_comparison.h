#pragma once
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>
#include <libpq-fe.h>

#include "base/date.h"
#include "datastore/engine_error.h"

namespace kv::test {

using Result = std::unique_ptr<PGresult, decltype(&PQclear)>;

// Literals of the server. A text has the collation of the store's columns.
std::string Text(std::string_view text);
std::string Number(double number);
std::string Moment(Date date);

/// How a double is shown that must be met to the bit, and the expression that shows it so.
std::string Bits(double number);
std::string BitsOf(const std::string& expression);

/// What the program answers, an engine's error as "KV" and its last three digits.
template <typename Call>
std::string Answer(Call call) {
    try {
        return call();
    } catch (const EngineError& error) {
        return fmt::format("KV{:03}", error.Number() % 1000);
    }
}

/// Compares many expressions of the server with what they must give, in one round trip: Null is "<Null>", an
/// error its five characters.
class Comparison {
  public:
    void Add(std::string expression, std::string expected);
    void AddBits(const std::string& expression, double expected) { Add(BitsOf(expression), Bits(expected)); }
    /// Needs the function that kAttempt makes.
    void Run(PGconn* connection) const;

    static const char* const kAttempt;

  private:
    std::vector<std::string> expressions_;
    std::vector<std::string> expected_;
};

}  // namespace kv::test
