#pragma once
#include <stdexcept>

#include <nlohmann/json.hpp>

#include "base/csv.h"
#include "datastore/catalogue.h"

namespace kv::tool {

/// A text that a column can't hold; the words say why.
class CellError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// What a CSV cell puts into a column. Throws CellError.
Value ReadCell(const CsvCell& cell, const ColumnInfo& column);
/// The cell that ReadCell reads back as the value.
CsvCell WriteCell(const Value& value);
/// Dates as "YYYY-MM-DD HH:MM:SS", money as a number.
nlohmann::ordered_json JsonValue(const Value& value);

}  // namespace kv::tool
