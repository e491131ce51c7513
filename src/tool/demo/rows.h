#pragma once
#include <initializer_list>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "datastore/workspace.h"

namespace kv::demo {

/// Adds rows to one table. The columns of a row are named beside their values; they come in the same order
/// row after row, so the place found for the first row is at hand for the others.
class TableFiller {
  public:
    struct Column {
        const char* name = nullptr;
        Value value;
    };

    TableFiller(Database& database, std::string_view table);
    /// Adds a row and answers its counter, 0 in a table without one.
    long Add(std::initializer_list<Column> row);
    long Rows() const { return rows_; }

  private:
    std::size_t Place(std::size_t position, const char* name);

    Recordset recordset_;
    std::vector<std::pair<const char*, std::size_t>> places_;
    std::optional<std::size_t> counter_;
    long rows_ = 0;
};

/// A time of day, carried over midnight.
Date TimeOf(int minutes);
/// That day, or Null for 0.
Value DayOrNull(long day);

}  // namespace kv::demo
