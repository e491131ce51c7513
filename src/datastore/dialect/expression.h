#pragma once
#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "datastore/catalogue.h"
#include "datastore/value.h"

namespace kv::dialect {

struct Expression;
using ExpressionPtr = std::unique_ptr<Expression>;

enum class Operator : std::uint8_t {
    Or,
    And,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    Like,
    Concatenate,
    Add,
    Subtract,
    Modulo,
    IntegerDivide,
    Multiply,
    Divide,
};

/// What a call means once it is bound. One name may stand for several: format() is three functions by what it
/// formats.
enum class Function : std::uint8_t {
    None,
    FormatDate,
    FormatNumber,
    FormatText,
    Left,
    Right,
    Mid,
    Len,
    Trim,
    LTrim,
    RTrim,
    UCase,
    LCase,
    Iif,
    IsNull,
    Nz,
    Val,
    Int,
    Abs,
    Year,
    Month,
    Day,
    Weekday,
    Today,
    Now,
    DateSerial,
};

/// A column by name; the binder finds the source (its place in the FROM clause) and the column in it.
struct ColumnName {
    std::string qualifier;
    std::string name;
    int source = -1;
    int column = -1;
};

/// A literal that was taken out of the shape: each execution brings its own value of the same type.
struct Slot {
    int number = 0;
};

/// A value that belongs to the shape: null, true, false, a number that is structure.
struct Constant {
    Value value;
};

struct Negate {
    ExpressionPtr operand;
};

struct Not {
    ExpressionPtr operand;
};

struct Binary {
    Operator op = Operator::Equal;
    ExpressionPtr left;
    ExpressionPtr right;
};

struct Between {
    bool negated = false;
    ExpressionPtr value;
    ExpressionPtr low;
    ExpressionPtr high;
};

struct InList {
    bool negated = false;
    ExpressionPtr value;
    std::vector<ExpressionPtr> list;
};

struct IsNull {
    bool negated = false;
    ExpressionPtr value;
};

/// A function of the dialect by its name; the binder finds out which.
struct Call {
    std::string name;
    std::vector<ExpressionPtr> arguments;
    Function function = Function::None;
};

enum class AggregateKind : std::uint8_t { Count, Sum, Min, Max, Avg };

struct Aggregate {
    AggregateKind kind = AggregateKind::Count;
    ExpressionPtr argument;  ///< none for count(*)
};

/// Put in by the binder where a value of one type stands in a place of another: text of a number in a
/// concatenation.
struct Convert {
    ExpressionPtr operand;
    ValueType to = ValueType::Text;
};

/// Put in by the binder where an expression is written to a column that does not hold every value of its
/// type.
struct FitColumn {
    ExpressionPtr operand;
    ColumnType to = ColumnType::Text;
    int size = 0;
};

using ExpressionNode = std::variant<ColumnName, Slot, Constant, Negate, Not, Binary, Between, InList, IsNull,
                                    Call, Aggregate, Convert, FitColumn>;

struct Expression {
    ExpressionNode node;
    /// What the expression yields; set by the parser for literals, by the binder for the rest. Null where it
    /// is not known.
    ValueType type = ValueType::Null;
    /// Its place in the statement's text.
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    /// How many levels stand below; kept within what every engine takes.
    std::uint16_t depth = 0;
};

/// Every direct child, in the order of the text: what all walks of the tree share.
template <typename Visit>
void ForEachChild(Expression& expression, Visit visit);

/// True when both are the same expression, apart from their places in the text.
bool SameExpression(const Expression& a, const Expression& b);

ExpressionPtr Clone(const Expression& expression);

namespace detail {
inline void Each(Slot&, auto) {}
inline void Each(ColumnName&, auto) {}
inline void Each(Constant&, auto) {}
inline void Each(Negate& node, auto visit) {
    visit(node.operand);
}
inline void Each(Not& node, auto visit) {
    visit(node.operand);
}
inline void Each(Convert& node, auto visit) {
    visit(node.operand);
}
inline void Each(FitColumn& node, auto visit) {
    visit(node.operand);
}
inline void Each(IsNull& node, auto visit) {
    visit(node.value);
}
inline void Each(Binary& node, auto visit) {
    visit(node.left);
    visit(node.right);
}
inline void Each(Between& node, auto visit) {
    visit(node.value);
    visit(node.low);
    visit(node.high);
}
inline void Each(InList& node, auto visit) {
    visit(node.value);
    for (ExpressionPtr& item : node.list)
        visit(item);
}
inline void Each(Call& node, auto visit) {
    for (ExpressionPtr& argument : node.arguments)
        visit(argument);
}
inline void Each(Aggregate& node, auto visit) {
    if (node.argument)
        visit(node.argument);
}
}  // namespace detail

template <typename Visit>
void ForEachChild(Expression& expression, Visit visit) {
    std::visit([&](auto& node) { detail::Each(node, visit); }, expression.node);
}

template <typename Node>
ExpressionPtr MakeExpression(Node node, std::uint32_t begin, std::uint32_t end,
                             ValueType type = ValueType::Null) {
    auto made = std::make_unique<Expression>();
    made->node = std::move(node);
    made->begin = begin;
    made->end = end;
    made->type = type;
    ForEachChild(*made, [&](ExpressionPtr& child) {
        made->depth = std::max<std::uint16_t>(made->depth, static_cast<std::uint16_t>(child->depth + 1));
    });
    return made;
}

}  // namespace kv::dialect
