#include "tool/demo/matching.h"

#include <algorithm>

#include "tool/demo/lists.h"

namespace kv::demo {
namespace {

constexpr int kWeek = 7 * 1440;
constexpr int kTravel = 30;  // minutes from one client to the next
constexpr int kTries = 90;

bool Holds(const std::vector<int>& places, int place) {
    return std::find(places.begin(), places.end(), place) != places.end();
}

/// True when two shares of a week touch, the week being a ring.
bool Collide(const Commitment& taken, const Slot& slot) {
    const int gap = taken.unavailable ? 0 : kTravel;
    const int from = (taken.weekday - 1) * 1440 + taken.start - gap;
    const int to = from + taken.minutes + 2 * gap;
    const int start = (slot.weekday - 1) * 1440 + slot.start;
    for (const int turn : {-kWeek, 0, kWeek}) {
        if (from < start + slot.minutes + turn && start + turn < to) {
            return true;
        }
    }
    return false;
}

double WeeklyHours(const std::vector<Slot*>& slots) {
    double hours = 0;
    for (const Slot* slot : slots) {
        hours += slot->minutes / 60.0 / slot->howOften;
    }
    return hours;
}

}  // namespace

Matching::Matching(World& world, Random random) : world_(world), random_(random) {
    for (int i = 0; i < static_cast<int>(world.caregivers.size()); ++i) {
        const Caregiver& caregiver = world.caregivers[static_cast<std::size_t>(i)];
        const bool present = caregiver.WorksOn(world.calendar.today);
        for (const int district : caregiver.districts) {
            if (present) {
                present_[static_cast<std::size_t>(district)].push_back(i);
            } else if (caregiver.endDay != 0) {
                gone_[static_cast<std::size_t>(district)].push_back(i);
            }
        }
    }
}

template <typename Test>
int Matching::Search(const std::vector<int>& candidates, Test test) {
    const auto count = candidates.size();
    const auto first = static_cast<std::size_t>(random_.Below(static_cast<long>(count)));
    for (std::size_t i = 0; i < std::min<std::size_t>(count, kTries); ++i) {
        const int caregiver = candidates[(first + i) % count];
        if (test(caregiver)) {
            return caregiver;
        }
    }
    return -1;
}

bool Matching::Suits(int caregiver, const Client& client, const Authorization& authorization) const {
    const Caregiver& who = world_.caregivers[static_cast<std::size_t>(caregiver)];
    if (who.discipline < kVisitTypes[authorization.visitType].discipline || Holds(client.banned, caregiver)) {
        return false;
    }
    if ((authorization.visitType == kLiveIn && !who.liveIn) || (client.caregiverSex == 'F' && !who.female) ||
        (client.caregiverSex == 'M' && who.female)) {
        return false;
    }
    const std::string_view wanted = authorization.employeeType;
    const std::string_view type = who.type;
    if (wanted != "BOTH" && type != "BOTH" && wanted != type) {
        return false;
    }
    return std::all_of(client.skills.begin(), client.skills.end(),
                       [&](int skill) { return skill >= kCriticalSkills || Holds(who.skills, skill); });
}

bool Matching::HasRoom(const Caregiver& caregiver, const Slot& slot, long from, long to) const {
    return std::none_of(caregiver.week.begin(), caregiver.week.end(), [&](const Commitment& taken) {
        return taken.from <= to + 1 && from <= taken.to + 1 && Collide(taken, slot);
    });
}

int Matching::TakeForWeek(const Client& client, const Authorization& authorization,
                          const std::vector<Slot*>& slots, long from, long to, bool gone) {
    const double hours = WeeklyHours(slots);
    const auto district = static_cast<std::size_t>(client.district);
    const int found = Search((gone ? gone_ : present_)[district], [&](int caregiver) {
        const Caregiver& who = world_.caregivers[static_cast<std::size_t>(caregiver)];
        if (gone ? who.endDay < from + 14 || who.endDay >= to
                 : who.committedHours + hours > who.hoursWanted) {
            return false;
        }
        return Suits(caregiver, client, authorization) &&
               std::all_of(slots.begin(), slots.end(),
                           [&](const Slot* slot) { return HasRoom(who, *slot, from, to); });
    });
    if (found >= 0) {
        Caregiver& who = world_.caregivers[static_cast<std::size_t>(found)];
        who.committedHours += gone ? 0 : hours;
        for (const Slot* slot : slots) {
            who.week.push_back({slot->weekday, slot->start, slot->minutes, from, gone ? who.endDay : to});
        }
    }
    return found;
}

int Matching::TakeForDay(const Client& client, const Authorization& authorization, long day, Span time) {
    const Slot slot{Weekday(day), static_cast<int>(time.from - day * 1440),
                    static_cast<int>(time.to - time.from)};
    const Span apart{time.from - kTravel, time.to + kTravel};
    const int found = Search(present_[static_cast<std::size_t>(client.district)], [&](int caregiver) {
        const Caregiver& who = world_.caregivers[static_cast<std::size_t>(caregiver)];
        return who.WorksOn(day) && Suits(caregiver, client, authorization) && HasRoom(who, slot, day, day) &&
               !IsAbsent(caregiver, time) &&
               std::none_of(who.busy.begin(), who.busy.end(),
                            [&](const Span& busy) { return busy.Overlaps(apart); });
    });
    if (found >= 0) {
        world_.caregivers[static_cast<std::size_t>(found)].busy.push_back(time);
    }
    return found;
}

bool Matching::IsAbsent(int caregiver, Span time) const {
    const auto& absences = world_.caregivers[static_cast<std::size_t>(caregiver)].absences;
    return std::any_of(absences.begin(), absences.end(),
                       [&](const Span& absence) { return absence.Overlaps(time); });
}

}  // namespace kv::demo
