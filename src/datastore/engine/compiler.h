#pragma once
#include <array>
#include <compare>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "datastore/catalogue.h"
#include "datastore/dialect/statement.h"
#include "datastore/dialect/token.h"
#include "datastore/engine/engine_sql.h"
#include "datastore/engine/generator.h"
#include "datastore/engine/lru_cache.h"
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
        friend auto operator<=>(const Scope&, const Scope&) = default;
    };
    /// Fetches the matches' keys in the query's order.
    const EngineSql& Sql(const Scope& scope) const;

  private:
    dialect::ExpressionPtr condition_;
    const dialect::Select& query_;
    const Generator& generator_;
    mutable std::map<Scope, EngineSql> sql_;
};

/// A query, worked out once for all statements of its shape.
class CompiledSelect {
  public:
    CompiledSelect(std::shared_ptr<const Catalogue> catalogue, dialect::Select select,
                   const Generator& generator);

    enum class Form { Fields, FirstField, KeysAndFields, ByKey, KeyRange, NextRows, RestKeys, Count, LastKey };
    const EngineSql& Sql(Form form) const;

    const dialect::Select& Tree() const { return select_; }
    const std::vector<FieldInfo>& Fields() const { return fields_; }
    const std::vector<ColumnType>& FieldTypes() const { return types_; }
    const NameIndex& Names() const { return names_; }
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
    std::vector<FieldInfo> fields_;
    std::vector<ColumnType> types_;
    NameIndex names_;
    mutable std::array<std::optional<EngineSql>, 9> sql_;
    mutable LruCache<std::unique_ptr<CompiledCriteria>> criteria_;
};

/// An INSERT, UPDATE or DELETE, worked out once for all statements of its shape.
struct CompiledChange {
    std::shared_ptr<const Catalogue> catalogue;
    EngineSql sql;
    const TableInfo* table = nullptr;
    bool takesCounter = false;       ///< an INSERT that leaves the counter to the store
    bool givesCounter = false;       ///< an INSERT that brings its own
    std::optional<EngineSql> count;  ///< how many rows its query gives, where it takes counters
};

template <typename Compiled>
struct Ready {
    std::shared_ptr<const Compiled> statement;
    std::vector<Value> literals;
};

/// From the dialect's text to the engine's statements, remembered by shape. One for each connection.
class Compiler {
  public:
    explicit Compiler(Connection& connection) : connection_(connection) {}

    /// A query, or a table by its name. Throws EngineError as the parser and binder do; 3219 for other
    /// statements.
    Ready<CompiledSelect> CompileSelect(std::string_view sqlOrTable);
    /// Any statement but a query (3065).
    using Action =
        std::variant<Ready<CompiledChange>, dialect::CreateTable, dialect::CreateIndex, dialect::DropTable>;
    Action CompileAction(std::string_view sql);

  private:
    using Cached = std::variant<std::shared_ptr<const CompiledSelect>, std::shared_ptr<const CompiledChange>>;
    struct Entry {
        std::shared_ptr<const Catalogue> catalogue;
        Cached compiled;
    };

    const Cached* Find(const dialect::Lexed& lexed);
    const Cached& Keep(const dialect::Lexed& lexed, Cached compiled);
    dialect::Statement ParseAndBind(const dialect::Lexed& lexed);
    std::shared_ptr<const CompiledChange> MakeChange(const dialect::Statement& statement) const;

    Connection& connection_;
    LruCache<Entry> cache_{512};
};

}  // namespace kv
