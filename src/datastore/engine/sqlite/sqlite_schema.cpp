#include "datastore/engine/sqlite/sqlite_schema.h"

#include <array>
#include <map>
#include <memory>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"
#include "datastore/convert.h"
#include "datastore/engine/generator.h"
#include "datastore/engine/sqlite/sqlite_errors.h"
#include "datastore/engine/sqlite/sqlite_generator.h"
#include "datastore/engine/sqlite/sqlite_statement.h"

namespace kv::sqlite {
namespace {

struct TypeName {
    ColumnType type;
    std::string_view name;
};

constexpr std::array kTypes = {
    TypeName{ColumnType::Boolean, "YESNO"},     TypeName{ColumnType::Short, "SHORT"},
    TypeName{ColumnType::Long, "LONG"},         TypeName{ColumnType::Double, "DOUBLE"},
    TypeName{ColumnType::Currency, "CURRENCY"}, TypeName{ColumnType::DateTime, "DATETIME"},
    TypeName{ColumnType::Memo, "MEMO TEXT"},    TypeName{ColumnType::Text, "TEXT"},
};

// Index names are one space for the whole file here, but each table's own in the dialect: "table:i:name", and
// ":p:" for the primary key's.
constexpr std::string_view kIndexMark = ":i:";
constexpr std::string_view kPrimaryMark = ":p:";
constexpr std::string_view kCounterIndex = "PrimaryKey";

std::string DeclaredType(const ColumnInfo& column) {
    for (const TypeName& entry : kTypes)
        if (entry.type == column.type)
            return column.size > 0 ? fmt::format("{}({})", entry.name, column.size) : std::string(entry.name);
    return {};
}

std::string ColumnSql(const ColumnInfo& column) {
    if (column.counter)
        return Generator::Quoted(column.name) + " INTEGER PRIMARY KEY";
    std::string sql = Generator::Quoted(column.name) + " " + DeclaredType(column);
    if (column.type == ColumnType::Text || column.type == ColumnType::Memo)
        sql += " COLLATE KVTEXT";
    if (column.required || column.type == ColumnType::Boolean)
        sql += " NOT NULL";
    if (!column.defaultValue.IsNull())
        sql += " DEFAULT " + SqliteLiteral(column.defaultValue);
    return sql;
}

bool IsCounterKey(const TableInfo& table, const IndexInfo& index) {
    const auto counter = table.Counter();
    return counter && index.primary && index.columns.size() == 1 &&
           EqualsNoCase(index.columns.front(), table.columns[*counter].name);
}

// ------------------------------------------------------------------------------------------- reading the
// catalogue

/// Steps through a query that has no parameters.
template <typename Visit>
void EachRow(sqlite3* database, const char* sql, Visit visit) {
    sqlite3_stmt* handle = nullptr;
    const int result = sqlite3_prepare_v2(database, sql, -1, &handle, nullptr);
    const std::unique_ptr<sqlite3_stmt, Finalize> statement(handle);
    Check(result, database);
    while (Check(sqlite3_step(handle), database) == SQLITE_ROW)
        visit(handle);
}

std::string TextAt(sqlite3_stmt* row, int column) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
    return text ? text : "";
}

/// The column's type and size from what the file declares; foreign types count as memos.
void ReadType(std::string_view declared, ColumnInfo& column) {
    column.type = ColumnType::Memo;
    const std::size_t bracket = declared.find('(');
    if (bracket != std::string_view::npos)
        column.size = static_cast<int>(Val(declared.substr(bracket + 1)));
    for (const TypeName& entry : kTypes)
        if (EqualsNoCase(entry.name, declared.substr(0, bracket)))
            column.type = entry.type;
}

/// A default as the engine keeps it: the text of a literal.
Value ReadDefault(const std::string& text, const ColumnInfo& column) {
    if (text.empty() || EqualsNoCase(text, "NULL"))
        return {};
    if (text.front() == '\'')
        return ConvertToColumn(Value(ReplaceAll(text.substr(1, text.size() - 2), "''", "'")), column);
    return ConvertToColumn(Value(Val(text)), column);
}

ColumnInfo ReadColumn(sqlite3_stmt* row) {
    ColumnInfo column;
    column.name = TextAt(row, 1);
    column.counter = sqlite3_column_int(row, 5) != 0;
    if (column.counter) {
        column.type = ColumnType::Long;
        column.required = true;
        return column;
    }
    ReadType(TextAt(row, 2), column);
    column.required = sqlite3_column_int(row, 3) != 0 && column.type != ColumnType::Boolean;
    column.defaultValue = ReadDefault(TextAt(row, 4), column);
    return column;
}

constexpr const char* kColumnsQuery =
    "SELECT m.name, x.name, x.type, x.\"notnull\", x.dflt_value, x.pk FROM sqlite_master AS m "
    "JOIN pragma_table_xinfo(m.name) AS x "
    "WHERE m.type = 'table' AND m.name NOT GLOB 'kv[_]*' AND m.name NOT GLOB 'sqlite[_]*' ORDER BY m.rowid, "
    "x.cid";
constexpr const char* kIndexesQuery =
    "SELECT m.tbl_name, m.name, l.\"unique\", i.name FROM sqlite_master AS m "
    "JOIN pragma_index_list(m.tbl_name) AS l ON l.name = m.name JOIN pragma_index_info(m.name) AS i "
    "WHERE m.type = 'index' ORDER BY m.rowid, i.seqno";

void ReadIndexes(sqlite3* database, std::vector<TableInfo>& tables,
                 const std::map<std::string, std::size_t>& places) {
    std::string last;
    EachRow(database, kIndexesQuery, [&](sqlite3_stmt* row) {
        const auto place = places.find(TextAt(row, 0));
        if (place == places.end())
            return;
        TableInfo& table = tables[place->second];
        const std::string stored = TextAt(row, 1);
        if (stored != last) {
            IndexInfo index;
            const std::string_view behind =
                std::string_view(stored).substr(std::min(table.name.size(), stored.size()));
            index.primary = behind.substr(0, kPrimaryMark.size()) == kPrimaryMark;
            index.unique = sqlite3_column_int(row, 2) != 0;
            index.name = std::string(behind.substr(std::min(kIndexMark.size(), behind.size())));
            table.indexes.push_back(std::move(index));
            last = stored;
        }
        table.indexes.back().columns.push_back(TextAt(row, 3));
    });
}

/// A counter that is the key itself has no index of its own in the file.
void AddCounterKeys(std::vector<TableInfo>& tables) {
    for (TableInfo& table : tables) {
        const auto counter = table.Counter();
        bool primary = false;
        for (const IndexInfo& index : table.indexes)
            primary = primary || index.primary;
        if (counter && !primary)
            table.indexes.insert(table.indexes.begin(),
                                 {std::string(kCounterIndex), {table.columns[*counter].name}, true, true});
    }
}

}  // namespace

