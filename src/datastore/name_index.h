#pragma once
#include <array>
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
    int Find(std::string_view name) const {
        // The names asked for are nearly always literals of the program: the same text at the same place.
        const Memo& memo = memos_[(reinterpret_cast<std::uintptr_t>(name.data()) >> 2) % memos_.size()];
        if (memo.at == name.data() && names_[static_cast<std::size_t>(memo.place)] == name)
            return memo.place;
        return FindSlowly(name);
    }

  private:
    static std::size_t Hash(std::string_view name);
    std::size_t SlotOf(std::string_view name) const;
    void Grow();

    int FindSlowly(std::string_view name) const;

    struct Memo {
        const char* at = nullptr;
        std::int32_t place = 0;
    };
    mutable std::array<Memo, 64> memos_{};
    std::vector<std::string> names_;
    std::vector<std::int32_t> slots_;  // a place, or -1; their number is a power of two
};

}  // namespace kv
