#include "datastore/engine/generator.h"

#include <numeric>

#include <fmt/format.h>

#include "base/text.h"

namespace kv {

using namespace dialect;

std::string_view KeyColumnOf(const TableInfo& table) {
    const auto counter = table.Counter();
    return counter ? std::string_view(table.columns[*counter].name) : kKeyColumn;
}

std::string Generator::Quoted(std::string_view name) {
    return '"' + ReplaceAll(name, "\"", "\"\"") + '"';
}

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

/// Writes one statement and notes its parameters.
class Generator::Writer {
  public:
    /// With sources every column is written behind its source's name; without, it is a column of the one
    /// table.
    Writer(const Generator& engine, const std::vector<Source>* sources, const TableInfo* table)
        : engine_(engine), sources_(sources), table_(table) {}

    std::string Condition(const Expression& expression);
    /// A value to calculate with.
    std::string Number(const Expression& expression);
    /// A value as it stands in its column: to show, to count, to test for Null.
    std::string Plain(const Expression& expression);
    /// A value that is grouped or ordered by.
    std::string Compared(const Expression& expression);
    /// A value on its way into a column: a literal takes the column's type.
    std::string Written(const Expression& expression, const ColumnInfo& column);
    std::string Add(Parameter parameter, ValueType type) {
        if (engine_.SeparatesTypes())
            parameter.form = type;
        parameters.push_back(parameter);
        return engine_.Placeholder(parameters.size(), type);
    }
    std::string Given(int number) { return Add({Parameter::From::Given, number}, ValueType::Integer); }
    std::string Key(std::size_t source) const {
        return fmt::format("s{}.{}", source, engine_.Name(KeyColumnOf(*(*sources_)[source].info)));
    }
    std::string Joins(const JoinTree& tree);
    std::string Named(std::size_t source) const {
        return fmt::format("{} AS s{}", engine_.Name((*sources_)[source].info->name), source);
    }

    std::vector<Parameter> parameters;

  private:
    struct ConditionWriter;
    struct ValueWriter;

    const ColumnInfo& InfoOf(const ColumnName& name) const;
    std::string Column(const ColumnName& name) const;
    bool IsDateColumn(const Expression& expression) const;
    /// Whether operands are compared as dates of the engine's own.
    bool AsMoments(std::initializer_list<const Expression*> operands) const;
    std::string Operand(const Expression& expression, bool moments);
    std::string MomentOf(const Expression& expression);
    std::string LeftOperand(const Expression& expression, bool moments);
    static bool HoldsTextColumn(const Expression& expression);
    /// The form in which a value is calculated with: a date is a number.
    ValueType NumberForm(ValueType type) const {
        return engine_.SeparatesTypes() && type == ValueType::Date ? ValueType::Double : type;
    }
    std::string Binary(const dialect::Binary& node);
    /// A left side of the same kind needs no parentheses, so that long chains do not nest.
    std::string Chained(const Expression& left, std::initializer_list<Operator> kind, bool condition);
    std::string List(const std::vector<ExpressionPtr>& list, bool moments);

