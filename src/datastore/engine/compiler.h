#pragma once
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "datastore/catalogue.h"
#include "datastore/dialect/statement.h"
#include "datastore/dialect/token.h"
#include "datastore/engine/compiled_select.h"
#include "datastore/engine/engine_sql.h"
#include "datastore/engine/lru_cache.h"

namespace kv {

class Connection;

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
