#include "billing/visit_amounts.h"

#include "base/format.h"
#include "base/text.h"

namespace kv {

namespace {

constexpr int kMostPasses = 51;
constexpr double kMinutesInAnHour = 60;
constexpr std::size_t kShiftsOfADay = 3;
constexpr int kNoon = 12;

/// Orders moments as their texts "MM/DD/YYYY HH:MM" are ordered: the month counts most and the year least of
/// the day. So a shift over the turn of the year holds no moment; agencies bill such nights by hand.
long long TextOrder(Date moment) {
    const CivilDate day = moment.Civil();
    const TimeOfDay time = moment.Time();
    long long order = day.month;
    for (const auto& [base, part] : {std::pair(100, day.day), std::pair(10000, day.year),
                                     std::pair(100, time.hour), std::pair(100, time.minute)}) {
        order = order * base + part;
    }
    return order;
}

bool IsWeekend(Date day) {
    constexpr int kSunday = 1;
    constexpr int kSaturday = 7;
    return day.Weekday() == kSunday || day.Weekday() == kSaturday;
}

/// A shift's window laid around a moment.
struct Laid {
    std::size_t shift = 0;
    Date start, end;
    bool wholeDay = false;
    bool crosses = false;
};

/// `fromBefore`: the pass begins at a midnight at which the one before was cut.
std::optional<Laid> LayShift(const ShiftWindow& shift, Date moment, bool fromBefore) {
    if (!shift.start || shift.stop.IsNull()) {
        return std::nullopt;
    }
    const Date from = shift.start->TimeOnly();
    const Date to = shift.stop.ToDate().TimeOnly();
    const Date day = moment.DayOnly();
    Laid laid;
    laid.wholeDay = from == to;
    laid.crosses = from > to;
    if (from < to) {
        laid.start = day.At(from);
        laid.end = day.At(to);
    } else if (fromBefore || moment.Time().hour < kNoon) {
        laid.start = day.AddDays(-1).At(from);
        laid.end = day.At(to);
    } else {
        laid.start = day.At(from);
        laid.end = day.AddDays(1).At(to);
    }
    return laid;
}

std::optional<Laid> ShiftOf(const ShiftTimes& shifts, Date moment, bool fromBefore) {
    const std::size_t first = IsWeekend(moment) ? kShiftsOfADay : 0;
    for (std::size_t i = first; i < first + kShiftsOfADay; ++i) {
        std::optional<Laid> laid = LayShift(shifts[i], moment, fromBefore);
        if (laid && (laid->wholeDay || (TextOrder(moment) >= TextOrder(laid->start) &&
                                        TextOrder(moment) < TextOrder(laid->end)))) {
            laid->shift = i;
            return laid;
        }
    }
    return std::nullopt;
}

double HoursBetween(Date from, Date to) {
    return static_cast<double>(MinutesBetween(from, to)) / kMinutesInAnHour;
}

/// How much of what remains is paid by this shift, and whether the piece ends at a midnight.
struct Slice {
    double hours = 0;
    bool atMidnight = false;
};

Slice SliceOf(const Laid& laid, Date moment, double remaining, bool fromBefore) {
    const Date finish = moment.AddMinutes(remaining * kMinutesInAnHour);
    if (laid.wholeDay) {
        if (finish > laid.start.At(Date::FromTime(23, 59))) {
            return {HoursBetween(moment, moment.DayOnly().AddDays(1)), true};
        }
        return {remaining, false};
    }
    if (laid.crosses) {
        // On a morning this lies before the moment: the piece is below 0, gives its hours back to what
        // remains, and the next pass pays them in the same shift. The total comes out right.
        const Date midnight = laid.end.DayOnly();
        if (finish > midnight && !fromBefore) {
            return {HoursBetween(moment, midnight), true};
        }
    }
    if (finish > laid.end) {
        return {HoursBetween(moment, laid.end), false};
    }
    return {remaining, false};
}

/// The caregiver's own rates are by the hour.
RateRow ReadGeneralRates(const Recordset& caregiver) {
    RateRow row = ReadRates(caregiver);
    row.method.assign(1, 'H');
    return row;
}

std::optional<RateRow> LookUpPay(Session& session, const RatedVisit& visit) {
    const auto open = [&](const std::string& statement) {
        return session.dbMainWork->OpenRecordset(statement, RecordsetType::Snapshot);
    };
    for (const std::string& client : {visit.client, std::string()}) {
        const Recordset rate =
            open(Sql("select * from emprate where [employee] = {} and client = {} and [visittype] = {}",
                     visit.emp_id, client, visit.visitType));
        if (!rate.Eof()) {
            return ReadRates(rate);
        }
    }
    const Recordset caregiver = open(Sql("select * from Employee where [emp_id] = {}", visit.emp_id));
    return caregiver.Eof() ? std::nullopt : std::optional(ReadGeneralRates(caregiver));
}

}  // namespace

RateRow ReadRates(const Recordset& row) {
    RateRow rates;
    rates.method = row.Text("method");
    constexpr std::array kFields = {"rate1", "rate2", "rate3", "rate4", "rate5", "rate6"};
    for (std::size_t i = 0; i < kFields.size(); ++i) {
        rates.rates[i] = row.Get(kFields[i]).NumberOr(0);
    }
    rates.liveIn = row.Get("liveinrate").NumberOr(0);
    return rates;
}

double RateVisitForBilling(const ShiftTimes& shifts, const RateRow* row, Date start, double hours) {
    const std::optional<Laid> laid = ShiftOf(shifts, start, false);
    if (row == nullptr || !laid) {
        return 0;
    }
    const double rate = row->rates[laid->shift];
    return EqualsNoCase(row->method, "V") ? rate : rate * hours;
}

double RateVisitForPay(const ShiftTimes& shifts, const RateRow& row, Date start, double hours) {
    const bool byHour = EqualsNoCase(row.method, "H");
    const bool byVisit = EqualsNoCase(row.method, "V");
    double remaining = hours;
    double total = 0;
    Date moment = start;
    bool fromBefore = false;
    // A visit of no hours goes through once: by the visit it is paid all the same.
    for (int pass = 0; pass < kMostPasses && (pass == 0 || remaining != 0); ++pass) {
        const std::optional<Laid> laid = ShiftOf(shifts, moment, fromBefore);
        if (!laid) {
            break;  // the moment would stay where it is
        }
        const Slice slice = byHour ? SliceOf(*laid, moment, remaining, fromBefore) : Slice{remaining, false};
        fromBefore = slice.atMidnight;
        remaining -= slice.hours;
        moment = moment.AddMinutes(slice.hours * kMinutesInAnHour);
        const double rate = row.rates[laid->shift];
        total += byVisit ? rate : rate * slice.hours;
    }
    return total;
}

VisitAmounts::VisitAmounts(Session& session) : session_(session), shifts_(ShiftWindows(session)) {}

void VisitAmounts::ReadPayRates(const std::string& client, const std::string& visitType) {
    client_ = client;
    visitType_ = visitType;
    for (auto* rates : {&ofClient_, &ofType_, &general_}) {
        rates->clear();
    }
    Recordset rows = session_.dbMainWork->OpenRecordset(
        Sql("select * from emprate where visittype = {} and (client = {} or client = '')", visitType, client),
        RecordsetType::Snapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        auto& rates = rows.Text("client").empty() ? ofType_ : ofClient_;
        rates.emplace(Upper(rows.Text("employee")), ReadRates(rows));
    }
    rows = session_.dbMainWork->OpenRecordset(
        "select emp_id,method,rate1,rate2,rate3,rate4,rate5,rate6,liveinrate from Employee",
        RecordsetType::Snapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        general_.emplace(Upper(rows.Text("emp_id")), ReadGeneralRates(rows));
    }
    read_ = true;
}

std::optional<RateRow> VisitAmounts::BillRow(const RatedVisit& visit) {
    const std::string statement =
        visit.billCode == kClientBillCode
            ? Sql("select * from clirate where [client] = {} and [visittype] = {}", visit.client,
                  visit.visitType)
            : Sql("select * from billcode_idetail where [billcode] = {} and [visittype] = {}", visit.billCode,
                  visit.visitType);
    const Recordset row = session_.dbMainWork->OpenRecordset(statement, RecordsetType::Snapshot);
    return row.Eof() ? std::nullopt : std::optional(ReadRates(row));
}

std::optional<RateRow> VisitAmounts::PayRow(const RatedVisit& visit) {
    if (!read_ || !EqualsNoCase(visit.client, client_) || !EqualsNoCase(visit.visitType, visitType_)) {
        return LookUpPay(session_, visit);
    }
    const std::string key = Upper(visit.emp_id);
    for (const auto* rates : {&ofClient_, &ofType_, &general_}) {
        if (const auto found = rates->find(key); found != rates->end()) {
            return found->second;
        }
    }
    return std::nullopt;
}

double VisitAmounts::Bill(const RatedVisit& visit, Date start, double hours) {
    const std::optional<RateRow> row = BillRow(visit);
    if (visit.liveIn) {
        return row ? row->liveIn / 24 * hours : 0;
    }
    return RateVisitForBilling(shifts_, row ? &*row : nullptr, start, hours);
}

double VisitAmounts::Pay(const RatedVisit& visit, Date start, double hours) {
    const std::optional<RateRow> row = PayRow(visit);
    if (!row) {
        return 0;
    }
    return visit.liveIn ? row->liveIn / 24 * hours : RateVisitForPay(shifts_, *row, start, hours);
}

double BillAmountForVisit(Session& session, const RatedVisit& visit, Date start, double hours) {
    return VisitAmounts(session).Bill(visit, start, hours);
}

double PayAmountForVisit(Session& session, const RatedVisit& visit, Date start, double hours) {
    return VisitAmounts(session).Pay(visit, start, hours);
}

}  // namespace kv
