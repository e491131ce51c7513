#include "datastore/engine/sqlite/sqlite_connection.h"

#include <algorithm>
#include <bit>
#include <numeric>

#include "datastore/engine/sqlite/sqlite_errors.h"
#include "datastore/engine/sqlite/sqlite_schema.h"
#include "datastore/faults.h"

namespace kv::sqlite {
namespace {

constexpr std::int64_t kMostReserved = 256;

class SqliteCursor final : public Cursor {
  public:
    SqliteCursor(sqlite3* database, StatementCache& cache, const std::string& sql,
                 std::span<const Value> values)
        : loan_(database, cache, sql, values) {}

    void Restart(std::span<const Value> values) override { loan_.Restart(values); }
    bool Next() override { return loan_.Step(); }
    RowKey Key(int column) const override {
        sqlite3_value* value = sqlite3_column_value(loan_.Get(), column);
        return sqlite3_value_type(value) == SQLITE_NULL ? kNoRow : sqlite3_value_int64(value);
    }

    void Read(RowBlock& block, int first, int count) const override {
        ReadInto(block, block.Extend(static_cast<std::size_t>(count)), first, count);
    }

    std::size_t Fetch(std::size_t most, int keyCount, int fieldCount, std::vector<RowKey>& keys,
                      RowBlock& block) override {
        const auto width = static_cast<std::size_t>(fieldCount);
        const std::size_t before = block.Cells();
        std::size_t rows = 0;
        std::size_t room = 0;  // rows that the block has cells for
        for (; rows < most && loan_.Step(); ++rows) {
            if (rows == room) {
                const std::size_t more = std::min(std::max<std::size_t>(rows, 4), most - rows);
                block.Extend(more * width);
                room += more;
            }
            for (int column = 0; column < keyCount; ++column)
                keys.push_back(SqliteCursor::Key(column));
            ReadInto(block, block.CellAt(before + rows * width), keyCount, fieldCount);
        }
        block.Shrink((room - rows) * width);
        return rows;
    }

  private:
    void ReadInto(RowBlock& block, RowBlock::Cell* cell, int first, int count) const {
        for (int column = first; column < first + count; ++column, ++cell) {
            // The connection is used by one thread, so the value itself may be looked at.
            sqlite3_value* value = sqlite3_column_value(loan_.Get(), column);
            switch (sqlite3_value_type(value)) {
                case SQLITE_INTEGER:
                    cell->kind = RowBlock::Kind::Integer;
                    cell->integer = sqlite3_value_int64(value);
                    break;
                case SQLITE_FLOAT:
                    cell->kind = RowBlock::Kind::Real;
                    cell->integer = std::bit_cast<std::int64_t>(sqlite3_value_double(value));
                    break;
                case SQLITE_TEXT: {
                    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
                    block.SetText(*cell, {text, static_cast<std::size_t>(sqlite3_value_bytes(value))});
                    break;
                }
                default:
                    break;
            }
        }
    }

    Loan loan_;
};

}  // namespace

/// Lets the read view of a span go for a write and takes a new one behind it: the engine refuses to write on
/// a view that another program has made old.
class SqliteConnection::SpanPause {
  public:
    explicit SpanPause(SqliteConnection& connection) : connection_(connection), paused_(connection.inSpan_) {
        if (paused_)
            connection_.Run("COMMIT");
        connection_.inSpan_ = false;
    }
    ~SpanPause() {
        if (!paused_)
            return;
        try {
            connection_.Run("BEGIN");
            connection_.inSpan_ = true;
        } catch (const EngineError&) {
            // The span goes on without a common view: each look-up then takes its own and reports for itself.
        }
    }
    SpanPause(const SpanPause&) = delete;
    SpanPause& operator=(const SpanPause&) = delete;

