#include "base/date.h"

#include <gmock/gmock.h>

namespace kv {
namespace {

TEST(Date, CivilDaysAndSerialsAgree) {
    struct Case {
        CivilDate day;
        double serial = 0;
        int weekday = 0;
    };
    const Case cases[] = {
        {{1899, 12, 30}, 0, 7}, {{1899, 12, 31}, 1, 1},    {{1900, 2, 28}, 60, 4},   {{1900, 3, 1}, 61, 5},
        {{1901, 1, 1}, 367, 3}, {{2000, 2, 29}, 36585, 3}, {{2026, 3, 4}, 46085, 4}, {{1899, 12, 29}, -1, 6},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.serial);
        const Date date = Date::FromCivil(c.day.year, c.day.month, c.day.day);
        EXPECT_EQ(date.Serial(), c.serial);
        EXPECT_EQ(Date(c.serial).Civil(), c.day);
        EXPECT_EQ(date.Weekday(), c.weekday);
    }
}

TEST(Date, PartsOutOfRangeCarryOver) {
    EXPECT_EQ(Date::FromCivil(2026, 1, 32).Civil(), (CivilDate{2026, 2, 1}));
    EXPECT_EQ(Date::FromCivil(2026, 14, 1).Civil(), (CivilDate{2027, 2, 1}));
    EXPECT_EQ(Date::FromCivil(2026, 0, 1).Civil(), (CivilDate{2025, 12, 1}));
    EXPECT_EQ(Date::FromCivil(2026, -11, 0).Civil(), (CivilDate{2024, 12, 31}));
    EXPECT_EQ(Date::FromCivil(2026, 1, 1, 24, 60, -1), Date::FromCivil(2026, 1, 2, 0, 59, 59));
    EXPECT_FALSE(Date::IsCivil(2026, 2, 29));
    EXPECT_TRUE(Date::IsCivil(2028, 2, 29));
    EXPECT_FALSE(Date::IsCivil(2026, 13, 1));
    EXPECT_FALSE(Date::IsCivil(2026, 1, 0));
}

TEST(Date, EverySecondOfADaySurvives) {
    for (int second = 0; second < 86400; ++second) {
        const Date date = Date::FromCivil(2026, 3, 4, 0, 0, second);
        ASSERT_EQ(date.SecondOfDay(), second);
        ASSERT_EQ(date.DayNumber(), 46085);
        ASSERT_EQ(date.DayOnly().At(date.TimeOnly()), date);
    }
}

TEST(Date, EqualityIsToTheSecond) {
    // Adding minutes one by one gathers a rounding error that must not part two moments, nor move one to the
    // day before.
    Date gathered = Date::FromCivil(2026, 3, 4);
    for (int minute = 0; minute < 1440; ++minute)
        gathered = gathered.AddMinutes(1);
    EXPECT_EQ(gathered, Date::FromCivil(2026, 3, 5));
    EXPECT_EQ(gathered.DayNumber(), 46086);
    EXPECT_LT(Date::FromTime(23, 59, 59), Date::FromCivil(1899, 12, 31));
    EXPECT_EQ(Date(-0.25).DayNumber(), -1);
    EXPECT_EQ(Date(-0.25).Time(), (TimeOfDay{18, 0, 0}));
    EXPECT_EQ(Date(1e300).Civil(), Date(4e6).Civil());
}

TEST(Date, MonthsKeepTheTimeAndEndInTheMonth) {
    const Date start = Date::FromCivil(2026, 1, 31, 15, 5);
    EXPECT_EQ(start.AddMonths(1), Date::FromCivil(2026, 2, 28, 15, 5));
    EXPECT_EQ(start.AddMonths(-2), Date::FromCivil(2025, 11, 30, 15, 5));
    EXPECT_EQ(Date::FromCivil(2024, 2, 29).AddYears(1), Date::FromCivil(2025, 2, 28));
}

TEST(Date, DifferencesCountBoundaries) {
    const Date newYearsEve = Date::FromCivil(2025, 12, 31, 23, 59, 59);
    const Date newYear = Date::FromCivil(2026, 1, 1);
    EXPECT_EQ(DaysBetween(newYearsEve, newYear), 1);
    EXPECT_EQ(MonthsBetween(newYearsEve, newYear), 1);
    EXPECT_EQ(MinutesBetween(newYearsEve, newYear), 1);
    EXPECT_EQ(MinutesBetween(newYear, newYearsEve), -1);
    const Date saturday = Date::FromCivil(2026, 3, 7);
    EXPECT_EQ(WeeksBetween(saturday, saturday.AddDays(1)), 1);
    EXPECT_EQ(WeeksBetween(saturday.AddDays(-6), saturday), 0);
    EXPECT_EQ(WeeksBetween(saturday.AddDays(1), saturday), -1);
}

TEST(Date, DatesBefore1901CountAsEmpty) {
    EXPECT_TRUE(CountsAsEmpty(Date::FromTime(15, 5)));
    EXPECT_TRUE(CountsAsEmpty(Date::FromCivil(1900, 12, 31, 23, 59, 59)));
    EXPECT_FALSE(CountsAsEmpty(Date::FromCivil(1901, 1, 1)));
}

}  // namespace
}  // namespace kv
