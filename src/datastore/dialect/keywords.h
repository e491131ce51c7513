#pragma once
#include <string_view>

#include "datastore/dialect/token.h"

namespace kv::dialect {

/// The keyword that a bare word is, without regard to case, or None.
Keyword FindKeyword(std::string_view word);

}  // namespace kv::dialect
