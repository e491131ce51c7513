#include "datastore/value.h"

#include <cmath>
#include <limits>

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "datastore/faults.h"

namespace kv {
namespace {

constexpr double kUnits = 10000.0;

std::string DateText(Date date) {
    const bool day = date.DayNumber() != 0;
    const bool time = date.SecondOfDay() != 0;
    if (!day)
        return FormatDate(date, "H:NN:SS AM/PM");
    return FormatDate(date, time ? "M/D/YYYY H:NN:SS AM/PM" : "M/D/YYYY");
}

/// The nearest whole number, halves to the even one. Throws where no 64 bits hold it.
std::int64_t RoundedToEven(double number) {
    constexpr double kLimit = 9.2e18;
    if (!(std::fabs(number) < kLimit))
        throw faults::TypeConversion();
    double whole = std::round(number);
    if (std::fabs(number - std::trunc(number)) == 0.5)
        whole = 2.0 * std::round(number / 2.0);
    return static_cast<std::int64_t>(whole);
}

double NumberOf(const std::string& text) {
    if (const auto number = ParseNumber(text))
        return *number;
    throw faults::TypeConversion();
}

}  // namespace

Currency Currency::FromDouble(double amount) {
    // What was stored as money lies on the grid already; halves are far from this bound.
    const double scaled = amount * kUnits;
    const double nearest = std::nearbyint(scaled);
    if (std::fabs(scaled - nearest) < 1e-3 && std::fabs(scaled) < 1e15)
        return Currency(static_cast<std::int64_t>(nearest));
    const double units = RoundTo(amount, 4) * kUnits;
    constexpr double kLimit = 9.2e18;
    if (!(std::fabs(units) < kLimit))
        throw faults::TypeConversion();
    return Currency(std::llround(units));
}

std::string Value::ToText() && {
    if (auto* text = std::get_if<std::string>(&held_))
        return std::move(*text);
    return static_cast<const Value&>(*this).ToText();
}

std::string Value::ToText() const& {
    switch (Type()) {
        case ValueType::Null:
            return {};
        case ValueType::Boolean:
            return std::get<bool>(held_) ? "True" : "False";
        case ValueType::Integer:
            return std::to_string(std::get<std::int64_t>(held_));
        case ValueType::Double:
            return NumberText(std::get<double>(held_));
        case ValueType::Currency:
            return NumberText(std::get<Currency>(held_).ToDouble());
        case ValueType::Date:
            return DateText(std::get<Date>(held_));
        case ValueType::Text:
            return std::get<std::string>(held_);
    }
    return {};
}

double Value::OtherToDouble() const {
    switch (Type()) {
        case ValueType::Null:
            throw faults::InvalidUseOfNull();
        case ValueType::Boolean:
            return std::get<bool>(held_) ? -1 : 0;
        case ValueType::Integer:
            return static_cast<double>(std::get<std::int64_t>(held_));
        case ValueType::Double:
            return std::get<double>(held_);
        case ValueType::Currency:
            return std::get<Currency>(held_).ToDouble();
        case ValueType::Date:
            return std::get<Date>(held_).Serial();
        case ValueType::Text:
            return NumberOf(std::get<std::string>(held_));
    }
    return 0;
}

std::int64_t Value::OtherToInteger() const {
    return RoundedToEven(ToDouble());
}

bool Value::ToBoolean() const {
    if (const std::string* text = IfText()) {
        if (EqualsNoCase(*text, "True") || EqualsNoCase(*text, "Yes"))
            return true;
        if (EqualsNoCase(*text, "False") || EqualsNoCase(*text, "No"))
            return false;
    }
    return ToDouble() != 0;
}

Currency Value::ToCurrency() const {
    if (const auto* amount = std::get_if<Currency>(&held_))
        return *amount;
    return Currency::FromDouble(ToDouble());
}

Date Value::OtherToDate() const {
    if (const std::string* text = IfText()) {
        if (const auto date = ParseDate(*text))
            return *date;
        throw faults::TypeConversion();
    }
    return Date(ToDouble());
}

bool IsBlank(const Value& value) {
    if (value.IsNull())
        return true;
    const std::string* text = value.IfText();
    return text && TrimView(*text).empty();
}

}  // namespace kv
