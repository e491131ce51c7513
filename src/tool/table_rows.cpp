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

const TableInfo& FindTable(const Database& database, std::string_view name) {
    if (name.size() > 1 && name.front() == '[' && name.back() == ']')
        name = name.substr(1, name.size() - 2);
    const TableInfo* table = database.Tables().Find(name);
    if (table == nullptr)
        throw EngineError(engine_error::kTableNotFound, "The table " + std::string(name) + " is not in " +
                                                            database.Path().filename().string());
    return *table;
}

std::string RowsInKeyOrder(const TableInfo& table, const std::vector<std::string>& columns) {
    std::string statement =
        "select " + (columns.empty() ? "*" : BracketedList(columns)) + " from " + Bracketed(table.name);
    for (const IndexInfo& index : table.indexes)
        if (index.primary)
            return statement + " order by " + BracketedList(index.columns);
    return statement;
}

RowWriter::RowWriter(Database& database, const TableInfo& table, const std::vector<std::size_t>& columns)
    : database_(database),
      table_(table),
      columns_(columns),
      rows_(database.OpenRecordset("select * from " + Bracketed(table.name) + " where 1 = 0")) {}

void RowWriter::Begin() {
    rows_.AddNew();
}

void RowWriter::Set(std::size_t i, Value value) {
    const std::size_t place = columns_[i];
    if (table_.columns[place].counter) {
        if (value.IsNull())
            return;  // the counter's own number stays
        highest_ = std::max(highest_, value.ToInteger());
    }
    rows_.Set(place, std::move(value));
}

void RowWriter::Write() {
    rows_.Update();
}

void RowWriter::Finish() {
    rows_.Close();
    const auto counter = table_.Counter();
    if (highest_ > 0 && counter) {
        const Value most = database_.Lookup("select max(" + Bracketed(table_.columns[*counter].name) +
                                            ") from " + Bracketed(table_.name));
        database_.SetNextCounter(table_.name, most.ToInteger() + 1);
    }
}

}  // namespace kv::tool
