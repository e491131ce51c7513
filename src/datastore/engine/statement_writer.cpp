#include "datastore/engine/statement_writer.h"

#include <fmt/format.h>

#include "base/text.h"

namespace kv {

using namespace dialect;

namespace {

bool IsConditionOperator(Operator op) {
    return op <= Operator::Like;
}

/// An expression that is true or false by itself, rather than a number that is used so.
bool IsCondition(const Expression& expression) {
    if (const auto* binary = std::get_if<Binary>(&expression.node))
        return IsConditionOperator(binary->op);
    if (const auto* call = std::get_if<Call>(&expression.node))
        return call->function == Function::IsNull;
    return std::holds_alternative<Not>(expression.node) || std::holds_alternative<Between>(expression.node) ||
           std::holds_alternative<InList>(expression.node) || std::holds_alternative<IsNull>(expression.node);
}

std::string_view SymbolOf(Operator op) {
    switch (op) {
        case Operator::Or:
            return " OR ";
        case Operator::And:
            return " AND ";
        case Operator::Equal:
            return " = ";
        case Operator::NotEqual:
            return " <> ";
        case Operator::Less:
            return " < ";
        case Operator::LessEqual:
            return " <= ";
        case Operator::Greater:
            return " > ";
        case Operator::GreaterEqual:
            return " >= ";
        case Operator::Add:
            return " + ";
        case Operator::Subtract:
            return " - ";
        case Operator::Multiply:
            return " * ";
        case Operator::Divide:
            return " / ";
        default:
            return " || ";
    }
}

std::string_view NameOf(AggregateKind kind) {
    switch (kind) {
        case AggregateKind::Count:
            return "count";
        case AggregateKind::Sum:
            return "sum";
        case AggregateKind::Min:
            return "min";
        case AggregateKind::Max:
            return "max";
        case AggregateKind::Avg:
            return "avg";
    }
    return {};
}

}  // namespace

struct Generator::Writer::ConditionWriter {
    Writer& writer;

    std::string operator()(const dialect::Binary& node) const {
        if (node.op == Operator::And || node.op == Operator::Or)
            return fmt::format("({}{}{})", writer.Chained(*node.left, {node.op}, true), SymbolOf(node.op),
                               writer.Condition(*node.right));
        if (node.op == Operator::Like)
            return writer.engine_.Like(writer.Number(*node.left), writer.Number(*node.right));
        const bool moments = writer.AsMoments({node.left.get(), node.right.get()});
        std::string left = writer.LeftOperand(*node.left, moments);
        return fmt::format("({}{}{})", left, SymbolOf(node.op), writer.Operand(*node.right, moments));
    }
    std::string operator()(const dialect::Not& node) const {
        return "(NOT " + writer.Condition(*node.operand) + ")";
    }
    std::string operator()(const dialect::Between& node) const {
        const bool moments = writer.AsMoments({node.value.get(), node.low.get(), node.high.get()});
        std::string value = writer.LeftOperand(*node.value, moments);
        std::string low = writer.Operand(*node.low, moments);
        return fmt::format("({} {}BETWEEN {} AND {})", value, node.negated ? "NOT " : "", low,
                           writer.Operand(*node.high, moments));
    }
    std::string operator()(const dialect::InList& node) const {
        bool moments = writer.AsMoments({node.value.get()});
        for (const ExpressionPtr& item : node.list)
            moments = moments || writer.AsMoments({item.get()});
        std::string value = writer.LeftOperand(*node.value, moments);
        return fmt::format("({} {}IN ({}))", value, node.negated ? "NOT " : "",
                           writer.List(node.list, moments));
    }
    std::string operator()(const dialect::IsNull& node) const {
        return fmt::format("({} IS {}NULL)", writer.Plain(*node.value), node.negated ? "NOT " : "");
    }
    std::string operator()(const dialect::Call& node) const {
        return fmt::format("({} IS NULL)", writer.Plain(*node.arguments.front()));
    }
    template <typename Node>
    std::string operator()(const Node&) const {
        return {};
    }
};

struct Generator::Writer::ValueWriter {
    Writer& writer;
    const Expression& expression;

