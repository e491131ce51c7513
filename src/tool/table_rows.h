#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "datastore/workspace.h"

namespace kv::tool {

/// The name as a statement may hold it, whatever blanks or words it is made of.
std::string Bracketed(std::string_view name);
/// "[a], [b]".
std::string BracketedList(const std::vector<std::string>& names);

/// The table, its name matched without regard to case. Throws EngineError 3078.
TableInfo FindTable(const Database& database, std::string_view name);

/// The statement that reads `columns` of a whole table in its own order. Opened as a dynaset it is read in
/// strokes, however many rows there are; what must not change meanwhile needs a span.
std::string AllRows(const TableInfo& table, const std::vector<std::string>& columns);
/// The statement that reads a table ordered by its primary key; in the table's own order where it has none.
std::string RowsInKeyOrder(const TableInfo& table);

/// Adds rows to a table, given counters included. The caller holds the transaction. Columns that are not
/// named take their defaults.
class RowWriter {
  public:
    /// `columns` are places in the table.
    RowWriter(Database& database, TableInfo table, std::vector<std::size_t> columns);
    void Begin() { rows_.AddNew(); }
    /// The i-th of the columns given; a counter that is Null keeps the number that it was handed. Throws
    /// EngineError.
    void Set(std::size_t i, Value value);
    void Write() { rows_.Update(); }

  private:
    TableInfo table_;
    std::vector<std::size_t> columns_;
    Recordset rows_;
};

}  // namespace kv::tool
