#include "clients/client_sort.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "base/text.h"

namespace kv {

namespace {

struct Field {
    std::string_view name;
    std::string_view column;
};
constexpr std::array kFields = {
    Field{"Client ID", "client"}, Field{"Last Name", "lastname"}, Field{"Grouping", "grouping"},
    Field{"City", "city"},        Field{"State", "state"},        Field{"Zip", "zip"},
    Field{"Birthday", "bdate"},
};

}  // namespace

const std::vector<std::string_view>& ClientSortFields() {
    static const std::vector<std::string_view> names = [] {
        std::vector<std::string_view> all;
        for (const Field& field : kFields) {
            all.push_back(field.name);
        }
        return all;
    }();
    return names;
}

ClientOrder OrderOf(const std::vector<SortField>& chosen) {
    std::vector<std::string> columns;
    std::vector<std::string> names;
    for (const SortField& each : chosen) {
        const auto* field = std::find_if(kFields.begin(), kFields.end(),
                                         [&](const Field& known) { return known.name == each.name; });
        if (field == kFields.end()) {
            throw std::out_of_range("no order by " + each.name);
        }
        const char* mark = each.descending ? " DESC " : "";
        columns.push_back(std::string(field->column) + mark);
        names.push_back(each.name + mark);
    }
    return {Join(columns, ","), Join(names, " and ")};
}

void KeepClientOrder(Session& session, const ClientOrder& order) {
    if (order.columns.empty()) {
        return;
    }
    session.settings.Set("CLIENT", "SORT", order.columns);
    session.settings.Set("CLIENT", "SORT_DESC", order.description);
    session.ClientSort = order.columns;
    session.ClientSortDescription = order.description;
}

}  // namespace kv
