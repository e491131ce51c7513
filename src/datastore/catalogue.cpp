#include "datastore/catalogue.h"

#include "base/text.h"

namespace kv {

std::optional<std::size_t> TableInfo::Find(std::string_view column) const {
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (EqualsNoCase(columns[i].name, column))
            return i;
    return std::nullopt;
}

std::optional<std::size_t> TableInfo::Counter() const {
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (columns[i].counter)
            return i;
    return std::nullopt;
}

ValueType FieldType(ColumnType type) {
    switch (type) {
        case ColumnType::Boolean:
            return ValueType::Boolean;
        case ColumnType::Short:
        case ColumnType::Long:
            return ValueType::Integer;
        case ColumnType::Double:
            return ValueType::Double;
        case ColumnType::Currency:
            return ValueType::Currency;
        case ColumnType::DateTime:
            return ValueType::Date;
        case ColumnType::Text:
        case ColumnType::Memo:
            return ValueType::Text;
    }
    return ValueType::Null;
}

void Catalogue::Add(TableInfo table) {
    const auto [place, added] = tables_.try_emplace(Lower(table.name));
    if (added)
        names_.push_back(table.name);
    place->second = std::move(table);
}

const TableInfo* Catalogue::Find(std::string_view table) const {
    const auto found = tables_.find(Lower(table));
    return found == tables_.end() ? nullptr : &found->second;
}

}  // namespace kv
