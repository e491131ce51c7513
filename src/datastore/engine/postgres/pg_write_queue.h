#pragma once
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "datastore/catalogue.h"
#include "datastore/engine/postgres/pg_generator.h"
#include "datastore/engine/postgres/pg_link.h"
#include "datastore/engine/row_block.h"

namespace kv::postgres {

/// What a transaction has written and the server has not got yet: rows that it can't refuse. New rows of a
/// table go over together and all changes of a row as one, when the transaction ends or a statement may look
/// at them. A row that is gone by then breaks the transaction.
class WriteQueue {
  public:
    WriteQueue(Link& link, const PgGenerator& generator) : link_(link), generator_(generator) {}

    /// A new row: all columns of the table, and behind them the key of one without a counter.
    void Add(const TableInfo& table, std::span<const Value> values);
    /// Columns of a row, by their places.
    void Change(const TableInfo& table, RowKey key, std::span<const std::size_t> columns,
                std::span<const Value> values);
    /// To be called before a statement that reads or writes rows.
    void SendFor(std::string_view sql) {
        if (!IsEmpty() && Concerns(sql))
            Send();
    }
    void Send();
    /// Lets go what belongs to a transaction that is undone.
    void Clear() noexcept;

  private:
    struct Rows {
        const TableInfo* table = nullptr;
        std::size_t count = 0;
        std::string copied;                     ///< as a copy takes them
        std::vector<std::vector<Value>> first;  ///< a few
    };
    struct ChangedRow {
        const TableInfo* table = nullptr;
        RowKey key = kNoRow;
        std::map<std::size_t, Value> values;
    };

    bool IsEmpty() const { return added_.empty() && changed_.empty(); }
    bool Concerns(std::string_view sql) const;
    const TableInfo& Note(const TableInfo& table);
    void SendRows(const Rows& added);
    void SendChange(const ChangedRow& changed);

    Link& link_;
    const PgGenerator& generator_;
    std::map<std::string, Rows> added_;
    std::vector<ChangedRow> changed_;  ///< in the order of their first changes
    std::map<std::pair<std::string, RowKey>, std::size_t> changedPlaces_;
    struct Table {
        TableInfo info;
        std::string name;  ///< as statements spell it
    };
    std::map<std::string, Table> tables_;
};

}  // namespace kv::postgres
