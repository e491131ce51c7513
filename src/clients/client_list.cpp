#include "clients/client_list.h"

#include <algorithm>
#include <array>
#include <unordered_set>

#include "base/text.h"

namespace kv {

namespace {

struct StatusCondition {
    std::string_view status;
    std::string_view condition;
};

constexpr std::array kConditions = {
    StatusCondition{"ACTIVE", "CASESTATCD = 'A' AND ISTEMPLATE = 0"},
    StatusCondition{"CLOSED", "CASESTATCD = 'C' AND ISTEMPLATE = 0"},
    StatusCondition{"SUSPENDED", "CASESTATCD = 'S' AND ISTEMPLATE = 0"},
    StatusCondition{"DECEASED", "CASESTATCD = 'D' AND ISTEMPLATE = 0"},
    StatusCondition{"TEMPLATES", "ISTEMPLATE = 1"},
    StatusCondition{"ALL CLIENTS", "ISTEMPLATE = 0"},
    StatusCondition{"FIRST CONTACT CHECK",
                    "ISTEMPLATE = 0 and STARTSERVC < first_Contact and first_contact > #1901/01/01#"},
    StatusCondition{"BIRTHDAY CHECK", "ISTEMPLATE = 0 and bdate < #1901/01/01#"},
};

/// Clients with an authorization that is not active though it runs beyond the next week, or that names no
/// visit type.
std::string AuthorizationCheck(Session& session) {
    constexpr long kDaysAhead = 7;
    const std::string statement =
        Sql("SELECT CLIENTPR.client, Authorizations.Client AS Authorizations_Client, Authorizations.To_Date, "
            "Authorizations.Status_Code FROM CLIENTPR INNER JOIN Authorizations "
            "ON CLIENTPR.[CLIENT] = Authorizations.[Client] "
            "where (Authorizations.Status_Code <> 'A' and Authorizations.to_date > {}) "
            "or len(Authorizations.visit_Type) = 0",
            session.clock.Today().DayNumber() + kDaysAhead);
    TextList ids{{"99999"}};  // keeps the list from ever being empty
    std::unordered_set<std::string> seen;
    Recordset rows = session.dbMainWork->OpenRecordset(statement, RecordsetType::Snapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        std::string id = rows.Text("CLIENT");
        if (seen.insert(id).second) {
            ids.texts.push_back(std::move(id));
        }
    }
    return Sql("client in ({})", ids);
}

std::string StatusPart(Session& session, const ClientLimits& limits) {
    const std::string status = limits.status.empty() ? "ACTIVE" : Upper(limits.status);
    if (status == "POTENTIAL") {
        return Sql("CASESTATCD = 'Z' AND ISTEMPLATE = 0 And potientalstatus = {}", limits.potentialStatus);
    }
    if (status == "AUTHORIZATION CHECK") {
        return AuthorizationCheck(session);
    }
    for (const StatusCondition& each : kConditions) {
        if (each.status == status) {
            return std::string(each.condition);
        }
    }
    return "ISTEMPLATE = 0";
}

ClientTreeNode& NodeOf(ClientTree& tree, const std::string& letter) {
    // The rows come in the order of their names, so the node is nearly always the last one; accented letters
    // are the exception, since they sort among the plain ones.
    for (auto node = tree.nodes.rbegin(); node != tree.nodes.rend(); ++node) {
        if (node->letter == letter) {
            return *node;
        }
    }
    return tree.nodes.emplace_back(ClientTreeNode{letter, {}});
}

}  // namespace

std::string ClientCondition(Session& session, const ClientLimits& limits) {
    std::string condition = StatusPart(session, limits);
    if (!limits.group.empty() && !EqualsNoCase(limits.group, "ALL")) {
        condition += Sql(" and grouping = {}", limits.group);
    }
    if (!EqualsNoCase(session.Manager, "all")) {
        condition += Sql(" and manager = {}", session.Manager);
    }
    return condition;
}

Recordset OpenClientList(Session& session, const std::string& condition) {
    const std::string sort = session.ClientSort.empty() ? "client" : session.ClientSort;
    return session.dbMainWork->OpenRecordset("Select * from CLIENTPR where " + condition + " order by " +
                                             sort);
}

Recordset OpenClientList(Session& session, const ClientLimits& limits) {
    return OpenClientList(session, ClientCondition(session, limits));
}

ClientTree LoadClientTree(Session& session, const std::string& condition) {
    constexpr std::size_t kMostRowsOpen = 40;
    ClientTree tree;
    std::size_t count = 0;
    Recordset rows = session.dbMainWork->OpenRecordset(
        "select client, lastname, firstnam, casestatcd from clientpr where " + condition +
            " ORDER BY LASTNAME, FIRSTNAM",
        RecordsetType::Snapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        const std::string lastName = Trim(rows.Get(1).ToText());
        if (lastName.empty()) {
            continue;
        }
        ClientTreeRow row;
        row.text = lastName + ", " + Trim(rows.Get(2).ToText()) + " (" + rows.Get(3).ToText() + ")";
        row.id = rows.Get(0).ToText();
        row.marked = !row.text.ends_with(" (A)");
        NodeOf(tree, Left(Upper(Left(lastName, 1)), 1)).rows.push_back(std::move(row));
        ++count;
    }
    std::stable_sort(
        tree.nodes.begin(), tree.nodes.end(),
        [](const ClientTreeNode& a, const ClientTreeNode& b) { return CompareText(a.letter, b.letter) < 0; });
    tree.collapsed = count > kMostRowsOpen;
    return tree;
}

bool HasClient(const Recordset& list) {
    if (!list.IsOpen() || list.AbsolutePosition() < 0) {
        return false;
    }
    try {
        list.Get("CLIENT");
        return true;
    } catch (const EngineError& error) {
        if (error.Number() == engine_error::kRecordDeleted) {
            return false;
        }
        throw;
    }
}

bool FindInList(Recordset& list, const std::string& id) {
    list.FindFirst(Sql("client = {}", id));
    return !list.NoMatch();
}

ClientListData RefreshClientList(Session& session, const ClientLimits& limits, const std::string& keepId) {
    const std::string condition = ClientCondition(session, limits);
    ClientListData data;
    data.list = OpenClientList(session, condition);
    if (data.list.RecordCount() > 0 && !FindInList(data.list, keepId)) {
        data.list.MoveFirst();
    }
    data.tree = LoadClientTree(session, condition);
    return data;
}

}  // namespace kv
