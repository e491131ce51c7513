#include "tool/check_findings.h"

#include <algorithm>

#include "base/format.h"
#include "datastore/schema.h"

namespace kv::tool {

bool OpenDatabases::Has(std::string_view name, std::string_view table, std::string_view column) const {
    const TableInfo* info = Has(name) ? At(name).Tables().Find(table) : nullptr;
    return info != nullptr && info->Find(column);
}

bool OpenDatabases::HasWhole(std::string_view name, std::string_view table) const {
    const TableInfo* wanted = SchemaTables(name).Find(table);
    return wanted != nullptr &&
           std::all_of(wanted->columns.begin(), wanted->columns.end(),
                       [&](const ColumnInfo& column) { return Has(name, table, column.name); });
}

std::string DayWords(const Value& date) {
    return date.IsNull() ? "no day" : FormatDate(date.ToDate(), "yyyy-mm-dd");
}

}  // namespace kv::tool
