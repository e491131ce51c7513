#pragma once
#include <string>

namespace kv {

/// What an address answers, within a few seconds; the window stays alive meanwhile. Throws std::runtime_error
/// with words for the operator where it does not answer, or answers with an error.
std::string FetchPage(const std::string& address);

}  // namespace kv
