// Assignments become visits.
#include <functional>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

#include "scheduling/schedule_creation.h"
#include "session/start.h"
#include "support/test_agency.h"

namespace kv {
namespace {

using test::Cells;
using Lines = std::vector<std::string>;

Date Day(int month, int day, int year = 2026) {
    return Date::FromCivil(year, month, day);
}

/// The clock stands at Wednesday, 2026-03-04; weeks end on Saturday and the horizon is 4 weeks: Apr 1.
class Creation : public ::testing::Test {
  protected:
    Creation() {
        session.WKENDING = "Saturday";
        agency.Code().Execute("update Agency set sch_weeks = 4");
        agency.Client(
            "00001", "Grant", "Ida",
            {{"MANAGER", "M1"}, {"grouping", "North"}, {"DISASTER_CODE", "RED"}, {"bill_errand", true}});
        agency.Insert("Employee", {{"emp_id", "E1"},
                                   {"LastName", " Ames "},
                                   {"FirstName", "Al"},
                                   {"t_code", "A"},
                                   {"dept", "East"},
                                   {"PAY_MILEAGE", true}});
        agency.Insert("Visit_types", {{"code", "PCA"}, {"Description", "Personal Care"}});
        agency.Insert("billcode_imaster", {{"billcode", 7}, {"insname", "Medicaid"}, {"bill_mileage", true}});
        author_ = agency.Insert("Authorizations", {{"CLIENT", "00001"}, {"status_code", "A"}});
    }

    long Assign(const Cells& more = {}) {
        Cells cells = {{"author_seq", author_},
                       {"vendor", "01"},
                       {"CLIENT", "00001"},
                       {"cli_name", " Grant, Ida "},
                       {"author_status", "A"},
                       {"visit_type", "PCA"},
                       {"billto", 7},
                       {"Day", "MON"},
                       {"St_time", Date::FromTime(9, 0)},
                       {"END_TIME", Date::FromTime(13, 0)},
                       {"HRS", 4},
                       {"howoften", 1},
                       {"st_date", Day(1, 1)},
                       {"END_DATE", Day(12, 31)},
                       {"Last_date", Day(2, 28)},
                       {"Type", "A"}};
        cells.insert(cells.end(), more.begin(), more.end());
        return static_cast<long>(agency.Insert("assign", cells));
    }
    Lines Run(long assignment) {
        removed_.clear();
        EXPECT_TRUE(Create_schedule_now(session, assignment, removed_));
        return Days();
    }
    Lines Days() { return agency.Rows("select st_date from sch_day where assign_seq > 0 order by st_date"); }
    static Lines On(std::initializer_list<Date> days) {
        Lines lines;
        for (const Date day : days) {
            const CivilDate civil = day.Civil();
            char text[40];
            std::snprintf(text, sizeof text, "%04d-%02d-%02d 00:00:00", civil.year, civil.month, civil.day);
            lines.emplace_back(text);
        }
        return lines;
    }
    std::string LastDate() { return agency.Rows("select last_date from assign").at(0).substr(0, 10); }
    Lines Removed() const {
        Lines lines;
        for (const RemovedVisit& visit : removed_) {
            lines.push_back(visit.what + "|" + visit.reason + "|" + visit.caregiver + "|" + visit.client +
                            "|" + visit.time);
        }
        return lines;
    }

