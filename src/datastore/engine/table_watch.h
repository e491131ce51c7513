#pragma once
#include <cstdint>
#include <vector>

namespace kv {

/// The tables of a query, as an engine counts their changes one by one; empty where it does not.
struct TableWatch {
    std::vector<const std::int64_t*> changes;
};

}  // namespace kv
