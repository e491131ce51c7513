#include "tool/table_rows.h"

#include "base/text.h"

namespace kv::tool {

std::string Bracketed(std::string_view name) {
    return "[" + std::string(name) + "]";
}

std::string BracketedList(const std::vector<std::string>& names) {
    std::vector<std::string> bracketed;
    for (const std::string& name : names)
        bracketed.push_back(Bracketed(name));
    return Join(bracketed, ", ");
}

TableInfo FindTable(const Database& database, std::string_view name) {
    if (name.size() > 1 && name.front() == '[' && name.back() == ']')
        name = name.substr(1, name.size() - 2);
    const TableInfo* table = database.Tables().Find(name);
    if (table == nullptr)
        throw EngineError(engine_error::kTableNotFound,
                          "The table " + std::string(name) + " is not in " + database.Name());
    return *table;
}

std::string AllRows(const TableInfo& table, const std::vector<std::string>& columns) {
    return "select " + BracketedList(columns) + " from " + Bracketed(table.name);
}

std::string RowsInKeyOrder(const TableInfo& table) {
    std::string statement = "select * from " + Bracketed(table.name);
    for (const IndexInfo& index : table.indexes)
        if (index.primary)
            return statement + " order by " + BracketedList(index.columns);
    return statement;
}

RowWriter::RowWriter(Database& database, TableInfo table, std::vector<std::size_t> columns)
    : table_(std::move(table)),
      columns_(std::move(columns)),
      rows_(database.OpenRecordset("select * from " + Bracketed(table_.name) + " where 1 = 0")) {}

void RowWriter::Set(std::size_t i, Value value) {
    const std::size_t place = columns_[i];
    if (!table_.columns[place].counter || !value.IsNull())
        rows_.Set(place, std::move(value));
}

}  // namespace kv::tool
