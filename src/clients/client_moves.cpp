#include "clients/client_moves.h"

#include "base/numbers.h"
#include "base/text.h"
#include "clients/client_list.h"
#include "clients/client_save.h"

namespace kv {

namespace {

void MoveBack(Session& session, Recordset& list) {
    list.MovePrevious();
    if (list.Bof()) {
        session.ShowMessageWindow("Moving to the first record in the Client File");
        list.MoveFirst();
    }
}

void MoveOn(Session& session, Recordset& list) {
    list.MoveNext();
    if (list.Eof()) {
        session.ShowMessageWindow("Moving to the Last record in the Client File");
        list.MoveLast();
    }
}

QuickFindRow RowOf(const Recordset& list) {
    return {list.Text("CLIENT"), list.Text("LASTNAME"), list.Text("FIRSTNAM")};
}

std::string Criteria(std::string_view column, const std::string& text) {
    return Sql("{} like {} and ISTEMPLATE =  0", Raw{std::string(column)}, "*" + text + "*");
}

void AddAll(Recordset& list, const std::string& criteria, std::vector<QuickFindRow>& rows) {
    for (list.FindFirst(criteria); !list.NoMatch(); list.FindNext(criteria)) {
        rows.push_back(RowOf(list));
    }
}

}  // namespace

bool MoveInClientList(Session& session, ClientForm& form, ListMove move) {
    if (!MayLeaveClient(session, form)) {
        return false;
    }
    Recordset& list = form.List();
    if (!list.IsOpen() || list.RecordCount() == 0) {
        if (move == ListMove::Previous || move == ListMove::Next) {
            session.ShowMessageWindow("You must Add a Client before skipping");
        }
        return false;
    }
    switch (move) {
        case ListMove::First:
            list.MoveFirst();
            break;
        case ListMove::Previous:
            MoveBack(session, list);
            break;
        case ListMove::Next:
            MoveOn(session, list);
            break;
        case ListMove::Last:
            list.MoveLast();
            break;
    }
    return true;
}

bool MoveToTreeClient(Session& session, ClientForm& form, const std::string& id) {
    if (!MayLeaveClient(session, form)) {
        return false;
    }
    session.PickedClient = id;
    return form.List().IsOpen() && FindInList(form.List(), id);
}

bool MoveToPickedClient(Session& session, ClientForm& form, const std::string& id) {
    if (!FindInList(form.List(), id)) {
        session.ShowMessageWindow(
            "Could not show client because your selected client is not included in the 'Limit Client by:' "
            "section.");
    }
    return true;
}

bool MayQuickFind(Session& session, ClientForm& form, const std::string& text) {
    if (form.List().IsOpen() && form.List().EditMode() == EditState::Add) {
        session.ShowMessageWindow("You must save the client information first");
        return false;
    }
    return !text.empty() && MayLeaveClient(session, form);
}

std::vector<QuickFindRow> QuickFind(const Recordset& list, const std::string& text) {
    std::vector<QuickFindRow> rows;
    if (!list.IsOpen() || list.RecordCount() == 0) {
        return rows;
    }
    Recordset clone = list.Clone();
    if (!ParseNumber(text)) {
        AddAll(clone, Criteria("lastname", text), rows);
        AddAll(clone, Criteria("firstnam", text), rows);
        return rows;
    }
    for (const std::string_view column : {"client", "ssn"}) {
        clone.FindFirst(Criteria(column, Trim(text)));
        if (!clone.NoMatch()) {
            rows.push_back(RowOf(clone));
            break;
        }
    }
    return rows;
}

bool MoveToQuickFound(Session& session, ClientForm& form, const std::string& id) {
    if (id.empty()) {
        session.ShowMessageWindow("There was no Client found");
        return false;
    }
    FindInList(form.List(), id);
    return true;
}

}  // namespace kv