    test::TestAgency agency;
    Session& session = agency.session();
    std::int64_t author_ = 0;
    std::vector<RemovedVisit> removed_;
};

TEST_F(Creation, AVisitHoldsWhatPayrollAndBillingNeed) {
    agency.Code().Execute("update Agency set NotUsed1 = 'Y', sch_weeks = 1");
    Assign({{"emp_id", "E1"}});
    ASSERT_EQ(Run(1), On({Day(3, 2)}));
    EXPECT_EQ(
        agency.Rows("select CLIENT, vendor, emp_id, emp_name, emp_group, assign_seq, author_seq, sch_type, "
                    "Sch_code, Manager, HRS, [Day], visit_type, visit_desc, billto, cli_name, "
                    "disaster_code, cli_group from sch_day"),
        Lines{"00001|01|E1|Ames, Al|East|1|1|R|S|M1|4|MON|PCA|Personal Care|7|Grant, Ida|RED|North"});
    EXPECT_EQ(agency.Rows("select WEEKEND, St_time, END_TIME, act_hrs, Cancelled from sch_day"),
              Lines{"2026-03-07 00:00:00|1899-12-30 09:00:00|1899-12-30 13:00:00|0|False"});
    EXPECT_EQ(agency.Rows("select paperwork, PAY_TRAVEL, PAY_ERRAND, PAY_EXPENSE, BILL_TRAVEL, bill_errand, "
                          "BILL_EXPENSE from sch_day"),
              Lines{"True|True|False|False|True|False|False"});

    agency.Work().Execute("delete from sch_day");
    agency.Work().Execute("update assign set last_date = #2026-02-28#, billto = 1, emp_id = null");
    agency.Work().Execute("update authorizations set sch_type = 'P'");
    Run(1);
    EXPECT_EQ(agency.Rows("select emp_id, emp_name, sch_type, BILL_TRAVEL, bill_errand from sch_day"),
              Lines{"<Null>||P|False|True"})
        << "the client pays, by his own marks";
}

TEST_F(Creation, GoesUpToTheHorizonAndNoFurther) {
    struct Case {
        const char* what;
        Cells changed;
        Lines days;
        const char* last;
    };
    const Case cases[] = {
        {"every week", {}, On({Day(3, 2), Day(3, 9), Day(3, 16), Day(3, 23)}), "2026-03-28"},
        {"every second week", {{"howoften", 2}}, On({Day(3, 9), Day(3, 23)}), "2026-03-28"},
        {"in the middle of a week",
         {{"Last_date", Day(2, 25)}},
         On({Day(3, 2), Day(3, 9), Day(3, 16), Day(3, 23)}),
         "2026-03-28"},
        {"a day behind the week's end",
         {{"Last_date", Day(3, 1)}},
         On({Day(3, 9), Day(3, 16), Day(3, 23)}),
         "2026-03-28"},
        {"a day before it",
         {{"Last_date", Day(2, 27)}},
         On({Day(3, 2), Day(3, 9), Day(3, 16), Day(3, 23)}),
         "2026-03-28"},
        {"neglected for nine weeks",
         {{"Last_date", Day(1, 3)}},
         On({Day(1, 5), Day(1, 12), Day(1, 19), Day(1, 26), Day(2, 2), Day(2, 9), Day(2, 16), Day(2, 23),
             Day(3, 2), Day(3, 9), Day(3, 16), Day(3, 23)}),
         "2026-03-28"},
        {"ends in a week before its day",
         {{"Day", "THU"}, {"END_DATE", Day(3, 11)}},
         On({Day(3, 5)}),
         "2026-03-14"},
        {"begins behind its day in the week",
         {{"st_date", Day(3, 5)}},
         On({Day(3, 9), Day(3, 16), Day(3, 23)}),
         "2026-03-28"},
        // It waits for its first week where Last_date stands; whoever moves the start moves that too.
        {"begins weeks behind Last_date", {{"st_date", Day(3, 17)}}, {}, "2026-02-28"},
        {"up to the horizon already", {{"Last_date", Day(3, 28)}}, {}, "2026-03-28"},
        {"no hours", {{"HRS", 0}}, {}, "2026-02-28"},
        {"authorization closed", {{"author_status", "C"}}, {}, "2026-02-28"},
        {"not a visit", {{"Type", "N"}}, {}, "2026-02-28"},
        {"a damaged day", {{"Day", "XXX"}}, {}, "2026-03-28"},
    };
    for (const Case& c : cases) {
        agency.Work().Execute("delete from assign");
        agency.Work().Execute("delete from sch_day");
        const long assignment = Assign(c.changed);
        EXPECT_EQ(Run(assignment), c.days) << c.what;
        EXPECT_EQ(LastDate(), c.last) << c.what;
        EXPECT_EQ(Run(assignment), c.days) << c.what << ": again adds nothing";
        EXPECT_EQ(removed_.size(), 0U) << c.what;
    }
}

TEST_F(Creation, TheWeekEndsOnAnyDay) {
    struct Case {
        const char* ending = "";
        const char* day = "";
        Date visit;
        const char* weekend = "";
    };
    // Wednesday, March 4 lies in each of these weeks.
    const Case cases[] = {
        {"sun", "MON", Day(3, 2), "2026-03-08"},  {"SUNDAY", "SUN", Day(3, 8), "2026-03-08"},
        {"Wed", "THU", Day(2, 26), "2026-03-04"}, {"wednesday", "WED", Day(3, 4), "2026-03-04"},
        {"FRI", "SAT", Day(2, 28), "2026-03-06"},
    };
    agency.Code().Execute("update Agency set sch_weeks = 1");
    for (const Case& c : cases) {
        agency.Work().Execute("delete from assign");
        agency.Work().Execute("delete from sch_day");
        session.WKENDING = c.ending;
        const Date weekEnd = Day(3, std::atoi(c.weekend + 8));
        EXPECT_EQ(Run(Assign({{"Day", c.day}, {"Last_date", weekEnd.AddDays(-7)}})), On({c.visit}))
            << c.ending;
        EXPECT_EQ(agency.Rows("select weekend from sch_day").at(0).substr(0, 10), c.weekend) << c.ending;
    }
}

TEST_F(Creation, MendsADamagedAssignment) {
    Assign({{"howoften", 0}});
    EXPECT_EQ(Run(1), On({Day(3, 2), Day(3, 9), Day(3, 16)})) << "one of the passes mends the interval";
    EXPECT_EQ(agency.Rows("select howoften from assign"), Lines{"1"});

    agency.Work().Execute("delete from sch_day");
    agency.Work().Execute("update assign set howoften = 0, hrs = 0");
    Run(1);
    EXPECT_EQ(agency.Rows("select howoften from assign"), Lines{"1"}) << "even without a visit";

    agency.Work().Execute("update assign set last_date = null, hrs = 4");
    EXPECT_EQ(Run(1), On({Day(3, 9), Day(3, 16), Day(3, 23)}));
    EXPECT_TRUE(Create_schedule_now(session, 99, removed_)) << "there is none of that number";
}

TEST_F(Creation, KnowsTheVisitsThatAreThere) {
    struct Case {
        const char* what;
        Cells existing;
        bool makes;
    };
    const Case cases[] = {
        {"its own, cancelled or not",
         {{"assign_seq", 1}, {"Cancelled", true}, {"St_time", Date::FromTime(20, 0)}},
         false},
        {"typed in 15 minutes later", {{"assign_seq", 0}, {"St_time", Date::FromTime(9, 15)}}, false},
        {"typed in 15 minutes earlier", {{"assign_seq", 0}, {"St_time", Date::FromTime(8, 45)}}, false},
        {"typed in 16 minutes later", {{"assign_seq", 0}, {"St_time", Date::FromTime(9, 16)}}, true},
        {"typed in for another call type", {{"assign_seq", 0}, {"visit_type", "HHA"}}, true},
        {"an orphan's", {{"assign_seq", -1}}, true},
        {"another assignment's", {{"assign_seq", 77}}, true},
    };
    agency.Code().Execute("update Agency set sch_weeks = 1");
    for (const Case& c : cases) {
        agency.Work().Execute("delete from assign");
        agency.Work().Execute("delete from sch_day");
        const long assignment = Assign();
        Cells row = {{"CLIENT", "00001"},
                     {"st_date", Day(3, 2)},
                     {"St_time", Date::FromTime(9, 0)},
                     {"visit_type", "PCA"}};
        row.insert(row.end(), c.existing.begin(), c.existing.end());
        if (c.existing.front().second == Value(1)) {
            row.insert(row.begin(), {"vendor", "XX"});
            row.push_back({"assign_seq", assignment});
        }
        agency.Insert("sch_day", row);
        Create_schedule_now(session, assignment, removed_);
        EXPECT_EQ(agency.Rows("select sequence from sch_day").size(), c.makes ? 2U : 1U) << c.what;
    }
}

TEST_F(Creation, HolidaysCloseOnlyForThoseWhoWantIt) {
    agency.Insert("Holidays", {{"date", Day(3, 9)}, {"Description", "Founders"}});
    for (const char* coverage : {"no", "YES", ""}) {
        agency.Work().Execute("delete from assign");
        agency.Work().Execute("delete from sch_day");
        agency.Work().Execute(Sql("update clientpr set HOL_COV = {}", coverage));
        const Lines days = Run(Assign({{"emp_name", "Ames, Al"}}));
        if (std::string(coverage) == "no") {
            EXPECT_EQ(days, On({Day(3, 2), Day(3, 16), Day(3, 23)}));
            EXPECT_EQ(Removed(), Lines{"No Schedule Created|Holiday|Ames, Al|Grant, Ida|09:00"});
            EXPECT_EQ(removed_[0].date, Day(3, 9));
        } else {
            EXPECT_EQ(days.size(), 4U) << coverage;
        }
    }
}

TEST_F(Creation, ACaregiverWhoLeftIsTakenOffHerVisits) {
    agency.Work().Execute("update employee set t_code = 'T', t_date = #2026-03-09#");
    Assign({{"emp_id", "E1"}, {"emp_name", "Ames, Al"}});
    EXPECT_EQ(Run(1).size(), 4U);
    EXPECT_EQ(agency.Rows("select emp_id, emp_name, emp_group from sch_day order by st_date"),
              (Lines{"E1|Ames, Al|East", "E1|Ames, Al|East", "||", "||"}));
    EXPECT_EQ(Removed(), (Lines{"Removed Caregiver|Not Active|Ames, Al|Grant, Ida|09:00",
                                "Removed Caregiver|Not Active|Ames, Al|Grant, Ida|09:00"}));

    agency.Work().Execute("delete from sch_day");
    agency.Work().Execute("update assign set last_date = #2026-02-28#, emp_id = 'GONE'");
    Run(1);
    EXPECT_EQ(agency.Rows("select emp_id, emp_name from sch_day order by st_date"),
              (Lines{"GONE|", "GONE|", "GONE|", "GONE|"}))
        << "one who is in no list is not taken off";
    EXPECT_EQ(Removed(), Lines());
}

TEST_F(Creation, NonVisitTimeTakesTheCaregiverOffUnlessSheIsWilling) {
    for (const int day : {9, 16}) {
        agency.Insert("sch_day", {{"emp_id", "E1"},
                                  {"st_date", Day(3, day)},
                                  {"Day", "MON"},
                                  {"assign_seq", -1},
                                  {"St_time", Date::FromTime(12, 0)},
                                  {"END_TIME", Date::FromTime(14, 0)}});
    }
    agency.Insert("Emp_willwork", {{"emp_id", "E1"},
                                   {"st_date", Day(3, 16)},
                                   {"St_time", Date::FromTime(8, 0)},
                                   {"END_TIME", Date::FromTime(17, 0)}});
    Assign({{"emp_id", "E1"}});
    Run(1);
    EXPECT_EQ(agency.Rows("select emp_id, emp_name from sch_day where assign_seq > 0 order by st_date"),
              (Lines{"E1|Ames, Al", "|", "E1|Ames, Al", "E1|Ames, Al"}));
    EXPECT_EQ(Removed(), Lines{"Removed Caregiver|Non-Visit Schedule|Ames, Al|Grant, Ida|09:00"});
    const std::string report = PlainText(RemovedVisitsReport(removed_, Day(3, 4)));
    EXPECT_EQ(report,
              "Mar/04/2026\nRemoved Caregivers from the following Schedules\n"
              " | Reason | Caregiver Name | Client Name | Date | Time\n"
              "Removed Caregiver | Non-Visit Schedule | Ames, Al | Grant, Ida | 03/09/2026 | 09:00\n");
}

TEST_F(Creation, OneBadValueDoesNotStopTheOthers) {
    agency.Work().Execute("delete from clientpr");
    agency.Work().Execute("delete from authorizations");
    Assign({{"emp_id", "O'H"}, {"visit_type", "O'B"}, {"CLIENT", "1'2"}, {"St_time", Value()}});
    EXPECT_EQ(Run(1).size(), 4U);
    EXPECT_EQ(agency.Rows("select distinct CLIENT, sch_type, Manager, visit_desc from sch_day"),
              Lines{"1'2|R||<Null>"});
}

TEST_F(Creation, AnotherSeatsLockOnTheAssignmentDoublesNothing) {
    Assign();
    Workspace otherSeat;
    const DatabasePtr database = otherSeat.OpenDatabase(agency.Place("kestrava"));
    Recordset held = database->OpenRecordset("select * from assign");
    held.Edit();
    EXPECT_EQ(Run(1), On({Day(3, 2)})) << "its week, over and over";
    held.Close();
    EXPECT_EQ(Run(1), On({Day(3, 2), Day(3, 9), Day(3, 16), Day(3, 23)}));
}

/// A further seat on the agency's databases.
struct Seat {
    explicit Seat(const test::TestAgency& agency)
        : settings(agency.Folder().parent_path() / "settings.ini"), session(settings, ports.Handles()) {
        ReadLogin(session);
        OpenSessionData(session);
        session.WKENDING = "Saturday";
    }
    test::ScriptedPorts ports;
    SettingsStore settings;
    Session session;
};

TEST_F(Creation, SeatsAtOnceDoubleNothing) {
    constexpr int kAssignments = 8;
    constexpr int kSeats = 4;
    std::vector<long> all;
    for (int i = 0; i < kAssignments; ++i) {
        all.push_back(Assign({{"St_time", Date::FromTime(8 + i, 0)}}));
    }
    const auto runSeats = [&] {
        std::vector<std::unique_ptr<Seat>> seats;
        std::vector<std::thread> running;
        for (int i = 0; i < kSeats; ++i) {
            seats.push_back(std::make_unique<Seat>(agency));
        }
        for (const auto& seat : seats) {
            running.emplace_back([&] { ScheduleCreation(seat->session).RunAll(all); });
        }
        for (std::thread& thread : running) {
            thread.join();
        }
        return Days().size();
    };
    {
        // With the assignments on somebody's screen none of them gets the rows, and each makes one week.
        Workspace clerk;
        const DatabasePtr database = clerk.OpenDatabase(agency.Place("kestrava"));
        std::vector<Recordset> held;
        for (const long assignment : all) {
            held.push_back(
                database->OpenRecordset(Sql("select * from assign where sequence = {}", assignment)));
            held.back().Edit();
        }
        EXPECT_EQ(runSeats(), kAssignments);
    }
    constexpr int kWeeks = 4;
    EXPECT_EQ(runSeats(), kAssignments * kWeeks);
}

// An agency in which facts are shared by some assignments, missing for others, and refused by the store.
TEST_F(Creation, AStrokeMakesWhatItsAssignmentsMakeOneByOne) {
    agency.Client("c2", "Hale", "Una", {{"MANAGER", "M2"}, {"HOL_COV", "NO"}, {"grouping", "South"}});
    agency.Insert("Employee", {{"emp_id", "E2"}, {"LastName", "Bly"}, {"FirstName", "Bo"}, {"t_code", "T"}});
    agency.Insert("Employee", {{"emp_id", " E3"}, {"LastName", "Cox"}, {"FirstName", "Cy"}, {"t_code", "A"}});
    agency.Insert("Holidays", {{"date", Day(3, 9)}, {"Description", "Founders"}});
    const std::int64_t other =
        agency.Insert("Authorizations", {{"CLIENT", "c2"}, {"status_code", "A"}, {"sch_type", "P"}});
    const auto nonVisit = [&](const char* caregiver, Date day) {
        agency.Insert("sch_day", {{"emp_id", caregiver},
                                  {"st_date", day},
                                  {"Day", "MON"},
                                  {"assign_seq", -1},
                                  {"St_time", Date::FromTime(12, 0)},
                                  {"END_TIME", Date::FromTime(14, 0)}});
    };
    nonVisit("e1", Day(3, 16));
    nonVisit("E3", Day(3, 23));
    nonVisit("E1", Day(2, 2));
    for (const char* client : {"00001", "C2"}) {
        agency.Insert("sch_day", {{"CLIENT", client},
                                  {"st_date", Day(3, 23)},
                                  {"St_time", Date::FromTime(9, 0)},
                                  {"visit_type", "PCA"}});
    }
    const Cells assignments[] = {
        {{"emp_id", "E1"}},
        {{"emp_id", "E1"}, {"St_time", Date::FromTime(13, 30)}, {"billto", 1}},
        {{"emp_id", "e1"}, {"CLIENT", "C2"}, {"author_seq", other}},
        {{"emp_id", "E2"}, {"CLIENT", "c2"}, {"author_seq", other}, {"St_time", Date::FromTime(18, 0)}},
        {{"emp_id", " E3"}, {"visit_type", "pca"}, {"Day", "TUE"}},
        {{"emp_id", " E3"}, {"St_time", Date::FromTime(11, 0)}},
        {{"emp_id", "O'H"}, {"CLIENT", "C2"}, {"Day", "THU"}},
        {{"emp_id", "E1"}, {"CLIENT", "1'2"}, {"visit_type", "O'B"}, {"author_seq", other}},
        {{"emp_id", "GONE"}, {"CLIENT", "GONE"}, {"billto", 99}, {"author_seq", Value()}},
        {{"CLIENT", "C2"}, {"author_seq", 99}, {"billto", 1}, {"visit_type", Value()}},
        // Neglected, so its weeks begin before those of the others; a few, and very many.
        {{"emp_id", "E1"}, {"Last_date", Day(1, 24)}, {"St_time", Date::FromTime(10, 0)}},
        {{"emp_id", "E1"}, {"CLIENT", "c2"}, {"Last_date", Day(9, 27, 2025)}, {"st_date", Day(9, 1, 2025)}},
        // Its visits have no client: time that the caregiver has for none of those behind it.
        {{"emp_id", "E1"}, {"CLIENT", Value()}, {"St_time", Date::FromTime(6, 0)}},
        {{"emp_id", "E1"}, {"CLIENT", "c2"}, {"St_time", Date::FromTime(7, 0)}},
        {{"Last_date", Value()}},
        {{"author_status", "C"}, {"CLIENT", "c2"}},
    };
    std::vector<long> all;
    for (const Cells& cells : assignments) {
        all.push_back(Assign(cells));
    }
    const auto made = [&](const std::function<void()>& run) {
        agency.Work().Execute("delete from sch_day where assign_seq > 0");
        for (std::size_t i = 0; i < all.size(); ++i) {
            Cells cells = {{"Last_date", Day(2, 28)}};
            cells.insert(cells.end(), assignments[i].begin(), assignments[i].end());
            for (const auto& [column, value] : cells) {
                if (column == "Last_date") {
                    Recordset row =
                        agency.Work().OpenRecordset(Sql("select * from assign where sequence = {}", all[i]));
                    row.Edit();
                    row.Set(column, value);
                    row.Update();
                }
            }
        }
        removed_.clear();
        run();
        Lines lines = agency.Rows(
            "select assign_seq,st_date,CLIENT,emp_id,emp_name,emp_group,sch_type,Manager,visit_desc,"
            "disaster_code,cli_group,BILL_TRAVEL,bill_errand,BILL_EXPENSE,PAY_TRAVEL,St_time from sch_day "
            "where assign_seq > 0 order by assign_seq,st_date");
        const Lines removed = Removed();
        lines.insert(lines.end(), removed.begin(), removed.end());
        const Lines rows = agency.Rows("select sequence,howoften,Last_date from assign order by sequence");
        lines.insert(lines.end(), rows.begin(), rows.end());
        return lines;
    };
    const Lines oneByOne = made([&] {
        for (const long assignment : all) {
            Create_schedule_now(session, assignment, removed_);
        }
    });
    const Lines together = made([&] {
        ScheduleCreation creation(session);
        EXPECT_TRUE(creation.RunAll(all));
        removed_ = creation.Removed();
    });
    EXPECT_EQ(together, oneByOne);
    EXPECT_GT(together.size(), 80U);
    EXPECT_EQ(agency.Rows("select count(*) from sch_day where assign_seq = 14 and emp_id = ''"), Lines{"3"})
        << "the visits without a client took her";
    EXPECT_EQ(agency.Rows("select emp_name from sch_day where assign_seq = 6 order by st_date"),
              (Lines{"Cox, Cy", "Cox, Cy", "Cox, Cy", ""}))
        << "her Non-Visit time is found without the blank";

    // The same one again, held by another seat so that its weeks come again, sees what it made.
    agency.Work().Execute("delete from sch_day");
    agency.Work().Execute("update assign set last_date = #2026-02-28#");
    Workspace otherSeat;
    const DatabasePtr database = otherSeat.OpenDatabase(agency.Place("kestrava"));
    Recordset held = database->OpenRecordset("select * from assign");
    held.Edit();
    ScheduleCreation creation(session);
    creation.RunAll({1, 2});
    creation.RunAll({1});
    EXPECT_EQ(agency.Rows("select st_date from sch_day where assign_seq = 1"), On({Day(3, 2)}));
}

TEST_F(Creation, ManyAreRunInTurnUntilTheOperatorBreaksOff) {
    std::vector<long> all;
    for (int i = 0; i < 120; ++i) {
        all.push_back(Assign({{"St_time", Date::FromTime(i / 6, 10 * (i % 6))}}));
    }
    EXPECT_EQ(AllAssignments(session), all);
    EXPECT_EQ(AssignmentsOf(session, static_cast<long>(author_)), all);
    EXPECT_EQ(AssignmentsOf(session, 99), std::vector<long>());
    agency.ports.progress.breakOffAt = 1;
    ScheduleCreation creation(session);
    EXPECT_FALSE(creation.RunAll(all));
    EXPECT_LT(creation.Created(), 480);
    agency.ports.progress.breakOffAt = 0;
    EXPECT_TRUE(creation.RunAll(all));
    EXPECT_EQ(creation.Created(), 480);
    EXPECT_EQ(Days().size(), 480U);
    EXPECT_EQ(agency.ports.progress.open, 0);
}

/// After so many batches the table of the assignments is gone, as when the server goes down.
class LostTable : public test::RecordingProgress {
  public:
    explicit LostTable(test::TestAgency& agency) : agency_(agency) {}
    bool Yield() override {
        agency_.Work().Execute("drop table assign");
        return true;
    }

