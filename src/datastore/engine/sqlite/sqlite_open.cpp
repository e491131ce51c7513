#include "datastore/engine/sqlite/sqlite_open.h"

#include <array>
#include <string_view>
#include <system_error>

#include <fmt/format.h>

#include "datastore/engine/run_action.h"
#include "datastore/engine/sqlite/sqlite_errors.h"
#include "datastore/engine/sqlite/sqlite_functions.h"
#include "datastore/engine/sqlite/sqlite_schema.h"
#include "datastore/schema.h"

namespace kv::sqlite {
namespace {

namespace fs = std::filesystem;

// Stands in the file's head and says which program's database it is: "kvdb".
constexpr int kApplication = 0x6B766462;
constexpr int kBusyMilliseconds = 5000;
/// A file that another program has open all the time is not waited for as long as one that is written to.
constexpr int kHoldMilliseconds = 500;
constexpr int kCacheKibibytes = 16384;

[[noreturn]] void Fail(int number, std::string_view pattern, const fs::path& path) {
    throw EngineError(number, fmt::format(fmt::runtime(pattern), path.string()));
}

Handle OpenHandle(const fs::path& path, int flags) {
    sqlite3* opened = nullptr;
    const int result =
        sqlite3_open_v2(path.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
    Handle handle(opened);
    Check(result, opened);
    Check(sqlite3_busy_timeout(opened, kBusyMilliseconds), opened);
    AddFunctions(opened);
    return handle;
}

/// What an engine may keep beside a database's file.
constexpr const char* kBeside[] = {"-wal", "-shm", "-journal"};

void RemoveBeside(const fs::path& file) {
    for (const char* part : kBeside)
        fs::remove(fs::path(file) += part);
}

std::int64_t Pragma(sqlite3* database, const std::string& sql) {
    StatementCache cache(database);
    Loan loan(database, cache, sql, {});
    return loan.Step() ? sqlite3_column_int64(loan.Get(), 0) : 0;
}

void SetUp(sqlite3* database) {
    Pragma(database, "PRAGMA synchronous = FULL");
    Pragma(database, fmt::format("PRAGMA cache_size = -{}", kCacheKibibytes));
    Pragma(database, "PRAGMA temp_store = MEMORY");
}

/// The file's first bytes, read through the engine: a second handle of our own would, once closed, free the
/// engine's locks.
std::string HeadOf(sqlite3* database) {
    std::array<char, 32> head{};
    sqlite3_file* file = nullptr;
    Check(sqlite3_file_control(database, "main", SQLITE_FCNTL_FILE_POINTER, &file), database);
    const int result = file->pMethods->xRead(file, head.data(), static_cast<int>(head.size()), 0);
    if (result != SQLITE_IOERR_SHORT_READ)
        Check(result, database);
    return {head.data(), head.size()};
}

void CheckForm(sqlite3* database, const fs::path& path) {
    const std::string head = HeadOf(database);
    const std::string_view mark = std::string_view(head).substr(4, 15);
    if (mark == "Standard Jet DB" || mark == "Standard ACE DB")
        Fail(engine_error::kUnrecognizedFormat,
             "'{0}' is an Access file. Import it into a database of this program, in another folder, with: "
             "kvtool --data FOLDER import-mdb \"{0}\"",
             path);
    if (head.substr(0, 15) != "SQLite format 3")
        Fail(engine_error::kUnrecognizedFormat, "'{}' is not a database of this program.", path);
    if (sqlite3_db_readonly(database, "main") != 0)
        Fail(engine_error::kCannotOpenFile,
             "The database '{}' can only be read. You need permission to write the file and its folder.",
             path);
}

std::int64_t Ask(Connection& connection, const char* sql) {
    const auto cursor = connection.Query(sql, {});
    return cursor->Next() ? cursor->Key(0) : 0;
}

}  // namespace

void RequireSchema(Connection& connection) {
    const fs::path& path = static_cast<const SqliteConnection&>(connection).Path();
    const std::int64_t version = Ask(connection, "PRAGMA user_version");
    if (Ask(connection, "PRAGMA application_id") != kApplication)
        Fail(engine_error::kUnrecognizedFormat, "'{}' is not a database of this program.", path);
    if (version < kSchemaVersion)
        Fail(engine_error::kUnrecognizedFormat,
             "The database '{}' is of an older version of this program. 'kvtool copy' makes a copy in the "
             "present form.",
             path);
    if (version > kSchemaVersion)
        Fail(engine_error::kUnrecognizedFormat,
             "The database '{}' is of a newer version of this program. Please update the program on this "
             "computer.",
             path);
}

std::shared_ptr<Connection> Open(const fs::path& path, SchemaCheck check) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found)
        Fail(engine_error::kFileNotFound, "Could not find file '{}'.", path);
    if (!fs::is_regular_file(status))
        Fail(engine_error::kCannotOpenFile,
             "The database '{}' can't be opened: it is no file, or you lack permission.", path);
    Handle handle = OpenHandle(path, SQLITE_OPEN_READWRITE);
    CheckForm(handle.get(), path);
    SetUp(handle.get());
    auto connection = std::make_shared<SqliteConnection>(std::move(handle), path);
    if (check == SchemaCheck::Required)
        RequireSchema(*connection);
    return connection;
}

