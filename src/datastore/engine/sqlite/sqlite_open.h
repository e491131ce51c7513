#pragma once
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "datastore/engine/connection.h"
#include "datastore/engine/sqlite/sqlite_connection.h"
#include "datastore/replacing.h"
#include "datastore/workspace.h"

namespace kv::sqlite {

/// Opens a database file. Throws EngineError 3024, 3051 or 3343 with words for the operator.
std::shared_ptr<Connection> Open(const std::filesystem::path& path, SchemaCheck check);

/// Throws 3343 unless the database is of the schema's present version.
void RequireSchema(Connection& connection);

/// Makes a file with these tables, whole or not at all: it is made beside its place and moved there when it
/// is done. 3204 when the file exists.
void Create(const std::filesystem::path& path, const std::vector<std::string>& statements);

/// What HeldFiles promises, for one file.
class HeldFile {
  public:
    explicit HeldFile(std::filesystem::path path);
    void Look(const TableLook& look) const;
    void Drop();

  private:
    std::filesystem::path path_;
    Handle handle_;
};

/// Removes a file with all that the engine keeps beside it.
void Drop(const std::filesystem::path& path);

}  // namespace kv::sqlite
