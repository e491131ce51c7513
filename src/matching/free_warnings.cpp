#include "matching/free_warnings.h"

#include <algorithm>

#include "base/format.h"

namespace kv {

namespace {

constexpr int kMinutesOfQuarter = 15;
constexpr int kMinutesOfHour = 60;

int EndOnDay(int start, int end) {
    return end == 0 || start >= end ? kMinutesOfDay : end;
}

/// The minute up to which a time is drawn; its start where it is not.
int DrawnTo(int start, int end) {
    const std::optional<QuarterSpan> span = QuartersOf(start, end);
    return span ? std::max(start, span->end * kMinutesOfQuarter) : start;
}

/// A time of the day that is occupied, as it is drawn.
struct Occupation {
    const char* what;
    const TimeRow& row;
    int start;
    int end;

    std::string Words() const {
        const std::string times = row.dayShift < 0
                                      ? " until " + ClockText(row.end)
                                      : " from " + ClockText(row.start) + " to " + ClockText(row.end);
        return what + times;
    }
};

class Warnings {
  public:
    Warnings(const Commitments& commitments, const Window& window, const SuggestionOptions& options)
        : commitments_(commitments), window_(window), options_(options) {}

    std::vector<std::string> Run() {
        if (!options_.ignoreUnavailable) {
            Unavailable();
            Overnight();
            Willing();
        }
        Booked("Assigned", commitments_.assignments);
        Booked("Scheduled", commitments_.visits);
        return std::move(sentences_);
    }

  private:
    void Unavailable() {
        for (const TimeRow& row : commitments_.unavailable) {
            if (row.dayShift != 0) {
                continue;
            }
            const std::string why = WhyNotShown(row.start, row.end);
            const int shown = row.start > row.end ? row.start : DrawnTo(row.start, row.end);
            if (!why.empty() && !IsWilling(shown, EndOnDay(row.start, row.end))) {
                Add(Occupation{"Unavailable", row, row.start, row.end}.Words() + " " + why);
            }
        }
    }

    /// The search reads the unavailable time of the visit's day alone.
    void Overnight() {
        for (const TimeRow& row : commitments_.overnight) {
            if (IsWilling(0, row.end)) {
                continue;
            }
            const bool collides = Overlaps(row.Placed(), window_.span) && !WillingOver(commitments_, window_);
            Add(OvernightWords(row.start, row.end) +
                (collides ? ", in the time asked for, and shown as free" : " is not shown") +
                ": it runs past midnight");
        }
    }

    /// Without an end of its own such a row frees what is unavailable up to midnight.
    void Willing() {
        for (const TimeRow& row : commitments_.willing) {
            if (row.dayShift != 0 || (row.end != 0 && row.end != row.start) ||
                row.start % kMinutesOfQuarter != 0) {
                continue;
            }
            const auto frees = [&row](const TimeRow& away) {
                return away.dayShift == 0 && EndOnDay(away.start, away.end) > row.start;
            };
            if (std::any_of(commitments_.unavailable.begin(), commitments_.unavailable.end(), frees)) {
                Add("Will work from " + ClockText(row.start) +
                    " without an end: unavailable time after it is shown as free");
            }
        }
    }

    void Booked(const char* what, const std::vector<TimeRow>& rows) {
        for (const TimeRow& row : rows) {
            if (row.dayShift == 0) {
                Booked({what, row, row.start, row.RunsPastMidnight() ? 0 : row.end});
            } else if (row.dayShift == -1 && row.RunsPastMidnight() && row.end != 0) {
                Booked({what, row, 0, row.end});
            }
        }
    }
    void Booked(const Occupation& time) {
        const std::string& text = time.row.text;
        if (text.empty()) {
            Add(time.Words() + " is not shown: it has no description");
        } else if (text.find('\'') != std::string::npos) {
            Add(time.Words() + " (" + text + ") is not shown: its description has an apostrophe");
        } else if (const std::string why = WhyNotShown(time.start, time.end); !why.empty()) {
            Add(time.Words() + " (" + text + ") " + why);
        }
    }

    /// Has the caregiver declared for all of that time of the day that they will work?
    bool IsWilling(int start, int end) const {
        return std::any_of(commitments_.willing.begin(), commitments_.willing.end(), [&](const TimeRow& row) {
            return row.dayShift == 0 && row.start != row.end && row.start <= start &&
                   (row.end == 0 ? kMinutesOfDay : row.end) >= end;
        });
    }

    void Add(std::string sentence) {
        sentence += '.';
        if (std::find(sentences_.begin(), sentences_.end(), sentence) == sentences_.end()) {
            sentences_.push_back(std::move(sentence));
        }
    }

    const Commitments& commitments_;
    const Window& window_;
    const SuggestionOptions& options_;
    std::vector<std::string> sentences_;
};

}  // namespace

std::string ClockText(int minute) {
    return FormatDate(Date::FromTime(minute / kMinutesOfHour, minute % kMinutesOfHour), "H:NN AM/PM");
}

std::string OvernightWords(int start, int end) {
    return "Unavailable from " + ClockText(start) + " the day before to " + ClockText(end);
}

std::string WhyNotShown(int start, int end) {
    if (start % kMinutesOfQuarter != 0) {
        return "is not shown: it does not begin on a quarter of an hour";
    }
    if (start > end && end != 0) {
        return "is not shown: it runs past midnight";
    }
    const int drawnTo = DrawnTo(start, end);
    if (drawnTo >= EndOnDay(start, end)) {
        return {};
    }
    return (drawnTo == start ? "is not shown" : "is shown only up to " + ClockText(drawnTo)) +
           ": it does not end on a quarter of an hour";
}

std::vector<std::string> FreeWarnings(const Commitments& commitments, const Window& window,
                                      const SuggestionOptions& options) {
    return Warnings(commitments, window, options).Run();
}

}  // namespace kv
