#pragma once
#include <list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

#include <sqlite3.h>

#include "datastore/value.h"

namespace kv::sqlite {

struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

/// A prepared statement with its text.
struct Statement {
    std::string sql;
    std::unique_ptr<sqlite3_stmt, Finalize> handle;
};

/// Keeps prepared statements that nobody runs just now.
class StatementCache {
  public:
    explicit StatementCache(sqlite3* database) : database_(database) {}

    Statement Take(const std::string& sql);
    void GiveBack(Statement statement);
    void Clear();

  private:
    using Entries = std::list<Statement>;
    sqlite3* database_;
    Entries idle_;  // the one used last in front
    std::unordered_map<std::string_view, Entries::iterator> bySql_;
};

/// A statement on loan from the cache: reset and given back at the end of its scope.
class Loan {
  public:
    Loan(sqlite3* database, StatementCache& cache, const std::string& sql, std::span<const Value> values);
    ~Loan();
    Loan(const Loan&) = delete;
    Loan& operator=(const Loan&) = delete;

    /// Begins again with other values.
    void Restart(std::span<const Value> values);
    /// True while there is a row.
    bool Step();
    sqlite3_stmt* Get() const { return statement_.handle.get(); }

  private:
    void Bind(int place, const Value& value);
    void BindAll(std::span<const Value> values);

    sqlite3* database_;
    StatementCache& cache_;
    Statement statement_;
};

}  // namespace kv::sqlite
