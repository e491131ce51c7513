// What a new or changed assignment of a caregiver may run into.
#include "base/format.h"
#include "base/text.h"
#include "scheduling/assignments.h"
#include "scheduling/visit_conflicts.h"

namespace kv {

namespace {

constexpr double kMinutesInAnHour = 60;
constexpr const char* kMoment = "MM/DD/YYYY HH:MM";

/// A visit's span laid on a day, as the texts that are compared.
struct SpanText {
    std::string start, end;
};

SpanText Lay(Date day, Date time, double hours) {
    const Date start = day.At(time);
    return {FormatDate(start, kMoment), FormatDate(start.AddMinutes(hours * kMinutesInAnHour), kMoment)};
}

Date DateOr(const Value& value, Date fallback) {
    return value.IsNull() ? fallback : value.ToDate().DayOnly();
}

class Walk {
  public:
    Walk(Session& session, const AssignmentEntry& entry, const AssignmentParent& parent)
        : session_(session), entry_(entry), parent_(parent), today_(session.clock.Today()) {}

    void AgainstUnavailability() {
        Recordset rows = Rows(Sql("select * from assign where emp_id = {} and type = 'N'", entry_.emp_id));
        for (; !rows.Eof(); rows.MoveNext()) {
            TestDay(rows, 0, "", "Not Available");
        }
    }

    void AgainstOtherWork(long sequence) {
        Recordset rows =
            Rows(Sql("select * from assign where emp_id = {} and type = 'A' and Client_Status = "
                     "'A' and sequence <> {}",
                     entry_.emp_id, sequence));
        for (; !rows.Eof(); rows.MoveNext()) {
            if (DateOr(rows.Get("st_date"), parent_.from) > parent_.to ||
                DateOr(rows.Get("END_DATE"), parent_.to) < parent_.from) {
                continue;
            }
            const std::string client = rows.Text("cli_name");
            TestDay(rows, 0, "", client);
            TestDay(rows, -1, " B", client);
            TestDay(rows, 1, " A", client);
        }
    }

    std::vector<AssignmentConflict> Found() { return std::move(found_); }

  private:
    Recordset Rows(const std::string& statement) {
        return session_.dbMainWork->OpenRecordset(statement, RecordsetType::Snapshot);
    }

    /// For each checked day: does the row lie `shift` days from it, and overlap?
    void TestDay(const Recordset& row, int shift, const char* mark, const std::string& with) {
        const int rowDay = DayIndex(row.Text("Day"));
        const Value time = row.Get("St_time");
        if (rowDay < 0 || time.IsNull()) {
            return;
        }
        const double hours = row.Get("HRS").NumberOr(0);
        const SpanText other = Lay(today_.AddDays(shift), time.ToDate(), hours);
        const SpanText own = Lay(today_, entry_.start, entry_.hours);
        for (int day = 0; day < kDaysOfWeek; ++day) {
            const bool there = rowDay == (day + shift + kDaysOfWeek) % kDaysOfWeek;
            if (entry_.days[static_cast<std::size_t>(day)] && there &&
                MomentsOverlap(other.start, other.end, own.start, own.end)) {
                found_.push_back({DateOr(row.Get("st_date"), parent_.from),
                                  DateOr(row.Get("END_DATE"), parent_.to), time.ToDate(), hours, with,
                                  row.Text("Day") + mark,
                                  static_cast<long>(row.Get("howoften").NumberOr(0))});
            }
        }
    }

    Session& session_;
    const AssignmentEntry& entry_;
    const AssignmentParent& parent_;
    Date today_;
    std::vector<AssignmentConflict> found_;
};

}  // namespace

std::vector<AssignmentConflict> FindAssignmentConflicts(Session& session, const AssignmentEntry& entry,
                                                        const AssignmentParent& parent, long sequence) {
    Walk walk(session, entry, parent);
    walk.AgainstUnavailability();
    walk.AgainstOtherWork(sequence);
    return walk.Found();
}

}  // namespace kv
