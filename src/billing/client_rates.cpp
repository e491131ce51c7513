#include "billing/client_rates.h"

#include "base/format.h"
#include "base/text.h"
#include "clients/record_keys.h"
#include "session/trans.h"
#include "session/whole_step.h"

namespace kv {

namespace {

constexpr const char* kLineEnd = "\r\n";
constexpr std::size_t kDescriptionLength = 30;
constexpr const char* kAmounts[] = {"rate1", "rate2", "rate3", "rate4", "rate5", "rate6", "liveinrate"};
constexpr const char* kBilled =
    "select * from Visit_types where payroll_or_billing = 'Both' or payroll_or_billing = 'Billing Only' "
    "order "
    "by code";
constexpr RecordTexts kTexts = {"There are no records to move to.",
                                "This is the first Client Rate for this Client",
                                "This is the Last Client Rate", "There are no records to delete.",
                                "Are you sure you wish to delete this Client Rate?"};

std::string AmountText(const Value& amount) {
    return FormatNumber(amount.NumberOr(0), "##,##0.00");
}

void WriteRateHistory(Session& session, const Recordset& rate, const std::string& client) {
    std::string text = "Call Type: " + rate.Text("visittype") + "  Desc: " + rate.Text("Description") +
                       kLineEnd + "Method: " + rate.Text("method") + kLineEnd;
    int number = 0;
    for (const char* amount : kAmounts) {
        const bool liveIn = std::string_view(amount) == "liveinrate";
        text += (liveIn ? std::string("Live-in: ") : "Rate " + std::to_string(++number) + ": ") +
                AmountText(rate.Get(amount)) + kLineEnd;
    }
    const Date now = session.clock.Now();
    Recordset changes = session.dbMainWork->OpenRecordset("select * from changes where type = ''");
    changes.AddNew();
    changes.Set("Type", "CLI");
    changes.Set("Area", client);
    changes.Set("Date", now.DayOnly());
    changes.Set("Time", FormatDate(now, "HH:MM:SS AM/PM"));
    changes.Set("User", session.User);
    changes.Set("Status", "Bill Rate");
    changes.Set("reason", text);
    changes.Update();
}

std::string OwnRates(const std::string& client) {
    return Sql("select * from clirate where client = {} order by visittype", client);
}

void CopyAmounts(const Recordset& from, Recordset& to) {
    to.Set("method", from.Get("method"));
    for (const char* amount : kAmounts) {
        to.Set(amount, from.Get(amount));
    }
}

std::vector<LookupItem> Types(Session& session, const std::string& statement) {
    std::vector<LookupItem> types;
    Recordset rows = session.dbMainCode->OpenRecordset(statement, RecordsetType::Snapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        types.push_back({rows.Text("code"), rows.Text("Description")});
    }
    return types;
}

}  // namespace

std::array<ShiftWindow, 6> ShiftWindows(Session& session) {
    struct Shift {
        const char* rate;
        const char* meaning;
        const char* start;
        const char* stop;
    };
    // The weekend's windows are numbered 6 to 8 and go with the rates 4 to 6.
    constexpr std::array<Shift, 6> kShifts = {{
        {"rate1", "Bill Rate for Weekday, day shift", "start1", "stop1"},
        {"rate2", "Bill Rate for Weekday, evening shift", "start2", "stop2"},
        {"rate3", "Bill Rate for Weekday, night shift", "start3", "stop3"},
        {"rate4", "Bill Rate for Weekend, day shift", "start6", "stop6"},
        {"rate5", "Bill Rate for Weekend, evening shift", "start7", "stop7"},
        {"rate6", "Bill Rate for Weekend, night shift", "start8", "stop8"},
    }};
    std::array<ShiftWindow, 6> windows;
    const Recordset agency =
        session.dbMainCode->OpenRecordset("select * from Agency", RecordsetType::Snapshot);
    for (std::size_t i = 0; i < kShifts.size(); ++i) {
        windows[i].rate = kShifts[i].rate;
        windows[i].meaning = kShifts[i].meaning;
        if (!agency.Eof() && !agency.Get(kShifts[i].start).IsNull()) {
            windows[i].start = agency.Get(kShifts[i].start).ToDate();
            windows[i].stop = agency.Get(kShifts[i].stop);
        }
    }
    return windows;
}

std::vector<std::string> RatePayers(Session& session) {
    std::vector<std::string> payers = {kClientPays};
    for (const PayerItem& payer : LoadPayers(session)) {
        if (payer.name != kClientPays) {
            payers.push_back(payer.name);
        }
    }
    return payers;
}

std::string FirstPayer(Session& session, const std::string& client) {
    const Recordset first = session.dbMainWork->OpenRecordset(
        Sql("select * from Authorizations where client = {} order by from_date, bill_code", client),
        RecordsetType::Snapshot);
    const std::string payer = first.Eof() ? std::string() : first.Text("bill_name");
    return payer.empty() ? kClientPays : payer;
}

Recordset OpenRates(Session& session, const std::string& payer, const std::string& client) {
    Database& work = *session.dbMainWork;
    if (payer == kClientPays) {
        return work.OpenRecordset(OwnRates(client));
    }
    const Value code = work.Lookup(Sql("select billcode from billcode_imaster where [insname] = {}", payer));
    return work.OpenRecordset(Sql("select * from billcode_idetail where billcode = {} order by visittype",
                                  code.IsNull() ? Value(-1) : code),
                              RecordsetType::Snapshot);
}

BilledCallType CheckBilledCallType(Session& session, const std::string& code) {
    Recordset types =
        session.dbMainCode->OpenRecordset("select * from Visit_types order by code", RecordsetType::Snapshot);
    if (!types.Eof()) {
        types.FindFirst(Sql("code = {}", code));
    }
    if (types.Eof() || types.NoMatch()) {
        return {false, {}, "Invalid Call Type"};
    }
    const std::string kind = types.Text("payroll_or_Billing");
    if (EqualsNoCase(kind, "Both") || EqualsNoCase(kind, "Billing Only")) {
        return {true, types.Text("code"), types.Text("Description")};
    }
    return {false, types.Text("code"), "Call Type is " + kind + "."};
}

std::vector<LookupItem> LoadBilledCallTypes(Session& session) {
    return Types(session, kBilled);
}

bool SaveRate(Session& session, Recordset& rates, const std::string& client) {
    if (rates.EditMode() == EditState::None) {
        session.ShowMessageWindow("You must add a record before you can save!");
        return false;
    }
    const BilledCallType type = CheckBilledCallType(session, rates.Text("visittype"));
    if (!type.valid || Trim(rates.Text("Description")).empty()) {
        session.ShowMessageWindow("You must enter in a valid call type before saving");
        return false;
    }
    if (rates.Text("method").empty()) {
        rates.Set("method", "H");
    }
    WriteWhole(session, rates, [&] {
        WriteRateHistory(session, rates, client);
        rates.Set("CLIENT", client);
        rates.Update();
        NoteOnTheRoad(session, "E", "C", client);
    });
    const std::string criteria = Sql("client = {} and visittype = {}", client, type.code);
    const std::int64_t same =
        session.dbMainWork->Lookup("select count(*) from clirate where " + criteria).ToInteger();
    if (same > 1) {
        session.ShowMessageWindow(
            "You have added a Call Type that already existed.  Please delete one of them.");
    }
    rates.Requery();
    rates.FindFirst(criteria);
    return true;
}

bool DeleteRate(Session& session, Recordset& rates, const std::string& client) {
    const auto what = [](const Recordset& rate) {
        return rate.Text("visittype") + "  " + rate.Text("Description");
    };
    return DeleteRecord(session, rates, kTexts, what, [&] { NoteOnTheRoad(session, "E", "C", client); });
}

bool MoveRate(Session& session, Recordset& rates, ListMove move) {
    return MoveInRecords(session, rates, move, kTexts);
}

bool PasteRates(Session& session, const std::string& client, const std::string& other) {
    Database& work = *session.dbMainWork;
    const auto countOf = [&](const std::string& id) {
        return work.Lookup(Sql("select count(*) from clirate where client = {}", id)).ToInteger();
    };
    if (Trim(other).empty() || !session.dialogs.AskToDestroy(
                                   "This will replace this client's current Billing Rates with the entered "
                                   "client's Billing Rates.\r\n"
                                   "Are you sure you wish to continue?\r\n" +
                                   Counted(countOf(client), "rate") + " of this client will be replaced by " +
                                   Counted(countOf(other), "rate") + ".")) {
        return false;
    }
    // Read before the old ones go: a client may be pasted into himself.
    Recordset source =
        work.OpenRecordset(Sql("select * from CliRATE where client = {}", other), RecordsetType::Snapshot);
    if (source.Eof()) {
        session.ShowMessageWindow("Client you pasted from, does not have any billing rates");
        return false;
    }
    WholeStep step(session);
    work.Execute(Sql("delete * from cliRATE where client = {}", client));
    Recordset rates = work.OpenRecordset(OwnRates(client));
    for (; !source.Eof(); source.MoveNext()) {
        rates.AddNew();
        rates.Set("CLIENT", client);
        rates.Set("visittype", source.Get("visittype"));
        rates.Set("Description", source.Get("Description"));
        CopyAmounts(source, rates);
        rates.Update();
    }
    step.Finish();
    return true;
}

std::vector<LookupItem> CallTypesWithoutRate(Session& session, const std::string& client) {
    std::vector<LookupItem> types = LoadBilledCallTypes(session);
    Database& work = *session.dbMainWork;
    std::erase_if(types, [&](const LookupItem& type) {
        return !work.Lookup(Sql("select client from clirate where client = {} and visittype = {}", client,
                                type.code))
                    .IsNull();
    });
    return types;
}

long CopyRate(Session& session, const std::string& client, const std::string& fromCode,
              const std::vector<LookupItem>& to) {
    Recordset rates = session.dbMainWork->OpenRecordset(OwnRates(client));
    if (rates.Eof()) {
        return 0;
    }
    Recordset from = rates.Clone();
    from.FindFirst(Sql("visittype = {}", fromCode));
    if (from.NoMatch()) {
        return 0;
    }
    long copied = 0;
    WholeStep step(session);
    for (const LookupItem& type : to) {
        rates.AddNew();
        rates.Set("CLIENT", client);
        rates.Set("visittype", type.code);
        rates.Set("Description", Left(type.description, kDescriptionLength));
        CopyAmounts(from, rates);
        rates.Update();
        ++copied;
    }
    step.Finish();
    return copied;
}

std::string RateHistoryStatement(const std::string& client) {
    return Sql(
        "select * from changes where type = 'CLI' and area = {} and Status = 'Bill Rate' order by date "
        "DESC,time DESC",
        client);
}

}  // namespace kv
