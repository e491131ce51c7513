#pragma once
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/text_less.h"
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

/// The Non-Visit rows (no client, not cancelled) of one caregiver over some days, for looking at many visits.
class NonVisits {
  public:
    /// Of no caregiver: no visit runs into them.
    NonVisits() = default;
    /// Reads those that visits from one day to the other may run into. Throws EngineError.
    NonVisits(Session& session, const std::string& emp_id, Date first, Date last);
    /// How many of them the visit runs into, willingness not looked at.
    int Overlapping(const ProposedVisit& visit, Date today) const;

  private:
    friend std::map<std::string, NonVisits, TextLess> ReadNonVisitsOf(Session& session,
                                                                      const std::vector<std::string>& emp_ids,
                                                                      Date first, Date last);
    struct Row {
        long day;          ///< st_date
        std::string name;  ///< its Day, as it is stored
        Date from;
        Date to;
    };
    /// Takes the row of sch_day if it is one.
    void Add(const Recordset& row);
    std::vector<Row> rows_;
};

using NonVisitsById = std::map<std::string, NonVisits, TextLess>;
/// Those of several caregivers in one statement; who has none may be missing. Throws EngineError.
NonVisitsById ReadNonVisitsOf(Session& session, const std::vector<std::string>& emp_ids, Date first,
                              Date last);

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
