#include "datastore/engine/connection.h"

#include <chrono>
#include <ctime>

#include "datastore/engine/compiler.h"
#include "datastore/engine/generator.h"

namespace kv {
namespace {

Date SystemNow() {
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &now);
#else
    localtime_r(&now, &local);
#endif
    return Date::FromCivil(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                           local.tm_sec);
}

}  // namespace

Connection::Connection() : clock(SystemNow), compiler_(std::make_unique<Compiler>(*this)) {}

Connection::~Connection() = default;

bool Connection::ChangeRow(const TableInfo& table, RowKey key, std::span<const std::size_t> columns,
                           std::vector<Value> values) {
    values.emplace_back(static_cast<long long>(key));
    return Change(table, Sql().UpdateRow(table, columns), values) > 0;
}

bool Connection::DeleteRow(const TableInfo& table, RowKey key) {
    const Value values[] = {static_cast<long long>(key)};
    return Change(table, Sql().DeleteRow(table), values) > 0;
}

WriteStep::WriteStep(Connection& connection) : connection_(connection), open_(!connection.InTransaction()) {
    if (open_)
        connection_.BeginTransaction();
}

WriteStep::~WriteStep() {
    if (open_) {
        connection_.RollbackTransaction();
        ++connection_.rolledBack;
    }
}

void WriteStep::Finish() {
    if (open_)
        connection_.CommitTransaction();
    open_ = false;
}

}  // namespace kv
