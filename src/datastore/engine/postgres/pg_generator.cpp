#include "datastore/engine/postgres/pg_generator.h"

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"
#include "datastore/engine/postgres/pg_values.h"

namespace kv::postgres {

using dialect::Function;

namespace {

/// The name under which the server knows a function whose arguments go over as they are.
std::string_view PlainName(Function function) {
    switch (function) {
        case Function::FormatDate:
            return "kv.format_date";
        case Function::FormatNumber:
            return "kv.format_number";
        case Function::FormatText:
            return "kv.format_text";
        case Function::Right:
            return "kv.right_text";
        case Function::Len:
            return "length";
        case Function::Trim:
            return "btrim";
        case Function::LTrim:
            return "ltrim";
        case Function::RTrim:
            return "rtrim";
        case Function::UCase:
            return "kv.ucase";
        case Function::LCase:
            return "kv.lcase";
        case Function::Nz:
            return "coalesce";
        case Function::Val:
            return "kv.val";
        case Function::Abs:
            return "abs";
        case Function::Int:
            return "floor";
        case Function::Year:
            return "kv.year";
        case Function::Month:
            return "kv.month";
        case Function::Day:
            return "kv.day";
        case Function::Weekday:
            return "kv.weekday";
        case Function::DateSerial:
            return "kv.date_serial";
        default:
            return {};
    }
}

/// What the engine calls the form in which a value is compared or calculated with.
std::string_view CastOf(ValueType type) {
    switch (type) {
        case ValueType::Boolean:
        case ValueType::Integer:
            return "::bigint";
        case ValueType::Double:
            return "::float8";
        case ValueType::Currency:
            return "::numeric";
        case ValueType::Date:
            return "::timestamp";
        case ValueType::Text:
            return "::text";
        case ValueType::Null:
            break;
    }
    return {};
}

}  // namespace

std::string Quoted(std::string_view text) {
    return "'" + ReplaceAll(text, "'", "''") + "'";
}

std::string Literal(const Value& value) {
    switch (value.Type()) {
        case ValueType::Null:
            return "NULL";
        case ValueType::Boolean:
            return value.ToBoolean() ? "TRUE" : "FALSE";
        case ValueType::Text:
            return Quoted(value.ToText());
        case ValueType::Date:
            return Quoted(MomentText(value.ToDate())) + "::timestamp";
        default:
            return NumberText(value.ToDouble());
    }
}

std::string PgGenerator::Name(std::string_view name) const {
    return Generator::Quoted(Lower(name));
}

std::string PgGenerator::NextCounter(const TableInfo& table, const ColumnInfo& column) const {
    return fmt::format("nextval(pg_get_serial_sequence({}, {}))", postgres::Quoted(Name(table.name)),
                       postgres::Quoted(Lower(column.name)));
}

std::string PgGenerator::LockRows(const TableInfo& table) const {
    return fmt::format("SELECT {0} FROM {1} WHERE {0} = ANY($1::bigint[]) ORDER BY {0} FOR NO KEY UPDATE",
                       Name(KeyColumnOf(table)), Name(table.name));
}

std::string PgGenerator::Placeholder(std::size_t place, ValueType type) const {
    return fmt::format("${}{}", place, CastOf(type));
}

std::string PgGenerator::ColumnNumber(const std::string& column, ColumnType type) const {
    switch (type) {
        case ColumnType::Boolean:
            return fmt::format("(- {}::integer)", column);
        case ColumnType::Short:
        case ColumnType::Long:
            return column + "::bigint";
        case ColumnType::DateTime:
            return fmt::format("kv.serial({})", column);
        default:
            return column;
    }
}

std::string PgGenerator::Moment(const std::string& number) const {
    return fmt::format("kv.moment({})", number);
}

std::string PgGenerator::ColumnConstant(const Value& value) const {
    return Literal(value);
}

std::string PgGenerator::Ordered(const std::string& value, bool descending) const {
    return value + (descending ? " DESC NULLS LAST" : " ASC NULLS FIRST");
}

std::string PgGenerator::ReturningKey(const TableInfo& table) const {
    return " RETURNING " + Name(KeyColumnOf(table));
}

std::string PgGenerator::Divided(const std::string& a, const std::string& b) const {
    return fmt::format("({}::float8 / nullif({}::float8, 0))", a, b);
}

std::string PgGenerator::FunctionCall(Function function, const std::vector<std::string>& arguments) const {
    switch (function) {
        case Function::Left:
            return fmt::format("substr({}, 1, greatest({}, 0)::integer)", arguments[0], arguments[1]);
        case Function::Mid:
            if (arguments.size() == 2)
                return fmt::format("substr({}, greatest({}, 1)::integer)", arguments[0], arguments[1]);
            return fmt::format("substr({}, greatest({}, 1)::integer, greatest({}, 0)::integer)", arguments[0],
                               arguments[1], arguments[2]);
        case Function::Iif:
            return fmt::format("(CASE WHEN {} THEN {} ELSE {} END)", arguments[0], arguments[1],
                               arguments[2]);
        default:
            return fmt::format("{}({})", PlainName(function), Join(arguments, ", "));
    }
}

std::string PgGenerator::CaseBlind(const std::string& text, bool ofColumns) const {
    // An expression of a column compares as the column does; an explicit collation would make it another
    // expression than the one that is grouped by.
    return ofColumns ? text : text + " COLLATE kv.ci";
}

std::string PgGenerator::Like(const std::string& value, const std::string& pattern) const {
    // The pattern is turned once for all rows.
    return fmt::format("({} COLLATE \"und-x-icu\" ~* (SELECT kv.like_regex({})))", value, pattern);
}

std::string PgGenerator::Converted(const std::string& value, ValueType from, ValueType to) const {
    if (to == ValueType::Date)
        return fmt::format("kv.to_date({})", value);
    if (to != ValueType::Text)
        return fmt::format("kv.to_number({})", value);
    return fmt::format("{}({})", from == ValueType::Date ? "kv.date_text" : "kv.number_text", value);
}

std::string PgGenerator::FittedTo(const std::string& value, ColumnType to, int size) const {
    switch (to) {
        case ColumnType::Boolean:
            return fmt::format("kv.fit_boolean({})", value);
        case ColumnType::Short:
            return fmt::format("kv.fit_short({})", value);
        case ColumnType::Long:
            return fmt::format("kv.fit_long({})", value);
        case ColumnType::Double:
            return fmt::format("kv.fit_double({})", value);
        case ColumnType::Currency:
            return fmt::format("kv.fit_currency({})", value);
        case ColumnType::DateTime:
            return fmt::format("kv.fit_date({})", value);
        case ColumnType::Text:
            return fmt::format("kv.fit_text({}, {})", value, size);
        case ColumnType::Memo:
            return fmt::format("kv.fit_memo({})", value);
    }
    return value;
}

std::string PgGenerator::IntegerDivided(const std::string& a, const std::string& b) const {
    return fmt::format("(kv.round_even({}) / nullif(kv.round_even({}), 0))", a, b);
}

std::string PgGenerator::Remainder(const std::string& a, const std::string& b) const {
    return fmt::format("(kv.round_even({}) % nullif(kv.round_even({}), 0))", a, b);
}

std::string PgGenerator::ConditionAsNumber(const std::string& condition) const {
    return "(- " + condition + "::integer)";
}

std::string PgGenerator::ConstantText(const Value& value) const {
    switch (value.Type()) {
        case ValueType::Null:
            return "NULL";
        case ValueType::Boolean:
            return value.ToBoolean() ? "(-1)" : "0";
        case ValueType::Integer:
            return value.ToText();
        case ValueType::Text:
            return postgres::Quoted(value.ToText()) + "::text";
        default:
            return NumberText(value.ToDouble()) + "::float8";
    }
}

}  // namespace kv::postgres
