#pragma once
#include <string>
#include <vector>

#include "base/date.h"
#include "printing/document/document.h"

namespace kv {

/// A visit that schedule creation left out, or took the caregiver off: a line of the list on FRMfgSch.
struct RemovedVisit {
    std::string what;    ///< "No Schedule Created" or "Removed Caregiver"
    std::string reason;  ///< "Holiday", "Not Active" or "Non-Visit Schedule"
    std::string caregiver;
    std::string client;
    Date date;
    std::string time;  ///< "08:30"
};

/// The report "Removed Caregivers from the following Schedules".
Document RemovedVisitsReport(const std::vector<RemovedVisit>& removed, Date today);

}  // namespace kv
