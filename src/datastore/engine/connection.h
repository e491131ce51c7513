#pragma once
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "datastore/catalogue.h"
#include "datastore/engine/engine_sql.h"
#include "datastore/engine/row_block.h"
#include "datastore/engine/table_watch.h"
#include "datastore/value.h"

namespace kv {

class Compiler;
class Generator;

/// A running query of the engine, read front to back. While it lives nothing else may write through its
/// connection.
class Cursor {
  public:
    virtual ~Cursor() = default;
    /// Runs the query again with other values.
    virtual void Restart(std::span<const Value> values) = 0;
    /// Moves to the next row, first to the first; false behind the last.
    virtual bool Next() = 0;
    /// A column that holds a row's key; kNoRow for Null.
    virtual RowKey Key(int column) const = 0;
    /// Adds the row's columns from `first` on to the block.
    virtual void Read(RowBlock& block, int first, int count) const = 0;
    /// Reads up to so many rows on: their keys, which stand first, and the fields behind them. How many there
    /// were.
    virtual std::size_t Fetch(std::size_t most, int keyCount, int fieldCount, std::vector<RowKey>& keys,
                              RowBlock& block) = 0;
};

/// One engine's open database: what the layers above need of it and no more. Statements come from its
/// generator. Every failure of the engine leaves as an EngineError.
class Connection {
  public:
    Connection();
    virtual ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// What messages call the database: the file's name, or the schema's.
    virtual std::string Name() const = 0;
    virtual const Generator& Sql() const = 0;
    /// The tables as they are now. The pointer keeps the catalogue that a compiled statement was made with.
    virtual std::shared_ptr<const Catalogue> Tables() = 0;
    /// Looks whether another program changed the tables since they were read; reads them again if so.
    virtual bool RefreshTables() = 0;

    virtual std::unique_ptr<Cursor> Query(const std::string& sql, std::span<const Value> values) = 0;
    /// Runs a statement that writes to a table; how many rows it touched.
    virtual long Change(const TableInfo& table, const std::string& sql, std::span<const Value> values) = 0;
    /// Adds one row with all its columns; its key. `ownCounter`: its counter was not handed out by the store,
    /// which goes on above it.
    virtual RowKey AddRow(const TableInfo& table, std::span<const Value> values, bool ownCounter) = 0;
    /// Writes the columns of those places; false when there is no such row any more.
    virtual bool ChangeRow(const TableInfo& table, RowKey key, std::span<const std::size_t> columns,
                           std::vector<Value> values);
    bool DeleteRow(const TableInfo& table, RowKey key);

    virtual void CreateTable(const TableInfo& table) = 0;
    virtual void CreateIndex(const std::string& table, const IndexInfo& index,
                             const std::vector<bool>& descending) = 0;
    virtual void DropTable(const std::string& table) = 0;

    /// Hands out so many consecutive counters of the table and returns the first. No other program gets them.
    virtual std::int64_t TakeCounters(const TableInfo& table, std::int64_t count) = 0;
    /// Takes one back that no row bears.
    virtual void ReturnCounter(const TableInfo& table, std::int64_t counter) = 0;
    /// Rows came with counters of their own: the next one handed out is above them all.
    virtual void RaiseCounter(const TableInfo& table) = 0;
    virtual std::int64_t NextCounter(const TableInfo& table) = 0;
    virtual void SetNextCounter(const TableInfo& table, std::int64_t next) = 0;

    /// Takes the row for editing on behalf of an owner; at once false when another owner, here or in another
    /// program, has it.
    virtual bool TryLockRow(const TableInfo& table, RowKey key, const void* owner) = 0;
    /// The open transaction is about to edit these rows: an engine that lets other seats write meanwhile
    /// takes them together and keeps them until the transaction's end. It waits for a transaction that has
    /// some of them; a row that another seat has in edit stays with it.
    virtual void ReserveRows(const TableInfo& /*table*/, std::span<const RowKey> /*keys*/) {}
    virtual void UnlockRow(const TableInfo& table, RowKey key, const void* owner) = 0;
    /// How other seats are told of this one when they find a row taken.
    virtual void SetSeat(const std::string& seat) = 0;
    /// The seat that has the row for editing; empty where nobody has, or it is not known.
    virtual std::string RowHolder(const TableInfo& table, RowKey key) = 0;
    /// Changes whenever the rows taken before were let go without their owners' doing, with a connection that
    /// was lost.
    virtual std::int64_t LockEpoch() { return 0; }
    /// Whether a statement costs a way over the network, so that many small ones are dear.
    virtual bool IsRemote() const { return false; }

    // Read spans nest; a write inside refreshes the view.
    virtual void BeginSpan() = 0;
    virtual void EndSpan() noexcept = 0;
    // One at a time; Transaction lets them nest.
    virtual void BeginTransaction() = 0;
    virtual void CommitTransaction() = 0;
    virtual void RollbackTransaction() noexcept = 0;
    virtual bool InTransaction() const = 0;
    /// A Transaction within the open one ended without its commit.
    bool innerUndone = false;
    /// How many transactions were rolled back: counters that they took may be handed out again.
    std::int64_t rolledBack = 0;

    /// A number that changes whenever what this connection sees of a query's tables may have changed. Cheap
    /// enough to ask for every field.
    virtual std::int64_t Stamp(const TableWatch& tables) = 0;
    /// What Stamp needs to know of the tables; it lives as long as the connection.
    virtual TableWatch Watch(const std::vector<const TableInfo*>& /*tables*/) { return {}; }
    std::int64_t Stamp() { return Stamp(TableWatch()); }
    virtual std::vector<std::string> CheckIntegrity() = 0;
    /// Many rows came at once: the engine learns how its tables look now, to find the short ways through
    /// them.
    virtual void LearnTables() = 0;

    Compiler& Statements() { return *compiler_; }

    /// What now() and date() of the dialect answer.
    std::function<Date()> clock;
    /// For tests of what stands when a write fails: runs before each write of rows and before each commit,
    /// which is not done where it throws.
    std::function<void()> beforeWrite;
    void AboutToWrite() const {
        if (beforeWrite)
            beforeWrite();
    }

  private:
    std::unique_ptr<Compiler> compiler_;
};

/// Several statements as one: a transaction, unless one is open already. Undone when it is not finished.
class WriteStep {
  public:
    explicit WriteStep(Connection& connection);
    ~WriteStep();
    WriteStep(const WriteStep&) = delete;
    WriteStep& operator=(const WriteStep&) = delete;
    void Finish();

  private:
    Connection& connection_;
    bool open_;
};

}  // namespace kv
