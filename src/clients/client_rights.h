#pragma once
#include "session/session.h"

namespace kv {

/// What the user may see and do on the main screen, apart from Session::CanAdd, CanDelete and CanSave.
struct ClientRights {
    bool billRates = true;         ///< CLIB: section 1
    bool documentedEvents = true;  ///< LOGV: section 3
    bool ssn = true;               ///< CLIS: txtSsn is shown
    bool birthDate = true;         ///< CLBD: TxtB_date is shown
    bool changeGroup = true;       ///< CLIG: cmbGroup is enabled
};

/// Asks the rights in the order of the start; sets Session::CanAdd, CanDelete, CanSave and OffLine. Codes
/// that are new to Screens of main.mdb are registered there. Throws EngineError.
ClientRights AskClientRights(Session& session);
/// Asks CLIB and LOGV again, as each refresh of the list does.
void AskSectionRights(Session& session, ClientRights& rights);

}  // namespace kv
