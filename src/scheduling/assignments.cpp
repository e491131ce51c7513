// The assignments of an authorization: their list, times and dates.
#include "scheduling/assignments.h"

#include <algorithm>
#include <cmath>

#include "base/format.h"
#include "base/text.h"

namespace kv {

namespace {

constexpr int kMinutesInAnHour = 60;
constexpr double kMinutesInADay = 1440;
constexpr double kWeek = 7;
constexpr std::size_t kNameInTree = 25;

std::string TimeText(const Recordset& row, const char* field) {
    const Value time = row.Get(field);
    return time.IsNull() ? std::string() : FormatDate(time.ToDate(), "HH:MM AM/PM");
}

}  // namespace

std::optional<AssignmentParent> ParentOf(Session& session, long authorization) {
    const Recordset row = session.dbMainWork->OpenRecordset(
        Sql("select * from Authorizations where sequence = {}", authorization), RecordsetType::Snapshot);
    if (row.Eof()) {
        return std::nullopt;
    }
    AssignmentParent parent;
    parent.authorization = authorization;
    parent.client = row.Text("CLIENT");
    parent.status = row.Text("status_code");
    parent.visitType = row.Text("visit_type");
    parent.visitDescription = row.Text("vis_desc");
    parent.payer = row.Text("bill_name");
    parent.billCode = static_cast<long>(row.Get("bill_code").NumberOr(0));
    const Date today = session.clock.Today();
    parent.from = row.Get("from_date").IsNull() ? today : row.Get("from_date").ToDate().DayOnly();
    parent.to = row.Get("to_DATE").IsNull() ? today : row.Get("to_DATE").ToDate().DayOnly();
    parent.hours = row.Get("HRS").NumberOr(0);
    parent.per = row.Text("WEEKORMONTH");
    parent.liveIn = EqualsNoCase(row.Text("Live_in"), "Y");
    const Recordset client = session.dbMainWork->OpenRecordset(
        Sql("select LASTNAME,FIRSTNAM,CASESTATCD from ClientPR where CLIENT = {}", parent.client),
        RecordsetType::Snapshot);
    if (!client.Eof()) {
        parent.clientName = Trim(client.Text("LASTNAME")) + ", " + Trim(client.Text("FIRSTNAM"));
        parent.clientStatus = client.Text("CASESTATCD");
    }
    return parent;
}

Recordset OpenAssignments(Session& session, long authorization) {
    return session.dbMainWork->OpenRecordset(
        Sql("select * from assign where author_seq = {} order by STATUS,st_time", authorization));
}

const std::array<std::string, kDaysOfWeek>& DayCodes() {
    static const std::array<std::string, kDaysOfWeek> codes = {"SUN", "MON", "TUE", "WED",
                                                               "THU", "FRI", "SAT"};
    return codes;
}

int DayIndex(const std::string& code) {
    const auto found = std::find_if(DayCodes().begin(), DayCodes().end(),
                                    [&](const std::string& day) { return EqualsNoCase(day, code); });
    return found == DayCodes().end() ? -1 : static_cast<int>(found - DayCodes().begin());
}

std::vector<AssignmentLine> AssignmentTree(const Recordset& assignments) {
    std::vector<AssignmentLine> lines;
    Recordset rows = assignments.Clone();
    if (rows.RecordCount() > 0) {
        rows.MoveFirst();
    }
    for (; !rows.Eof(); rows.MoveNext()) {
        AssignmentLine line;
        line.sequence = static_cast<long>(rows.Get("sequence").ToInteger());
        line.day = DayIndex(rows.Text("Day"));
        line.text = TimeText(rows, "St_time") + "-" + TimeText(rows, "END_TIME") + "   " +
                    FormatNumber(rows.Get("HRS").NumberOr(0), "00.00") + " hrs  " +
                    Left(rows.Text("emp_name"), kNameInTree);
        lines.push_back(std::move(line));
    }
    std::stable_sort(lines.begin(), lines.end(),
                     [](const AssignmentLine& a, const AssignmentLine& b) { return a.day < b.day; });
    return lines;
}

bool IsQuarterHour(Date time) {
    constexpr int kQuarter = 15;
    return time.Time().minute % kQuarter == 0;
}

Date EndOfVisit(Date start, double hours) {
    return start.TimeOnly().AddMinutes(std::round(hours * kMinutesInAnHour)).TimeOnly();
}

double HoursOfVisit(Date start, Date end) {
    double minutes = static_cast<double>(MinutesBetween(start.TimeOnly(), end.TimeOnly()));
    if (minutes < 0) {
        minutes += kMinutesInADay;
    }
    return minutes / kMinutesInAnHour;
}

Date LimitCreationDate(Date creation, Date today, Date authorizedTo) {
    constexpr long kWeeksOfALiveOne = 26;
    constexpr long kWeeksOfAnEndedOne = 6;
    const long most = authorizedTo > today ? kWeeksOfALiveOne : kWeeksOfAnEndedOne;
    return WeeksBetween(creation, today) > most ? today.AddDays(-kWeek) : creation;
}

Date NextCreationDate(const Recordset& assignment) {
    const Value last = assignment.Get("Last_date");
    const Date from = last.IsNull() ? Date() : last.ToDate().DayOnly();
    return from.AddDays(kWeek * assignment.Get("howoften").NumberOr(0));
}

Date FirstCreationDate(Date from, Date today) {
    return from < today.AddDays(-kWeek) ? today : from;
}

Date FirstVisitDay(const AssignmentEntry& entry, Date today) {
    const auto first = std::find(entry.days.begin(), entry.days.end(), true);
    if (first == entry.days.end()) {
        return today;
    }
    const int weekday = static_cast<int>(first - entry.days.begin()) + 1;
    return today.AddDays((weekday - today.Weekday() + kDaysOfWeek) % kDaysOfWeek);
}

}  // namespace kv
