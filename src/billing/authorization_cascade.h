#pragma once
#include <functional>
#include <string>
#include <vector>

#include "scheduling/removed_visits.h"
#include "session/session.h"

namespace kv {

// What a changed authorization does to the assignments and visits below it.

/// FRMimportant's answers: take the new payer and call type to all visits, leave them as they are, or give
/// the save up.
enum class ImportantAnswer { All, Yes, No };
using AskImportant = std::function<ImportantAnswer(long authorization)>;

/// An authorization as it stood before the save and as it is to be.
struct AuthorizationChange {
    long sequence = 0;
    std::string oldPayer, oldVisitType;
    std::string payer, visitType, visitDescription;
    long billCode = 0;
    Value oldEnd;  ///< the stored to_DATE
    Date end;

    /// The end was moved to an earlier day.
    bool Shortened() const;
};

/// Before the row is written: where payer or call type changed and visits stand on them, asks, and takes the
/// change to them where that is the answer. False where the save is given up. Throws EngineError.
bool CarryPayerToVisits(Session& session, const AuthorizationChange& change, const AskImportant& ask);

/// The authorization's row once it is written, for what follows.
struct WrittenAuthorization {
    long sequence = 0;
    std::string status;  ///< its letter
    long billCode = 0;
    Date from;
    Date to;
    std::string visitType;
    std::string clientName;  ///< "Last, First"
};
/// After the row is written: asks about the visits behind its end, brings its assignments up to date and
/// creates visits that a later end makes room for, once the operator agrees. Answers what schedule creation
/// left out. A new row has no old end. Visits with actual hours are never touched. Throws EngineError.
std::vector<RemovedVisit> CarryToAssignments(Session& session, const WrittenAuthorization& written,
                                             bool shortened, const Value& oldEnd);

/// CMDmigration: gives every row of the list a new end, deletes the visits behind it, and tells of each row
/// without a call type. The rows stay in the list. False for an empty list. Throws EngineError.
bool MoveAllEnds(Session& session, Recordset& authorizations, Date end);

/// Deletes an authorization's visits behind a day that were not worked, each with its row in the journal.
void DeleteFutureSchedulesJournaled(Session& session, long authorization, long end);
/// A journal row for each of the visits.
void JournalSchedulesChanged(Session& session, Recordset visits);

}  // namespace kv
