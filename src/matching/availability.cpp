#include "matching/availability.h"

#include <algorithm>
#include <utility>

#include "base/format.h"
#include "base/text.h"
#include "matching/free_warnings.h"
#include "scheduling/visit_conflicts.h"

namespace kv {

namespace {

constexpr int kMinutesOfQuarter = 15;

/// Fills the rows of the table, one date after the other.
class DisplayTable {
  public:
    DisplayTable(Session& session, Availability& into) : session_(session), into_(into) {}

    void Fill() {
        // What begins on the evening before goes on on the first day.
        const Date first = into_.days.front().date;
        for (int day = -1; day < static_cast<int>(into_.days.size()); ++day) {
            FillDay(day, first.AddDays(day));
        }
    }

  private:
    /// A visit of the day before that goes on up to that minute.
    struct Continued {
        AvailabilityQuarter quarter;
        std::string text;
        int end;
    };

    void FillDay(int day, Date date) {
        const long number = date.DayNumber();
        const std::string code = WeekdayCode(date);
        for (Recordset row =
                 Open(Sql("select * from assign where emp_id = {} and st_date <= {} and end_date >= {} "
                          "and day = {} and type = 'A' and author_status = 'A' order by st_time",
                          into_.emp_id, number, number, code));
             !row.Eof(); row.MoveNext()) {
            if (HasTimes(row)) {
                DrawAssignment(day, row);
            }
        }
        for (Recordset row =
                 Open(Sql("select * from assign where emp_id = {} and day = {} and Type = 'N' order by "
                          "st_time",
                          into_.emp_id, code));
             !row.Eof(); row.MoveNext()) {
            if (HasTimes(row)) {
                Draw(day, {Occupied::Unavailable, 0, Sequence(row)}, "Unavailable", Minute(row, "St_time"),
                     Minute(row, "END_TIME"));
                Note(day, "Unavailable", row, false);
                NoteMorning(day + 1, Minute(row, "St_time"), Minute(row, "END_TIME"));
            }
        }
        for (Recordset row = Open(
                 Sql("select * from Emp_willwork where  emp_id = {} and st_date = {}", into_.emp_id, number));
             !row.Eof(); row.MoveNext()) {
            if (HasTimes(row)) {
                Draw(day, {}, "", Minute(row, "St_time"), Minute(row, "END_TIME"));
            }
        }
        // Willingness frees nothing of a visit, that of the evening before included.
        for (const Continued& visit : std::exchange(continued_, {})) {
            Draw(day, visit.quarter, visit.text, 0, visit.end);
        }
        for (Recordset row =
                 Open(Sql("select * from sch_day where emp_id = {} and cancelled = 0 and st_date = {} "
                          "order by st_time",
                          into_.emp_id, number));
             !row.Eof(); row.MoveNext()) {
            if (HasTimes(row)) {
                DrawVisit(day, row);
            }
        }
    }

    void DrawAssignment(int day, const Recordset& row) {
        const AvailabilityQuarter quarter = {Occupied::Assignment, 0, Sequence(row)};
        const int start = Minute(row, "St_time");
        const int end = Minute(row, "END_TIME");
        Draw(day, quarter, "Assignment", start, start >= end ? 0 : end);
        if (start >= end && end != 0) {
            Draw(day + 1, quarter, "Assignment", 0, end);
        }
        Note(day, "Assigned", row, true);
    }

    void DrawVisit(int day, const Recordset& row) {
        // A visit to midnight counts as ending a minute before it, and leaves the last quarter free.
        constexpr int kLastMinute = kMinutesOfDay - 1;
        const std::string client = row.Text("cli_name");
        const std::string text = client.empty() ? row.Text("visit_desc") : client;
        const AvailabilityQuarter quarter = {Occupied::Visit, 0, Sequence(row)};
        const int start = Minute(row, "St_time");
        const int end = Minute(row, "END_TIME");
        Draw(day, quarter, text, start, end == 0 ? kLastMinute : start >= end ? 0 : end);
        if (start >= end && end != 0) {
            continued_.push_back({quarter, text, end});
        }
        Note(day, "Scheduled", row, true);
    }

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

    AvailabilityDay* DayAt(int day) {
        return day >= 0 && day < static_cast<int>(into_.days.size())
                   ? &into_.days[static_cast<std::size_t>(day)]
                   : nullptr;
    }

    /// As statements on the table's row, one for the texts and one for the numbers of the rows behind them:
    /// from a start between two quarters both fail and change nothing. A text with an apostrophe breaks only
    /// its own; the number tells what is there all the same. A day that is not displayed has no row.
    void Draw(int at, AvailabilityQuarter quarter, const std::string& text, int start, int end) {
        AvailabilityDay* day = DayAt(at);
        const std::optional<QuarterSpan> span = QuartersOf(start, end);
        if (day == nullptr || !span) {
            return;
        }
        quarter.text = into_.texts.Keep(text);
        for (int place = span->first; place < span->end; ++place) {
            day->quarters[static_cast<std::size_t>(place)] = quarter;
        }
    }

    /// Tells what of a row's time the day's quarters do not show. `goesOn`: past midnight it is shown on the
    /// next day.
    void Note(int at, const char* what, const Recordset& row, bool goesOn) {
        const int start = Minute(row, "St_time");
        const int end = Minute(row, "END_TIME");
        const std::string why = WhyNotShown(start, goesOn && start > end ? 0 : end);
        if (AvailabilityDay* day = DayAt(at); day != nullptr && !why.empty()) {
            day->notes.push_back(std::string(what) + " from " + ClockText(start) + " to " + ClockText(end) +
                                 " " + why + ".");
        }
    }

    /// Unavailable time is shown on the day on which it begins alone.
    void NoteMorning(int at, int start, int end) {
        if (AvailabilityDay* day = DayAt(at); day != nullptr && start >= end && end != 0) {
            day->notes.push_back(OvernightWords(start, end) + " is not shown: it runs past midnight.");
        }
    }

    Session& session_;
    Availability& into_;
    std::vector<Continued> continued_;
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
