#include <algorithm>

#include "tool/demo/lists.h"
#include "tool/demo/matching.h"
#include "tool/demo/model.h"

namespace kv::demo {
namespace {

/// Weekly visits on the days of the mask (1 is Sunday, 2 Monday, 4 Tuesday ...).
struct Block {
    unsigned days;
    int start;
    int minutes;
    int howOften = 1;
};
struct Pattern {
    VisitTypePlace visitType;
    int share;
    std::vector<Block> blocks;
};

constexpr unsigned kWorkdays = 0b0111110;
constexpr unsigned kWeekend = 0b1000001;
constexpr unsigned kEveryDay = 0b1111111;
constexpr unsigned kOneDay = 0;  // any workday

const std::vector<Pattern>& Patterns() {
    static const std::vector<Pattern> patterns = {
        {kHomeHealth, 17, {{0b0101010, 9 * 60, 180}}},
        {kHomeHealth, 16, {{kWorkdays, 8 * 60 + 30, 240}}},
        {kPersonalCare, 15, {{kEveryDay, 8 * 60 + 30, 120}}},
        {kPersonalCare, 12, {{kWorkdays, 8 * 60 + 30, 120}, {kWorkdays, 17 * 60, 120}}},
        {kPersonalCare, 8, {{0b0010100, 13 * 60, 240}}},
        {kHomemaker, 10, {{kOneDay, 10 * 60, 180}}},
        {kHomemaker, 6, {{kOneDay, 9 * 60, 180, 2}}},
        {kRespite, 6, {{kWeekend, 9 * 60, 480}}},
        {kHomeHealth, 5, {{0b1010100, 22 * 60, 480}}},
        {kLiveIn, 3, {{kEveryDay, 8 * 60, 1440}}},
        {kNurse, 4, {{0b0010010, 11 * 60, 90}}},
        {kAssessment, 2, {{kOneDay, 14 * 60, 60, 4}}},
    };
    return patterns;
}

const Pattern& PickPattern(Random& random) {
    long total = 0;
    for (const Pattern& pattern : Patterns()) {
        total += pattern.share;
    }
    long share = random.Below(total);
    for (const Pattern& pattern : Patterns()) {
        share -= pattern.share;
        if (share < 0) {
            return pattern;
        }
    }
    return Patterns().front();
}

std::vector<Slot> SlotsOf(const Pattern& pattern, Random& random) {
    std::vector<Slot> slots;
    for (const Block& block : pattern.blocks) {
        const bool byDay = block.start >= 7 * 60 && block.start < 18 * 60 && block.minutes < 600;
        const int start = block.start + (byDay ? static_cast<int>(random.Between(-4, 4)) * 15 : 0);
        const unsigned days = block.days == kOneDay ? 2U << random.Below(5) : block.days;
        for (int weekday = 1; weekday <= 7; ++weekday) {
            if ((days >> (weekday - 1) & 1U) != 0) {
                slots.push_back({weekday, start, block.minutes, block.howOften});
            }
        }
    }
    return slots;
}

/// Splits what one caregiver can't do alone: the weekend from the workdays, the half weeks of living in.
std::vector<std::vector<Slot*>> Shares(std::vector<Slot>& slots, int visitType) {
    std::vector<std::vector<Slot*>> shares(2);
    for (Slot& slot : slots) {
        const bool second = visitType == kLiveIn ? slot.weekday > 4 : slot.weekday == 1 || slot.weekday == 7;
        shares[second && slots.size() > 5 ? 1 : 0].push_back(&slot);
    }
    if (shares[1].empty()) {
        shares.pop_back();
    }
    return shares;
}

bool Clash(const std::vector<Slot>& some, const std::vector<Slot>& others) {
    return std::any_of(some.begin(), some.end(), [&](const Slot& a) {
        return std::any_of(others.begin(), others.end(), [&](const Slot& b) {
            return a.weekday == b.weekday && a.start < b.start + b.minutes && b.start < a.start + a.minutes;
        });
    });
}

class CarePlanner {
  public:
    CarePlanner(World& world, Random random)
        : world_(world), today_(world.calendar.today), random_(random), matching_(world, random.Fork(1)) {}

