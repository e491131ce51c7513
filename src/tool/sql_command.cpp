// sql: one statement of the store's dialect.
#include <memory>
#include <ostream>

#include "base/text.h"
#include "tool/cells.h"
#include "tool/command.h"

namespace kv::tool {
namespace {

bool IsQuery(std::string_view statement) {
    const std::size_t first = statement.find_first_not_of(" \t\r\n(");
    return first != std::string_view::npos && StartsWithNoCase(statement.substr(first), "select");
}

std::string JsonText(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

/// Large results are put together row by row as text; a tree of them would take many times their size.
std::string QueryResult(Database& database, const std::string& statement) {
    const ReadSpan span = database.BeginRead();
    Recordset rows = database.OpenRecordset(statement, RecordsetType::Snapshot);
    Json columns = Json::array();
    for (const FieldInfo& field : rows.Fields())
        columns.push_back(field.name);
    std::string text = R"({"columns":)" + JsonText(columns) + R"(,"rows":[)";
    for (bool first = true; !rows.Eof(); rows.MoveNext(), first = false) {
        Json row = Json::array();
        for (std::size_t i = 0; i < columns.size(); ++i)
            row.push_back(JsonValue(rows.Get(i)));
        text += (first ? "" : ",") + JsonText(row);
    }
    return text + "]}\n";
}

}  // namespace

Action PrepareSql(CLI::App& command) {
    struct Options {
        std::string database, statement;
    };
    auto options = std::make_shared<Options>();
    AddDatabaseOption(command, options->database);
    command.add_option("STATEMENT", options->statement, "One statement")->required();
    return [options](Context& context) {
        const DatabasePtr database = context.OpenDatabase(options->database);
        if (IsQuery(options->statement))
            context.out << QueryResult(*database, options->statement);
        else
            context.Print({{"affected", database->Execute(options->statement)}});
        return 0;
    };
}

}  // namespace kv::tool
