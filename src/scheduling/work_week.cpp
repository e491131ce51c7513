#include "scheduling/work_week.h"

#include <array>

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"

namespace kv {

namespace {

constexpr int kDaysInAWeek = 7;
constexpr double kMinutesInAnHour = 60;

/// The hours of a row from its start up to midnight.
double HoursToMidnight(Date start) {
    const Date lastMinute = Date::FromTime(23, 59);
    return static_cast<double>(MinutesBetween(start.TimeOnly(), lastMinute) + 1) / kMinutesInAnHour;
}

/// A whole day and night ends at the minute at which it began: it does not count as crossing.
bool CrossesMidnight(Date start, double hours) {
    return FormatDate(start.AddMinutes(hours * kMinutesInAnHour), "HH:NN") < FormatDate(start, "HH:NN");
}

}  // namespace

int WeekdayNumber(std::string_view name) {
    constexpr std::array<std::string_view, kDaysInAWeek> kNames = {"SUN", "MON", "TUE", "WED",
                                                                   "THU", "FRI", "SAT"};
    const std::string letters = Upper(Left(name, 3));
    for (std::size_t day = 0; day < kNames.size(); ++day) {
        if (kNames[day] == letters) {
            return static_cast<int>(day) + 1;
        }
    }
    return 0;
}

int EndOfWeek(const Session& session) {
    const int day = WeekdayNumber(session.WKENDING);
    return day == 0 ? kDaysInAWeek : day;
}

Date WeekEndOf(Date day, int endDay) {
    return day.DayOnly().AddDays((endDay - day.Weekday() + kDaysInAWeek) % kDaysInAWeek);
}

double CaregiverWeekHours(Session& session, const std::string& emp_id, Date day) {
    const long last = WeekEndOf(day, WeekdayNumber(session.WKENDING)).DayNumber();
    const long before = last - kDaysInAWeek;
    Recordset rows = session.dbMainWork->OpenRecordset(
        Sql("select * from sch_DAY where st_date >= {} and st_date <= {} and Emp_id = {}", before, last,
            emp_id),
        RecordsetType::Snapshot);
    double sum = 0;
    for (; !rows.Eof(); rows.MoveNext()) {
        const std::string type = rows.Text("sch_type");
        if (rows.Get("Cancelled").IsTrue() || !(EqualsNoCase(type, "R") || EqualsNoCase(type, "P"))) {
            continue;
        }
        const bool worked = rows.Get("act_hrs").NumberOr(0) != 0;
        const double hours = rows.Get(worked ? "act_hrs" : "HRS").NumberOr(0);
        const Value startValue = rows.Get(worked ? "visit_time" : "St_time");
        const Date start = startValue.IsNull() ? Date() : startValue.ToDate();
        const long rowDay = rows.Get("st_date").ToDate().DayNumber();
        const bool crosses = CrossesMidnight(start, hours);
        if (rowDay <= before) {
            sum += crosses ? hours - HoursToMidnight(start) : 0;
        } else if (rowDay == last && crosses) {
            sum += HoursToMidnight(start);
        } else {
            sum += hours;
        }
    }
    return RoundTo(sum, 2);
}

}  // namespace kv
