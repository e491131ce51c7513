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
constexpr std::int64_t kLargestBlock = 256;

class PgCursor final : public Cursor {
  public:
    PgCursor(Link& link, std::string sql, std::span<const Value> values) : link_(link), sql_(std::move(sql)) {
        PgCursor::Restart(values);
    }

    void Restart(std::span<const Value> values) override {
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

/// Row locks that the server frees with the connection. Nobody else sees what a transaction wrote before its
/// end, so the rows that it lets go are kept until then: taking one again costs no way to the server.
class PgConnection::LockBoard final : public kv::LockBoard {
  public:
    explicit LockBoard(Link& link) : link_(link) {}
    bool TryLock(std::uint64_t row) override {
        kept_ = letGo_.erase(row) > 0;
        if (kept_)
            return true;
        const Value values[] = {static_cast<long long>(row)};
        const Result result = link_.Call("SELECT pg_try_advisory_lock($1::bigint)::integer", values);
        return WholeAt(result.get(), 0, 0) != 0;
    }
    void Unlock(std::uint64_t row) override {
        letGo_.insert(row);
        if (!link_.InTransaction())
            Free();
    }
    void Free() noexcept {
        if (letGo_.empty() || !link_.IsAlive())
            return letGo_.clear();  // the locks went with the connection
        std::string rows = "{";
        for (const std::uint64_t row : letGo_)
            rows += (rows.size() > 1 ? "," : "") + std::to_string(row);
        letGo_.clear();
        try {
            const Value values[] = {rows + "}"};
            link_.Call("SELECT pg_advisory_unlock(r) FROM unnest($1::bigint[]) AS r", values);
        } catch (const EngineError&) {
            // So they do when it breaks just now; whoever ends an edit has nothing to do about it.
        }
    }
    void Forget() { letGo_.clear(); }
    /// The row that was taken last had not been let go yet.
    bool WasKept() const { return kept_; }

  private:
    Link& link_;
    bool kept_ = false;
    std::set<std::uint64_t> letGo_;
};

PgConnection::PgConnection(const std::string& server, const std::string& schema)
    : link_(server, schema),
      board_(new LockBoard(link_)),
      locks_(std::unique_ptr<kv::LockBoard>(board_)),
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
    return std::make_unique<PgCursor>(link_, sql, values);
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
    counters_.clear();  // a row may have taken one of them before the connection broke
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
    std::erase_if(written_, [&](const auto& row) { return row.first == table.name; });
    return RowsOf(link_.Write(sql, values));
}

/// In a transaction a row that can't be refused goes over with the next statement: a table is filled without
/// a way to the server for each row.
RowKey PgConnection::AddRow(const TableInfo& table, std::span<const Value> values, bool ownCounter) {
    PrepareToWrite();
    NoteChange(table);
    if (table.Counter())
        return AddCounted(table, values, ownCounter);
    const TableFacts& facts = FactsOf(table);
    if (!link_.InTransaction() || MayBeRefused(facts, AllColumns(table), values, false))
        return WholeAt(link_.Write(facts.insert, values).get(), 0, 0);
    const RowKey key = TakeNumber(table, std::string(kKeyColumn));
    std::vector<Value> keyed(values.begin(), values.end());
    keyed.emplace_back(static_cast<long long>(key));
    link_.WriteLater(FactsOf(table).insertKeyed, keyed);
    return key;
}

RowKey PgConnection::AddCounted(const TableInfo& table, std::span<const Value> values, bool ownCounter) {
    const TableFacts& facts = FactsOf(table);
    const std::int64_t counter = values[*table.Counter()].ToInteger();
    const bool fresh = !ownCounter || (link_.InTransaction() && IsAboveAll(table, counter));
    if (link_.InTransaction() && !MayBeRefused(facts, AllColumns(table), values, fresh)) {
        link_.WriteLater(facts.insert, values);
        if (const auto given = given_.find(table.name); given != given_.end())
            given->second = std::max(given->second, counter);
        return counter;
    }
    if (!ownCounter) {
        link_.Write(facts.insert, values);
        return counter;
    }
    WriteStep step(*this);
    link_.Write(facts.insert, values);
    RaiseCounter(table);
    step.Finish();
    return counter;
}

/// Rows that are loaded in the order of their counters meet none that is there.
bool PgConnection::IsAboveAll(const TableInfo& table, std::int64_t counter) {
    const auto [most, first] = given_.try_emplace(table.name, 0);
    if (first) {
        const Result result = link_.Read(fmt::format("SELECT coalesce(max({}), 0)::bigint FROM {}",
                                                     generator_.Name(table.columns[*table.Counter()].name),
                                                     generator_.Name(table.name)));
        most->second = WholeAt(result.get(), 0, 0);
    }
    return counter > most->second;
}

bool PgConnection::ChangeRow(const TableInfo& table, RowKey key, std::span<const std::size_t> columns,
                             std::vector<Value> values) {
    PrepareToWrite();
    NoteChange(table);
    const bool safe = link_.InTransaction() && !MayBeRefused(FactsOf(table), columns, values, false);
    values.emplace_back(static_cast<long long>(key));
    const std::string sql = generator_.UpdateRow(table, columns);
    if (!safe)
        return RowsOf(link_.Write(sql, values)) > 0;
    const std::pair row(table.name, key);
    if (written_.contains(row)) {
        link_.WriteLater(sql, values);
        return true;
    }
    const bool there = RowsOf(link_.WriteSafely(sql, values)) > 0;
    if (there)
        written_.insert(row);
    return there;
}

/// What adding a row needs to know, worked out once for each table.
const PgConnection::TableFacts& PgConnection::FactsOf(const TableInfo& table) {
    const auto [place, added] = facts_.try_emplace(table.name);
    TableFacts& facts = place->second;
    if (!added)
        return facts;
    const std::vector<std::size_t> columns = AllColumns(table);
    facts.insert = generator_.InsertRow(table, columns);
    facts.insertKeyed = generator_.InsertKeyedRow(table, columns);
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
    Catalogue now = ReadCatalogue(link_);
    if (now == *catalogue_)
        return false;
    catalogue_ = std::make_shared<const Catalogue>(std::move(now));
    facts_.clear();
    return true;
}

void PgConnection::RunAll(const std::vector<std::string>& statements) {
    WriteStep step(*this);
    for (const std::string& sql : statements)
        link_.Run(sql);
    link_.ForgetAll();
    ++stamp_;
    step.Finish();
    RefreshTables();
    tablesChanged_ = link_.InTransaction();
}

void PgConnection::CreateTable(const TableInfo& table) {
    RunAll(CreateTableSql(table, link_.Schema()));
}

void PgConnection::CreateIndex(const std::string& table, const IndexInfo& index,
                               const std::vector<bool>& descending) {
    RunAll(CreateIndexSql(table, index, descending));
}

void PgConnection::DropTable(const std::string& table) {
    RunAll({DropTableSql(table)});
    counters_.erase(table);
}

// -------------------------------------------------------------------------------------------------- counters

/// The sequence behind a column, as the argument of the server's functions.
std::string PgConnection::NumbersOf(const TableInfo& table, const std::string& column) const {
    return fmt::format("pg_get_serial_sequence({}, {})",
                       Quoted(Generator::Quoted(Lower(link_.Schema())) + "." + generator_.Name(table.name)),
                       Quoted(Lower(column)));
}

std::string PgConnection::CounterOf(const TableInfo& table) const {
    return NumbersOf(table, table.columns[*table.Counter()].name);
}

std::int64_t PgConnection::TakeNumber(const TableInfo& table, const std::string& column) {
    std::vector<std::int64_t>& ready = counters_[table.name];
    if (const auto given = given_.find(table.name); given != given_.end()) {
        std::erase_if(ready, [&](std::int64_t number) { return number <= given->second; });
        if (ready.empty())
            RaiseGiven(table.name);
    }
    if (ready.empty()) {
        // A transaction that adds many rows takes more at once; elsewhere the rows of all seats are numbered
        // in the order in which they are begun.
        std::int64_t& block = counterBlock_[table.name];
        block = link_.InTransaction() ? std::clamp<std::int64_t>(2 * block, 1, kLargestBlock) : 1;
        const Value values[] = {static_cast<long long>(block)};
        const Result result = link_.Call(
            fmt::format("SELECT nextval({}) FROM generate_series(1, $1::integer)", NumbersOf(table, column)),
            values);
        for (int row = PQntuples(result.get()); row-- > 0;)
            ready.push_back(WholeAt(result.get(), row, 0));
    }
    const std::int64_t number = ready.back();
    ready.pop_back();
    return number;
}

std::int64_t PgConnection::TakeCounters(const TableInfo& table, std::int64_t count) {
    if (count != 1)
        throw faults::NotSupported("counters in a row, which the server gives out itself");
    return TakeNumber(table, table.columns[*table.Counter()].name);
}

void PgConnection::ReturnCounter(const TableInfo& table, std::int64_t counter) {
    counters_[table.name].push_back(counter);
}

void PgConnection::RaiseCounter(const TableInfo& table) {
    counters_.erase(table.name);  // one of them may be the number given
    const std::string sequence = CounterOf(table);
    const std::string column = generator_.Name(table.columns[*table.Counter()].name);
    link_.Call(
        fmt::format("SELECT setval({0}, m.most) FROM (SELECT max({1}) AS most FROM {2}) AS m "
                    "WHERE m.most > coalesce(pg_sequence_last_value({0}), 0)",
                    sequence, column, generator_.Name(table.name)));
}

void PgConnection::RaiseGiven(const std::string& table) {
    const auto given = given_.extract(table);
    if (const TableInfo* info = given.empty() ? nullptr : catalogue_->Find(table)) {
        const Value values[] = {static_cast<long long>(given.mapped())};
        link_.Call(fmt::format("SELECT setval({0}, $1::bigint) WHERE $1::bigint > "
                               "coalesce(pg_sequence_last_value({0}), 0)",
                               CounterOf(*info)),
                   values);
    }
}

std::int64_t PgConnection::NextCounter(const TableInfo& table) {
    RaiseGiven(table.name);
    if (const auto ready = counters_.find(table.name); ready != counters_.end() && !ready->second.empty())
        return ready->second.back();
    const Result result = link_.Read(
        fmt::format("SELECT coalesce(pg_sequence_last_value(s.oid) + 1, s.seqstart) FROM (SELECT seqrelid AS "
                    "oid, seqstart FROM pg_sequence WHERE seqrelid = {}::regclass) AS s",
                    CounterOf(table)));
    return WholeAt(result.get(), 0, 0);
}

void PgConnection::SetNextCounter(const TableInfo& table, std::int64_t next) {
    counters_.erase(table.name);
    given_.erase(table.name);
    // The number before counts as given, since a sequence that has given none does not tell where it stands.
    const Value values[] = {static_cast<long long>(std::max<std::int64_t>(next - 1, 1)), next > 1};
    link_.Call(fmt::format("SELECT setval({}, $1::bigint, $2::boolean)", CounterOf(table)), values);
}

// -------------------------------------------------------------------------------- locks, spans, transactions

bool PgConnection::TryLockRow(const TableInfo& table, RowKey key, const void* owner) {
    link_.EnsureAlive();
    NoteNewConnection();
    const std::string name = link_.Schema() + "." + table.name;
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

void PgConnection::UnlockRow(const TableInfo& table, RowKey key, const void* owner) {
    locks_.Unlock(link_.Schema() + "." + table.name, key, owner);
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
    while (!given_.empty())
        RaiseGiven(given_.begin()->first);
    link_.CommitTransaction();
    counters_.clear();  // what is left of a block would number later rows below those of other seats
    tablesChanged_ = false;
    EndTransaction();
}

void PgConnection::RollbackTransaction() noexcept {
    link_.RollbackTransaction();
    counters_
        .clear();  // the server's counters are not turned back; what was handed out is not handed out again
    tablesStale_ = std::exchange(tablesChanged_, false);
    EndTransaction();
    ++stamp_;
}

void PgConnection::EndTransaction() noexcept {
    counterBlock_.clear();
    written_.clear();
    given_.clear();
    board_->Free();
}

// ------------------------------------------------------------------------------------------ changes,
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
