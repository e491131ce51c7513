#include <algorithm>

#include "tool/demo/lists.h"
#include "tool/demo/matching.h"
#include "tool/demo/model.h"

namespace kv::demo {
namespace {

/// The week end that schedule creation turns to after `last`.
long NextWeekEnd(const Calendar& calendar, long last, int howOften) {
    const long next = last + 7L * howOften;
    return Weekday(last) == calendar.endWeekday ? next : calendar.WeekEnd(next);
}

class VisitMaker {
  public:
    VisitMaker(World& world, Random random)
        : world_(world), calendar_(world.calendar), random_(random), matching_(world, random.Fork(1)) {}

    void Schedule(int authorization) {
        auto& slots = world_.authorizations[static_cast<std::size_t>(authorization)].slots;
        for (int slot = 0; slot < static_cast<int>(slots.size()); ++slot) {
            ScheduleSlot(authorization, slot);
        }
    }

    /// Fills or cancels what stands open in the past, finds somebody for a part of the open visits ahead, and
    /// writes down what was worked.
    void LiveThrough() {
        for (Visit& visit : world_.visits) {
            const bool past = visit.day < calendar_.today;
            if (visit.caregiver < 0 && random_.Chance(past ? 60 : 35)) {
                Substitute(visit);
            }
            visit.cancelled = (past && visit.caregiver < 0) || random_.Below(1000) < (past ? 18 : 6);
            const bool reported = visit.day < calendar_.today - 2 || random_.Chance(80);
            if (past && !visit.cancelled && reported) {
                Work(visit);
            }
        }
        // What was not worked went with its assignment.
        auto& visits = world_.visits;
        visits.erase(std::remove_if(visits.begin(), visits.end(),
                                    [&](const Visit& visit) {
                                        return visit.slot >= 0 && SlotOf(visit).removed &&
                                               visit.workedHours == 0;
                                    }),
                     visits.end());
    }

    /// Visits that the office typed in by hand, on days without any of the authorization.
    void AddByHand() {
        for (int i = 0; i < static_cast<int>(world_.authorizations.size()); ++i) {
            const Authorization& authorization = world_.authorizations[static_cast<std::size_t>(i)];
            if (authorization.status != 'A' || authorization.slots.empty() || !random_.Chance(7)) {
                continue;
            }
            Visit visit;
            visit.authorization = i;
            visit.day = calendar_.today - 40 + random_.Below(54);
            visit.start = static_cast<int>(random_.Between(36, 60)) * 15;
            visit.minutes = kVisitTypes[authorization.visitType].method[0] == 'V' ? 60 : 120;
            const bool free =
                std::none_of(authorization.slots.begin(), authorization.slots.end(),
                             [&](const Slot& slot) { return slot.weekday == Weekday(visit.day); });
            if (!free || visit.day < authorization.from || visit.day > authorization.lastVisit) {
                continue;
            }
            Substitute(visit);
            if (visit.caregiver >= 0) {
                world_.visits.push_back(visit);
            }
        }
    }

  private:
    const Slot& SlotOf(const Visit& visit) const {
        return world_.authorizations[static_cast<std::size_t>(visit.authorization)]
            .slots[static_cast<std::size_t>(visit.slot)];
    }

    void ScheduleSlot(int place, int slotPlace) {
        Authorization& authorization = world_.authorizations[static_cast<std::size_t>(place)];
        Slot& slot = authorization.slots[static_cast<std::size_t>(slotPlace)];
        // A first schedule date on the first day leaves one interval before it as the last date.
        long last = authorization.from - 7L * slot.howOften;
        const long reach = authorization.status == 'A'
                               ? calendar_.Horizon()
                               : authorization.lastVisit + 7L * calendar_.horizonWeeks;
        for (;;) {
            const long week = NextWeekEnd(calendar_, last, slot.howOften);
            if (week > reach || authorization.to < week - 6) {
                break;
            }
            last = week;
            AddVisit(place, slotPlace, week - (Weekday(week) - slot.weekday + 7) % 7);
        }
        // Where the authorization was ended, the visits beyond it were taken away and the last date with
        // them.
        slot.lastDate = authorization.status == 'A' ? last : std::min(last, authorization.to);
    }

    void AddVisit(int place, int slotPlace, long day) {
        const Authorization& authorization = world_.authorizations[static_cast<std::size_t>(place)];
        const Slot& slot = authorization.slots[static_cast<std::size_t>(slotPlace)];
        const Client& client = world_.clients[static_cast<std::size_t>(authorization.client)];
        if (day < calendar_.firstDay || day < authorization.from || day > authorization.to ||
            day > authorization.lastVisit || (!client.holidayCover && calendar_.holidays.count(day) != 0)) {
            return;
        }
        Visit visit;
        visit.authorization = place;
        visit.slot = slotPlace;
        visit.day = day;
        visit.start = slot.start;
        visit.minutes = slot.minutes;
        AssignCaregiver(visit, day <= slot.switchDay ? slot.predecessor : slot.caregiver);
        world_.visits.push_back(visit);
    }

    void AssignCaregiver(Visit& visit, int caregiver) {
        if (caregiver < 0) {
            return;
        }
        Caregiver& who = world_.caregivers[static_cast<std::size_t>(caregiver)];
        if (!who.WorksOn(visit.day)) {
            return;
        }
        visit.travels = caregiver;
        if (matching_.IsAbsent(caregiver, visit.Time()) && !Volunteers(caregiver, visit)) {
            return;
        }
        visit.caregiver = caregiver;
        who.busy.push_back(visit.Time());
    }

    /// Some come in spite of a declared absence, for a visit that ends within the day.
    bool Volunteers(int caregiver, const Visit& visit) {
        if (visit.start + visit.minutes > 1380 || !random_.Chance(15)) {
            return false;
        }
        world_.willWork.push_back(
            {caregiver, visit.day, std::max(0, visit.start - 60), visit.start + visit.minutes + 60});
        return true;
    }

    void Substitute(Visit& visit) {
        const Authorization& authorization =
            world_.authorizations[static_cast<std::size_t>(visit.authorization)];
        const Client& client = world_.clients[static_cast<std::size_t>(authorization.client)];
        visit.caregiver = matching_.TakeForDay(client, authorization, visit.day, visit.Time());
        if (visit.caregiver >= 0) {
            visit.travels = visit.caregiver;
            visit.editedBy = static_cast<int>(random_.Below(kActiveUsers));
        }
    }

    void Work(Visit& visit) {
        const double planned = visit.minutes / 60.0;
        const double off =
            random_.Chance(75) || planned >= 24 ? 0 : 0.25 * static_cast<double>(random_.Between(-2, 1));
        visit.workedHours = std::max(0.25, planned + off);
        visit.workedStart =
            planned >= 24 ? visit.start : visit.start + static_cast<int>(random_.Between(-4, 5));
        if (random_.Below(1000) < 6) {
            visit.payOverride = 10.0 + static_cast<double>(random_.Below(60)) / 2;
        }
    }

    World& world_;
    const Calendar& calendar_;
    Random random_;
    Matching matching_;
};

}  // namespace

void MakeVisits(World& world, Random random) {
    VisitMaker maker(world, random);
    for (std::size_t i = 0; i < world.authorizations.size(); ++i) {
        maker.Schedule(static_cast<int>(i));
    }
    maker.AddByHand();
    maker.LiveThrough();
}

}  // namespace kv::demo
