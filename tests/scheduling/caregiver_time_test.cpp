// A caregiver's declared time and the hours of her week.
#include <gtest/gtest.h>

#include "scheduling/visit_conflicts.h"
#include "scheduling/work_week.h"
#include "support/test_agency.h"

namespace kv {
namespace {

using test::Cells;

class CaregiverTime : public ::testing::Test {
  protected:
    /// Monday, 2026-03-09.
    const Date monday_ = Date::FromCivil(2026, 3, 9);

    void Row(const char* table, Date day, Date from, Date to, const Cells& more = {}) {
        Cells cells = {{"emp_id", "E1"}, {"st_date", day}, {"St_time", from}, {"END_TIME", to}};
        if (std::string(table) == "sch_day") {
            cells.push_back({"Day", WeekdayCode(day)});
        }
        cells.insert(cells.end(), more.begin(), more.end());
        agency.Insert(table, cells);
    }
    ProposedVisit Visit(Date start, double hours) const {
        return ProposeVisit(agency.ports.clock, "E1", monday_, start, hours);
    }
    static Date At(int hour, int minute = 0) { return Date::FromTime(hour, minute); }

    test::TestAgency agency;
    Session& session = agency.session();
};

TEST_F(CaregiverTime, ANonVisitRowIsRunInto) {
    struct Case {
        const char* what = "";
        int shift = 0;
        Date from, to;
        Date start;
        double hours = 0;
        int count = 0;
    };
    const Case cases[] = {
        {"ends as the visit begins", 0, At(8), At(12), At(12), 1, 0},
        {"begins as the visit ends", 0, At(13), At(15), At(12), 1, 0},
        {"overlaps", 0, At(8), At(12), At(11), 2, 1},
        {"begins together", 0, At(11), At(11, 30), At(11), 2, 1},
        {"lies inside", 0, At(11, 30), At(12), At(11), 2, 1},
        {"holds the visit", 0, At(8), At(17), At(11), 2, 1},
        {"over the night before", -1, At(22), At(6), At(5), 2, 1},
        {"over the night before, ended", -1, At(22), At(5), At(5), 2, 0},
        {"over the coming night", 0, At(22), At(6), At(20), 3, 1},
        {"the visit crosses into the next morning", 1, At(1), At(3), At(22), 4, 1},
        {"the visit ends at midnight", 1, At(0), At(3), At(22), 2, 0},
        {"up to midnight", 0, At(18), At(0), At(23), 0.5, 1},
    };
    for (const Case& c : cases) {
        agency.Work().Execute("delete from sch_day");
        Row("sch_day", monday_.AddDays(c.shift), c.from, c.to);
        EXPECT_EQ(FindScheduleConflict(session, Visit(c.start, c.hours)), c.count) << c.what;
    }
}

TEST_F(CaregiverTime, OnlyNonVisitsOfHersCount) {
    Row("sch_day", monday_, At(8), At(17), {{"CLIENT", "00001"}});
    Row("sch_day", monday_, At(8), At(17), {{"Cancelled", true}});
    Row("sch_day", monday_, At(8), At(17), {{"emp_id", "E2"}});
    Row("sch_day", monday_.AddDays(7), At(8), At(17));
    Row("sch_day", monday_, At(8), At(17), {{"Day", "FRI"}});
    Row("sch_day", monday_, At(8), At(17), {{"END_TIME", Value()}});
    EXPECT_EQ(FindScheduleConflict(session, Visit(At(9), 4)), 0);
    Row("sch_day", monday_, At(8), At(10), {{"CLIENT", ""}});
    Row("sch_day", monday_, At(12), At(14));
    EXPECT_EQ(FindScheduleConflict(session, Visit(At(9), 4)), 2);
    Row("Emp_willwork", monday_, At(8), At(17));
    EXPECT_EQ(FindScheduleConflict(session, Visit(At(9), 4)), 0);
}

TEST_F(CaregiverTime, WillingnessCoversTheWholeVisitOrNothing) {
    struct Span {
        int shift;
        Date from, to;
    };
    struct Case {
        const char* what;
        std::vector<Span> willing;
        Date start;
        double hours;
        bool covered;
    };
    const Case cases[] = {
        {"nothing", {}, At(9), 4, false},
        {"exactly", {{0, At(9), At(13)}}, At(9), 4, true},
        {"a minute short", {{0, At(9), At(12, 59)}}, At(9), 4, false},
        {"two halves", {{0, At(9), At(11)}, {0, At(11), At(13)}}, At(9), 4, false},
        {"up to midnight", {{0, At(9), At(0)}}, At(20), 4, true},
        {"another day", {{1, At(9), At(13)}}, At(9), 4, false},
        {"both days of a night", {{0, At(20), At(0)}, {1, At(0), At(6)}}, At(22), 8, true},
        {"the evening alone", {{0, At(20), At(0)}}, At(22), 8, false},
        {"the morning too short", {{0, At(20), At(0)}, {1, At(0), At(5)}}, At(22), 8, false},
        {"a row between them", {{0, At(20), At(0)}, {0, At(23), At(0)}, {1, At(0), At(6)}}, At(22), 8, false},
    };
    for (const Case& c : cases) {
        agency.Work().Execute("delete from Emp_willwork");
        for (const Span& span : c.willing) {
            Row("Emp_willwork", monday_.AddDays(span.shift), span.from, span.to);
        }
        EXPECT_EQ(FindWillWorkConflict(session, Visit(c.start, c.hours)), c.covered) << c.what;
    }
}

TEST_F(CaregiverTime, TheWeekCountsWhatLiesInIt) {
    struct Case {
        const char* what;
        int shift;  ///< from the Monday
        Date start;
        double hours;
        Cells more;
        double counts;
    };
    // The week ends on Friday the 13th and begins on Saturday the 7th.
    const Case cases[] = {
        {"a plain visit", 0, At(9), 4, {}, 4},
        {"worked longer", 0, At(9), 4, {{"act_hrs", 5.25}, {"visit_time", At(9)}}, 5.25},
        {"cancelled", 0, At(9), 4, {{"Cancelled", true}}, 0},
        {"pay only", 0, At(9), 4, {{"sch_type", "P"}}, 4},
        {"bill only", 0, At(9), 4, {{"sch_type", "B"}}, 0},
        {"a night inside", 0, At(22), 8, {}, 8},
        {"the night before the week", -3, At(22), 8, {}, 6},
        {"the day before the week", -3, At(9), 8, {}, 0},
        {"worked into the week", -3, At(9), 8, {{"act_hrs", 4}, {"visit_time", At(23)}}, 3},
        {"the last night", 4, At(22), 8, {}, 2},
        {"a whole day and night at the end", 4, At(8), 24, {}, 24},
        {"the day behind the week", 5, At(9), 4, {}, 0},
        {"two days before the week", -4, At(22), 8, {}, 0},
    };
    session.WKENDING = "fri";
    for (const Case& c : cases) {
        agency.Work().Execute("delete from sch_day");
        Cells more = {{"HRS", c.hours}, {"sch_type", "R"}};
        for (const auto& cell : c.more) {
            more.push_back(cell);
        }
        Row("sch_day", monday_.AddDays(c.shift), c.start, At(0), more);
        EXPECT_DOUBLE_EQ(CaregiverWeekHours(session, "E1", monday_), c.counts) << c.what;
    }
    EXPECT_DOUBLE_EQ(CaregiverWeekHours(session, "E2", monday_), 0);
}

TEST(WorkWeek, EndsOnItsDay) {
    EXPECT_EQ(WeekdayNumber("Saturday"), 7);
    EXPECT_EQ(WeekdayNumber("sun"), 1);
    EXPECT_EQ(WeekdayNumber(""), 0);
    const Date friday = Date::FromCivil(2026, 3, 13);
    EXPECT_EQ(WeekEndOf(friday, 6), friday);
    EXPECT_EQ(WeekEndOf(friday, 5), friday.AddDays(6));
    EXPECT_EQ(WeekEndOf(Date::FromCivil(2026, 3, 13, 23, 30), 7), friday.AddDays(1));
}

}  // namespace
}  // namespace kv
