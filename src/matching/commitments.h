#pragma once
#include <string>
#include <unordered_map>
#include <vector>

#include "matching/client_needs.h"
#include "matching/day_slots.h"

namespace kv {

/// A row of a caregiver's time, as it lies around the visit's day.
struct TimeRow {
    int dayShift = 0;  ///< -1 the day before, 0 the day, 1 the next one
    int start = 0;     ///< minutes of its day
    int end = 0;
    std::string text;  ///< what its quarters show

    MinuteSpan Placed() const { return PlaceOn(dayShift, start, end); }
    bool RunsPastMidnight() const { return start >= end; }
};

/// What a caregiver has declared and is booked for around the visit's day, each in the order of its entry.
struct Commitments {
    std::vector<TimeRow> unavailable;
    std::vector<TimeRow> overnight;    ///< unavailable since the day before: the rules do not look at it
    std::vector<TimeRow> assignments;  ///< not yet turned into visits
    std::vector<TimeRow> visits;
    std::vector<TimeRow> willing;  ///< by day and start
    double weekHours = 0;
    std::vector<std::string> skills;
};

/// When the caregiver is wanted, in minutes around today's midnight; only the weekday of the visit counts.
struct Window {
    MinuteSpan span;
    bool spansMidnight = false;
};
Window WindowOf(const SuggestionRequest& request, const SuggestionOptions& options);

/// The last day of the agency's week around a day; `name` is WKENDING.
Date SuggestionWeekEnd(Date day, const std::string& name);

/// The commitments of all caregivers, read in a few set queries. Throws EngineError.
class AllCommitments {
  public:
    AllCommitments(Session& session, const SuggestionRequest& request, const Window& window);
    /// Reads one caregiver's alone.
    AllCommitments(Session& session, const SuggestionRequest& request, const Window& window,
                   const std::string& emp_id);
    /// Of one caregiver; empty ones where she has none.
    const Commitments& Of(const std::string& emp_id) const;

  private:
    void Read(Session& session, const SuggestionRequest& request, const Window& window,
              const std::string& emp_id);
    Commitments& At(const std::string& emp_id);

    std::unordered_map<std::string, Commitments> byId_;  ///< by the id in capitals
};

/// Has she declared that she will work over the whole window?
bool WillingOver(const Commitments& commitments, const Window& window);

}  // namespace kv
