#include "billing/authorization_cascade.h"

#include <optional>

#include "base/format.h"
#include "base/text.h"
#include "scheduling/assignments.h"
#include "scheduling/schedule_creation.h"
#include "session/trans.h"

namespace kv {

namespace {

/// A few rows are done before a window could be read.
constexpr long kRowsWithoutBar = 10;
constexpr int kDaysInAWeek = 7;
constexpr std::size_t kNameInDescription = 9;

class RowBar {
  public:
    RowBar(Session& session, const std::string& what, long rows) {
        if (rows > kRowsWithoutBar) {
            bar_.emplace(session.progress,
                         what + " " + FormatNumber(static_cast<double>(rows), "##,##0") + " schedules", rows);
        }
    }
    void Advance() {
        if (bar_) {
            bar_->Advance();
        }
    }

  private:
    std::optional<ProgressBar> bar_;
};

/// Worked visits stay whatever happens: payroll and billing stand on them.
void DeleteVisitsBehind(Session& session, long authorization, long end) {
    session.dbMainWork->Execute(Sql(
        "delete * from sch_day where author_seq = {} and st_date > {} and act_hrs = 0", authorization, end));
}

/// Brings one assignment up to its authorization. True where its visits begin to be wanting, because the end
/// moved forward over the weeks that it has looked at.
bool UpdateAssignment(Recordset& assign, const WrittenAuthorization& written, const Value& oldEnd,
                      bool deleted) {
    assign.Edit();
    assign.Set("CLIENT_STATUS", written.status);
    assign.Set("author_status", written.status);
    assign.Set("billto", written.billCode);
    assign.Set("st_date", written.from);
    assign.Set("END_DATE", written.to);
    assign.Set("visit_type", written.visitType);
    assign.Set("cli_name", written.clientName);
    assign.Set("visit_desc", written.visitType + "-" + Left(written.clientName, kNameInDescription));
    bool forward = false;
    const Value last = assign.Get("Last_date");
    if (!last.IsNull() && !oldEnd.IsNull()) {
        const Date lastDay = last.ToDate().DayOnly();
        const Date old = oldEnd.ToDate().DayOnly();
        if (written.to.DayOnly() != old && lastDay >= old && lastDay < written.to.DayOnly()) {
            const double weeks = 2 * assign.Get("howoften").NumberOr(0);
            assign.Set("Last_date", lastDay.AddDays(-weeks * kDaysInAWeek));
            forward = true;
        }
    }
    const Value moved = assign.Get("Last_date");
    if (deleted && !moved.IsNull() && moved.ToDate().DayOnly() > written.to.DayOnly()) {
        assign.Set("Last_date", written.to.DayOnly());
    }
    assign.Update();
    return forward;
}

}  // namespace

bool AuthorizationChange::Shortened() const {
    return !oldEnd.IsNull() && oldEnd.ToDate().DayOnly() > end.DayOnly();
}

void JournalSchedulesChanged(Session& session, Recordset visits) {
    RowBar bar(session, "Changing", visits.RecordCount());
    for (; !visits.Eof(); visits.MoveNext()) {
        WriteTransRecord(session, "E", "S", visits.Text("sequence"));
        bar.Advance();
    }
}

void DeleteFutureSchedulesJournaled(Session& session, long authorization, long end) {
    Recordset visits = session.dbMainWork->OpenRecordset(Sql(
        "Select * from sch_day where author_seq = {} and st_date > {} and act_hrs = 0", authorization, end));
    RowBar bar(session, "Deleting", visits.RecordCount());
    for (; !visits.Eof(); visits.MoveNext()) {
        WriteTransRecord(session, "D", "S", visits.Text("sequence"));
        visits.Delete();
        bar.Advance();
    }
}

bool CarryPayerToVisits(Session& session, const AuthorizationChange& change, const AskImportant& ask) {
    if (change.oldPayer == change.payer && change.oldVisitType == change.visitType) {
        return true;
    }
    Recordset visits = session.dbMainWork->OpenRecordset(
        Sql("select * from sch_day where author_seq = {} and SCH_CODE = 'S'", change.sequence));
    if (visits.Eof()) {
        return true;
    }
    switch (ask(change.sequence)) {
        case ImportantAnswer::No:
            return false;
        case ImportantAnswer::Yes:
            return true;
        case ImportantAnswer::All:
            break;
    }
    if (session.OffLine) {
        JournalSchedulesChanged(session, visits.Clone());
    }
    for (visits.MoveFirst(); !visits.Eof(); visits.MoveNext()) {
        visits.Edit();
        visits.Set("visit_type", change.visitType);
        visits.Set("visit_desc", change.visitDescription);
        visits.Set("billto", change.billCode);
        visits.Update();
    }
    return true;
}

std::vector<RemovedVisit> CarryToAssignments(Session& session, const WrittenAuthorization& written,
                                             bool shortened, const Value& oldEnd) {
    bool deleted = false;
    if ((written.status != "A" || shortened) &&
        session.dialogs.AskQuestion(
            "Do you wish to delete all schedules for this client from the end of the authorization?")) {
        const long end = written.to.DayNumber();
        if (session.OffLine) {
            DeleteFutureSchedulesJournaled(session, written.sequence, end);
        } else {
            DeleteVisitsBehind(session, written.sequence, end);
        }
        deleted = true;
    }
    Recordset assignments = session.dbMainWork->OpenRecordset(
        Sql("select * from assign where author_seq = {}", written.sequence));
    bool forward = false;
    bool beginsLater = false;
    for (; !assignments.Eof(); assignments.MoveNext()) {
        const Value began = assignments.Get("st_date");
        beginsLater |= !began.IsNull() && began.ToDate() < written.from;
        forward |= UpdateAssignment(assignments, written, oldEnd, deleted);
    }
    if (beginsLater && written.status == "A") {
        TellOfWaitingAssignments(session, written.sequence);
    }
    if (!forward || !session.dialogs.AskQuestion("You are moving an authorization forward.\r\n"
                                                 "Would you like to create any missing schedules?")) {
        return {};
    }
    ScheduleCreation creation(session);
    creation.RunAll(AssignmentsOf(session, written.sequence));
    return creation.Removed();
}

bool MoveAllEnds(Session& session, Recordset& authorizations, Date end) {
    if (authorizations.RecordCount() == 0) {
        return false;
    }
    ProgressBar bar(session.progress, "Moving through authorizations, and removing schedules in the future",
                    authorizations.RecordCount());
    for (authorizations.MoveFirst(); !authorizations.Eof(); authorizations.MoveNext()) {
        authorizations.Edit();
        authorizations.Set("to_DATE", end.DayOnly());
        authorizations.Update();
        DeleteVisitsBehind(session, static_cast<long>(authorizations.Get("sequence").ToInteger()),
                           end.DayNumber());
        if (authorizations.Text("visit_type").empty()) {
            session.ShowMessageWindow("Please Edit and fix blank call types");
        }
        bar.Advance();
    }
    authorizations.MoveLast();
    return true;
}

}  // namespace kv
