#pragma once
#include <string>

#include "session/session.h"

namespace kv {

/// The On-the-Road journal in trans.mdb: one row for each changed record, which always states the net effect
/// so far. `type` is "A" added, "E" edited or "D" deleted, `module` the record's family ("C" a client and its
/// attributes). Callers test Session::OffLine first and call it after their own save succeeded. Always
/// answers true. Throws EngineError.
bool WriteTransRecord(Session& session, const std::string& type, const std::string& module,
                      const std::string& id);

/// WriteTransRecord where the session is On the Road; otherwise nothing.
void NoteOnTheRoad(Session& session, const std::string& type, const std::string& module,
                   const std::string& id);

}  // namespace kv
