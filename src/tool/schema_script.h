#pragma once
#include <string>
#include <vector>

#include "datastore/workspace.h"

namespace kv::tool {

/// A column's type in the words of data/schema: "TEXT(30)", "COUNTER", "DATETIME".
std::string TypeWords(const ColumnInfo& column);
/// The CREATE statements of a table and its indexes, the table's first.
std::vector<std::string> TableStatements(const TableInfo& table);
/// The same as a script.
std::string TableScript(const TableInfo& table);

}  // namespace kv::tool
