#include "datastore/engine/postgres/pg_connection.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <numeric>
#include <utility>

#include <fmt/format.h>

#include "base/text.h"
#include "datastore/engine/postgres/pg_errors.h"
#include "datastore/engine/postgres/pg_schema.h"
#include "datastore/engine/postgres/pg_values.h"
#include "datastore/faults.h"

namespace kv::postgres {
namespace {

/// How long what was read counts as live. A seat that looks at a row sees another's change this much later;
/// without it every field of a list would be a way to the server.
constexpr std::chrono::milliseconds kFresh{250};

class PgCursor final : public Cursor {
  public:
    PgCursor(Link& link, WriteQueue& queue, std::string sql, std::span<const Value> values)
        : link_(link), queue_(queue), sql_(std::move(sql)) {
        PgCursor::Restart(values);
    }

    void Restart(std::span<const Value> values) override {
        queue_.SendFor(sql_);
        result_ = link_.Read(sql_, values);
        reader_.emplace(result_.get());
        row_ = -1;
    }
    bool Next() override {
        if (row_ + 1 >= PQntuples(result_.get()))
            return false;
        ++row_;
        return true;
    }
    RowKey Key(int column) const override { return WholeAt(result_.get(), row_, column); }

    void Read(RowBlock& block, int first, int count) const override {
        RowBlock::Cell* cell = block.Extend(static_cast<std::size_t>(count));
        for (int column = first; column < first + count; ++column, ++cell)
            reader_->Read(block, *cell, row_, column);
    }

    std::size_t Fetch(std::size_t most, int keyCount, int fieldCount, std::vector<RowKey>& keys,
                      RowBlock& block) override {
        std::size_t rows = 0;
        for (; rows < most && PgCursor::Next(); ++rows) {
            for (int column = 0; column < keyCount; ++column)
                keys.push_back(PgCursor::Key(column));
            PgCursor::Read(block, keyCount, fieldCount);
        }
        return rows;
    }

