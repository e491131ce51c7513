#include "datastore/engine/postgres/pg_link.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>
#include <poll.h>

#include "datastore/engine/postgres/pg_errors.h"
#include "datastore/engine/postgres/pg_values.h"
#include "datastore/faults.h"

namespace kv::postgres {
namespace {

constexpr std::size_t kMostPrepared = 256;
/// Statements as long as these are lists that hardly come twice.
constexpr std::size_t kLongestPrepared = 16384;

/// What every connection is set to: names are looked for in the database's own schema; a change waits a few
/// seconds for another seat's and is then told; the short statements of the rules are not worth compiling.
constexpr std::string_view kSettings =
    "SET search_path TO {0}; SET lock_timeout TO '5s'; SET jit TO off; SET TIME ZONE 'UTC'; "
    "SET standard_conforming_strings TO on; SET extra_float_digits TO 1; SET DateStyle TO ISO";

// Within a transaction a statement that may fail stands behind a savepoint, since the server would otherwise
// take the whole transaction for failed with it. They go over together.
constexpr const char* kGuard = "SAVEPOINT kv";
constexpr const char* kRelease = "RELEASE SAVEPOINT kv";
constexpr const char* kUndo = "ROLLBACK TO SAVEPOINT kv; RELEASE SAVEPOINT kv";

/// How many statements may be on their way without an answer.
constexpr std::size_t kMostLater = 1024;
/// After so many the server is given what it has not got yet, to work on it meanwhile.
constexpr std::size_t kPortion = 16;

bool Succeeded(const PGresult* result) {
    const ExecStatusType status = PQresultStatus(result);
    return status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK;
}

/// Another program changed the tables below a prepared statement.
bool IsStale(const PGresult* result) {
    const char* state = PQresultErrorField(result, PG_DIAG_SQLSTATE);
    return state && (std::string_view(state) == "0A000" || std::string_view(state) == "26000");
}

void Silence(void* /*nobody*/, const PGresult* /*notice*/) {}

}  // namespace

Link::Link(std::string server, std::string schema) : server_(std::move(server)), schema_(std::move(schema)) {
    Connect();
}

Link::~Link() {
    Close();
}

// ------------------------------------------------------------------------------------------------ connection

void Link::Close() noexcept {
    PQfinish(connection_);
    connection_ = nullptr;
    bySql_.clear();
    prepared_.clear();
    inView_ = false;
}

void Link::Connect() {
    Close();
    // What the connection string says wins, as it stands behind.
    const char* const keywords[] = {"application_name",
                                    "connect_timeout",
                                    "tcp_user_timeout",
                                    "keepalives_idle",
                                    "keepalives_interval",
                                    "keepalives_count",
                                    "client_encoding",
                                    "dbname",
                                    nullptr};
    const char* const values[] = {name_.c_str(), "5",    "10000",         "10",   "5",
                                  "3",           "UTF8", server_.c_str(), nullptr};
    connection_ = PQconnectdbParams(keywords, values, 1);
    if (PQstatus(connection_) != CONNECTION_OK) {
        const EngineError error = NotReached(PQerrorMessage(connection_));
        Close();
        throw EngineError(error);
    }
    PQsetNoticeReceiver(connection_, Silence, nullptr);
    ++epoch_;
    try {
        SetUp();
    } catch (...) {
        Close();
        throw;
    }
}

void Link::SetName(const std::string& name) {
    name_ = name;
    const Value values[] = {name};
    Call("SELECT set_config('application_name', $1, false)", values);
}

void Link::SetUp() {
    char* schema = PQescapeIdentifier(connection_, schema_.c_str(), schema_.size());
    const std::string sql = fmt::format(kSettings, schema);
    PQfreemem(schema);
    Check(Result(PQexec(connection_, sql.c_str())), false);
}

/// A server that went down has closed its end, which shows without asking it.
bool Link::IsGone() {
    if (!connection_ || PQstatus(connection_) != CONNECTION_OK)
        return true;
    // Its last words come before the end.
    pollfd socket{PQsocket(connection_), POLLIN, 0};
    while (poll(&socket, 1, 0) > 0)
        if (PQconsumeInput(connection_) == 0 || PQstatus(connection_) != CONNECTION_OK)
            return true;
    return false;
}

void Link::EnsureAlive() {
    if (!IsGone())
        return;
    if (inTransaction_)
        Lost(false);
    Connect();
}

void Link::Lost(bool writing) {
    const EngineError error =
        ConnectionLost(connection_ ? PQerrorMessage(connection_) : "no connection",
                       writing && !inTransaction_);  // before its end nothing of a transaction is saved
    Close();
    throw EngineError(error);
}

// ------------------------------------------------------------------------------------------------ statements

std::string Link::NameOf(const std::string& sql) {
    if (sql.size() > kLongestPrepared)
        return {};
    if (const auto found = bySql_.find(sql); found != bySql_.end()) {
        prepared_.splice(prepared_.begin(), prepared_, found->second);
        return found->second->name;
    }
    FlushLater();
    const std::string name = fmt::format("kv{}", ++names_);
    if (inTransaction_)
        Check(Result(PQexec(connection_, kGuard)), false);
    Result result(PQprepare(connection_, name.c_str(), sql.c_str(), 0, nullptr));
    if (PQstatus(connection_) != CONNECTION_OK)
        return {};  // found again, and told or mended, by the execution
    Check(std::move(result), false, inTransaction_);
    if (inTransaction_)
        Check(Result(PQexec(connection_, kRelease)), false);
    prepared_.push_front({sql, name});
    bySql_.emplace(prepared_.front().sql, prepared_.begin());
    if (prepared_.size() > kMostPrepared) {
        const std::string oldest = prepared_.back().sql;
        Forget(oldest);
    }
    return name;
}

void Link::Forget(const std::string& sql) {
    const auto found = bySql_.find(sql);
    if (found == bySql_.end())
        return;
    const auto entry = found->second;
    const Result result(PQexec(connection_, fmt::format("DEALLOCATE {}", entry->name).c_str()));
    bySql_.erase(found);
    prepared_.erase(entry);
}

void Link::Send(const std::string& sql, const std::string& name, const Bound& bound) {
    const int sent = name.empty() ? PQsendQueryParams(connection_, sql.c_str(), bound.Count(), nullptr,
                                                      bound.Pointers(), nullptr, nullptr, 1)
                                  : PQsendQueryPrepared(connection_, name.c_str(), bound.Count(),
                                                        bound.Pointers(), nullptr, nullptr, 1);
    if (sent == 0 && PQstatus(connection_) == CONNECTION_OK)
        broken_ = EngineError(engine_error::kReservedError, PQerrorMessage(connection_));
}

/// The results of all that was sent, in its order.
std::vector<Result> Link::Collect() {
    std::vector<Result> results;
    // Each statement's result is followed by a null one; that of the end stands last.
    while (PQstatus(connection_) == CONNECTION_OK) {
        Result result(PQgetResult(connection_));
        if (!result)
            continue;
        if (PQresultStatus(result.get()) == PGRES_PIPELINE_SYNC)
            break;
        results.push_back(std::move(result));
    }
    return results;
}

void Link::RequireSound() const {
    if (broken_)
        throw EngineError(*broken_);
}

/// Has all that is on its way answered; what came of the statements that are waited for.
std::vector<Result> Link::Synchronize() {
    if (PQpipelineSync(connection_) == 0)
        Lost(true);
    const std::size_t before = std::exchange(later_, 0);
    std::vector<Result> results = Collect();
    PQexitPipelineMode(connection_);
    RequireSound();
    const auto late = results.begin() + static_cast<std::ptrdiff_t>(std::min(before, results.size()));
    for (auto result = results.begin(); result != late; ++result) {
        // The first that failed tells why; those behind it were passed over for it.
        if (!Succeeded(result->get()))
            broken_ = ErrorOf(result->get(), spelled);
        else if (std::string_view(PQcmdTuples(result->get())) == "0")
            broken_ = faults::RecordDeleted();
        RequireSound();
    }
    results.erase(results.begin(), late);
    return results;
}

Result Link::ExecuteInTransaction(const std::string& sql, std::span<const Value> values) {
    RequireSound();
    const std::string name = NameOf(sql);
    const Bound bound(values);
    const Bound nothing({});
    PQenterPipelineMode(connection_);
    Send(kGuard, "", nothing);
    Send(sql, name, bound);
    Send(kRelease, "", nothing);
    std::vector<Result> results = Synchronize();
    constexpr std::size_t kAll = 3;
    if (results.size() < kAll)
        return nullptr;
    // A statement that went well is only then one of the transaction when its guards did, too.
    if (!Succeeded(results[0].get()))
        broken_ = ErrorOf(results[0].get(), spelled);
    else if (Succeeded(results[1].get()) && !Succeeded(results[2].get()))
        broken_ = ErrorOf(results[2].get(), spelled);
    RequireSound();
    return std::move(results[1]);
}

void Link::FlushLater() {
    if (later_ > 0)
        Synchronize();
    if (PQstatus(connection_) != CONNECTION_OK)
        Lost(true);
}

Result Link::ExecuteAlone(const std::string& sql, std::span<const Value> values) {
    const std::string name = NameOf(sql);
    const Bound bound(values);
    if (name.empty())
        return Result(PQexecParams(connection_, sql.c_str(), bound.Count(), nullptr, bound.Pointers(),
                                   nullptr, nullptr, 1));
    return Result(
        PQexecPrepared(connection_, name.c_str(), bound.Count(), bound.Pointers(), nullptr, nullptr, 1));
}

Result Link::ExecuteOnce(const std::string& sql, std::span<const Value> values, Kind kind) {
    if (inTransaction_)
        return ExecuteInTransaction(sql, values);
    if (viewWanted_ && !inView_ && kind == Kind::Read) {
        Result begun(PQexec(connection_, "BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"));
        if (PQstatus(connection_) != CONNECTION_OK)
            return nullptr;
        Check(std::move(begun), false);
        inView_ = true;
    }
    return ExecuteAlone(sql, values);
}

Result Link::Check(Result result, bool writing, bool guarded) {
    if (PQstatus(connection_) != CONNECTION_OK)
        Lost(writing);
    if (result && Succeeded(result.get()))
        return result;
    const EngineError error = result ? ErrorOf(result.get(), spelled)
                                     : EngineError(engine_error::kReservedError, PQerrorMessage(connection_));
    if (inTransaction_ && !guarded)
        broken_ = error;
    UndoFailed(guarded);
    throw EngineError(error);
}

/// After a failure the server takes nothing more until it is undone.
void Link::UndoFailed(bool guarded) noexcept {
    if (inTransaction_ && guarded)
        Result(PQexec(connection_, kUndo));
    else if (inView_)
        Result(PQexec(connection_, "ROLLBACK"));
    inView_ = false;
}

Result Link::Execute(const std::string& sql, std::span<const Value> values, Kind kind) {
    EnsureAlive();
    if (kind != Kind::Read)
        SuspendView();
    // A view that others have looked through already can't be had a second time.
    const bool repeatable = kind == Kind::Read && !inTransaction_ && !inView_;
    Result result = ExecuteOnce(sql, values, kind);
    const bool broken = PQstatus(connection_) != CONNECTION_OK;
    if (broken && repeatable) {
        Connect();
        result = ExecuteOnce(sql, values, kind);
    } else if (!broken && result && IsStale(result.get())) {
        UndoFailed(inTransaction_);
        Forget(sql);
        result = ExecuteOnce(sql, values, kind);
    }
    return Check(std::move(result), kind == Kind::Write, inTransaction_);
}

Result Link::Read(const std::string& sql, std::span<const Value> values) {
    return Execute(sql, values, Kind::Read);
}

Result Link::Write(const std::string& sql, std::span<const Value> values) {
    return Execute(sql, values, Kind::Write);
}

void Link::WriteLater(const std::string& sql, std::span<const Value> values) {
    RequireSound();
    const std::string name = NameOf(sql);
    const Bound bound(values);
    PQenterPipelineMode(connection_);
    Send(sql, name, bound);
    RequireSound();
    if (++later_ % kPortion == 0)
        PQflush(connection_);
    if (later_ >= kMostLater)
        FlushLater();
}

void Link::CopyIn(const std::string& sql, std::string_view rows) {
    RequireSound();
    FlushLater();
    Result result(PQexec(connection_, sql.c_str()));
    if (PQresultStatus(result.get()) == PGRES_COPY_IN) {
        const bool sent = PQputCopyData(connection_, rows.data(), static_cast<int>(rows.size())) == 1;
        PQputCopyEnd(connection_, sent ? nullptr : "the rows could not be sent");
        result.reset(PQgetResult(connection_));
        while (Result(PQgetResult(connection_)) != nullptr) {
        }
    }
    Check(std::move(result), true);
}

void Link::Break(const EngineError& error) {
    if (inTransaction_ && !broken_)
        broken_ = error;
}

Result Link::Call(const std::string& sql, std::span<const Value> values) {
    return Execute(sql, values, Kind::Call);
}

void Link::ForgetAll() {
    Check(Result(PQexec(connection_, "DEALLOCATE ALL")), false);
    bySql_.clear();
    prepared_.clear();
}

void Link::Run(const std::string& sql) {
    EnsureAlive();
    SuspendView();
    RequireSound();
    if (inTransaction_) {
        FlushLater();
        Check(Result(PQexec(connection_, kGuard)), true);
    }
    Check(Result(PQexec(connection_, sql.c_str())), true, inTransaction_);
    if (inTransaction_)
        Check(Result(PQexec(connection_, kRelease)), true);
}

// -------------------------------------------------------------------------------------- views, transactions

void Link::BeginView() {
    viewWanted_ = true;
}

void Link::EndView() noexcept {
    viewWanted_ = false;
    SuspendView();
}

/// Ends the server's part; the next read begins it anew while it is wanted.
void Link::SuspendView() noexcept {
    if (inView_ && connection_)
        Result(PQexec(connection_, "COMMIT"));  // a view that only read can always be let go
    inView_ = false;
}

void Link::BeginTransaction() {
    if (inTransaction_)
        throw faults::NotSupported("a transaction inside another");
    EnsureAlive();
    SuspendView();
    Check(Result(PQexec(connection_, "BEGIN")), false);
    inTransaction_ = true;
    broken_.reset();
}

void Link::CommitTransaction() {
    RequireSound();
    FlushLater();
    Result ended(PQexec(connection_, "COMMIT"));
    inTransaction_ = false;
    ended = Check(std::move(ended), true);
    // A transaction that failed without anybody's knowledge is undone by it, and says so here alone.
    if (std::string_view(PQcmdStatus(ended.get())) != "COMMIT")
        throw EngineError(engine_error::kReservedError,
                          "The database server undid the change instead of saving it. Please try again.");
}

void Link::RollbackTransaction() noexcept {
    if (PQpipelineStatus(connection_) != PQ_PIPELINE_OFF) {
        // What is on its way is answered first; whether it failed is all one now.
        if (PQpipelineSync(connection_) == 1)
            Collect();
        PQexitPipelineMode(connection_);
    }
    if (connection_)
        Result(PQexec(connection_, "ROLLBACK"));
    inTransaction_ = false;
    later_ = 0;
    broken_.reset();
}

}  // namespace kv::postgres
