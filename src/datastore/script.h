#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace kv {

/// The statements of a script, separated by semicolons outside quotes. Lines that begin with -- are remarks.
std::vector<std::string> SplitScript(std::string_view script);

}  // namespace kv
