#pragma once
#include <string>
#include <vector>

#include "session/session.h"

namespace kv {

/// What is carried to the visits of an assignment.
struct ScheduleUpdate {
    long assignment = 0;
    std::string day;  ///< the assignment's, "MON"
    int dayDifference = 0;
    std::string emp_id;
    Date start;
    Date end;
    double hours = 0;
};

/// A line of FGchg_Sch.
struct ScheduleLine {
    long sequence = 0;
    std::string caregiver;
    Date date, start, end;
    double hours = 0;
    std::string description;
    bool checked = true;
};
/// The visits from a day on that were not worked, not cancelled and are plain; those that would not fall on
/// the assignment's day are unchecked, and `results` says so. Throws EngineError, as the other does.
std::vector<ScheduleLine> LoadScheduleLines(Session& session, const ScheduleUpdate& update, Date from,
                                            std::vector<std::string>& results);

/// CMDprocess: carries the change to the checked lines. A visit that comes to another week carries that
/// week's WEEKEND. Each that can't be changed is told in `results`, and the rest goes on. Writes sch_day.
void ProcessScheduleLines(Session& session, const ScheduleUpdate& update,
                          const std::vector<ScheduleLine>& lines, Date from,
                          std::vector<std::string>& results);

}  // namespace kv