  private:
    test::TestAgency& agency_;
};

TEST_F(Creation, ARunThatStopsTellsWhatItHasStored) {
    agency.Work().Execute("update Employee set t_code = 'T', t_date = #2026-03-12#");
    std::vector<long> all;
    for (int i = 0; i < 70; ++i) {
        all.push_back(Assign({{"St_time", Date::FromTime(i / 6, 10 * (i % 6))}, {"emp_id", "E1"}}));
    }
    LostTable lost(agency);
    test::ScriptedPorts ports;
    SettingsStore settings(agency.Folder().parent_path() / "settings.ini");
    Session seat(settings, {ports.clock, ports.dialogs, lost});
    ReadLogin(seat);
    OpenSessionData(seat);
    seat.WKENDING = "Saturday";
    ScheduleCreation creation(seat);
    EXPECT_THROW(creation.RunAll(all), EngineError);
    const auto stored = static_cast<long>(Days().size());
    EXPECT_GT(stored, 0);
    EXPECT_EQ(creation.Created(), stored);
    EXPECT_LT(creation.Finished(), 70);
    constexpr long kWeeks = 4;
    EXPECT_EQ(creation.Finished() * kWeeks, stored);
    EXPECT_EQ(static_cast<long>(creation.Removed().size()), creation.Finished() * 2)
        << "the caregiver has left before the last two weeks";
    EXPECT_EQ(lost.open, 0);
}

}  // namespace
}  // namespace kv
