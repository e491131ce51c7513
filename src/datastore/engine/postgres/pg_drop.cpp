#include "datastore/engine/postgres/pg_drop.h"

#include <fmt/format.h>

#include "base/text.h"
#include "datastore/engine/generator.h"
#include "datastore/engine/postgres/pg_schema.h"
#include "datastore/engine/postgres/pg_values.h"

namespace kv::postgres {
namespace {

constexpr const char* kTables =
    "SELECT t.relname::text FROM pg_class AS t JOIN pg_namespace AS s ON s.oid = t.relnamespace "
    "WHERE s.nspname = $1::text AND t.relkind IN ('r', 'p') ORDER BY 1";
/// The views that go with the tables; one of another name is another program's.
constexpr const char* kViews =
    "SELECT v.relname::text FROM pg_class AS v JOIN pg_namespace AS s ON s.oid = v.relnamespace "
    "WHERE s.nspname = $2::text AND v.relkind = 'v' AND v.relname IN (SELECT t.relname FROM pg_class AS t "
    "JOIN pg_namespace AS o ON o.oid = t.relnamespace WHERE o.nspname = $1::text AND t.relkind IN ('r', "
    "'p'))";

std::vector<std::string> NamesOf(Link& link, const char* query, std::span<const Value> values) {
    const Result result = link.Read(query, values);
    std::vector<std::string> names;
    for (int row = 0; row < PQntuples(result.get()); ++row)
        names.push_back(TextAt(result.get(), row, 0));
    return names;
}

std::vector<std::string> TablesOf(Link& link, const std::string& schema) {
    const Value values[] = {Lower(schema)};
    return NamesOf(link, kTables, values);
}

std::string Place(const std::string& schema, const std::string& name) {
    return Generator::Quoted(Lower(schema)) + "." + Generator::Quoted(name);
}

/// "a.b, a.c"; none for no names.
std::string Places(const std::string& schema, const std::vector<std::string>& names) {
    std::vector<std::string> places;
    for (const std::string& name : names)
        places.push_back(Place(schema, name));
    return Join(places, ", ");
}

}  // namespace

void HoldTables(Link& link, const std::string& schema, const TableLook& look) {
    const std::vector<std::string> tables = TablesOf(link, schema);
    if (tables.empty())
        return;
    link.Run(fmt::format("LOCK TABLE {} IN ACCESS EXCLUSIVE MODE", Places(schema, tables)));
    for (const std::string& table : tables) {
        const Result rows = link.Read("SELECT count(*) FROM " + Place(schema, table));
        look(schema, table, static_cast<long>(WholeAt(rows.get(), 0, 0)));
    }
}

void DropSchema(Link& link, const std::string& schema) {
    const std::string viewSchema = ViewsOf(schema);
    const Value both[] = {Lower(schema), viewSchema};
    // Each kind in one statement, so that the order among them is no matter; the server names what else
    // stands upon them.
    if (const auto views = NamesOf(link, kViews, both); !views.empty())
        link.Run("DROP VIEW " + Places(viewSchema, views));
    if (const auto tables = TablesOf(link, schema); !tables.empty())
        link.Run("DROP TABLE " + Places(schema, tables));
    link.Run(
        fmt::format("DROP SCHEMA {}, {}", Generator::Quoted(Lower(schema)), Generator::Quoted(viewSchema)));
}

}  // namespace kv::postgres