  private:
    SqliteConnection& connection_;
    bool paused_;
};

SqliteConnection::SqliteConnection(Handle database, std::filesystem::path path)
    : path_(std::move(path)),
      database_(std::move(database)),
      statements_(database_.get()),
      watch_(database_.get()),
      locks_(MakeFileLockBoard(std::filesystem::path(path_) += ".lck")) {
    RefreshTables();
}

SqliteConnection::~SqliteConnection() = default;

// ----------------------------------------------------------------------------------------------------
// statements

void SqliteConnection::Run(const std::string& sql, std::span<const Value> values) {
    Loan loan(database_.get(), statements_, sql, values);
    while (loan.Step()) {
    }
}

std::unique_ptr<Cursor> SqliteConnection::Query(const std::string& sql, std::span<const Value> values) {
    return std::make_unique<SqliteCursor>(database_.get(), statements_, sql, values);
}

long SqliteConnection::Change(const TableInfo& /*table*/, const std::string& sql,
                              std::span<const Value> values) {
    return Write(sql, values);
}

long SqliteConnection::Write(const std::string& sql, std::span<const Value> values) {
    // After some failures (a full disk) the engine has undone the whole transaction: what follows would be
    // stored by itself.
    if (inTransaction_ && sqlite3_get_autocommit(database_.get()) != 0)
        throw EngineError(engine_error::kDiskFull, "The disk took not all of it, so nothing was stored.");
    const SpanPause pause(*this);
    Run(sql, values);
    NoteWrite();
    return sqlite3_changes(database_.get());
}

RowKey SqliteConnection::AddRow(const TableInfo& table, std::span<const Value> values, bool ownCounter) {
    std::vector<std::size_t> columns(values.size());
    std::iota(columns.begin(), columns.end(), 0U);
    const std::string sql = generator_.InsertRow(table, columns);
    if (!ownCounter) {
        Write(sql, values);
        return sqlite3_last_insert_rowid(database_.get());
    }
    WriteStep step(*this);
    Write(sql, values);
    const RowKey key = sqlite3_last_insert_rowid(database_.get());
    RaiseCounter(table);
    step.Finish();
    return key;
}

// -------------------------------------------------------------------------------------------------------
// tables

std::int64_t SqliteConnection::SchemaVersion() {
    Loan loan(database_.get(), statements_, "PRAGMA schema_version", {});
    loan.Step();
    return sqlite3_column_int64(loan.Get(), 0);
}

bool SqliteConnection::RefreshTables() {
    const std::int64_t version = SchemaVersion();
    if (catalogue_ && version == schemaVersion_)
        return false;
    catalogue_ = std::make_shared<const Catalogue>(ReadCatalogue(database_.get()));
    schemaVersion_ = version;
    return true;
}

void SqliteConnection::RunAll(const std::vector<std::string>& statements) {
    WriteStep step(*this);
    for (const std::string& sql : statements)
        Run(sql);
    NoteWrite();
    step.Finish();
    RefreshTables();
}

void SqliteConnection::CreateTable(const TableInfo& table) {
    RunAll(CreateTableSql(table));
}

void SqliteConnection::CreateIndex(const std::string& table, const IndexInfo& index,
                                   const std::vector<bool>& descending) {
    RunAll({CreateIndexSql(table, index, descending)});
}

void SqliteConnection::DropTable(const std::string& table) {
    RunAll(DropTableSql(table));
    reserves_.erase(table);
}

// ------------------------------------------------------------------------------------------------------
// counters

std::int64_t SqliteConnection::ReserveCounters(const TableInfo& table, std::int64_t count) {
    const std::string column = Generator::Quoted(table.columns[*table.Counter()].name);
    // A table that came without its counter's row starts above its rows.
    const std::string sql = "INSERT INTO kv_counters (name, next) VALUES (?1, (SELECT coalesce(max(" +
                            column + "), 0) + 1 FROM " + Generator::Quoted(table.name) +
                            ") + ?2) ON CONFLICT (name) DO UPDATE SET next = next + ?2 RETURNING next";
    const Value values[] = {table.name, static_cast<long long>(count)};
    const SpanPause pause(*this);
    // The reservation need not reach the disk by itself: the row that bears the number takes it along, and a
    // number lost without its row is nobody's loss.
    if (!inTransaction_)
        Run("PRAGMA synchronous = NORMAL");
    std::int64_t next = 0;
    try {
        Loan loan(database_.get(), statements_, sql, values);
        loan.Step();
        next = sqlite3_column_int64(loan.Get(), 0);
        while (loan.Step()) {
        }
    } catch (...) {
        // Without this every later save would be less safe than it says.
        if (!inTransaction_)
            sqlite3_exec(database_.get(), "PRAGMA synchronous = FULL", nullptr, nullptr, nullptr);
        throw;
    }
    if (!inTransaction_)
        Run("PRAGMA synchronous = FULL");
    NoteWrite();
    return next - count;
}

std::int64_t SqliteConnection::TakeCounters(const TableInfo& table, std::int64_t count) {
    Reserve& reserve = reserves_[table.name];
    if (count == 1 && !reserve.returned.empty()) {
        const std::int64_t counter = reserve.returned.back();
        reserve.returned.pop_back();
        return counter;
    }
    if (reserve.end - reserve.next >= count) {
        reserve.next += count;
        return reserve.next - count;
    }
    if (!inTransaction_ || count > 1)
        return ReserveCounters(table, count);
    // Nobody else can reserve while the transaction lasts, so a block costs no gap: its rest goes back at the
    // commit.
    reserve.size = std::min(2 * reserve.size, kMostReserved);
    reserve.next = ReserveCounters(table, reserve.size);
    reserve.end = reserve.next + reserve.size;
    return reserve.next++;
}

void SqliteConnection::ReturnCounter(const TableInfo& table, std::int64_t counter) {
    reserves_[table.name].returned.push_back(counter);
}

void SqliteConnection::GiveBackReserves() {
    for (auto& [table, reserve] : reserves_) {
        if (reserve.next < reserve.end) {
            const Value values[] = {table, static_cast<long long>(reserve.next),
                                    static_cast<long long>(reserve.end)};
            Run("UPDATE kv_counters SET next = ?2 WHERE name = ?1 AND next = ?3", values);
        }
        reserve.next = reserve.end = 0;
        reserve.size = 1;
    }
}

void SqliteConnection::RaiseCounter(const TableInfo& table) {
    const std::string column = Generator::Quoted(table.columns[*table.Counter()].name);
    const auto cursor =
        Query("SELECT coalesce(max(" + column + "), 0) + 1 FROM " + Generator::Quoted(table.name), {});
    const std::int64_t above = cursor->Next() ? cursor->Key(0) : 1;
    if (const auto reserve = reserves_.find(table.name); reserve != reserves_.end()) {
        reserve->second.next = std::max(reserve->second.next, above);
        reserve->second.returned.clear();  // one of them may be the number given
        if (reserve->second.next < reserve->second.end)
            return;
        reserves_.erase(reserve);
    }
    const Value values[] = {table.name, static_cast<long long>(above)};
    Write("UPDATE kv_counters SET next = max(next, ?2) WHERE name = ?1", values);
}

std::int64_t SqliteConnection::NextCounter(const TableInfo& table) {
    const auto reserve = reserves_.find(table.name);
    if (reserve != reserves_.end() && reserve->second.next < reserve->second.end)
        return reserve->second.next;
    const std::string column = Generator::Quoted(table.columns[*table.Counter()].name);
    const Value values[] = {table.name};
    const auto cursor =
        Query("SELECT coalesce((SELECT next FROM kv_counters WHERE name = ?1), coalesce(max(" + column +
                  "), 0) + 1) FROM " + Generator::Quoted(table.name),
              values);
    return cursor->Next() ? cursor->Key(0) : 1;
}

void SqliteConnection::SetNextCounter(const TableInfo& table, std::int64_t next) {
    const Value values[] = {table.name, static_cast<long long>(next)};
    reserves_.erase(table.name);
    Write("INSERT INTO kv_counters (name, next) VALUES (?1, ?2) ON CONFLICT (name) DO UPDATE SET next = ?2",
          values);
}

// ---------------------------------------------------------------------------------- locks, spans and
// transactions

bool SqliteConnection::TryLockRow(const TableInfo& table, RowKey key, const void* owner) {
    if (!locks_.TryLock(table.name, key, owner))
        return false;
    // Within a transaction nobody waits for the operator.
    if (!inTransaction_)
        locks_.Sign(table.name, key);
    return true;
}

void SqliteConnection::UnlockRow(const TableInfo& table, RowKey key, const void* owner) {
    locks_.Unlock(table.name, key, owner);
}

void SqliteConnection::BeginSpan() {
    // Counted once the view is there: a span that could not begin is not ended either.
    if (spanDepth_ == 0 && !inTransaction_) {
        Run("BEGIN");
        inSpan_ = true;
    }
    ++spanDepth_;
}

void SqliteConnection::EndSpan() noexcept {
    if (--spanDepth_ > 0 || !inSpan_)
        return;
    inSpan_ = false;
    // A view that only read can always be let go.
    sqlite3_exec(database_.get(), "COMMIT", nullptr, nullptr, nullptr);
}

void SqliteConnection::BeginTransaction() {
    if (inTransaction_)
        throw faults::NotSupported("a transaction inside another");
    if (inSpan_)
        Run("COMMIT");
    inSpan_ = false;
    Run("BEGIN IMMEDIATE");
    inTransaction_ = true;
}

void SqliteConnection::CommitTransaction() {
    GiveBackReserves();
    Run("COMMIT");
    inTransaction_ = false;
    NoteWrite();
    if (spanDepth_ > 0) {
        Run("BEGIN");
        inSpan_ = true;
    }
}

void SqliteConnection::RollbackTransaction() noexcept {
    // The engine has ended the transaction itself after some failures; then there is nothing to undo.
    if (sqlite3_get_autocommit(database_.get()) == 0)
        sqlite3_exec(database_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
    inTransaction_ = false;
    reserves_.clear();
    ++stamp_;
    if (spanDepth_ > 0)
        inSpan_ = sqlite3_exec(database_.get(), "BEGIN", nullptr, nullptr, nullptr) == SQLITE_OK;
}

// ------------------------------------------------------------------------------------------------ changes,
// soundness

void SqliteConnection::NoteWrite() {
    if (!inTransaction_)
        watch_.Changed();  // so that our own commit does not count twice
    ++stamp_;
}

std::int64_t SqliteConnection::Stamp(const TableWatch& /*tables*/) {
    // Inside a span or transaction the view stands still.
    if (!inSpan_ && !inTransaction_ && watch_.Changed())
        ++stamp_;
    return stamp_;
}

std::vector<std::string> SqliteConnection::CheckIntegrity() {
    std::vector<std::string> faults;
    Loan loan(database_.get(), statements_, "PRAGMA integrity_check", {});
    while (loan.Step()) {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(loan.Get(), 0));
        const std::string fault = text ? text : "";
        if (fault != "ok")
            faults.push_back(fault);
    }
    return faults;
}

}  // namespace kv::sqlite
