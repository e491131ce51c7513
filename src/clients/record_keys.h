#pragma once
#include "clients/list_move.h"
#include "session/session.h"

namespace kv {

/// Before a changed record goes out of sight.
inline constexpr const char* kUnsavedPrompt =
    "Some information has changed, and is not saved.  Do you wish to save?";

/// What the moving and deleting keys of a list of records say.
struct RecordTexts {
    const char* noneToMove;
    const char* atFirst;
    const char* atLast;
    const char* noneToDelete;
    const char* mayDelete;  ///< the question
};

/// Moves; at an end the record stays and the text says so. False for an empty list. Throws EngineError.
bool MoveInRecords(Session& session, Recordset& rows, ListMove move, const RecordTexts& texts);
/// Asks, deletes the current row and moves to the one behind it, or the last. Throws EngineError.
bool DeleteRecord(Session& session, Recordset& rows, const RecordTexts& texts);

}  // namespace kv
