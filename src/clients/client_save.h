#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "clients/client_form.h"
#include "session/session.h"

namespace kv {

/// A name without "," and "'": they would break the statements that carry the name to assignments and
/// schedules.
std::string CleanName(std::string_view name);
/// The name check of a box (TxtFirstnam, TxtLastname), on each change and once more at a save: takes the
/// characters out of the box and tells so. Nothing happens while the list has no position. True when the box
/// was changed.
bool CheckName(Session& session, ClientForm& form, std::string_view control);

/// The faults of the client on the screen in their order; empty for an empty list and for a template. Throws
/// EngineError.
std::vector<std::string> RequiredInfoFaults(Session& session, const Recordset& list,
                                            const ScreenControls& controls);
/// CheckRequiredInfo: shows the faults and clears the hourglass; true when there were any.
bool CheckRequiredInfo(Session& session, ClientForm& form);

/// The number of differences between the screen and the row that a move away would lose.
long CountClientDifferences(const ScreenControls& controls, const Recordset& row);

enum class PromptResult {
    NothingToSave,
    Discarded,
    Saved,
    Stayed,  ///< back to what was typed
};
/// PromptToSaveClient: asks when something changed and CanSave is true. It leaves hkeylonglat, the manager on
/// the schedule and the list alone; the save key's save does those. Throws EngineError, with what was done
/// staying done.
PromptResult PromptToSaveClient(Session& session, ClientForm& form);
/// Before each move away from the client: the required check, then the prompt. False when faults, or the
/// answer, keep the operator here.
bool MayLeaveClient(Session& session, ClientForm& form);

/// Who saved the row, when and from where: into a row of ClientPR in edit.
void WriteStamps(const Session& session, Recordset& row);
/// StampClientRow: writes the controls, the notes and the save's stamps into the row. Throws EngineError.
void StampClientRow(Session& session, ClientForm& form);

/// The save key. Handles engine errors itself: it tells them, restores the row and clears the hourglass; the
/// statements already run stay done. True when the client was saved.
bool SaveClient(Session& session, ClientForm& form);
/// The discard key.
void DiscardClient(Session& session, ClientForm& form);

}  // namespace kv
