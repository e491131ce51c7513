#pragma once
#include <string>
#include <vector>

#include "session/session.h"

namespace kv {

/// The box "Limit Client by:". Session::Manager limits too ("all" for no limit), and Session::ClientSort
/// orders.
struct ClientLimits {
    std::string status = "ACTIVE";           ///< CMBcliStatus, in any case; empty counts as "ACTIVE"
    std::string potentialStatus = "Active";  ///< CMBpotientalStatus, looked at for "POTENTIAL" only
    std::string group = "ALL";               ///< cmbDISGROUP; empty counts as "ALL"
};

/// The condition on ClientPR with the group's and the manager's parts behind it. "Authorization Check" runs
/// its query and joins the ids that it found. An unknown status counts as "ALL CLIENTS". Throws EngineError
/// (3075 for an apostrophe).
std::string ClientCondition(Session& session, const ClientLimits& limits);
/// The limited list (DbClient) in the order of Session::ClientSort, updatable, on its first row. Throws
/// EngineError.
Recordset OpenClientList(Session& session, const std::string& condition);
Recordset OpenClientList(Session& session, const ClientLimits& limits);

struct ClientTreeRow {
    std::string text;  ///< "Last, First (A)"
    std::string id;
    bool marked = false;  ///< shown in the second colour: the text does not end in " (A)"
};
struct ClientTreeNode {
    std::string letter;  ///< the first letter of the last names, upper-cased
    std::vector<ClientTreeRow> rows;
};
/// FGtree: letters and, in each, names in ascending order. A client without a last name stands in no node.
struct ClientTree {
    std::vector<ClientTreeNode> nodes;
    bool collapsed = false;  ///< more than 40 rows: only the letters are open to the eye
};

/// Load_clients: the tree of the clients that meet the condition. Throws EngineError.
ClientTree LoadClientTree(Session& session, const std::string& condition);

/// A client stands on the list's current place: the list is open and not empty, and no other seat has deleted
/// the row.
bool HasClient(const Recordset& list);

/// Moves the list to a client; false leaves it where it is.
bool FindInList(Recordset& list, const std::string& id);

/// The limited list and its tree, made together.
struct ClientListData {
    Recordset list;
    ClientTree tree;
};
/// RefreshClientList: the list stands on the client `keepId` where it holds it, else on its first row.
ClientListData RefreshClientList(Session& session, const ClientLimits& limits, const std::string& keepId);

}  // namespace kv
