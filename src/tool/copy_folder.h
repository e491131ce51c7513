#pragma once
#include <filesystem>
#include <string>

#include "datastore/workspace.h"
#include "session/ports.h"

namespace kv::tool {

struct CopyCounts {
    long tables = 0;
    long rows = 0;
};

/// Copies the databases of a data folder, wherever they lie, tables, rows and counters, to a folder or a
/// database server that holds none or only those that a fresh `init` makes. Databases of an older schema are
/// brought to the present one: columns that both have are copied, tables and columns outside the schema are
/// kept. Each table is read back and compared by its number of rows and a checksum of their content. A folder
/// gets KESTRAVA.INI where it has none, without the server that it may name. All or nothing: a failure leaves
/// the target as it was, and what a copy that was broken off left is taken away by the next one. Throws
/// Refused and EngineError.
CopyCounts CopyDataFolder(Workspace& workspace, const std::filesystem::path& from, const std::string& to,
                          Progress& progress);

}  // namespace kv::tool
