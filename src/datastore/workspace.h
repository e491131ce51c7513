#pragma once
#include <concepts>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "datastore/catalogue.h"
#include "datastore/engine_error.h"
#include "datastore/recordset.h"
#include "datastore/sql.h"

namespace kv {

class Connection;  // an engine's own, below datastore/

/// Holds one view of a database and one shared lock while a routine looks up much; it ends before anything
/// waits for the operator. Spans nest. A write inside a span is allowed: it refreshes the view.
class ReadSpan {
  public:
    explicit ReadSpan(Connection& connection);
    ~ReadSpan();
    ReadSpan(ReadSpan&&) noexcept;
    ReadSpan(const ReadSpan&) = delete;
    ReadSpan& operator=(const ReadSpan&) = delete;

  private:
    Connection* connection_;
};

/// All or nothing. One within another belongs to it: its writes are stored with the outer one's, and where it
/// is not committed the outer one can't be either. Nothing within one waits for the operator, since every
/// other seat that writes waits for it.
class Transaction {
  public:
    explicit Transaction(Connection& connection);
    ~Transaction();  ///< Rolls back what was not committed.
    Transaction(Transaction&& other) noexcept;
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    /// Throws EngineError where the store can't take it all; nothing of it is stored then. 3219 where an
    /// inner one was not committed.
    void Commit();

  private:
    Connection* connection_;
    bool outer_;
};

/// Where a database lies: a file, or a schema of a database server.
struct DatabasePlace {
    template <typename Path>
    // It takes what is a path and nothing else. NOLINTNEXTLINE(bugprone-forwarding-reference-overload)
    requires std::convertible_to<Path, std::filesystem::path> DatabasePlace(Path&& path)
        : file(std::forward<Path>(path)) {}
    /// `connection`: a connection string of the server's library, without a password.
    DatabasePlace(std::string connection, std::string schemaName)
        : server(std::move(connection)), schema(std::move(schemaName)) {}

    std::filesystem::path file;
    std::string server;  ///< empty for a file
    std::string schema;
};

/// An open database. Handles to one path share what the engine needs; each is closed by its opener.
class Database {
  public:
    explicit Database(std::shared_ptr<Connection> connection);
    ~Database();

    /// Opens a query's rows, or a whole table by its name, on its first row.
    Recordset OpenRecordset(std::string_view sqlOrTable, RecordsetType type = RecordsetType::Dynaset);
    /// Runs one statement without a result; returns how many rows it touched.
    long Execute(std::string_view sql);
    /// The first field of the first row, or Null without rows.
    Value Lookup(std::string_view sql);

    const Catalogue& Tables() const;
    /// What messages call it: the file's name, or the schema's.
    std::string Name() const;
    ReadSpan BeginRead();
    Transaction BeginTransaction();
    /// The open transaction is about to edit the rows with these counters: where several seats write at once
    /// they are taken for it together and stay so until its end, so that transactions that reserve the same
    /// rows come one behind the other. Rows are to be read after it. 3251 for a table without a counter, 3260
    /// where another transaction keeps some of them for seconds.
    void ReserveRows(std::string_view table, const std::vector<long>& counters);
    /// A number that changes whenever this or another program has written to the database; a quarter of a
    /// second later where a server does not tell what other seats write.
    std::int64_t ChangeStamp() const;
    /// The engine's own test of its file: one line per fault, empty when sound.
    std::vector<std::string> CheckIntegrity();
    /// To be called when many rows were loaded, outside a transaction: the engine then finds its way through
    /// them.
    void LearnTables();
    /// The counter that the next AddNew of the table hands out. 3251 for a table without one.
    std::int64_t NextCounter(std::string_view table);
    /// Sets it, after rows with given counters were loaded.
    void SetNextCounter(std::string_view table, std::int64_t next);
    Connection& Engine() { return *connection_; }

  private:
    std::shared_ptr<Connection> connection_;
};

using DatabasePtr = std::shared_ptr<Database>;

enum class SchemaCheck { Required, Ignored };

/// Opens databases and makes new ones.
class Workspace {
  public:
    Workspace();
    ~Workspace();

    /// Shared, read-write; a file's name is matched without regard to case, "\\" and "/" are alike. Throws
    /// EngineError with words for the operator: 3024 no such file or schema, 3051 it can't be opened or
    /// written, 3151 the server can't be reached, 3343 it is no database, an Access file, or one of another
    /// schema version (not looked at with SchemaCheck::Ignored).
    DatabasePtr OpenDatabase(const DatabasePlace& place, SchemaCheck check = SchemaCheck::Required);
    /// Makes an empty database from a script of CREATE statements separated by semicolons (lines that begin
    /// with -- are remarks), whole or not at all. 3204 when it exists.
    DatabasePtr CreateDatabase(const DatabasePlace& place, std::string_view script);
    /// Whether there is a file, or a schema of this program. Throws 3151 where the server can't be reached.
    static bool HasDatabase(const DatabasePlace& place);
    /// Takes a schema of this program, or a file with all that lies beside it, away. Nobody has it open.
    static void DropDatabase(const DatabasePlace& place);
    /// What now() and date() answer in the statements of databases opened from now on; the system's time
    /// without it.
    void SetClock(std::function<Date()> now);
    /// How other seats are told of this one when they find a row in its hands: for all databases that are
    /// open and those opened from now on. Throws EngineError.
    void SetSeat(const std::string& seat);

  private:
    struct Connections;
    std::unique_ptr<Connections> connections_;
};

}  // namespace kv
