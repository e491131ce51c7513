#include "datastore/engine/postgres/pg_counters.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/text.h"
#include "datastore/engine/postgres/pg_values.h"

namespace kv::postgres {
namespace {

constexpr std::int64_t kLargestBlock = 256;

Value Whole(std::int64_t number) {
    return static_cast<long long>(number);
}

}  // namespace

/// The sequence behind the table's numbers, as the argument of the server's functions.
std::string PgCounters::NumbersOf(const TableInfo& table) const {
    return fmt::format("pg_get_serial_sequence({}, {})",
                       Quoted(Generator::Quoted(Lower(link_.Schema())) + "." + generator_.Name(table.name)),
                       Quoted(Lower(KeyColumnOf(table))));
}

std::int64_t PgCounters::Take(const TableInfo& table) {
    std::vector<std::int64_t>& ready = ready_[table.name];
    if (const auto loaded = loaded_.find(table.name); loaded != loaded_.end()) {
        std::erase_if(ready, [&](std::int64_t number) { return number <= loaded->second; });
        if (ready.empty())
            RaiseLoaded(table);
    }
    if (ready.empty()) {
        // Elsewhere the rows of all seats are numbered in the order in which they are begun.
        std::int64_t& block = block_[table.name];
        block = link_.InTransaction() ? std::clamp<std::int64_t>(2 * block, 1, kLargestBlock) : 1;
        const Value values[] = {Whole(block)};
        const Result result = link_.Call(
            fmt::format("SELECT nextval({}) FROM generate_series(1, $1::integer)", NumbersOf(table)), values);
        for (int row = PQntuples(result.get()); row-- > 0;)
            ready.push_back(WholeAt(result.get(), row, 0));
    }
    const std::int64_t number = ready.back();
    ready.pop_back();
    return number;
}

/// Of the rows that there are.
std::int64_t PgCounters::Highest(const TableInfo& table) {
    const std::string sql = fmt::format("SELECT coalesce(max({}), 0)::bigint FROM {}",
                                        generator_.Name(KeyColumnOf(table)), generator_.Name(table.name));
    queue_.SendFor(sql);
    return WholeAt(link_.Read(sql).get(), 0, 0);
}

void PgCounters::Raise(const TableInfo& table, std::int64_t least) {
    const Value values[] = {Whole(least)};
    link_.Call(fmt::format("SELECT kv.raise_counter({}, $1::bigint)", NumbersOf(table)), values);
}

void PgCounters::RaiseAboveRows(const TableInfo& table) {
    Forget(table.name);  // one of them may be the number given
    Raise(table, Highest(table));
}

void PgCounters::RaiseLoaded(const TableInfo& table) {
    if (const auto loaded = loaded_.extract(table.name))
        Raise(table, loaded.mapped());
}

void PgCounters::RaiseLoaded(const Catalogue& tables) {
    while (!loaded_.empty()) {
        const auto first = loaded_.extract(loaded_.begin());
        if (const TableInfo* table = tables.Find(first.key()))
            Raise(*table, first.mapped());
    }
}

bool PgCounters::IsAboveAll(const TableInfo& table, std::int64_t number) {
    auto loaded = loaded_.find(table.name);
    if (loaded == loaded_.end())
        loaded = loaded_.emplace(table.name, Highest(table)).first;
    return number > loaded->second;
}

void PgCounters::NoteRow(const TableInfo& table, std::int64_t number) {
    if (const auto loaded = loaded_.find(table.name); loaded != loaded_.end())
        loaded->second = std::max(loaded->second, number);
}

std::int64_t PgCounters::Next(const TableInfo& table) {
    RaiseLoaded(table);
    if (const auto ready = ready_.find(table.name); ready != ready_.end() && !ready->second.empty())
        return ready->second.back();
    const Result result = link_.Read(
        fmt::format("SELECT coalesce(pg_sequence_last_value(s.oid) + 1, s.seqstart) FROM (SELECT seqrelid AS "
                    "oid, seqstart FROM pg_sequence WHERE seqrelid = {}::regclass) AS s",
                    NumbersOf(table)));
    return WholeAt(result.get(), 0, 0);
}

void PgCounters::SetNext(const TableInfo& table, std::int64_t next) {
    Forget(table.name);
    loaded_.erase(table.name);
    // The number before counts as given, since a sequence that has given none does not tell where it stands.
    const Value values[] = {Whole(std::max<std::int64_t>(next - 1, 1)), next > 1};
    link_.Call(fmt::format("SELECT setval({}, $1::bigint, $2::boolean)", NumbersOf(table)), values);
}

void PgCounters::EndTransaction() {
    // What is left of a block would number later rows below those of other seats, and the server's counters
    // are not turned back with a transaction that is undone.
    ready_.clear();
    block_.clear();
    loaded_.clear();
}

}  // namespace kv::postgres
