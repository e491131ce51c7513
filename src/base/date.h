#pragma once
#include <compare>
#include <string>
#include <string_view>

namespace kv {

struct CivilDate {
    int year = 1899;
    int month = 12;
    int day = 30;
    friend bool operator==(const CivilDate&, const CivilDate&) = default;
};

struct TimeOfDay {
    int hour = 0;
    int minute = 0;
    int second = 0;
    friend bool operator==(const TimeOfDay&, const TimeOfDay&) = default;
};

/// A moment in the store's own form: days since 1899-12-30 as a double, the time of day as the fraction.
/// A time of day alone has the day 1899-12-30. Two dates are equal when they name the same second.
class Date {
  public:
    constexpr Date() = default;
    explicit constexpr Date(double serial) : serial_(serial) {}

    /// Out-of-range months, days, hours, minutes and seconds carry over ("2026-01-32" is 2026-02-01).
    static Date FromCivil(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
    static Date FromTime(int hour, int minute, int second = 0);
    /// True when the three name a day of the calendar, without carrying over.
    static bool IsCivil(int year, int month, int day);

    double Serial() const { return serial_; }
    /// The whole day, rounded down: what the queries write as a bare number.
    long DayNumber() const;
    /// The seconds since midnight, 0 to 86399, rounded to the nearest second.
    long SecondOfDay() const;
    CivilDate Civil() const;
    TimeOfDay Time() const;
    /// 1 is Sunday, 7 is Saturday.
    int Weekday() const;

    Date DayOnly() const { return Date(static_cast<double>(DayNumber())); }
    Date TimeOnly() const;
    /// This day with that time of day.
    Date At(Date time) const;
    Date AddDays(double days) const { return Date(serial_ + days); }
    Date AddMinutes(double minutes) const { return Date(serial_ + minutes / 1440.0); }
    /// Adds whole months; a day that the month lacks becomes its last one.
    Date AddMonths(int months) const;
    Date AddYears(int years) const { return AddMonths(12 * years); }

    friend bool operator==(const Date& a, const Date& b) { return a.Seconds() == b.Seconds(); }
    friend auto operator<=>(const Date& a, const Date& b) { return a.Seconds() <=> b.Seconds(); }

  private:
    long long Seconds() const;
    double serial_ = 0;
};

/// A date before 1901-01-01 counts as an empty one.
bool CountsAsEmpty(Date date);

/// Whole calendar years, months, weeks or days from one date to the other, counted over their boundaries.
long DaysBetween(Date from, Date to);
long MinutesBetween(Date from, Date to);
/// Weeks are counted over Sundays.
long WeeksBetween(Date from, Date to);
long MonthsBetween(Date from, Date to);

}  // namespace kv
