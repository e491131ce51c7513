#include "datastore/recordset/edit_buffer.h"

#include <fmt/format.h>

#include "datastore/convert.h"
#include "datastore/engine/generator.h"
#include "datastore/faults.h"

namespace kv {

void EditBuffer::BeginAdd(const TableInfo& table) {
    Cancel();
    const auto counter = table.Counter();
    if (counter) {
        counter_ = connection_.TakeCounters(table, 1);
        counterInTransaction_ = connection_.InTransaction();
        rolledBackThen_ = connection_.rolledBack;
    }
    table_ = &table;
    values_.resize(table.columns.size());
    for (std::size_t i = 0; i < values_.size(); ++i)
        values_[i] = table.columns[i].defaultValue;
    if (counter)
        values_[*counter] = Value(static_cast<long long>(*counter_));
    mode_ = EditState::Add;
}

void EditBuffer::BeginEdit(const TableInfo& table, RowKey key) {
    Cancel();
    table_ = &table;
    key_ = key;
    // First, since a lock that can't even be asked for leaves no edit begun.
    lockedFromStart_ = Lock();
    epoch_ = connection_.LockEpoch();
    values_.resize(table.columns.size());
    mode_ = EditState::InProgress;
}

bool EditBuffer::Lock() {
    locked_ = connection_.TryLockRow(*table_, key_, this);
    return locked_;
}

void EditBuffer::Unlock() {
    if (locked_)
        connection_.UnlockRow(*table_, key_, this);
    locked_ = false;
}

void EditBuffer::Abandon() {
    // The store has taken a counter of a transaction back itself when that was rolled back.
    const bool gone = counterInTransaction_ && rolledBackThen_ != connection_.rolledBack;
    if (counter_ && !counterTried_ && !gone)
        connection_.ReturnCounter(*table_, *counter_);
    Finish();
}

void EditBuffer::Finish() {
    Unlock();
    mode_ = EditState::None;
    lockedFromStart_ = false;
    counter_.reset();
    counterTried_ = false;
    key_ = kNoRow;
    values_.clear();
    original_.clear();
}

const Value* EditBuffer::Find(std::size_t column) const {
    return column < values_.size() && values_[column] ? &*values_[column] : nullptr;
}

void EditBuffer::Set(std::size_t column, const Value& value) {
    const ColumnInfo& info = table_->columns[column];
    if (info.counter && mode_ == EditState::InProgress)
        throw EngineError(engine_error::kFieldNotUpdatable,
                          fmt::format("Field '{}' cannot be updated: the store counts it.", info.name));
    values_[column] = ConvertToColumn(value, info);
}

RowKey EditBuffer::WriteAdded() {
    connection_.AboutToWrite();
    std::vector<Value> values(values_.size());
    for (std::size_t i = 0; i < values_.size(); ++i)
        values[i] = *values_[i];
    const auto counter = table_->Counter();
    const bool ownCounter = counter && *values_[*counter] != Value(static_cast<long long>(*counter_));
    // Nobody knows of a write that failed whether its number stands in a row all the same.
    counterTried_ = true;
    return connection_.AddRow(*table_, values, ownCounter);
}

bool EditBuffer::WriteEdited() {
    std::vector<std::size_t> columns;
    std::vector<Value> values;
    for (std::size_t i = 0; i < values_.size(); ++i) {
        if (!values_[i])
            continue;
        columns.push_back(i);
        values.push_back(*values_[i]);
    }
    if (columns.empty())
        return true;
    connection_.AboutToWrite();
    return connection_.ChangeRow(*table_, key_, columns, std::move(values));
}

}  // namespace kv
