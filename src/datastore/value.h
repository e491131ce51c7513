#pragma once
#include <compare>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "base/date.h"

namespace kv {

enum class ValueType { Null, Boolean, Integer, Double, Currency, Date, Text };

/// Money, to four decimals, held as ten-thousandths.
class Currency {
  public:
    constexpr Currency() = default;
    /// Rounds half away from zero to four decimals.
    static Currency FromDouble(double amount);
    static constexpr Currency FromTenThousandths(std::int64_t units) { return Currency(units); }
    constexpr std::int64_t TenThousandths() const { return units_; }
    double ToDouble() const { return static_cast<double>(units_) / 10000.0; }
    friend constexpr auto operator<=>(const Currency&, const Currency&) = default;

  private:
    explicit constexpr Currency(std::int64_t units) : units_(units) {}
    std::int64_t units_ = 0;
};

/// One field's content. Null and empty text are two things.
class Value {
  public:
    Value() = default;
    Value(std::nullptr_t) {}
    Value(bool value) : held_(value) {}
    Value(int value) : held_(static_cast<std::int64_t>(value)) {}
    Value(long value) : held_(static_cast<std::int64_t>(value)) {}
    Value(long long value) : held_(static_cast<std::int64_t>(value)) {}
    Value(double value) : held_(value) {}
    Value(Currency value) : held_(value) {}
    Value(Date value) : held_(value) {}
    Value(std::string value) : held_(std::in_place_type<std::string>, std::move(value)) {}
    Value(std::string_view value) : held_(std::in_place_type<std::string>, value) {}
    Value(const char* value) : held_(std::in_place_type<std::string>, value) {}

    ValueType Type() const { return static_cast<ValueType>(held_.index()); }
    bool IsNull() const { return held_.index() == 0; }

    /// Joined to the empty text: Null becomes "", a boolean "True" or "False", a date its general form
    /// ("1/31/2026 3:05:00 PM", the day or the time alone where the other is nought).
    std::string ToText() const&;
    std::string ToText() &&;
    /// As a number; a text is read in full. Throws EngineError 94 for Null, 3421 for a text that is no
    /// number.
    double ToDouble() const {
        const double* number = std::get_if<double>(&held_);
        return number ? *number : OtherToDouble();
    }
    /// Rounded to the nearest whole number, halves to the even one. Throws as ToDouble.
    std::int64_t ToInteger() const {
        const std::int64_t* whole = std::get_if<std::int64_t>(&held_);
        return whole ? *whole : OtherToInteger();
    }
    /// A number other than 0 is true; "True", "Yes" and "-1" are. Throws as ToDouble.
    bool ToBoolean() const;
    Currency ToCurrency() const;
    /// A number is a day number, a text is parsed. Throws EngineError 94 for Null, 3421 for a text that is no
    /// date.
    Date ToDate() const {
        const Date* date = std::get_if<Date>(&held_);
        return date ? *date : OtherToDate();
    }

    /// As above, with `fallback` for Null.
    double NumberOr(double fallback) const { return IsNull() ? fallback : ToDouble(); }
    bool IsTrue() const { return !IsNull() && ToBoolean(); }

    const std::string* IfText() const { return std::get_if<std::string>(&held_); }

    /// The same type and the same content, texts compared exactly. What tells a changed field.
    friend bool operator==(const Value& a, const Value& b) = default;

  private:
    double OtherToDouble() const;
    std::int64_t OtherToInteger() const;
    Date OtherToDate() const;

    std::variant<std::monostate, bool, std::int64_t, double, Currency, Date, std::string> held_;
};

/// True only for Null and the empty or blank text: the test for a value that is not filled.
bool IsBlank(const Value& value);

}  // namespace kv
