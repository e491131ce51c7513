#include "session/login_limits.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/text.h"
#include "datastore/schema.h"

namespace kv {
namespace {

struct WrittenColumn {
    std::string_view database;
    std::string_view table;
    std::string_view column;
};

/// A value of the login and every column that it is written to.
struct LoginValue {
    std::string_view key;
    std::string Session::*field;
    std::string_view words;
    std::vector<WrittenColumn> columns;
};

const std::vector<LoginValue>& LoginValues() {
    static const std::vector<LoginValue> kValues = {
        {"User",
         &Session::User,
         "user",
         {{"kestrava", "changes", "User"},
          {"kestrava", "ClientPR", "User_Id"},
          {"kestrava", "logging", "log_emp"},
          {"kestrava", "tasks", "UserID"},
          {"kestrava", "tasks", "assigned"},
          {"kestrava", "sch_day", "edited_by"}}},
        {"VENDOR",
         &Session::VENDOR,
         "vendor code",
         {{"kestrava", "ClientPR", "vendor"},
          {"kestrava", "Authorizations", "vendor"},
          {"kestrava", "assign", "vendor"},
          {"kestrava", "sch_day", "vendor"},
          {"main", "hkeylonglat", "branchid"}}},
        {"Manager",
         &Session::Manager,
         "manager code",
         {{"kestrava", "ClientPR", "MANAGER"}, {"kestrava", "sch_day", "Manager"}}},
    };
    return kValues;
}

int WidthOf(const WrittenColumn& column) {
    const TableInfo& table = *SchemaTables(column.database).Find(column.table);
    return table.columns[table.Find(column.column).value()].size;
}

int NarrowestOf(const LoginValue& value) {
    std::vector<int> widths;
    std::transform(value.columns.begin(), value.columns.end(), std::back_inserter(widths), WidthOf);
    return *std::min_element(widths.begin(), widths.end());
}

}  // namespace

std::optional<int> LoginLimit(std::string_view key) {
    for (const LoginValue& value : LoginValues())
        if (EqualsNoCase(value.key, key))
            return NarrowestOf(value);
    return std::nullopt;
}

void CheckLogin(const Session& session) {
    for (const LoginValue& value : LoginValues()) {
        const std::size_t length = Length(session.*value.field);
        const int most = NarrowestOf(value);
        if (length > static_cast<std::size_t>(most))
            throw LoginTooLong(
                fmt::format("The login's {} is {} characters long, and at most {} can be "
                            "stored. Please log in again with a shorter one.",
                            value.words, length, most));
    }
}

}  // namespace kv