void Create(const fs::path& path, const std::vector<std::string>& statements) {
    if (fs::exists(path))
        Fail(engine_error::kDatabaseExists, "Database '{}' already exists.", path);
    if (!fs::is_directory(path.parent_path()))
        Fail(engine_error::kFileNotFound, "Could not find the folder of '{}'.", path);
    fs::path beside = path;
    beside += ".new";
    const auto giveUp = [&] {
        std::error_code ignored;  // what is left is removed by the next attempt
        fs::remove(beside, ignored);
    };
    try {
        fs::remove(beside);
        RemoveBeside(beside);
        // The log of a database that was deleted here would be played into the new one.
        RemoveBeside(path);
        {
            Handle handle = OpenHandle(beside, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
            // Nothing is lost with a file that is not in its place yet; the tables' commit then reaches the
            // disk.
            Pragma(handle.get(), "PRAGMA synchronous = OFF");
            Pragma(handle.get(), fmt::format("PRAGMA application_id = {}", kApplication));
            Pragma(handle.get(), fmt::format("PRAGMA user_version = {}", kSchemaVersion));
            Pragma(handle.get(), "PRAGMA journal_mode = WAL");
            for (const std::string& sql : FoundationSql())
                Pragma(handle.get(), sql);
            SetUp(handle.get());
            SqliteConnection connection(std::move(handle), beside);
            WriteStep step(connection);
            for (const std::string& statement : statements)
                RunAction(connection, statement);
            step.Finish();
        }
        fs::rename(beside, path);
    } catch (const fs::filesystem_error& failure) {
        giveUp();
        throw EngineError(engine_error::kCannotOpenFile, failure.what());
    } catch (...) {
        giveUp();
        throw;
    }
}

HeldFile::HeldFile(fs::path path)
    : path_(std::move(path)), handle_(OpenHandle(path_, SQLITE_OPEN_READWRITE)) {
    sqlite3* database = handle_.get();
    CheckForm(database, path_);
    Check(sqlite3_busy_timeout(database, kHoldMilliseconds), database);
    Pragma(database, "PRAGMA locking_mode = EXCLUSIVE");
    try {
        Pragma(database, "BEGIN EXCLUSIVE");
    } catch (const EngineError& error) {
        if (error.Number() != engine_error::kDatabaseBusy)
            throw;
        Fail(engine_error::kDatabaseBusy,
             "The database '{}' is open in another program. Please close it there and try again.", path_);
    }
}

void HeldFile::Look(const TableLook& look) const {
    const Catalogue tables = ReadCatalogue(handle_.get());
    for (const std::string& table : tables.Names())
        look(path_.string(), table,
             static_cast<long>(Pragma(handle_.get(), "SELECT count(*) FROM " + Generator::Quoted(table))));
}

void HeldFile::Drop() {
    Pragma(handle_.get(), "COMMIT");
    // Who has opened the file just now and waits for it would go on in one that nobody finds any more, with
    // the log of the one that comes here: it keeps no log, and is found to be none of this program's.
    Pragma(handle_.get(), "PRAGMA journal_mode = DELETE");
    Pragma(handle_.get(), "PRAGMA application_id = 0");
    handle_.reset();
    sqlite::Drop(path_);
}

void Drop(const fs::path& path) {
    RemoveBeside(path);
    fs::remove(path);
}

}  // namespace kv::sqlite
