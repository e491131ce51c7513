#pragma once
#include <string>

#include "datastore/engine/postgres/pg_link.h"
#include "datastore/replacing.h"

namespace kv::postgres {

/// Keeps everybody else out of a schema's tables until the transaction ends, and tells of their rows.
void HoldTables(Link& link, const std::string& schema, const TableLook& look);

/// Takes away the tables of a schema with their views, and both schemas. What other programs made of it or
/// put there stays and is named: 3219.
void DropSchema(Link& link, const std::string& schema);

}  // namespace kv::postgres
