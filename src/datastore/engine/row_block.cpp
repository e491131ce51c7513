#include "datastore/engine/row_block.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"

namespace kv {
namespace {

/// What a block of the usual batch needs; more is given back when the rows are let go.
constexpr std::size_t kCellsKept = 65536;
constexpr std::size_t kTextKept = 1048576;
/// What a long walk asks for at once: the system hands such memory out page by page as it is used, so it
/// costs less than moving the cells each time they outgrow their room.
constexpr std::size_t kCellsOfAWalk = 1U << 20;

}  // namespace

void RowBlock::Clear() {
    cells_.clear();
    texts_.clear();
    if (cells_.capacity() > kCellsKept)
        cells_.shrink_to_fit();
    if (texts_.capacity() > kTextKept)
        texts_.shrink_to_fit();
}

void RowBlock::Grow(std::size_t cells) {
    const std::size_t doubled = std::max(cells, 2 * cells_.capacity());
    cells_.reserve(doubled > kCellsKept ? std::max(doubled, kCellsOfAWalk) : doubled);
}

void RowBlock::Put(std::size_t place, const Value& value) {
    Cell& cell = cells_[place];
    cell = Cell();
    switch (value.Type()) {
        case ValueType::Null:
            return;
        case ValueType::Text:
            return SetText(cell, *value.IfText());
        case ValueType::Boolean:
        case ValueType::Integer:
            cell.kind = Kind::Integer;
            cell.integer = value.ToInteger();
            return;
        default:
            cell.kind = Kind::Real;
            cell.integer = std::bit_cast<std::int64_t>(value.ToDouble());
    }
}

double RowBlock::NumberOf(const Cell& cell) const {
    if (cell.kind == Kind::Real)
        return std::bit_cast<double>(cell.integer);
    return cell.kind == Kind::Integer ? static_cast<double>(cell.integer) : Val(TextOf(cell));
}

Value RowBlock::Converted(const Cell& cell, ColumnType type) const {
    switch (type) {
        case ColumnType::Text:
        case ColumnType::Memo:
            return {NumberText(NumberOf(cell))};
        case ColumnType::Boolean:
            return {NumberOf(cell) != 0};
        case ColumnType::Short:
        case ColumnType::Long:
            return {std::llround(NumberOf(cell))};
        case ColumnType::Double:
            return {NumberOf(cell)};
        case ColumnType::Currency:
            return {Currency::FromDouble(NumberOf(cell))};
        case ColumnType::DateTime:
            return {Date(NumberOf(cell))};
    }
    return {};
}

}  // namespace kv
