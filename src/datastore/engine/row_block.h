#pragma once
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
    void Clear() {
        cells_.clear();
        texts_.clear();
    }
    void Reserve(std::size_t cells) { cells_.reserve(cells); }

    void AddNull() { cells_.emplace_back(); }
    void AddInteger(std::int64_t number) {
        Cell& cell = cells_.emplace_back();
        cell.kind = Kind::Integer;
        cell.integer = number;
    }
    void AddReal(double number) {
        Cell& cell = cells_.emplace_back();
        cell.kind = Kind::Real;
        cell.real = number;
    }
    void AddText(std::string_view text) {
        Cell& cell = cells_.emplace_back();
        cell.kind = Kind::Text;
        cell.length = static_cast<std::uint32_t>(text.size());
        cell.integer = static_cast<std::int64_t>(texts_.size());
        texts_.append(text);
    }

    std::size_t Cells() const { return cells_.size(); }
    /// The cell's content as a field of that type.
    Value At(std::size_t cell, ColumnType type) const;

  private:
    enum class Kind : std::uint8_t { Null, Integer, Real, Text };
    struct Cell {
        union {
            std::int64_t integer = 0;  ///< of a text: where it begins
            double real;
        };
        std::uint32_t length = 0;
        Kind kind = Kind::Null;
    };

    double NumberOf(const Cell& cell) const;

    std::vector<Cell> cells_;
    std::string texts_;
};

}  // namespace kv