    void Plan(int place) {
        place_ = place;
        Client& client = world_.clients[static_cast<std::size_t>(place)];
        first_ = world_.authorizations.size();
        const Pattern& pattern = PickPattern(random_);
        client.discipline = kVisitTypes[pattern.visitType].discipline;
        switch (client.care) {
            case Care::Potential:
            case Care::PotentialInactive:
                client.status = 'Z';
                client.firstContact = today_ - random_.Between(1, 60);
                return;
            case Care::JustAdded:
                client.start = today_ - random_.Below(7);
                client.end = Date(static_cast<double>(client.start)).AddYears(10).DayNumber();
                break;
            default:
                PlanAuthorizations(client, pattern);
                Recompute(client);
        }
        const bool late = client.care == Care::Regular && place % 29 == 8;
        client.firstContact =
            late ? client.start + random_.Between(1, 9) : client.start - random_.Between(2, 40);
    }

  private:
    struct Ending {
        long lastVisit = 0;  ///< 0 for care that goes on
        long to = 0;
        char status = 'A';
    };

    Ending EndingOf(const Client& client) {
        switch (client.care) {
            case Care::Closed: {
                const long end = today_ - random_.Between(8, 200);
                return {end, end, 'C'};
            }
            case Care::Deceased: {
                const long end = today_ - random_.Between(4, 180);
                return {end, end, 'D'};
            }
            case Care::Suspended: {
                const long end = today_ - random_.Between(3, 40);
                return {end, random_.Chance(50) ? end + random_.Between(60, 150) : end, 'S'};
            }
            default:
                return {};
        }
    }

    void PlanAuthorizations(const Client& client, const Pattern& pattern) {
        const Ending ending = EndingOf(client);
        long start = today_ - random_.Between(25, 700);
        if (ending.lastVisit != 0) {
            start = std::min(start, ending.lastVisit - random_.Between(20, 300));
        }
        AddChain(client, pattern.visitType, SlotsOf(pattern, random_), client.payer, start, ending);
        if (client.care != Care::Regular) {
            return;
        }
        if (random_.Chance(16)) {
            const int payer = static_cast<int>(random_.Below(std::size(kPayers)));
            AddSecondCare(client, payer, today_ - random_.Between(10, 300), {});
        }
        if (place_ % 17 == 3) {
            // Held back with an open end: what the authorization check is for.
            const long held = today_ - random_.Between(3, 25);
            const long heldFrom = held - random_.Between(20, 60);
            AddSecondCare(client, client.payer, heldFrom, {held, today_ + random_.Between(30, 200), 'S'});
        }
        if (place_ % 23 == 5) {
            Authorization& blank = world_.authorizations.emplace_back();
            blank.client = place_;
            blank.payer = client.payer;
            blank.from = today_ - random_.Below(20);
            blank.to = blank.lastVisit = blank.from + 364;
            blank.hours = 6;
        }
    }

    /// Care of another call type, at times when nobody else is there.
    void AddSecondCare(const Client& client, int payer, long start, const Ending& ending) {
        for (int tries = 0; tries < 8; ++tries) {
            const Pattern& pattern = PickPattern(random_);
            std::vector<Slot> slots = SlotsOf(pattern, random_);
            const bool fits =
                std::none_of(world_.authorizations.begin() + static_cast<std::ptrdiff_t>(first_),
                             world_.authorizations.end(), [&](const Authorization& row) {
                                 return row.visitType == pattern.visitType || Clash(row.slots, slots);
                             });
            if (fits) {
                AddChain(client, pattern.visitType, std::move(slots), payer, start, ending);
                return;
            }
        }
    }

    /// The authorizations of one kind of care, one after the other, all with the same weekly visits.
    void AddChain(const Client& client, int visitType, std::vector<Slot> slots, int payer, long start,
                  const Ending& ending) {
        constexpr long kLengths[] = {182, 365, 365, 365, 3650};
        const long length = random_.Pick(kLengths);
        Authorization model;
        model.visitType = visitType;
        model.payer = payer;
        model.slots = std::move(slots);
        model.employeeType = visitType == kLiveIn || random_.Chance(75) ? "FIELD" : "BOTH";
        SetHours(model);
        SetCoBilling(model);
        for (long from = start; from != 0;) {
            Authorization next = model;
            const bool last =
                ending.lastVisit != 0 ? from + length > ending.lastVisit : from + length > today_ + 8;
            next.from = from;
            next.to = from + length - 1;
            next.lastVisit = next.to;
            if (last && ending.lastVisit != 0) {
                next.to = ending.to;
                next.lastVisit = ending.lastVisit;
            }
            next.status = last ? ending.status : next.to < today_ ? 'C' : 'A';
            next.client = place_;
            from = last ? 0 : next.to + 1;
            world_.authorizations.push_back(std::move(next));
            ++chained_;
        }
        Staff(client, start, world_.authorizations.back().lastVisit);
        chained_ = 0;
    }

