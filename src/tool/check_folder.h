#pragma once
#include <filesystem>
#include <string>
#include <vector>

#include "datastore/workspace.h"

namespace kv::tool {

/// Tests the databases of a data folder: the engine's own integrity test, the tables and columns against
/// data/schema, one Agency row, and keys that name a row which is not there where the rules never leave such.
/// Answers one line a problem, each behind the name of its database; none when all is sound. What lies
/// outside the schema is no problem.
std::vector<std::string> CheckDataFolder(Workspace& workspace, const std::filesystem::path& folder);

}  // namespace kv::tool
