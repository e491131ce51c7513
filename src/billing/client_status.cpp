#include "billing/client_status.h"

#include "billing/authorizations.h"

namespace kv {

namespace {

void TakeEarlier(Value& lowest, const Value& date) {
    if (!date.IsNull() && (lowest.IsNull() || date.ToDate().DayOnly() < lowest.ToDate().DayOnly())) {
        lowest = date;
    }
}

void TakeLater(Value& highest, const Value& date) {
    if (!date.IsNull() && (highest.IsNull() || date.ToDate().DayOnly() > highest.ToDate().DayOnly())) {
        highest = date;
    }
}

}  // namespace

void ServiceSpan::Take(const std::string& statusCode, const Value& from, const Value& to) {
    if (letter_ == "D") {
        return;
    }
    TakeEarlier(lowest_, from);
    TakeLater(highest_, to);
    if (statusCode == "A" || statusCode == "D" || (statusCode == "S" && letter_ == "C")) {
        letter_ = statusCode;
    }
}

ServiceSpan ServiceSpan::Of(Recordset& authorizations) {
    ServiceSpan span;
    for (; !authorizations.Eof(); authorizations.MoveNext()) {
        span.Take(authorizations.Text("status_code"), authorizations.Get("from_date"),
                  authorizations.Get("to_DATE"));
    }
    return span;
}

void UpdateClientStatus(Session& session, ClientForm& form, const std::string& client) {
    Recordset authorizations = OpenAuthorizations(session, {client, false, {}, {}});
    if (authorizations.Eof()) {
        return;
    }
    const ServiceSpan span = ServiceSpan::Of(authorizations);
    try {
        form.EditRow();
    } catch (const EngineError& error) {
        throw EngineError(error.Number(), "The client's own record can't be written: " + error.Description());
    }
    Recordset& row = form.List();
    row.Set("casestatcd", span.Letter());
    row.Set("startservc", span.Lowest());
    row.Set("caseexpdat", span.Highest());
    form.UpdateRow();
    session.dbMainCode->Execute(
        Sql("Update hkeylonglat set status = {} where cltID = {}", span.Letter(), client));
}

}  // namespace kv