  private:
    Link& link_;
    WriteQueue& queue_;
    std::string sql_;
    Result result_;
    std::optional<CellReader> reader_;
    int row_ = -1;
};

/// How many rows a statement touched.
long RowsOf(const Result& result) {
    const char* touched = PQcmdTuples(result.get());
    long rows = 0;
    std::from_chars(touched, touched + std::strlen(touched), rows);
    return rows;
}

bool StandsIn(const IndexInfo& index, const ColumnInfo& column) {
    return std::any_of(index.columns.begin(), index.columns.end(),
                       [&](const std::string& name) { return EqualsNoCase(name, column.name); });
}

std::vector<std::size_t> AllColumns(const TableInfo& table) {
    std::vector<std::size_t> columns(table.columns.size());
    std::iota(columns.begin(), columns.end(), 0U);
    return columns;
}

}  // namespace

PgConnection::PgConnection(const std::string& server, const std::string& schema)
    : link_(server, schema),
      queue_(link_, generator_),
      counters_(link_, queue_, generator_),
      board_(new PgLockBoard(link_)),
      locks_(std::unique_ptr<LockBoard>(board_)),
      epoch_(link_.Epoch()) {
    catalogue_ = std::make_shared<const Catalogue>(ReadCatalogue(link_));
    link_.spelled = [this](const std::string& table, const std::string& column) {
        const TableInfo* info = catalogue_->Find(table);
        const auto place = info ? info->Find(column) : std::nullopt;
        return place ? info->columns[*place].name : column;
    };
}

PgConnection::~PgConnection() = default;

// ------------------------------------------------------------------------------------------------ statements

std::unique_ptr<Cursor> PgConnection::Query(const std::string& sql, std::span<const Value> values) {
    return std::make_unique<PgCursor>(link_, queue_, sql, values);
}

/// With the connection the server's row locks went. An edit that goes on is told, so that it takes its row
/// again before it writes.
void PgConnection::NoteNewConnection() {
    if (epoch_ == link_.Epoch())
        return;
    epoch_ = link_.Epoch();
    ++stamp_;
    locks_.Forget();
    board_->Forget();
    counters_.ForgetAll();  // a row may have taken one of them before the connection broke
}

void PgConnection::PrepareToWrite() {
    if (link_.InTransaction())
        return;  // a connection that is lost ends the transaction, and the statement finds out
    link_.EnsureAlive();
    if (epoch_ != link_.Epoch() && locks_.Any()) {
        NoteNewConnection();
        throw ConnectionLost("it is there again, and what you were changing has to be saved once more",
                             false);
    }
    NoteNewConnection();
}

long PgConnection::Change(const TableInfo& table, const std::string& sql, std::span<const Value> values) {
    PrepareToWrite();
    NoteChange(table);
    queue_.SendFor(sql);
    std::erase_if(ours_, [&](const auto& row) { return row.first == table.name; });  // it may delete them
    return RowsOf(link_.Write(sql, values));
}

/// In a transaction a row that can't be refused waits for others: a table is filled without a way to the
/// server for each row.
RowKey PgConnection::AddRow(const TableInfo& table, std::span<const Value> values, bool ownCounter) {
    PrepareToWrite();
    NoteChange(table);
    if (table.Counter())
        return AddCounted(table, values, ownCounter);
    const TableFacts& facts = FactsOf(table);
    if (!link_.InTransaction() || MayBeRefused(facts, AllColumns(table), values, false))
        return WholeAt(link_.Write(facts.insert, values).get(), 0, 0);
    const RowKey key = counters_.Take(table);
    std::vector<Value> keyed(values.begin(), values.end());
    keyed.emplace_back(static_cast<long long>(key));
    queue_.Add(table, keyed);
    return key;
}

RowKey PgConnection::AddCounted(const TableInfo& table, std::span<const Value> values, bool ownCounter) {
    const TableFacts& facts = FactsOf(table);
    const std::int64_t counter = values[*table.Counter()].ToInteger();
    const bool fresh = !ownCounter || (link_.InTransaction() && counters_.IsAboveAll(table, counter));
    if (link_.InTransaction() && !MayBeRefused(facts, AllColumns(table), values, fresh)) {
        queue_.Add(table, values);
        counters_.NoteRow(table, counter);
        return counter;
    }
    if (!ownCounter || link_.InTransaction()) {
        link_.Write(facts.insert, values);
        counters_.NoteRow(table, counter);
        return counter;
    }
    WriteStep step(*this);
    link_.Write(facts.insert, values);
    counters_.RaiseAboveRows(table);
    step.Finish();
    return counter;
}

/// In a transaction a change that can't be refused waits, too, when the row can't go away meanwhile.
bool PgConnection::ChangeRow(const TableInfo& table, RowKey key, std::span<const std::size_t> columns,
                             std::vector<Value> values) {
    PrepareToWrite();
    NoteChange(table);
    const std::pair row(table.name, key);
    if (ours_.contains(row) && !MayBeRefused(FactsOf(table), columns, values, false)) {
        queue_.Change(table, key, columns, values);
        return true;
    }
    const std::string sql = generator_.UpdateRow(table, columns);
    queue_.SendFor(sql);
    values.emplace_back(static_cast<long long>(key));
    const bool there = RowsOf(link_.Write(sql, values)) > 0;
    if (there && link_.InTransaction())
        ours_.insert(row);
    return there;
}

/// What adding a row needs to know, worked out once for each table.
const PgConnection::TableFacts& PgConnection::FactsOf(const TableInfo& table) {
    TableFacts& facts = facts_[table.name];
    // What holds an older catalogue may come behind what holds the present one.
    if (!facts.columns.empty() && facts.columns.size() == table.columns.size())
        return facts;
    facts.columns.clear();
    const std::vector<std::size_t> columns = AllColumns(table);
    facts.insert = generator_.InsertRow(table, columns);
    for (const ColumnInfo& column : table.columns) {
        const bool unique =
            std::any_of(table.indexes.begin(), table.indexes.end(), [&](const IndexInfo& index) {
                return index.unique && StandsIn(index, column) &&
                       !(column.counter && index.columns.size() == 1);
            });
        facts.columns.push_back(
            {unique, column.counter, column.required || column.type == ColumnType::Boolean});
    }
    return facts;
}

/// What keeps a row from being taken: an index that another row may stand in, or a value that it must have
/// and has not.
bool PgConnection::MayBeRefused(const TableFacts& facts, std::span<const std::size_t> columns,
                                std::span<const Value> values, bool freshCounter) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const TableFacts::Column& column = facts.columns[columns[i]];
        if (column.unique || (column.counter && !freshCounter) || (column.required && values[i].IsNull()))
            return true;
    }
    return false;
}

