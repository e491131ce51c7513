#include <fmt/format.h>

#include "tool/demo/lists.h"
#include "tool/demo/model.h"
#include "tool/demo/people.h"

namespace kv::demo {
namespace {

// Laid out so that every group is met already among the first ones, whatever the number.
constexpr int kDisciplineOf[] = {2, 1, 2, 1, 3, 2, 1, 4, 2, 1, 0, 2, 1, 2, 3, 1, 2, 1, 0, 2};
constexpr const char* kTypeOf[] = {"FIELD", "FIELD", "BOTH",  "FIELD",    "FIELD",
                                   "BOTH",  "FIELD", "FIELD", "STAFFING", "FIELD"};

/// A share of the week that a caregiver keeps free.
struct Unavailable {
    int weekday;
    int start;
    int minutes;
};
constexpr Unavailable kUnavailable[] = {{1, 0, 1440},         {7, 0, 1440},        {3, 18 * 60, 5 * 60},
                                        {5, 18 * 60, 5 * 60}, {2, 7 * 60, 2 * 60}, {4, 15 * 60, 4 * 60},
                                        {6, 20 * 60, 10 * 60}};

void SetStatus(Caregiver& caregiver, long place, long today, Random& random) {
    if (place % 20 == 7) {
        caregiver.status = 'T';
        caregiver.endDay = today - random.Between(200, 500);
    } else if (place % 12 == 9) {
        caregiver.status = 'I';
        caregiver.endDay = today - random.Between(10, 160);
    } else if (place % 18 == 11) {
        caregiver.status = 'Z';
    } else if (place % 30 == 14) {
        caregiver.status = 'I';
        caregiver.endDay = today + random.Between(3, 20);
    }
}

void SetAttributes(Caregiver& caregiver, int homeDistrict, Random& random) {
    caregiver.languages = {0};
    for (std::size_t i = 1; i < std::size(kLanguages); ++i) {
        if (caregiver.languages.size() < 3 && random.Chance(kLanguageShares[i] * 2)) {
            caregiver.languages.push_back(static_cast<int>(i));
        }
    }
    for (int district = 0; district < static_cast<int>(std::size(kDistricts)); ++district) {
        if (district == homeDistrict || random.Chance(40)) {
            caregiver.districts.push_back(district);
        }
    }
    for (int skill = 0; skill < static_cast<int>(std::size(kSkills)); ++skill) {
        if (random.Chance(skill < kCriticalSkills ? 35 : 55)) {
            caregiver.skills.push_back(skill);
        }
    }
}

void DeclareUnavailability(Caregiver& caregiver, long today, Random& random) {
    if (random.Chance(45)) {
        const long from = today - random.Between(200, 400);
        for (const Unavailable& share : kUnavailable) {
            if (random.Chance(22)) {
                caregiver.week.push_back(
                    {share.weekday, share.start, share.minutes, from, from + 3650, true});
            }
        }
    }
    if (random.Chance(25)) {
        const long first = today - 60 + random.Below(95);
        const long days = random.Between(2, 6);
        for (long day = first; day < first + days; ++day) {
            caregiver.absences.push_back({day * 1440, (day + 1) * 1440});
        }
    } else if (random.Chance(20)) {
        const long day = today - 20 + random.Below(40);
        const std::int64_t start = day * 1440 + random.Between(9, 15) * 60;
        caregiver.absences.push_back({start, start + 120});
    }
}

}  // namespace

void MakeCaregivers(World& world, long count, Random random) {
    const long today = world.calendar.today;
    world.caregivers.reserve(static_cast<std::size_t>(count));
    for (long place = 0; place < count; ++place) {
        Caregiver& caregiver = world.caregivers.emplace_back();
        const Address address = MakeAddress(random);
        caregiver.id = fmt::format("{:06}", place + 1);
        caregiver.female = random.Chance(82);
        caregiver.first = MakeFirstName(random, caregiver.female);
        caregiver.last = MakeLastName(random);
        caregiver.street = address.street;
        caregiver.town = address.town->name;
        caregiver.zip = address.town->zip;
        caregiver.phone = MakePhone(900 + place);
        caregiver.discipline = kDisciplineOf[place % static_cast<long>(std::size(kDisciplineOf))];
        caregiver.type = kTypeOf[place % static_cast<long>(std::size(kTypeOf))];
        caregiver.group = caregiver.discipline >= 3    ? 2
                          : random.Chance(10)          ? 3
                          : address.town->district < 2 ? 0
                                                       : 1;
        caregiver.liveIn = caregiver.discipline > 0 && random.Chance(18);
        caregiver.hoursWanted = caregiver.liveIn ? 96 : static_cast<double>(random.Between(4, 11) * 4);
        caregiver.payMileage = random.Chance(40);
        caregiver.payErrand = random.Chance(20);
        caregiver.payExpenses = random.Chance(25);
        caregiver.raise = 0.95 + 0.05 * static_cast<double>(random.Below(6));
        SetStatus(caregiver, place, today, random);
        SetAttributes(caregiver, address.town->district, random);
        DeclareUnavailability(caregiver, today, random);
    }
}

}  // namespace kv::demo
