#include "datastore/dialect/expression.h"

#include "base/text.h"

namespace kv::dialect {
namespace {

bool Same(const ExpressionPtr& a, const ExpressionPtr& b) {
    return a && b ? SameExpression(*a, *b) : !a && !b;
}

bool Same(const std::vector<ExpressionPtr>& a, const std::vector<ExpressionPtr>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const ExpressionPtr& x, const ExpressionPtr& y) { return Same(x, y); });
}

struct Comparer {
    bool operator()(const ColumnName& a, const ColumnName& b) const {
        if (a.source >= 0 || b.source >= 0)
            return a.source == b.source && a.column == b.column;
        return EqualsNoCase(a.qualifier, b.qualifier) && EqualsNoCase(a.name, b.name);
    }
    bool operator()(const Slot& a, const Slot& b) const { return a.number == b.number; }
    bool operator()(const Constant& a, const Constant& b) const { return a.value == b.value; }
    bool operator()(const Negate& a, const Negate& b) const { return Same(a.operand, b.operand); }
    bool operator()(const Not& a, const Not& b) const { return Same(a.operand, b.operand); }
    bool operator()(const Convert& a, const Convert& b) const {
        return a.to == b.to && Same(a.operand, b.operand);
    }
    bool operator()(const FitColumn& a, const FitColumn& b) const {
        return a.to == b.to && a.size == b.size && Same(a.operand, b.operand);
    }
    bool operator()(const Binary& a, const Binary& b) const {
        return a.op == b.op && Same(a.left, b.left) && Same(a.right, b.right);
    }
    bool operator()(const Between& a, const Between& b) const {
        return a.negated == b.negated && Same(a.value, b.value) && Same(a.low, b.low) && Same(a.high, b.high);
    }
    bool operator()(const InList& a, const InList& b) const {
        return a.negated == b.negated && Same(a.value, b.value) && Same(a.list, b.list);
    }
    bool operator()(const IsNull& a, const IsNull& b) const {
        return a.negated == b.negated && Same(a.value, b.value);
    }
    bool operator()(const Call& a, const Call& b) const {
        return EqualsNoCase(a.name, b.name) && Same(a.arguments, b.arguments);
    }
    bool operator()(const Aggregate& a, const Aggregate& b) const {
        return a.kind == b.kind && Same(a.argument, b.argument);
    }
};

struct Cloner {
    static ExpressionPtr Copy(const ExpressionPtr& from) { return from ? Clone(*from) : nullptr; }
    static std::vector<ExpressionPtr> Copy(const std::vector<ExpressionPtr>& from) {
        std::vector<ExpressionPtr> to;
        for (const ExpressionPtr& expression : from)
            to.push_back(Copy(expression));
        return to;
    }

    ExpressionNode operator()(const ColumnName& node) const { return node; }
    ExpressionNode operator()(const Slot& node) const { return node; }
    ExpressionNode operator()(const Constant& node) const { return node; }
    ExpressionNode operator()(const Negate& node) const { return Negate{Copy(node.operand)}; }
    ExpressionNode operator()(const Not& node) const { return Not{Copy(node.operand)}; }
    ExpressionNode operator()(const Convert& node) const { return Convert{Copy(node.operand), node.to}; }
    ExpressionNode operator()(const FitColumn& node) const {
        return FitColumn{Copy(node.operand), node.to, node.size};
    }
    ExpressionNode operator()(const Binary& node) const {
        return Binary{node.op, Copy(node.left), Copy(node.right)};
    }
    ExpressionNode operator()(const Between& node) const {
        return Between{node.negated, Copy(node.value), Copy(node.low), Copy(node.high)};
    }
    ExpressionNode operator()(const InList& node) const {
        return InList{node.negated, Copy(node.value), Copy(node.list)};
    }
    ExpressionNode operator()(const IsNull& node) const { return IsNull{node.negated, Copy(node.value)}; }
    ExpressionNode operator()(const Call& node) const {
        return Call{node.name, Copy(node.arguments), node.function};
    }
    ExpressionNode operator()(const Aggregate& node) const {
        return Aggregate{node.kind, Copy(node.argument)};
    }
};

}  // namespace

ExpressionPtr Clone(const Expression& expression) {
    auto made = std::make_unique<Expression>();
    made->node = std::visit(Cloner(), expression.node);
    made->type = expression.type;
    made->begin = expression.begin;
    made->end = expression.end;
    made->depth = expression.depth;
    return made;
}

bool SameExpression(const Expression& a, const Expression& b) {
    if (a.node.index() != b.node.index())
        return false;
    return std::visit(
        [&](const auto& node) { return Comparer()(node, std::get<std::decay_t<decltype(node)>>(b.node)); },
        a.node);
}

}  // namespace kv::dialect
