#include "billing/client_status.h"

#include "billing/authorizations.h"

namespace kv {

namespace {

struct ClientSpan {
    std::string status = "Closed";
    Value lowest;
    Value highest;
};

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

/// The rows stand by their states, so the walk ends at the first deceased one: those behind it do not count,
/// for their dates neither.
ClientSpan SpanOf(Recordset& authorizations) {
    ClientSpan span;
    for (; !authorizations.Eof(); authorizations.MoveNext()) {
        TakeEarlier(span.lowest, authorizations.Get("from_date"));
        TakeLater(span.highest, authorizations.Get("to_DATE"));
        const std::string code = authorizations.Text("status_code");
        if (code == "S" && span.status == "Closed") {
            span.status = "Suspended";
        } else if (code == "A") {
            span.status = "Active";
        } else if (code == "D") {
            span.status = "Deceased";
            break;
        }
    }
    return span;
}

}  // namespace

void UpdateClientStatus(Session& session, ClientForm& form, const std::string& client) {
    Recordset authorizations = OpenAuthorizations(session, {client, false, {}, {}});
    if (authorizations.Eof()) {
        return;
    }
    const ClientSpan span = SpanOf(authorizations);
    const std::string letter = span.status.substr(0, 1);
    try {
        form.EditRow();
    } catch (const EngineError& error) {
        throw EngineError(error.Number(), "The client's own record can't be written: " + error.Description());
    }
    Recordset& row = form.List();
    row.Set("casestatcd", letter);
    row.Set("startservc", span.lowest);
    row.Set("caseexpdat", span.highest);
    form.UpdateRow();
    session.dbMainCode->Execute(Sql("Update hkeylonglat set status = {} where cltID = {}", letter, client));
}

}  // namespace kv
