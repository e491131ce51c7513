#include "tool/demo/referrals.h"

#include <algorithm>

#include "tool/demo/lists.h"
#include "tool/demo/people.h"
#include "tool/demo/rows.h"

namespace kv::demo {
namespace {

constexpr const char* kPlaces[] = {"Lakeside", "Riverbend", "Oakdale",    "Northgate",
                                   "Bluestem", "Summit",    "Cedar Hill", "Harbor",
                                   "Prairie",  "Fairmount", "Stillwell",  "Elm Ridge"};
struct Kind {
    const char* name;
    int category;  ///< place in the referral groups
};
constexpr Kind kKinds[] = {{"General Hospital", 0}, {"Rehabilitation Center", 2}, {"Family Practice", 1},
                           {"Senior Services", 5},  {"Physicians Group", 1},      {"Community Paper", 4},
                           {"Family Circle", 3},    {"Hospice House", 0}};
constexpr const char* kTitles[] = {"Discharge Planner", "Social Worker", "Office Manager", "Case Worker",
                                   "Nurse Navigator"};

}  // namespace

std::vector<ReferralSource> WriteReferrals(Database& work, const Calendar& calendar, long clients,
                                           Random random) {
    TableFiller sources(work, "referral");
    TableFiller contacts(work, "referral_contacts");
    std::vector<ReferralSource> made;
    const long most = static_cast<long>(std::size(kPlaces) * std::size(kKinds));
    const long count = std::clamp(clients / 12, 6L, most);
    for (long i = 0; i < count; ++i) {
        const Kind& kind = kKinds[i % static_cast<long>(std::size(kKinds))];
        ReferralSource& source = made.emplace_back();
        // The two lists meet in the same pairs again after 24 steps; one place further keeps every name
        // single.
        const auto place = static_cast<std::size_t>(i + i / 24);
        source.name = std::string(kPlaces[place % std::size(kPlaces)]) + " " + kind.name;
        source.category = kReferralGroups[kind.category].description;
        source.forClients = i % 9 != 8;
        const Address address = MakeAddress(random);
        const long first = calendar.today - random.Between(100, 1500);
        const long sequence =
            sources.Add({{"FullName", source.name},
                         {"Address", address.street},
                         {"City", address.town->name},
                         {"State", kState},
                         {"Zip", address.town->zip},
                         {"Phone", MakePhone(3300 + i)},
                         {"ext", random.Chance(30) ? std::to_string(random.Between(100, 499)) : ""},
                         {"Fax", MakePhone(3500 + i)},
                         {"Category", source.category},
                         {"Status", random.Chance(88) ? "Active" : "Closed"},
                         {"status_date", DayOrNull(first + random.Below(90))},
                         {"Ref_Group", !source.forClients  ? "Caregiver"
                                       : random.Chance(60) ? "Client"
                                                           : "Both"},
                         {"first_contact", DayOrNull(first)},
                         {"ranking", random.Below(5)},
                         {"Weekstoreview", random.Pick(std::vector<int>{0, 4, 8, 12})},
                         {"lastreviewDate", DayOrNull(calendar.today - random.Below(95))}});
        for (long n = random.Between(1, 3); n > 0; --n) {
            const std::string name = MakeName(random, random.Chance(70));
            source.contacts.push_back(name);
            contacts.Add(
                {{"referral_seq", sequence},
                 {"FullName", name},
                 {"Title", random.Pick(kTitles)},
                 {"Address", address.street},
                 {"City", address.town->name},
                 {"State", kState},
                 {"Phone", MakePhone(3300 + i)},
                 {"ext", std::to_string(random.Between(500, 899))},
                 {"Email", random.Chance(70) ? MakeEmail("office", MakeLastName(random), random) : ""}});
        }
    }
    return made;
}

}  // namespace kv::demo
