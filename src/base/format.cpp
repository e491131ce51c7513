#include "base/format.h"

#include <array>
#include <cmath>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"

namespace kv {
namespace {

constexpr std::array<std::string_view, 12> kMonths = {"January",   "February", "March",    "April",
                                                      "May",       "June",     "July",     "August",
                                                      "September", "October",  "November", "December"};
constexpr std::array<std::string_view, 7> kWeekdays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                       "Thursday", "Friday", "Saturday"};

struct NamedPattern {
    std::string_view name;
    std::string_view pattern;
};
constexpr std::array kNamedPatterns = {NamedPattern{"Medium Date", "DD-MMM-YY"},
                                       NamedPattern{"Medium Time", "HH:NN AM/PM"},
                                       NamedPattern{"Short Date", "M/D/YYYY"}};

std::string_view PatternOf(std::string_view pattern) {
    for (const NamedPattern& named : kNamedPatterns)
        if (EqualsNoCase(pattern, named.name))
            return named.pattern;
    return pattern;
}

char LowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

bool IsAmPm(std::string_view text) {
    return StartsWithNoCase(text, "am/pm");
}

/// Writes a moment, one run of equal pattern letters at a time.
class DateFormatter {
  public:
    DateFormatter(Date date, std::string_view pattern)
        : day_(date.Civil()), time_(date.Time()), pattern_(pattern) {
        weekday_ = static_cast<std::size_t>(date.Weekday() - 1);
        for (std::size_t i = 0; i < pattern.size(); ++i)
            halves_ = halves_ || IsAmPm(pattern.substr(i));
    }

    std::string Run() {
        for (std::size_t at = 0; at < pattern_.size();) {
            if (IsAmPm(pattern_.substr(at))) {
                out_ +=
                    pattern_[at] == 'a' ? (time_.hour < 12 ? "am" : "pm") : (time_.hour < 12 ? "AM" : "PM");
                at += 5;
                continue;
            }
            const char letter = LowerAscii(pattern_[at]);
            std::size_t end = at + 1;
            while (end < pattern_.size() && LowerAscii(pattern_[end]) == letter)
                ++end;
            if (!WriteField(letter, end - at))
                out_ += pattern_.substr(at, end - at);
            at = end;
        }
        return out_;
    }

  private:
    bool WriteField(char letter, std::size_t length) {
        const bool minutes = letter == 'n' || (letter == 'm' && length <= 2 && afterHour_);
        if (minutes)
            Number(time_.minute, length);
        else if (letter == 'd')
            DayField(length);
        else if (letter == 'm')
            MonthField(length);
        else if (letter == 'y')
            Number(length > 2 ? day_.year : day_.year % 100, length > 2 ? 4 : 2);
        else if (letter == 'h')
            Number(halves_ ? (time_.hour + 11) % 12 + 1 : time_.hour, length);
        else if (letter == 's')
            Number(time_.second, length);
        else
            return false;
        afterHour_ = letter == 'h';
        return true;
    }

    void DayField(std::size_t length) {
        if (length <= 2)
            Number(day_.day, length);
        else
            out_ += length == 3 ? kWeekdays[weekday_].substr(0, 3) : kWeekdays[weekday_];
    }

    void MonthField(std::size_t length) {
        const std::string_view name = kMonths[static_cast<std::size_t>(day_.month - 1)];
        if (length <= 2)
            Number(day_.month, length);
        else
            out_ += length == 3 ? name.substr(0, 3) : name;
    }

    void Number(int number, std::size_t width) { out_ += fmt::format("{:0{}}", number, width); }

    CivilDate day_;
    TimeOfDay time_;
    std::string_view pattern_;
    std::size_t weekday_ = 0;
    bool halves_ = false;
    bool afterHour_ = false;
    std::string out_;
};

bool TakesDigit(char c) {
    return c == '0' || c == '#';
}

/// A number pattern cut into what stands before the digits, the digits, and what stands behind them.
struct NumberPattern {
    explicit NumberPattern(std::string_view pattern) {
        const std::size_t first = pattern.find_first_of("0#.");
        const std::size_t last = pattern.find_last_of("0#");
        if (first == std::string_view::npos || last == std::string_view::npos) {
            before = pattern;
            return;
        }
        before = pattern.substr(0, first);
        after = pattern.substr(last + 1);
        const std::string_view digits = pattern.substr(first, last + 1 - first);
        const std::size_t point = digits.find('.');
        whole = digits.substr(0, point);
        if (point != std::string_view::npos)
            decimals = digits.substr(point + 1);
        thousands = whole.find(',') != std::string_view::npos;
        const std::size_t percent = after.find('%');
        hundredfold =
            percent != std::string_view::npos && after.substr(0, percent).find(' ') == std::string_view::npos;
    }

