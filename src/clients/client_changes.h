#pragma once
#include <string>

#include "clients/screen_controls.h"
#include "session/session.h"

namespace kv {

/// The controls that are compared with the row by name, where the operator has changed them.
bool GroupDiffers(const ScreenControls& controls, const Recordset& row);
bool HolidayDiffers(const ScreenControls& controls, const Recordset& row);
/// TXTbox, the notes as they are shown, against TXTedit, the notes as they were.
bool NotesDiffer(const ScreenControls& controls);

/// Appends a row to Session::rsChanges: "Edit" of the client, by the session's user at this moment. Throws
/// EngineError.
void AppendClientHistory(Session& session, const std::string& id, const std::string& reason);

/// The captions of the client's days of service, under which the history keeps what was typed there; an empty
/// day is told by its column's name.
inline constexpr const char* kStartOfCare = "Start of Care:";
inline constexpr const char* kEndOfCare = "End of Care:";

/// WriteClientChanges: appends one row to Session::rsChanges with the old and new values, when there are any;
/// the text stays in Session::Reply. Reads the row as it is stored, so it runs before the controls are
/// written into it. Returns the number of differences. Throws EngineError.
long WriteClientChanges(Session& session, const ScreenControls& controls, const Recordset& row);

}  // namespace kv
