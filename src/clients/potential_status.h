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
    Changed,       ///< the row is another one than before: it is to be shown again
    BecameActive,  ///< the screen sets CMBcliStatus to "ACTIVE" and refreshes the list, so that the client
                   ///< stays in view
};

/// Asks, then writes the status of the list's current row with the stamps of a save, its line of history and,
/// On the Road, of the journal; a client who becomes active takes their phones in hkeylonglat of main.mdb
/// along. All of it is stored or, where EngineError is thrown, nothing; the row is then no longer in edit. A
/// client who is no potential one any more is left as they are, which is told.
PotentialResult ChangePotentialStatus(Session& session, Recordset& list, PotentialChoice choice);

}  // namespace kv