    std::string_view before, whole, decimals, after;
    bool thousands = false;
    bool hundredfold = false;
};

/// Fills the places of the whole part from the right; digits beyond the first place stand in front of it.
std::string WholePart(const NumberPattern& pattern, const std::string& digits) {
    std::string reversed;
    std::size_t used = 0;
    const auto put = [&](char digit) {
        if (pattern.thousands && used > 0 && used % 3 == 0)
            reversed += ',';
        reversed += digit;
        ++used;
    };
    const std::size_t firstPlace = pattern.whole.find_first_of("0#");
    for (std::size_t i = pattern.whole.size(); i-- > 0;) {
        const char c = pattern.whole[i];
        if (!TakesDigit(c)) {
            if (c != ',')
                reversed += c;
            continue;
        }
        if (used < digits.size())
            put(digits[digits.size() - 1 - used]);
        else if (c == '0')
            put('0');
        while (i == firstPlace && used < digits.size())
            put(digits[digits.size() - 1 - used]);
    }
    return {reversed.rbegin(), reversed.rend()};
}

/// The decimals that the pattern shows: every "0" place, and a "#" place only up to the last digit that is
/// not nought.
std::string DecimalPart(std::string_view places, std::string digits) {
    while (!digits.empty() && digits.back() == '0' && places[digits.size() - 1] != '0')
        digits.pop_back();
    return digits;
}

}  // namespace

std::string FormatDate(Date date, std::string_view pattern) {
    return DateFormatter(date, PatternOf(pattern)).Run();
}

std::string FormatNumber(double number, std::string_view patternText) {
    const NumberPattern pattern(patternText);
    if (pattern.whole.empty() && pattern.decimals.empty())
        return std::string(patternText);
    const int decimals = static_cast<int>(pattern.decimals.size());
    const double rounded = RoundTo(pattern.hundredfold ? number * 100 : number, decimals);
    if (!std::isfinite(rounded))
        return NumberText(rounded);
    std::string digits = fmt::format("{:.{}f}", std::fabs(rounded), decimals);
    std::string fraction;
    if (decimals > 0) {
        fraction = DecimalPart(pattern.decimals, digits.substr(digits.size() - pattern.decimals.size()));
        digits.resize(digits.size() - pattern.decimals.size() - 1);
    }
    if (digits == "0")
        digits.clear();
    std::string out = rounded < 0 ? "-" : "";
    out += pattern.before;
    out += WholePart(pattern, digits);
    if (!fraction.empty())
        out += "." + fraction;
    out += pattern.after;
    return out;
}

std::string FormatText(std::string_view text, std::string_view pattern) {
    if (text.empty())
        return {};
    if (pattern == ">")
        return Upper(text);
    std::size_t left = Length(text);
    std::string reversed;
    std::vector<std::string> pieces;
    const std::size_t firstPlace = pattern.find('#');
    if (firstPlace == std::string_view::npos)
        return std::string(text);
    for (std::size_t i = pattern.size(); i-- > 0;) {
        if (pattern[i] != '#')
            pieces.emplace_back(1, pattern[i]);
        else if (left > 0)
            pieces.push_back(Mid(text, left--, 1));
        else
            pieces.emplace_back(" ");
        // A text with more characters than the pattern has places keeps them all.
        if (i == firstPlace && left > 0)
            pieces.push_back(Left(text, left));
    }
    return Join({pieces.rbegin(), pieces.rend()}, "");
}

std::string FormatPhone(std::string_view digits) {
    return FormatText(DigitsOf(digits), "(###) ###-####");
}

}  // namespace kv
