#pragma once
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "datastore/catalogue.h"
#include "datastore/dialect/expression.h"

namespace kv::dialect {

/// A table of a FROM clause under the name that the statement calls it by.
struct Source {
    std::string table;
    std::string alias;  ///< empty where none is given
    std::uint32_t begin = 0;
    const TableInfo* info = nullptr;  ///< set by the binder

    const std::string& Name() const { return alias.empty() ? table : alias; }
};

enum class JoinKind : std::uint8_t { Inner, Left, Cross };

/// How the sources hang together: a leaf names a source, the rest joins two sides.
struct JoinTree {
    int source = -1;
    JoinKind kind = JoinKind::Cross;
    std::unique_ptr<JoinTree> left;
    std::unique_ptr<JoinTree> right;
    ExpressionPtr on;
};

struct SelectItem {
    ExpressionPtr expression;  ///< none for a star
    std::string alias;
    std::string starOf;  ///< the source of "t.*"; empty for "*"
    std::uint32_t begin = 0;
};

struct OrderItem {
    ExpressionPtr expression;
    bool descending = false;
};

/// A column of the result, worked out by the binder.
struct OutputColumn {
    std::string name;
    ColumnType type = ColumnType::Text;
    int size = 0;
    /// The column behind a plain column name; -1 for an expression.
    int source = -1;
    int column = -1;
};

struct Select {
    bool distinct = false;
    std::optional<long> top;
    std::vector<SelectItem> items;  ///< the binder puts the columns of stars in their place
    std::vector<Source> sources;
    std::unique_ptr<JoinTree> from;  ///< none without a FROM clause
    ExpressionPtr where;
    std::vector<ExpressionPtr> groupBy;
    ExpressionPtr having;
    std::vector<OrderItem> orderBy;

    std::vector<OutputColumn> columns;
    bool aggregated = false;

    /// Each of its rows stands for one row of each source, so that the row can be found again.
    bool Keyed() const { return from && !distinct && !aggregated; }
};

/// A column that an INSERT or UPDATE writes, with its value in the column's own type.
struct Assignment {
    std::string name;
    std::uint32_t begin = 0;
    int column = -1;
    ExpressionPtr value;
};

struct Insert {
    Source target;
    std::vector<Assignment> assignments;  ///< without values where a query gives them
    bool allColumns = false;              ///< no column list was given
    std::vector<ExpressionPtr> values;    ///< as parsed; the binder moves them into the assignments
    std::unique_ptr<Select> query;
};

struct Update {
    Source target;
    std::vector<Assignment> assignments;
    ExpressionPtr where;
};

struct Delete {
    Source target;
    ExpressionPtr where;
};

struct CreateTable {
    TableInfo table;
};

struct CreateIndex {
    std::string table;
    IndexInfo index;
    std::vector<bool> descending;
};

struct DropTable {
    std::string table;
};

using Statement = std::variant<Select, Insert, Update, Delete, CreateTable, CreateIndex, DropTable>;

}  // namespace kv::dialect
