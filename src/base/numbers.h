#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/date.h"

namespace kv {

/// The number at the front of a text, blanks passed over, 0 when there is none: "12abc" is 12, ".5" is 0.5,
/// "" is 0.
double Val(std::string_view text);

/// The whole trimmed text as a number (thousands commas and a $ allowed), or nothing.
std::optional<double> ParseNumber(std::string_view text);
std::optional<std::int64_t> ParseInteger(std::string_view text);

/// The shortest text that reads back as the same number; whole numbers have no point.
std::string NumberText(double number);

/// Reads "MM/DD/YYYY", "YYYY/MM/DD", "YYYY-MM-DD", "MMM/DD/YYYY" and these with a time of day behind, or a
/// time alone
/// ("HH:MM[:SS][ AM/PM]"). Nothing for any other text or a day that the calendar lacks.
std::optional<Date> ParseDate(std::string_view text);

/// "YYYY-MM-DD HH:MM:SS": the form of dates in files and in JSON.
std::string IsoText(Date date);

/// Rounds half away from zero to so many decimals.
double RoundTo(double number, int decimals);

}  // namespace kv
