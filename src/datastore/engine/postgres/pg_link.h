#pragma once
#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <libpq-fe.h>

#include "datastore/engine/postgres/pg_errors.h"
#include "datastore/engine/postgres/pg_values.h"
#include "datastore/value.h"

namespace kv::postgres {

struct Clear {
    void operator()(PGresult* result) const { PQclear(result); }
};
using Result = std::unique_ptr<PGresult, Clear>;

/// One connection to the server, on one schema. It is made again when it was lost: a statement that only
/// reads is then repeated, so that the operator notices nothing where the server is there again; a change
/// never is. Every failure leaves as an EngineError.
class Link {
  public:
    /// `server`: a connection string of the library. Connects.
    Link(std::string server, std::string schema);
    ~Link();
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;

    /// Runs a statement that only reads; results are in the server's binary form.
    Result Read(const std::string& sql, std::span<const Value> values = {});
    /// Runs a statement that writes rows. Where it fails within a transaction it alone is undone.
    Result Write(const std::string& sql, std::span<const Value> values = {});
    /// Writes one row within a transaction, one that the server can't refuse, without waiting for it: the
    /// next statement is the one that tells of a failure, or that there is no such row any more. The
    /// transaction has failed then.
    void WriteLater(const std::string& sql, std::span<const Value> values);
    /// Many rows at once, within a transaction, that the server can't refuse either.
    void CopyIn(const std::string& sql, std::string_view rows);
    /// The open transaction can't be committed any more; it fails with that error.
    void Break(const EngineError& error);
    /// Runs a function that changes something beside the rows: a lock, a counter.
    Result Call(const std::string& sql, std::span<const Value> values = {});
    /// Runs texts without values or rows, one or several statements.
    void Run(const std::string& sql);

    /// Lets all prepared statements go, after the tables below them were changed.
    void ForgetAll();

    /// A view that stands still for the reads to come; it begins with the first of them. Ends before a write.
    void BeginView();
    void EndView() noexcept;

    void BeginTransaction();
    void CommitTransaction();
    void RollbackTransaction() noexcept;
    bool InTransaction() const { return inTransaction_; }

    /// Notices a connection that is gone and makes it again. Throws when it can't be made, or was lost within
    /// a transaction.
    void EnsureAlive();
    bool IsAlive() { return !IsGone(); }
    /// How often the connection was made: what the server kept for an earlier one (row locks, views) is gone.
    std::int64_t Epoch() const { return epoch_; }

    const std::string& Schema() const { return schema_; }

    /// The name of a connection that nobody has named.
    static constexpr const char* kUnnamed = "kvCli";
    /// What the server and other seats know this connection by.
    void SetName(const std::string& name);

    /// Spells the names that failures tell; by default as the server does.
    Speller spelled = [](const std::string&, const std::string& column) { return column; };

  private:
    enum class Kind { Read, Call, Write };
    struct Prepared {
        std::string sql;
        std::string name;
    };

    void Connect();
    void SetUp();
    void Close() noexcept;
    bool IsGone();
    [[noreturn]] void Lost(bool writing);
    /// The name of the prepared statement; empty for one that is not worth preparing.
    std::string NameOf(const std::string& sql);
    void Forget(const std::string& sql);
    Result Execute(const std::string& sql, std::span<const Value> values, Kind kind);
    Result ExecuteOnce(const std::string& sql, std::span<const Value> values, Kind kind);
    Result ExecuteAlone(const std::string& sql, std::span<const Value> values);
    Result ExecuteInTransaction(const std::string& sql, std::span<const Value> values);
    std::vector<Result> Synchronize();
    void Send(const std::string& sql, const std::string& name, const Bound& bound);
    std::vector<Result> Collect();
    void FlushLater();
    void RequireSound() const;
    Result Check(Result result, bool writing, bool guarded = false);
    void UndoFailed(bool guarded) noexcept;
    void SuspendView() noexcept;

    std::string server_;
    std::string name_ = kUnnamed;
    std::string schema_;
    PGconn* connection_ = nullptr;
    std::int64_t epoch_ = 0;
    bool inTransaction_ = false;
    bool viewWanted_ = false;
    bool inView_ = false;

    /// How many of the transaction's statements are on their way and not answered yet.
    std::size_t later_ = 0;
    /// Why the transaction can't be committed any more.
    std::optional<EngineError> broken_;

    using Entries = std::list<Prepared>;
    Entries prepared_;  // the one used last in front
    std::unordered_map<std::string_view, Entries::iterator> bySql_;
    std::int64_t names_ = 0;
};

}  // namespace kv::postgres
