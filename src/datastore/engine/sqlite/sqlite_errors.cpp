#include "datastore/engine/sqlite/sqlite_errors.h"

#include <charconv>
#include <filesystem>
#include <system_error>

#include <fmt/format.h>

#include "datastore/faults.h"

namespace kv::sqlite {
namespace {

// Begins the message of a function's own failure; the engine's messages begin with a letter.
constexpr char kOwnFailure = '\x01';

std::string PathOf(sqlite3* database) {
    const char* path = database ? sqlite3_db_filename(database, "main") : nullptr;
    return path ? path : "";
}

/// "NOT NULL constraint failed: table.column" names the column last.
std::string FieldIn(std::string_view message) {
    return std::string(message.substr(message.rfind('.') + 1));
}

EngineError ConstraintError(int result, std::string_view message) {
    if (result == SQLITE_CONSTRAINT_NOTNULL)
        return faults::RequiredField(FieldIn(message));
    return faults::DuplicateKey();
}

EngineError OwnError(std::string_view message) {
    message.remove_prefix(1);
    int number = engine_error::kReservedError;
    std::from_chars(message.data(), message.data() + message.size(), number);
    return {number, std::string(message.substr(message.find(' ') + 1))};
}

EngineError DiskFull(const std::string& path) {
    return {
        engine_error::kDiskFull,
        fmt::format("The disk is full: there is no room to save to '{}'. Nothing of this change was saved.",
                    path)};
}

bool IsFull(const std::string& path) {
    constexpr std::uintmax_t kLeast = 65536;
    std::error_code none;
    const auto space = std::filesystem::space(std::filesystem::path(path).parent_path(), none);
    return !none && space.available < kLeast;
}

EngineError ErrorOf(int result, sqlite3* database) {
    const std::string path = PathOf(database);
    const std::string_view message = database ? sqlite3_errmsg(database) : sqlite3_errstr(result);
    switch (result & 0xFF) {
        case SQLITE_CONSTRAINT:
            return ConstraintError(result, message);
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return {engine_error::kDatabaseBusy, fmt::format("The database '{}' is busy: another program has "
                                                             "been writing to it for some seconds. Please "
                                                             "try again.",
                                                             path)};
        case SQLITE_FULL:
            return DiskFull(path);
        case SQLITE_CANTOPEN:
        case SQLITE_READONLY:
        case SQLITE_PERM:
            return {engine_error::kCannotOpenFile,
                    fmt::format("The database '{}' can't be opened for writing. Another program may hold it "
                                "alone, or you "
                                "need permission to read and write the file and its folder.",
                                path)};
        case SQLITE_NOTADB:
            return {engine_error::kUnrecognizedFormat,
                    fmt::format("'{}' is not a database of this program.", path)};
        case SQLITE_CORRUPT:
            return {engine_error::kUnrecognizedFormat,
                    fmt::format("The database '{}' is damaged: {}. Please restore it from a backup copy.",
                                path, message)};
        case SQLITE_IOERR:
            // Without room for what the engine keeps beside the file it can't even read.
            if (IsFull(path))
                return DiskFull(path);
            return {engine_error::kDiskError,
                    fmt::format("The disk or network failed while '{}' was used: {}.", path, message)};
        case SQLITE_ERROR:
            if (!message.empty() && message.front() == kOwnFailure)
                return OwnError(message);
            [[fallthrough]];
        default:
            return {engine_error::kReservedError, fmt::format("The database engine failed: {}.", message)};
    }
}

}  // namespace

int Check(int result, sqlite3* database) {
    if (result == SQLITE_OK || result == SQLITE_ROW || result == SQLITE_DONE)
        return result;
    throw ErrorOf(result, database);
}

void FailFunction(sqlite3_context* context, const EngineError& error) {
    const std::string message = fmt::format("{}{} {}", kOwnFailure, error.Number(), error.what());
    sqlite3_result_error(context, message.data(), static_cast<int>(message.size()));
}

}  // namespace kv::sqlite
