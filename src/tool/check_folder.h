#pragma once
#include <filesystem>
#include <string>
#include <vector>

#include "datastore/workspace.h"

namespace kv::tool {

enum class CheckMode { Report, Repair };

/// One line each, behind the name of its database.
struct CheckResult {
    std::vector<std::string> problems;  ///< none when all is sound
    std::vector<std::string> repaired;  ///< what was put right; none without CheckMode::Repair
};

/// Tests the databases of a data folder: the engine's own integrity test, the tables and columns against
/// data/schema, one Agency row, keys that name a row which is not there where the rules never leave such, and
/// what an interrupted step leaves between clients, authorizations, assignments and visits. What lies
/// outside the schema is no problem.
///
/// With CheckMode::Repair what has one right answer is put right first, each in a transaction of its own, and
/// the problems are those that are left. Nothing is repaired where an engine finds its database damaged.
/// Visits are never deleted, and what was worked or changed by hand is not touched.
CheckResult CheckDataFolder(Workspace& workspace, const std::filesystem::path& folder,
                            CheckMode mode = CheckMode::Report);

}  // namespace kv::tool
