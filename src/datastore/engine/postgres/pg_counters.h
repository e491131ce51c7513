#pragma once
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "datastore/catalogue.h"
#include "datastore/engine/postgres/pg_generator.h"
#include "datastore/engine/postgres/pg_link.h"
#include "datastore/engine/postgres/pg_write_queue.h"

namespace kv::postgres {

/// The numbers of new rows, which the server gives out: a counter, or the key that a table without one is
/// given.
class PgCounters {
  public:
    PgCounters(Link& link, WriteQueue& queue, const PgGenerator& generator)
        : link_(link), queue_(queue), generator_(generator) {}

    /// One number that nobody else gets. In a transaction, where one that adds many rows soon asks for more,
    /// several are fetched at once.
    std::int64_t Take(const TableInfo& table);
    /// Takes one back that no row bears.
    void Return(const TableInfo& table, std::int64_t number) { ready_[table.name].push_back(number); }
    /// Rows with numbers of their own were written: the next one given out is above them all.
    void RaiseAboveRows(const TableInfo& table);
    std::int64_t Next(const TableInfo& table);
    void SetNext(const TableInfo& table, std::int64_t next);

    /// Whether no row of the table has so high a number, in a transaction that loads rows with numbers of
    /// their own.
    bool IsAboveAll(const TableInfo& table, std::int64_t number);
    /// A row was written with that number.
    void NoteRow(const TableInfo& table, std::int64_t number);

    void Forget(const std::string& table) { ready_.erase(table); }
    void ForgetAll() { ready_.clear(); }
    /// Before a transaction is committed: what comes behind the rows that it loaded.
    void RaiseLoaded(const Catalogue& tables);
    void EndTransaction();

  private:
    std::string NumbersOf(const TableInfo& table) const;
    std::int64_t Highest(const TableInfo& table);
    void Raise(const TableInfo& table, std::int64_t least);
    void RaiseLoaded(const TableInfo& table);

    Link& link_;
    WriteQueue& queue_;
    const PgGenerator& generator_;
    /// What was fetched and not given to a row, by the table; the next one last.
    std::map<std::string, std::vector<std::int64_t>> ready_;
    std::map<std::string, std::int64_t> block_;
    /// The tables that this transaction loads, and a number above which none of their rows has one. The
    /// server's counter is raised once, before a number is taken or at the end.
    std::map<std::string, std::int64_t> loaded_;
};

}  // namespace kv::postgres
