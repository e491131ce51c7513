#include "datastore/dialect/binder.h"

#include <fmt/format.h>

#include "base/text.h"
#include "datastore/convert.h"
#include "datastore/dialect/expression_binder.h"
#include "datastore/dialect/types.h"
#include "datastore/faults.h"

namespace kv::dialect {
namespace {

const TableInfo& FindTable(const Catalogue& catalogue, const std::string& name) {
    const TableInfo* table = catalogue.Find(name);
    if (!table)
        throw faults::TableNotFound(name);
    return *table;
}

// ---------------------------------------------------------------------------------------------------- SELECT

class SelectBinder {
  public:
    SelectBinder(Select& select, const Catalogue& catalogue)
        : select_(select), catalogue_(catalogue), names_(select.sources) {}

    void Bind() {
        for (Source& source : select_.sources)
            source.info = &FindTable(catalogue_, source.table);
        if (select_.from)
            BindJoins(*select_.from);
        ExpandStars();
        BindItems();
        if (select_.where)
            names_.BindCondition(select_.where);
        BindGroups();
        BindOrder();
        names_.CheckNames();
        select_.aggregated = names_.SawAggregate() || !select_.groupBy.empty();
        if (select_.having && !select_.aggregated)
            throw EngineError(engine_error::kNotInAggregate,
                              "The HAVING clause stands in a query without groups and totals.");
        if (select_.aggregated)
            CheckGrouped();
    }

  private:
    void BindJoins(JoinTree& tree) {
        if (!tree.left)
            return;
        BindJoins(*tree.left);
        BindJoins(*tree.right);
        if (tree.on)
            names_.BindCondition(tree.on);
    }

    void ExpandStars() {
        std::vector<SelectItem> items;
        for (SelectItem& item : select_.items) {
            if (item.expression)
                items.push_back(std::move(item));
            else
                ExpandStar(item, items);
        }
        select_.items = std::move(items);
    }

    void ExpandStar(const SelectItem& star, std::vector<SelectItem>& items) const {
        bool found = false;
        for (std::size_t i = 0; i < select_.sources.size(); ++i) {
            const Source& source = select_.sources[i];
            if (!star.starOf.empty() && !EqualsNoCase(star.starOf, source.Name()))
                continue;
            found = true;
            for (std::size_t column = 0; column < source.info->columns.size(); ++column) {
                SelectItem item;
                item.expression =
                    MakeExpression(ColumnName{source.Name(), source.info->columns[column].name,
                                              static_cast<int>(i), static_cast<int>(column)},
                                   star.begin, star.begin, FieldType(source.info->columns[column].type));
                items.push_back(std::move(item));
            }
        }
        if (!found)
            throw faults::TableNotFound(star.starOf);
    }

    void BindItems() {
        names_.AllowAggregates(true);
        for (SelectItem& item : select_.items) {
            auto* name = std::get_if<ColumnName>(&item.expression->node);
            if (!name || name->source < 0)
                names_.Bind(item.expression);
            select_.columns.push_back(Describe(item));
        }
        names_.AllowAggregates(false);
    }

    OutputColumn Describe(const SelectItem& item) const {
        OutputColumn column;
        column.type = ColumnTypeOf(item.expression->type);
        column.name = item.alias;
        const auto* name = std::get_if<ColumnName>(&item.expression->node);
        if (name && name->source >= 0) {
            const ColumnInfo& info = select_.sources[static_cast<std::size_t>(name->source)]
                                         .info->columns[static_cast<std::size_t>(name->column)];
            column.source = name->source;
            column.column = name->column;
            column.type = info.type;
            column.size = info.size;
            if (column.name.empty())
                column.name = info.name;
        }
        if (column.name.empty())
            column.name = fmt::format("Expr{}", 1000 + select_.columns.size());
        return column;
    }

    void BindGroups() {
        for (ExpressionPtr& expression : select_.groupBy)
            names_.Bind(expression);
        names_.UseResult(select_, ExpressionBinder::Names::TablesThenResult);
        names_.AllowAggregates(true);
        if (select_.having)
            names_.BindCondition(select_.having);
        names_.AllowAggregates(false);
    }

