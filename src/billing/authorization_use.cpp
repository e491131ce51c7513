#include "billing/authorization_use.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "base/text.h"
#include "scheduling/work_week.h"

namespace kv {

namespace {

constexpr int kDaysInAWeek = 7;
constexpr int kDecimals = 2;

/// The day on which a span's month of that number begins: the day of the month on which the span began, or
/// the first of the next month where a month lacks it. So a year less a day is twelve months from any day on.
Date MonthOfSpan(Date from, int months) {
    const CivilDate first = from.Civil();
    const Date begins = from.DayOnly().AddMonths(months);
    return begins.Civil().day < first.day ? begins.AddDays(1) : begins;
}

/// The weeks or months that a span of days holds, counted from its first day; one that is begun counts.
double PeriodsOf(const AuthorizationUse& use) {
    if (use.to < use.from) {
        return 0;
    }
    if (use.per == "M") {
        const int begun = static_cast<int>(MonthsBetween(use.from, use.to));
        return MonthOfSpan(use.from, begun) <= use.to ? begun + 1 : begun;
    }
    const double days = static_cast<double>(DaysBetween(use.from, use.to) + 1);
    return std::ceil(days / kDaysInAWeek);
}

void SetPeriod(AuthorizationUse& use, Date today, int endDay) {
    if (use.per == "M") {
        const CivilDate day = today.Civil();
        use.periodFrom = Date::FromCivil(day.year, day.month, 1);
        use.periodTo = Date::FromCivil(day.year, day.month + 1, 1).AddDays(-1);
        return;
    }
    use.periodTo = WeekEndOf(today, endDay);
    use.periodFrom = use.periodTo.AddDays(1 - kDaysInAWeek);
}

void CountVisits(Session& session, AuthorizationUse& use) {
    Recordset visits = session.dbMainWork->OpenRecordset(
        Sql("select st_date,HRS,act_hrs,Cancelled from sch_day where author_seq = {}", use.sequence),
        RecordsetType::Snapshot);
    double open = 0;  // of this period: scheduled, and not worked yet
    for (; !visits.Eof(); visits.MoveNext()) {
        if (visits.Get("Cancelled").IsTrue() || visits.Get("st_date").IsNull()) {
            continue;
        }
        const Date day = visits.Get("st_date").ToDate().DayOnly();
        const double hours = visits.Get("HRS").NumberOr(0);
        const double actual = visits.Get("act_hrs").NumberOr(0);
        use.totalUsed += actual != 0 ? actual : hours;
        if (day >= use.periodFrom && day <= use.periodTo) {
            use.scheduled += hours;
            use.worked += actual;
            open += actual != 0 ? 0 : hours;
        }
    }
    use.left = use.authorized - use.worked - open;
}

/// The hours in a week that its assignments ask for.
double WeeklyPattern(Session& session, long sequence) {
    Recordset assignments = session.dbMainWork->OpenRecordset(
        Sql("select HRS,howoften from assign where author_seq = {} and Type = 'A'", sequence),
        RecordsetType::Snapshot);
    double hours = 0;
    for (; !assignments.Eof(); assignments.MoveNext()) {
        hours += assignments.Get("HRS").NumberOr(0) / std::max(1.0, assignments.Get("howoften").NumberOr(1));
    }
    return hours;
}

/// The last visit there is already.
Date LastVisit(Session& session, long sequence, Date today) {
    const Value last = session.dbMainWork->Lookup(
        Sql("select max(st_date) from sch_day where author_seq = {} and cancelled = 0", sequence));
    return last.IsNull() ? today : std::max(today, last.ToDate().DayOnly());
}

void FindEnd(Session& session, AuthorizationUse& use, Date today) {
    use.lasts = use.to;
    const double pattern = WeeklyPattern(session, use.sequence);
    if (use.totalAuthorized <= 0 || pattern <= 0) {
        return;
    }
    const double days = std::floor(std::max(0.0, use.totalLeft) / pattern * kDaysInAWeek);
    const Date empty = LastVisit(session, use.sequence, today).AddDays(days);
    if (empty < use.to) {
        use.lasts = empty;
        use.runsOut = true;
    }
}

AuthorizationUse UseOfRow(Session& session, const Recordset& row) {
    const Date today = session.clock.Today();
    AuthorizationUse use;
    use.sequence = static_cast<long>(row.Get("sequence").ToInteger());
    use.client = row.Text("CLIENT");
    const Recordset client = session.dbMainWork->OpenRecordset(
        Sql("select LASTNAME,FIRSTNAM from ClientPR where CLIENT = {}", use.client), RecordsetType::Snapshot);
    if (!client.Eof()) {
        use.clientName = Trim(client.Text("LASTNAME")) + ", " + Trim(client.Text("FIRSTNAM"));
    }
    use.payer = row.Text("bill_name");
    use.visitType = row.Text("visit_type");
    use.per = EqualsNoCase(row.Text("WEEKORMONTH"), "M") ? "M" : "W";
    use.from = row.Get("from_date").IsNull() ? today : row.Get("from_date").ToDate().DayOnly();
    use.to = row.Get("to_DATE").IsNull() ? today : row.Get("to_DATE").ToDate().DayOnly();
    use.authorized = row.Get("HRS").NumberOr(0);
    SetPeriod(use, today, WeekdayNumber(session.WKENDING));
    CountVisits(session, use);
    use.totalAuthorized = use.authorized * PeriodsOf(use);
    use.totalLeft = use.totalAuthorized - use.totalUsed;
    FindEnd(session, use, today);
    for (double* hours :
         {&use.scheduled, &use.worked, &use.left, &use.totalAuthorized, &use.totalUsed, &use.totalLeft}) {
        *hours = RoundTo(*hours, kDecimals);
    }
    return use;
}

}  // namespace

std::optional<AuthorizationUse> UseOfAuthorization(Session& session, long sequence) {
    const Recordset row = session.dbMainWork->OpenRecordset(
        Sql("select * from Authorizations where sequence = {}", sequence), RecordsetType::Snapshot);
    return row.Eof() ? std::nullopt : std::optional(UseOfRow(session, row));
}

std::vector<AuthorizationUse> UseOfAuthorizations(Session& session, const std::string& client) {
    const std::string limit = client.empty() ? std::string() : Sql(" and client = {}", client);
    Recordset rows = session.dbMainWork->OpenRecordset(
        "select * from Authorizations where status_code = 'A'" + limit + " order by client,from_date",
        RecordsetType::Snapshot);
    std::vector<AuthorizationUse> uses;
    for (; !rows.Eof(); rows.MoveNext()) {
        uses.push_back(UseOfRow(session, rows));
    }
    return uses;
}

}  // namespace kv
