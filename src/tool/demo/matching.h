#pragma once
#include <array>
#include <vector>

#include "tool/demo/model.h"

namespace kv::demo {

/// Finds caregivers who fit a client's visits and are free for them.
class Matching {
  public:
    Matching(World& world, Random random);

    /// A caregiver for these weekly visits from one day to another, or -1; her week then holds them. `gone`
    /// looks among those who have left, up to their last day, for visits of the past.
    int TakeForWeek(const Client& client, const Authorization& authorization, const std::vector<Slot*>& slots,
                    long from, long to, bool gone = false);
    /// A caregiver for one visit, or -1; her days then hold it.
    int TakeForDay(const Client& client, const Authorization& authorization, long day, Span time);
    /// True when a declared absence of the day runs into the time.
    bool IsAbsent(int caregiver, Span time) const;

  private:
    using Candidates = std::array<std::vector<int>, 16>;  // by district
    template <typename Test>
    int Search(const std::vector<int>& candidates, Test test);
    bool Suits(int caregiver, const Client& client, const Authorization& authorization) const;
    bool HasRoom(const Caregiver& caregiver, const Slot& slot, long from, long to) const;

    World& world_;
    Random random_;
    Candidates present_;
    Candidates gone_;
};

}  // namespace kv::demo