    void BindOrder() {
        names_.AllowAggregates(true);
        for (OrderItem& item : select_.orderBy) {
            if (const auto* position = std::get_if<Constant>(&item.expression->node))
                item.expression = ItemAt(position->value);
            else
                names_.Bind(item.expression);
        }
        names_.AllowAggregates(false);
        if (select_.distinct)
            CheckSelected();
    }

    /// One row of the result may stand for many of the tables', which have no one place in another order.
    void CheckSelected() const {
        for (const OrderItem& order : select_.orderBy)
            if (std::none_of(select_.items.begin(), select_.items.end(), [&](const SelectItem& item) {
                    return SameExpression(*item.expression, *order.expression);
                }))
                throw EngineError(engine_error::kOrderNotSelected,
                                  "The ORDER BY clause conflicts with DISTINCT: it orders by what is not "
                                  "selected.");
    }

    ExpressionPtr ItemAt(const Value& position) const {
        const bool whole = position.Type() == ValueType::Integer;
        const std::int64_t place = whole ? position.ToInteger() : 0;
        if (place < 1 || place > static_cast<std::int64_t>(select_.items.size()))
            throw EngineError(
                engine_error::kSyntaxInOrderBy,
                fmt::format("Syntax error in ORDER BY clause: there is no column {}.", position.ToText()));
        return Clone(*select_.items[static_cast<std::size_t>(place - 1)].expression);
    }

    void CheckGrouped() {
        for (SelectItem& item : select_.items)
            CheckGrouped(*item.expression);
        if (select_.having)
            CheckGrouped(*select_.having);
        for (OrderItem& item : select_.orderBy)
            CheckGrouped(*item.expression);
    }

    void CheckGrouped(Expression& expression) {
        for (const ExpressionPtr& group : select_.groupBy)
            if (SameExpression(*group, expression))
                return;
        if (std::holds_alternative<Aggregate>(expression.node))
            return;
        if (const auto* name = std::get_if<ColumnName>(&expression.node))
            throw EngineError(
                engine_error::kNotInAggregate,
                fmt::format("You tried to execute a query that does not include the specified expression "
                            "'{}' as part of an aggregate function.",
                            name->name));
        ForEachChild(expression, [&](ExpressionPtr& child) { CheckGrouped(*child); });
    }

