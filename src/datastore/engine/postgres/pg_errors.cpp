#include "datastore/engine/postgres/pg_errors.h"

#include <charconv>
#include <string>

#include <fmt/format.h>

#include "base/text.h"
#include "datastore/faults.h"

namespace kv::postgres {
namespace {

/// The library's words end their lines with a line feed and begin with what kind they are.
std::string Words(std::string_view text) {
    text = text.substr(0, text.find("\nCONTEXT:"));  // it may show a row of somebody's data
    while (!text.empty() && std::string_view("\n.?").find(text.back()) != std::string_view::npos)
        text.remove_suffix(1);
    return ReplaceAll(ReplaceAll(text, "\n\t", "; "), "\n", "; ");
}

std::string Field(const PGresult* result, int field) {
    const char* text = PQresultErrorField(result, field);
    return text ? text : "";
}

/// Where a whole class of states, its first two characters, means one thing.
struct StateClass {
    std::string_view state;
    EngineError (*error)(const std::string& message);
};

EngineError Busy(const std::string& /*message*/) {
    return {
        engine_error::kDatabaseBusy,
        "The database is busy: another seat has been writing to the same rows for some seconds. Please try "
        "again."};
}
EngineError Full(const std::string& message) {
    return {
        engine_error::kDiskFull,
        fmt::format("The database server has no room left to save ({}). Nothing of this change was saved.",
                    message)};
}
EngineError Short(const std::string& message) {
    return {engine_error::kDatabaseBusy,
            fmt::format("The database server has too much to do ({}). Please try again.", message)};
}
EngineError Stopped(const std::string& message) {
    return {engine_error::kDatabaseBusy,
            fmt::format("The database server stopped the statement ({}). Please try again.", message)};
}
EngineError Refused(const std::string& message) {
    return {engine_error::kCannotOpenFile, fmt::format("The database server refuses this: {}.", message)};
}
EngineError ReadOnlyServer(const std::string& message) {
    return {engine_error::kCannotOpenFile,
            fmt::format("The database server can only be read just now ({}). Nothing was saved.", message)};
}
EngineError TooComplex(const std::string& message) {
    return {engine_error::kTooComplex,
            fmt::format("The statement is too complex for the database server: {}.", message)};
}
EngineError Lost(const std::string& message) {
    return ConnectionLost(message, false);
}

constexpr StateClass kStates[] = {
    {"23505", [](const std::string&) { return faults::DuplicateKey(); }},
    {"22001", [](const std::string&) { return faults::FieldTooSmall(); }},
    {"22003", [](const std::string&) { return faults::TypeConversion(); }},
    {"22021", [](const std::string&) { return faults::TypeConversion(); }},
    {"22008", [](const std::string&) { return faults::TypeConversion(); }},
    {"22P02", [](const std::string&) { return faults::TypeConversion(); }},
    {"25006", ReadOnlyServer},
    {"40", Busy},
    {"42501", Refused},
    {"53100", Full},
    {"53", Short},
    {"54", TooComplex},
    {"55P03", Busy},
    {"57014", Stopped},
    {"57P", Lost},
    {"08", Lost},
};

/// The server lists what stands in the way, a line each.
EngineError BuiltUpon(std::string_view list) {
    return {
        engine_error::kInvalidOperation,
        fmt::format("Something else on the database server is built upon what was to go: {}. It has to be "
                    "taken away there first.",
                    Words(list.substr(0, list.find('\n'))))};
}

/// The functions of the schema kv say with the last three digits which failure it is: KV421 is 3421.
EngineError OwnError(std::string_view state) {
    int number = 0;
    std::from_chars(state.data() + 2, state.data() + state.size(), number);
    constexpr int kFirst = 3000;
    number += kFirst;
    return number == engine_error::kFieldTooSmall ? faults::FieldTooSmall() : faults::TypeConversion();
}

}  // namespace

EngineError ErrorOf(const PGresult* result, const Speller& spelled) {
    const std::string state = Field(result, PG_DIAG_SQLSTATE);
    const std::string message = Words(Field(result, PG_DIAG_MESSAGE_PRIMARY));
    if (StartsWithNoCase(state, "KV"))
        return OwnError(state);
    if (state == "23502")
        return faults::RequiredField(
            spelled(Field(result, PG_DIAG_TABLE_NAME), Field(result, PG_DIAG_COLUMN_NAME)));
    if (state == "2BP01")
        return BuiltUpon(Field(result, PG_DIAG_MESSAGE_DETAIL));
    for (const StateClass& known : kStates)
        if (StartsWithNoCase(state, known.state))
            return known.error(message);
    return {engine_error::kReservedError,
            fmt::format("The database server failed: {} ({}).", message, state)};
}

EngineError NotReached(std::string_view detail) {
    // The server's own word: it is there, but this user, this database or one more seat is not welcome.
    const auto says = [&](std::string_view words) { return detail.find(words) != std::string_view::npos; };
    const bool turnedAway =
        says("FATAL:") && !says("the database system is");  // ... starting up, shutting down
    return {
        engine_error::kConnectionFailed,
        fmt::format("The database server {}: {}. What is on the screen is kept; please try again when the "
                    "server {}.",
                    turnedAway ? "does not let this program in" : "can't be reached", Words(detail),
                    turnedAway ? "does" : "answers")};
}

EngineError ConnectionLost(std::string_view detail, bool writing) {
    return {
        engine_error::kConnectionFailed,
        fmt::format(
            "The connection to the database server was lost: {}. What is on the screen is kept; {}",
            Words(detail),
            writing ? "look whether the last change was saved before you try again." : "please try again.")};
}

}  // namespace kv::postgres
