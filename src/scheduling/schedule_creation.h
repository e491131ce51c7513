#pragma once
#include <set>
#include <vector>

#include "scheduling/removed_visits.h"
#include "session/session.h"

namespace kv {

/// Turns assignments into visits (sch_day), week by week up to the agency's horizon. Running it again adds
/// nothing that is there; an assignment's Last_date remembers how far it got.
///
/// Where a single step fails, it is passed over and the next one runs; only opening the tables throws
/// EngineError. Writes sch_day (rows added) and assign (howoften, Last_date), and nothing else. What is done
/// for an assignment, and for those that are run with it, is written whole or not at all, so that a seat that
/// dies leaves no week passed over without its visit; where the store can't take it at all (a full disk, rows
/// that another seat's transaction keeps for seconds) EngineError is thrown.
class ScheduleCreation {
  public:
    explicit ScheduleCreation(Session& session);
    /// For one assignment, by its sequence.
    void RunFor(long assignment);
    /// For each, in the order of their sequences; lets the window system breathe, and stops where the
    /// operator breaks off. False then.
    bool RunAll(const std::vector<long>& assignments);

    /// Over all runs, those that were cancelled or ended in EngineError included: what is stored, and nothing
    /// else, so that the operator is told of it however a run ends.
    long Finished() const { return finished_; }  ///< assignments
    long Created() const { return created_; }
    const std::vector<RemovedVisit>& Removed() const { return removed_; }

  private:
    class Run;
    void RunBatch(const std::vector<long>& assignments);
    void WriteBatch(const std::vector<long>& assignments);
    /// No visit lies behind it.
    Date Horizon() const;
    Session& session_;
    int endDay_;  ///< the weekday on which a week ends, 1 to 7
    bool paperwork_ = false;
    long weeks_ = 0;  ///< the horizon
    std::set<long> holidays_;
    Recordset visits_;  ///< takes the rows that are added
    std::vector<RemovedVisit> removed_;
    long finished_ = 0;
    long created_ = 0;
};

/// A run for one assignment alone. Always answers true; `removed` is for the report.
bool Create_schedule_now(Session& session, long assignment, std::vector<RemovedVisit>& removed);

/// The sequences of the assignments of an authorization, or of all there are, in their order. Throws
/// EngineError.
std::vector<long> AssignmentsOf(Session& session, long authorization);
std::vector<long> AllAssignments(Session& session);

}  // namespace kv
