#pragma once
#include <array>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "datastore/catalogue.h"
#include "datastore/dialect/statement.h"
#include "datastore/dialect/token.h"
#include "datastore/engine/engine_sql.h"
#include "datastore/engine/generator.h"
#include "datastore/engine/lru_cache.h"
#include "datastore/engine/table_watch.h"
#include "datastore/name_index.h"
#include "datastore/recordset.h"

namespace kv {

class Connection;

/// A condition over a query's rows, as FindFirst takes it.
class CompiledCriteria {
  public:
    CompiledCriteria(dialect::ExpressionPtr condition, const dialect::Select& query,
                     const Generator& generator)
        : condition_(std::move(condition)), query_(query), generator_(generator) {}

    /// Among which rows the matches are looked for.
    struct Scope {
        bool anyRow = false;     ///< also those that the query itself would not select
        bool behindKey = false;  ///< those above a key given
        int amongKeys = 0;       ///< those of so many keys given
        bool operator<(const Scope& other) const {
            return std::tie(anyRow, behindKey, amongKeys) <
                   std::tie(other.anyRow, other.behindKey, other.amongKeys);
        }
    };
    /// Fetches the matches' keys in the query's order.
    const EngineSql& Sql(const Scope& scope) const;

  private:
    dialect::ExpressionPtr condition_;
    const dialect::Select& query_;
    const Generator& generator_;
    mutable std::map<Scope, EngineSql> sql_;
};

/// The fields of a query that a batch of rows fetches, with the statements that fetch them.
class FieldSubset {
  public:
    /// `fields`: their places in the query, ascending.
    FieldSubset(std::vector<int> fields, const dialect::Select& query, const Generator& generator);

    /// The query's rows with their keys, if they have any; the rows of given keys; those from one key to
    /// another; those behind a key, at most a number given.
    enum class Form { OfQuery, ByKey, KeyRange, NextRows };
    const EngineSql& Sql(Form form) const;

    int Count() const { return static_cast<int>(fields_.size()); }
    /// Where the field stands among those fetched, or -1.
    int CellOf(std::size_t field) const { return cells_[field]; }
    /// Which of those fetched is the row's key itself, a counter; then OfQuery and NextRows leave the key
    /// before them out.
    std::optional<std::size_t> KeyCell() const { return keyCell_; }

  private:
    std::vector<int> fields_;
    std::vector<int> cells_;
    std::optional<std::size_t> keyCell_;
    const dialect::Select& query_;
    const Generator& generator_;
    mutable std::array<std::optional<EngineSql>, 4> sql_;
};

/// A query, worked out once for all statements of its shape.
///
/// Most programs select all columns and read a few. The query notes which fields are read of its rows, and
/// once it has been opened before, batches fetch those alone; a field that is read for the first time brings
/// its whole row.
class CompiledSelect {
  public:
    CompiledSelect(std::shared_ptr<const Catalogue> catalogue, dialect::Select select,
                   Connection& connection);

    /// Statements about the whole result: its fields without keys, its first field, the keys from one to
    /// another, how many rows it has, the last key of its table.
    enum class Form { FirstField, RestKeys, Count, LastKey };
    const EngineSql& Sql(Form form) const;

    std::shared_ptr<const FieldSubset> AllFields() const { return all_; }
    /// The fields read so far; all of them at the first opening, and where they are most.
    std::shared_ptr<const FieldSubset> UsedFields() const;
    void NoteUse(std::size_t field) const { used_[field] = 1; }

    const dialect::Select& Tree() const { return select_; }
    const std::vector<FieldInfo>& Fields() const { return fields_; }
    const NameIndex& Names() const { return names_; }
    const TableWatch& Watch() const { return watch_; }
    bool Keyed() const { return select_.Keyed(); }
    std::size_t KeyCount() const { return Keyed() ? select_.sources.size() : 0; }
    /// The one table whose rows can be changed through the query, or null.
    const TableInfo* Target() const;
    /// The target's column behind a field, or -1.
    int TargetColumn(std::size_t field) const;
    /// Its rows come in the order of their keys.
    bool InKeyOrder() const { return KeyCount() == 1 && select_.orderBy.empty(); }
    /// It selects all rows of one table, in the order of their keys.
    bool IsWholeTable() const { return InKeyOrder() && !select_.where && !select_.top; }

    /// `queryLiterals`: how many literals the query itself has; the criteria's are numbered behind them.
    const CompiledCriteria& Criteria(const dialect::Lexed& lexed, std::size_t queryLiterals) const;

  private:
    EngineSql Generate(Form form) const;

    std::shared_ptr<const Catalogue> catalogue_;
    dialect::Select select_;
    const Generator& generator_;
    TableWatch watch_;
    std::vector<FieldInfo> fields_;
    NameIndex names_;
    std::shared_ptr<const FieldSubset> all_;
    mutable std::array<std::optional<EngineSql>, 4> sql_;
    mutable LruCache<std::unique_ptr<CompiledCriteria>> criteria_;

    mutable bool openedBefore_ = false;
    mutable std::vector<char> used_;  // by field
    mutable std::vector<char> subsetFor_;
    mutable std::shared_ptr<const FieldSubset> subset_;
};

}  // namespace kv
