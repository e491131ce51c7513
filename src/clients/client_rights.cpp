#include "clients/client_rights.h"

#include "session/rights.h"

namespace kv {

namespace {

bool Holds(Session& session, const char* code, const char* description, const char* system,
           const char* defaultAccess) {
    return CheckScreenAccess(session, code, false, description, system, defaultAccess);
}

// The two callers name different defaults for CLIB: whichever asks first registers its own.
bool HoldsBillRates(Session& session, const char* defaultAccess) {
    return Holds(session, "CLIB", "View the Client Billing Rates section", "Client", defaultAccess);
}

bool HoldsDocumentedEvents(Session& session) {
    return Holds(session, "LOGV", "View Documented Event Screen", "System", "*");
}

}  // namespace

ClientRights AskClientRights(Session& session) {
    session.CanAdd = CheckScreenAccess(session, "CLIA");
    session.CanDelete = CheckScreenAccess(session, "CLID");
    session.CanSave = CheckScreenAccess(session, "CLIE");
    session.OffLine = session.settings.GetBoolean("Setting", "OFF_LINE");
    ClientRights rights;
    rights.billRates = HoldsBillRates(session, "*");
    rights.documentedEvents = HoldsDocumentedEvents(session);
    rights.ssn = Holds(session, "CLIS", "View Client SSN", "Client", "~");
    rights.birthDate = Holds(session, "CLBD", "View Client Birth Date", "Client", "~");
    rights.changeGroup = Holds(session, "CLIG", "Change Client Groups", "Client", "*");
    return rights;
}

void AskSectionRights(Session& session, ClientRights& rights) {
    rights.billRates = HoldsBillRates(session, "~");
    rights.documentedEvents = HoldsDocumentedEvents(session);
}

}  // namespace kv
