#include "session/ports.h"

#include <cstdlib>
#include <ctime>
#include <stdexcept>

#include "base/numbers.h"

namespace kv {

Date SystemClock::Now() const {
    if (fixed_)
        return *fixed_;
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    return Date::FromCivil(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                           local.tm_sec);
}

SystemClock FixedClock(const std::string& moment) {
    const auto date = ParseDate(moment);
    if (!date || CountsAsEmpty(*date))
        throw std::invalid_argument("\"" + moment + "\" is no moment; write YYYY-MM-DD HH:MM:SS");
    return SystemClock(*date);
}

SystemClock SystemClockFromEnvironment() {
    const char* moment = std::getenv("KV_NOW");
    return moment && *moment ? FixedClock(moment) : SystemClock();
}

}  // namespace kv
