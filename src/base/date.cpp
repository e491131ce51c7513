#include "base/date.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace kv {
namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr long long kSecondsADay = 86400;
constexpr sys_days kDayZero = std::chrono::year{1899} / 12 / 30;

long long FloorDivide(long long a, long long b) {
    return a / b - (a % b < 0 ? 1 : 0);
}

sys_days DaysOf(long dayNumber) {
    return kDayZero + std::chrono::days{dayNumber};
}

long NumberOf(sys_days days) {
    return static_cast<long>((days - kDayZero).count());
}

year_month_day CalendarDay(Date date) {
    return year_month_day{DaysOf(date.DayNumber())};
}

}  // namespace

Date Date::FromCivil(int year, int month, int day, int hour, int minute, int second) {
    const long long months = 12LL * year + (month - 1);
    const auto first = std::chrono::year{static_cast<int>(FloorDivide(months, 12))} /
                       static_cast<int>(months - 12 * FloorDivide(months, 12) + 1) / 1;
    const long days = NumberOf(sys_days{first}) + day - 1;
    const long long seconds = 3600LL * hour + 60LL * minute + second;
    return Date(static_cast<double>(days) + static_cast<double>(seconds) / kSecondsADay);
}

Date Date::FromTime(int hour, int minute, int second) {
    return FromCivil(1899, 12, 30, hour, minute, second);
}

bool Date::IsCivil(int year, int month, int day) {
    return year >= 100 && year <= 9999 && month > 0 && day > 0 &&
           year_month_day{std::chrono::year{year}, std::chrono::month{static_cast<unsigned>(month)},
                          std::chrono::day{static_cast<unsigned>(day)}}
               .ok();
}

long long Date::Seconds() const {
    // Far outside the calendar nothing means a day any more; the bound keeps the arithmetic defined.
    constexpr double kMost = 4e6;
    const double days = serial_ > -kMost ? std::min(serial_, kMost) : -kMost;
    return std::llround(days * kSecondsADay);
}

long Date::DayNumber() const {
    return static_cast<long>(FloorDivide(Seconds(), kSecondsADay));
}

long Date::SecondOfDay() const {
    return static_cast<long>(Seconds() - kSecondsADay * DayNumber());
}

CivilDate Date::Civil() const {
    const year_month_day day = CalendarDay(*this);
    return {static_cast<int>(day.year()), static_cast<int>(static_cast<unsigned>(day.month())),
            static_cast<int>(static_cast<unsigned>(day.day()))};
}

TimeOfDay Date::Time() const {
    const int second = static_cast<int>(SecondOfDay());
    return {second / 3600, second / 60 % 60, second % 60};
}

int Date::Weekday() const {
    return static_cast<int>(std::chrono::weekday{DaysOf(DayNumber())}.c_encoding()) + 1;
}

Date Date::TimeOnly() const {
    return Date(static_cast<double>(SecondOfDay()) / kSecondsADay);
}

Date Date::At(Date time) const {
    return Date(static_cast<double>(DayNumber()) + static_cast<double>(time.SecondOfDay()) / kSecondsADay);
}

Date Date::AddMonths(int months) const {
    year_month_day day = CalendarDay(*this) + std::chrono::months{months};
    if (!day.ok())
        day = day.year() / day.month() / std::chrono::last;
    return Date(static_cast<double>(NumberOf(sys_days{day}))).At(*this);
}

bool CountsAsEmpty(Date date) {
    return date.DayNumber() < 367;
}  // 1901-01-01

long DaysBetween(Date from, Date to) {
    return to.DayNumber() - from.DayNumber();
}

long MinutesBetween(Date from, Date to) {
    return 1440 * DaysBetween(from, to) + to.SecondOfDay() / 60 - from.SecondOfDay() / 60;
}

long WeeksBetween(Date from, Date to) {
    // Day 1, 1899-12-31, was a Sunday.
    const auto week = [](Date date) { return static_cast<long>(FloorDivide(date.DayNumber() - 1, 7)); };
    return week(to) - week(from);
}

long MonthsBetween(Date from, Date to) {
    const CivilDate a = from.Civil();
    const CivilDate b = to.Civil();
    return 12L * (b.year - a.year) + b.month - a.month;
}

}  // namespace kv
