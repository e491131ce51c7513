#pragma once
#include <string>
#include <string_view>

#include "base/date.h"

namespace kv {

/// Formats a moment by a pattern in any case: D DD DDD DDDD, M MM MMM MMMM, YY YYYY, H HH, N NN, S SS and
/// AM/PM or Am/PM (which makes the hours count to 12); MM right behind an hour means minutes, NN means
/// minutes everywhere. "Medium Date", "Medium Time" and "Short Date" are known by name. Months and weekdays
/// are English: "Jan", "Monday". Other characters stand for themselves.
std::string FormatDate(Date date, std::string_view pattern);

/// Formats a number by a pattern of 0, #, a comma for thousands, one point, %, $ and literal text:
/// "##,##0.00", "000". Rounds half away from zero; a percent sign multiplies by 100 only where the pattern
/// has no blank before it. A # shows no needless nought, and a point without decimals is left out. A result
/// beyond all numbers is written without the pattern: "inf".
std::string FormatNumber(double number, std::string_view pattern);

/// Formats a text by a pattern whose # take the characters from the right, as "(###) ###-####" does with ten
/// digits. Missing digits leave blanks; ">" alone upper-cases. An empty text stays empty.
std::string FormatText(std::string_view text, std::string_view pattern);

/// "(###) ###-####" of the digits of a phone; an empty phone stays empty.
std::string FormatPhone(std::string_view digits);

}  // namespace kv
