#include "billing/authorization_cascade.h"

#include <optional>

#include "base/format.h"
#include "base/text.h"
#include "scheduling/assignments.h"
#include "scheduling/schedule_creation.h"
#include "session/trans.h"
#include "session/whole_step.h"

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
void DeleteVisitsAfter(Session& session, long authorization, long end) {
    session.dbMainWork->Execute(Sql(
        "delete * from sch_day where author_seq = {} and st_date > {} and act_hrs = 0", authorization, end));
}

Recordset PlainVisits(Session& session, long authorization) {
    return session.dbMainWork->OpenRecordset(
        Sql("select * from sch_day where author_seq = {} and SCH_CODE = 'S'", authorization));
}

long CountVisitsAfter(Session& session, long authorization, long end) {
    return static_cast<long>(
        session.dbMainWork
            ->Lookup(
                Sql("select count(*) from sch_day where author_seq = {} and st_date > {} and act_hrs = 0",
                    authorization, end))
            .ToInteger());
}

Recordset AssignmentRows(Session& session, long authorization) {
    return session.dbMainWork->OpenRecordset(
        Sql("select * from assign where author_seq = {}", authorization));
}

/// The end moved on over weeks that the assignment has looked at and found no visit for.
bool MovesForward(const Recordset& assign, const Value& oldEnd, Date end) {
    const Value last = assign.Get("Last_date");
    if (last.IsNull() || oldEnd.IsNull()) {
        return false;
    }
    const Date lastDay = last.ToDate().DayOnly();
    const Date old = oldEnd.ToDate().DayOnly();
    return end.DayOnly() != old && lastDay >= old && lastDay < end.DayOnly();
}

/// Brings one assignment up to its authorization.
void UpdateAssignment(Recordset& assign, const WrittenAuthorization& written, const Value& oldEnd,
                      bool deleted) {
    assign.Edit();
    for (const auto& [column, value] : AssignmentCopies(written)) {
        assign.Set(column, value);
    }
    if (MovesForward(assign, oldEnd, written.to)) {
        const double weeks = 2 * assign.Get("howoften").NumberOr(0);
        assign.Set("Last_date", assign.Get("Last_date").ToDate().DayOnly().AddDays(-weeks * kDaysInAWeek));
    }
    const Value moved = assign.Get("Last_date");
    if (deleted && !moved.IsNull() && moved.ToDate().DayOnly() > written.to.DayOnly()) {
        assign.Set("Last_date", written.to.DayOnly());
    }
    assign.Update();
}

/// Of the rows of the bulk tool: what it would do, for its question.
struct MigrationCounts {
    long authorizations = 0;
    long visits = 0;
    long beginLater = 0;  ///< their From date lies after the new end
};

MigrationCounts CountMigration(Session& session, Recordset& authorizations, Date end) {
    MigrationCounts counts;
    for (authorizations.MoveFirst(); !authorizations.Eof(); authorizations.MoveNext()) {
        const Value from = authorizations.Get("from_date");
        ++counts.authorizations;
        counts.beginLater += !from.IsNull() && from.ToDate().DayOnly() > end.DayOnly() ? 1 : 0;
        counts.visits += CountVisitsAfter(
            session, static_cast<long>(authorizations.Get("sequence").ToInteger()), end.DayNumber());
    }
    return counts;
}

std::string MigrationQuestion(const MigrationCounts& counts, Date end) {
    std::string question = "Update the 'To Date' of " + Counted(counts.authorizations, "authorization") +
                           " to " + FormatDate(end, "MMM/DD/YYYY") + "?\r\n" +
                           Counted(counts.visits, "visit") + " not worked after that day will be deleted.";
    if (counts.beginLater > 0) {
        question += "\r\n" + Counted(counts.beginLater, "authorization") +
                    " of them would end before the "
                    "From date.";
    }
    return question;
}

}  // namespace

std::vector<std::pair<const char*, Value>> AssignmentCopies(const WrittenAuthorization& written) {
    return {{"CLIENT_STATUS", written.status},
            {"author_status", written.status},
            {"billto", written.billCode},
            {"st_date", written.from},
            {"END_DATE", written.to},
            {"visit_type", written.visitType},
            {"cli_name", written.clientName},
            {"visit_desc", written.visitType + "-" + Left(written.clientName, kNameInDescription)}};
}

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

