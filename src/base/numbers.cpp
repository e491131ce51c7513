#include "base/numbers.h"

#include <array>
#include <charconv>
#include <cmath>

#include <fmt/format.h>

#include "base/format.h"
#include "base/text.h"

namespace kv {
namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The number at the front and how many characters it takes; none for words such as "inf".
std::pair<double, std::size_t> NumberAtFront(std::string_view text) {
    std::size_t sign = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
    const std::size_t digit = sign + (text.size() > sign && text[sign] == '.' ? 1 : 0);
    if (digit >= text.size() || !IsDigit(text[digit]))
        return {0, 0};
    double number = 0;
    const auto [end, error] = std::from_chars(text.data() + sign, text.data() + text.size(), number);
    if (error != std::errc())
        return {0, 0};
    return {text[0] == '-' ? -number : number, static_cast<std::size_t>(end - text.data())};
}

/// Without sign, $, blanks around them and thousands commas: "-$ 1,234.5" gives "-1234.5". Nothing when they
/// stand wrongly.
std::optional<std::string> PlainNumber(std::string_view text) {
    text = TrimView(text);
    std::string plain;
    bool dollar = false;
    bool signedAlready = false;
    while (!text.empty() && (text[0] == '$' || text[0] == '-' || text[0] == '+' || text[0] == ' ')) {
        bool& seen = text[0] == '$' ? dollar : signedAlready;
        if (text[0] != ' ') {
            if (seen)
                return std::nullopt;
            seen = true;
        }
        if (text[0] == '-')
            plain += '-';
        text.remove_prefix(1);
    }
    const std::size_t whole = std::min(text.find('.'), text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool comma = text[i] == ',';
        if (comma && (i == 0 || i >= whole))
            return std::nullopt;
        if (!comma)
            plain += text[i];
    }
    return plain;
}

/// Reads the pieces of a date or time text from the front.
class Scanner {
  public:
    explicit Scanner(std::string_view text) : text_(text) {}
    bool AtEnd() const { return at_ == text_.size(); }
    void Restart() { at_ = 0; }

    bool Take(char c) {
        if (AtEnd() || text_[at_] != c)
            return false;
        ++at_;
        return true;
    }

    bool TakeBlanks() {
        const std::size_t from = at_;
        while (Take(' ')) {
        }
        return at_ > from;
    }

    /// Takes a run of digits whose length lies in the bounds.
    std::optional<int> TakeNumber(std::size_t least, std::size_t most) {
        std::size_t end = at_;
        while (end < text_.size() && IsDigit(text_[end]))
            ++end;
        if (end - at_ < least || end - at_ > most)
            return std::nullopt;
        int number = 0;
        for (; at_ < end; ++at_)
            number = 10 * number + (text_[at_] - '0');
        return number;
    }

    std::string_view TakeLetters() {
        const std::size_t from = at_;
        while (at_ < text_.size() && ((text_[at_] | 0x20) >= 'a' && (text_[at_] | 0x20) <= 'z'))
            ++at_;
        return text_.substr(from, at_ - from);
    }

