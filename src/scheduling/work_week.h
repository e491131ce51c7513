#pragma once
#include <string>
#include <string_view>

#include "session/session.h"

namespace kv {

/// The weekday on which a week ends, 1 Sunday to 7 Saturday, by its first three letters in any case ("Sat",
/// "SATURDAY"). 0 for any other text.
int WeekdayNumber(std::string_view name);

/// The weekday on which the agency's week ends (WKENDING), 1 to 7; Saturday where it names none.
int EndOfWeek(const Session& session);

/// The last day of the week in which a day lies, when weeks end on that weekday.
Date WeekEndOf(Date day, int endDay);

/// The hours that a caregiver works in the agency's week around a day: scheduled ones, or the actual ones
/// where there are any; what crosses the week's borders counts up to midnight or from it. Rounded to two
/// decimals. Throws EngineError.
double CaregiverWeekHours(Session& session, const std::string& emp_id, Date day);

}  // namespace kv
