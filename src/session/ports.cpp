#include "session/ports.h"

#include <cctype>
#include <cstdlib>
#include <stdexcept>
#include <string_view>

#include "base/numbers.h"
#include "base/platform.h"

namespace kv {

namespace {

/// "0" stands for any digit.
bool HasForm(std::string_view text, std::string_view form) {
    if (text.size() != form.size())
        return false;
    for (std::size_t i = 0; i < form.size(); ++i) {
        const bool digit = std::isdigit(static_cast<unsigned char>(text[i])) != 0;
        if (form[i] == '0' ? !digit : text[i] != form[i])
            return false;
    }
    return true;
}

}  // namespace

Date SystemClock::Now() const {
    return fixed_ ? *fixed_ : LocalNow();
}

SystemClock FixedClock(const std::string& moment) {
    const bool wellFormed = HasForm(moment, "0000-00-00 00:00:00") || HasForm(moment, "0000-00-00");
    const auto date = wellFormed ? ParseDate(moment) : std::nullopt;
    if (!date || CountsAsEmpty(*date))
        throw std::invalid_argument("\"" + moment + "\" is no moment; write YYYY-MM-DD HH:MM:SS");
    return SystemClock(*date);
}

SystemClock SystemClockFromEnvironment() {
    const char* moment = std::getenv("KV_NOW");
    return moment && *moment ? FixedClock(moment) : SystemClock();
}

}  // namespace kv
