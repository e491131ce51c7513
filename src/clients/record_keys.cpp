#include "clients/record_keys.h"

#include <algorithm>
#include <vector>

#include "session/whole_step.h"

namespace kv {

namespace {

std::vector<Value> FieldsOf(const Recordset& row) {
    std::vector<Value> fields;
    for (std::size_t field = 0; field < row.Fields().size(); ++field) {
        fields.push_back(row.Get(field));
    }
    return fields;
}

}  // namespace

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

bool DeleteRecord(Session& session, Recordset& rows, const RecordTexts& texts,
                  const std::function<std::string(const Recordset&)>& what,
                  const std::function<void()>& alongWith) {
    if (rows.RecordCount() == 0) {
        session.ShowMessageWindow(texts.noneToDelete);
        return false;
    }
    const std::string question = texts.mayDelete + ("\r\n" + what(rows));
    return DeleteCurrent(
        session, rows, [&] { return session.dialogs.AskToDestroy(question); }, alongWith);
}

bool DeleteCurrent(Session& session, Recordset& rows, const std::function<bool()>& ask,
                   const std::function<void()>& alongWith) {
    const std::vector<Value> shown = FieldsOf(rows);
    if (!ask()) {
        return false;
    }
    // The question may have stood for long.
    const long position = rows.AbsolutePosition();
    Recordset now = rows.Clone();
    now.Reread();
    now.SetAbsolutePosition(position);
    if (FieldsOf(now) != shown) {
        session.ShowMessageWindow(kChangedBeforeDelete);
        return false;
    }
    const auto showAgain = [&] {
        rows.Requery();
        if (rows.RecordCount() > 0) {
            rows.SetAbsolutePosition(std::clamp(position, 0L, rows.RecordCount() - 1));
        }
    };
    try {
        WholeStep step(session);
        rows.Delete();
        if (alongWith) {
            alongWith();
        }
        step.Finish();
    } catch (const EngineError&) {
        showAgain();
        throw;
    }
    showAgain();
    return true;
}

}  // namespace kv
