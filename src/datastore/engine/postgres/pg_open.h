#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "datastore/engine/connection.h"
#include "datastore/engine/postgres/pg_link.h"
#include "datastore/replacing.h"
#include "datastore/workspace.h"

namespace kv::postgres {

/// Opens one of the server's schemas. Throws EngineError 3024 where the server holds no such database of this
/// program, 3343 for one of another schema version, 3151 where the server can't be reached. Brings the server
/// newer functions where it has older ones.
std::shared_ptr<Connection> Open(const std::string& server, const std::string& schema, SchemaCheck check);

/// Throws 3343 unless the database is of the schema's present version.
void RequireSchema(Connection& connection);

/// Makes a schema with these tables, whole or not at all, and what the server lacks of the program's own
/// functions. 3204 when there is such a schema already.
void Create(const std::string& server, const std::string& schema, const std::vector<std::string>& statements);

/// The version of the functions that this program brings to a server.
std::int64_t FunctionsVersion();

bool Exists(const std::string& server, const std::string& schema);
/// Takes away a database that this program made. Nothing happens where there is none. 3219 where another
/// program has built something upon it.
void Drop(const std::string& server, const std::string& schema);
/// Puts databases in the place of others, `{from, to}` each, or takes one away, without a `to`. With a look
/// nobody else comes to those that go from then on. The caller holds the transaction.
void MoveAll(Link& link, const std::vector<std::pair<std::string, std::string>>& moves,
             const TableLook& look);

}  // namespace kv::postgres