// ---------------------------------------------------------------------------------------------------- tables

/// Read anew where a transaction that had changed the tables was undone.
std::shared_ptr<const Catalogue> PgConnection::Tables() {
    if (std::exchange(tablesStale_, false))
        RefreshTables();
    return catalogue_;
}

bool PgConnection::RefreshTables() {
    queue_.Send();
    Catalogue now = ReadCatalogue(link_);
    if (now == *catalogue_)
        return false;
    catalogue_ = std::make_shared<const Catalogue>(std::move(now));
    facts_.clear();
    return true;
}

/// Runs statements that change a table, and reads what became of it.
void PgConnection::Define(const std::string& table, const std::vector<std::string>& statements) {
    WriteStep step(*this);
    queue_.Send();
    link_.Run(Join(statements, ";\n"));
    link_.ForgetAll();
    ++stamp_;
    step.Finish();
    Catalogue now = *catalogue_;
    const Catalogue changed = ReadCatalogue(link_, table);
    for (const std::string& name : changed.Names())
        now.Add(*changed.Find(name));
    catalogue_ = std::make_shared<const Catalogue>(std::move(now));
    facts_.clear();
    tablesChanged_ = link_.InTransaction();
}

void PgConnection::CreateTable(const TableInfo& table) {
    Define(table.name, CreateTableSql(table, link_.Schema()));
}

void PgConnection::CreateIndex(const std::string& table, const IndexInfo& index,
                               const std::vector<bool>& descending) {
    Define(table, CreateIndexSql(table, index, descending));
}

void PgConnection::DropTable(const std::string& table) {
    Define(table, {DropTableSql(table, link_.Schema())});
    RefreshTables();
    counters_.Forget(table);
}

// -------------------------------------------------------------------------------------------------- counters

std::int64_t PgConnection::TakeCounters(const TableInfo& table, std::int64_t count) {
    if (count != 1)
        throw faults::NotSupported("counters in a row, which the server gives out itself");
    return counters_.Take(table);
}

void PgConnection::ReturnCounter(const TableInfo& table, std::int64_t counter) {
    counters_.Return(table, counter);
}

void PgConnection::RaiseCounter(const TableInfo& table) {
    counters_.RaiseAboveRows(table);
}

std::int64_t PgConnection::NextCounter(const TableInfo& table) {
    return counters_.Next(table);
}

void PgConnection::SetNextCounter(const TableInfo& table, std::int64_t next) {
    counters_.SetNext(table, next);
}

// -------------------------------------------------------------------------------- locks, spans, transactions

bool PgConnection::TryLockRow(const TableInfo& table, RowKey key, const void* owner) {
    link_.EnsureAlive();
    NoteNewConnection();
    const std::string name = LockName(table);
    if (locks_.Holds(name, key, owner))
        return true;
    if (!locks_.TryLock(name, key, owner))
        return false;
    // What another seat wrote until now is to be seen by whoever has the row. One that this transaction had
    // already is as it left it.
    if (!board_->WasKept())
        NoteChange(table);
    return true;
}

void PgConnection::SetSeat(const std::string& seat) {
    locks_.SetSeat(seat);
    link_.SetName(seat);
}

std::string PgConnection::RowHolder(const TableInfo& table, RowKey key) {
    return locks_.Holder(LockName(table), key);
}

void PgConnection::UnlockRow(const TableInfo& table, RowKey key, const void* owner) {
    locks_.Unlock(LockName(table), key, owner);
}

