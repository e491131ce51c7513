#include "datastore/engine/postgres/pg_open.h"

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"
#include "datastore/engine/postgres/pg_connection.h"
#include "datastore/engine/postgres/pg_drop.h"
#include "datastore/engine/postgres/pg_generator.h"
#include "datastore/engine/postgres/pg_schema.h"
#include "datastore/engine/postgres/pg_values.h"
#include "datastore/engine/run_action.h"
#include "datastore/schema.h"

namespace kv {

const char* EmbeddedText(std::string_view name);

namespace postgres {
namespace {

/// Two programs that set up one server at once do it one behind the other.
constexpr const char* kSetUpTurn = "SELECT pg_advisory_xact_lock(7310579021)";
constexpr const char* kSetUpBusy = "SET LOCAL lock_timeout TO '60s'";
constexpr const char* kDatabases =
    "CREATE TABLE kv.databases (name text PRIMARY KEY, schema_version integer NOT NULL)";

std::string Schema(std::string_view name) {
    return Generator::Quoted(Lower(name));
}

bool HasSchema(Link& link, const std::string& name) {
    const Value values[] = {Lower(name)};
    const Result result = link.Read("SELECT 1 FROM pg_namespace WHERE nspname = $1::text", values);
    return PQntuples(result.get()) > 0;
}

/// The version of a database of this program; nothing for what is none.
std::optional<std::int64_t> VersionOf(Link& link, const std::string& name) {
    const Result table =
        link.Read("SELECT to_regclass('kv.databases') IS NOT NULL AND has_schema_privilege('kv', 'USAGE')");
    const bool there = *PQgetvalue(table.get(), 0, 0) != 0;
    if (!there)
        return std::nullopt;
    const Value values[] = {Lower(name)};
    const Result result = link.Read("SELECT schema_version FROM kv.databases WHERE name = $1::text", values);
    if (PQntuples(result.get()) == 0)
        return std::nullopt;
    return WholeAt(result.get(), 0, 0);
}

/// The version of the program's functions that the server has; 0 where that is not known.
std::int64_t ServersFunctions(Link& link) {
    const Result remark = link.Read("SELECT obj_description(to_regnamespace('kv'), 'pg_namespace')");
    return static_cast<std::int64_t>(Val(TextAt(remark.get(), 0, 0)));
}

/// One schema with the functions serves all databases of the server.
void SetUpServer(Link& link) {
    link.Run(kSetUpBusy);
    link.Read(kSetUpTurn);
    const bool isNew = !HasSchema(link, "kv");
    if (isNew)
        link.Run(fmt::format("CREATE SCHEMA kv; {}", kDatabases));
    if (isNew || ServersFunctions(link) < FunctionsVersion()) {
        link.Run(EmbeddedText("functions.sql"));
        link.Run(fmt::format("COMMENT ON SCHEMA kv IS {}", Quoted(std::to_string(FunctionsVersion()))));
    }
}

/// An update of this program may bring newer ones than the server has.
void RenewFunctions(Link& link) {
    if (ServersFunctions(link) >= FunctionsVersion())
        return;
    link.BeginTransaction();
    try {
        SetUpServer(link);
        link.CommitTransaction();
    } catch (const EngineError& error) {
        link.RollbackTransaction();
        throw EngineError(
            error.Number(),
            fmt::format("The database server has older functions of this program, and this user "
                        "can't renew them. Please let the user to whom the database belongs "
                        "start the program once. {}",
                        error.Description()));
    }
}

[[noreturn]] void FailMissing(const std::string& schema) {
    throw EngineError(engine_error::kFileNotFound,
                      fmt::format("The database server holds no database '{}' of this program. 'kvtool init' "
                                  "makes an empty one, 'kvtool copy' brings one there.",
                                  schema));
}

}  // namespace

std::int64_t FunctionsVersion() {
    constexpr std::string_view kMark = "-- version ";
    const std::string_view text = EmbeddedText("functions.sql");
    return static_cast<std::int64_t>(Val(text.substr(text.find(kMark) + kMark.size())));
}

void RequireSchema(Connection& connection) {
    Link& link = static_cast<PgConnection&>(connection).Server();
    const auto version = VersionOf(link, link.Schema());
    if (!version)
        FailMissing(link.Schema());
    if (*version < kSchemaVersion)
        throw EngineError(
            engine_error::kUnrecognizedFormat,
            fmt::format("The database '{}' of the server is of an older version of this program. "
                        "'kvtool copy' makes a copy in the present form.",
                        link.Schema()));
    if (*version > kSchemaVersion)
        throw EngineError(
            engine_error::kUnrecognizedFormat,
            fmt::format("The database '{}' of the server is of a newer version of this program. "
                        "Please update the program on this computer.",
                        link.Schema()));
}

std::shared_ptr<Connection> Open(const std::string& server, const std::string& schema, SchemaCheck check) {
    auto connection = std::make_shared<PgConnection>(server, Lower(schema));
    if (!VersionOf(connection->Server(), schema))
        FailMissing(schema);
    if (check == SchemaCheck::Required)
        RequireSchema(*connection);
    RenewFunctions(connection->Server());
    return connection;
}

void Create(const std::string& server, const std::string& schema,
            const std::vector<std::string>& statements) {
    PgConnection connection(server, Lower(schema));
    Link& link = connection.Server();
    WriteStep step(connection);
    SetUpServer(link);
    if (HasSchema(link, schema))
        throw EngineError(engine_error::kDatabaseExists,
                          fmt::format("The database server holds '{}' already.", schema));
    link.Run("CREATE SCHEMA " + Schema(schema));
    link.Run("CREATE SCHEMA " + Schema(ViewsOf(schema)));
    for (const std::string& statement : statements)
        RunAction(connection, statement);
    const Value values[] = {Lower(schema), kSchemaVersion};
    link.Write("INSERT INTO kv.databases (name, schema_version) VALUES ($1, $2)", values);
    step.Finish();
}

bool Exists(const std::string& server, const std::string& schema) {
    Link link(server, "pg_catalog");
    return VersionOf(link, schema).has_value();
}

void Drop(const std::string& server, const std::string& schema) {
    Link link(server, "pg_catalog");
    link.BeginTransaction();
    MoveAll(link, {{schema, ""}}, {});
    link.CommitTransaction();
}

void MoveAll(Link& link, const std::vector<std::pair<std::string, std::string>>& moves,
             const TableLook& look) {
    link.Read(kSetUpTurn);
    std::vector<std::string> going;
    for (const auto& [from, to] : moves)
        if (const std::string& name = to.empty() ? from : to; VersionOf(link, name))
            going.push_back(name);
    for (const std::string& name : going)
        if (look)
            HoldTables(link, name, look);
    for (const std::string& name : going) {
        DropSchema(link, name);
        const Value values[] = {Lower(name)};
        link.Write("DELETE FROM kv.databases WHERE name = $1::text", values);
    }
    for (const auto& [from, to] : moves) {
        if (to.empty())
            continue;
        link.Run(fmt::format("ALTER SCHEMA {} RENAME TO {}", Schema(from), Schema(to)));
        link.Run(fmt::format("ALTER SCHEMA {} RENAME TO {}", Schema(ViewsOf(from)), Schema(ViewsOf(to))));
        const Value values[] = {Lower(from), Lower(to)};
        link.Write("UPDATE kv.databases SET name = $2::text WHERE name = $1::text", values);
    }
}

}  // namespace postgres
}  // namespace kv