    const Generator& engine_;
    const std::vector<Source>* sources_;
    const TableInfo* table_;
};

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

// ----------------------------------------------------------------------------------------------------------
// SELECT

namespace {

/// Joins the pieces that are not empty.
std::string Joined(const std::vector<std::string>& pieces, std::string_view separator) {
    std::string text;
    for (const std::string& piece : pieces) {
        if (piece.empty())
            continue;
        if (!text.empty())
            text += separator;
        text += piece;
    }
    return text;
}

/// Does the value differ between rows? The engines take a bare number behind BY for the place of a column.
bool VariesByRow(const Expression& expression) {
    if (std::holds_alternative<ColumnName>(expression.node) ||
        std::holds_alternative<Aggregate>(expression.node))
        return true;
    bool varies = false;
    // The visit changes nothing; the walk is shared with those that do.
    ForEachChild(const_cast<Expression&>(expression),
                 [&](ExpressionPtr& child) { varies = varies || VariesByRow(*child); });
    return varies;
}

}  // namespace

std::vector<int> Generator::AllFields(const dialect::Select& select) {
    std::vector<int> fields(select.items.size());
    std::iota(fields.begin(), fields.end(), 0);
    return fields;
}

EngineSql Generator::Select(const dialect::Select& select, const SelectForm& form) const {
    Writer writer(*this, &select.sources, nullptr);
    std::vector<std::string> keys;
    for (std::size_t i = 0; select.Keyed() && i < select.sources.size(); ++i)
        keys.push_back(writer.Key(i));

    std::vector<std::string> columns;
    if (form.keys)
        columns = keys;
    for (const int field : form.fields) {
        const auto place = static_cast<std::size_t>(field);
        const Expression& expression = *select.items[place].expression;
        if (!form.into.empty())
            columns.push_back(CounterOrNext(*form.target, *form.into[place],
                                            writer.Written(expression, *form.into[place])));
        else if (select.distinct || select.aggregated)
            columns.push_back(writer.Compared(expression));  // as it is grouped by
        else
            columns.push_back(writer.Plain(expression));
    }

    std::string sql = fmt::format("SELECT {}{}", select.distinct ? "DISTINCT " : "", Join(columns, ", "));
    if (form.rows == SelectForm::Rows::ByKey) {
        // The query's conditions are left out: a row stays a member whatever becomes of its values.
        if (keys.size() == 1) {
            sql += fmt::format(" FROM {} WHERE {} = {}", writer.Named(0), keys[0], writer.Given(0));
            return {std::move(sql), std::move(writer.parameters)};
        }
        sql += " FROM (SELECT 1) AS one";
        for (std::size_t i = 0; i < keys.size(); ++i)
            sql += fmt::format(" LEFT JOIN {} ON {} = {}", writer.Named(i), keys[i],
                               writer.Given(static_cast<int>(i)));
        return {std::move(sql), std::move(writer.parameters)};
    }
    if (form.rows == SelectForm::Rows::KeyRange) {
        const std::string low = writer.Given(0);
        sql += fmt::format(" FROM {0} WHERE {1} BETWEEN {2} AND {3} ORDER BY {1}", writer.Named(0), keys[0],
                           low, writer.Given(1));
        return {std::move(sql), std::move(writer.parameters)};
    }
    if (form.rows == SelectForm::Rows::NextRows) {
        const std::string behind = writer.Given(0);
        sql += fmt::format(" FROM {0} WHERE {1} > {2} ORDER BY {1} LIMIT {3}", writer.Named(0), keys[0],
                           behind, writer.Given(1));
        return {std::move(sql), std::move(writer.parameters)};
    }

    if (select.from)
        sql += " FROM " + writer.Joins(*select.from);
    std::vector<std::string> among;
    for (int i = 0; i < form.amongKeys; ++i)
        among.push_back(writer.Given(i));
    const std::string where = Joined({select.where && !form.anyRow ? writer.Condition(*select.where) : "",
                                      form.criteria ? writer.Condition(*form.criteria) : "",
                                      form.behindKey ? keys[0] + " > " + writer.Given(0) : "",
                                      among.empty() ? "" : keys[0] + " IN (" + Join(among, ", ") + ")"},
                                     " AND ");
    if (!where.empty())
        sql += " WHERE " + where;

    std::vector<std::string> groups;
    for (const ExpressionPtr& group : select.groupBy)
        groups.push_back(VariesByRow(*group) ? writer.Compared(*group)
                                             : fmt::format("coalesce({}, NULL)", writer.Compared(*group)));
    if (!groups.empty())
        sql += " GROUP BY " + Join(groups, ", ");
    if (select.having)
        sql += " HAVING " + writer.Condition(*select.having);

    // The keys behind the order given make it the same every time.
    std::vector<std::string> order;
    for (const OrderItem& item : select.orderBy)
        if (VariesByRow(*item.expression))
            order.push_back(Ordered(writer.Compared(*item.expression), item.descending));
    order.insert(order.end(), keys.begin(), keys.end());
    if (!order.empty())
        sql += " ORDER BY " + Join(order, ", ");

    std::optional<long> limit = form.limit;
    if (select.top && !form.criteria)
        limit = limit ? std::min(*limit, *select.top) : *select.top;
    if (limit)
        sql += fmt::format(" LIMIT {}", *limit);
    return {std::move(sql), std::move(writer.parameters)};
}

EngineSql Generator::CountRows(const dialect::Select& select) const {
    if (select.Keyed() && !select.top) {
        Writer writer(*this, &select.sources, nullptr);
        std::string sql = "SELECT count(*) FROM " + writer.Joins(*select.from);
        if (select.where)
            sql += " WHERE " + writer.Condition(*select.where);
        return {std::move(sql), std::move(writer.parameters)};
    }
    SelectForm form;
    form.fields = AllFields(select);
    EngineSql rows = Select(select, form);
    rows.text = "SELECT count(*) FROM (" + rows.text + ") AS q";
    return rows;
}

EngineSql Generator::LastKey(const dialect::Select& select) const {
    Writer writer(*this, &select.sources, nullptr);
    return {fmt::format("SELECT max({}) FROM {}", writer.Key(0), writer.Named(0)), {}};
}

// ------------------------------------------------------------------------------------------ INSERT, UPDATE,
// DELETE

EngineSql Generator::Insert(const dialect::Insert& insert, const ColumnInfo* counter) const {
    const TableInfo& table = *insert.target.info;
    Writer writer(*this, nullptr, &table);
    std::vector<std::string> columns;
    std::vector<std::string> values;
    if (counter) {
        columns.push_back(Name(counter->name));
        if (!insert.query)
            values.push_back(writer.Given(0));
    }
    for (const Assignment& assignment : insert.assignments) {
        const ColumnInfo& column = table.columns[static_cast<std::size_t>(assignment.column)];
        columns.push_back(Name(column.name));
        if (!insert.query)
            values.push_back(CounterOrNext(table, column, writer.Written(*assignment.value, column)));
    }
    const std::string into = fmt::format("INSERT INTO {} ({}) ", Name(table.name), Join(columns, ", "));
    if (!insert.query)
        return {into + fmt::format("VALUES ({})", Join(values, ", ")), std::move(writer.parameters)};

    SelectForm form;
    form.fields = AllFields(*insert.query);
    form.target = &table;
    for (const Assignment& assignment : insert.assignments)
        form.into.push_back(&table.columns[static_cast<std::size_t>(assignment.column)]);
    EngineSql rows = Select(*insert.query, form);
    if (counter) {
        // The rows are numbered in the query's order from the first counter of those taken for them.
        rows.parameters.push_back({Parameter::From::Given, 0});
        rows.text = fmt::format("SELECT {} + row_number() OVER () - 1, q.* FROM ({}) AS q",
                                Placeholder(rows.parameters.size(), ValueType::Integer), rows.text);
    }
    rows.text = into + rows.text;
    return rows;
}

/// A value on its way into a column of an added row.
std::string Generator::CounterOrNext(const TableInfo& table, const ColumnInfo& column,
                                     const std::string& value) const {
    return column.counter && FillsCounters()
               ? fmt::format("coalesce({}, {})", value, NextCounter(table, column))
               : value;
}

EngineSql Generator::Update(const dialect::Update& update) const {
    const TableInfo& table = *update.target.info;
    Writer writer(*this, nullptr, &table);
    std::vector<std::string> sets;
    for (const Assignment& assignment : update.assignments) {
        const ColumnInfo& column = table.columns[static_cast<std::size_t>(assignment.column)];
        sets.push_back(Name(column.name) + " = " + writer.Written(*assignment.value, column));
    }
    std::string sql = fmt::format("UPDATE {} SET {}", Name(table.name), Join(sets, ", "));
    if (update.where)
        sql += " WHERE " + writer.Condition(*update.where);
    return {std::move(sql), std::move(writer.parameters)};
}

EngineSql Generator::Delete(const dialect::Delete& statement) const {
    Writer writer(*this, nullptr, statement.target.info);
    std::string sql = "DELETE FROM " + Name(statement.target.info->name);
    if (statement.where)
        sql += " WHERE " + writer.Condition(*statement.where);
    return {std::move(sql), std::move(writer.parameters)};
}

std::string Generator::InsertRow(const TableInfo& table, std::span<const std::size_t> columns) const {
    return InsertNamed(table, columns, {}) + ReturningKey(table);
}

std::string Generator::InsertKeyedRow(const TableInfo& table, std::span<const std::size_t> columns) const {
    return InsertNamed(table, columns, kKeyColumn);
}

std::string Generator::InsertNamed(const TableInfo& table, std::span<const std::size_t> columns,
                                   std::string_view more) const {
    std::vector<std::string> names;
    std::vector<std::string> values;
    const auto add = [&](std::string_view name) {
        names.push_back(Name(name));
        values.push_back(Placeholder(names.size(), ValueType::Null));
    };
    for (const std::size_t column : columns)
        add(table.columns[column].name);
    if (!more.empty())
        add(more);
    return fmt::format("INSERT INTO {} ({}) VALUES ({})", Name(table.name), Join(names, ", "),
                       Join(values, ", "));
}

std::string Generator::UpdateRow(const TableInfo& table, std::span<const std::size_t> columns) const {
    std::vector<std::string> sets;
    for (const std::size_t column : columns)
        sets.push_back(Name(table.columns[column].name) + " = " +
                       Placeholder(sets.size() + 1, ValueType::Null));
    return fmt::format("UPDATE {} SET {} WHERE {} = {}", Name(table.name), Join(sets, ", "),
                       Name(KeyColumnOf(table)), Placeholder(sets.size() + 1, ValueType::Integer));
}

std::string Generator::DeleteRow(const TableInfo& table) const {
    return fmt::format("DELETE FROM {} WHERE {} = {}", Name(table.name), Name(KeyColumnOf(table)),
                       Placeholder(1, ValueType::Integer));
}

}  // namespace kv
