#include "datastore/schema.h"

#include <map>

#include "base/text.h"
#include "datastore/dialect/lexer.h"
#include "datastore/dialect/parser.h"
#include "datastore/faults.h"
#include "datastore/script.h"

namespace kv {

/// Made by the build from data/schema.
const char* EmbeddedText(std::string_view name);

const std::vector<std::string>& SchemaNames() {
    static const std::vector<std::string> kNames = {"kestrava", "main", "archive", "trans", "tempassign"};
    return kNames;
}

std::string_view SchemaScript(std::string_view name) {
    const char* script = EmbeddedText(Lower(name) + ".sql");
    if (!script)
        throw faults::ItemNotFound(name);
    return script;
}

namespace {

Catalogue TablesOf(std::string_view script) {
    Catalogue tables;
    for (const std::string& text : SplitScript(script)) {
        dialect::Statement statement = dialect::ParseStatement(dialect::Lex(text));
        if (auto* create = std::get_if<dialect::CreateTable>(&statement)) {
            tables.Add(std::move(create->table));
        } else if (const auto* index = std::get_if<dialect::CreateIndex>(&statement)) {
            TableInfo table = *tables.Find(index->table);
            table.indexes.push_back(index->index);
            tables.Add(std::move(table));
        }
    }
    return tables;
}

}  // namespace

const Catalogue& SchemaTables(std::string_view name) {
    static const std::map<std::string, Catalogue> kTables = [] {
        std::map<std::string, Catalogue> all;
        for (const std::string& each : SchemaNames())
            all.emplace(each, TablesOf(SchemaScript(each)));
        return all;
    }();
    const auto found = kTables.find(Lower(name));
    if (found == kTables.end())
        throw faults::ItemNotFound(name);
    return found->second;
}

}  // namespace kv
