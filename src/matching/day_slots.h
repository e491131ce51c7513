#pragma once
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/date.h"

namespace kv {

// A day as its 96 quarters of an hour, and how times lie on it.

inline constexpr int kQuarters = 96;
inline constexpr int kMinutesOfDay = 1440;

/// The name of a quarter: its time as "hhmm" without leading zeros: 0, 15, 30, 45, 100 ... 2345.
int QuarterNumber(int quarter);
/// Minutes since midnight; seconds are rounded and dropped as texts "hh:mm" drop them.
int MinuteOfDay(Date time);

/// The quarters from `first` up to, but not with, `end`.
struct QuarterSpan {
    int first = 0;
    int end = 0;
};
/// The quarters that stand for a time from a minute of the day to another: up to midnight where both are
/// alike or the end is midnight, and none where the end lies before the start. Nothing for a start between
/// two quarters: there is no column for it.
std::optional<QuarterSpan> QuartersOf(int start, int end);

/// What stands in the quarters of many days, each text kept once. Text 0 is the free quarter.
class QuarterTexts {
  public:
    QuarterTexts() : texts_{""} {}
    std::uint32_t Keep(const std::string& text);
    const std::string& Text(std::uint32_t index) const { return texts_[index]; }

  private:
    std::vector<std::string> texts_;
    std::unordered_map<std::string, std::uint32_t> index_;
};
using QuarterLine = std::array<std::uint32_t, kQuarters>;

/// Writes a text into the quarters of a time. A text with an apostrophe is never written: the statement that
/// carries it breaks, as it always did, and the quarters stay as they were.
void WriteQuarters(QuarterLine& line, QuarterTexts& texts, const std::string& text, int start, int end);
/// Frees the quarters of a time.
void ClearQuarters(QuarterLine& line, int start, int end);

/// A time in minutes around today's midnight: yesterday's lie below 0.
struct MinuteSpan {
    int start = 0;
    int end = 0;
};
/// A row's time on the day before (-1), on the day (0) or on the next (1). One whose start is at or after its
/// end runs past midnight, so equal times are a whole day.
MinuteSpan PlaceOn(int dayShift, int start, int end);
/// Does the row run into the window? One that begins as the window ends does not, nor one that ends as it
/// begins.
bool Overlaps(const MinuteSpan& row, const MinuteSpan& window);

}  // namespace kv
