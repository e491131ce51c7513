// Database, ReadSpan and Transaction: the handles that callers hold.
#include <utility>

#include "datastore/engine/compiler.h"
#include "datastore/engine/connection.h"
#include "datastore/engine/run_action.h"
#include "datastore/faults.h"
#include "datastore/recordset/recordset_state.h"
#include "datastore/workspace.h"

namespace kv {
namespace {

const TableInfo& CountedTable(const Catalogue& tables, std::string_view name) {
    const TableInfo* table = tables.Find(name);
    if (!table)
        throw faults::TableNotFound(name);
    if (!table->Counter())
        throw faults::NotSupported("a counter in a table without one");
    return *table;
}

}  // namespace

ReadSpan::ReadSpan(Connection& connection) : connection_(&connection) {
    connection_->BeginSpan();
}

ReadSpan::ReadSpan(ReadSpan&& other) noexcept : connection_(std::exchange(other.connection_, nullptr)) {}

ReadSpan::~ReadSpan() {
    if (connection_)
        connection_->EndSpan();
}

Transaction::Transaction(Connection& connection)
    : connection_(&connection), outer_(!connection.InTransaction()) {
    if (outer_) {
        connection_->BeginTransaction();
        connection_->innerUndone = false;
    }
}

Transaction::Transaction(Transaction&& other) noexcept
    : connection_(std::exchange(other.connection_, nullptr)), outer_(other.outer_) {}

Transaction::~Transaction() {
    if (!connection_)
        return;
    if (outer_) {
        connection_->RollbackTransaction();
        ++connection_->rolledBack;
    } else {
        connection_->innerUndone = true;
    }
}

void Transaction::Commit() {
    if (outer_ && connection_->innerUndone)
        throw EngineError(engine_error::kInvalidOperation,
                          "A step of the transaction was undone, so nothing of it was stored.");
    if (outer_) {
        connection_->AboutToWrite();
        connection_->CommitTransaction();
    }
    connection_ = nullptr;
}

Database::Database(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {}

Database::~Database() = default;

Recordset Database::OpenRecordset(std::string_view sqlOrTable, RecordsetType type) {
    return Recordset(std::make_unique<RecordsetState>(
        connection_, connection_->Statements().CompileSelect(sqlOrTable), type));
}

long Database::Execute(std::string_view sql) {
    return RunAction(*connection_, sql);
}

Value Database::Lookup(std::string_view sql) {
    const Ready<CompiledSelect> ready = connection_->Statements().CompileSelect(sql);
    const EngineSql& first = ready.statement->Sql(CompiledSelect::Form::FirstField);
    const auto cursor =
        connection_->Query(first.text, ParameterValues(first, ready.literals, {}, connection_->clock));
    if (!cursor->Next())
        return {};
    RowBlock row;
    cursor->Read(row, 0, 1);
    return row.At(0, ready.statement->Fields().front().type);
}

const Catalogue& Database::Tables() const {
    return *connection_->Tables();
}

std::string Database::Name() const {
    return connection_->Name();
}

ReadSpan Database::BeginRead() {
    return ReadSpan(*connection_);
}

Transaction Database::BeginTransaction() {
    return Transaction(*connection_);
}

void Database::ReserveRows(std::string_view table, const std::vector<long>& counters) {
    const std::vector<RowKey> keys(counters.begin(), counters.end());
    connection_->ReserveRows(CountedTable(*connection_->Tables(), table), keys);
}

std::int64_t Database::ChangeStamp() const {
    return connection_->Stamp();
}

std::vector<std::string> Database::CheckIntegrity() {
    return connection_->CheckIntegrity();
}

void Database::LearnTables() {
    connection_->LearnTables();
}

std::int64_t Database::NextCounter(std::string_view table) {
    return connection_->NextCounter(CountedTable(*connection_->Tables(), table));
}

void Database::SetNextCounter(std::string_view table, std::int64_t next) {
    connection_->SetNextCounter(CountedTable(*connection_->Tables(), table), next);
}

}  // namespace kv
