#pragma once
#include <string_view>

namespace kv {

class Connection;

/// Runs one statement of the dialect that has no rows to open; how many rows it touched.
long RunAction(Connection& connection, std::string_view sql);

}  // namespace kv
