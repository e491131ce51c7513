#include "datastore/sql.h"

#include <fmt/format.h>

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "datastore/convert.h"
#include "datastore/engine_error.h"

namespace kv {
namespace {

std::string QuotedText(std::string_view text) {
    if (text.find('\'') != std::string_view::npos)
        throw EngineError(engine_error::kSyntaxInExpression,
                          fmt::format("Syntax error (missing operator) in query expression '{}'.", text));
    return "'" + std::string(text) + "'";
}

std::string DateLiteral(Date date) {
    return FormatDate(date, date.SecondOfDay() == 0 ? "#YYYY/MM/DD#" : "#YYYY/MM/DD HH:NN:SS#");
}

std::string ValueLiteral(const Value& value) {
    switch (value.Type()) {
        case ValueType::Null:
            return "null";
        case ValueType::Boolean:
            return value.ToBoolean() ? "true" : "false";
        case ValueType::Date:
            return DateLiteral(value.ToDate());
        case ValueType::Text:
            return QuotedText(*value.IfText());
        default:
            return value.ToText();
    }
}

}  // namespace

SqlArgument::SqlArgument(const DoubledApostrophes& text)
    : text_("'" + ReplaceAll(text.text, "'", "''") + "'") {}

SqlArgument::SqlArgument(const TextList& list) {
    std::vector<std::string> texts;
    texts.reserve(list.texts.size());
    for (const std::string& text : list.texts)
        texts.push_back(QuotedText(text));
    text_ = Join(texts, ",");
}

SqlArgument::SqlArgument(const NumberList& list) {
    for (const long number : list.numbers)
        text_ += (text_.empty() ? "" : ",") + std::to_string(number);
}

SqlArgument::SqlArgument(std::string_view text) : text_(QuotedText(text)) {}
SqlArgument::SqlArgument(bool value) : text_(value ? "true" : "false") {}
SqlArgument::SqlArgument(double number) : text_(NumberText(number)) {}
SqlArgument::SqlArgument(Currency amount) : text_(NumberText(amount.ToDouble())) {}
SqlArgument::SqlArgument(Date date) : text_(DateLiteral(date)) {}
SqlArgument::SqlArgument(const Value& value) : text_(ValueLiteral(value)) {}

std::string JoinSql(std::string_view pattern, std::initializer_list<SqlArgument> arguments) {
    std::string sql;
    sql.reserve(pattern.size() + 16 * arguments.size());
    const auto* argument = arguments.begin();
    for (std::size_t at = pattern.find("{}"); at != std::string_view::npos; at = pattern.find("{}")) {
        if (argument == arguments.end())
            throw std::logic_error("A statement pattern has more places than arguments");
        sql += pattern.substr(0, at);
        sql += argument->Text();
        pattern.remove_prefix(at + 2);
        ++argument;
    }
    if (argument != arguments.end())
        throw std::logic_error("A statement pattern has fewer places than arguments");
    sql += pattern;
    return sql;
}

}  // namespace kv