    void SetHours(Authorization& authorization) {
        double weekly = 0;
        for (const Slot& slot : authorization.slots) {
            weekly += slot.minutes / 60.0 / slot.howOften;
        }
        authorization.monthly = weekly < 10 && random_.Chance(25);
        authorization.hours = authorization.monthly ? weekly * 4 : weekly;
        const int start = authorization.slots.front().start;
        authorization.shift = start < 15 * 60 ? '1' : start < 22 * 60 ? '2' : '3';
    }

    void SetCoBilling(Authorization& authorization) {
        if (authorization.payer == 0 || !random_.Chance(18)) {
            return;
        }
        authorization.coBilling = static_cast<int>(random_.Between(1, 6));
        constexpr double kAmounts[] = {0, 20, 12.5, 15, 1, 400, 20};
        authorization.coBillingAmount = kAmounts[authorization.coBilling];
    }

    /// Finds the caregivers of the chain's visits and tells every authorization of it.
    void Staff(const Client& client, long start, long end) {
        const std::size_t begin = world_.authorizations.size() - chained_;
        std::vector<Slot> slots = world_.authorizations[begin].slots;
        const Authorization kind = world_.authorizations[begin];
        for (const std::vector<Slot*>& share : Shares(slots, kind.visitType)) {
            if (!random_.Chance(4)) {
                StaffShare(client, kind, share, start, end);
            }
            const bool changed = start < today_ - 40 && random_.Chance(12);
            const int before =
                changed ? matching_.TakeForWeek(client, kind, share, start, std::min(end, today_), true) : -1;
            for (Slot* slot : share) {
                slot->predecessor = before;
                slot->switchDay = before < 0 ? 0 : world_.caregivers[static_cast<std::size_t>(before)].endDay;
            }
        }
        for (std::size_t i = begin; i < world_.authorizations.size(); ++i) {
            Authorization& authorization = world_.authorizations[i];
            authorization.slots = slots;
            for (Slot& slot : authorization.slots) {
                slot.removed = authorization.status == 'C' && random_.Chance(4);
            }
        }
    }

    /// One caregiver for the whole share if there is one, else somebody for each visit.
    void StaffShare(const Client& client, const Authorization& kind, const std::vector<Slot*>& share,
                    long start, long end) {
        const int caregiver = matching_.TakeForWeek(client, kind, share, start, end);
        for (Slot* slot : share) {
            slot->caregiver = caregiver >= 0 || share.size() == 1
                                  ? caregiver
                                  : matching_.TakeForWeek(client, kind, {slot}, start, end);
        }
    }

    /// The client's status and dates as every save of an authorization leaves them.
    void Recompute(Client& client) const {
        std::vector<const Authorization*> rows;
        for (std::size_t i = first_; i < world_.authorizations.size(); ++i) {
            rows.push_back(&world_.authorizations[i]);
        }
        std::stable_sort(rows.begin(), rows.end(), [](const Authorization* a, const Authorization* b) {
            return a->status != b->status ? a->status < b->status : a->from < b->from;
        });
        client.status = 'C';
        client.start = rows.front()->from;
        client.end = rows.front()->to;
        for (const Authorization* row : rows) {
            client.start = std::min(client.start, row->from);
            client.end = std::max(client.end, row->to);
            if (row->status == 'A' || (row->status == 'S' && client.status == 'C')) {
                client.status = row->status;
            } else if (row->status == 'D') {
                client.status = 'D';
                break;
            }
        }
    }

    World& world_;
    long today_;
    Random random_;
    Matching matching_;
    int place_ = 0;
    std::size_t first_ = 0;    // the client's first authorization
    std::size_t chained_ = 0;  // authorizations of the chain at hand
};

}  // namespace

void PlanCare(World& world, Random random) {
    CarePlanner planner(world, random);
    for (std::size_t i = 0; i < world.clients.size(); ++i) {
        planner.Plan(static_cast<int>(i));
    }
}

}  // namespace kv::demo
