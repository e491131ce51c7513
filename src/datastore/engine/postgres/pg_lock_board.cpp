#include "datastore/engine/postgres/pg_lock_board.h"

#include "datastore/engine_error.h"

namespace kv::postgres {
bool PgLockBoard::TryLock(std::uint64_t row) {
    kept_ = letGo_.erase(row) > 0;
    if (kept_)
        return true;
    const Value values[] = {static_cast<long long>(row)};
    const Result result = link_.Call("SELECT pg_try_advisory_lock($1::bigint)::integer", values);
    return WholeAt(result.get(), 0, 0) != 0;
}

void PgLockBoard::Unlock(std::uint64_t row) {
    letGo_.insert(row);
    if (!link_.InTransaction())
        Free();
}

std::string PgLockBoard::Holder(std::uint64_t row) {
    // A lock of 64 bits is listed by its two halves.
    const Value values[] = {static_cast<long long>(row)};
    const Result result = link_.Call(
        "SELECT coalesce(max(a.application_name), '') FROM pg_locks l JOIN pg_stat_activity a USING (pid) "
        "WHERE l.locktype = 'advisory' AND l.granted AND l.objsubid = 1 "
        "AND l.database = (SELECT oid FROM pg_database WHERE datname = current_database()) "
        "AND (l.classid::bigint << 32) + l.objid::bigint = $1::bigint",
        values);
    const std::string name = TextAt(result.get(), 0, 0);
    return name == Link::kUnnamed ? std::string() : name;
}

void PgLockBoard::Reserve(std::span<const std::uint64_t> rows) {
    std::set<std::uint64_t> wanted(rows.begin(), rows.end());
    std::erase_if(wanted, [&](std::uint64_t row) { return letGo_.contains(row); });
    if (wanted.empty())
        return;
    const Value values[] = {ArrayOf(wanted)};
    // Held back from being worked into the condition's place, where the lock would be asked for twice.
    const Result result = link_.Call(
        "WITH asked AS MATERIALIZED (SELECT r, pg_try_advisory_lock(r) AS taken "
        "FROM unnest($1::bigint[]) AS r) SELECT r FROM asked WHERE taken",
        values);
    for (int i = 0; i < PQntuples(result.get()); ++i)
        letGo_.insert(static_cast<std::uint64_t>(WholeAt(result.get(), i, 0)));
}

void PgLockBoard::Free() noexcept {
    if (letGo_.empty() || !link_.IsAlive())
        return letGo_.clear();  // the locks went with the connection
    const Value values[] = {ArrayOf(letGo_)};
    letGo_.clear();
    try {
        link_.Call("SELECT pg_advisory_unlock(r) FROM unnest($1::bigint[]) AS r", values);
    } catch (const EngineError&) {
        // So they do when it breaks just now; whoever ends an edit has nothing to do about it.
    }
}

}  // namespace kv::postgres
