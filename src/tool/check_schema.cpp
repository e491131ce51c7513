#include "tool/check_schema.h"

#include <algorithm>

#include <fmt/format.h>

#include "datastore/schema.h"
#include "tool/schema_script.h"

namespace kv::tool {
namespace {

class SchemaFaults {
  public:
    explicit SchemaFaults(const std::string& database) : database_(database) {}

    Findings Of(const Database& database) {
        const Catalogue& schema = SchemaTables(database_);
        for (const std::string& name : schema.Names()) {
            if (const TableInfo* table = database.Tables().Find(name))
                Compare(*table, *schema.Find(name));
            else
                Add(fmt::format("the table {} is missing", name));
        }
        return std::move(found_);
    }

  private:
    void Add(std::string words) { found_.push_back({database_, std::move(words), {}}); }

    void Compare(const TableInfo& table, const TableInfo& wanted) {
        for (const ColumnInfo& column : wanted.columns)
            CheckColumn(table, column);
        for (const IndexInfo& index : wanted.indexes)
            CheckIndex(table, index);
    }

    void CheckColumn(const TableInfo& table, const ColumnInfo& wanted) {
        const auto place = table.Find(wanted.name);
        if (!place)
            Add(fmt::format("the column {}.{} is missing", table.name, wanted.name));
        else if (const std::string words = TypeWords(table.columns[*place]); words != TypeWords(wanted))
            Add(fmt::format("the column {}.{} is {} and not {}", table.name, wanted.name, words,
                            TypeWords(wanted)));
    }

    void CheckIndex(const TableInfo& table, const IndexInfo& wanted) {
        const auto same = [&](const IndexInfo& index) {
            return index.unique == wanted.unique &&
                   std::equal(index.columns.begin(), index.columns.end(), wanted.columns.begin(),
                              wanted.columns.end(),
                              [](const std::string& a, const std::string& b) { return EqualsNoCase(a, b); });
        };
        if (std::none_of(table.indexes.begin(), table.indexes.end(), same))
            Add(fmt::format("the {}index of {} by {} is missing", wanted.unique ? "unique " : "", table.name,
                            Join(wanted.columns, ", ")));
    }

    std::string database_;
    Findings found_;
};

}  // namespace

Findings FindSchemaFaults(const std::string& name, const Database& database) {
    return SchemaFaults(name).Of(database);
}

}  // namespace kv::tool
