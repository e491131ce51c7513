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
const TableInfo& FindTable(const Database& database, std::string_view name);

/// The statement that reads `columns` (all of them by default) of a table ordered by its primary key; in the
/// table's own order where it has none.
std::string RowsInKeyOrder(const TableInfo& table, const std::vector<std::string>& columns = {});

/// Adds rows to a table, given counters included. The caller holds the transaction. Columns that are not
/// named take their defaults.
class RowWriter {
  public:
    /// `columns` are places in the table.
    RowWriter(Database& database, const TableInfo& table, const std::vector<std::size_t>& columns);
    void Begin();
    /// The i-th of the columns given. Throws EngineError.
    void Set(std::size_t i, Value value);
    void Write();
    /// Lets the counter go on behind the highest number that was given.
    void Finish();

  private:
    Database& database_;
    const TableInfo& table_;
    std::vector<std::size_t> columns_;
    Recordset rows_;
    std::int64_t highest_ = 0;
};

}  // namespace kv::tool
