#pragma once
#include <bit>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "datastore/catalogue.h"
#include "datastore/value.h"

namespace kv {

/// What tells a row of a table from all others, for ever: no row added later bears the key of one that was
/// deleted.
using RowKey = std::int64_t;
/// The key where a left join found no row.
inline constexpr RowKey kNoRow = std::numeric_limits<RowKey>::min();

/// Rows as they came from the engine, kept small: numbers in place, all texts in one string. A field becomes
/// a Value when somebody asks for it.
class RowBlock {
  public:
    enum class Kind : std::uint8_t { Null, Integer, Real, Text };
    struct Cell {
        std::int64_t integer = 0;  ///< of a text: where it begins; of a real number: its bits
        std::uint32_t length = 0;
        Kind kind = Kind::Null;
    };

    void Clear();
    /// Room for so many cells more; the first of them. What is not filled in is Null.
    Cell* Extend(std::size_t cells) {
        const std::size_t old = cells_.size();
        if (old + cells > cells_.capacity())
            Grow(old + cells);
        cells_.resize(old + cells);
        return cells_.data() + old;
    }
    Cell* CellAt(std::size_t cell) { return cells_.data() + cell; }
    /// Takes so many cells from the end away.
    void Shrink(std::size_t cells) { cells_.resize(cells_.size() - cells); }
    void SetText(Cell& cell, std::string_view text) {
        cell.kind = Kind::Text;
        cell.length = static_cast<std::uint32_t>(text.size());
        cell.integer = static_cast<std::int64_t>(texts_.size());
        texts_.append(text);
    }

    /// Puts a field's value in the place of what stands there.
    void Put(std::size_t cell, const Value& value);

    std::size_t Cells() const { return cells_.size(); }
    std::int64_t WholeAt(std::size_t cell) const { return cells_[cell].integer; }
    /// The cell's content as a field of that type.
    Value At(std::size_t index, ColumnType type) const {
        const Cell& cell = cells_[index];
        if (cell.kind == Kind::Text && (type == ColumnType::Text || type == ColumnType::Memo))
            return {TextOf(cell)};
        if (cell.kind == Kind::Integer && (type == ColumnType::Long || type == ColumnType::Short))
            return {static_cast<long long>(cell.integer)};
        if (cell.kind == Kind::Real && type == ColumnType::Double)
            return {std::bit_cast<double>(cell.integer)};
        return cell.kind == Kind::Null ? Value() : Converted(cell, type);
    }

  private:
    void Grow(std::size_t cells);
    std::string_view TextOf(const Cell& cell) const { return {texts_.data() + cell.integer, cell.length}; }
    double NumberOf(const Cell& cell) const;
    /// What the engine keeps in another form than that of the field.
    Value Converted(const Cell& cell, ColumnType type) const;

    std::vector<Cell> cells_;
    std::string texts_;
};

}  // namespace kv
