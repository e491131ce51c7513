#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "datastore/value.h"

namespace kv {

/// A column as the schema declares it.
enum class ColumnType { Boolean, Short, Long, Double, Currency, DateTime, Text, Memo };

struct ColumnInfo {
    std::string name;
    ColumnType type = ColumnType::Text;
    /// The greatest number of characters of a Text column; 0 where none is stated.
    int size = 0;
    bool counter = false;
    bool required = false;
    /// What a new row holds where nothing is written; Null where the schema states none (a Boolean starts
    /// false).
    Value defaultValue;
    friend bool operator==(const ColumnInfo&, const ColumnInfo&) = default;
};

struct IndexInfo {
    std::string name;
    std::vector<std::string> columns;
    bool unique = false;
    bool primary = false;
    friend bool operator==(const IndexInfo&, const IndexInfo&) = default;
};

struct TableInfo {
    std::string name;
    std::vector<ColumnInfo> columns;
    std::vector<IndexInfo> indexes;

    /// The column's place without regard to case, or nothing.
    std::optional<std::size_t> Find(std::string_view column) const;
    /// The counter's place, or nothing.
    std::optional<std::size_t> Counter() const;
    friend bool operator==(const TableInfo&, const TableInfo&) = default;
};

/// The value type that a column's fields hold.
ValueType FieldType(ColumnType type);

/// The tables of one database, found without regard to case.
class Catalogue {
  public:
    void Add(TableInfo table);
    const TableInfo* Find(std::string_view table) const;
    const std::vector<std::string>& Names() const { return names_; }
    friend bool operator==(const Catalogue&, const Catalogue&) = default;

  private:
    std::unordered_map<std::string, TableInfo> tables_;  // by lower-cased name
    std::vector<std::string> names_;
};

}  // namespace kv
