#pragma once
#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "printing/document/document.h"
#include "scheduling/removed_visits.h"
#include "scheduling/schedule_update.h"
#include "session/session.h"

namespace kv {

/// What an assignment takes from its authorization and client.
struct AssignmentParent {
    long authorization = 0;
    std::string client;
    std::string clientName;    ///< "Last, First"
    std::string clientStatus;  ///< casestatcd
    std::string status;        ///< the authorization's status_code
    std::string visitType;
    std::string visitDescription;
    std::string payer;
    long billCode = 0;
    Date from;
    Date to;
    double hours = 0;  ///< authorized
    std::string per;   ///< "W" or "M": what they are per
    bool liveIn = false;
};
/// Nothing where there is no such authorization. Throws EngineError, as everything below does.
std::optional<AssignmentParent> ParentOf(Session& session, long authorization);

/// The authorization's assignments by day and time, updatable.
Recordset OpenAssignments(Session& session, long authorization);

inline constexpr int kDaysOfWeek = 7;
/// "SUN" to "SAT", by index from 0; and the index of a code, -1 for none.
const std::array<std::string, kDaysOfWeek>& DayCodes();
int DayIndex(const std::string& code);

/// A line of FGtree.
struct AssignmentLine {
    long sequence = 0;
    int day = 0;
    std::string text;  ///< "09:00 AM-01:00 PM   04.00 hrs  Ames, Al"
};
std::vector<AssignmentLine> AssignmentTree(const Recordset& assignments);

/// Assignments start on quarters of an hour.
bool IsQuarterHour(Date time);
/// The time of day at which a visit ends.
Date EndOfVisit(Date start, double hours);
/// The hours from a time to a later one; an earlier one lies behind midnight.
double HoursOfVisit(Date start, Date end);
/// A date of creation that lies too many weeks back becomes a week ago.
Date LimitCreationDate(Date creation, Date today, Date authorizedTo);
/// The date that the screen shows: Last_date and the interval. For a new one: the From date, or today where
/// that is older than a week.
Date NextCreationDate(const Recordset& assignment);
Date FirstCreationDate(Date from, Date today);

/// What FRmassign's boxes hold.
struct AssignmentEntry {
    std::array<bool, kDaysOfWeek> days{};
    Date start;
    double hours = 0;
    long howoften = 1;
    Date creation;  ///< TDBlastdate
    std::string emp_id;
};

/// The first day from today on that falls on the first checked day; today where none is checked.
Date FirstVisitDay(const AssignmentEntry& entry, Date today);

/// The headings of a line of information, and what stands below each.
using DetailLine = std::vector<std::pair<std::string, std::string>>;

/// A caregiver as FRmassign shows her, and what the checks of her found.
struct CaregiverCheck {
    bool accepted = false;   ///< false: she is not found, or TXTempid is to be emptied
    std::string name;        ///< "Last, First"
    std::string discipline;  ///< Label2
    std::string hours;       ///< LblHours
    DetailLine details;      ///< of fgEMP; empty where there is none
};
/// For a row that is shown: no check, no word to the operator.
CaregiverCheck DescribeCaregiver(Session& session, const std::string& emp_id, const AssignmentParent& parent);
/// The columns of FGcli with what the client has in them.
DetailLine ClientDetails(Session& session, const std::string& client);
/// Runs when TXTempid changes. Tells the operator why a caregiver is not accepted.
CaregiverCheck CheckCaregiver(Session& session, const std::string& emp_id, const AssignmentParent& parent,
                              Date creation);

/// A line of frmDiscrep.
struct AssignmentConflict {
    Date from, to, start;
    double hours = 0;
    std::string with;  ///< a client's name, or "Not Available"
    std::string day;   ///< with "B" or "A" behind it for the day before or after
    long howoften = 0;
};
/// The caregiver's declared unavailability and other assignments that the new one may run into; `sequence` is
/// its own, 0 for a new one.
std::vector<AssignmentConflict> FindAssignmentConflicts(Session& session, const AssignmentEntry& entry,
                                                        const AssignmentParent& parent, long sequence);

/// What a save asks of its screen. Each is required.
struct AssignmentAsks {
    /// frmDiscrep: shows the conflicts. The save goes on whatever they are, unless the operator goes back to
    /// the boxes: false then.
    std::function<bool(const std::vector<AssignmentConflict>&)> showConflicts;
    /// FRMmoveAssign: by how many days, forward or back (below 0), the visits move; nothing when cancelled.
    std::function<std::optional<int>(int forward, int back)> askMove;
    /// FRMupdatesch for the saved assignment.
    std::function<void(const ScheduleUpdate&)> updateSchedules;
};

struct AssignmentSaved {
    bool saved = false;  ///< false: faults were told; the edit goes on
    std::vector<long> sequences;
    std::vector<RemovedVisit> removed;
    std::optional<Document> conflicts;  ///< the report of the caregiver's visits that run into each other
};
/// The save key: the edited row, or for a new one a row for each day that is checked, with its visits. The
/// recordset is in Edit or AddNew. Writes assign, changes and, by schedule creation, sch_day: all of it or,
/// where EngineError is thrown, nothing, and the edit goes on. What is then carried to existing visits is a
/// step of its own, visit by visit.
AssignmentSaved SaveAssignment(Session& session, Recordset& assignments, const AssignmentEntry& entry,
                               const AssignmentParent& parent, const AssignmentAsks& asks);

/// The delete key. Visits that were worked or changed by hand stay, and belong to no assignment any more.
bool DeleteAssignment(Session& session, Recordset& assignments, const AssignmentParent& parent);

/// An authorization of the client whose assignments may be copied: a line of FRMcopyAssign.
struct CopySource {
    long authorization = 0;
    Value to, from;
    std::string status, description, payer;
};
std::vector<CopySource> CopySources(Session& session, const AssignmentParent& parent);
/// Copies another authorization's assignments into this one and creates their visits. False where the other
/// has none, which is told.
bool CopyAssignments(Session& session, long from, const AssignmentParent& parent,
                     std::vector<RemovedVisit>& removed);

/// Schedule creation passes a week by that ends before an assignment's first day, and stays on it: tells how
/// many of the authorization's assignments would never make a visit by themselves.
void TellOfWaitingAssignments(Session& session, long authorization);

}  // namespace kv
