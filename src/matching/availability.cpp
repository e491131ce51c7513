#include "matching/availability.h"

#include <algorithm>

#include "base/format.h"
#include "base/text.h"
#include "scheduling/visit_conflicts.h"

namespace kv {

namespace {

constexpr int kMinutesOfQuarter = 15;

/// Fills the rows of the table, one date after the other.
class DisplayTable {
  public:
    DisplayTable(Session& session, Availability& into) : session_(session), into_(into) {}

    void Fill() {
        for (std::size_t i = 0; i < into_.days.size(); ++i) {
            const long date = into_.days[i].date.DayNumber();
            const std::string& day = into_.days[i].day;
            for (Recordset row =
                     Open(Sql("select * from assign where emp_id = {} and st_date <= {} and end_date >= {} "
                              "and day = {} and type = 'A' and author_status = 'A' order by st_time",
                              into_.emp_id, date, date, day));
                 !row.Eof(); row.MoveNext()) {
                Occupy(i, row, {Occupied::Assignment, 0, Sequence(row)}, "Assignment", 0);
            }
            for (Recordset row =
                     Open(Sql("select * from assign where emp_id = {} and day = {} and Type = 'N' order by "
                              "st_time",
                              into_.emp_id, day));
                 !row.Eof(); row.MoveNext()) {
                if (HasTimes(row)) {
                    const int end = Minute(row, "END_TIME");
                    Write(i, {Occupied::Unavailable, 0, Sequence(row)}, "Unavailable", Minute(row, "St_time"),
                          end == 0 ? kMinutesOfDay : end);
                }
            }
            for (Recordset row = Open(Sql("select * from Emp_willwork where  emp_id = {} and st_date = {}",
                                          into_.emp_id, date));
                 !row.Eof(); row.MoveNext()) {
                if (HasTimes(row)) {
                    const int end = Minute(row, "END_TIME");
                    Write(i, {}, "", Minute(row, "St_time"), end == 0 ? kMinutesOfDay : end);
                }
            }
            for (Recordset row =
                     Open(Sql("select * from sch_day where emp_id = {} and cancelled = 0 and st_date = {} "
                              "order by st_time",
                              into_.emp_id, date));
                 !row.Eof(); row.MoveNext()) {
                const std::string client = row.Text("cli_name");
                // A visit to midnight counts as ending a minute before it, and leaves the last quarter free.
                Occupy(i, row, {Occupied::Visit, 0, Sequence(row)},
                       client.empty() ? row.Text("visit_desc") : client, kMinutesOfDay - 1);
            }
        }
    }

  private:
    Recordset Open(const std::string& statement) {
        return session_.dbMainWork->OpenRecordset(statement, RecordsetType::Snapshot);
    }
    static long Sequence(const Recordset& row) { return static_cast<long>(row.Get("sequence").NumberOr(0)); }
    static bool HasTimes(const Recordset& row) {
        return !row.Get("St_time").IsNull() && !row.Get("END_TIME").IsNull();
    }
    static int Minute(const Recordset& row, const char* field) {
        return MinuteOfDay(row.Get(field).ToDate());
    }

    /// `midnight` is the minute that an end of 00:00 stands for; 0 for the end of the day.
    void Occupy(std::size_t day, const Recordset& row, const AvailabilityQuarter& quarter,
                const std::string& text, int midnight) {
        if (!HasTimes(row)) {
            return;
        }
        const int start = Minute(row, "St_time");
        int end = Minute(row, "END_TIME");
        if (end == 0) {
            Write(day, quarter, text, start, midnight == 0 ? kMinutesOfDay : midnight);
        } else if (start <= end) {
            Write(day, quarter, text, start, end);
        } else {
            Write(day, quarter, text, start, kMinutesOfDay);
            if (day + 1 < into_.days.size()) {
                Write(day + 1, quarter, text, 0, end);
            }
        }
    }

    /// As statements on the table's row, one for the texts and one for the numbers of the rows behind them:
    /// from a start between two quarters both fail and change nothing. A text with an apostrophe breaks only
    /// its own; the number tells what is there all the same.
    void Write(std::size_t day, AvailabilityQuarter quarter, const std::string& text, int start, int end) {
        if (start % kMinutesOfQuarter != 0 || start == end) {
            return;
        }
        const std::optional<QuarterSpan> span = QuartersOf(start, end == kMinutesOfDay ? 0 : end);
        quarter.text = into_.texts.Keep(text);
        for (int at = span->first; at < span->end; ++at) {
            into_.days[day].quarters[static_cast<std::size_t>(at)] = quarter;
        }
    }

