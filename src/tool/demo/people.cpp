#include "tool/demo/people.h"

#include <fmt/format.h>

#include "base/text.h"

namespace kv::demo {

Address MakeAddress(Random& random) {
    const long number = random.Between(1, 980);
    return {std::to_string(number) + " " + random.Pick(kStreets), &random.Pick(kTowns)};
}

std::string MakeFirstName(Random& random, bool female) {
    return female ? random.Pick(kFemaleNames) : random.Pick(kMaleNames);
}

std::string MakeLastName(Random& random) {
    return random.Pick(kLastNames);
}

std::string MakeName(Random& random, bool female) {
    const std::string first = MakeFirstName(random, female);
    return first + " " + MakeLastName(random);
}

std::string MakePhone(long number) {
    const auto areas = static_cast<long>(std::size(kAreaCodes));
    // 37 has no factor in common with 100, so the hundred numbers of an area come one by one in no visible
    // order.
    return fmt::format("{}55501{:02}", kAreaCodes[number / 100 % areas], number * 37 % 100);
}

std::string MakeSocialNumber(Random& random) {
    return fmt::format("9{:08}", random.Below(100000000));
}

std::string MakeEmail(const std::string& first, const std::string& last, Random& random) {
    return Lower(fmt::format("{}.{}{}@mail.example", first, last, random.Between(1, 99)));
}

}  // namespace kv::demo
