#include "scheduling/removed_visits.h"

#include "base/format.h"

namespace kv {

Document RemovedVisitsReport(const std::vector<RemovedVisit>& removed, Date today) {
    // The margins are 600 and 300 twentieths of a point, the room between the lines is 125.
    constexpr double kMargin = 600 / 1440.0;
    constexpr double kBottom = 300 / 1440.0;
    constexpr double kBetweenLines = 125 / 1440.0;
    Document document("Removed Caregivers");
    document.style = {"Courier New", 10};
    document.page.left = document.page.right = document.page.top = kMargin;
    document.page.bottom = kBottom;
    // The margin below has no room for the pages' numbers.
    document.header = [](int page, int pages) {
        return PageStrip{{}, {}, "Page " + std::to_string(page) + " of " + std::to_string(pages)};
    };
    document.footer = [](int, int) { return PageStrip(); };
    document.Line(FormatDate(today, "MMM/DD/YYYY"));
    Paragraph& heading = document.Line("Removed Caregivers from the following Schedules");
    heading.spaceBefore = heading.spaceAfter = kBetweenLines;
    heading.keepWithNext = true;
    Table& table = document.AddTable(
        {{"", 1.6}, {"Reason", 1.5}, {"Caregiver Name"}, {"Client Name"}, {"Date", 0.9}, {"Time", 0.5}});
    for (const RemovedVisit& visit : removed) {
        table.rows.push_back({visit.what, visit.reason, visit.caregiver, visit.client,
                              FormatDate(visit.date, "MM/DD/YYYY"), visit.time});
    }
    return document;
}

}  // namespace kv
