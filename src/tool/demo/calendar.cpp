#include "base/text.h"
#include "tool/demo/model.h"

namespace kv::demo {
namespace {

constexpr const char* kWeekdayNames[] = {"SUN", "MON", "TUE", "WED", "THU", "FRI", "SAT"};
constexpr int kKeptWeeks = 26;
constexpr int kArchivedWeeks = 4;

long DayOf(int year, int month, int day) {
    return Date::FromCivil(year, month, day).DayNumber();
}

/// The nth such weekday of a month.
long NthWeekday(int year, int month, int weekday, int nth) {
    const long first = DayOf(year, month, 1);
    return first + (weekday - Weekday(first) + 7) % 7 + 7L * (nth - 1);
}

}  // namespace

int Weekday(long day) {
    return Date(static_cast<double>(day)).Weekday();
}

const char* WeekdayName(int weekday) {
    return kWeekdayNames[weekday - 1];
}

long Calendar::WeekEnd(long day) const {
    return day + (endWeekday - Weekday(day) + 7) % 7;
}

std::vector<Holiday> HolidaysOf(int year) {
    const long firstOfJune = DayOf(year, 6, 1);
    const long memorial = firstOfJune - 1 - (Weekday(firstOfJune - 1) + 5) % 7;
    return {{DayOf(year, 1, 1), "New Years Day"},
            {memorial, "Memorial Day"},
            {DayOf(year, 7, 4), "Independence Day"},
            {NthWeekday(year, 9, 2, 1), "Labor Day"},
            {NthWeekday(year, 11, 5, 4), "Thanksgiving Day"},
            {DayOf(year, 12, 25), "Christmas Day"}};
}

Calendar ReadCalendar(Database& code, Date now) {
    Calendar calendar;
    calendar.now = now;
    calendar.today = now.DayNumber();
    Recordset agency = code.OpenRecordset("select * from Agency", RecordsetType::Snapshot);
    const std::string end = Upper(Left(agency.Text("wkending"), 3));
    for (int weekday = 1; weekday <= 7; ++weekday) {
        if (end == WeekdayName(weekday)) {
            calendar.endWeekday = weekday;
        }
    }
    calendar.horizonWeeks = static_cast<int>(agency.Get("sch_weeks").NumberOr(0));
    calendar.paperwork = agency.Text("NotUsed1") == "Y";
    calendar.mileageRate = agency.Get("billmile_rate").NumberOr(0);
    calendar.keptFrom = calendar.WeekEnd(calendar.today) - 7L * (kKeptWeeks + 1) + 1;
    calendar.firstDay = calendar.keptFrom - 7L * kArchivedWeeks;
    for (Recordset row = code.OpenRecordset("Holidays"); !row.Eof(); row.MoveNext()) {
        calendar.holidays.insert(row.Get("date").ToDate().DayNumber());
    }
    return calendar;
}

}  // namespace kv::demo
