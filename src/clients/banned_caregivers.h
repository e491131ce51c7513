#pragma once
#include <optional>
#include <string>

#include "clients/list_move.h"
#include "session/session.h"

namespace kv {

/// The caregivers who should not visit the client (emp_ban), by name; updatable. Throws EngineError, as
/// everything below does.
Recordset OpenBannedCaregivers(Session& session, const std::string& clientId);

/// "Last, First" of a caregiver, or nothing when there is none of that id.
std::optional<std::string> CaregiverName(Session& session, const std::string& id);

/// The keys of FRMNotVisit. Each speaks to the operator and answers whether it did something. Between AddNew
/// or Edit and Save the screen writes its boxes into the row. One caregiver may stand twice in a list, and
/// the name is a copy that keeps the name of that day.
bool SaveBannedCaregiver(Session& session, Recordset& banned, const std::string& clientId);
bool DeleteBannedCaregiver(Session& session, Recordset& banned, const std::string& clientId);
bool MoveBannedCaregiver(Session& session, Recordset& banned, ListMove move);

}  // namespace kv
