#include "datastore/convert.h"

#include <cmath>
#include <limits>

#include "base/text.h"
#include "datastore/faults.h"

namespace kv {
namespace {

Value WholeNumber(const Value& value, std::int64_t least, std::int64_t most) {
    const std::int64_t number = value.ToInteger();
    if (number < least || number > most)
        throw faults::TypeConversion();
    return {static_cast<long long>(number)};
}

Value FittingText(const Value& value, int size) {
    std::string text = value.ToText();
    // Bytes are at least as many as characters, so most texts need no count.
    if (size > 0 && text.size() > static_cast<std::size_t>(size) &&
        Length(text) > static_cast<std::size_t>(size))
        throw faults::FieldTooSmall();
    return {std::move(text)};
}

}  // namespace

double StoredSerial(Date date) {
    constexpr double kSecondsADay = 86400;
    return static_cast<double>(date.DayNumber()) + static_cast<double>(date.SecondOfDay()) / kSecondsADay;
}

Value ConvertTo(const Value& value, ValueType type) {
    if (value.IsNull() || value.Type() == type)
        return value;
    switch (type) {
        case ValueType::Boolean:
            return {value.ToBoolean()};
        case ValueType::Integer:
            return {static_cast<long long>(value.ToInteger())};
        case ValueType::Double:
            return {value.ToDouble()};
        case ValueType::Currency:
            return {value.ToCurrency()};
        case ValueType::Date:
            return {value.ToDate()};
        case ValueType::Text:
            return {value.ToText()};
        case ValueType::Null:
            break;
    }
    return value;
}

Value ConvertToColumn(const Value& value, const ColumnInfo& column) {
    if (value.IsNull())
        return column.type == ColumnType::Boolean ? Value(false) : Value();
    switch (column.type) {
        case ColumnType::Short:
            return WholeNumber(value, std::numeric_limits<std::int16_t>::min(),
                               std::numeric_limits<std::int16_t>::max());
        case ColumnType::Long:
            return WholeNumber(value, std::numeric_limits<std::int32_t>::min(),
                               std::numeric_limits<std::int32_t>::max());
        case ColumnType::Text:
            return FittingText(value, column.size);
        case ColumnType::DateTime:
            return {Date(StoredSerial(value.ToDate()))};
        default:
            return ConvertTo(value, FieldType(column.type));
    }
}

}  // namespace kv
