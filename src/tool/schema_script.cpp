#include "tool/schema_script.h"

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"
#include "tool/table_rows.h"

namespace kv::tool {
namespace {

std::string DefaultWords(const Value& value) {
    switch (value.Type()) {
        case ValueType::Text:
            return "'" + ReplaceAll(value.ToText(), "'", "''") + "'";
        case ValueType::Date:
            return "#" + IsoText(value.ToDate()) + "#";
        default:
            return value.ToText();
    }
}

std::string ColumnWords(const ColumnInfo& column) {
    std::string words = Bracketed(column.name) + " " + TypeWords(column);
    if (column.required && !column.counter)
        words += " NOT NULL";
    if (!column.defaultValue.IsNull())
        words += " DEFAULT " + DefaultWords(column.defaultValue);
    return words;
}

}  // namespace

std::string TypeWords(const ColumnInfo& column) {
    if (column.counter)
        return "COUNTER";
    switch (column.type) {
        case ColumnType::Boolean:
            return "YESNO";
        case ColumnType::Short:
            return "SHORT";
        case ColumnType::Long:
            return "LONG";
        case ColumnType::Double:
            return "DOUBLE";
        case ColumnType::Currency:
            return "CURRENCY";
        case ColumnType::DateTime:
            return "DATETIME";
        case ColumnType::Memo:
            return "MEMO";
        case ColumnType::Text:
            break;
    }
    return column.size > 0 ? fmt::format("TEXT({})", column.size) : "TEXT";
}

std::vector<std::string> TableStatements(const TableInfo& table) {
    std::vector<std::string> lines;
    for (const ColumnInfo& column : table.columns)
        lines.push_back(ColumnWords(column));
    std::vector<std::string> statements(1);
    for (const IndexInfo& index : table.indexes) {
        if (index.primary)
            lines.push_back(fmt::format("CONSTRAINT {} PRIMARY KEY ({})", Bracketed(index.name),
                                        BracketedList(index.columns)));
        else
            statements.push_back(fmt::format("CREATE {}INDEX {} ON {} ({})", index.unique ? "UNIQUE " : "",
                                             Bracketed(index.name), Bracketed(table.name),
                                             BracketedList(index.columns)));
    }
    statements.front() = fmt::format("CREATE TABLE {} (\n{}\n)", Bracketed(table.name), Join(lines, ",\n"));
    return statements;
}

std::string TableScript(const TableInfo& table) {
    return Join(TableStatements(table), ";\n") + ";\n";
}

}  // namespace kv::tool
