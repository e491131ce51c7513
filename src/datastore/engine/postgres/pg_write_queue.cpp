#include "datastore/engine/postgres/pg_write_queue.h"

#include <algorithm>
#include <numeric>

#include <fmt/format.h>

#include "base/text.h"

namespace kv::postgres {
namespace {

/// Fewer rows are sooner there one by one than with the ways that it takes to begin and end a copy.
constexpr std::size_t kFewRows = 4;
/// How much waits at most, that a table of any size can be loaded.
constexpr std::size_t kMostBytes = 1U << 20;
constexpr std::size_t kMostChanges = 1000;

std::vector<std::size_t> AllColumns(const TableInfo& table) {
    std::vector<std::size_t> columns(table.columns.size());
    std::iota(columns.begin(), columns.end(), 0U);
    return columns;
}

}  // namespace

/// The table as it is now, kept for as long as something of it waits.
const TableInfo& WriteQueue::Note(const TableInfo& table) {
    auto known = tables_.find(table.name);
    if (known == tables_.end())
        known = tables_.emplace(table.name, Table{table, generator_.Name(table.name)}).first;
    return known->second.info;
}

void WriteQueue::Add(const TableInfo& table, std::span<const Value> values) {
    RequireStorable(values);
    Rows& added = added_[table.name];
    added.table = &Note(table);
    AppendCopyRow(added.copied, values);
    if (++added.count < kFewRows)
        added.first.emplace_back(values.begin(), values.end());
    if (added.copied.size() >= kMostBytes)
        Send();
}

void WriteQueue::Change(const TableInfo& table, RowKey key, std::span<const std::size_t> columns,
                        std::span<const Value> values) {
    RequireStorable(values);
    const auto [place, first] = changedPlaces_.try_emplace({table.name, key}, changed_.size());
    if (first)
        changed_.push_back({&Note(table), key, {}});
    ChangedRow& changed = changed_[place->second];
    for (std::size_t i = 0; i < columns.size(); ++i)
        changed.values[columns[i]] = values[i];
    if (changed_.size() >= kMostChanges)
        Send();
}

/// A statement that does not name a table can't see its rows.
bool WriteQueue::Concerns(std::string_view sql) const {
    return std::any_of(tables_.begin(), tables_.end(), [&](const auto& table) {
        return sql.find(table.second.name) != std::string_view::npos;
    });
}

/// New rows first, since changes may be of them.
void WriteQueue::Send() {
    try {
        for (const auto& [name, rows] : added_)
            SendRows(rows);
        for (const ChangedRow& row : changed_)
            SendChange(row);
    } catch (const EngineError& error) {
        link_.Break(error);  // some of it may be there
        throw;
    }
    Clear();
}

void WriteQueue::SendRows(const Rows& added) {
    const TableInfo& table = *added.table;
    const std::vector<std::size_t> columns = AllColumns(table);
    if (added.count < kFewRows) {
        const std::string sql = table.Counter() ? generator_.InsertRow(table, columns)
                                                : generator_.InsertKeyedRow(table, columns);
        for (const std::vector<Value>& row : added.first)
            link_.WriteLater(sql, row);
        return;
    }
    std::vector<std::string> names;
    for (const ColumnInfo& column : table.columns)
        names.push_back(generator_.Name(column.name));
    if (!table.Counter())
        names.push_back(generator_.Name(kKeyColumn));
    link_.CopyIn(fmt::format("COPY {} ({}) FROM STDIN", generator_.Name(table.name), Join(names, ", ")),
                 added.copied);
}

void WriteQueue::SendChange(const ChangedRow& changed) {
    std::vector<std::size_t> columns;
    std::vector<Value> values;
    for (const auto& [column, value] : changed.values) {
        columns.push_back(column);
        values.push_back(value);
    }
    values.emplace_back(static_cast<long long>(changed.key));
    link_.WriteLater(generator_.UpdateRow(*changed.table, columns), values);
}

void WriteQueue::Clear() noexcept {
    added_.clear();
    changed_.clear();
    changedPlaces_.clear();
    tables_.clear();
}

}  // namespace kv::postgres
