#pragma once
#include <string>
#include <vector>

#include "scheduling/assignments.h"
#include "session/session.h"

namespace kv {

/// Days on which an assignment's pattern asks for a visit, which schedule creation has gone by: they lie in
/// weeks before its Last_date, and nothing makes their visits.
struct PatternGap {
    long assignment = 0;
    std::vector<Date> days;  ///< oldest first, never empty
};

/// The gaps of assignments of one client from a day on, as far back as their patterns reach without a visit
/// of another assignment in their place. A day has no gap where its visit is there, one typed in by hand
/// stands for it, or a holiday leaves it out. Assignments that make no visits (closed, without hours) have
/// none. Throws EngineError.
std::vector<PatternGap> FindPatternGaps(Session& session, const std::vector<long>& assignments, Date from);

/// Moves each Last_date back to the week before the gap and runs schedule creation; `removed` takes what it
/// leaves out. Writes assign and sch_day as a whole: where EngineError is thrown nothing is stored, and
/// `removed` is as it was.
void FillPatternGaps(Session& session, const std::vector<PatternGap>& gaps,
                     std::vector<RemovedVisit>& removed);

/// What a copy leaves without visits.
struct CopyGaps {
    std::vector<PatternGap> coming;  ///< from today on: can be made
    std::vector<Date> days;          ///< theirs, each once, oldest first
    std::vector<Date> past;          ///< before today, each once, oldest first
    /// The days from today on between the two authorizations, which none of them holds; empty for none.
    std::optional<std::pair<Date, Date>> between;

    bool Any() const { return !days.empty() || !past.empty() || between.has_value(); }
    /// In words for the operator, without the question.
    std::string Words() const;
};
/// Of the assignments copied from an authorization into this one. Throws EngineError.
CopyGaps FindCopyGaps(Session& session, long from, const AssignmentParent& parent,
                      const std::vector<long>& copied);

/// CopyAssignments, and then tells which days it leaves without visits and offers to make them. `removed`
/// takes what both leave out, and is right where EngineError is thrown after the copy is stored. False where
/// there is nothing to copy, which is told.
bool CopyPattern(Session& session, long from, const AssignmentParent& parent,
                 std::vector<RemovedVisit>& removed);

}  // namespace kv
