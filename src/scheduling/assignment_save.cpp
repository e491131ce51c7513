// Saving, deleting and copying assignments, with their visits.
#include <algorithm>

#include "base/format.h"
#include "base/text.h"
#include "clients/record_history.h"
#include "clients/record_keys.h"
#include "scheduling/assignments.h"
#include "scheduling/schedule_creation.h"
#include "scheduling/visit_conflicts.h"
#include "scheduling/work_week.h"
#include "session/whole_step.h"

namespace kv {

namespace {

constexpr const char* kLineEnd = "\r\n";
constexpr double kWeek = 7;
constexpr double kMinutesInAnHour = 60;
constexpr std::size_t kNameInDescription = 9;

std::vector<std::string> Faults(const Recordset& row, const AssignmentEntry& entry) {
    std::vector<std::string> faults;
    if (row.EditMode() == EditState::None) {
        faults.emplace_back("You must add a record before you can save!");
    }
    if (std::none_of(entry.days.begin(), entry.days.end(), [](bool day) { return day; })) {
        faults.emplace_back("At least one day must be checked before you can save!");
    }
    if (entry.hours <= 0) {
        faults.emplace_back("Hours must be greater than 0 before you can save!");
    }
    if (entry.howoften <= 0) {
        faults.emplace_back("Schedule frequency must be greater than 0 before you can save!");
    }
    return faults;
}

std::string CaregiverName(Session& session, const std::string& id) {
    if (Trim(id).empty()) {
        return {};
    }
    const Recordset caregiver = session.dbMainWork->OpenRecordset(
        Sql("select LastName,FirstName from Employee where emp_id = {}", id), RecordsetType::Snapshot);
    return caregiver.Eof() ? std::string()
                           : Trim(caregiver.Text("LastName")) + ", " + Trim(caregiver.Text("FirstName"));
}

/// What an edit and a new row write alike.
void WriteCommon(Recordset& row, const AssignmentEntry& entry, const AssignmentParent& parent,
                 const std::string& name, int day) {
    row.Set("CLIENT", parent.client);
    row.Set("cli_name", parent.clientName);
    row.Set("St_time", entry.start.TimeOnly());
    row.Set("HRS", entry.hours);
    row.Set("END_TIME", EndOfVisit(entry.start, entry.hours));
    row.Set("emp_id", entry.emp_id);
    row.Set("emp_name", name);
    row.Set("CLIENT_STATUS", parent.clientStatus);
    row.Set("howoften", entry.howoften);
    row.Set("author_status", parent.status);
    row.Set("Type", "A");
    row.Set("Day", DayCodes()[static_cast<std::size_t>(day)]);
    row.Set("Status", std::to_string(day));
}

std::string HistoryText(const Session& session, const AssignmentEntry& entry, const std::string& name,
                        const std::string& day) {
    return HistoryHead(session) + kLineEnd + "Start Time: " + FormatDate(entry.start, "HH:MM AM/PM") +
           kLineEnd + "     Hours: " + FormatNumber(entry.hours, "#0.00") + kLineEnd +
           " Caregiver: " + entry.emp_id + " - " + name + kLineEnd +
           " How Often: " + std::to_string(entry.howoften) + kLineEnd +
           "      Date: " + FormatDate(entry.creation, "MMM/DD/YYYY") + kLineEnd + "       Day: " + day +
           kLineEnd + kHistoryLine;
}

int FirstDay(const AssignmentEntry& entry) {
    return static_cast<int>(std::find(entry.days.begin(), entry.days.end(), true) - entry.days.begin());
}

/// The visits of an assignment from a day on that nobody worked or changed by hand.
std::string Coming(long assignment, long from) {
    return Sql("assign_seq = {} and st_date >= {} and act_hrs = 0 and pay_override = 0 and bill_override = 0",
               assignment, from);
}

/// By how many days the visits move when the weekday changed: the operator's way around the week.
int AskDayDifference(const Recordset& row, int day, const AssignmentAsks& asks) {
    const int before = DayIndex(row.Text("Day"));
    if (before < 0 || before == day) {
        return 0;
    }
    const int forward = (day - before + kDaysOfWeek) % kDaysOfWeek;
    return asks.askMove(forward, kDaysOfWeek - forward).value_or(0);
}

struct ReportedVisit {
    Date day;
    Date start;
    double hours = 0;