    std::string operator()(const ColumnName& node) const {
        return writer.engine_.ColumnNumber(writer.Column(node), writer.InfoOf(node).type);
    }
    std::string operator()(const Slot& node) const {
        return writer.Add({Parameter::From::Literal, node.number}, writer.NumberForm(expression.type));
    }
    std::string operator()(const Constant& node) const { return writer.engine_.ConstantText(node.value); }
    std::string operator()(const Negate& node) const { return "(- " + writer.Number(*node.operand) + ")"; }
    std::string operator()(const dialect::Binary& node) const { return writer.Binary(node); }
    std::string operator()(const Convert& node) const {
        return writer.engine_.Converted(writer.Number(*node.operand), node.operand->type, node.to);
    }
    std::string operator()(const FitColumn& node) const {
        return writer.engine_.FittedTo(writer.Number(*node.operand), node.to, node.size);
    }
    std::string operator()(const Aggregate& node) const {
        if (!node.argument)
            return "count(*)";
        const bool counted = node.kind == AggregateKind::Count;
        const bool text = node.argument->type == ValueType::Text;
        return fmt::format("{}({})", NameOf(node.kind),
                           counted ? writer.Plain(*node.argument)
                           : text  ? writer.Compared(*node.argument)
                                   : writer.Number(*node.argument));
    }
    std::string operator()(const dialect::Call& node) const {
        if (node.function == Function::Today)
            return writer.Add({Parameter::From::Today}, writer.NumberForm(ValueType::Date));
        if (node.function == Function::Now)
            return writer.Add({Parameter::From::Now}, writer.NumberForm(ValueType::Date));
        std::vector<std::string> arguments;
        for (const ExpressionPtr& argument : node.arguments) {
            const bool condition = node.function == Function::Iif && arguments.empty();
            arguments.push_back(condition ? writer.Condition(*argument) : writer.Number(*argument));
        }
        return writer.engine_.FunctionCall(node.function, arguments);
    }
    template <typename Node>
    std::string operator()(const Node&) const {
        return writer.engine_.ConditionAsNumber(writer.Condition(expression));
    }
};

std::string Generator::Writer::Condition(const Expression& expression) {
    if (IsCondition(expression))
        return std::visit(ConditionWriter{*this}, expression.node);
    return "(" + Number(expression) + " <> 0)";
}

std::string Generator::Writer::Number(const Expression& expression) {
    if (IsCondition(expression))
        return engine_.ConditionAsNumber(Condition(expression));
    return std::visit(ValueWriter{*this, expression}, expression.node);
}

std::string Generator::Writer::Plain(const Expression& expression) {
    const auto* column = std::get_if<ColumnName>(&expression.node);
    return column ? Column(*column) : Number(expression);
}

std::string Generator::Writer::Compared(const Expression& expression) {
    const auto* column = std::get_if<ColumnName>(&expression.node);
    if (column)  // true, a -1, comes before false
        return InfoOf(*column).type == ColumnType::Boolean ? Number(expression) : Column(*column);
    std::string text = Number(expression);
    return expression.type == ValueType::Text ? engine_.CaseBlind(text, HoldsTextColumn(expression)) : text;
}

std::string Generator::Writer::Written(const Expression& expression, const ColumnInfo& column) {
    if (const auto* slot = std::get_if<Slot>(&expression.node)) {
        parameters.push_back({Parameter::From::Literal, slot->number, &column});
        return engine_.Placeholder(parameters.size(), ValueType::Null);
    }
    if (const auto* constant = std::get_if<Constant>(&expression.node))
        return engine_.ColumnConstant(constant->value);
    if (std::holds_alternative<ColumnName>(expression.node))
        return Plain(expression);
    const bool fitted = std::holds_alternative<FitColumn>(expression.node);
    std::string text = Number(expression);
    return !fitted && column.type == ColumnType::DateTime ? engine_.Moment(text) : text;
}

const ColumnInfo& Generator::Writer::InfoOf(const ColumnName& name) const {
    const TableInfo& table = sources_ ? *(*sources_)[static_cast<std::size_t>(name.source)].info : *table_;
    return table.columns[static_cast<std::size_t>(name.column)];
}

std::string Generator::Writer::Column(const ColumnName& name) const {
    const std::string column = engine_.Name(InfoOf(name).name);
    return sources_ ? fmt::format("s{}.{}", name.source, column) : column;
}

bool Generator::Writer::IsDateColumn(const Expression& expression) const {
    const auto* column = std::get_if<ColumnName>(&expression.node);
    return column && InfoOf(*column).type == ColumnType::DateTime;
}

bool Generator::Writer::HoldsTextColumn(const Expression& expression) {
    if (std::holds_alternative<ColumnName>(expression.node))
        return expression.type == ValueType::Text;
    bool holds = false;
    // The visit changes nothing; the walk is shared with those that do.
    ForEachChild(const_cast<Expression&>(expression),
                 [&](ExpressionPtr& child) { holds = holds || HoldsTextColumn(*child); });
    return holds;
}

bool Generator::Writer::AsMoments(std::initializer_list<const Expression*> operands) const {
    return engine_.SeparatesTypes() && std::any_of(operands.begin(), operands.end(),
                                                   [&](const Expression* e) { return IsDateColumn(*e); });
}

std::string Generator::Writer::MomentOf(const Expression& expression) {
    if (IsDateColumn(expression))
        return Plain(expression);
    if (const auto* slot = std::get_if<Slot>(&expression.node))
        return Add({Parameter::From::Literal, slot->number}, ValueType::Date);
    if (const auto* call = std::get_if<dialect::Call>(&expression.node)) {
        if (call->function == Function::Today)
            return Add({Parameter::From::Today}, ValueType::Date);
        if (call->function == Function::Now)
            return Add({Parameter::From::Now}, ValueType::Date);
    }
    return engine_.Moment(Number(expression));
}

std::string Generator::Writer::Operand(const Expression& expression, bool moments) {
    if (moments)
        return MomentOf(expression);
    const auto* column = std::get_if<ColumnName>(&expression.node);
    return column && InfoOf(*column).type != ColumnType::Boolean ? Column(*column) : Number(expression);
}

std::string Generator::Writer::LeftOperand(const Expression& expression, bool moments) {
    return moments ? MomentOf(expression) : Compared(expression);
}

std::string Generator::Writer::Chained(const Expression& left, std::initializer_list<Operator> kind,
                                       bool condition) {
    std::string text = condition ? Condition(left) : Number(left);
    const auto* binary = std::get_if<dialect::Binary>(&left.node);
    if (binary && std::find(kind.begin(), kind.end(), binary->op) != kind.end() && text.front() == '(')
        text = text.substr(1, text.size() - 2);
    return text;
}

std::string Generator::Writer::Binary(const dialect::Binary& node) {
    switch (node.op) {
        case Operator::Concatenate: {
            const bool chain = std::holds_alternative<dialect::Binary>(node.left->node) &&
                               std::get<dialect::Binary>(node.left->node).op == Operator::Concatenate;
            std::string left = chain ? Chained(*node.left, {Operator::Concatenate}, false)
                                     : fmt::format("coalesce({}, '')", Number(*node.left));
            return fmt::format("({} || coalesce({}, ''))", left, Number(*node.right));
        }
        case Operator::Add:
        case Operator::Subtract: {
            const bool text = node.left->type == ValueType::Text || node.right->type == ValueType::Text;
            std::string left =
                text ? Number(*node.left) : Chained(*node.left, {Operator::Add, Operator::Subtract}, false);
            return fmt::format("({}{}{})", left, text ? " || " : SymbolOf(node.op), Number(*node.right));
        }
        case Operator::Divide: {
            std::string left = Number(*node.left);
            return engine_.Divided(left, Number(*node.right));
        }
        case Operator::IntegerDivide: {
            std::string left = Number(*node.left);
            return engine_.IntegerDivided(left, Number(*node.right));
        }
        case Operator::Modulo: {
            std::string left = Number(*node.left);
            return engine_.Remainder(left, Number(*node.right));
        }
        default: {
            std::string left = Number(*node.left);
            return fmt::format("({}{}{})", left, SymbolOf(node.op), Number(*node.right));
        }
    }
}

std::string Generator::Writer::List(const std::vector<ExpressionPtr>& list, bool moments) {
    std::string text;
    for (const ExpressionPtr& item : list) {
        if (!text.empty())
            text += ", ";
        text += Operand(*item, moments);
    }
    return text;
}

std::string Generator::Writer::Joins(const JoinTree& tree) {
    if (!tree.left)
        return Named(static_cast<std::size_t>(tree.source));
    std::string left = Joins(*tree.left);
    std::string right = Joins(*tree.right);
    if (tree.right->left)
        right = "(" + right + ")";
    return fmt::format("{} {} JOIN {} ON {}", left, tree.kind == JoinKind::Left ? "LEFT" : "INNER", right,
                       tree.on ? Condition(*tree.on) : "(1 = 1)");
}

}  // namespace kv
