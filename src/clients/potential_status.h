#pragma once
#include <array>
#include <string_view>

#include "session/session.h"

namespace kv {

/// The options of FRMpotientalStatus, in their order.
enum class PotentialChoice { Inactive, Active, ActiveClient };
inline constexpr std::array<std::string_view, 3> kPotentialChoiceTexts = {
    "Change status to 'Potential - Inactive'",
    "Change status to 'Potential - Active'",
    "Change from a 'Potential' client to an 'Active' client",
};

enum class PotentialResult {
    Unchanged,     ///< the operator said no
    Changed,       ///< the client is still a potential one
    BecameActive,  ///< the screen sets CMBcliStatus to "ACTIVE" and refreshes the list, so that the client
                   ///< stays in view
};

/// Asks, then writes the status of the list's current row; a client that becomes active takes its phones in
/// hkeylonglat of main.mdb along. Throws EngineError; the row is then no longer in edit.
PotentialResult ChangePotentialStatus(Session& session, Recordset& list, PotentialChoice choice);

}  // namespace kv
