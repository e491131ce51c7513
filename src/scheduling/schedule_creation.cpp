#include "scheduling/schedule_creation.h"

#include <cstdlib>
#include <optional>

#include "base/format.h"
#include "base/text.h"
#include "scheduling/visit_conflicts.h"
#include "scheduling/work_week.h"

namespace kv {

namespace {

constexpr int kDaysInAWeek = 7;
/// An assignment that lies no further behind runs over the horizon's weeks alone.
constexpr long kWeeksNeglected = 2;
/// How far a schedule typed in by hand may begin from the assignment's time and still be its visit.
constexpr long kSameVisitMinutes = 15;

/// One step. Where it fails, the next one runs all the same: a single bad value must not cost the other
/// visits.
template <typename Step>
void Try(const Step& step) {
    try {
        step();
    } catch (const EngineError&) {
        // Passed over on purpose; the row shows what is missing.
    }
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

/// One assignment's way through its weeks.
class ScheduleCreation::Run {
  public:
    Run(ScheduleCreation& creation, long assignment)
        : creation_(creation),
          session_(creation.session_),
          work_(*session_.dbMainWork),
          today_(session_.clock.Today()),
          assign_(work_.OpenRecordset(Sql("select * from assign where sequence = {}", assignment))) {}

    bool HasAssignment() const { return !assign_.Eof(); }

    /// How many weeks to go through: one that was neglected is brought level with the horizon in one run.
    long Passes() const {
        const Value last = assign_.Get("Last_date");
        const long behind = last.IsNull() ? 0 : std::labs(WeeksBetween(today_, last.ToDate()));
        return behind > kWeeksNeglected ? behind + creation_.weeks_ : creation_.weeks_;
    }

    void Pass() {
        Transaction week = work_.BeginTransaction();
        Try([&] { RunWeek(); });
        if (assign_.EditMode() != EditState::None) {
            assign_.CancelUpdate();
        }
        if (creation_.visits_.EditMode() != EditState::None) {
            creation_.visits_.CancelUpdate();
        }
        week.Commit();
    }

  private:
    void RunWeek() {
        const Value last = assign_.Get("Last_date");
        const long given = static_cast<long>(assign_.Get("howoften").NumberOr(0));
        // Without a Last_date the first week end from today on is where it begins.
        weekEnd_ = last.IsNull() ? WeekEndOf(today_.AddDays(1), creation_.endDay_)
                                 : NextWeekEnd(last.ToDate().DayOnly(), given, creation_.endDay_);
        Try([&] { MendAssignment(given, last.IsNull()); });
        if (!MayRun()) {
            return;
        }
        Try([&] { MoveLastDate(); });
        FindVisitDay();
        if (StandsOn(visitDay_) && !IsThere()) {
            AddVisit();
        }
    }

    long HowOften() const { return static_cast<long>(assign_.Get("howoften").NumberOr(0)); }

    void MendAssignment(long howoften, bool withoutLastDate) {
        if (howoften > 0 && !withoutLastDate) {
            return;
        }
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
        return weekEnd_ <= AddWeeks(today_, creation_.weeks_) && EqualsNoCase(assign_.Text("Type"), "A") &&
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
        const Value holiday = session_.dbMainCode->Lookup(
            Sql("select [date] from Holidays where [date] = {}", day.DayNumber()));
        if (holiday.IsNull()) {
            return true;
        }
        std::string coverage;
        Try([&] {
            coverage =
                work_.Lookup(Sql("select HOL_COV from clientPR where [client]={}", assign_.Text("CLIENT")))
                    .ToText();
        });
        if (!EqualsNoCase(coverage, "NO")) {
            return true;
        }
        Remove("No Schedule Created", "Holiday", assign_.Text("emp_name"));
        return false;
    }

    /// The assignment's own visit of that day, or one typed in by hand that stands for it.
    bool IsThere() {
        const long sequence = assign_.Get("sequence").ToInteger();
        const Date start = assign_.Get("St_time").IsNull() ? Date() : assign_.Get("St_time").ToDate();
        Recordset rows = work_.OpenRecordset(
            Sql("select assign_seq,St_time,visit_type from sch_DAY where client = {} and st_date = {}",
                assign_.Text("CLIENT"), visitDay_.DayNumber()),
            RecordsetType::Snapshot);
        for (; !rows.Eof(); rows.MoveNext()) {
            const Value from = rows.Get("assign_seq");
            if (from.NumberOr(-1) == static_cast<double>(sequence)) {
                return true;
            }
            const Value time = rows.Get("St_time");
            if (from.NumberOr(-1) == 0 && !time.IsNull() &&
                std::labs(MinutesBetween(time.ToDate().TimeOnly(), start.TimeOnly())) <= kSameVisitMinutes &&
                EqualsNoCase(rows.Text("visit_type"), assign_.Text("visit_type"))) {
                return true;
            }
        }
        return false;
    }

    void AddVisit() {
        visit_ = &creation_.visits_;
        visit_->AddNew();
        for (const char* column : {"CLIENT", "vendor", "emp_id"}) {
            Copy(column);
        }
        Put("emp_name", "");
        Put("emp_group", "");
        Put("assign_seq", assign_.Get("sequence"));
        Copy("author_seq");
        Put("sch_type", ScheduleType());
        Put("Sch_code", "S");
        Put("WEEKEND", weekEnd_);
        Put("st_date", visitDay_);
        Recordset client = Row("select * from clientPR where [client]={}", assign_.Text("CLIENT"));
        Put("Manager", client.Eof() ? std::string() : client.Text("Manager"));
        for (const char* column : {"St_time", "END_TIME", "HRS"}) {
            Copy(column);
        }
        Put("Day", WeekdayCode(visitDay_));
        Copy("visit_type");
        Copy("billto");
        Put("cli_name", Trim(assign_.Text("cli_name")));
        if (!client.Eof()) {
            Put("disaster_code", client.Get("disaster_code"));
            Put("cli_group", client.Get("Grouping"));
        }
        if (creation_.paperwork_) {
            Put("paperwork", true);
        }
        AddCaregiver();
        AddExtras(client);
        const Value description = Find("select Description from visit_types where code = {}",
                                       *session_.dbMainCode, assign_.Text("visit_type"));
        if (!description.IsNull()) {
            Put("visit_desc", description);
        }
        Try([&] { KeepFreeOfNonVisits(); });
        visit_->Update();
        ++creation_.created_;
    }

    /// A caregiver who no longer works on that day is taken off this visit alone.
    void AddCaregiver() {
        const std::string id = Trim(assign_.Text("emp_id"));
        if (id.empty()) {
            return;
        }
        Recordset caregiver = Row("select * from employee where [EMP_ID] = {}", assign_.Text("emp_id"));
        if (caregiver.Eof()) {
            return;
        }
        const Value left = caregiver.Get("t_date");
        const bool works = EqualsNoCase(caregiver.Text("t_code"), "A") ||
                           (!left.IsNull() && left.ToDate().DayOnly() >= visitDay_);
        if (!works) {
            TakeOff("Not Active");
            return;
        }
        Put("emp_name", Trim(caregiver.Text("LastName")) + ", " + Trim(caregiver.Text("FirstName")));
        Put("PAY_TRAVEL", caregiver.Get("PAY_MILEAGE"));
        Put("PAY_ERRAND", caregiver.Get("PAY_ERRAND"));
        Put("PAY_EXPENSE", caregiver.Get("PAY_EXPENSES"));
        Put("emp_group", caregiver.Get("dept"));
    }

    /// Mileage, errands and expenses are billed as the payer takes them: 1 is the client.
    void AddExtras(const Recordset& client) {
        constexpr double kClientPays = 1;
        const double billto = assign_.Get("billto").NumberOr(0);
        const auto copy = [&](const Recordset& payer) {
            Put("BILL_TRAVEL", payer.Get("bill_mileage"));
            Put("bill_errand", payer.Get("bill_errand"));
            Put("BILL_EXPENSE", payer.Get("bill_expenses"));
        };
        if (billto == kClientPays && !client.Eof()) {
            copy(client);
            return;
        }
        const Recordset payer = Row("select * from Billcode_imaster where billcode = {}", billto);
        if (!payer.Eof()) {
            copy(payer);
        }
    }

    void KeepFreeOfNonVisits() {
        const std::string id = Trim(visit_->Text("emp_id"));
        if (id.empty()) {
            return;
        }
        const ProposedVisit proposed = ProposeVisit(
            session_.clock, id, visitDay_, assign_.Get("St_time").ToDate(), assign_.Get("HRS").NumberOr(0));
        if (FindScheduleConflict(session_, proposed) > 0) {
            TakeOff("Non-Visit Schedule");
        }
    }

    void TakeOff(const char* reason) {
        const std::string name = visit_->Text("emp_name");
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

    std::string ScheduleType() {
        const Value type =
            Find("select sch_type from Authorizations where sequence = {}", work_, assign_.Get("author_seq"));
        return type.ToText().empty() ? "R" : type.ToText();
    }

    template <typename Key>
    static Value Find(const char* statement, Database& database, const Key& key) {
        Value found;
        Try([&] { found = database.Lookup(Sql(statement, key)); });
        return found;
    }
    /// The row, or a closed-off one without any where it can't be looked for.
    template <typename Key>
    Recordset Row(const char* statement, const Key& key) {
        try {
            return work_.OpenRecordset(Sql(statement, key), RecordsetType::Snapshot);
        } catch (const EngineError&) {
            return work_.OpenRecordset("select * from clientPR where client = ''", RecordsetType::Snapshot);
        }
    }
    void Put(const char* column, const Value& value) {
        Try([&] { visit_->Set(column, value); });
    }
    void Copy(const char* column) { Put(column, assign_.Get(column)); }

    ScheduleCreation& creation_;
    Session& session_;
    Database& work_;
    Date today_;
    Recordset assign_;
    Recordset* visit_ = nullptr;
    Date weekEnd_;
    Date visitDay_;
};

ScheduleCreation::ScheduleCreation(Session& session)
    : session_(session), endDay_(WeekdayNumber(session.WKENDING)) {
    constexpr int kSaturday = 7;
    if (endDay_ == 0) {
        endDay_ = kSaturday;
    }
    Recordset agency = session.dbMainCode->OpenRecordset("agency", RecordsetType::Snapshot);
    if (!agency.Eof()) {
        paperwork_ = agency.Text("NotUsed1") == "Y";
        Try([&] { weeks_ = static_cast<long>(agency.Get("sch_weeks").NumberOr(0)); });
    }
    visits_ = session.dbMainWork->OpenRecordset("select * from sch_day where sequence = 0");
}

void ScheduleCreation::RunFor(long assignment) {
    Run run(*this, assignment);
    if (!run.HasAssignment()) {
        return;
    }
    long passes = weeks_;
    Try([&] { passes = run.Passes(); });
    for (long pass = 0; pass < passes; ++pass) {
        run.Pass();
    }
}

bool ScheduleCreation::RunAll(const std::vector<long>& assignments) {
    for (const long assignment : assignments) {
        RunFor(assignment);
        if (!session_.progress.Yield()) {
            return false;
        }
    }
    return true;
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
    return Sequences(session, Sql("select sequence from assign where author_seq = {}", authorization));
}

std::vector<long> AllAssignments(Session& session) {
    return Sequences(session, "select sequence from assign order by sequence");
}

}  // namespace kv