/// First at the server, where it waits for a transaction that has some of them; then against edits. Seats
/// that reserve the same rows come one behind the other.
void PgConnection::ReserveRows(const TableInfo& table, std::span<const RowKey> keys) {
    if (!link_.InTransaction())
        return;  // nothing would let them go again
    const std::string sql = generator_.LockRows(table);
    queue_.SendFor(sql);
    const Value values[] = {ArrayOf(keys)};
    const Result there = link_.Write(sql, values);
    const std::string name = LockName(table);
    std::vector<std::uint64_t> rows;
    for (int i = 0; i < PQntuples(there.get()); ++i) {
        const RowKey key = WholeAt(there.get(), i, 0);
        ours_.emplace(table.name, key);
        if (!locks_.HoldsAny(name, key))
            rows.push_back(RowLocks::NumberOf(name, key));
    }
    board_->Reserve(rows);
    NoteChange(table);  // what is read of them from now on is as the seat before left it
}

void PgConnection::BeginSpan() {
    if (spanDepth_++ == 0)
        link_.BeginView();
}

void PgConnection::EndSpan() noexcept {
    if (--spanDepth_ == 0)
        link_.EndView();
}

void PgConnection::BeginTransaction() {
    link_.BeginTransaction();
    NoteNewConnection();
    ++stamp_;
}

void PgConnection::CommitTransaction() {
    queue_.Send();
    counters_.RaiseLoaded(*catalogue_);
    link_.CommitTransaction();
    tablesChanged_ = false;
    EndTransaction();
}

void PgConnection::RollbackTransaction() noexcept {
    link_.RollbackTransaction();
    tablesStale_ = std::exchange(tablesChanged_, false);
    EndTransaction();
    ++stamp_;
}

void PgConnection::EndTransaction() noexcept {
    queue_.Clear();
    ours_.clear();
    counters_.EndTransaction();
    board_->Free();
}

// ----------------------------------------------------------------------------------------- changes,
// soundness

std::int64_t PgConnection::Stamp(const TableWatch& tables) {
    if (spanDepth_ == 0 && !link_.InTransaction()) {
        const auto now = std::chrono::steady_clock::now();
        if (now - readAt_ > kFresh) {
            readAt_ = now;
            ++stamp_;
        }
    }
    // None of them ever goes back, so their sum changes with each.
    std::int64_t stamp = stamp_ + (tables.changes.empty() ? allChanges_ : 0);
    for (const std::int64_t* changes : tables.changes)
        stamp += *changes;
    return stamp;
}

TableWatch PgConnection::Watch(const std::vector<const TableInfo*>& tables) {
    TableWatch watch;
    for (const TableInfo* table : tables)
        watch.changes.push_back(&changes_[table->name]);
    return watch;
}

void PgConnection::LearnTables() {
    for (const std::string& name : catalogue_->Names())
        link_.Run("ANALYZE " + generator_.Name(name));
}

std::vector<std::string> PgConnection::CheckIntegrity() {
    queue_.Send();
    std::vector<std::string> found;
    for (const std::string& name : catalogue_->Names()) {
        const TableInfo& table = *catalogue_->Find(name);
        const std::string quoted = generator_.Name(name);
        try {
            // Reads every field of every row.
            link_.Read(fmt::format("SELECT sum(length(t::text)) FROM {} AS t", quoted));
            if (!table.Counter())
                continue;
            const Result result =
                link_.Read(fmt::format("SELECT coalesce(max({}), 0)::bigint FROM {}",
                                       generator_.Name(table.columns[*table.Counter()].name), quoted));
            if (WholeAt(result.get(), 0, 0) >= NextCounter(table))
                found.push_back(fmt::format("the counter of {} stands below its rows", name));
        } catch (const EngineError& error) {
            found.push_back(fmt::format("the table {} can't be read: {}", name, error.Description()));
        }
    }
    const Result invalid = link_.Read(
        "SELECT i.relname::text FROM pg_index AS x JOIN pg_class AS i ON i.oid = x.indexrelid "
        "WHERE NOT x.indisvalid AND i.relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = "
        "current_schema())");
    for (int row = 0; row < PQntuples(invalid.get()); ++row)
        found.push_back(fmt::format("the index {} is not valid", TextAt(invalid.get(), row, 0)));
    return found;
}

}  // namespace kv::postgres
