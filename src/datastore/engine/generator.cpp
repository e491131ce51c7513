#include "datastore/engine/generator.h"

#include <numeric>

#include <fmt/format.h>

#include "base/text.h"
#include "datastore/engine/statement_writer.h"

namespace kv {

using namespace dialect;

std::string_view KeyColumnOf(const TableInfo& table) {
    const auto counter = table.Counter();
    return counter ? std::string_view(table.columns[*counter].name) : kKeyColumn;
}

std::string Generator::Quoted(std::string_view name) {
    return '"' + ReplaceAll(name, "\"", "\"\"") + '"';
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
