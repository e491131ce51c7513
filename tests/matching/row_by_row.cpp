#include "matching/row_by_row.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "scheduling/visit_conflicts.h"
#include "scheduling/work_week.h"

namespace kv::test {

namespace {

constexpr const char* kMoment = "YYYY/MM/DD HH:NN";

std::string Clock(Date time) {
    return FormatDate(time, "HH:NN");
}

/// A statement that fails is passed over.
template <typename Step>
void Passing(const Step& step) {
    try {
        step();
    } catch (const EngineError&) {
    }
}

class RowByRow {
  public:
    RowByRow(Session& session, Database& working, const ClientNeeds& needs, const SuggestionRequest& request,
             const SuggestionOptions& options)
        : session_(session),
          work_(*session.dbMainWork),
          working_(working),
          needs_(needs),
          request_(request),
          options_(options),
          today_(session.clock.Today()) {}

    PlainSuggestion Run() {
        working_.Execute("delete * from assign_head");
        start_ = options_.ignoreStart ? today_ : today_.At(request_.time);
        end_ = options_.ignoreStart ? today_ : start_.AddMinutes(request_.hours * 60);
        spans_ = end_.DayNumber() > start_.DayNumber() && Clock(end_) != "00:00";
        on_ = WeekdayCode(request_.day);
        next_ = WeekdayCode(request_.day.AddDays(1));
        before_ = WeekdayCode(request_.day.AddDays(-1));
        day_ = request_.day.DayNumber();
        for (Recordset row = work_.OpenRecordset(EmployeeStatement(needs_, request_, options_)); !row.Eof();
             row.MoveNext()) {
            OneEmployee(row);
        }
        FillGrid();
        return std::move(result_);
    }

  private:
    int Score(const std::string& emp) {
        if (!options_.skillsPercent) {
            return 0;
        }
        std::string clientSkills;
        int count = 0;
        for (Recordset row = Rows(
                 Sql("Select * from cli_misc where client = {} and area = 'SKI' order by id", needs_.client));
             !row.Eof(); row.MoveNext(), ++count) {
            clientSkills += row.Text("ID") + ",";
        }
        if (clientSkills.empty()) {
            return 100;
        }
        int found = 0;
        for (Recordset row = Rows(Sql("Select * from emp_misc where emp = {} and area = 'SKI'", emp));
             !row.Eof(); row.MoveNext()) {
            found += clientSkills.find(row.Text("ID")) != std::string::npos ? 1 : 0;
        }
        return static_cast<int>(Val(FormatNumber(100.0 * found / count, "##0")));
    }

    void OneEmployee(const Recordset& employee) {
        const std::string emp = employee.Text("emp_id");
        const std::string listed =
            PadLeftToWidth(Trim(employee.Text("LastName")) + ", " + employee.Text("FirstName"), 50);
        bool available = true;
        Recordset head = working_.OpenRecordset("assign_head");
        head.AddNew();
        head.Set("Day", on_);
        head.Set("emp_id", emp);
        head.Set("emp_name",
                 Left(Trim(employee.Text("LastName")) + ", " + Trim(employee.Text("FirstName")), 40));
        head.Set("skills", Score(emp));
        head.Update();

        // What she declared.
        std::string statement =
            spans_ ? Sql("select * from assign where  emp_id = {} and day = {} AND type = 'N' or emp_id = {} "
                         "and day "
                         "= {} AND type = 'N'",
                         emp, on_, emp, next_)
                   : Sql("select * from assign where  emp_id = {} and day = {} AND type = 'N' ", emp, on_);
        Recordset rows = Rows(statement + " order by sequence");
        for (; !rows.Eof(); rows.MoveNext()) {
            if (Overlaps(rows, rows.Text("day"))) {
                if (!FindWillWorkConflict(session_, {emp, start_, end_, request_.hours, on_, request_.day})) {
                    available = false;
                }
                break;
            }
        }
        available = available || options_.ignoreUnavailable;
        if (available) {
            for (rows = Rows(statement + " order by sequence"); !rows.Eof(); rows.MoveNext()) {
                if (EqualsNoCase(rows.Text("day"), on_)) {
                    Write(emp, "UnAvailable", Time(rows, "St_time"), Time(rows, "END_TIME"));
                }
            }
        } else {
            Delete(emp);
        }
        for (rows = Rows(Sql("select * from Emp_willwork where  emp_id = {} and st_date = {}", emp, day_));
             !rows.Eof(); rows.MoveNext()) {
            Write(emp, "", Time(rows, "St_time"), Time(rows, "END_TIME"));
        }
        available = available || options_.ignoreUnavailable;
        available = available && Assignments(emp, listed);
        if (available) {
            Visits(emp, listed);
        }
    }

