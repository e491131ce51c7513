#include "clients/record_keys.h"

#include <algorithm>

namespace kv {

bool MoveInRecords(Session& session, Recordset& rows, ListMove move, const RecordTexts& texts) {
    if (rows.RecordCount() == 0) {
        session.ShowMessageWindow(texts.noneToMove);
        return false;
    }
    switch (move) {
        case ListMove::First:
            rows.MoveFirst();
            break;
        case ListMove::Last:
            rows.MoveLast();
            break;
        case ListMove::Previous:
            rows.MovePrevious();
            if (rows.Bof()) {
                session.ShowMessageWindow(texts.atFirst);
                rows.MoveFirst();
            }
            break;
        case ListMove::Next:
            rows.MoveNext();
            if (rows.Eof()) {
                session.ShowMessageWindow(texts.atLast);
                rows.MoveLast();
            }
            break;
    }
    return true;
}

bool DeleteRecord(Session& session, Recordset& rows, const RecordTexts& texts) {
    if (rows.RecordCount() == 0) {
        session.ShowMessageWindow(texts.noneToDelete);
        return false;
    }
    if (!session.dialogs.AskQuestion(texts.mayDelete)) {
        return false;
    }
    const long position = rows.AbsolutePosition();
    rows.Delete();
    rows.Requery();
    if (rows.RecordCount() > 0) {
        rows.SetAbsolutePosition(std::clamp(position, 0L, rows.RecordCount() - 1));
    }
    return true;
}

}  // namespace kv
