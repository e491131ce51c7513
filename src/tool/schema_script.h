#pragma once
#include <string>

#include "datastore/workspace.h"

namespace kv::tool {

/// A column's type in the words of data/schema: "TEXT(30)", "COUNTER", "DATETIME".
std::string TypeWords(const ColumnInfo& column);
/// The CREATE statements of a table and its indexes.
std::string TableScript(const TableInfo& table);

/// The tables of a database of the data folder as data/schema has them.
Catalogue SchemaTables(Workspace& workspace, const std::string& name);

}  // namespace kv::tool
