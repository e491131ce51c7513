#include <algorithm>

#include <fmt/format.h>

#include "tool/demo/lists.h"
#include "tool/demo/model.h"
#include "tool/demo/people.h"

namespace kv::demo {
namespace {

// Every status is met among the first twenty; the others follow the same shares.
constexpr Care kCareOf[] = {
    Care::Regular,  Care::Regular, Care::Regular,   Care::Regular, Care::Closed,
    Care::Regular,  Care::Regular, Care::Suspended, Care::Regular, Care::Potential,
    Care::Regular,  Care::Regular, Care::Regular,   Care::Closed,  Care::Regular,
    Care::Deceased, Care::Regular, Care::Regular,   Care::Regular, Care::Regular,
    Care::Regular,  Care::Regular, Care::JustAdded, Care::Regular, Care::PotentialInactive};

int PickLanguage(Random& random) {
    long share = random.Below(100);
    for (std::size_t i = 0; i < std::size(kLanguageShares); ++i) {
        share -= kLanguageShares[i];
        if (share < 0) {
            return static_cast<int>(i);
        }
    }
    return 0;
}

void SetNeeds(Client& client, Random& random) {
    client.caregiverSex = client.female && random.Chance(40)    ? 'F'
                          : !client.female && random.Chance(12) ? 'M'
                                                                : 'E';
    client.language = PickLanguage(random);
    for (int skill = 0; skill < static_cast<int>(std::size(kSkills)); ++skill) {
        if (random.Chance(skill < kCriticalSkills ? 7 : 28)) {
            client.skills.push_back(skill);
        }
    }
    client.payer = random.Chance(25)
                       ? 0
                       : static_cast<int>(random.Between(1, static_cast<long>(std::size(kPayers)) - 1));
    client.billMileage = random.Chance(35);
    client.billErrand = random.Chance(20);
    client.billExpenses = random.Chance(15);
    client.holidayCover = random.Chance(70);
    client.telephony = random.Chance(40);
}

void BanCaregivers(Client& client, const std::vector<Caregiver>& caregivers, Random& random) {
    if (!random.Chance(9)) {
        return;
    }
    for (long i = random.Between(1, 2); i > 0; --i) {
        const int caregiver = static_cast<int>(random.Below(static_cast<long>(caregivers.size())));
        if (std::find(client.banned.begin(), client.banned.end(), caregiver) == client.banned.end()) {
            client.banned.push_back(caregiver);
        }
    }
}

}  // namespace

void MakeClients(World& world, long count, Random random) {
    world.clients.reserve(static_cast<std::size_t>(count));
    for (long place = 0; place < count; ++place) {
        Client& client = world.clients.emplace_back();
        const Address address = MakeAddress(random);
        client.id = fmt::format("{:05}", place + 1);
        client.female = random.Chance(62);
        client.first = MakeFirstName(random, client.female);
        client.last = MakeLastName(random);
        client.street = address.street;
        client.town = address.town->name;
        client.zip = address.town->zip;
        client.district = address.town->district;
        client.phone = MakePhone(place);
        client.secondPhone = random.Chance(45) ? MakePhone(900 + random.Below(800)) : "";
        client.care = kCareOf[place % static_cast<long>(std::size(kCareOf))];
        client.manager = random.Chance(92) ? static_cast<int>(random.Below(std::size(kManagers))) : -1;
        client.priority = static_cast<int>(random.Below(std::size(kPriorities)));
        SetNeeds(client, random);
        client.group = client.payer == 0 ? 2 : client.payer == 2 ? 3 : client.district < 2 ? 0 : 1;
        BanCaregivers(client, world.caregivers, random);
    }
}

}  // namespace kv::demo
