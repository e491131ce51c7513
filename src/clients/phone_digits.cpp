#include "clients/phone_digits.h"

#include "base/text.h"

namespace kv {

std::string PhoneDigits(std::string_view text) {
    constexpr std::size_t kPhoneLength = 10;
    std::string digits = DigitsOf(text);
    if (digits.starts_with('1')) {
        digits.erase(0, 1);
    }
    if (digits.size() > kPhoneLength) {
        digits.resize(kPhoneLength);
    } else if (!digits.empty() && digits.size() < kPhoneLength) {
        // An incomplete number has always been marked so when it is pasted; the operator completes it by
        // hand.
        digits += '1';
    }
    return digits;
}

}  // namespace kv
