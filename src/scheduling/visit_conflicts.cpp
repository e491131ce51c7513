#include "scheduling/visit_conflicts.h"

#include <optional>
#include <vector>

#include "base/format.h"
#include "base/text.h"

namespace kv {

namespace {

constexpr const char* kMoment = "MM/DD/YYYY HH:MM";

/// The times compare as the texts that the operator sees; seconds do not count.
std::string TimeText(Date time) {
    return FormatDate(time, "HH:NN");
}

bool EndsAtMidnight(Date moment) {
    return TimeText(moment) == "00:00";
}

/// A visit that ends at midnight sharp does not cross it.
bool CrossesMidnight(const ProposedVisit& visit) {
    return !EndsAtMidnight(visit.end) && visit.end.DayNumber() > visit.start.DayNumber();
}

struct Span {
    Date start;
    Date end;
};

/// A row's time laid around `today` as its weekday lies around the visit's: the day before, the same or the
/// next one. Nothing for a row whose Day names another.
std::optional<Span> LaidOn(Date today, Date visitDay, const std::string& day, Date from, Date to) {
    for (const int shift : {-1, 0, 1}) {
        if (!EqualsNoCase(day, WeekdayCode(visitDay.AddDays(shift)))) {
            continue;
        }
        const bool crosses = TimeText(to) <= TimeText(from);
        const Date base = today.AddDays(shift);
        return Span{base.At(from), base.AddDays(crosses ? 1 : 0).At(to)};
    }
    return std::nullopt;
}

}  // namespace

std::string WeekdayCode(Date date) {
    return Upper(FormatDate(date, "DDD"));
}

ProposedVisit ProposeVisit(const Clock& clock, const std::string& emp_id, Date st_date, Date st_time,
                           double hours) {
    constexpr double kMinutes = 60;
    const Date start = clock.Today().At(st_time);
    return {emp_id,           start, start.AddMinutes(hours * kMinutes), hours, WeekdayCode(st_date),
            st_date.DayOnly()};
}

// The texts begin with the month, so the turn of a year between them misleads the comparison; the moments lie
// within three days.
bool MomentsOverlap(std::string_view start, std::string_view end, std::string_view proposedStart,
                    std::string_view proposedEnd) {
    return (start >= proposedStart && start < proposedEnd) || (proposedStart > start && proposedStart < end);
}

NonVisits::NonVisits(Session& session, const std::string& emp_id, Date first, Date last) {
    *this = std::move(ReadNonVisitsOf(session, {emp_id}, first, last)[emp_id]);
}

void NonVisits::Add(const Recordset& row) {
    if (!row.Text("CLIENT").empty() || row.Get("Cancelled").IsTrue()) {
        return;
    }
    // A row that lacks its times stands nowhere.
    if (!row.Get("St_time").IsNull() && !row.Get("END_TIME").IsNull()) {
        rows_.push_back({row.Get("st_date").ToDate().DayNumber(), row.Text("Day"),
                         row.Get("St_time").ToDate(), row.Get("END_TIME").ToDate()});
    }
}

NonVisitsById ReadNonVisitsOf(Session& session, const std::vector<std::string>& emp_ids, Date first,
                              Date last) {
    NonVisitsById found;
    for (Recordset row = session.dbMainWork->OpenRecordset(
             Sql("select emp_id,CLIENT,Cancelled,st_date,[Day],St_time,END_TIME from sch_day where emp_id in "
                 "({}) and st_date between {} AND {}",
                 TextList{emp_ids}, first.DayNumber() - 1, last.DayNumber() + 1),
             RecordsetType::Snapshot);
         !row.Eof(); row.MoveNext()) {
        found[row.Text("emp_id")].Add(row);
    }
    return found;
}

int NonVisits::Overlapping(const ProposedVisit& visit, Date today) const {
    if (rows_.empty()) {
        return 0;
    }
    const long day = visit.st_date.DayNumber();
    const long last = CrossesMidnight(visit) ? day + 1 : day;
    const std::string proposedStart = FormatDate(visit.start, kMoment);
    const std::string proposedEnd = FormatDate(visit.end, kMoment);
    int count = 0;
    for (const Row& row : rows_) {
        if (row.day < day - 1 || row.day > last) {
            continue;
        }
        const std::optional<Span> span = LaidOn(today, visit.st_date, row.name, row.from, row.to);
        if (span && MomentsOverlap(FormatDate(span->start, kMoment), FormatDate(span->end, kMoment),
                                   proposedStart, proposedEnd)) {
            ++count;
        }
    }
    return count;
}

int FindScheduleConflict(Session& session, const ProposedVisit& visit) {
    const NonVisits nonVisits(session, visit.emp_id, visit.st_date, visit.st_date);
    const int conflicts = nonVisits.Overlapping(visit, session.clock.Today());
    return conflicts > 0 && FindWillWorkConflict(session, visit) ? 0 : conflicts;
}

bool FindWillWorkConflict(Session& session, const ProposedVisit& visit) {
    const long day = visit.st_date.DayNumber();
    if (CrossesMidnight(visit)) {
        Recordset rows = session.dbMainWork->OpenRecordset(
            Sql("select * from Emp_willwork where  emp_id = {} and st_date >= {} and st_date <= {} order by "
                "st_date,st_time",
                visit.emp_id, day, day + 1),
            RecordsetType::Snapshot);
        // The evening's row and the morning's stand one behind the other.
        bool evening = false;
        for (; !rows.Eof(); rows.MoveNext()) {
            const long rowDay = rows.Get("st_date").ToDate().DayNumber();
            const Date end = rows.Get("END_TIME").ToDate();
            if (evening && rowDay == day + 1 &&
                (EndsAtMidnight(end) || TimeText(end) >= TimeText(visit.end))) {
                return true;
            }
            evening = rowDay == day && TimeText(rows.Get("St_time").ToDate()) <= TimeText(visit.start);
        }
        return false;
    }
    Recordset rows = session.dbMainWork->OpenRecordset(
        Sql("select * from Emp_willwork where  emp_id = {} and st_date = {}", visit.emp_id, day),
        RecordsetType::Snapshot);
    const Date today = session.clock.Today();
    for (; !rows.Eof(); rows.MoveNext()) {
        const Date end = rows.Get("END_TIME").ToDate();
        const Date begins = today.At(rows.Get("St_time").ToDate());
        const Date ends = today.AddDays(EndsAtMidnight(end) ? 1 : 0).At(end);
        if (begins <= visit.start && ends >= visit.end) {
            return true;
        }
    }
    return false;
}

}  // namespace kv