    bool Assignments(const std::string& emp, const std::string& listed) {
        const auto clause = [&](const std::string& day) {
            return Sql("emp_id = {} and day = {} AND type = 'A' and st_date <= {} and  END_DATE >= {}", emp,
                       day, day_, day_);
        };
        std::string statement = "select * from assign where  " + clause(on_);
        statement += spans_ ? " or " + clause(next_) + " or " + clause(before_) : " or " + clause(before_);
        statement += " order by sequence";
        const auto counts = [&](const Recordset& row) {
            return !row.Get("Last_date").IsNull() && request_.day > row.Get("Last_date").ToDate();
        };
        for (Recordset row = Rows(statement); !row.Eof(); row.MoveNext()) {
            if (counts(row) && Overlaps(row, row.Text("day"))) {
                result_.rejected.push_back(listed + " is already assigned to be scheduled");
                Delete(emp);
                return false;
            }
        }
        for (Recordset row = Rows(statement); !row.Eof(); row.MoveNext()) {
            if (counts(row)) {
                WriteOccupied(emp, row, row.Text("day"), false);
            }
        }
        return true;
    }

    void Visits(const std::string& emp, const std::string& listed) {
        const std::string statement =
            Sql("select * from sch_day where emp_id = {} and cancelled = 0 and st_date between {} AND {} "
                "order by "
                "sequence",
                emp, day_ - 1, spans_ ? day_ + 1 : day_);
        bool available = true;
        for (Recordset row = Rows(statement); !row.Eof(); row.MoveNext()) {
            if (Overlaps(row, WeekdayCode(row.Get("st_date").ToDate()))) {
                result_.rejected.push_back(listed + " is already scheduled");
                available = false;
                break;
            }
        }
        if (!available && !options_.ignoreStart) {
            Delete(emp);
            return;
        }
        for (Recordset row = Rows(statement); !row.Eof(); row.MoveNext()) {
            WriteOccupied(emp, row, WeekdayCode(row.Get("st_date").ToDate()), true);
        }
    }

    void WriteOccupied(const std::string& emp, const Recordset& row, const std::string& day,
                       bool skipsMidnight) {
        const Date from = Time(row, "St_time");
        const Date to = Time(row, "END_TIME");
        const bool past = Clock(from) >= Clock(to);
        const std::string client = row.Text("cli_name");
        const std::string text = Left(client.empty() ? row.Text("visit_desc") : client, 14);
        if (EqualsNoCase(day, before_) && past && !(skipsMidnight && Clock(to) == "00:00")) {
            Write(emp, text, Date(), to);
        } else if (EqualsNoCase(day, on_)) {
            Write(emp, text, from, past ? Date() : to);
        }
    }

    bool Overlaps(const Recordset& row, const std::string& day) {
        const Date from = Time(row, "St_time");
        const Date to = Time(row, "END_TIME");
        const int shift = EqualsNoCase(day, on_) ? 0 : EqualsNoCase(day, next_) ? 1 : -1;
        const bool past = Clock(from) >= Clock(to);
        const std::string s = FormatDate(today_.AddDays(shift).At(from), kMoment);
        const std::string e = FormatDate(today_.AddDays(shift + (past ? 1 : 0)).At(to), kMoment);
        const std::string windowStart = FormatDate(start_, kMoment);
        const std::string windowEnd = FormatDate(end_, kMoment);
        return (s >= windowStart && s < windowEnd) || (windowStart > s && windowStart < e);
    }

