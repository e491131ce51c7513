#pragma once
#include <filesystem>

#include "datastore/workspace.h"
#include "session/ports.h"

namespace kv::tool {

struct CopyCounts {
    long tables = 0;
    long rows = 0;
};

/// Copies the databases of a data folder, tables, rows and counters, to a folder that holds none or only
/// those that a fresh `init` makes. Databases of an older schema are brought to the present one: columns that
/// both have are copied, tables and columns outside the schema are kept. KESTRAVA.INI goes along where the
/// target has none. All or nothing: a failure leaves the target as it was. Throws Refused and EngineError.
CopyCounts CopyDataFolder(Workspace& workspace, const std::filesystem::path& from,
                          const std::filesystem::path& to, Progress& progress);

}  // namespace kv::tool
