#include "clients/caregiver_find.h"

#include <array>
#include <utility>

#include "base/text.h"
#include "session/rights.h"

namespace kv {

namespace {

constexpr const char* kSelect =
    "SELECT EMP_ID, LASTNAME, FIRSTNAME, format(PHONE,'(###) ###-####'), SS, DEPT, T_CODE FROM EMPLOYEE";

using Entry = std::pair<std::string_view, std::string_view>;
constexpr std::array kFields = {Entry{"LAST NAME", "LASTNAME"}, Entry{"SSN", "SS"},
                                Entry{"TELEPHONE #", "format(PHONE,'(###) ###-####')"},
                                Entry{"CAREGIVER ID", "EMP_ID"}};
constexpr std::array kStatuses = {
    Entry{"All Caregivers", ""}, Entry{"Only Active Caregivers", "T_CODE = 'A'"},
    Entry{"Only InActive Caregivers", "T_CODE = 'I'"}, Entry{"Only Non-Active Caregivers", "T_CODE <> 'A'"}};

template <typename Entries>
std::string Behind(const Entries& entries, std::string_view item) {
    for (const Entry& entry : entries) {
        if (entry.first == item) {
            return std::string(entry.second);
        }
    }
    return {};
}

}  // namespace

std::vector<std::string> CaregiverFindFields(bool mayViewSsn) {
    return {"LAST NAME  ", mayViewSsn ? "SSN        " : "SSN - Hidden", "TELEPHONE #", "CAREGIVER ID"};
}

const std::vector<std::string_view>& CaregiverFindStatuses() {
    static const std::vector<std::string_view> items = [] {
        std::vector<std::string_view> all;
        for (const Entry& entry : kStatuses) {
            all.push_back(entry.first);
        }
        return all;
    }();
    return items;
}

bool MayViewCaregiverSsn(Session& session) {
    return CheckScreenAccess(session, "EMPS", false, "View Caregiver SSN", "Caregiver", "~");
}

std::string CaregiverFindStatement(const PickQuery& query) {
    std::vector<std::string> conditions;
    const std::string text = Trim(query.text);
    const std::string field = Behind(kFields, Trim(query.field));
    if (!text.empty() && !field.empty()) {
        conditions.push_back(Sql("left({},{}) = {}", Raw{field}, Length(text), text));
    }
    if (const std::string status = Behind(kStatuses, query.status); !status.empty()) {
        conditions.push_back(status);
    }
    if (!EqualsNoCase(query.group, "ALL")) {
        conditions.push_back(Sql("dept = {}", query.group));
    }
    const std::string where = conditions.empty() ? "" : " where " + Join(conditions, " and ");
    return kSelect + where + " order by lastname,firstname";
}

PickRows FindCaregivers(Session& session, const PickQuery& query) {
    return LoadPickRows(*session.dbMainWork, CaregiverFindStatement(query));
}

}  // namespace kv