    std::string Words() const {
        return FormatDate(day, "MMM/DD/YYYY") + " " + FormatDate(start, "HH:MM AM/PM") + " " +
               FormatNumber(hours, "#0.00");
    }
    Date End() const { return day.At(start).AddMinutes(hours * kMinutesInAnHour); }
};

/// Each pair of neighbours of the caregiver's coming visits of which the second begins before the first ends.
std::optional<Document> ConflictReport(Session& session, const std::string& id, const std::string& name) {
    Recordset rows = session.dbMainWork->OpenRecordset(
        Sql("select * from sch_day where emp_id = {} and st_date >= {} order by st_date,st_time", id,
            session.clock.Today().DayNumber()),
        RecordsetType::Snapshot);
    Document document("Schedule Change Conflict");
    document.style = {"Courier New", 10};
    const Date now = session.clock.Now();
    document.Line("Date: " + FormatDate(now, "MMM/DD/YYYY"));
    document.Line("Schedule Change Conflict for Caregiver: " + name);
    document.Line("Time: " + FormatDate(now, "HH:MM AM/PM"));
    bool any = false;
    std::optional<ReportedVisit> before;
    for (; !rows.Eof(); rows.MoveNext()) {
        if (rows.Get("st_date").IsNull() || rows.Get("St_time").IsNull()) {
            continue;
        }
        const ReportedVisit visit = {rows.Get("st_date").ToDate().DayOnly(), rows.Get("St_time").ToDate(),
                                     rows.Get("HRS").NumberOr(0)};
        if (before && visit.day.At(visit.start) < before->End()) {
            document.Line("Schedule: " + before->Words() + "  conflicts with: " + visit.Words());
            any = true;
        }
        before = visit;
    }
    return any ? std::optional(document) : std::nullopt;
}

void SaveEdited(Session& session, Recordset& row, const AssignmentEntry& entry,
                const AssignmentParent& parent, const AssignmentAsks& asks, AssignmentSaved& answer) {
    const int day = FirstDay(entry);
    const std::string name = CaregiverName(session, entry.emp_id);
    const long sequence = static_cast<long>(row.Get("sequence").ToInteger());
    const int difference = AskDayDifference(row, day, asks);
    WriteWhole(session, row, [&] {
        WriteCommon(row, entry, parent, name, day);
        // The next creation date is what the screen shows; a visit moved to an earlier weekday keeps its
        // week.
        const double back = (difference < 0 ? kWeek : 0) + kWeek * static_cast<double>(entry.howoften);
        row.Set("Last_date", entry.creation.DayOnly().AddDays(-back));
        row.Update();
        WriteHistory(session, {"ASN", sequence, "Edit",
                               HistoryText(session, entry, name, DayCodes()[static_cast<std::size_t>(day)])});
    });
    answer.saved = true;
    answer.sequences.push_back(sequence);
    if (session.dialogs.AskQuestion("Change all exisiting schedules from today forward?")) {
        asks.updateSchedules({sequence, DayCodes()[static_cast<std::size_t>(day)], difference, entry.emp_id,
                              entry.start, EndOfVisit(entry.start, entry.hours), entry.hours});
        if (!Trim(entry.emp_id).empty()) {
            answer.conflicts = ConflictReport(session, entry.emp_id, name);
        }
    }
}

/// One row of a new assignment with its visits.
long AddRow(Session& session, Recordset& rows, const AssignmentEntry& entry, const AssignmentParent& parent,
            const std::string& name, int day, std::vector<RemovedVisit>& removed) {
    rows.AddNew();
    WriteCommon(rows, entry, parent, name, day);
    rows.Set("vendor", session.VENDOR);
    rows.Set("st_date", parent.from);
    rows.Set("END_DATE", parent.to);
    rows.Set("visit_type", parent.visitType);
    rows.Set("visit_desc", parent.visitType + "-" + Left(parent.clientName, kNameInDescription));
    rows.Set("billto", parent.billCode);
    rows.Set("author_seq", parent.authorization);
    rows.Set("Last_date", entry.creation.DayOnly().AddDays(-kWeek * static_cast<double>(entry.howoften)));
    const long sequence = static_cast<long>(rows.Get("sequence").ToInteger());
    rows.Update();
    WriteHistory(session, {"ASN", sequence, "Edit",
                           HistoryText(session, entry, name, DayCodes()[static_cast<std::size_t>(day)])});
    Create_schedule_now(session, sequence, removed);
    return sequence;
}

void SaveNew(Session& session, Recordset& rows, const AssignmentEntry& entry, const AssignmentParent& parent,
             AssignmentSaved& answer) {
    const std::string name = CaregiverName(session, entry.emp_id);
    WriteWhole(session, rows, [&] {
        rows.CancelUpdate();
        for (int day = 0; day < kDaysOfWeek; ++day) {
            if (entry.days[static_cast<std::size_t>(day)]) {
                answer.sequences.push_back(AddRow(session, rows, entry, parent, name, day, answer.removed));
            }
        }
    });
    answer.saved = true;
}

}  // namespace

AssignmentSaved SaveAssignment(Session& session, Recordset& assignments, const AssignmentEntry& entry,
                               const AssignmentParent& parent, const AssignmentAsks& asks) {
    AssignmentSaved answer;
    const std::vector<std::string> faults = Faults(assignments, entry);
    if (!faults.empty()) {
        session.dialogs.ShowFaults(faults);
        return answer;
    }
    const bool edited = assignments.EditMode() == EditState::InProgress;
    if (!Trim(entry.emp_id).empty()) {
        const long sequence = edited ? static_cast<long>(assignments.Get("sequence").ToInteger()) : 0;
        const auto conflicts = FindAssignmentConflicts(session, entry, parent, sequence);
        if (!conflicts.empty() && !asks.showConflicts(conflicts)) {
            return answer;
        }
    }
    if (edited) {
        SaveEdited(session, assignments, entry, parent, asks, answer);
    } else {
        SaveNew(session, assignments, entry, parent, answer);
    }
    return answer;
}

bool DeleteAssignment(Session& session, Recordset& assignments, const AssignmentParent& parent) {
    if (assignments.RecordCount() == 0) {
        session.ShowMessageWindow("There are no records to delete.");
        return false;
    }
    Database& work = *session.dbMainWork;
    const long sequence = static_cast<long>(assignments.Get("sequence").ToInteger());
    const long today = session.clock.Today().DayNumber();
    const auto countOf = [&](const std::string& statement) { return work.Lookup(statement).ToInteger(); };
    const std::int64_t all = countOf(Sql("select count(*) from sch_day where assign_seq = {}", sequence));
    const std::int64_t coming =
        countOf(Sql("select count(*) from sch_day where {}", Raw{Coming(sequence, today)}));
    const std::string line = Trim(assignments.Text("Day") + " " + assignments.Text("emp_name"));
    bool withVisits = false;
    const auto ask = [&] {
        if (!session.dialogs.AskToDestroy("Are you sure you wish to delete this Client Assignment?\r\n" +
                                          line + ": " + Counted(all, "visit") + " made from it.")) {
            return false;
        }
        withVisits = session.dialogs.AskToDestroy(
            "Do you wish to Delete all Schedules for this Assignment from today forward?\r\n" +
            Counted(coming, "visit") + " go, " + Counted(all - coming, "visit") +
            " stay and belong to no assignment any more.");
        return true;
    };
    return DeleteCurrent(session, assignments, ask, [&] {
        const long removed =
            withVisits ? work.Execute("delete * from sch_day where " + Coming(sequence, today)) : 0;
        WriteHistory(
            session,
            {"ASN", sequence, "DELETED",
             HistoryHead(session) + kLineEnd + "Assignment was Deleted for Client: " + parent.clientName +
                 kLineEnd + "Schedules removed: " + std::to_string(removed) + kLineEnd + kHistoryLine});
        // What stays belongs to no assignment; 0 would make it look typed in by hand.
        work.Execute(Sql("update sch_day set assign_seq = -1 where assign_seq = {}", sequence));
    });
}

std::vector<CopySource> CopySources(Session& session, const AssignmentParent& parent) {
    std::vector<CopySource> sources;
    Recordset rows = session.dbMainWork->OpenRecordset(
        Sql("select * from Authorizations where client = {} and sequence <> {} order by from_date",
            parent.client, parent.authorization),
        RecordsetType::Snapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        sources.push_back({static_cast<long>(rows.Get("sequence").ToInteger()), rows.Get("to_DATE"),
                           rows.Get("from_date"), rows.Text("status_code"), rows.Text("vis_desc"),
                           rows.Text("bill_name")});
    }
    return sources;
}

bool CopyAssignments(Session& session, long from, const AssignmentParent& parent,
                     std::vector<RemovedVisit>& removed) {
    constexpr double kOldWeeks = 3;
    constexpr double kRestart = 14;
    Recordset source = session.dbMainWork->OpenRecordset(
        Sql("select * from assign where author_seq = {}", from), RecordsetType::Snapshot);
    if (source.Eof()) {
        session.ShowMessageWindow("No Assignments entered for the chosen Authorization");
        return false;
    }
    const Date today = session.clock.Today();
    WholeStep step(session);
    Recordset rows = OpenAssignments(session, parent.authorization);
    for (; !source.Eof(); source.MoveNext()) {
        rows.AddNew();
        for (const char* field : {"vendor", "CLIENT", "cli_name", "St_time", "END_TIME", "HRS", "NUMWEEKS",
                                  "emp_id", "emp_name", "EMP1SSN", "Day", "Status", "CLIENT_STATUS",
                                  "visit_desc", "visit_type", "Type", "howoften", "Last_date"}) {
            rows.Set(field, source.Get(field));
        }
        rows.Set("st_date", parent.from);
        rows.Set("END_DATE", parent.to);
        rows.Set("billto", parent.billCode);
        rows.Set("author_seq", parent.authorization);
        rows.Set("author_status", parent.status);
        const Value last = source.Get("Last_date");
        // An old pattern starts again near today.
        if (!last.IsNull() && last.ToDate().DayOnly().AddDays(kWeek * kOldWeeks) < today) {
            rows.Set("Last_date", today.AddDays(-kRestart));
        }
        const long sequence = static_cast<long>(rows.Get("sequence").ToInteger());
        rows.Update();
        Create_schedule_now(session, sequence, removed);
    }
    step.Finish();
    TellOfWaitingAssignments(session, parent.authorization);
    return true;
}

void TellOfWaitingAssignments(Session& session, long authorization) {
    const int endDay = WeekdayNumber(session.WKENDING);
    long waiting = 0;
    for (Recordset row = OpenAssignments(session, authorization); !row.Eof(); row.MoveNext()) {
        const Value from = row.Get("st_date");
        waiting += !from.IsNull() && !row.Get("Last_date").IsNull() &&
                           WeekEndOf(NextCreationDate(row), endDay) < from.ToDate().DayOnly()
                       ? 1
                       : 0;
    }
    if (waiting > 0) {
        session.ShowMessageWindow(
            std::to_string(waiting) +
            " assignments of this authorization make no schedules: the week of their Next "
            "Schedule Creation Date ends before it begins.  Please set that date to the "
            "From date.");
    }
}

}  // namespace kv
