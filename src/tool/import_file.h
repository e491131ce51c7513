#pragma once
#include <string>
#include <vector>

#include "exchange/access_file.h"
#include "session/ports.h"
#include "tool/command.h"

namespace kv::tool {

/// What an import did. `skipped` has one line for each thing that was left behind.
struct ImportCounts {
    long tables = 0;
    long rows = 0;
    std::vector<std::string> skipped;
};

/// Throws Refused when a table that the file would fill holds rows already, the Agency row of a new data
/// folder apart.
void RefuseFilledTables(Database& target, const AccessFile& file);

/// Brings the file's tables into the database, all or nothing. Tables and columns that the database lacks are
/// made. A true value is 1 where the database has a column of numbers for it. A row that the database does
/// not take is told in `skipped`, and the rest goes on. An Agency row that comes in replaces the one there.
ImportCounts ImportFile(Database& target, const AccessFile& file, Progress& progress);

}  // namespace kv::tool
