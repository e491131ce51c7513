#include "matching/suggestion_prints.h"

#include "base/format.h"
#include "base/platform.h"
#include "base/text.h"

namespace kv {

namespace {

constexpr double kTwip = 1.0 / 1440;
constexpr int kMinutesOfQuarter = 15;

/// Neighbouring quarters with one text stand as one span.
std::vector<DayChart::Span> SpansOf(const Suggestion& suggestion, const SuggestedCaregiver& row) {
    std::vector<DayChart::Span> spans;
    std::uint32_t before = 0;
    for (int quarter = 0; quarter < kQuarters; ++quarter) {
        const std::uint32_t text = row.quarters[static_cast<std::size_t>(quarter)];
        const int from = quarter * kMinutesOfQuarter;
        if (text != 0 && text == before) {
            spans.back().to = from + kMinutesOfQuarter;
        } else if (text != 0) {
            spans.push_back({from, from + kMinutesOfQuarter, suggestion.texts->Text(text)});
        }
        before = text;
    }
    return spans;
}

}  // namespace

Document SuggestionReport(const Suggestion& suggestion, bool withSkills, Date today) {
    constexpr double kLeft = 600;
    constexpr double kMargin = 300;
    Document document("Caregiver Suggestion Report");
    document.style = {"Courier New", 8};
    document.page.orientation = Orientation::Landscape;
    document.page.left = kLeft * kTwip;
    document.page.top = document.page.right = document.page.bottom = kMargin * kTwip;
    document.header = [](int page, int pages) {
        return PageStrip{{}, {}, "Page " + std::to_string(page) + " of " + std::to_string(pages)};
    };
    document.footer = [](int, int) { return PageStrip(); };
    document.Line(" Run Date: " + FormatDate(today, "MMM/DD/YYYY"));
    TextStyle bold;
    bold.bold = true;
    document.Line("Caregiver Suggestion Report", bold).align = Align::Center;
    document.Line("");
    DayChart chart;
    chart.columns = {{"Caregiver Name", 1.8}, {"Avail Hrs", 0.75, Align::Right}};
    if (withSkills) {
        chart.columns.push_back({"Skills %", 0.65, Align::Right});
    }
    for (const SuggestedCaregiver& row : suggestion.rows) {
        DayChart::Row line;
        line.cells = {row.emp_name, FormatNumber(row.max_hours, "##0.##")};
        if (withSkills) {
            line.cells.push_back(std::to_string(row.skills));
        }
        line.spans = SpansOf(suggestion, row);
        chart.rows.push_back(std::move(line));
    }
    document.Add(std::move(chart));
    return document;
}

Document RejectedReport(Session& session) {
    Document document("Caregivers that were rejected");
    document.style = {"Courier New", 10};
    document.Line("Caregivers that were rejected by Caregiver Suggestion");
    document.Line("");
    const std::string content = ReadFile(session.DataFile("TEMP.TXT")).value_or("");
    for (std::string line : Split(content, '\n')) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (!line.empty()) {
            document.Line(std::move(line));
        }
    }
    return document;
}

}  // namespace kv
