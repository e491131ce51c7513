#include "datastore/engine/run_action.h"

#include "datastore/engine/compiler.h"
#include "datastore/engine/connection.h"

namespace kv {
namespace {

std::int64_t CountRows(Connection& connection, const EngineSql& sql, std::span<const Value> literals) {
    const auto cursor = connection.Query(sql.text, ParameterValues(sql, literals, {}, connection.clock));
    cursor->Next();
    return cursor->Key(0);
}

long RunInsertWithCounters(Connection& connection, const CompiledChange& change,
                           std::span<const Value> literals) {
    WriteStep step(connection);
    const std::int64_t rows = change.count ? CountRows(connection, *change.count, literals) : 1;
    long added = 0;
    if (rows > 0) {
        const Value first = static_cast<long long>(connection.TakeCounters(*change.table, rows));
        const std::vector<Value> values =
            ParameterValues(change.sql, literals, {&first, 1}, connection.clock);
        added = connection.Change(*change.table, change.sql.text, values);
    }
    step.Finish();
    return added;
}

struct ActionRunner {
    Connection& connection;

    long operator()(const Ready<CompiledChange>& ready) const {
        const CompiledChange& change = *ready.statement;
        connection.AboutToWrite();
        if (change.takesCounter)
            return RunInsertWithCounters(connection, change, ready.literals);
        const std::vector<Value> values = ParameterValues(change.sql, ready.literals, {}, connection.clock);
        if (!change.givesCounter)
            return connection.Change(*change.table, change.sql.text, values);
        WriteStep step(connection);
        const long added = connection.Change(*change.table, change.sql.text, values);
        connection.RaiseCounter(*change.table);
        step.Finish();
        return added;
    }
    long operator()(const dialect::CreateTable& create) const {
        connection.CreateTable(create.table);
        return 0;
    }
    long operator()(const dialect::CreateIndex& create) const {
        connection.CreateIndex(create.table, create.index, create.descending);
        return 0;
    }
    long operator()(const dialect::DropTable& drop) const {
        connection.DropTable(drop.table);
        return 0;
    }
};

}  // namespace

long RunAction(Connection& connection, std::string_view sql) {
    return std::visit(ActionRunner{connection}, connection.Statements().CompileAction(sql));
}

}  // namespace kv
