#pragma once
#include <string>
#include <vector>

#include "clients/client_form.h"
#include "clients/list_move.h"
#include "session/session.h"

namespace kv {

// The ways from one client of the limited list to another. Each begins with MayLeaveClient unless it says
// otherwise; true means that the list may have moved and the screen runs ShowClientRecord. All throw
// EngineError.

/// The keys first, previous, next and last.
bool MoveInClientList(Session& session, ClientForm& form, ListMove move);
/// A click on a row of FGtree: the id goes into Session::PickedClient.
bool MoveToTreeClient(Session& session, ClientForm& form, const std::string& id);
/// After PickClient; tells when the limits leave the client out. The caller runs MayLeaveClient before it
/// shows the pick screen.
bool MoveToPickedClient(Session& session, ClientForm& form, const std::string& id);

/// Before a quick find: false, perhaps with words, while a client is being added, for an empty text, and when
/// faults keep the operator here.
bool MayQuickFind(Session& session, ClientForm& form, const std::string& text);

struct QuickFindRow {
    std::string id;
    std::string lastName;
    std::string firstName;
};
/// The clients of the limited list that a quick find meets: a number in the id, else in the SSN, one hit; any
/// other text in last names, then in first names, so that a client may stand there twice.
std::vector<QuickFindRow> QuickFind(const Recordset& list, const std::string& text);
/// The end of a quick find: the chosen id, or "" for none, which is told.
bool MoveToQuickFound(Session& session, ClientForm& form, const std::string& id);

}  // namespace kv
