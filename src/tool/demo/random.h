#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace kv::demo {

/// SplitMix64: the same sequence with every compiler and library, which the distributions of the standard
/// don't promise.
class Random {
  public:
    explicit Random(std::uint64_t seed) : state_(seed) {}
    /// A sequence of its own for one subject, so that a change in one subject leaves the rows of the others
    /// alone.
    Random Fork(std::uint64_t subject) const { return Random(Random(state_ ^ (subject * kGamma)).Next()); }

    std::uint64_t Next() {
        std::uint64_t z = (state_ += kGamma);
        z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
        return z ^ (z >> 31U);
    }
    /// 0 to count - 1; 0 for a count of 0.
    long Below(long count) {
        return count <= 1 ? 0 : static_cast<long>(Next() % static_cast<std::uint64_t>(count));
    }
    /// Both ends included.
    long Between(long low, long high) { return low + Below(high - low + 1); }
    bool Chance(int percent) { return Below(100) < percent; }
    template <typename Container>
    const auto& Pick(const Container& container) {
        return container[static_cast<std::size_t>(Below(static_cast<long>(std::size(container))))];
    }
    template <typename T>
    void Shuffle(std::vector<T>& items) {
        for (std::size_t i = items.size(); i > 1; --i) {
            std::swap(items[i - 1], items[static_cast<std::size_t>(Below(static_cast<long>(i)))]);
        }
    }

  private:
    static constexpr std::uint64_t kGamma = 0x9E3779B97F4A7C15U;
    std::uint64_t state_;
};

}  // namespace kv::demo
