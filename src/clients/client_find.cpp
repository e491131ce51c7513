#include "clients/client_find.h"

#include <algorithm>
#include <array>

#include "base/text.h"

namespace kv {

namespace {

struct Field {
    std::string_view item;
    std::string_view label;
    std::string_view expression;
};
constexpr std::array kFields = {
    Field{"LAST NAME", "Last Name:", "LASTNAME"},
    Field{"GROUP", "Group:", "Grouping"},
    Field{"TELEPHONE #", "Telephone #:", "format(phone,'(###) ###-####')"},
    Field{"CLIENT ID", "Client ID:", "CLIENT"},
};

struct Status {
    std::string_view item;
    std::string_view condition;
};
constexpr std::array kStatuses = {
    Status{"All Clients", "istemplate = 0"},
    Status{"Only Active Clients", "casestatcd = 'A' and istemplate = 0"},
    Status{"Only Non-Active Clients", "casestatcd <> 'A' and istemplate = 0"},
    Status{"Templates", "istemplate = 1"},
};

template <typename Entries>
std::vector<std::string_view> ItemsOf(const Entries& entries) {
    std::vector<std::string_view> items;
    for (const auto& entry : entries) {
        items.push_back(entry.item);
    }
    return items;
}

/// The entry of an item; the first one for an item that there is none of.
template <typename Entries>
const auto& EntryOf(const Entries& entries, std::string_view item) {
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&](const auto& entry) { return entry.item == item; });
    return found == entries.end() ? entries.front() : *found;
}

}  // namespace

const std::vector<std::string_view>& ClientFindFields() {
    static const std::vector<std::string_view> items = ItemsOf(kFields);
    return items;
}

const std::vector<std::string_view>& ClientFindStatuses() {
    static const std::vector<std::string_view> items = ItemsOf(kStatuses);
    return items;
}

std::string ClientFindLabel(std::string_view field) {
    return std::string(EntryOf(kFields, field).label);
}

std::string ClientFindStatement(const PickQuery& query) {
    std::string statement =
        "SELECT CLIENT, LASTNAME, FIRSTNAM, format(phone,'(###) ###-####'), GROUPING, CASESTATCD FROM "
        "Clientpr WHERE ";
    if (!query.text.empty()) {
        statement += Sql("left({},{})= {} and ", Raw{std::string(EntryOf(kFields, query.field).expression)},
                         Length(query.text), query.text);
    }
    statement += EntryOf(kStatuses, query.status).condition;
    if (!EqualsNoCase(query.group, "ALL")) {
        statement += Sql(" and grouping = {}", query.group);
    }
    return statement + " order by LASTNAME,firstnam";
}

PickRows FindClients(Session& session, const PickQuery& query) {
    return LoadPickRows(*session.dbMainWork, ClientFindStatement(query));
}

}  // namespace kv
