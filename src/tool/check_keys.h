#pragma once
#include "tool/check_findings.h"
#include "tool/check_history.h"

namespace kv::tool {

/// Rows whose key names a row that is not there, where the rules never leave such: one for each key. What the
/// rules would have deleted goes with a parent that the history says was deleted; a visit or a To Do item
/// stays, and belongs to no assignment or series then. A row that lost its parent in another way is for a
/// person.
Findings FindLostParents(const OpenDatabases& databases, PurposeHistory& history);

}  // namespace kv::tool
