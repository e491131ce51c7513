#include "billing/authorizations.h"

#include "base/text.h"

namespace kv {

Recordset OpenAuthorizations(Session& session, const AuthorizationLimit& limit) {
    Database& work = *session.dbMainWork;
    // No item of the main screen's filter bears this name any more; settings of old ones may.
    if (EqualsNoCase(limit.filter, "Migration Check")) {
        return work.OpenRecordset(
            Sql("select * from Authorizations where client = {} and to_date > {} and "
                "status_code <> 'A' order by to_date",
                limit.client, limit.above.DayNumber()));
    }
    if (limit.onlyActive) {
        return work.OpenRecordset(
            Sql("select * from Authorizations where client = {} and Status_Code = 'A' order by from_date",
                limit.client));
    }
    return work.OpenRecordset(
        Sql("select * from Authorizations where client = {} order by status_code,from_date", limit.client));
}

void MoveToAuthorizationInForce(Session& session, Recordset& authorizations) {
    if (authorizations.RecordCount() == 0) {
        return;
    }
    const Date today = session.clock.Today();
    authorizations.MoveFirst();
    while (true) {
        const Value payer = authorizations.Get("bill_code");
        if (payer.NumberOr(0) <= 0) {
            session.ShowMessageWindow("Error with Authorization.  Please re-save each one");
        }
        const Value from = authorizations.Get("from_date");
        const Value to = authorizations.Get("to_DATE");
        const bool inForce = !from.IsNull() && !to.IsNull() && from.ToDate().DayOnly() <= today &&
                             to.ToDate().DayOnly() >= today;
        if (inForce || authorizations.AbsolutePosition() + 1 >= authorizations.RecordCount()) {
            return;
        }
        authorizations.MoveNext();
    }
}

std::string_view ItemOfLetter(const std::string_view* items, std::size_t count, std::string_view letter) {
    for (std::size_t i = 0; i < count; ++i) {
        if (!letter.empty() && EqualsNoCase(items[i].substr(0, 1), letter)) {
            return items[i];
        }
    }
    return {};
}

std::string PeriodLetter(std::string_view period) {
    constexpr std::size_t kBehindPer = 5;
    return Mid(period, kBehindPer, 1);
}

const std::array<CobillingType, 7>& CobillingTypes() {
    static constexpr const char* kPercentage = "The Percentage:";
    static constexpr const char* kPercent = "##0.000 %";
    static constexpr const char* kNoPercent = "Your Co-Billing percentage must be greater than 0.";
    static constexpr const char* kNoDollars = "Your Co-Billing dollars must be greater than 0.";
    static constexpr const char* kNoHours = "Your Co-Billing hours must be greater than 0.";
    static const std::array<CobillingType, 7> types = {{
        {"No Co-Billing. Payer is billed the full amount.", "", "", 0, false, false, ""},
        {"The payer is billed the full amount. Client billed the percentage.", kPercentage, kPercent, 100,
         false, true, kNoPercent},
        {"Deduct percentage from the payer, then bill it to then client.", kPercentage, kPercent, 100, false,
         true, kNoPercent},
        {"Deduct dollars from the payer, then bill it to the client.", "$ to Deduct:", "$ ##,##0.00",
         99999.99, true, false, kNoDollars},
        {"Deduct hours from the payer, then bill it to the client.", "Hrs to Deduct:", "##,##0.00", 99999.99,
         true, false, kNoHours},
        {"Bill the payer a maximum dollar amount, then bill the rest to the client.",
         "Max Dollars:", "$###,##0.00", 999999.99, true, false, kNoDollars},
        {"Bill the payer a maximum hour amount, then bill the rest to the client. ",
         "Max Hours:", "##,##0.00", 99999.99, true, false, kNoHours},
    }};
    return types;
}

namespace {

std::vector<LookupItem> ItemsOf(Recordset rows, const char* code) {
    std::vector<LookupItem> items;
    for (; !rows.Eof(); rows.MoveNext()) {
        items.push_back({rows.Text(code), rows.Text("Description")});
    }
    return items;
}

CallType CallTypeOf(Session& session, const std::string& criteria) {
    Recordset types = session.dbMainCode->OpenRecordset("Visit_types");
    if (types.Eof()) {
        return {};
    }
    types.FindFirst(criteria);
    if (types.NoMatch()) {
        return {};
    }
    constexpr std::pair<std::string_view, std::string_view> kKinds[] = {
        {"Both", "Regular"}, {"Billing Only", "Bill Only"}, {"Payroll Only", "Pay Only"}};
    CallType type = {types.Text("code"), types.Text("Description"), {}};
    for (const auto& [kind, hourCode] : kKinds) {
        if (EqualsNoCase(types.Text("payroll_or_billing"), kind)) {
            type.hourCode = hourCode;
        }
    }
    return type;
}

}  // namespace

std::vector<LookupItem> CallTypesOfPayer(Session& session, const PayerItem& payer,
                                         const std::string& client) {
    Database& work = *session.dbMainWork;
    constexpr RecordsetType kRead = RecordsetType::Snapshot;
    if (payer.name != kClientPays) {
        return ItemsOf(
            work.OpenRecordset(
                Sql("select * from billcode_idetail where billcode = {} order by visittype", payer.billCode),
                kRead),
            "visittype");
    }
    std::vector<LookupItem> own = ItemsOf(
        work.OpenRecordset(Sql("select * from clirate where client = {} order by visittype", client), kRead),
        "visittype");
    if (!own.empty()) {
        return own;
    }
    return ItemsOf(session.dbMainCode->OpenRecordset(
                       "select * from Visit_types where payroll_or_Billing = 'Both' or payroll_or_Billing = "
                       "'Billing Only'",
                       kRead),
                   "code");
}

CallType CallTypeOfCode(Session& session, const std::string& code) {
    return CallTypeOf(session, Sql("code = {}", code));
}

CallType CallTypeOfDescription(Session& session, const std::string& description) {
    return CallTypeOf(session, Sql("[description] = {}", description));
}

}  // namespace kv
