#pragma once
#include <string>
#include <string_view>

#include "session/session.h"

namespace kv {

/// A visit that a caregiver might make. Start and end are moments laid on today's date, whatever the visit's
/// own day is: only their times of day and the days between them count.
struct ProposedVisit {
    std::string emp_id;
    Date start;
    Date end;
    double hours = 0;
    std::string day;  ///< the visit's weekday, "MON"
    Date st_date;     ///< the visit's day
};
/// The moments as schedule creation builds them. A start with a day is cut to its time.
ProposedVisit ProposeVisit(const Clock& clock, const std::string& emp_id, Date st_date, Date st_time,
                           double hours);

/// How many times the visit runs into a Non-Visit row of the caregiver (no client, not cancelled) that no
/// willingness row outweighs. 0 is none. Throws EngineError.
int FindScheduleConflict(Session& session, const ProposedVisit& visit);

/// True where the caregiver declared that she will work over the whole visit. Throws EngineError.
bool FindWillWorkConflict(Session& session, const ProposedVisit& visit);

/// Two spans of time overlap: those that only touch do not. All four moments as "MM/DD/YYYY HH:MM".
bool MomentsOverlap(std::string_view start, std::string_view end, std::string_view proposedStart,
                    std::string_view proposedEnd);

/// "SUN" .. "SAT".
std::string WeekdayCode(Date date);

}  // namespace kv