    /// The walk over the columns, and its statement, broken ones included.
    void Write(const std::string& emp, const std::string& text, Date from, Date to) {
        const int first = static_cast<int>(Val(FormatDate(from, "HHNN")));
        int last = 2345;
        if (Clock(from) != Clock(to) && Clock(to) != "00:00") {
            last = static_cast<int>(Val(FormatDate(to, "HHNN"))) - 15;
        }
        std::string list;
        for (int number = first; number <= last; number += 15) {
            list += (list.empty() ? "" : ",") + std::to_string(number) + " = '" + text + "'";
            if (number % 100 == 45) {
                number += 40;
            }
        }
        Passing([&] {
            working_.Execute("update assign_head set " + list + " where day = '" + on_ + "' and emp_id = '" +
                             emp + "'");
        });
    }
    void Delete(const std::string& emp) {
        Passing([&] { working_.Execute("delete * from assign_head where emp_id = '" + emp + "'"); });
    }

    void FillGrid() {
        const Date weekEnd = WeekEndOf(request_.day, WeekdayNumber(session_.WKENDING));
        for (Recordset head = working_.OpenRecordset("assign_head"); !head.Eof(); head.MoveNext()) {
            const std::string emp = head.Text("emp_id");
            if (options_.skillsPercent && head.Get("skills").NumberOr(0) == 0) {
                head.Delete();
                continue;
            }
            double sum = 0;
            for (Recordset row =
                     Rows(Sql("select * from sch_day where  emp_id = {} and cancelled = 0 and st_date >= {} "
                              "AND st_date <= {}",
                              emp, weekEnd.DayNumber() - 6, weekEnd.DayNumber()));
                 !row.Eof(); row.MoveNext()) {
                const double worked = row.Get("act_hrs").NumberOr(0);
                sum += worked > 0 ? worked : row.Get("HRS").NumberOr(0);
            }
            const Recordset employee = Rows(Sql("select * from employee where emp_id = {}", emp));
            head.Edit();
            head.Set("max_hours", employee.Get("hrsper_week").NumberOr(0) - sum);
            head.Update();
            if (options_.critical) {
                for (const std::string& code : needs_.CriticalSkills()) {
                    if (Rows(Sql("Select * from emp_misc where emp = {} and area = 'SKI' and id = {}", emp,
                                 code))
                            .Eof()) {
                        head.Delete();
                        break;
                    }
                }
            }
        }
        for (Recordset head =
                 working_.OpenRecordset("SELECT * FROM ASSIGN_HEAD ORDER BY max_hours DESC,EMP_name,SORT");
             !head.Eof(); head.MoveNext()) {
            PlainRow row = {head.Text("emp_id"),
                            head.Text("emp_name"),
                            head.Get("max_hours").NumberOr(0),
                            static_cast<int>(head.Get("skills").NumberOr(0)),
                            0,
                            {}};
            int run = 0;
            for (int quarter = 0; quarter < kQuarters; ++quarter) {
                const std::string text = head.Text(std::to_string(QuarterNumber(quarter)));
                row.quarters.push_back(text);
                const bool free = text.empty() || (options_.ignoreUnavailable && text == "UnAvailable");
                run = free ? run + 1 : 0;
                row.longest = std::max(row.longest, run);
            }
            if (!options_.ignoreStart || row.longest / 4.0 >= request_.hours) {
                result_.rows.push_back(std::move(row));
            }
        }
    }

    static Date Time(const Recordset& row, const char* field) { return row.Get(field).ToDate(); }
    Recordset Rows(const std::string& statement) {
        return work_.OpenRecordset(statement, RecordsetType::Snapshot);
    }

    Session& session_;
    Database& work_;
    Database& working_;
    const ClientNeeds& needs_;
    const SuggestionRequest& request_;
    const SuggestionOptions& options_;
    Date today_, start_, end_;
    bool spans_ = false;
    std::string on_, next_, before_;
    long day_ = 0;
    PlainSuggestion result_;
};

}  // namespace

PlainSuggestion SearchRowByRow(Session& session, Database& working, const ClientNeeds& needs,
                               const SuggestionRequest& request, const SuggestionOptions& options) {
    return RowByRow(session, working, needs, request, options).Run();
}

}  // namespace kv::test
