#include "billing/authorization_save.h"

#include <algorithm>

#include "base/format.h"
#include "base/text.h"
#include "billing/authorizations.h"
#include "billing/client_status.h"
#include "clients/record_history.h"
#include "clients/record_keys.h"
#include "scheduling/assignments.h"
#include "session/trans.h"
#include "session/whole_step.h"

namespace kv {

namespace {

constexpr int kYearsOfANewOne = 10;
constexpr const char* kLineEnd = "\r\n";

Value DayOf(const Recordset& row, const char* field) {
    const Value date = row.Get(field);
    return date.IsNull() ? date : Value(date.ToDate().DayOnly());
}

std::string DayText(const Recordset& row, const char* field) {
    const Value date = row.Get(field);
    return date.IsNull() ? std::string() : FormatDate(date.ToDate(), "MMM/DD/YYYY");
}

/// All faults, none of which stops the others.
std::vector<std::string> Faults(Recordset& row, const AuthorizationEntry& entry) {
    std::vector<std::string> faults;
    if (row.EditMode() == EditState::None) {
        faults.emplace_back("You must add a record before you can save!");
        return faults;
    }
    const Value from = DayOf(row, "from_date");
    const Value to = DayOf(row, "to_DATE");
    if (from.IsNull()) {
        faults.emplace_back("FROM date must be filled in before you can save!");
    }
    if (to.IsNull()) {
        faults.emplace_back("TO date must be filled in before you can save!");
    }
    if (!from.IsNull() && !to.IsNull() && to.ToDate() < from.ToDate()) {
        faults.emplace_back("TO date cannot be less than FROM date!");
    }
    if (Trim(entry.state).empty()) {
        faults.emplace_back("Status must be filled in before you can save!");
    }
    const std::string per = Upper(row.Text("WEEKORMONTH"));
    if (per == "W" || per == "M") {
        row.Set("WEEKORMONTH", per);
    } else {
        faults.emplace_back("Week or Month must be entered before saving a record");
    }
    if (Trim(entry.payer).empty()) {
        faults.emplace_back("Payer source must be filled in before you can save!");
    }
    if (Trim(entry.visitDescription).empty()) {
        faults.emplace_back("Call Type must be filled in before you can save!");
    }
    return faults;
}

AuthorizationChange ChangeOf(Session& session, const Recordset& row, const AuthorizationEntry& entry) {
    AuthorizationChange change;
    change.sequence = static_cast<long>(row.Get("sequence").ToInteger());
    change.payer = entry.payer;
    change.billCode = entry.billCode;
    change.visitType = entry.visitType;
    change.visitDescription = entry.visitDescription;
    change.end = row.Get("to_DATE").ToDate();
    if (row.EditMode() != EditState::InProgress) {
        change.oldPayer = change.payer;
        change.oldVisitType = change.visitType;
        change.oldBillCode = change.billCode;
        return change;
    }
    const Recordset stored = session.dbMainWork->OpenRecordset(
        Sql("select bill_name,bill_code,visit_type,to_DATE from Authorizations where sequence = {}",
            change.sequence),
        RecordsetType::Snapshot);
    if (!stored.Eof()) {
        change.oldPayer = stored.Text("bill_name");
        change.oldVisitType = stored.Text("visit_type");
        change.oldBillCode = static_cast<long>(stored.Get("bill_code").NumberOr(0));
        change.oldEnd = stored.Get("to_DATE");
    }
    return change;
}

std::string HistoryText(const Session& session, const Recordset& row, const AuthorizationEntry& entry) {
    return HistoryHead(session) + kLineEnd + "Start Date: " + DayText(row, "from_date") + kLineEnd +
           "  End Date: " + DayText(row, "to_DATE") + kLineEnd + "     Payor: " + entry.payer + kLineEnd +
           " Call Type: " + entry.visitDescription + kLineEnd + "    Status: " + Left(entry.state, 1) +
           kLineEnd + "   24 Hour: " + row.Text("live_in") + kLineEnd + kHistoryLine;
}

/// Told, and saved all the same.
void TellCobilling(Session& session, const AuthorizationEntry& entry) {
    const CobillingType& type = CobillingTypes().at(static_cast<std::size_t>(entry.cobillingType));
    if (entry.payer != kClientPays && entry.cobillingAmount <= 0 && !type.zeroMessage.empty()) {
        session.ShowMessageWindow(std::string(type.zeroMessage));
    }
}

void WriteCobilling(Recordset& row, const AuthorizationEntry& entry) {
    if (entry.payer == kClientPays) {
        row.Set("cobilling_type", 0);
        return;
    }
    row.Set("cobilling_type", entry.cobillingType);
    row.Set("cobilling_amount", std::max(entry.cobillingAmount, 0.0));
    row.Set("COBilling_HowOften", PeriodLetter(entry.cobillingPeriod));
}

void WriteRow(Session& session, Recordset& row, const AuthorizationEntry& entry, const std::string& client) {
    if (!entry.shift.empty()) {
        row.Set("SHIFT_CODE", entry.shift);
    }
    WriteCobilling(row, entry);
    row.Set("CLIENT", client);
    row.Set("status_date", session.clock.Now());
    row.Set("bill_name", entry.payer);
    row.Set("bill_code", entry.billCode);
    row.Set("visit_type", entry.visitType);
    row.Set("vis_desc", entry.visitDescription);
    row.Set("vendor", session.VENDOR);
    row.Set("sch_type", Left(entry.hourCode, 1));
    row.Set("status_code", Left(entry.state, 1));
    row.Update();
}

std::string ClientName(const ClientForm& form) {
    const ScreenControls shown = form.Controls();
    return Trim(shown.Text("TxtLastname")) + ", " + Trim(shown.Text("TxtFirstnam"));
}

/// A client who pays himself needs a rate for what he is to be billed. True where one was added.
bool AddOwnRate(Session& session, const AuthorizationEntry& entry, const std::string& client) {
    if (entry.billCode != kClientBillCode) {
        return false;
    }
    Recordset rates = session.dbMainWork->OpenRecordset(
        Sql("select * from clirate where client = {} and visittype = {}", client, entry.visitType));
    if (!rates.Eof()) {
        return false;
    }
    rates.AddNew();
    rates.Set("visittype", entry.visitType);
    rates.Set("Description", entry.visitDescription);
    rates.Set("method", "H");
    rates.Set("CLIENT", client);
    rates.Update();
    return true;
}

/// What a save writes, in its order.
struct AuthorizationWrites {
    CascadeResult cascade;
    bool rateAdded = false;
};

AuthorizationWrites WriteAuthorization(Session& session, Recordset& authorizations,
                                       const AuthorizationEntry& entry, const AuthorizationChange& change,
                                       const CascadeDecision& decision, const std::string& client,
                                       ClientForm& form) {
    const bool isNew = authorizations.EditMode() == EditState::Add;
    const auto sequence = static_cast<long>(authorizations.Get("sequence").ToInteger());
    if (decision.carryPayer) {
        CarryPayerToVisits(session, change);
    }
    WriteHistory(session, {"AUT", sequence, "AUTH", HistoryText(session, authorizations, entry)});
    WriteRow(session, authorizations, entry, client);
    authorizations.MoveToLastModified();
    UpdateClientStatus(session, form, client);
    WrittenAuthorization written;
    written.sequence = sequence;
    written.status = Left(entry.state, 1);
    written.billCode = entry.billCode;
    written.from = authorizations.Get("from_date").ToDate();
    written.to = authorizations.Get("to_DATE").ToDate();
    written.visitType = entry.visitType;
    written.clientName = ClientName(form);
    AuthorizationWrites writes;
    writes.cascade = CarryToAssignments(session, written, decision, change.oldEnd);
    writes.rateAdded = AddOwnRate(session, entry, client);
    NoteOnTheRoad(session, isNew ? "A" : "E", "A", std::to_string(sequence));
    return writes;
}

}  // namespace

void FillNewAuthorization(const Session& session, Recordset& authorizations) {
    constexpr double kMostHours = 24;
    const Date today = session.clock.Today();
    authorizations.Set("from_date", today);
    authorizations.Set("to_DATE", today.AddYears(kYearsOfANewOne));
    authorizations.Set("WEEKORMONTH", "W");
    authorizations.Set("Live_in", "N");
    authorizations.Set("EMP_Type", "FIELD");
    authorizations.Set("Min_Sch_Hours", 0);
    authorizations.Set("Max_Sch_Hours", kMostHours);
}

void RemindOfEndDate(Session& session, const std::string& state, const Value& end) {
    constexpr long kMonths = 12;
    if (state != kAuthorizationStates.front() && !end.IsNull() &&
        MonthsBetween(session.clock.Today(), end.ToDate()) > kMonths) {
        session.ShowMessageWindow(
            "Please remember to change the 'To Date' field to reflect the correct end of service for this "
            "authorization.");
    }
}

void MoveToAuthorization(Recordset& authorizations, long sequence) {
    if (authorizations.RecordCount() == 0) {
        return;
    }
    authorizations.FindFirst(Sql("sequence = {}", sequence));
    if (authorizations.NoMatch()) {
        authorizations.MoveFirst();
    }
}

AuthorizationSaved SaveAuthorization(Session& session, Recordset& authorizations,
                                     const AuthorizationEntry& entry, const std::string& client,
                                     ClientForm& form, const AskImportant& ask) {
    AuthorizationSaved answer;
    const std::vector<std::string> faults = Faults(authorizations, entry);
    if (!faults.empty()) {
        session.dialogs.ShowFaults(faults);
        return answer;
    }
    if (authorizations.Text("NOTES").empty()) {
        authorizations.Set("NOTES", " ");
    }
    // The operator is asked first: nothing may wait for an answer while the rows are written.
    const AuthorizationChange change = ChangeOf(session, authorizations, entry);
    CascadeDecision decision;
    if (!DecidePayer(session, change, ask, decision)) {
        answer.givenUp = true;
        return answer;
    }
    TellCobilling(session, entry);
    DecideVisits(session, change, Left(entry.state, 1), decision);

    AuthorizationWrites writes;
    try {
        WriteWhole(session, authorizations, [&] {
            writes = WriteAuthorization(session, authorizations, entry, change, decision, client, form);
        });
    } catch (const EngineError&) {
        form.RestoreRow();  // the client's row is as it was before
        throw;
    }
    answer.saved = true;
    answer.sequence = static_cast<long>(authorizations.Get("sequence").ToInteger());
    answer.removed = std::move(writes.cascade.removed);
    if (writes.cascade.beginsLater && Left(entry.state, 1) == "A") {
        TellOfWaitingAssignments(session, answer.sequence);
    }
    if (writes.rateAdded) {
        session.ShowMessageWindow(
            "A billing record has been added for this call type.\r\n"
            "Please go to the Bill Rates section, and update the Bill Rates");
    }
    return answer;
}

bool DeleteAuthorization(Session& session, Recordset& authorizations) {
    if (session.OffLine) {
        session.ShowMessageWindow("You may not remove an Authorization while 'On the Road'");
        return false;
    }
    if (authorizations.RecordCount() == 0) {
        session.ShowMessageWindow("There are no records to delete.");
        return false;
    }
    const long sequence = static_cast<long>(authorizations.Get("sequence").ToInteger());
    const std::string client = authorizations.Text("CLIENT");
    Database& work = *session.dbMainWork;
    if (!work.OpenRecordset(Sql("select * from sch_day where author_seq = {}", sequence)).Eof()) {
        session.ShowMessageWindow(
            "You can not delete an authorization with schedules.\r\n"
            "This would stop payroll and billing from working.\r\n"
            "Try changing the authorization status to 'Closed'.");
        return false;
    }
    const auto countOf = [&](const char* statement) {
        return work.Lookup(Sql(statement, sequence)).ToInteger();
    };
    const std::string question =
        "Are you sure you wish to delete this Authorization?\r\nIts " +
        Counted(countOf("select count(*) from assign where author_seq = {}"), "assignment") + " and " +
        Counted(countOf("select count(*) from assign_task where ID = {}"), "task") + " go with it.";
    const auto ask = [&] { return session.dialogs.AskToDestroy(question); };
    return DeleteCurrent(session, authorizations, ask, [&] {
        WriteHistory(session, {"AUT", sequence, "DELETED",
                               HistoryHead(session) + kLineEnd + kDeletedAuthorization + client + kLineEnd +
                                   kHistoryLine});
        work.Execute(Sql("DELETE * FROM assign_task WHERE ID = {}", sequence));
        work.Execute(Sql("DELETE * FROM ASSIGN WHERE AUTHOR_SEQ = {}", sequence));
        work.Execute(Sql("delete * from sch_day where author_seq = {} and act_hrs = 0", sequence));
    });
}

}  // namespace kv
