#include "datastore/recordset/row_window.h"

#include <algorithm>

#include "datastore/faults.h"
#include "datastore/workspace.h"

namespace kv {
namespace {

constexpr std::size_t kGrowth = 4;
constexpr std::size_t kLargestBatch = 1024;
/// How many keys apart rows may lie to be read as one range, rows between them included.
constexpr RowKey kSparsest = 4;

}  // namespace

void RowWindow::StartFill(std::int64_t stamp) {
    Drop();
    stamp_ = stamp;
    batch_ = static_cast<std::size_t>(CompiledSelect::kFirstRows);
}

void RowWindow::Drop() {
    block_.Clear();
    missing_.clear();
    first_ = count_ = 0;
    batch_ = 1;
}

void RowWindow::AddRow(const Cursor& cursor, std::size_t keys) {
    cursor.Read(block_, static_cast<int>(keys), static_cast<int>(query_.Fields().size()));
    missing_.push_back(false);
    ++count_;
}

void RowWindow::AddMissing() {
    for (std::size_t i = 0; i < query_.Fields().size(); ++i)
        block_.AddNull();
    missing_.push_back(true);
}

Value RowWindow::At(std::size_t position, std::size_t field, const KeyList& keys,
                    std::span<const Value> literals) {
    Ensure(position, keys, literals);
    if (missing_[position - first_])
        throw faults::RecordDeleted();
    return block_.At((position - first_) * query_.Fields().size() + field, query_.Fields()[field].type);
}

bool RowWindow::Exists(std::size_t position, const KeyList& keys, std::span<const Value> literals) {
    Ensure(position, keys, literals);
    return !missing_[position - first_];
}

void RowWindow::Ensure(std::size_t position, const KeyList& keys, std::span<const Value> literals) {
    const bool inside = position >= first_ && position < first_ + count_;
    if (inside && frozen_)
        return;
    const std::int64_t stamp = connection_.Stamp();
    const bool stale = stamp != stamp_;
    if (inside && !stale)
        return;
    const bool forward = position == first_ + count_;
    const bool backward = position + 1 == first_;
    batch_ = !stale && (forward || backward) ? std::min(batch_ * kGrowth, kLargestBatch) : 1;
    stamp_ = stamp;
    const std::size_t first = backward ? position + 1 - std::min(batch_, position + 1) : position;
    Load(first, backward ? position + 1 - first : std::min(batch_, keys.Size() - first), keys, literals);
}

void RowWindow::Load(std::size_t first, std::size_t count, const KeyList& keys,
                     std::span<const Value> literals) {
    block_.Clear();
    block_.Reserve(count * query_.Fields().size());
    missing_.clear();
    first_ = first;
    count_ = count;
    try {
        if (!LoadRange(keys, literals))
            LoadOneByOne(keys, literals);
    } catch (...) {
        Drop();
        throw;
    }
}

bool RowWindow::LoadRange(const KeyList& keys, std::span<const Value> literals) {
    if (count_ < 2 || !keys.Ascending())
        return false;
    const RowKey low = keys.One(first_);
    const RowKey high = keys.One(first_ + count_ - 1);
    if (high - low > kSparsest * static_cast<RowKey>(count_))
        return false;
    const EngineSql& sql = query_.Sql(CompiledSelect::Form::KeyRange);
    const Value ends[] = {static_cast<long long>(low), static_cast<long long>(high)};
    const auto cursor = connection_.Query(sql.text, ParameterValues(sql, literals, ends, connection_.clock));
    std::size_t next = first_;
    const std::size_t end = first_ + count_;
    while (next < end && cursor->Next()) {
        const RowKey key = cursor->Key(0);
        for (; next < end && keys.One(next) < key; ++next)
            AddMissing();
        if (next == end || keys.One(next) != key)
            continue;
        cursor->Read(block_, 1, static_cast<int>(query_.Fields().size()));
        missing_.push_back(false);
        ++next;
    }
    for (; next < end; ++next)
        AddMissing();
    return true;
}

void RowWindow::LoadOneByOne(const KeyList& keys, std::span<const Value> literals) {
    const ReadSpan span(connection_);
    const EngineSql& sql = query_.Sql(CompiledSelect::Form::ByKey);
    std::vector<Value> given(keys.Width());
    std::unique_ptr<Cursor> cursor;
    for (std::size_t position = first_; position < first_ + count_; ++position) {
        const std::span<const RowKey> key = keys.At(position);
        for (std::size_t i = 0; i < key.size(); ++i)
            given[i] = key[i] == kNoRow ? Value() : Value(static_cast<long long>(key[i]));
        const std::vector<Value> values = ParameterValues(sql, literals, given, connection_.clock);
        if (cursor)
            cursor->Restart(values);
        else
            cursor = connection_.Query(sql.text, values);
        bool found = cursor->Next();
        for (std::size_t i = 0; found && i < key.size(); ++i)
            found = cursor->Key(static_cast<int>(i)) == key[i];
        if (!found) {
            AddMissing();
            continue;
        }
        cursor->Read(block_, static_cast<int>(key.size()), static_cast<int>(query_.Fields().size()));
        missing_.push_back(false);
    }
}

}  // namespace kv
