#include "scheduling/pattern_gap.h"

#include <algorithm>
#include <set>

#include "base/format.h"
#include "base/text.h"
#include "scheduling/schedule_creation.h"
#include "scheduling/schedule_facts.h"
#include "scheduling/work_week.h"
#include "session/whole_step.h"

namespace kv {

namespace {

constexpr double kWeek = 7;
constexpr const char* kLineEnd = "\r\n";

std::set<long> Holidays(Session& session) {
    std::set<long> days;
    Recordset rows = session.dbMainCode->OpenRecordset("Holidays", RecordsetType::Snapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        if (const Value day = rows.Get("date"); !day.IsNull()) {
            days.insert(day.ToDate().DayNumber());
        }
    }
    return days;
}

bool VisitedOnHolidays(Session& session, const std::string& client) {
    const Recordset row = session.dbMainWork->OpenRecordset(
        Sql("select HOL_COV from ClientPR where [client] = {}", client), RecordsetType::Snapshot);
    return row.Eof() || !EqualsNoCase(row.Text("HOL_COV"), "NO");
}

/// The client's visits from a day on. A cancelled one keeps its own assignment from making it again, and
/// stands for no other's.
VisitsByDay VisitsFrom(Session& session, const std::string& client, Date from,
                       const std::vector<long>& assignments) {
    VisitsByDay visits;
    Recordset rows =
        session.dbMainWork->OpenRecordset(Sql("select assign_seq,st_date,St_time,visit_type,Cancelled from "
                                              "sch_day where client = {} and st_date >= {}",
                                              client, from.DayNumber()),
                                          RecordsetType::Snapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        const Value start = rows.Get("St_time");
        const double assignment = rows.Get("assign_seq").NumberOr(-1);
        const bool isOwn = assignment == 0 ||
                           std::find(assignments.begin(), assignments.end(), assignment) != assignments.end();
        if (rows.Get("Cancelled").IsTrue() && !isOwn) {
            continue;
        }
        visits.emplace(
            rows.Get("st_date").ToDate().DayNumber(),
            ExistingVisit{assignment, start.IsNull() ? std::nullopt : std::optional(start.ToDate()),
                          rows.Text("visit_type")});
    }
    return visits;
}

bool MakesVisits(const Recordset& assign) {
    return EqualsNoCase(assign.Text("Type"), "A") && EqualsNoCase(assign.Text("author_status"), "A") &&
           assign.Get("HRS").NumberOr(0) > 0 && DayIndex(assign.Text("Day")) >= 0 &&
           !assign.Get("Last_date").IsNull() && !assign.Get("st_date").IsNull() &&
           !assign.Get("END_DATE").IsNull();
}

double WeeksApart(const Recordset& assign) {
    return std::max(1.0, assign.Get("howoften").NumberOr(1));
}

/// Its day in the week that ends on that day.
Date DayInWeek(const Recordset& assign, Date weekEnd) {
    const int back = weekEnd.Weekday() - 1 - DayIndex(assign.Text("Day"));
    return weekEnd.AddDays(-((back + kDaysOfWeek) % kDaysOfWeek));
}

/// What stands on a day of an assignment's pattern.
enum class Standing { Nothing, OwnVisit, OtherVisit };

Standing WhatStands(const Recordset& assign, const VisitsByDay& visits, Date day) {
    const auto sequence = static_cast<double>(assign.Get("sequence").ToInteger());
    const Date start = assign.Get("St_time").IsNull() ? Date() : assign.Get("St_time").ToDate();
    const auto [first, last] = visits.equal_range(day.DayNumber());
    Standing standing = Standing::Nothing;
    for (auto at = first; at != last; ++at) {
        const bool isSame = IsSameVisit(at->second, start, assign.Text("visit_type"));
        if (at->second.assignment == sequence || (at->second.assignment == 0 && isSame)) {
            return Standing::OwnVisit;
        }
        standing = isSame ? Standing::OtherVisit : standing;
    }
    return standing;
}

PatternGap GapOf(const Recordset& assign, Date from, int endDay, const VisitsByDay& visits,
                 const std::set<long>& holidays) {
    PatternGap gap;
    gap.assignment = static_cast<long>(assign.Get("sequence").ToInteger());
    const Date begin = std::max(from, assign.Get("st_date").ToDate().DayOnly());
    const Date end = assign.Get("END_DATE").ToDate().DayOnly();
    for (Date weekEnd = WeekEndOf(assign.Get("Last_date").ToDate(), endDay);;
         weekEnd = weekEnd.AddDays(-kWeek * WeeksApart(assign))) {
        const Date day = DayInWeek(assign, weekEnd);
        if (day < begin) {
            break;
        }
        const Standing standing = WhatStands(assign, visits, day);
        if (standing == Standing::OtherVisit) {
            break;  // further back the pattern would make a second visit beside it
        }
        if (standing == Standing::Nothing && day <= end && !holidays.contains(day.DayNumber())) {
            gap.days.push_back(day);
        }
    }
    std::reverse(gap.days.begin(), gap.days.end());
    return gap;
}

Recordset RowsOf(Session& session, const std::vector<long>& assignments, RecordsetType type) {
    return session.dbMainWork->OpenRecordset(
        Sql("select * from assign where sequence in ({}) order by sequence", NumberList{assignments}), type);
}

std::string DayWord(Date day) {
    return FormatDate(day, "DDD MMM/DD/YYYY");
}

/// "3 days without visits: Thu Apr/02/2026, ..."; a long list is cut.
std::string ListOf(const std::vector<Date>& days) {
    constexpr std::size_t kListed = 8;
    std::vector<std::string> words;
    for (std::size_t i = 0; i < std::min(days.size(), kListed); ++i) {
        words.push_back(DayWord(days[i]));
    }
    std::string list = Join(words, ", ");
    if (days.size() > kListed) {
        list += " and " + std::to_string(days.size() - kListed) + " more up to " + DayWord(days.back());
    }
    return list;
}

std::vector<Date> SortedOnce(std::vector<Date> days) {
    std::sort(days.begin(), days.end());
    days.erase(std::unique(days.begin(), days.end()), days.end());
    return days;
}

/// The days from today on that lie after one authorization's end and before the other's begin.
std::optional<std::pair<Date, Date>> Between(Session& session, long from, const AssignmentParent& parent) {
    const Recordset row = session.dbMainWork->OpenRecordset(
        Sql("select to_DATE from Authorizations where sequence = {}", from), RecordsetType::Snapshot);
    if (row.Eof() || row.Get("to_DATE").IsNull()) {
        return std::nullopt;
    }
    const Date first = std::max(row.Get("to_DATE").ToDate().DayOnly().AddDays(1), session.clock.Today());
    const Date last = parent.from.DayOnly().AddDays(-1);
    return first <= last ? std::optional(std::pair(first, last)) : std::nullopt;
}

}  // namespace

std::vector<PatternGap> FindPatternGaps(Session& session, const std::vector<long>& assignments, Date from) {
    std::vector<PatternGap> gaps;
    if (assignments.empty()) {
        return gaps;
    }
    Recordset rows = RowsOf(session, assignments, RecordsetType::Snapshot);
    if (rows.Eof()) {
        return gaps;
    }
    const std::string client = rows.Text("CLIENT");
    const VisitsByDay visits = VisitsFrom(session, client, from, assignments);
    const std::set<long> holidays = VisitedOnHolidays(session, client) ? std::set<long>() : Holidays(session);
    const int endDay = EndOfWeek(session);
    for (; !rows.Eof(); rows.MoveNext()) {
        if (!MakesVisits(rows)) {
            continue;
        }
        if (PatternGap gap = GapOf(rows, from.DayOnly(), endDay, visits, holidays); !gap.days.empty()) {
            gaps.push_back(std::move(gap));
        }
    }
    return gaps;
}

void FillPatternGaps(Session& session, const std::vector<PatternGap>& gaps,
                     std::vector<RemovedVisit>& removed) {
    std::map<long, Date> firstDays;
    std::vector<long> assignments;
    for (const PatternGap& gap : gaps) {
        firstDays[gap.assignment] = gap.days.front();
        assignments.push_back(gap.assignment);
    }
    if (assignments.empty()) {
        return;
    }
    const int endDay = EndOfWeek(session);
    WholeStep step(session);
    for (Recordset row = RowsOf(session, assignments, RecordsetType::Dynaset); !row.Eof(); row.MoveNext()) {
        const Date day = firstDays.at(static_cast<long>(row.Get("sequence").ToInteger()));
        row.Edit();
        row.Set("Last_date", WeekEndOf(day, endDay).AddDays(-kWeek * WeeksApart(row)));
        row.Update();
    }
    ScheduleCreation creation(session);
    creation.RunAll(assignments);
    step.Finish();
    removed.insert(removed.end(), creation.Removed().begin(), creation.Removed().end());
}

CopyGaps FindCopyGaps(Session& session, long from, const AssignmentParent& parent,
                      const std::vector<long>& copied) {
    CopyGaps gaps;
    const Date today = session.clock.Today();
    for (PatternGap& gap : FindPatternGaps(session, copied, parent.from)) {
        const auto coming = std::lower_bound(gap.days.begin(), gap.days.end(), today);
        gaps.past.insert(gaps.past.end(), gap.days.begin(), coming);
        gap.days.erase(gap.days.begin(), coming);
        gaps.days.insert(gaps.days.end(), gap.days.begin(), gap.days.end());
        if (!gap.days.empty()) {
            gaps.coming.push_back(std::move(gap));
        }
    }
    gaps.days = SortedOnce(std::move(gaps.days));
    gaps.past = SortedOnce(std::move(gaps.past));
    gaps.between = Between(session, from, parent);
    return gaps;
}

std::string CopyGaps::Words() const {
    std::vector<std::string> lines;
    if (!days.empty()) {
        lines.push_back("The copied assignments leave " +
                        Counted(static_cast<long long>(days.size()), "day") +
                        " without visits: " + ListOf(days) + ".");
    }
    if (!past.empty()) {
        lines.push_back("Before today they leave " + Counted(static_cast<long long>(past.size()), "day") +
                        " without visits: " + ListOf(past) + ".");
    }
    if (between) {
        lines.push_back("From " + DayWord(between->first) + " to " + DayWord(between->second) +
                        " neither of the two authorizations holds, and no visits can be made.");
    }
    return Join(lines, kLineEnd);
}

bool CopyPattern(Session& session, long from, const AssignmentParent& parent,
                 std::vector<RemovedVisit>& removed) {
    const std::vector<long> known = AssignmentsOf(session, parent.authorization);
    std::vector<RemovedVisit> ofCopy;
    if (!CopyAssignments(session, from, parent, ofCopy)) {
        return false;
    }
    removed.insert(removed.end(), ofCopy.begin(), ofCopy.end());
    std::vector<long> copied = AssignmentsOf(session, parent.authorization);
    std::erase_if(copied, [&](long assignment) {
        return std::find(known.begin(), known.end(), assignment) != known.end();
    });
    const CopyGaps gaps = FindCopyGaps(session, from, parent, copied);
    if (gaps.coming.empty()) {
        if (gaps.Any()) {
            session.ShowMessageWindow(gaps.Words());
        }
        return true;
    }
    if (session.dialogs.AskQuestion(gaps.Words() + kLineEnd +
                                    "Would you like to create the visits from today on?")) {
        FillPatternGaps(session, gaps.coming, removed);
    }
    return true;
}

}  // namespace kv