std::vector<std::string> CreateTableSql(const TableInfo& table) {
    std::vector<std::string> columns;
    if (!table.Counter())
        columns.push_back(fmt::format("{} INTEGER PRIMARY KEY AUTOINCREMENT", kKeyColumn));
    for (const ColumnInfo& column : table.columns)
        columns.push_back(ColumnSql(column));
    std::vector<std::string> sql = {
        fmt::format("CREATE TABLE {} (\n    {}\n)", Generator::Quoted(table.name), Join(columns, ",\n    "))};
    for (const IndexInfo& index : table.indexes)
        if (!IsCounterKey(table, index))
            sql.push_back(CreateIndexSql(table.name, index, {}));
    if (table.Counter())
        sql.push_back(
            fmt::format("INSERT INTO kv_counters (name, next) VALUES ({}, 1)", SqliteLiteral(table.name)));
    return sql;
}

std::string CreateIndexSql(const std::string& table, const IndexInfo& index,
                           const std::vector<bool>& descending) {
    std::vector<std::string> columns;
    for (std::size_t i = 0; i < index.columns.size(); ++i)
        columns.push_back(Generator::Quoted(index.columns[i]) +
                          (i < descending.size() && descending[i] ? " DESC" : ""));
    const std::string name = table + std::string(index.primary ? kPrimaryMark : kIndexMark) + index.name;
    return fmt::format("CREATE {}INDEX {} ON {} ({})", index.unique ? "UNIQUE " : "", Generator::Quoted(name),
                       Generator::Quoted(table), Join(columns, ", "));
}

std::vector<std::string> DropTableSql(const std::string& table) {
    return {"DROP TABLE " + Generator::Quoted(table),
            "DELETE FROM kv_counters WHERE name = " + SqliteLiteral(table)};
}

std::vector<std::string> FoundationSql() {
    return {"CREATE TABLE kv_counters (name TEXT NOT NULL PRIMARY KEY, next INTEGER NOT NULL) WITHOUT ROWID"};
}

Catalogue ReadCatalogue(sqlite3* database) {
    std::vector<TableInfo> tables;
    std::map<std::string, std::size_t> places;
    EachRow(database, kColumnsQuery, [&](sqlite3_stmt* row) {
        const std::string name = TextAt(row, 0);
        if (places.emplace(name, tables.size()).second)
            tables.push_back({name, {}, {}});
        if (TextAt(row, 1) != kKeyColumn)
            tables[places[name]].columns.push_back(ReadColumn(row));
    });
    ReadIndexes(database, tables, places);
    AddCounterKeys(tables);
    Catalogue catalogue;
    for (TableInfo& table : tables)
        catalogue.Add(std::move(table));
    return catalogue;
}

}  // namespace kv::sqlite
