#include "datastore/engine/sqlite/sqlite_watch.h"

#include <memory>

#include "datastore/engine/sqlite/sqlite_errors.h"
#include "datastore/engine/sqlite/sqlite_statement.h"

namespace kv::sqlite {
namespace {

// The size in which the engine maps the index of its log.
constexpr int kIndexPage = 32768;

}  // namespace

bool ChangeWatch::FindHead() {
    looked_ = true;
    sqlite3_file* file = nullptr;
    if (sqlite3_file_control(database_, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK || !file ||
        !file->pMethods || file->pMethods->iVersion < 2 || !file->pMethods->xShmMap)
        return false;
    void volatile* page = nullptr;
    if (file->pMethods->xShmMap(file, 0, kIndexPage, 0, &page) != SQLITE_OK || !page)
        return false;
    head_ = static_cast<const volatile std::uint64_t*>(page);
    return true;
}

bool ChangeWatch::ChangedSlowly() {
    return !looked_ && FindHead() ? Changed() : AskEngine();
}

bool ChangeWatch::AskEngine() {
    sqlite3_stmt* handle = nullptr;
    const int result = sqlite3_prepare_v2(database_, "PRAGMA data_version", -1, &handle, nullptr);
    const std::unique_ptr<sqlite3_stmt, Finalize> statement(handle);
    Check(result, database_);
    Check(sqlite3_step(handle), database_);
    const auto version = static_cast<std::uint32_t>(sqlite3_column_int64(handle, 0));
    const bool changed = version != lastVersion_;
    lastVersion_ = version;
    return changed;
}

}  // namespace kv::sqlite
