#include "tool/cells.h"

#include <cmath>
#include <limits>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"
#include "datastore/engine_error.h"

namespace kv::tool {
namespace {

constexpr std::size_t kDayLength = 10;  // "YYYY-MM-DD"
constexpr std::size_t kTimeLength = 8;  // "HH:MM:SS"

Value ReadBoolean(const std::string& text) {
    if (!EqualsNoCase(text, "true") && !EqualsNoCase(text, "false"))
        throw CellError("true or false is wanted");
    return EqualsNoCase(text, "true");
}

Value ReadNumber(const std::string& text) {
    const auto number = text.find_first_of("$, ") == std::string::npos ? ParseNumber(text) : std::nullopt;
    if (!number)
        throw CellError("it is no number");
    return *number;
}

Value ReadWhole(const std::string& text, ColumnType type) {
    const double number = ReadNumber(text).ToDouble();
    const double most = type == ColumnType::Short ? std::numeric_limits<std::int16_t>::max()
                                                  : std::numeric_limits<std::int32_t>::max();
    if (number != std::floor(number))
        throw CellError("a whole number is wanted");
    if (number > most || number < -most - 1)
        throw CellError("the number is too large");
    return static_cast<long>(number);
}

Value ReadMoney(const std::string& text) {
    const double amount = ReadNumber(text).ToDouble();
    try {
        return Currency::FromDouble(amount);
    } catch (const EngineError&) {
        throw CellError("the number is too large");
    }
}

Value ReadDate(const std::string& text) {
    // Day and month in another order could be taken for each other.
    const auto date =
        text.find_first_not_of("0123456789-: ") == std::string::npos ? ParseDate(text) : std::nullopt;
    if (!date)
        throw CellError("it is no date or time");
    return *date;
}

Value ReadText(const std::string& text, const ColumnInfo& column) {
    const std::size_t length = Length(text);
    if (column.size > 0 && length > static_cast<std::size_t>(column.size))
        throw CellError(fmt::format("it has {} characters and the column holds {}", length, column.size));
    return text;
}

}  // namespace

Value ReadCell(const CsvCell& cell, const ColumnInfo& column) {
    if (!cell)
        return {};
    switch (column.type) {
        case ColumnType::Boolean:
            return ReadBoolean(*cell);
        case ColumnType::Short:
        case ColumnType::Long:
            return ReadWhole(*cell, column.type);
        case ColumnType::Double:
            return ReadNumber(*cell);
        case ColumnType::Currency:
            return ReadMoney(*cell);
        case ColumnType::DateTime:
            return ReadDate(*cell);
        case ColumnType::Text:
        case ColumnType::Memo:
            break;
    }
    return ReadText(*cell, column);
}

CsvCell WriteCell(const Value& value) {
    switch (value.Type()) {
        case ValueType::Null:
            return std::nullopt;
        case ValueType::Boolean:
            return value.ToBoolean() ? "true" : "false";
        case ValueType::Date: {
            const Date date = value.ToDate();
            const std::string text = IsoText(date);
            if (date.SecondOfDay() == 0)
                return text.substr(0, kDayLength);
            return date.DayNumber() == 0 ? text.substr(text.size() - kTimeLength) : text;
        }
        default:
            return value.ToText();
    }
}

nlohmann::ordered_json JsonValue(const Value& value) {
    switch (value.Type()) {
        case ValueType::Null:
            return nullptr;
        case ValueType::Boolean:
            return value.ToBoolean();
        case ValueType::Integer:
            return value.ToInteger();
        case ValueType::Double:
        case ValueType::Currency:
            return value.ToDouble();
        case ValueType::Date:
            return IsoText(value.ToDate());
        case ValueType::Text:
            break;
    }
    return value.ToText();
}

}  // namespace kv::tool
