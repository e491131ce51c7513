#include "scheduling/schedule_update.h"

#include "base/format.h"
#include "base/text.h"
#include "scheduling/visit_conflicts.h"
#include "scheduling/work_week.h"

namespace kv {

namespace {

Recordset OpenVisits(Session& session, const ScheduleUpdate& update, Date from) {
    return session.dbMainWork->OpenRecordset(Sql(
        "select emp_name,st_date,st_time,end_time,hrs,visit_desc,day,emp_id,sequence,emp_group,pay_travel,"
        "pay_errand,pay_expense,weekend from sch_day where assign_seq = {} and cancelled = 0 and act_hrs = 0 "
        "and "
        "st_date >= {} and sch_code = 'S' order by st_date,St_time",
        update.assignment, from.DayNumber()));
}

std::string DayText(Date day) {
    return FormatDate(day, "MMM/DD/YYYY");
}

bool FallsOnDay(Date day, const ScheduleUpdate& update, std::vector<std::string>& results) {
    if (EqualsNoCase(WeekdayCode(day), update.day)) {
        return true;
    }
    results.push_back("Schedule on " + DayText(day) + " does not match the Assignment Day of the Week.");
    return false;
}

/// The caregiver of the moved visit: the new one where she works on that day. One who is in no list leaves
/// the visit's own.
void SetCaregiver(Session& session, Recordset& visit, const ScheduleUpdate& update, Date day) {
    if (!Trim(update.emp_id).empty()) {
        const Recordset caregiver = session.dbMainWork->OpenRecordset(
            Sql("select * from Employee where Emp_id = {}", update.emp_id), RecordsetType::Snapshot);
        if (caregiver.Eof()) {
            return;
        }
        const Value left = caregiver.Get("t_date");
        if (EqualsNoCase(caregiver.Text("t_code"), "A") ||
            (!left.IsNull() && left.ToDate().DayOnly() >= day)) {
            visit.Set("emp_id", update.emp_id);
            visit.Set("PAY_TRAVEL", caregiver.Get("PAY_MILEAGE"));
            visit.Set("PAY_ERRAND", caregiver.Get("PAY_ERRAND"));
            visit.Set("PAY_EXPENSE", caregiver.Get("PAY_EXPENSES"));
            visit.Set("emp_group", caregiver.Get("dept"));
            visit.Set("emp_name",
                      Trim(caregiver.Text("LastName")) + ", " + Trim(caregiver.Text("FirstName")));
            return;
        }
    }
    for (const char* field : {"emp_id", "emp_name", "emp_group"}) {
        visit.Set(field, "");
    }
}

/// A visit that leaves its week is paid and billed with the one that it comes to. One that stays keeps what
/// it has.
void SetWeek(const Session& session, Recordset& visit, Date before, Date day) {
    const int endDay = EndOfWeek(session);
    const Date week = WeekEndOf(day, endDay);
    if (week != WeekEndOf(before, endDay)) {
        visit.Set("WEEKEND", week);
    }
}

void ProcessLine(Session& session, Recordset& visits, const ScheduleUpdate& update, const ScheduleLine& line,
                 std::vector<std::string>& results) {
    visits.FindFirst(Sql("sequence={}", line.sequence));
    if (visits.NoMatch()) {
        results.push_back("Caregiver: " + line.caregiver + " on " + DayText(line.date) +
                          " schedule was not found.");
        return;
    }
    const Date before = visits.Get("st_date").ToDate().DayOnly();
    const Date day = before.AddDays(update.dayDifference);
    if (!FallsOnDay(day, update, results)) {
        return;
    }
    visits.Edit();
    SetCaregiver(session, visits, update, day);
    visits.Set("St_time", update.start.TimeOnly());
    visits.Set("HRS", update.hours);
    visits.Set("END_TIME", update.end.TimeOnly());
    visits.Set("st_date", day);
    SetWeek(session, visits, before, day);
    visits.Set("Day", WeekdayCode(day));
    const std::string id = Trim(visits.Text("emp_id"));
    if (!Trim(update.emp_id).empty() && !id.empty() &&
        FindScheduleConflict(session, ProposeVisit(session.clock, id, day, update.start, update.hours)) > 0) {
        results.push_back("Caregiver:  " + visits.Text("emp_name") + " has a Non-Visit Schedule " +
                          DayText(day));
        for (const char* field : {"emp_id", "emp_name", "emp_group"}) {
            visits.Set(field, "");
        }
    }
    visits.Update();
}

}  // namespace

std::vector<ScheduleLine> LoadScheduleLines(Session& session, const ScheduleUpdate& update, Date from,
                                            std::vector<std::string>& results) {
    std::vector<ScheduleLine> lines;
    for (Recordset visits = OpenVisits(session, update, from); !visits.Eof(); visits.MoveNext()) {
        const auto time = [&](const char* field) {
            return visits.Get(field).IsNull() ? Date() : visits.Get(field).ToDate();
        };
        ScheduleLine line;
        line.sequence = static_cast<long>(visits.Get("sequence").ToInteger());
        line.caregiver = visits.Text("emp_name");
        line.date = visits.Get("st_date").ToDate().DayOnly();
        line.start = time("st_time");
        line.end = time("end_time");
        line.hours = visits.Get("hrs").NumberOr(0);
        line.description = visits.Text("visit_desc");
        line.checked = FallsOnDay(line.date.AddDays(update.dayDifference), update, results);
        lines.push_back(std::move(line));
    }
    return lines;
}

void ProcessScheduleLines(Session& session, const ScheduleUpdate& update,
                          const std::vector<ScheduleLine>& lines, Date from,
                          std::vector<std::string>& results) {
    Recordset visits = OpenVisits(session, update, from);
    for (const ScheduleLine& line : lines) {
        if (!line.checked) {
            continue;
        }
        try {
            ProcessLine(session, visits, update, line, results);
        } catch (const EngineError& error) {
            if (visits.EditMode() != EditState::None) {
                visits.CancelUpdate();
            }
            results.push_back("Caregiver: " + line.caregiver + " on " + DayText(line.date) +
                              " schedule was not changed: " + error.Description());
        }
    }
    results.emplace_back(
        "Schedule changes completed. You may need to refresh your schedule screen to see changes.");
}

}  // namespace kv
