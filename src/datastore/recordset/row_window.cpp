#include "datastore/recordset/row_window.h"

#include <algorithm>

#include "datastore/faults.h"
#include "datastore/workspace.h"

namespace kv {
namespace {

using Form = FieldSubset::Form;

constexpr std::size_t kFirstBatch = 32;
constexpr std::size_t kGrowth = 4;
constexpr std::size_t kLargestBatch = 1024;
/// How many values are kept at once; of longer results the rest is read when it is walked to.
constexpr std::size_t kMostCells = 1U << 20;
/// How many keys apart rows may lie to be read as one range, rows between them included.
constexpr RowKey kSparsest = 4;

Value KeyValue(RowKey key) {
    return key == kNoRow ? Value() : Value(static_cast<long long>(key));
}

}  // namespace

RowWindow::RowWindow(Connection& connection, const CompiledSelect& query, const std::vector<Value>& literals)
    : connection_(connection), query_(query), literals_(literals), slots_(query.Fields().size()) {
    UseFields(query.AllFields());
}

void RowWindow::UseFields(std::shared_ptr<const FieldSubset> fields) {
    if (fields == fields_)
        return;
    fields_ = std::move(fields);
    width_ = static_cast<std::size_t>(fields_->Count());
    for (std::size_t field = 0; field < slots_.size(); ++field)
        slots_[field] = {static_cast<std::uint32_t>(fields_->CellOf(field)), query_.Fields()[field].type,
                         false};
}

void RowWindow::Prepare(std::size_t position, std::size_t field, const KeyList& keys) {
    query_.NoteUse(field);
    if (fields_->CellOf(field) < 0) {
        UseFields(query_.AllFields());
        LoadRows(position, position + 1, connection_.Stamp(query_.Watch()), keys);
    }
    slots_[field].ready = true;
}

void RowWindow::FailDeleted() {
    throw faults::RecordDeleted();
}

void RowWindow::Begin(std::size_t first, std::int64_t stamp, std::shared_ptr<const FieldSubset> fields) {
    UseFields(std::move(fields));
    block_.Clear();
    missing_.clear();
    anyMissing_ = false;
    first_ = first;
    count_ = 0;
    stamp_ = stamp;
}

std::size_t RowWindow::GrowBatch() {
    batch_ = batch_ < kFirstBatch ? kFirstBatch : std::min(batch_ * kGrowth, kLargestBatch);
    return batch_;
}

std::size_t RowWindow::Take(Cursor& cursor, std::size_t most, KeyList& keys) {
    const std::optional<std::size_t> keyCell = fields_->KeyCell();
    const auto keyCount = static_cast<int>(keyCell ? 0 : keys.Width());
    std::vector<RowKey> taken;
    RowBlock spare;  // where there is no room for values, those that are keys are fetched all the same
    std::size_t rows = 0;
    while (rows < most) {
        const bool room = frozen_ || block_.Cells() < kMostCells;
        RowBlock& block = room ? block_ : spare;
        const int fieldCount = room || keyCell ? fields_->Count() : 0;
        const std::size_t wanted = std::min(most - rows, kLargestBatch);
        taken.clear();
        spare.Clear();
        const std::size_t before = block.Cells();
        const std::size_t got = cursor.Fetch(wanted, keyCount, fieldCount, taken, block);
        for (std::size_t row = 0; keyCell && row < got; ++row)
            taken.push_back(block.WholeAt(before + row * width_ + *keyCell));
        keys.AddAll(taken, got);
        if (room)
            count_ += got;
        rows += got;
        if (got < wanted)
            break;
    }
    return rows;
}

bool RowWindow::Exists(std::size_t position, const KeyList& keys) {
    if (!IsFresh(position))
        Load(position, keys);
    return !anyMissing_ || !missing_[position - first_];
}

void RowWindow::NoteWritten(std::size_t position, const EditBuffer& edit) {
    // What is worked out of other columns only the engine knows.
    for (std::size_t field = 0; field < slots_.size(); ++field)
        if (Knows(field) && query_.TargetColumn(field) < 0)
            return Drop();
    for (std::size_t field = 0; field < slots_.size(); ++field) {
        const int column = query_.TargetColumn(field);
        if (column < 0 || !Knows(field))
            continue;
        if (const Value* written = edit.Find(static_cast<std::size_t>(column)))
            block_.Put((position - first_) * width_ + slots_[field].cell, *written);
    }
    stamp_ = connection_.Stamp(query_.Watch());
}

void RowWindow::AddMissing(std::size_t row) {
    block_.Extend(width_);
    if (!anyMissing_)
        missing_.assign(count_, false);
    missing_[row] = true;
    anyMissing_ = true;
}

void RowWindow::Load(std::size_t position, const KeyList& keys) {
    const std::int64_t stamp = connection_.Stamp(query_.Watch());
    const bool forward = position == first_ + count_;
    const bool backward = position + 1 == first_;
    if (stamp == stamp_ && (forward || backward))
        GrowBatch();
    else
        batch_ = 1;
    const std::size_t batch = batch_;
    const std::size_t first = backward ? position + 1 - std::min(batch, position + 1) : position;
    const std::size_t end = backward ? position + 1 : std::min(position + batch, keys.Size());
    UseFields(query_.UsedFields());
    LoadRows(first, end, stamp, keys);
}

void RowWindow::LoadRows(std::size_t first, std::size_t end, std::int64_t stamp, const KeyList& keys) {
    Begin(first, stamp, fields_);
    try {
        count_ = end - first;
        if (!LoadRange(keys))
            LoadOneByOne(keys);
    } catch (...) {
        Drop();
        throw;
    }
}

bool RowWindow::LoadRange(const KeyList& keys) {
    if (count_ < 2 || !keys.Ascending())
        return false;
    const RowKey low = keys.One(first_);
    const RowKey high = keys.One(first_ + count_ - 1);
    if (high - low > kSparsest * static_cast<RowKey>(count_))
        return false;
    const EngineSql& sql = fields_->Sql(Form::KeyRange);
    const Value ends[] = {KeyValue(low), KeyValue(high)};
    const auto cursor = connection_.Query(sql.text, ParameterValues(sql, literals_, ends, connection_.clock));
    std::size_t row = 0;
    while (row < count_ && cursor->Next()) {
        const RowKey key = cursor->Key(0);
        for (; row < count_ && keys.One(first_ + row) < key; ++row)
            AddMissing(row);
        if (row == count_ || keys.One(first_ + row) != key)
            continue;
        cursor->Read(block_, 1, fields_->Count());
        ++row;
    }
    for (; row < count_; ++row)
        AddMissing(row);
    return true;
}

void RowWindow::LoadOneByOne(const KeyList& keys) {
    std::optional<ReadSpan> span;
    if (count_ > 1)
        span.emplace(connection_);
    const EngineSql& sql = fields_->Sql(Form::ByKey);
    std::vector<Value> given(keys.Width());
    std::unique_ptr<Cursor> cursor;
    for (std::size_t row = 0; row < count_; ++row) {
        const std::span<const RowKey> key = keys.At(first_ + row);
        std::transform(key.begin(), key.end(), given.begin(), KeyValue);
        const std::vector<Value> values = ParameterValues(sql, literals_, given, connection_.clock);
        if (cursor)
            cursor->Restart(values);
        else
            cursor = connection_.Query(sql.text, values);
        bool found = cursor->Next();
        for (std::size_t i = 0; found && i < key.size(); ++i)
            found = cursor->Key(static_cast<int>(i)) == key[i];
        if (found)
            cursor->Read(block_, static_cast<int>(key.size()), fields_->Count());
        else
            AddMissing(row);
    }
}

}  // namespace kv
