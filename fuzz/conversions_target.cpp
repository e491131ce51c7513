// "text<US>pattern<US>number", the parts divided by 0x1F: what one conversion writes another reads back, and
// no text or number is too strange for any of them.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "datastore/convert.h"
#include "datastore/dialect/lexer.h"
#include "datastore/engine_error.h"
#include "datastore/like_pattern.h"
#include "datastore/sql.h"
#include "fuzz/target.h"

namespace kv {
namespace {

constexpr std::size_t kLongest = 1024;
constexpr char kDivider = '\x1F';

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

void CheckTexts(std::string_view text, std::string_view other) {
    const std::string utf8 = ToUtf8(text);
    Expect(ToUtf8(utf8) == utf8, "a valid text was changed");
    Upper(text);
    Lower(text);
    Expect(EqualsNoCase(text, text) && CompareText(utf8, utf8) == 0, "a text does not equal itself");
    const std::string wide = ToUtf8(other);
    Expect(CompareText(utf8, wide) == -CompareText(wide, utf8), "an order that depends on who asks");
    if (CompareText(utf8, wide) == 0)
        Expect(HashText(utf8) == HashText(wide), "equal texts with unequal hashes");
    for (const std::size_t count : {0U, 1U, 3U, 100U}) {
        Expect(Left(text, count) + Mid(text, count + 1) == text, "a text cut in two has lost something");
        Expect(Length(utf8) < count || Length(Right(utf8, count)) == count, "a cut of another length");
        Expect(Length(PadLeftToWidth(utf8, count)) == count &&
                   Length(PadRightToWidth(utf8, count, true)) == count,
               "a padded text of another width");
    }
    Expect(Join(Split(text, ','), ",") == text, "a list joined again is another");
    DigitsOf(text);
    FormatText(text, other);
    FormatPhone(text);
}

void CheckDates(std::string_view text, std::string_view pattern, double number) {
    if (const auto date = ParseDate(text)) {
        Expect(ParseDate(IsoText(*date)) == *date, "a date is read back as another");
        Expect(StoredSerial(Date(StoredSerial(*date))) == StoredSerial(*date),
               "a stored date is stored as another");
    }
    const Date date(number);
    FormatDate(date, pattern);
    IsoText(date);
    date.Weekday();
    DaysBetween(date, Date());
    MinutesBetween(Date(), date);
    WeeksBetween(date, Date());
    MonthsBetween(date, Date());
    Expect(date.SecondOfDay() >= 0 && date.SecondOfDay() < 86400, "a second outside the day");
    Expect(date.At(date.TimeOnly()) == date, "day and time are not the moment");
    // What the rules add to dates are days and months of a life.
    if (std::fabs(number) < 4e6)
        date.AddMonths(static_cast<int>(number / 1000)).AddYears(-3).AddMinutes(number);
    CountsAsEmpty(date);
}

void CheckNumbers(std::string_view text, std::string_view pattern, double number) {
    Expect(std::isfinite(Val(text)), "a text's number is none");
    if (const auto parsed = ParseNumber(text)) {
        Expect(std::isfinite(*parsed), "a parsed number is none");
        Expect(ParseNumber(NumberText(*parsed)) == *parsed, "a number is read back as another");
    }
    if (const auto whole = ParseInteger(text))
        Expect(ParseNumber(text) == static_cast<double>(*whole), "a whole number is another number");
    FormatNumber(number, pattern);
    for (const int decimals : {0, 2, 4}) {
        const double rounded = RoundTo(number, decimals);
        Expect(!std::isfinite(number) || std::fabs(rounded - number) <= std::pow(10, -decimals) ||
                   std::fabs(number) > 1e12,
               "a rounded number is far off");
    }
}

void CheckValue(const Value& value) {
    constexpr ValueType kTypes[] = {ValueType::Null,   ValueType::Boolean,  ValueType::Integer,
                                    ValueType::Double, ValueType::Currency, ValueType::Date,
                                    ValueType::Text};
    for (const ValueType type : kTypes)
        Succeeds([&] {
            const Value converted = ConvertTo(value, type);
            Expect(value.IsNull() || type == ValueType::Null || converted.Type() == type,
                   "a value of another type");
            converted.ToText();
        });
    for (const ColumnType type :
         {ColumnType::Boolean, ColumnType::Short, ColumnType::Long, ColumnType::Double, ColumnType::Currency,
          ColumnType::DateTime, ColumnType::Text, ColumnType::Memo}) {
        ColumnInfo column;
        column.type = type;
        column.size = 10;
        Succeeds([&] {
            const Value stored = ConvertToColumn(value, column);
            const bool isNan = stored.Type() == ValueType::Double && std::isnan(stored.ToDouble());
            Expect(isNan || ConvertToColumn(stored, column) == stored, "a stored value is stored as another");
        });
    }
    Succeeds([&] { value.ToBoolean(); });
    IsBlank(value);
}

/// Whatever a value is, it stays one value of the statement that it is joined into.
void CheckJoined(const Value& value) {
    std::string sql;
    const std::string* text = value.IfText();
    const bool joined = Succeeds([&] { sql = Sql("a = {}", value); });
    Expect(joined != (text && text->find('\'') != std::string::npos),
           "an apostrophe and its refusal do not go together");
    if (!joined)
        return;
    const dialect::Lexed lexed = dialect::Lex(sql);
    std::size_t tokens = lexed.tokens.size() - 3;
    if (tokens == 2 && lexed.tokens[2].symbol == dialect::Symbol::Minus)
        --tokens;
    Expect(tokens == 1, "a joined value is more than one");
    if (text && text->find('\0') != std::string::npos)
        Expect(!lexed.sound, "a text that no engine's statement can hold was taken");
    else if (text)
        Expect(lexed.literals.size() == 1 && lexed.literals[0] == value, "a joined text is another");
}

void CheckPattern(std::string_view text, std::string_view pattern) {
    const LikePattern like(pattern);
    like.Matches(text);
    Expect(LikePattern("*").Matches(text), "a star that does not match");
    const bool plain = pattern.find_first_of("*?#[") == std::string_view::npos;
    if (plain && !pattern.empty() && IsAscii(text) && IsAscii(pattern)) {
        const std::string middle(pattern);
        Expect(
            LikePattern("*" + middle + "*").Matches(text) == LikePattern("**" + middle + "*").Matches(text),
            "two forms of one pattern disagree");
        Expect(like.Matches(text) == EqualsNoCase(text, pattern),
               "a plain pattern and an equal text disagree");
    }
}

double NumberOf(std::string_view bytes) {
    double number = 0;
    if (bytes.size() == sizeof number)
        std::memcpy(&number, bytes.data(), sizeof number);
    else
        number = Val(bytes);
    return number;
}

}  // namespace
}  // namespace kv

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, std::min(size, kv::kLongest));
    const std::string_view text = input.Part(kv::kDivider);
    const std::string_view pattern = input.Part(kv::kDivider);
    const double number = kv::NumberOf(input.Rest());
    kv::CheckTexts(text, pattern);
    kv::CheckDates(text, pattern, number);
    kv::CheckNumbers(text, pattern, number);
    kv::CheckPattern(text, pattern);
    for (const kv::Value& value : {kv::Value(text), kv::Value(number), kv::Value(kv::Date(number)),
                                   kv::Value(number > 0), kv::Value(std::bit_cast<long long>(number))}) {
        kv::CheckValue(value);
        kv::CheckJoined(value);
    }
    return 0;
}
