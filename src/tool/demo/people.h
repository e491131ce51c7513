#pragma once
#include <string>

#include "tool/demo/random.h"
#include "tool/demo/words.h"

namespace kv::demo {

struct Address {
    std::string street;
    const Town* town;
};

Address MakeAddress(Random& random);
std::string MakeFirstName(Random& random, bool female);
std::string MakeLastName(Random& random);
/// First and last name.
std::string MakeName(Random& random, bool female);
/// Ten digits; two numbers below 1800 give two phones.
std::string MakePhone(long number);
/// Nine digits of a range that is never issued.
std::string MakeSocialNumber(Random& random);
std::string MakeEmail(const std::string& first, const std::string& last, Random& random);

}  // namespace kv::demo
