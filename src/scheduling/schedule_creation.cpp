#include "scheduling/schedule_creation.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

#include "base/format.h"
#include "base/text.h"
#include "datastore/try_step.h"
#include "scheduling/schedule_facts.h"
#include "scheduling/visit_conflicts.h"
#include "scheduling/work_week.h"

namespace kv {

namespace {

constexpr int kDaysInAWeek = 7;
/// An assignment that lies no further behind runs over the horizon's weeks alone.
constexpr long kWeeksNeglected = 2;

/// Her status is active, or she left on the day or later.
bool WorksOn(const FactRow& caregiver, Date day) {
    const Value& left = caregiver.at("t_date");
    return EqualsNoCase(caregiver.at("t_code").ToText(), "A") ||
           (!left.IsNull() && left.ToDate().DayOnly() >= day);
}

Date AddWeeks(Date day, long weeks) {
    return day.AddDays(static_cast<double>(weeks * kDaysInAWeek));
}

/// The first week end behind a day and its interval. A day that is a week end itself goes on by the interval
/// alone.
Date NextWeekEnd(Date last, long howoften, int endDay) {
    const Date next = AddWeeks(last, howoften);
    return last.Weekday() == endDay ? next : WeekEndOf(next.AddDays(1), endDay);
}

}  // namespace

/// One assignment's way through its weeks. What it needs beside its row is asked of the stroke when the first
/// visit is to be made, once for all of them.
class ScheduleCreation::Run {
  public:
    /// `assignment`: on its row.
    Run(ScheduleCreation& creation, StrokeFacts& stroke, Recordset& assignment)
        : creation_(creation),
          stroke_(stroke),
          session_(creation.session_),
          visit_(creation.visits_),
          today_(session_.clock.Today()),
          horizon_(creation.Horizon()),
          assign_(assignment) {}

    void Go() {
        long passes = creation_.weeks_;
        Try([&] { passes = Passes(); });
        bool moved = true;
        // A pass that changed nothing would be the same the next time.
        for (long pass = 0; pass < passes && moved; ++pass) {
            moved = false;
            Try([&] { moved = Pass(); });
            Drop(assign_);
            Drop(visit_);
        }
    }

  private:
    /// How many weeks to go through: one that was neglected is brought level with the horizon in one run.
    long Passes() const {
        const Value last = assign_.Get("Last_date");
        const long behind = last.IsNull() ? 0 : std::labs(WeeksBetween(today_, last.ToDate()));
        return behind > kWeeksNeglected ? behind + creation_.weeks_ : creation_.weeks_;
    }

    /// Drops what a failed step left behind.
    static void Drop(Recordset& rows) {
        if (rows.EditMode() != EditState::None) {
            rows.CancelUpdate();
        }
    }

    /// One week. True where the assignment's row was changed.
    bool Pass() {
        const Value last = assign_.Get("Last_date");
        const long given = HowOften();
        // Without a Last_date the first week end from today on is where it begins.
        weekEnd_ = last.IsNull() ? WeekEndOf(today_.AddDays(1), creation_.endDay_)
                                 : NextWeekEnd(last.ToDate().DayOnly(), given, creation_.endDay_);
        bool changed = false;
        if (given <= 0 || last.IsNull()) {
            Try([&] {
                MendAssignment(given, last.IsNull());
                changed = true;
            });
        }
        if (!MayRun()) {
            return changed;
        }
        Try([&] { MoveLastDate(); });
        FindVisitDay();
        if (StandsOn(visitDay_) && !IsThere()) {
            AddVisit();
        }
        return true;
    }

    long HowOften() const { return static_cast<long>(assign_.Get("howoften").NumberOr(0)); }

    void MendAssignment(long howoften, bool withoutLastDate) {
        assign_.Edit();
        const long every = std::max(howoften, 1L);
        assign_.Set("howoften", every);
        if (withoutLastDate) {
            // Days, not weeks: the interval's weeks are added to it in the next pass.
            assign_.Set("Last_date", weekEnd_.AddDays(static_cast<double>(-every)));
        }
        assign_.Update();
    }

    bool MayRun() const {
        const Value end = assign_.Get("END_DATE");
        const Value begin = assign_.Get("st_date");
        return weekEnd_ <= horizon_ && EqualsNoCase(assign_.Text("Type"), "A") &&
               assign_.Get("HRS").NumberOr(0) > 0 && EqualsNoCase(assign_.Text("author_status"), "A") &&
               !end.IsNull() && end.ToDate().DayOnly() >= weekEnd_.AddDays(1 - kDaysInAWeek) &&
               !begin.IsNull() && begin.ToDate().DayOnly() <= weekEnd_ &&
               AddWeeks(assign_.Get("Last_date").ToDate(), HowOften()) <= weekEnd_;
    }

    void MoveLastDate() {
        const Date moved = AddWeeks(assign_.Get("Last_date").ToDate(), HowOften());
        assign_.Edit();
        assign_.Set("Last_date", moved < weekEnd_ ? weekEnd_ : moved);
        assign_.Update();
    }

