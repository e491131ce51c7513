#pragma once
#include <string>
#include <vector>

#include "datastore/workspace.h"

namespace kv {

/// What a pick screen searches by: an item of each of its lists, and the text typed so far.
struct PickQuery {
    std::string field;
    std::string status;
    std::string group = "ALL";
    std::string text;
};

/// The rows found, the id first, in the order of the pick screen's columns.
using PickRows = std::vector<std::vector<Value>>;
/// All rows of a statement. Throws EngineError.
PickRows LoadPickRows(Database& database, const std::string& statement);

/// What a pick screen answers when nothing was picked.
inline constexpr const char* kCancelled = "CANCEL";

}  // namespace kv
