#include "datastore/dialect/expression_binder.h"

#include <fmt/format.h>

#include "base/text.h"
#include "datastore/dialect/types.h"
#include "datastore/faults.h"

namespace kv::dialect {
namespace {

void RequireTogether(const ExpressionPtr& a, const ExpressionPtr& b) {
    if (!GoTogether(a->type, b->type))
        throw faults::TypeMismatch();
}

void RequireNumeric(const ExpressionPtr& expression) {
    if (expression->type == ValueType::Text)
        throw faults::TypeMismatch();
}

template <typename Node>
void Wrap(ExpressionPtr& expression, Node node, ValueType type) {
    const std::uint32_t begin = expression->begin;
    const std::uint32_t end = expression->end;
    node.operand = std::move(expression);
    expression = MakeExpression(std::move(node), begin, end, type);
}

}  // namespace

void ExpressionBinder::MakeType(ExpressionPtr& expression, ValueType type) {
    if (expression->type == type || expression->type == ValueType::Null)
        return;
    if (type == ValueType::Text || expression->type == ValueType::Text)
        Wrap(expression, Convert{nullptr, type}, type);
    // Numbers, booleans and dates share one form, so between them the type alone changes.
    expression->type = type;
}

void ExpressionBinder::MakeText(ExpressionPtr& expression) {
    MakeType(expression, ValueType::Text);
}

void ExpressionBinder::NoteUnknown(const std::string& name) {
    unknown_.insert(Lower(name));
}

void ExpressionBinder::CheckNames() const {
    if (!unknown_.empty())
        throw faults::TooFewParameters(unknown_.size());
}

void ExpressionBinder::BindCondition(ExpressionPtr& condition) {
    Bind(condition);
    RequireNumeric(condition);
}

void ExpressionBinder::Bind(ExpressionPtr& expression) {
    if (std::holds_alternative<ColumnName>(expression->node))
        return BindColumn(expression);
    if (std::holds_alternative<Call>(expression->node))
        return BindCall(expression);
    if (auto* aggregate = std::get_if<Aggregate>(&expression->node)) {
        expression->type = BindAggregate(*aggregate);
        return;
    }
    ForEachChild(*expression, [&](ExpressionPtr& child) { Bind(child); });
    if (auto* binary = std::get_if<Binary>(&expression->node)) {
        expression->type = BindBinary(*binary);
    } else if (auto* between = std::get_if<Between>(&expression->node)) {
        RequireTogether(between->value, between->low);
        RequireTogether(between->value, between->high);
        expression->type = ValueType::Boolean;
    } else if (auto* in = std::get_if<InList>(&expression->node)) {
        for (const ExpressionPtr& item : in->list)
            RequireTogether(in->value, item);
        expression->type = ValueType::Boolean;
    } else if (std::holds_alternative<IsNull>(expression->node)) {
        expression->type = ValueType::Boolean;
    } else if (auto* negation = std::get_if<Not>(&expression->node)) {
        RequireNumeric(negation->operand);
        expression->type = ValueType::Boolean;
    } else if (auto* negative = std::get_if<Negate>(&expression->node)) {
        expression->type = ArithmeticType(Operator::Subtract, ValueType::Integer, negative->operand->type);
    }
}

bool ExpressionBinder::FindInTables(ColumnName& name) const {
    for (std::size_t i = 0; i < sources_.size(); ++i) {
        if (!name.qualifier.empty() && !EqualsNoCase(name.qualifier, sources_[i].Name()))
            continue;
        const auto column = sources_[i].info->Find(name.name);
        if (!column)
            continue;
        if (name.source >= 0)
            throw EngineError(
                engine_error::kAmbiguousField,
                fmt::format("The specified field '{}' could refer to more than one table listed in the FROM "
                            "clause of your SQL statement.",
                            name.name));
        name.source = static_cast<int>(i);
        name.column = static_cast<int>(*column);
    }
    return name.source >= 0;
}

bool ExpressionBinder::FindInResult(ExpressionPtr& expression) const {
    const auto& name = std::get<ColumnName>(expression->node);
    if (!result_ || !name.qualifier.empty())
        return false;
    for (std::size_t i = 0; i < result_->columns.size(); ++i) {
        if (!EqualsNoCase(result_->columns[i].name, name.name))
            continue;
        const std::uint32_t begin = expression->begin;
        const std::uint32_t end = expression->end;
        expression = Clone(*result_->items[i].expression);
        expression->begin = begin;
        expression->end = end;
        return true;
    }
    return false;
}

void ExpressionBinder::BindColumn(ExpressionPtr& expression) {
    if (names_ == Names::ResultThenTables && FindInResult(expression))
        return;
    auto& name = std::get<ColumnName>(expression->node);
    if (FindInTables(name)) {
        const ColumnInfo& column = sources_[static_cast<std::size_t>(name.source)]
                                       .info->columns[static_cast<std::size_t>(name.column)];
        expression->type = FieldType(column.type);
        return;
    }
    const std::string text = name.qualifier.empty() ? name.name : name.qualifier + "." + name.name;
    if (names_ != Names::TablesThenResult || !FindInResult(expression))
        NoteUnknown(text);
}

ValueType ExpressionBinder::BindComparison(Operator op, ExpressionPtr& left, ExpressionPtr& right) {
    if (op == Operator::Like) {
        MakeText(left);
        MakeText(right);
    }
    RequireTogether(left, right);
    return ValueType::Boolean;
}

ValueType ExpressionBinder::BindBinary(Binary& node) {
    switch (node.op) {
        case Operator::Or:
        case Operator::And:
            RequireNumeric(node.left);
            RequireNumeric(node.right);
            return ValueType::Boolean;
        case Operator::Concatenate:
            MakeText(node.left);
            MakeText(node.right);
            return ValueType::Text;
        case Operator::Add:
        case Operator::Subtract:
        case Operator::Modulo:
        case Operator::IntegerDivide:
        case Operator::Multiply:
        case Operator::Divide:
            return ArithmeticType(node.op, node.left->type, node.right->type);
        default:
            return BindComparison(node.op, node.left, node.right);
    }
}

void ExpressionBinder::FitArgument(ExpressionPtr& argument, Argument wanted) {
    switch (wanted) {
        case Argument::Text:
            MakeText(argument);
            break;
        case Argument::Date:
            MakeType(argument, ValueType::Date);
            break;
        case Argument::Number:
        case Argument::Condition:
            RequireNumeric(argument);
            break;
        case Argument::Any:
            break;
    }
}

void ExpressionBinder::BindCall(ExpressionPtr& expression) {
    auto& call = std::get<Call>(expression->node);
    const FunctionInfo* info = FindFunction(call.name);
    if (!info)
        throw EngineError(engine_error::kUndefinedFunction,
                          fmt::format("Undefined function '{}' in expression.", call.name));
    if (call.arguments.size() < info->fewest || call.arguments.size() > info->most)
        throw EngineError(
            engine_error::kSyntaxInExpression,
            fmt::format("Wrong number of arguments used with function '{}' in query expression.",
                        info->name));
    for (std::size_t i = 0; i < call.arguments.size(); ++i) {
        Bind(call.arguments[i]);
        FitArgument(call.arguments[i], info->arguments[i]);
    }
    if (info->function == Function::None) {  // cdate
        ExpressionPtr argument = std::move(call.arguments.front());
        expression = std::move(argument);
        return;
    }
    call.function = info->function;
    expression->type = CallType(*info, call);
}

ValueType ExpressionBinder::CallType(const FunctionInfo& info, Call& call) const {
    std::vector<ExpressionPtr>& arguments = call.arguments;
    if (info.function == Function::FormatText && IsNumeric(arguments[0]->type))
        call.function = arguments[0]->type == ValueType::Date ? Function::FormatDate : Function::FormatNumber;
    if (info.function == Function::Nz && arguments.size() == 1) {
        const bool number = IsNumeric(arguments[0]->type);
        arguments.push_back(MakeExpression(Constant{number ? Value(0) : Value("")}, 0, 0,
                                           number ? arguments[0]->type : ValueType::Text));
    }
    switch (info.yields) {
        case Yields::Fixed:
            return info.type;
        case Yields::AsFirst:
            return ArithmeticType(Operator::Add, arguments[0]->type, arguments[0]->type);
        case Yields::WholeOrDouble:
            return arguments[0]->type == ValueType::Integer ? ValueType::Integer : ValueType::Double;
        case Yields::CommonOfAll:
        case Yields::CommonOfLastTwo:
            break;
    }
    ExpressionPtr& a = arguments[arguments.size() - 2];
    ExpressionPtr& b = arguments.back();
    const ValueType common = CommonType(a->type, b->type);
    MakeType(a, common);
    MakeType(b, common);
    return common;
}

ValueType ExpressionBinder::BindAggregate(Aggregate& node) {
    if (!aggregatesAllowed_)
        throw EngineError(engine_error::kAggregateInWhere,
                          "Cannot have an aggregate function in this place.");
    sawAggregate_ = true;
    if (!node.argument)
        return ValueType::Integer;
    aggregatesAllowed_ = false;
    Bind(node.argument);
    aggregatesAllowed_ = true;
    switch (node.kind) {
        case AggregateKind::Count:
            return ValueType::Integer;
        case AggregateKind::Min:
        case AggregateKind::Max:
            return node.argument->type;
        case AggregateKind::Sum:
            return ArithmeticType(Operator::Multiply, node.argument->type, ValueType::Integer);
        case AggregateKind::Avg:
            break;
    }
    RequireNumeric(node.argument);
    return node.argument->type == ValueType::Currency ? ValueType::Currency : ValueType::Double;
}

}  // namespace kv::dialect
