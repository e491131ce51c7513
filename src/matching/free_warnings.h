#pragma once
#include <string>
#include <vector>

#include "matching/commitments.h"

namespace kv {

/// "9:30 AM" for a minute of the day; 0 and 1440 are "12:00 AM".
std::string ClockText(int minute);

/// Why the quarters of a time do not show all of it ("is not shown: it runs past midnight"): the end of a
/// sentence that begins with the time. Empty where they do. Midnight, and an end that is the start, are the
/// end of the day.
std::string WhyNotShown(int start, int end);

/// "Unavailable from 10:00 PM the day before to 6:00 AM": of a day whose morning it takes.
std::string OvernightWords(int start, int end);

/// Why a caregiver of a result may be less free than the result shows, a sentence each, in the order of
/// their time: what the quarters leave out of the day, and what the search does not look at. Empty for most.
/// Unavailable time is left out where the search ignores it.
std::vector<std::string> FreeWarnings(const Commitments& commitments, const Window& window,
                                      const SuggestionOptions& options);

}  // namespace kv
