#pragma once
#include <string>
#include <vector>

#include "datastore/catalogue.h"
#include "datastore/engine/postgres/pg_link.h"

namespace kv::postgres {

// The tables as the server keeps them. Each of the dialect's types has a type of the server's own, so that
// the catalogue is read back from it and other programs see dates as dates and money as money. Names are
// lower case; a name that is spelled otherwise stands in the remark of its table or column. A counter is an
// identity column; a table without one gets the identity kv_row.

/// The statements that make a table of a schema with its indexes, its counter and its view.
std::vector<std::string> CreateTableSql(const TableInfo& table, const std::string& schema);
/// Where the views of a schema's tables stand: the same rows for programs that search texts by LIKE, which
/// the server refuses to columns that compare without regard to case.
std::string ViewsOf(std::string_view schema);
std::vector<std::string> CreateIndexSql(const std::string& table, const IndexInfo& index,
                                        const std::vector<bool>& descending);
/// With its view; what another program built upon it keeps it there (3219).
std::string DropTableSql(const std::string& table, const std::string& schema);

/// All tables, or `only` one.
Catalogue ReadCatalogue(Link& link, const std::string& only = {});

}  // namespace kv::postgres
