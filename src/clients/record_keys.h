#pragma once
#include <functional>

#include "clients/list_move.h"
#include "session/session.h"

namespace kv {

/// Before a changed record goes out of sight.
inline constexpr const char* kUnsavedPrompt =
    "Some information has changed, and is not saved.  Do you wish to save?";

/// Where another seat has changed what is about to be deleted.
inline constexpr const char* kChangedBeforeDelete =
    "Another user has changed this record since it was shown.  Please look at it again before you delete it.";

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
/// Asks, naming `what` is to go, deletes the current row and moves to the one behind it, or the last. A row
/// that another seat changes while the question stands is not deleted, which is told. What `alongWith` writes
/// is stored with it or not at all. Throws EngineError.
bool DeleteRecord(Session& session, Recordset& rows, const RecordTexts& texts,
                  const std::function<std::string(const Recordset&)>& what,
                  const std::function<void()>& alongWith = {});

/// The same for a row that is there; `ask` puts the question, or several, and answers whether it goes.
bool DeleteCurrent(Session& session, Recordset& rows, const std::function<bool()>& ask,
                   const std::function<void()>& alongWith = {});

}  // namespace kv