    Session& session_;
    Availability& into_;
};

std::string TimeText(const Recordset& row, const char* field) {
    const Value time = row.Get(field);
    return time.IsNull() ? std::string() : FormatDate(time.ToDate(), "HH:NN AM/PM");
}

}  // namespace

Availability LoadAvailability(Session& session, const std::string& emp_id, Date from, int days) {
    Availability availability;
    availability.emp_id = emp_id;
    const Recordset employee = session.dbMainWork->OpenRecordset(
        Sql("select * from employee where emp_id = {}", emp_id), RecordsetType::Snapshot);
    if (!employee.Eof()) {
        availability.emp_name = Trim(employee.Text("LastName")) + ", " + Trim(employee.Text("FirstName"));
    }
    for (int i = 0; i < std::max(1, days); ++i) {
        AvailabilityDay& day = availability.days.emplace_back();
        day.date = from.DayOnly().AddDays(i);
        day.day = WeekdayCode(day.date);
    }
    DisplayTable(session, availability).Fill();
    return availability;
}

std::vector<LabelledText> AvailabilityCaregiver(Session& session, const std::string& emp_id) {
    const Recordset employee = session.dbMainWork->OpenRecordset(
        Sql("select * from employee where emp_id = {}", emp_id), RecordsetType::Snapshot);
    if (employee.Eof()) {
        return {};
    }
    return {{"ID", employee.Text("emp_id")},
            {"Name", Trim(employee.Text("LastName")) + ", " + Trim(employee.Text("FirstName"))},
            {"Address", employee.Text("Street")},
            {"City", employee.Text("City")},
            {"Zip", employee.Text("Zip")},
            {"State", employee.Text("State")},
            {"Phone", FormatPhone(employee.Text("Phone"))},
            {"Pager", FormatPhone(employee.Text("pager"))}};
}

QuarterDetail DetailOf(Session& session, const AvailabilityQuarter& quarter) {
    QuarterDetail detail;
    if (quarter.by == Occupied::Nothing || quarter.by == Occupied::Unavailable) {
        return detail;
    }
    const bool isVisit = quarter.by == Occupied::Visit;
    const Recordset row = session.dbMainWork->OpenRecordset(
        Sql("select * from {} where sequence = {}", Raw{isVisit ? "sch_day" : "assign"}, quarter.id),
        RecordsetType::Snapshot);
    if (row.Eof()) {
        return detail;
    }
    const bool worked = isVisit && row.Get("act_hrs").NumberOr(0) > 0;
    std::string created;
    if (isVisit) {
        created = !Trim(row.Text("edited_by")).empty()     ? "Edited"
                  : row.Get("assign_seq").NumberOr(0) == 0 ? "Added Manually"
                                                           : "From Assignment";
    }
    detail.schedule = {
        {"Start", TimeText(row, "St_time")},
        {"End", TimeText(row, "END_TIME")},
        {"Hours", FormatNumber(row.Get("HRS").NumberOr(0), "#0.00")},
        {"Call", row.Text("visit_desc")},
        {"Actual", worked ? TimeText(row, "visit_time") : std::string()},
        {"Act Hrs", worked ? FormatNumber(row.Get("act_hrs").NumberOr(0), "#0.00") : std::string()},
        {"Created", created}};
    const Recordset client = session.dbMainWork->OpenRecordset(
        Sql("select * from ClientPR where [client] = {}", row.Text("CLIENT")), RecordsetType::Snapshot);
    if (!client.Eof()) {
        detail.client = {{"ID", client.Text("CLIENT")},
                         {"Name", Trim(client.Text("LASTNAME")) + ", " + Trim(client.Text("FIRSTNAM"))},
                         {"Address", client.Text("STREET")},
                         {"City", client.Text("CITY")},
                         {"Zip", client.Text("ZIP")},
                         {"State", client.Text("STATE")},
                         {"Phone", FormatPhone(client.Text("PHONE"))},
                         {"Status", client.Text("CASESTATCD")}};
    }
    return detail;
}

Document AvailabilityReport(const Availability& availability, Date today) {
    Document document("Caregiver's Schedules");
    document.style = {"Courier New", 8};
    document.page.orientation = Orientation::Landscape;
    document.Line(" Run Date: " + FormatDate(today, "MMM/DD/YYYY"));
    document.Line("Caregiver: " + availability.emp_name);
    document.Line("");
    DayChart chart;
    chart.columns = {{"DOW", 0.4}, {"Date", 0.9}};
    for (const AvailabilityDay& day : availability.days) {
        DayChart::Row row;
        row.cells = {day.day, FormatDate(day.date, "MMM/DD/YYYY")};
        const AvailabilityQuarter* before = nullptr;
        for (int at = 0; at < kQuarters; ++at) {
            const AvailabilityQuarter& quarter = day.quarters[static_cast<std::size_t>(at)];
            const int from = at * kMinutesOfQuarter;
            const bool goesOn = before != nullptr && before->by == quarter.by && before->id == quarter.id;
            if (quarter.by != Occupied::Nothing && goesOn) {
                row.spans.back().to = from + kMinutesOfQuarter;
            } else if (quarter.by != Occupied::Nothing) {
                row.spans.push_back({from, from + kMinutesOfQuarter, availability.texts.Text(quarter.text)});
            }
            before = &quarter;
        }
        chart.rows.push_back(std::move(row));
    }
    document.Add(std::move(chart));
    return document;
}

}  // namespace kv
