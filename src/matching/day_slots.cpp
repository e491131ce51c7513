#include "matching/day_slots.h"

namespace kv {

namespace {

constexpr int kMinutesOfQuarter = 15;
constexpr int kMinutesOfHour = 60;
constexpr int kHundred = 100;

int NumberOf(int minute) {
    return minute / kMinutesOfHour * kHundred + minute % kMinutesOfHour;
}

}  // namespace

int QuarterNumber(int quarter) {
    return NumberOf(quarter * kMinutesOfQuarter);
}

int MinuteOfDay(Date time) {
    return static_cast<int>(time.SecondOfDay() / kMinutesOfHour);
}

std::optional<QuarterSpan> QuartersOf(int start, int end) {
    if (start % kMinutesOfQuarter != 0) {
        return std::nullopt;
    }
    const int first = start / kMinutesOfQuarter;
    if (start == end || end == 0) {
        return QuarterSpan{first, kQuarters};
    }
    // Numbers are compared, not times: up to the end's number less 15.
    const int last = NumberOf(end) - kMinutesOfQuarter;
    int behind = first;
    while (behind < kQuarters && QuarterNumber(behind) <= last) {
        ++behind;
    }
    return QuarterSpan{first, behind};
}

std::uint32_t QuarterTexts::Keep(const std::string& text) {
    if (text.empty()) {
        return 0;
    }
    const auto [found, added] = index_.emplace(text, static_cast<std::uint32_t>(texts_.size()));
    if (added) {
        texts_.push_back(text);
    }
    return found->second;
}

void WriteQuarters(QuarterLine& line, QuarterTexts& texts, const std::string& text, int start, int end) {
    const std::optional<QuarterSpan> span = QuartersOf(start, end);
    if (!span || text.find('\'') != std::string::npos) {
        return;
    }
    const std::uint32_t index = texts.Keep(text);
    for (int quarter = span->first; quarter < span->end; ++quarter) {
        line[static_cast<std::size_t>(quarter)] = index;
    }
}

void ClearQuarters(QuarterLine& line, int start, int end) {
    if (const std::optional<QuarterSpan> span = QuartersOf(start, end)) {
        for (int quarter = span->first; quarter < span->end; ++quarter) {
            line[static_cast<std::size_t>(quarter)] = 0;
        }
    }
}

MinuteSpan PlaceOn(int dayShift, int start, int end) {
    const int midnight = dayShift * kMinutesOfDay;
    return {midnight + start, midnight + end + (start >= end ? kMinutesOfDay : 0)};
}

bool Overlaps(const MinuteSpan& row, const MinuteSpan& window) {
    return (row.start >= window.start && row.start < window.end) ||
           (window.start > row.start && window.start < row.end);
}

}  // namespace kv
