#pragma once
#include "tool/check_findings.h"
#include "tool/check_history.h"

namespace kv::tool {

// What an interrupted step leaves in the chain from a client to the visits.

/// Assignments that differ from their authorization in what they copy of it. One of another client than its
/// authorization is for a person.
Findings FindOtherCopies(const OpenDatabases& databases);
/// Clients whose status or days of service are not what their authorizations make of them. Left out are
/// potential clients and templates, and what the rules let stand: clients without authorizations, those who
/// had one deleted since the last was saved, days of service that were typed since.
Findings FindOtherStatus(const OpenDatabases& databases, PurposeHistory& history);
/// Clients whose phone index has another status.
Findings FindOtherPhoneStatus(const OpenDatabases& databases);
/// Clients with another name in assignments and in visits that are neither worked nor changed by hand.
Findings FindOtherNames(const OpenDatabases& databases);
/// Visits neither worked nor cancelled after the end of their authorization, or else of their assignment. The
/// operator may have chosen to keep them: a person decides.
Findings FindVisitsAfterEnd(const OpenDatabases& databases);

}  // namespace kv::tool
