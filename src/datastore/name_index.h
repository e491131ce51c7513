#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

/// Finds places by name without regard to case; where a name stands twice the first counts.
class NameIndex {
  public:
    void Add(std::string_view name);
    /// The place of the name in the order of adding, or -1.
    int Find(std::string_view name) const;

  private:
    static std::size_t Hash(std::string_view name);
    std::size_t SlotOf(std::string_view name) const;
    void Grow();

    std::vector<std::string> names_;
    std::vector<std::int32_t> slots_;  // a place, or -1; their number is a power of two
};

}  // namespace kv