    /// From the week's end backwards; a damaged Day leaves the day of the week before.
    void FindVisitDay() {
        constexpr int kFurthest = 8;
        const std::string day = Upper(assign_.Text("Day"));
        for (int back = 0; back <= kFurthest; ++back) {
            const Date candidate = weekEnd_.AddDays(-back);
            if (WeekdayCode(candidate) == day) {
                visitDay_ = candidate;
                return;
            }
        }
    }

    bool StandsOn(Date day) {
        if (assign_.Get("END_DATE").ToDate().DayOnly() < day ||
            assign_.Get("st_date").ToDate().DayOnly() > day) {
            return false;
        }
        if (!creation_.holidays_.contains(day.DayNumber())) {
            return true;
        }
        if (!EqualsNoCase(Known().Client("HOL_COV").ToText(), "NO")) {
            return true;
        }
        Remove("No Schedule Created", "Holiday", assign_.Text("emp_name"));
        return false;
    }

    /// The assignment's own visit of that day, or one typed in by hand that stands for it.
    bool IsThere() {
        const VisitsByDay* visits = Known().visits;
        if (made_.contains(visitDay_.DayNumber()) || !visits) {
            return made_.contains(visitDay_.DayNumber());
        }
        const auto sequence = static_cast<double>(assign_.Get("sequence").ToInteger());
        const Date start = assign_.Get("St_time").IsNull() ? Date() : assign_.Get("St_time").ToDate();
        const auto [first, last] = visits->equal_range(visitDay_.DayNumber());
        return std::any_of(first, last, [&](const auto& entry) {
            const ExistingVisit& visit = entry.second;
            return visit.assignment == sequence ||
                   (visit.assignment == 0 && IsSameVisit(visit, start, assign_.Text("visit_type")));
        });
    }

    void AddVisit() {
        visit_.AddNew();
        for (const char* column : {"CLIENT", "vendor", "emp_id"}) {
            Copy(column);
        }
        Put("emp_name", "");
        Put("emp_group", "");
        Put("assign_seq", assign_.Get("sequence"));
        Copy("author_seq");
        Put("sch_type", Known().type);
        Put("Sch_code", "S");
        Put("WEEKEND", weekEnd_);
        Put("st_date", visitDay_);
        Put("Manager", Known().Client("Manager").ToText());
        for (const char* column : {"St_time", "END_TIME", "HRS"}) {
            Copy(column);
        }
        Put("Day", WeekdayCode(visitDay_));
        Copy("visit_type");
        Copy("billto");
        Put("cli_name", Trim(assign_.Text("cli_name")));
        Put("disaster_code", Known().Client("disaster_code"));
        Put("cli_group", Known().Client("Grouping"));
        if (creation_.paperwork_) {
            Put("paperwork", true);
        }
        AddCaregiver();
        for (const auto& [column, value] : Known().extras) {
            Put(column, value);
        }
        if (!Known().description.IsNull()) {
            Put("visit_desc", Known().description);
        }
        Try([&] { KeepFreeOfNonVisits(); });
        visit_.Update();
        ++creation_.created_;
        // Where the assignment's row is held by another seat, the next pass comes to this day again.
        made_.insert(visitDay_.DayNumber());
    }

    /// A caregiver who no longer works on that day is taken off this visit alone.
    void AddCaregiver() {
        const FactRow* caregiver = Known().caregiver;
        if (!caregiver) {
            return;
        }
        if (!WorksOn(*caregiver, visitDay_)) {
            TakeOff("Not Active");
            return;
        }
        Put("emp_name",
            Trim(caregiver->at("LastName").ToText()) + ", " + Trim(caregiver->at("FirstName").ToText()));
        Put("PAY_TRAVEL", caregiver->at("PAY_MILEAGE"));
        Put("PAY_ERRAND", caregiver->at("PAY_ERRAND"));
        Put("PAY_EXPENSE", caregiver->at("PAY_EXPENSES"));
        Put("emp_group", caregiver->at("dept"));
    }

    void KeepFreeOfNonVisits() {
        const std::string id = Trim(visit_.Text("emp_id"));
        if (id.empty()) {
            return;
        }
        const ProposedVisit proposed = ProposeVisit(
            session_.clock, id, visitDay_, assign_.Get("St_time").ToDate(), assign_.Get("HRS").NumberOr(0));
        if (Known().nonVisits.Overlapping(proposed, today_) > 0 &&
            !FindWillWorkConflict(session_, proposed)) {
            TakeOff("Non-Visit Schedule");
        }
    }

    void TakeOff(const char* reason) {
        const std::string name = visit_.Text("emp_name");
        Remove("Removed Caregiver", reason, name.empty() ? assign_.Text("emp_name") : name);
        for (const char* column : {"emp_id", "emp_name", "emp_group"}) {
            Put(column, "");
        }
    }

