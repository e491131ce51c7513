#include "datastore/engine/sqlite/sqlite_generator.h"

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"
#include "datastore/convert.h"

namespace kv {

using dialect::Function;

namespace {

/// The name under which the engine knows a function whose arguments go over as they are.
std::string_view PlainName(Function function) {
    switch (function) {
        case Function::FormatDate:
            return "kv_format_date";
        case Function::FormatNumber:
            return "kv_format_number";
        case Function::FormatText:
            return "kv_format_text";
        case Function::Right:
            return "kv_right";
        case Function::Len:
            return "length";
        case Function::Trim:
            return "trim";
        case Function::LTrim:
            return "ltrim";
        case Function::RTrim:
            return "rtrim";
        case Function::UCase:
            return "kv_ucase";
        case Function::LCase:
            return "kv_lcase";
        case Function::Nz:
            return "coalesce";
        case Function::Val:
            return "kv_val";
        case Function::Int:
            return "kv_int";
        case Function::Abs:
            return "abs";
        case Function::Year:
            return "kv_year";
        case Function::Month:
            return "kv_month";
        case Function::Day:
            return "kv_day";
        case Function::Weekday:
            return "kv_weekday";
        case Function::DateSerial:
            return "kv_date_serial";
        default:
            return {};
    }
}

}  // namespace

std::string SqliteLiteral(const Value& value) {
    switch (value.Type()) {
        case ValueType::Null:
            return "NULL";
        case ValueType::Boolean:
            return value.ToBoolean() ? "-1" : "0";
        case ValueType::Text:
            return "'" + ReplaceAll(value.ToText(), "'", "''") + "'";
        case ValueType::Date:
            return NumberText(StoredSerial(value.ToDate()));
        default:
            return NumberText(value.ToDouble());
    }
}

std::string SqliteGenerator::Placeholder(std::size_t place, ValueType /*type*/) const {
    return fmt::format("?{}", place);
}

std::string SqliteGenerator::FunctionCall(Function function,
                                          const std::vector<std::string>& arguments) const {
    switch (function) {
        case Function::Left:
            return fmt::format("substr({}, 1, max({}, 0))", arguments[0], arguments[1]);
        case Function::Mid:
            if (arguments.size() == 2)
                return fmt::format("substr({}, max({}, 1))", arguments[0], arguments[1]);
            return fmt::format("substr({}, max({}, 1), max({}, 0))", arguments[0], arguments[1],
                               arguments[2]);
        case Function::Iif:
            return fmt::format("(CASE WHEN {} THEN {} ELSE {} END)", arguments[0], arguments[1],
                               arguments[2]);
        default:
            return fmt::format("{}({})", PlainName(function), Join(arguments, ", "));
    }
}

std::string SqliteGenerator::CaseBlind(const std::string& text, bool /*ofColumns*/) const {
    return text + " COLLATE KVTEXT";
}

std::string SqliteGenerator::Like(const std::string& value, const std::string& pattern) const {
    return fmt::format("kv_like({}, {})", value, pattern);
}

std::string SqliteGenerator::Converted(const std::string& value, ValueType from, ValueType to) const {
    if (to == ValueType::Date)
        return fmt::format("kv_to_date({})", value);
    if (to != ValueType::Text)
        return fmt::format("kv_to_number({})", value);
    return fmt::format("{}({})", from == ValueType::Date ? "kv_date_text" : "kv_number_text", value);
}

std::string SqliteGenerator::FittedTo(const std::string& value, ColumnType to, int size) const {
    return fmt::format("kv_fit({}, {}, {})", value, static_cast<int>(to), size);
}

std::string SqliteGenerator::IntegerDivided(const std::string& a, const std::string& b) const {
    return fmt::format("(kv_round({}) / kv_round({}))", a, b);
}

std::string SqliteGenerator::Remainder(const std::string& a, const std::string& b) const {
    return fmt::format("(kv_round({}) % kv_round({}))", a, b);
}

std::string SqliteGenerator::ConditionAsNumber(const std::string& condition) const {
    return "(- " + condition + ")";
}

std::string SqliteGenerator::ConstantText(const Value& value) const {
    return SqliteLiteral(value);
}

}  // namespace kv