bool DecidePayer(Session& session, const AuthorizationChange& change, const AskImportant& ask,
                 CascadeDecision& decision) {
    // A damaged row has no code, and gets one with the save.
    const bool samePayer =
        change.oldPayer == change.payer && (change.oldBillCode <= 0 || change.oldBillCode == change.billCode);
    if (samePayer && change.oldVisitType == change.visitType) {
        return true;
    }
    if (PlainVisits(session, change.sequence).Eof()) {
        return true;
    }
    const ImportantAnswer answer = ask(change.sequence);
    decision.carryPayer = answer == ImportantAnswer::All;
    return answer != ImportantAnswer::No;
}

void DecideVisits(Session& session, const AuthorizationChange& change, const std::string& status,
                  CascadeDecision& decision) {
    if (status != "A" || change.Shortened()) {
        const long visits = CountVisitsAfter(session, change.sequence, change.end.DayNumber());
        decision.deleteAfterEnd = session.dialogs.AskToDestroy(
            "Do you wish to delete all schedules for this client from the end of the authorization?\r\n" +
            Counted(visits, "visit") + " not worked after " + FormatDate(change.end, "MMM/DD/YYYY") + ".");
    }
    bool forward = false;
    for (Recordset row = AssignmentRows(session, change.sequence); !row.Eof(); row.MoveNext()) {
        forward |= MovesForward(row, change.oldEnd, change.end);
    }
    decision.createMissing = forward && session.dialogs.AskQuestion(
                                            "You are moving an authorization forward.\r\n"
                                            "Would you like to create any missing schedules?");
}

void CarryPayerToVisits(Session& session, const AuthorizationChange& change) {
    Recordset visits = PlainVisits(session, change.sequence);
    if (session.OffLine) {
        JournalSchedulesChanged(session, visits.Clone());
    }
    for (; !visits.Eof(); visits.MoveNext()) {
        visits.Edit();
        visits.Set("visit_type", change.visitType);
        visits.Set("visit_desc", change.visitDescription);
        visits.Set("billto", change.billCode);
        visits.Update();
    }
}

CascadeResult CarryToAssignments(Session& session, const WrittenAuthorization& written,
                                 const CascadeDecision& decision, const Value& oldEnd) {
    if (decision.deleteAfterEnd && session.OffLine) {
        DeleteFutureSchedulesJournaled(session, written.sequence, written.to.DayNumber());
    } else if (decision.deleteAfterEnd) {
        DeleteVisitsAfter(session, written.sequence, written.to.DayNumber());
    }
    CascadeResult result;
    for (Recordset row = AssignmentRows(session, written.sequence); !row.Eof(); row.MoveNext()) {
        const Value began = row.Get("st_date");
        result.beginsLater |= !began.IsNull() && began.ToDate() < written.from;
        UpdateAssignment(row, written, oldEnd, decision.deleteAfterEnd);
    }
    if (decision.createMissing) {
        ScheduleCreation creation(session);
        creation.RunAll(AssignmentsOf(session, written.sequence));
        result.removed = creation.Removed();
    }
    return result;
}

bool MoveAllEnds(Session& session, Recordset& authorizations, Date end,
                 const std::function<void()>& alongWith) {
    if (authorizations.RecordCount() == 0 ||
        !session.dialogs.AskToDestroy(MigrationQuestion(CountMigration(session, authorizations, end), end))) {
        return false;
    }
    long withoutCallType = 0;
    {
        ProgressBar bar(session.progress,
                        "Moving through authorizations, and removing schedules in the future",
                        authorizations.RecordCount());
        WholeStep step(session);
        for (authorizations.MoveFirst(); !authorizations.Eof(); authorizations.MoveNext()) {
            const auto sequence = static_cast<long>(authorizations.Get("sequence").ToInteger());
            authorizations.Edit();
            authorizations.Set("to_DATE", end.DayOnly());
            authorizations.Update();
            DeleteVisitsAfter(session, sequence, end.DayNumber());
            // Without this they would make the visits again that were just deleted.
            session.dbMainWork->Execute(
                Sql("update assign set END_DATE = {} where author_seq = {}", end.DayOnly(), sequence));
            withoutCallType += authorizations.Text("visit_type").empty() ? 1 : 0;
            bar.Advance();
        }
        alongWith();
        step.Finish();
    }
    for (; withoutCallType > 0; --withoutCallType) {
        session.ShowMessageWindow("Please Edit and fix blank call types");
    }
    authorizations.MoveLast();
    return true;
}

}  // namespace kv
