#pragma once
#include <filesystem>
#include <string>
#include <vector>

#include "datastore/workspace.h"

namespace kv {

/// The file name of a database of the data folder: "kestrava" is in "kestrava.mdb".
std::string DatabaseFile(const std::string& name);

/// Makes the data folder and what it lacks of its databases, each empty but for main.mdb, which gets one
/// Agency row with workable defaults; and KESTRAVA.INI with the country ("US" or "CANADA"). What exists is
/// left alone. Answers the file names of the databases that were made, in the order of SchemaNames. Throws
/// EngineError and std::filesystem::filesystem_error.
std::vector<std::string> InitDataFolder(Workspace& workspace, const std::filesystem::path& folder,
                                        const std::string& country);

}  // namespace kv
