#pragma once
#include <string>
#include <vector>

#include "billing/authorization_cascade.h"
#include "clients/client_form.h"
#include "scheduling/removed_visits.h"
#include "session/session.h"

namespace kv {

/// What the history says of an authorization that was deleted; the client's id follows.
inline constexpr const char* kDeletedAuthorization = "Deleted Authorization on client: ";

/// What FRMauthorization's boxes hold beside those that are bound to the row.
struct AuthorizationEntry {
    std::string payer;  ///< cmbPayor
    long billCode = 0;
    std::string visitType;         ///< txtVisName
    std::string visitDescription;  ///< cmbVisType without the code in front of it
    std::string state;             ///< CMBAuthStatus
    std::string hourCode;          ///< cmbHourCode
    std::string shift;             ///< "1" to "3", or empty
    int cobillingType = 0;
    double cobillingAmount = 0;
    std::string cobillingPeriod;  ///< "Per Week"
};

/// The values of a new authorization's boxes, put into the row that AddNew began.
void FillNewAuthorization(const Session& session, Recordset& authorizations);

/// The reminder that a closed authorization may end too late; nothing where none is due.
void RemindOfEndDate(Session& session, const std::string& state, const Value& end);

struct AuthorizationSaved {
    bool saved = false;    ///< false: faults were told and the edit goes on, or it was given up
    bool givenUp = false;  ///< by the operator: the edit ends, the row is as it was
    long sequence = 0;
    std::vector<RemovedVisit> removed;  ///< for the report
};
/// The save key. The row is in Edit or AddNew with the bound boxes written into it; afterwards the saved row
/// is current. Writes Authorizations, changes, the visits (where the operator agrees), the client's row and
/// phone index, assign, clirate for a client who pays himself, and the journal: all of it or nothing. Where
/// EngineError is thrown nothing is stored, and the row is in edit as before.
AuthorizationSaved SaveAuthorization(Session& session, Recordset& authorizations,
                                     const AuthorizationEntry& entry, const std::string& client,
                                     ClientForm& form, const AskImportant& ask);

/// The delete key. True where the row is gone; the next one is then current. An authorization with visits is
/// refused. Throws EngineError.
bool DeleteAuthorization(Session& session, Recordset& authorizations);

/// Moves to the row of a sequence, or to the first one.
void MoveToAuthorization(Recordset& authorizations, long sequence);

}  // namespace kv
