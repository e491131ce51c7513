#pragma once
#include <array>
#include <string>
#include <vector>

#include "matching/client_needs.h"
#include "matching/day_slots.h"
#include "printing/document/document.h"

namespace kv {

/// What occupies a quarter of an hour of a caregiver's day.
enum class Occupied : std::uint8_t { Nothing, Unavailable, Assignment, Visit };

struct AvailabilityQuarter {
    Occupied by = Occupied::Nothing;
    std::uint32_t text = 0;
    long id = 0;  ///< the sequence of the assign or sch_day row behind it
};

struct AvailabilityDay {
    Date date;
    std::string day;  ///< "MON"
    std::array<AvailabilityQuarter, kQuarters> quarters{};
    std::vector<std::string> notes;  ///< what of the day's time is not shown, and why, a sentence each
};

/// A caregiver's coming days.
struct Availability {
    std::string emp_id, emp_name;
    std::vector<AvailabilityDay> days;
    QuarterTexts texts;
};
/// FillDisplayTable: assignments, declared time and visits of so many days (at least one). What runs past
/// midnight goes on on the next day, where that is displayed, and what began on the evening before on the
/// first; equal times are a whole day. Throws EngineError, as the others do.
Availability LoadAvailability(Session& session, const std::string& emp_id, Date from, int days);

/// fgEMP of the display; empty for an id that there is not.
std::vector<LabelledText> AvailabilityCaregiver(Session& session, const std::string& emp_id);

/// What stands behind a quarter that was picked: FGsch and FGcli, both empty for free and unavailable ones.
struct QuarterDetail {
    std::vector<LabelledText> schedule, client;
};
QuarterDetail DetailOf(Session& session, const AvailabilityQuarter& quarter);

/// The chart as a printout.
Document AvailabilityReport(const Availability& availability, Date today);

}  // namespace kv
