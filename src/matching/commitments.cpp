#include "matching/commitments.h"

#include <cmath>

#include "base/text.h"
#include "scheduling/visit_conflicts.h"
#include "scheduling/work_week.h"

namespace kv {

namespace {

constexpr double kMinutesInAnHour = 60;
constexpr std::size_t kShownName = 14;

/// The weekdays around the visit's, by their shift from it.
struct Weekdays {
    explicit Weekdays(Date day)
        : before(WeekdayCode(day.AddDays(-1))), on(WeekdayCode(day)), behind(WeekdayCode(day.AddDays(1))) {}
    /// -1, 0 or 1; nothing for another day.
    std::optional<int> ShiftOf(const std::string& code) const {
        if (EqualsNoCase(code, on)) {
            return 0;
        }
        if (EqualsNoCase(code, before)) {
            return -1;
        }
        return EqualsNoCase(code, behind) ? std::optional(1) : std::nullopt;
    }
    std::string before, on, behind;
};

/// A row without its times stands nowhere.
std::optional<TimeRow> RowOf(const Recordset& row, std::optional<int> shift) {
    const Value start = row.Get("St_time");
    const Value end = row.Get("END_TIME");
    if (!shift || start.IsNull() || end.IsNull()) {
        return std::nullopt;
    }
    return TimeRow{*shift, MinuteOfDay(start.ToDate()), MinuteOfDay(end.ToDate()), {}};
}

std::string ShownText(const Recordset& row) {
    const std::string client = row.Text("cli_name");
    return Left(client.empty() ? row.Text("visit_desc") : client, kShownName);
}

}  // namespace

Window WindowOf(const SuggestionRequest& request, const SuggestionOptions& options) {
    Window window;
    if (options.ignoreStart) {
        return window;  // at midnight, of no length: almost nothing runs into it
    }
    window.span.start = MinuteOfDay(request.time);
    window.span.end = window.span.start + static_cast<int>(std::lround(request.hours * kMinutesInAnHour));
    window.spansMidnight = window.span.end > kMinutesOfDay && window.span.end % kMinutesOfDay != 0;
    return window;
}

Date SuggestionWeekEnd(Date day, const std::string& name) {
    return WeekEndOf(day, WeekdayNumber(name));
}

AllCommitments::AllCommitments(Session& session, const SuggestionRequest& request, const Window& window) {
    Read(session, request, window, {});
}

AllCommitments::AllCommitments(Session& session, const SuggestionRequest& request, const Window& window,
                               const std::string& emp_id) {
    Read(session, request, window, emp_id);
}

void AllCommitments::Read(Session& session, const SuggestionRequest& request, const Window& window,
                          const std::string& emp_id) {
    Database& work = *session.dbMainWork;
    const std::string ofHer = emp_id.empty() ? std::string() : Sql(" and emp_id = {}", emp_id);
    const Raw hers{ofHer};
    const long day = request.day.DayNumber();
    const Weekdays names(request.day);
    const auto open = [&work](const std::string& statement) {
        return work.OpenRecordset(statement, RecordsetType::Snapshot);
    };

    TextList days{{names.on, names.before}};
    if (window.spansMidnight) {
        days.texts.push_back(names.behind);
    }
    for (Recordset row = open(Sql("select emp_id,[day],St_time,END_TIME from assign where [day] in ({}) and "
                                  "type = 'N'{} order by sequence",
                                  days, hers));
         !row.Eof(); row.MoveNext()) {
        if (std::optional<TimeRow> time = RowOf(row, names.ShiftOf(row.Text("day")))) {
            if (time->dayShift == -1 && (!time->RunsPastMidnight() || time->end == 0)) {
                continue;
            }
            time->text = "UnAvailable";
            Commitments& theirs = At(row.Text("emp_id"));
            (time->dayShift == -1 ? theirs.overnight : theirs.unavailable).push_back(std::move(*time));
        }
    }

    // Those that schedule creation has reached are visits already.
    for (Recordset row = open(
             Sql("select emp_id,[day],St_time,END_TIME,cli_name,visit_desc from assign where [day] in ({}) "
                 "and type = 'A' and st_date <= {} and END_DATE >= {} and Last_date < {}{} order by sequence",
                 days, day, day, day, hers));
         !row.Eof(); row.MoveNext()) {
        if (std::optional<TimeRow> time = RowOf(row, names.ShiftOf(row.Text("day")))) {
            time->text = ShownText(row);
            At(row.Text("emp_id")).assignments.push_back(std::move(*time));
        }
    }

    for (Recordset row =
             open(Sql("select emp_id,st_date,St_time,END_TIME,cli_name,visit_desc from sch_day where "
                      "cancelled = 0 and st_date between {} AND {}{} order by sequence",
                      day - 1, window.spansMidnight ? day + 1 : day, hers));
         !row.Eof(); row.MoveNext()) {
        const std::string name = WeekdayCode(row.Get("st_date").ToDate());
        if (std::optional<TimeRow> time = RowOf(row, names.ShiftOf(name))) {
            time->text = ShownText(row);
            At(row.Text("emp_id")).visits.push_back(std::move(*time));
        }
    }

    for (Recordset row =
             open(Sql("select * from Emp_willwork where st_date >= {} and st_date <= {}{} order by "
                      "st_date,st_time",
                      day, day + 1, hers));
         !row.Eof(); row.MoveNext()) {
        const int shift = static_cast<int>(row.Get("st_date").ToDate().DayNumber() - day);
        if (std::optional<TimeRow> time = RowOf(row, shift)) {
            At(row.Text("emp_id")).willing.push_back(std::move(*time));
        }
    }

    const long weekEnd = SuggestionWeekEnd(request.day, session.WKENDING).DayNumber();
    constexpr long kRestOfWeek = 6;
    for (Recordset row =
             open(Sql("select emp_id,act_hrs,HRS from sch_day where cancelled = 0 and st_date >= {} AND "
                      "st_date <= {}{}",
                      weekEnd - kRestOfWeek, weekEnd, hers));
         !row.Eof(); row.MoveNext()) {
        const double worked = row.Get("act_hrs").NumberOr(0);
        At(row.Text("emp_id")).weekHours += worked > 0 ? worked : row.Get("HRS").NumberOr(0);
    }

    const std::string skills = emp_id.empty() ? std::string() : Sql(" and emp = {}", emp_id);
    for (Recordset row = open("select emp,ID from emp_misc where area = 'SKI'" + skills); !row.Eof();
         row.MoveNext()) {
        At(row.Text("emp")).skills.push_back(row.Text("ID"));
    }
}

Commitments& AllCommitments::At(const std::string& emp_id) {
    return byId_[Upper(emp_id)];
}

const Commitments& AllCommitments::Of(const std::string& emp_id) const {
    static const Commitments none;
    const auto found = byId_.find(Upper(emp_id));
    return found == byId_.end() ? none : found->second;
}

bool WillingOver(const Commitments& commitments, const Window& window) {
    const int start = window.span.start;
    const int end = window.span.end % kMinutesOfDay;
    if (window.spansMidnight) {
        // The evening's row and the morning's stand one behind the other.
        bool evening = false;
        for (const TimeRow& row : commitments.willing) {
            if (evening && row.dayShift == 1 && (row.end == 0 || row.end >= end)) {
                return true;
            }
            evening = row.dayShift == 0 && row.start <= start;
        }
        return false;
    }
    for (const TimeRow& row : commitments.willing) {
        const int ends = row.end == 0 ? kMinutesOfDay : row.end;
        if (row.dayShift == 0 && row.start <= start && ends >= window.span.end) {
            return true;
        }
    }
    return false;
}

}  // namespace kv
