#pragma once
#include "base/text.h"

namespace kv {

/// Keeps a map of texts as the store's engines order and equate them: keys that a statement finds equal are
/// one.
struct TextLess {
    bool operator()(std::string_view a, std::string_view b) const { return CompareText(a, b) < 0; }
};

}  // namespace kv