  private:
    std::string_view text_;
    std::size_t at_ = 0;
};

/// "Jan" is 1; 0 for a word that is no month.
int MonthNumber(std::string_view word) {
    for (int month = 1; month <= 12; ++month)
        if (EqualsNoCase(word, FormatDate(Date::FromCivil(2000, month, 1), "MMM")))
            return month;
    return 0;
}

struct YearMonthDay {
    int year, month, day;
};

/// "YYYY/MM/DD" and "YYYY-MM-DD".
std::optional<YearMonthDay> ScanYearFirst(Scanner& scanner) {
    const auto year = scanner.TakeNumber(4, 4);
    if (!year)
        return std::nullopt;
    const char separator = scanner.Take('-') ? '-' : '/';
    if (separator == '/' && !scanner.Take('/'))
        return std::nullopt;
    const auto month = scanner.TakeNumber(1, 2);
    if (!month || !scanner.Take(separator))
        return std::nullopt;
    const auto day = scanner.TakeNumber(1, 2);
    if (!day)
        return std::nullopt;
    return YearMonthDay{*year, *month, *day};
}

/// "MM/DD/YYYY" and "MMM/DD/YYYY".
std::optional<YearMonthDay> ScanMonthFirst(Scanner& scanner) {
    const std::string_view word = scanner.TakeLetters();
    const std::optional<int> month = word.empty() ? scanner.TakeNumber(1, 2) : MonthNumber(word);
    if (!month || !scanner.Take('/'))
        return std::nullopt;
    const auto day = scanner.TakeNumber(1, 2);
    if (!day || !scanner.Take('/'))
        return std::nullopt;
    const auto year = scanner.TakeNumber(4, 4);
    if (!year)
        return std::nullopt;
    return YearMonthDay{*year, *month, *day};
}

/// The rest of the text as a time of day.
std::optional<Date> ScanTime(Scanner& scanner) {
    auto hour = scanner.TakeNumber(1, 2);
    if (!hour || !scanner.Take(':'))
        return std::nullopt;
    const auto minute = scanner.TakeNumber(2, 2);
    const auto second = scanner.Take(':') ? scanner.TakeNumber(2, 2) : 0;
    if (!minute || *minute > 59 || !second || *second > 59)
        return std::nullopt;
    scanner.TakeBlanks();
    if (const std::string_view half = scanner.TakeLetters(); !half.empty()) {
        const bool afternoon = EqualsNoCase(half, "PM");
        if ((!afternoon && !EqualsNoCase(half, "AM")) || *hour < 1 || *hour > 12)
            return std::nullopt;
        hour = *hour % 12 + (afternoon ? 12 : 0);
    }
    if (*hour > 23 || !scanner.AtEnd())
        return std::nullopt;
    return Date::FromTime(*hour, *minute, *second);
}

}  // namespace

double Val(std::string_view text) {
    return NumberAtFront(ReplaceAll(text, " ", "")).first;
}

std::optional<double> ParseNumber(std::string_view text) {
    const auto plain = PlainNumber(text);
    if (!plain)
        return std::nullopt;
    const auto [number, length] = NumberAtFront(*plain);
    if (length == 0 || length != plain->size())
        return std::nullopt;
    return number;
}

std::optional<std::int64_t> ParseInteger(std::string_view text) {
    const auto plain = PlainNumber(text);
    std::int64_t number = 0;
    if (!plain)
        return std::nullopt;
    const char* end = plain->data() + plain->size();
    const auto [stop, error] = std::from_chars(plain->data(), end, number);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return number;
}

std::string NumberText(double number) {
    return number == 0 ? "0" : fmt::format("{}", number);
}

std::optional<Date> ParseDate(std::string_view text) {
    Scanner scanner(TrimView(text));
    auto day = ScanYearFirst(scanner);
    if (!day) {
        scanner.Restart();
        day = ScanMonthFirst(scanner);
    }
    if (!day) {
        scanner.Restart();
        return ScanTime(scanner);
    }
    if (!Date::IsCivil(day->year, day->month, day->day))
        return std::nullopt;
    const Date date = Date::FromCivil(day->year, day->month, day->day);
    if (scanner.AtEnd())
        return date;
    if (!scanner.TakeBlanks())
        return std::nullopt;
    const auto time = ScanTime(scanner);
    if (!time)
        return std::nullopt;
    return date.At(*time);
}

std::string IsoText(Date date) {
    const CivilDate day = date.Civil();
    const TimeOfDay time = date.Time();
    return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", day.year, day.month, day.day, time.hour,
                       time.minute, time.second);
}

double RoundTo(double number, int decimals) {
    // Fifteen digits are what a double surely holds: 1.005, which is stored a little lower, still counts as a
    // half.
    const double scale = std::pow(10.0, decimals);
    const double scaled = number * scale;
    if (!std::isfinite(scaled))
        return number;
    std::array<char, 40> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), scaled,
                                   std::chars_format::scientific, 14);
    double decimal = 0;
    std::from_chars(digits.data(), end.ptr, decimal);
    return std::round(decimal) / scale;
}

}  // namespace kv
