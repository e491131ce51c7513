#pragma once
#include <string>
#include <vector>

#include <sqlite3.h>

#include "datastore/catalogue.h"

namespace kv::sqlite {

// The tables as the engine keeps them. The dialect's own type names stand in the file, so that the catalogue
// is read back from it; all of them are chosen so that the engine stores what it is given ("MEMO TEXT", since
// its rules take a bare MEMO for a number). A counter is the engine's row number; a table without one gets
// the hidden column kv_row, whose numbers are never given twice.

/// The statements that make a table with its indexes and counter.
std::vector<std::string> CreateTableSql(const TableInfo& table);
std::string CreateIndexSql(const std::string& table, const IndexInfo& index,
                           const std::vector<bool>& descending);
std::vector<std::string> DropTableSql(const std::string& table);
/// What every database has besides its tables.
std::vector<std::string> FoundationSql();

Catalogue ReadCatalogue(sqlite3* database);

}  // namespace kv::sqlite
