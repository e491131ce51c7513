#pragma once
#include <iosfwd>
#include <string>
#include <vector>

namespace kv {

/// Runs kvtool: arguments without the program's name in, results on `out`, messages and errors on `err`.
/// Answers the exit status: 0 done, 1 refused or failed, 2 unusable arguments.
int RunTool(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace kv
