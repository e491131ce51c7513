#pragma once
#include <string>

#include "clients/client_form.h"
#include "session/session.h"

namespace kv {

/// Recomputes a client's status and dates of service from all the client's authorizations: one that is active
/// makes the client active, a deceased one outranks the rest. Writes the row that the main screen shows
/// (casestatcd, startservc, caseexpdat) and the phone index. Does nothing without authorizations. Throws
/// EngineError.
void UpdateClientStatus(Session& session, ClientForm& form, const std::string& client);

}  // namespace kv
