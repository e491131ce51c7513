#pragma once
#include <chrono>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "datastore/engine/connection.h"
#include "datastore/engine/postgres/pg_counters.h"
#include "datastore/engine/postgres/pg_generator.h"
#include "datastore/engine/postgres/pg_link.h"
#include "datastore/engine/postgres/pg_lock_board.h"
#include "datastore/engine/postgres/pg_write_queue.h"
#include "datastore/engine/row_locks.h"

namespace kv::postgres {

/// The engine for many seats: one schema of a server's database.
///
/// Nobody tells a seat what the others write, so what was read counts as live for a quarter of a second and
/// is then read anew; what this connection writes itself to a table, and a row of it that is taken for
/// editing, make it old at once.
class PgConnection : public Connection {
  public:
    /// Connects and reads the tables.
    PgConnection(const std::string& server, const std::string& schema);
    ~PgConnection() override;

    std::string Name() const override { return link_.Schema(); }
    const Generator& Sql() const override { return generator_; }
    std::shared_ptr<const Catalogue> Tables() override;
    bool RefreshTables() override;

    std::unique_ptr<Cursor> Query(const std::string& sql, std::span<const Value> values) override;
    long Change(const TableInfo& table, const std::string& sql, std::span<const Value> values) override;
    RowKey AddRow(const TableInfo& table, std::span<const Value> values, bool ownCounter) override;
    bool ChangeRow(const TableInfo& table, RowKey key, std::span<const std::size_t> columns,
                   std::vector<Value> values) override;

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
    void ReserveRows(const TableInfo& table, std::span<const RowKey> keys) override;
    void UnlockRow(const TableInfo& table, RowKey key, const void* owner) override;
    void SetSeat(const std::string& seat) override;
    std::string RowHolder(const TableInfo& table, RowKey key) override;
    std::int64_t LockEpoch() override { return link_.Epoch(); }
    bool IsRemote() const override { return true; }

    void BeginSpan() override;
    void EndSpan() noexcept override;
    void BeginTransaction() override;
    void CommitTransaction() override;
    void RollbackTransaction() noexcept override;
    bool InTransaction() const override { return link_.InTransaction(); }

    std::int64_t Stamp(const TableWatch& tables) override;
    TableWatch Watch(const std::vector<const TableInfo*>& tables) override;
    std::vector<std::string> CheckIntegrity() override;
    void LearnTables() override;

    Link& Server() { return link_; }

  private:
    struct TableFacts {
        struct Column {
            bool unique = false;  ///< in an index where another row may stand
            bool counter = false;
            bool required = false;
        };
        std::string insert;
        std::vector<Column> columns;
    };

    const TableFacts& FactsOf(const TableInfo& table);
    static bool MayBeRefused(const TableFacts& facts, std::span<const std::size_t> columns,
                             std::span<const Value> values, bool freshCounter);
    void PrepareToWrite();
    void NoteChange(const TableInfo& table) {
        ++changes_[table.name];
        ++allChanges_;
    }
    void Define(const std::string& table, const std::vector<std::string>& statements);
    RowKey AddCounted(const TableInfo& table, std::span<const Value> values, bool ownCounter);
    std::string LockName(const TableInfo& table) const { return link_.Schema() + "." + table.name; }
    void EndTransaction() noexcept;
    void NoteNewConnection();

    Link link_;
    PgGenerator generator_;
    std::shared_ptr<const Catalogue> catalogue_;
    bool tablesChanged_ = false;  // in the transaction that is open
    bool tablesStale_ = false;
    WriteQueue queue_;
    PgCounters counters_;
    PgLockBoard* board_;  // that of locks_
    RowLocks locks_;
    /// How often this connection wrote to a table, or took one of its rows.
    std::map<std::string, std::int64_t> changes_;
    std::int64_t allChanges_ = 0;
    std::map<std::string, TableFacts> facts_;
    /// The rows that this transaction has reserved or written: nobody else can take them away before its
    /// end.
    std::set<std::pair<std::string, RowKey>> ours_;
    int spanDepth_ = 0;
    std::int64_t epoch_ = 0;
    std::int64_t stamp_ = 0;
    std::chrono::steady_clock::time_point readAt_;
};

}  // namespace kv::postgres
