#include "datastore/engine/row_block.h"

#include <cmath>

#include "base/numbers.h"

namespace kv {

double RowBlock::NumberOf(const Cell& cell) const {
    switch (cell.kind) {
        case Kind::Integer:
            return static_cast<double>(cell.integer);
        case Kind::Real:
            return cell.real;
        default:
            return Val(std::string_view(texts_).substr(static_cast<std::size_t>(cell.integer), cell.length));
    }
}

Value RowBlock::At(std::size_t index, ColumnType type) const {
    const Cell& cell = cells_[index];
    if (cell.kind == Kind::Null)
        return {};
    switch (type) {
        case ColumnType::Text:
        case ColumnType::Memo:
            if (cell.kind == Kind::Text)
                return {std::string_view(texts_).substr(static_cast<std::size_t>(cell.integer), cell.length)};
            return {NumberText(NumberOf(cell))};
        case ColumnType::Boolean:
            return {NumberOf(cell) != 0};
        case ColumnType::Short:
        case ColumnType::Long:
            if (cell.kind == Kind::Integer)
                return {static_cast<long long>(cell.integer)};
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
