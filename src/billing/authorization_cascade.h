#pragma once
#include <functional>
#include <string>
#include <utility>
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
    long oldBillCode = 0;  ///< two payers may bear one name
    Value oldEnd;          ///< the stored to_DATE
    Date end;

    /// The end was moved to an earlier day.
    bool Shortened() const;
};

/// What the operator decided about the visits before anything is written.
struct CascadeDecision {
    bool carryPayer = false;      ///< the visits take the new payer and call type
    bool deleteAfterEnd = false;  ///< unworked visits after the end go
    bool createMissing = false;   ///< the end moved forward: the visits that it makes room for are made
};
/// Where payer or call type changed and visits stand on them: asks whether they follow. False where the save
/// is given up. Throws EngineError.
bool DecidePayer(Session& session, const AuthorizationChange& change, const AskImportant& ask,
                 CascadeDecision& decision);
/// Asks about the visits after the end, telling how many they are, and about those that a later end makes
/// room for. `status` is the letter that is to be stored. Throws EngineError.
void DecideVisits(Session& session, const AuthorizationChange& change, const std::string& status,
                  CascadeDecision& decision);

/// The plain visits take the payer and call type; On the Road each is journalled. Throws EngineError.
void CarryPayerToVisits(Session& session, const AuthorizationChange& change);

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
/// What each assignment of it holds of it: columns of assign with their values.
std::vector<std::pair<const char*, Value>> AssignmentCopies(const WrittenAuthorization& written);
struct CascadeResult {
    std::vector<RemovedVisit> removed;  ///< what schedule creation left out
    bool beginsLater = false;           ///< the authorization begins after some assignment of it did
};
/// After the row is written: deletes the visits after its end, brings its assignments up to date and creates
/// visits, as was decided. A new row has no old end. Visits with actual hours are never touched. Throws
/// EngineError.
CascadeResult CarryToAssignments(Session& session, const WrittenAuthorization& written,
                                 const CascadeDecision& decision, const Value& oldEnd);

/// CMDmigration: asks with counts, gives every row of the list and its assignments a new end, deletes the
/// visits after it that were not worked, and tells of each row without a call type. What `alongWith`
/// writes (the client's status) is stored with it, or nothing is. The rows stay in the list. False for an
/// empty list and where the operator declines. Throws EngineError.
bool MoveAllEnds(Session& session, Recordset& authorizations, Date end,
                 const std::function<void()>& alongWith);

/// Deletes an authorization's visits after a day that were not worked, each with its row in the journal.
void DeleteFutureSchedulesJournaled(Session& session, long authorization, long end);
/// A journal row for each of the visits.
void JournalSchedulesChanged(Session& session, Recordset visits);

}  // namespace kv