    Select& select_;
    const Catalogue& catalogue_;
    ExpressionBinder names_;
};

// ------------------------------------------------------------------------------------------ values for
// columns

bool HoldsEvery(const ColumnInfo& column, const Expression& value, const std::vector<Source>& sources) {
    if (const auto* name = std::get_if<ColumnName>(&value.node); name && name->source >= 0) {
        const ColumnInfo& from = sources[static_cast<std::size_t>(name->source)]
                                     .info->columns[static_cast<std::size_t>(name->column)];
        return column.type == from.type &&
               (column.size == 0 || (from.size > 0 && from.size <= column.size)) &&
               column.type != ColumnType::Boolean;
    }
    switch (column.type) {
        case ColumnType::Double:
            return IsNumeric(value.type);
        case ColumnType::DateTime:
            return value.type == ValueType::Integer;
        case ColumnType::Memo:
            return value.type == ValueType::Text;
        default:
            return false;
    }
}

/// Makes the value fit the column. Literals of INSERT and UPDATE are left alone: each execution converts its
/// own.
void FitToColumn(ExpressionPtr& value, const ColumnInfo& column, const std::vector<Source>& sources,
                 bool slotsFit) {
    if (auto* constant = std::get_if<Constant>(&value->node)) {
        constant->value = ConvertToColumn(constant->value, column);
        value->type = constant->value.Type();
        return;
    }
    if ((slotsFit && std::holds_alternative<Slot>(value->node)) || HoldsEvery(column, *value, sources))
        return;
    const std::uint32_t begin = value->begin;
    const std::uint32_t end = value->end;
    value = MakeExpression(FitColumn{std::move(value), column.type, column.size}, begin, end,
                           FieldType(column.type));
}

// ---------------------------------------------------------------------------------- INSERT, UPDATE and
// DELETE

void BindInsertColumns(Insert& insert, const TableInfo& table) {
    if (insert.allColumns)
        for (const ColumnInfo& column : table.columns) {
            Assignment assignment;
            assignment.name = column.name;
            insert.assignments.push_back(std::move(assignment));
        }
    for (Assignment& assignment : insert.assignments) {
        const auto column = table.Find(assignment.name);
        if (!column)
            throw EngineError(
                engine_error::kUnknownInsertField,
                fmt::format("The INSERT INTO statement contains the following unknown field name: '{}'.",
                            assignment.name));
        assignment.column = static_cast<int>(*column);
    }
    const std::size_t values = insert.query ? insert.query->items.size() : insert.values.size();
    if (values != insert.assignments.size())
        throw EngineError(engine_error::kValueCountDiffers,
                          "Number of query values and destination fields are not the same.");
}

void BindInsert(Insert& insert, const Catalogue& catalogue) {
    const TableInfo& table = FindTable(catalogue, insert.target.table);
    insert.target.info = &table;
    if (insert.query)
        SelectBinder(*insert.query, catalogue).Bind();
    BindInsertColumns(insert, table);
    const std::vector<Source> none;
    ExpressionBinder names(none);
    for (std::size_t i = 0; i < insert.assignments.size(); ++i) {
        Assignment& assignment = insert.assignments[i];
        const ColumnInfo& column = table.columns[static_cast<std::size_t>(assignment.column)];
        if (insert.query) {
            FitToColumn(insert.query->items[i].expression, column, insert.query->sources, false);
            continue;
        }
        names.Bind(insert.values[i]);
        names.CheckNames();
        FitToColumn(insert.values[i], column, none, true);
        assignment.value = std::move(insert.values[i]);
    }
}

void BindUpdate(Update& update, const Catalogue& catalogue) {
    update.target.info = &FindTable(catalogue, update.target.table);
    std::vector<Source> sources = {update.target};
    ExpressionBinder names(sources);
    for (Assignment& assignment : update.assignments) {
        const auto column = update.target.info->Find(assignment.name);
        if (column)
            assignment.column = static_cast<int>(*column);
        else
            names.NoteUnknown(assignment.name);
        names.Bind(assignment.value);
    }
    if (update.where)
        names.BindCondition(update.where);
    names.CheckNames();
    for (Assignment& assignment : update.assignments)
        FitToColumn(assignment.value,
                    update.target.info->columns[static_cast<std::size_t>(assignment.column)], sources, true);
}

void BindDelete(Delete& statement, const Catalogue& catalogue) {
    statement.target.info = &FindTable(catalogue, statement.target.table);
    const std::vector<Source> sources = {statement.target};
    ExpressionBinder names(sources);
    if (statement.where)
        names.BindCondition(statement.where);
    names.CheckNames();
}

void BindCreateIndex(CreateIndex& create, const Catalogue& catalogue) {
    const TableInfo& table = FindTable(catalogue, create.table);
    create.table = table.name;
    for (std::string& name : create.index.columns) {
        const auto column = table.Find(name);
        if (!column)
            throw faults::ItemNotFound(name);
        name = table.columns[*column].name;
    }
}

struct StatementBinder {
    const Catalogue& catalogue;

    void operator()(Select& select) const { SelectBinder(select, catalogue).Bind(); }
    void operator()(Insert& insert) const { BindInsert(insert, catalogue); }
    void operator()(Update& update) const { BindUpdate(update, catalogue); }
    void operator()(Delete& statement) const { BindDelete(statement, catalogue); }
    void operator()(CreateIndex& create) const { BindCreateIndex(create, catalogue); }
    void operator()(CreateTable& create) const {
        if (catalogue.Find(create.table.name))
            throw EngineError(engine_error::kTableExists,
                              fmt::format("Table '{}' already exists.", create.table.name));
    }
    void operator()(DropTable& drop) const { drop.table = FindTable(catalogue, drop.table).name; }
};

}  // namespace

void Bind(Statement& statement, const Catalogue& catalogue) {
    std::visit(StatementBinder{catalogue}, statement);
}

void BindCriteria(ExpressionPtr& criteria, const Select& query) {
    ExpressionBinder names(query.sources);
    names.UseResult(query, ExpressionBinder::Names::ResultThenTables);
    names.BindCondition(criteria);
    names.CheckNames();
}

}  // namespace kv::dialect