    void Remove(const char* what, const char* reason, const std::string& caregiver) {
        const Value start = assign_.Get("St_time");
        creation_.removed_.push_back({what, reason, caregiver, Trim(assign_.Text("cli_name")), visitDay_,
                                      start.IsNull() ? std::string() : FormatDate(start.ToDate(), "HH:NN")});
    }

    const VisitFacts& Known() {
        if (!facts_) {
            facts_ = stroke_.Of(assign_, weekEnd_);
        }
        return *facts_;
    }

    void Put(const char* column, const Value& value) {
        Try([&] { visit_.Set(column, value); });
    }
    void Copy(const char* column) { Put(column, assign_.Get(column)); }

    ScheduleCreation& creation_;
    StrokeFacts& stroke_;
    Session& session_;
    Recordset& visit_;
    Date today_;
    Date horizon_;
    Recordset& assign_;
    std::optional<VisitFacts> facts_;
    std::set<long> made_;  ///< the days of its new visits
    Date weekEnd_;
    Date visitDay_;
};

ScheduleCreation::ScheduleCreation(Session& session) : session_(session), endDay_(EndOfWeek(session)) {
    Recordset agency = session.dbMainCode->OpenRecordset("agency", RecordsetType::Snapshot);
    if (!agency.Eof()) {
        paperwork_ = agency.Text("NotUsed1") == "Y";
        Try([&] { weeks_ = static_cast<long>(agency.Get("sch_weeks").NumberOr(0)); });
    }
    Recordset holidays = session.dbMainCode->OpenRecordset("Holidays", RecordsetType::Snapshot);
    for (; !holidays.Eof(); holidays.MoveNext()) {
        Try([&] { holidays_.insert(holidays.Get("date").ToDate().DayNumber()); });
    }
    visits_ = session.dbMainWork->OpenRecordset("select * from sch_day where sequence = 0");
}

Date ScheduleCreation::Horizon() const {
    return AddWeeks(session_.clock.Today(), weeks_);
}

void ScheduleCreation::RunFor(long assignment) {
    RunBatch({assignment});
}

bool ScheduleCreation::RunAll(const std::vector<long>& assignments) {
    // So many that writing them through to the disk costs little, and no other seat waits long.
    constexpr std::size_t kInOneBatch = 50;
    ProgressBar bar(session_.progress, "Creating schedules", static_cast<long>(assignments.size()));
    for (std::size_t at = 0; at < assignments.size();) {
        const std::size_t end = std::min(at + kInOneBatch, assignments.size());
        RunBatch({assignments.begin() + at, assignments.begin() + end});
        bar.Advance(static_cast<long>(end - at));
        at = end;
        if (!session_.progress.Yield()) {
            return false;
        }
    }
    return true;
}

/// What of it could not be stored is told to nobody as done.
void ScheduleCreation::RunBatch(const std::vector<long>& assignments) {
    const long created = created_;
    const auto removed = static_cast<std::ptrdiff_t>(removed_.size());
    try {
        WriteBatch(assignments);
        finished_ += static_cast<long>(assignments.size());
    } catch (...) {
        created_ = created;
        removed_.erase(removed_.begin() + removed, removed_.end());
        throw;
    }
}

/// As one transaction. A seat that makes visits for some of them just now is waited for, so that its visits
/// are seen; an assignment that somebody has on the screen to change is not.
void ScheduleCreation::WriteBatch(const std::vector<long>& assignments) {
    Database& work = *session_.dbMainWork;
    Transaction stroke = work.BeginTransaction();
    work.ReserveRows("assign", assignments);
    StrokeFacts facts(session_, assignments, Horizon());
    Recordset rows = work.OpenRecordset(
        Sql("select * from assign where sequence in ({}) order by sequence", NumberList{assignments}));
    for (; !rows.Eof(); rows.MoveNext()) {
        Run(*this, facts, rows).Go();
    }
    stroke.Commit();
}

bool Create_schedule_now(Session& session, long assignment, std::vector<RemovedVisit>& removed) {
    ScheduleCreation creation(session);
    creation.RunFor(assignment);
    removed.insert(removed.end(), creation.Removed().begin(), creation.Removed().end());
    return true;
}

namespace {

std::vector<long> Sequences(Session& session, const std::string& statement) {
    Recordset rows = session.dbMainWork->OpenRecordset(statement, RecordsetType::Snapshot);
    std::vector<long> sequences;
    for (; !rows.Eof(); rows.MoveNext()) {
        sequences.push_back(static_cast<long>(rows.Get("sequence").ToInteger()));
    }
    return sequences;
}

}  // namespace

std::vector<long> AssignmentsOf(Session& session, long authorization) {
    return Sequences(
        session, Sql("select sequence from assign where author_seq = {} order by sequence", authorization));
}

std::vector<long> AllAssignments(Session& session) {
    return Sequences(session, "select sequence from assign order by sequence");
}

}  // namespace kv
