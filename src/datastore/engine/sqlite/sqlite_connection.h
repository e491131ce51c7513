#pragma once
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <sqlite3.h>

#include "datastore/engine/connection.h"
#include "datastore/engine/row_locks.h"
#include "datastore/engine/sqlite/sqlite_generator.h"
#include "datastore/engine/sqlite/sqlite_statement.h"
#include "datastore/engine/sqlite/sqlite_watch.h"

namespace kv::sqlite {

struct Close {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
using Handle = std::unique_ptr<sqlite3, Close>;

/// The embedded engine on one file, in its write-ahead mode: readers never wait, a writer waits for another
/// one some seconds, and what is committed is on the disk.
class SqliteConnection : public Connection {
  public:
    /// The handle is open and its file has been found to be a database of this program.
    SqliteConnection(Handle database, std::filesystem::path path);
    ~SqliteConnection() override;

    std::string Name() const override { return path_.filename().string(); }
    const std::filesystem::path& Path() const { return path_; }
    const Generator& Sql() const override { return generator_; }
    std::shared_ptr<const Catalogue> Tables() override { return catalogue_; }
    bool RefreshTables() override;

    std::unique_ptr<Cursor> Query(const std::string& sql, std::span<const Value> values) override;
    long Change(const TableInfo& table, const std::string& sql, std::span<const Value> values) override;
    RowKey AddRow(const TableInfo& table, std::span<const Value> values, bool ownCounter) override;

    void CreateTable(const TableInfo& table) override;
    void CreateIndex(const std::string& table, const IndexInfo& index,
                     const std::vector<bool>& descending) override;
    void DropTable(const std::string& table) override;

    std::int64_t TakeCounters(const TableInfo& table, std::int64_t count) override;
    void ReturnCounter(const TableInfo& table, std::int64_t counter) override;
    void RaiseCounter(const TableInfo& table) override;
    std::int64_t NextCounter(const TableInfo& table) override;
    void SetNextCounter(const TableInfo& table, std::int64_t next) override;

    bool TryLockRow(const TableInfo& table, RowKey key, const void* owner) override;
    void UnlockRow(const TableInfo& table, RowKey key, const void* owner) override;
    void SetSeat(const std::string& seat) override { locks_.SetSeat(seat); }
    std::string RowHolder(const TableInfo& table, RowKey key) override {
        return locks_.Holder(table.name, key);
    }

    void BeginSpan() override;
    void EndSpan() noexcept override;
    void BeginTransaction() override;
    void CommitTransaction() override;
    void RollbackTransaction() noexcept override;
    bool InTransaction() const override { return inTransaction_; }

    std::int64_t Stamp(const TableWatch& tables) override;
    std::vector<std::string> CheckIntegrity() override;
    void LearnTables() override {}  // the embedded engine's ways are chosen by the indexes alone

  private:
    class SpanPause;

    /// Counters that this program has reserved and not given to a row.
    struct Reserve {
        std::int64_t next = 0;
        std::int64_t end = 0;
        std::int64_t size = 1;
        std::vector<std::int64_t> returned;
    };

    void Run(const char* sql) { Run(std::string(sql)); }
    void Run(const std::string& sql, std::span<const Value> values = {});
    void RunAll(const std::vector<std::string>& statements);
    std::int64_t ReserveCounters(const TableInfo& table, std::int64_t count);
    void GiveBackReserves();
    long Write(const std::string& sql, std::span<const Value> values);
    void NoteWrite();
    std::int64_t SchemaVersion();

    std::filesystem::path path_;
    Handle database_;
    StatementCache statements_;
    ChangeWatch watch_;
    SqliteGenerator generator_;
    std::shared_ptr<const Catalogue> catalogue_;
    std::int64_t schemaVersion_ = 0;
    RowLocks locks_;
    std::map<std::string, Reserve> reserves_;
    int spanDepth_ = 0;
    bool inSpan_ = false;
    bool inTransaction_ = false;
    std::int64_t stamp_ = 0;
};

}  // namespace kv::sqlite
