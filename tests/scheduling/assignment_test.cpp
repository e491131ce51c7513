// Assignments: their times, the checks of a caregiver, what a save writes and a delete leaves.
#include <gtest/gtest.h>

#include "scheduling/assignments.h"
#include "scheduling/authorization_tasks.h"
#include "scheduling/pattern_gap.h"
#include "scheduling/schedule_creation.h"
#include "support/test_agency.h"

namespace kv {
namespace {

using test::Cells;
using Lines = std::vector<std::string>;

Date Day(int month, int day, int year = 2026) {
    return Date::FromCivil(year, month, day);
}
Date At(int hour, int minute = 0) {
    return Date::FromTime(hour, minute);
}

/// The clock stands at Wednesday, 2026-03-04; weeks end on Saturday and the horizon is 2 weeks: Mar 18.
class Assignments : public ::testing::Test {
  protected:
    Assignments() {
        session.WKENDING = "SAT";
        agency.Code().Execute("update Agency set sch_weeks = 2");
        agency.Client("00001", "Grant", "Ida");
        for (const char* id : {"E1", "E2"}) {
            agency.Insert("Employee", {{"emp_id", id},
                                       {"LastName", id == std::string("E1") ? "Ames" : "Bell"},
                                       {"FirstName", "Al"},
                                       {"t_code", "A"},
                                       {"disp_level", 3},
                                       {"hrsper_week", 40}});
        }
        agency.Insert("Visit_types", {{"code", "PCA"}, {"Description", "Personal Care"}, {"ord_Discpl", ""}});
        author_ = static_cast<long>(agency.Insert("Authorizations", {{"CLIENT", "00001"},
                                                                     {"status_code", "A"},
                                                                     {"visit_type", "PCA"},
                                                                     {"vis_desc", "Personal Care"},
                                                                     {"bill_code", 7},
                                                                     {"from_date", Day(3, 1)},
                                                                     {"to_DATE", Day(12, 31)}}));
        asks_.showConflicts = [this](const std::vector<AssignmentConflict>& found) {
            conflicts_ = found;
            return goesOn_;
        };
        asks_.askMove = [this](int forward, int back) {
            asked_ = {forward, back};
            return move_;
        };
        asks_.updateSchedules = [this](const ScheduleUpdate& update) { updates_.push_back(update); };
        entry_.days[1] = true;
        entry_.start = At(9);
        entry_.hours = 4;
        entry_.creation = Day(3, 4);
    }

    AssignmentParent Parent() { return ParentOf(session, author_).value(); }
    Recordset Rows() { return OpenAssignments(session, author_); }
    AssignmentSaved SaveNew() {
        Recordset rows = Rows();
        rows.AddNew();
        return SaveAssignment(session, rows, entry_, Parent(), asks_);
    }
    AssignmentSaved Edit(long sequence) {
        Recordset rows = Rows();
        rows.FindFirst(Sql("sequence = {}", sequence));
        rows.Edit();
        return SaveAssignment(session, rows, entry_, Parent(), asks_);
    }
    /// Another assignment of the caregiver E1.
    void Other(const char* day, Date start, double hours, const Cells& more = {}) {
        Cells cells = {{"emp_id", "E1"}, {"Type", "A"},          {"Client_Status", "A"},
                       {"Day", day},     {"St_time", start},     {"HRS", hours},
                       {"howoften", 1},  {"st_date", Day(1, 1)}, {"END_DATE", Day(12, 31)}};
        cells.insert(cells.end(), {{"cli_name", "Hill, Hal"}});
        cells.insert(cells.end(), more.begin(), more.end());
        agency.Insert("assign", cells);
    }
    Lines Visits(const char* columns = "st_date, HRS, emp_id, assign_seq") {
        Lines lines =
            agency.Rows(std::string("select ") + columns + " from sch_day order by st_date, St_time");
        for (std::string& line : lines) {
            for (std::size_t at; (at = line.find(" 00:00:00")) != std::string::npos;) {
                line.erase(at, 9);
            }
        }
        return lines;
    }

    test::TestAgency agency;
    Session& session = agency.session();
    long author_ = 0;
    AssignmentEntry entry_;
    AssignmentAsks asks_;
    std::vector<AssignmentConflict> conflicts_;
    bool goesOn_ = true;
    std::pair<int, int> asked_;
    std::optional<int> move_ = 0;
    std::vector<ScheduleUpdate> updates_;
};

TEST_F(Assignments, TimesAndDates) {
    EXPECT_TRUE(IsQuarterHour(At(8, 15)));
    EXPECT_FALSE(IsQuarterHour(At(8, 10)));
    EXPECT_EQ(EndOfVisit(At(22), 3.5), At(1, 30));
    EXPECT_EQ(HoursOfVisit(At(23), At(1)), 2) << "behind midnight";
    EXPECT_EQ(HoursOfVisit(At(9), At(10, 45)), 1.75);
    const Date today = session.clock.Today();
    EXPECT_EQ(FirstCreationDate(Day(2, 25), today), Day(2, 25)) << "a week ago is not too old";
    EXPECT_EQ(FirstCreationDate(Day(2, 24), today), today);
    struct Case {
        int weeksBack = 0;
        Date to;
        bool stays = false;
    };
    for (const Case& each : {Case{26, Day(12, 31), true}, Case{27, Day(12, 31), false},
                             Case{6, Day(3, 4), true}, Case{7, Day(3, 4), false}}) {
        const Date date = today.AddDays(-7.0 * each.weeksBack);
        EXPECT_EQ(LimitCreationDate(date, today, each.to), each.stays ? date : today.AddDays(-7))
            << each.weeksBack;
    }
}

TEST_F(Assignments, ThreeDaysMakeThreeRowsEachWithItsVisits) {
    entry_.days[3] = entry_.days[5] = true;
    entry_.emp_id = "E1";
    const AssignmentSaved saved = SaveNew();
    ASSERT_TRUE(saved.saved);
    EXPECT_EQ(saved.sequences.size(), 3U);
    EXPECT_EQ(agency.Said(), Lines());
    EXPECT_EQ(
        agency.Rows("select CLIENT, cli_name, Day, Status, emp_id, emp_name, HRS, howoften, Type, "
                    "author_status, CLIENT_STATUS, visit_type, visit_desc, billto, author_seq from assign"),
        (Lines{"00001|Grant, Ida|MON|1|E1|Ames, Al|4|1|A|A|A|PCA|PCA-Grant, Id|7|1",
               "00001|Grant, Ida|WED|3|E1|Ames, Al|4|1|A|A|A|PCA|PCA-Grant, Id|7|1",
               "00001|Grant, Ida|FRI|5|E1|Ames, Al|4|1|A|A|A|PCA|PCA-Grant, Id|7|1"}));
    EXPECT_EQ(Visits("st_date, assign_seq"), (Lines{"2026-03-02|1", "2026-03-04|2", "2026-03-06|3",
                                                    "2026-03-09|1", "2026-03-11|2", "2026-03-13|3"}))
        << "the first week is that of the creation date, the last ends before the horizon";
    EXPECT_EQ(agency.Rows("select Last_date from assign where sequence = 1"), Lines{"2026-03-14 00:00:00"});
    EXPECT_EQ(
        agency.Rows("select Type, Area, Status, reason from changes").at(0),
        "ASN|1|Edit|When: Mar/04/26 09:30 AM    Who: ANN\r\nStart Time: 09:00 AM\r\n     Hours: 4.00\r\n"
        " Caregiver: E1 - Ames, Al\r\n How Often: 1\r\n      Date: Mar/04/2026\r\n       Day: "
        "MON\r\n-----\r\n");
    const auto tree = AssignmentTree(Rows());
    ASSERT_EQ(tree.size(), 3U);
    EXPECT_EQ(tree[1].day, 3);
    EXPECT_EQ(tree[1].text, "09:00 AM-01:00 PM   04.00 hrs  Ames, Al");
}

TEST_F(Assignments, FaultsAreToldTogetherAndNothingIsWritten) {
    entry_.days = {};
    entry_.hours = 0;
    entry_.howoften = 0;
    EXPECT_FALSE(SaveNew().saved);
    EXPECT_EQ(agency.Said(),
              (Lines{"fault: At least one day must be checked before you can save!",
                     "fault: Hours must be greater than 0 before you can save!",
                     "fault: Schedule frequency must be greater than 0 before you can save!"}));
    Recordset rows = Rows();
    EXPECT_FALSE(SaveAssignment(session, rows, entry_, Parent(), asks_).saved);
    EXPECT_EQ(agency.Said().front(), "fault: You must add a record before you can save!");
    EXPECT_EQ(agency.Rows("select sequence from assign"), Lines());
}

TEST_F(Assignments, ACaregiverIsCheckedInOrder) {
    const auto check = [&](const char* id, Date creation = Day(3, 4)) {
        return CheckCaregiver(session, id, Parent(), creation);
    };
    EXPECT_FALSE(check("E9").accepted);
    EXPECT_EQ(agency.Said(), Lines{"message: Caregiver was not found"});

    agency.Insert("sch_day", {{"emp_id", "E1"},
                              {"st_date", Day(3, 2)},
                              {"HRS", 30},
                              {"sch_type", "R"},
                              {"CLIENT", "00001"},
                              {"St_time", At(0)}});
    const CaregiverCheck good = check("E1");
    EXPECT_TRUE(good.accepted);
    EXPECT_EQ(good.name, "Ames, Al");
    EXPECT_EQ(good.hours, "Hrs current wk 30.00 Left: 10.00");
    EXPECT_EQ(agency.Said(), Lines());

    // The discipline: unknown, too low without and with the right to assign all the same.
    agency.Code().Execute("update Visit_types set ord_Discpl = 'RN'");
    EXPECT_EQ(check("E1").discipline, "Could not verify Discipline Level.");
    EXPECT_TRUE(check("E1").accepted);
    agency.Insert("main.DISCIPLINE", {{"code", "RN"}, {"description", "Nurse"}, {"Value", 5}});
    EXPECT_TRUE(check("E1").accepted) << "ANN has all rights";
    EXPECT_EQ(check("E1").discipline, "Discipline Level too low.");
    agency.Insert("Screens", {{"Screen", "DISO"}, {"access_code", "7"}});
    session.Screens = "Q";
    EXPECT_FALSE(check("E1").accepted);
    EXPECT_EQ(agency.Said(), Lines()) << "Label2 tells it";
    session.Screens = "*";
    agency.Code().Execute("update Visit_types set ord_Discpl = ''");

    agency.Insert("emp_ban", {{"emp_id", "E1"}, {"client", "00001"}});
    EXPECT_FALSE(check("E1").accepted);
    EXPECT_EQ(agency.Said(), Lines{"message: This caregiver should not visit this client."});

    agency.Insert("skills", {{"code", "OX"}, {"Description", "Oxygen"}, {"critical", 1}});
    agency.Insert("skills", {{"code", "CO"}, {"Description", "Cooking"}});
    for (const char* skill : {"OX", "CO"}) {
        agency.Insert("cli_misc", {{"CLIENT", "00001"}, {"Area", "SKI"}, {"ID", skill}});
    }
    EXPECT_FALSE(check("E2").accepted);
    EXPECT_EQ(
        agency.Said(),
        (Lines{"fault: Missing Critical Skills for Caregiver: Bell, Al E2", "fault: ", "fault: OX", "fault: ",
               "fault: This caregiver is missing Critical Skills.  Clearing out the Cargiver ID field"}));
    agency.Insert("emp_misc", {{"emp", "E2"}, {"area", "SKI"}, {"ID", "OX"}});
    EXPECT_TRUE(check("E2").accepted);

    agency.Work().Execute("update employee set t_code = 'I', t_date = #2026-03-10# where emp_id = 'E2'");
    EXPECT_TRUE(check("E2", Day(3, 9)).accepted);
    EXPECT_FALSE(check("E2", Day(3, 10)).accepted);
    EXPECT_EQ(agency.Said(), Lines{"message: This Caregiver is not Active as of: Mar/10/2026.  Please select "
                                   "another one."});
}

TEST_F(Assignments, WhatACaregiverMayRunIntoIsShownAndSavedAllTheSame) {
    entry_.emp_id = "E1";
    entry_.start = At(22);
    Other("MON", At(12), 4, {{"Type", "N"}, {"cli_name", ""}});  // not at that time
    Other("MON", At(21), 2, {{"Type", "N"}, {"cli_name", ""}});  // not available
    Other("TUE", At(1), 2);                                      // behind midnight
    Other("SUN", At(20), 24);                                    // from the day before
    Other("MON", At(23), 1, {{"END_DATE", Day(2, 27)}});         // ended before
    Other("MON", At(23), 1, {{"Client_Status", "C"}});           // the client is closed
    Other("MON", At(23), 1, {{"emp_id", "E2"}});                 // somebody else
    Other("WED", At(22), 1);                                     // another day
    ASSERT_TRUE(SaveNew().saved);
    Lines found;
    for (const AssignmentConflict& conflict : conflicts_) {
        found.push_back(conflict.with + "|" + conflict.day);
    }
    EXPECT_EQ(found, (Lines{"Not Available|MON", "Hill, Hal|TUE A"})) << "what ends as this begins is none";
    EXPECT_EQ(agency.Rows("select sequence from assign where client = '00001'").size(), 1U);
}

TEST_F(Assignments, AnEditMovesTheNextCreationWithTheDay) {
    entry_.emp_id = "E1";
    ASSERT_TRUE(SaveNew().saved);
    const auto lastDate = [&] { return agency.Rows("select Last_date from assign").at(0).substr(0, 10); };
    // No day moved: the screen's date less the interval.
    entry_.creation = Day(3, 21);
    entry_.howoften = 2;
    agency.ports.dialogs.Answer({false});
    ASSERT_TRUE(Edit(1).saved);
    EXPECT_EQ(agency.Said(), Lines{"question: Change all exisiting schedules from today forward?"});
    EXPECT_EQ(lastDate(), "2026-03-07");
    EXPECT_TRUE(updates_.empty());
    EXPECT_EQ(asked_, std::pair(0, 0));

    // From Monday to Wednesday: two forward or five back; back keeps the week.
    entry_.days = {};
    entry_.days[3] = true;
    move_ = -5;
    agency.ports.dialogs.Answer({true});
    const AssignmentSaved saved = Edit(1);
    EXPECT_EQ(asked_, std::pair(2, 5));
    EXPECT_EQ(lastDate(), "2026-02-28");
    ASSERT_EQ(updates_.size(), 1U);
    EXPECT_EQ(updates_[0].dayDifference, -5);
    EXPECT_EQ(updates_[0].day, "WED");
    EXPECT_EQ(updates_[0].end, At(13));
    EXPECT_FALSE(saved.conflicts) << "no two visits touch";
    EXPECT_EQ(agency.Rows("select Area from changes"), Lines{"1"}) << "one row holds the history";

    // Two visits of hers on one day, the second within the first.
    agency.Insert("sch_day", {{"emp_id", "E1"}, {"st_date", Day(3, 9)}, {"St_time", At(12, 45)}, {"HRS", 1}});
    agency.ports.dialogs.Answer({true});
    const AssignmentSaved again = Edit(1);
    ASSERT_TRUE(again.conflicts);
    EXPECT_EQ(PlainText(*again.conflicts),
              "Date: Mar/04/2026\nSchedule Change Conflict for Caregiver: Ames, Al\nTime: 09:30 AM\n"
              "Schedule: Mar/09/2026 09:00 AM 4.00  conflicts with: Mar/09/2026 12:45 PM 1.00\n");
}

TEST_F(Assignments, ADeleteKeepsWhatWasWorkedOrChangedByHand) {
    SaveNew();
    const auto visit = [&](int day, const Cells& more) {
        Cells cells = {{"assign_seq", 1}, {"st_date", Day(3, day)}, {"HRS", 2}};
        cells.insert(cells.end(), more.begin(), more.end());
        agency.Insert("sch_day", cells);
    };
    visit(5, {{"act_hrs", 2}});
    visit(6, {{"pay_override", 1}});
    visit(7, {{"bill_override", 1}});
    visit(8, {});
    agency.Said();
    Recordset rows = Rows();
    agency.ports.dialogs.Answer({false});
    EXPECT_FALSE(DeleteAssignment(session, rows, Parent()));
    agency.ports.dialogs.Answer({true, true});
    EXPECT_TRUE(DeleteAssignment(session, rows, Parent()));
    EXPECT_EQ(agency.Rows("select sequence from assign"), Lines());
    EXPECT_EQ(Visits("st_date, assign_seq"),
              (Lines{"2026-03-02|-1", "2026-03-05|-1", "2026-03-06|-1", "2026-03-07|-1"}))
        << "the past, the worked and the adjusted";
    EXPECT_EQ(agency.Rows("select Status, reason from changes").at(0).substr(0, 122),
              "DELETED|When: Mar/04/26 09:30 AM    Who: ANN\r\nAssignment was Deleted for Client: Grant, "
              "Ida\r\nSchedules removed: 2\r\n-----\r\n");
    agency.Said();
    EXPECT_FALSE(DeleteAssignment(session, rows, Parent()));
    EXPECT_EQ(agency.Said(), Lines{"message: There are no records to delete."});
}

TEST_F(Assignments, ACopyRestartsAnOldPatternNearToday) {
    const long old = static_cast<long>(agency.Insert("Authorizations", {{"CLIENT", "00001"}}));
    const auto source = [&](const char* day, Date last) {
        agency.Insert("assign", {{"author_seq", old},
                                 {"CLIENT", "00001"},
                                 {"cli_name", "Grant, Ida"},
                                 {"Day", day},
                                 {"HRS", 3},
                                 {"St_time", At(10)},
                                 {"END_TIME", At(13)},
                                 {"howoften", 1},
                                 {"Type", "A"},
                                 {"Last_date", last},
                                 {"NUMWEEKS", 9},
                                 {"EMP1SSN", "1"}});
    };
    source("MON", Day(2, 18));  // two weeks
    source("TUE", Day(2, 4));   // four weeks
    std::vector<RemovedVisit> removed;
    agency.Work().Execute("update Authorizations set from_date = #2026-02-24# where sequence = 1");
    ASSERT_EQ(CopySources(session, Parent()).size(), 1U);
    EXPECT_TRUE(CopyAssignments(session, old, Parent(), removed));
    EXPECT_EQ(
        agency.Rows(Sql("select Day, st_date, END_DATE, billto, author_status, NUMWEEKS, EMP1SSN from assign "
                        "where author_seq = {} order by sequence",
                        author_)),
        (Lines{"MON|2026-02-24 00:00:00|2026-12-31 00:00:00|7|A|9|1",
               "TUE|2026-02-24 00:00:00|2026-12-31 00:00:00|7|A|9|1"}));
    EXPECT_EQ(Visits("st_date"), (Lines{"2026-02-24", "2026-03-02", "2026-03-03"}));
    EXPECT_EQ(agency.Said(), Lines());

    // A pattern whose next week ends before the authorization begins would never start by itself.
    agency.Work().Execute("update Authorizations set from_date = #2026-03-02# where sequence = 1");
    agency.Work().Execute(Sql("delete from assign where author_seq = {}", author_));
    EXPECT_TRUE(CopyAssignments(session, old, Parent(), removed));
    EXPECT_EQ(
        agency.Said(),
        Lines{
            "message: 2 assignments of this authorization make no schedules: the week of their Next Schedule "
            "Creation Date ends before it begins.  Please set that date to the From date."});
    agency.Work().Execute(Sql("delete from assign where author_seq = {}", old));
    EXPECT_FALSE(CopyAssignments(session, old, Parent(), removed));
    EXPECT_EQ(agency.Said(), Lines{"message: No Assignments entered for the chosen Authorization"});
}

/// The pattern of an authorization that ends on Tuesday, Mar 10; the new one begins on another day.
class Renewal : public Assignments {
  protected:
    Renewal() {
        agency.Code().Execute("update Agency set sch_weeks = 4");
        old_ = static_cast<long>(
            agency.Insert("Authorizations", {{"CLIENT", "00001"}, {"to_DATE", Day(3, 10)}}));
    }
    void Begins(Date from) {
        agency.Work().Execute(Sql("update Authorizations set from_date = {} where sequence = 1", from));
    }
    void Source(const char* day, Date last, const Cells& more = {}) {
        Cells cells = {
            {"author_seq", old_}, {"CLIENT", "00001"},     {"cli_name", "Grant, Ida"}, {"Day", day},
            {"HRS", 3},           {"St_time", At(10)},     {"END_TIME", At(13)},       {"howoften", 1},
            {"Type", "A"},        {"visit_type", "PCA"},   {"Last_date", last},        {"st_date", Day(1, 1)},
            {"emp_id", "E1"},     {"END_DATE", Day(3, 10)}};
        cells.insert(cells.end(), more.begin(), more.end());
        agency.Insert("assign", cells);
    }
    /// The days of the new authorization's visits after a copy, with the one answer.
    Lines Copy(std::vector<bool> answer) {
        agency.Said();
        agency.ports.dialogs.Answer(std::move(answer));
        EXPECT_TRUE(CopyPattern(session, old_, Parent(), removed_));
        return NewDays();
    }
    Lines NewDays() {
        Lines days;
        for (const std::string& day : agency.Rows(Sql(
                 "select st_date from sch_day where author_seq = {} order by st_date,sequence", author_))) {
            days.push_back(day.substr(5, 5));
        }
        return days;
    }

    long old_ = 0;
    std::vector<RemovedVisit> removed_;
};

TEST_F(Renewal, TheWeeksThatTheOldPatternHadDoneAreOffered) {
    Begins(Day(3, 11));
    Source("MON", Day(3, 14));
    Source("THU", Day(3, 14));
    Source("FRI", Day(3, 21));
    EXPECT_EQ(Copy({false}), (Lines{"03-16", "03-19", "03-23", "03-26", "03-27"}))
        << "as the rules have it, from the week after Last_date on";
    EXPECT_EQ(agency.Said(),
              Lines{"question: The copied assignments leave 3 days without visits: Thu Mar/12/2026, Fri "
                    "Mar/13/2026, Fri Mar/20/2026.\r\nWould you like to create the visits from today on?"});
    agency.Work().Execute(Sql("delete from assign where author_seq = {}", author_));
    agency.Work().Execute("delete from sch_day");
    const Lines all = {"03-12", "03-13", "03-16", "03-19", "03-20", "03-23", "03-26", "03-27"};
    EXPECT_EQ(Copy({true}), all);
    EXPECT_EQ(agency.Rows(Sql("select Last_date from assign where author_seq = {}", author_)),
              Lines(3, "2026-03-28 00:00:00"));
    EXPECT_EQ(agency.Rows("select distinct emp_id, author_seq from sch_day"), Lines{"E1|1"});
    // What was made is no gap, and nothing is made twice.
    EXPECT_TRUE(FindPatternGaps(session, AssignmentsOf(session, author_), Day(1, 1)).empty());
    ScheduleCreation(session).RunAll(AllAssignments(session));
    EXPECT_EQ(NewDays(), all);
}

TEST_F(Renewal, WhatNeedsNoVisitIsNoGap) {
    struct Case {
        const char* what;
        std::vector<Cells> visits;
        Cells source;
        const char* gap;  ///< from Mar 11 on, Thursdays; Last_date is Mar 28
        bool holiday = false;
    };
    const auto visit = [](Date day, const Cells& more = {}) {
        Cells cells = {{"CLIENT", "00001"}, {"st_date", day}, {"St_time", At(10)}, {"visit_type", "PCA"}};
        cells.insert(cells.end(), more.begin(), more.end());
        return cells;
    };
    for (const Case& each : {
             Case{"all", {}, {}, "12 19 26 "},
             Case{"every second week", {}, {{"howoften", 2}}, "12 26 "},
             Case{"no interval", {}, {{"howoften", 0}}, "12 19 26 "},
             Case{"by hand", {visit(Day(3, 19), {{"assign_seq", 0}})}, {}, "12 26 "},
             Case{"by hand, at another time",
                  {visit(Day(3, 19), {{"assign_seq", 0}, {"St_time", At(10, 16)}})},
                  {},
                  "12 19 26 "},
             // Further back a second visit would be made beside the old authorization's.
             Case{"the old authorization's", {visit(Day(3, 19), {{"assign_seq", 77}})}, {}, "26 "},
             Case{"cancelled",
                  {visit(Day(3, 19), {{"assign_seq", 77}, {"Cancelled", true}})},
                  {},
                  "12 19 26 "},
             Case{"another call",
                  {visit(Day(3, 19), {{"assign_seq", 77}, {"visit_type", "RN"}})},
                  {},
                  "12 19 26 "},
             Case{"holiday", {}, {}, "12 26 ", true},
             Case{"unavailability", {}, {{"Type", "N"}}, ""},
             Case{"without hours", {}, {{"HRS", 0}}, ""},
             Case{"damaged day", {}, {{"Day", "XXX"}}, ""},
             Case{"without a date", {}, {{"Last_date", Value()}}, ""},
         }) {
        agency.Work().Execute("delete from assign");
        agency.Work().Execute("delete from sch_day");
        agency.Code().Execute("delete from Holidays");
        agency.Work().Execute(Sql("update ClientPR set HOL_COV = {}", each.holiday ? "NO" : "YES"));
        agency.Insert("Holidays", {{"date", Day(3, 19)}, {"Description", "Founders"}});
        for (const Cells& row : each.visits) {
            agency.Insert("sch_day", row);
        }
        Cells source = {{"author_status", "A"}, {"st_date", Day(3, 11)}, {"END_DATE", Day(12, 31)}};
        source.insert(source.end(), each.source.begin(), each.source.end());
        Source("THU", Day(3, 28), source);
        std::string found;
        for (const PatternGap& gap : FindPatternGaps(session, AllAssignments(session), Day(3, 1))) {
            for (const Date day : gap.days) {
                found += std::to_string(day.Civil().day) + ' ';
            }
        }
        EXPECT_EQ(found, each.gap) << each.what;
    }
}

TEST_F(Renewal, WhatLiesBeforeTodayOrBetweenTheTwoIsTold) {
    // Late: the new one began on Feb 23. The days before today are told and not made.
    Begins(Day(2, 23));
    Source("TUE", Day(3, 7));
    Source("FRI", Day(3, 7));
    const Lines late = Copy({true});
    EXPECT_EQ(agency.Said(),
              Lines{"question: The copied assignments leave 1 day without visits: Fri Mar/06/2026.\r\nBefore "
                    "today they leave 3 days without visits: Tue Feb/24/2026, Fri Feb/27/2026, Tue "
                    "Mar/03/2026.\r\nWould you like to create the visits from today on?"});
    EXPECT_EQ(late.front(), "03-06");
    EXPECT_EQ(late[1], "03-10");

    // The new one begins after a hole, and nothing of the pattern is lost in it.
    agency.Work().Execute(Sql("delete from assign where author_seq = {}", author_));
    agency.Work().Execute("delete from sch_day");
    Begins(Day(3, 15));
    agency.Work().Execute("update assign set Last_date = #2026-03-14#");
    Copy({});
    EXPECT_EQ(agency.Said(),
              Lines{"message: From Wed Mar/11/2026 to Sat Mar/14/2026 neither of the two authorizations "
                    "holds, and no visits can be made."});
    // Nothing to tell, and nothing to copy.
    Begins(Day(3, 11));
    agency.Work().Execute(Sql("delete from assign where author_seq = {}", author_));
    agency.Work().Execute("update assign set Last_date = #2026-03-07#");
    Copy({});
    EXPECT_EQ(agency.Said(), Lines());
    EXPECT_FALSE(CopyPattern(session, 99, Parent(), removed_));
    EXPECT_EQ(agency.Said(), Lines{"message: No Assignments entered for the chosen Authorization"});
}

TEST_F(Renewal, AGapIsFilledAsAWhole) {
    Begins(Day(3, 11));
    agency.Work().Execute("update Employee set t_code = 'T', t_date = #2026-03-13# where emp_id = 'E1'");
    Source("MON", Day(3, 21));
    Source("THU", Day(3, 21));
    Copy({false});
    EXPECT_EQ(removed_.size(), 2U);
    const std::vector<PatternGap> gaps =
        FindPatternGaps(session, AssignmentsOf(session, author_), session.clock.Today());
    ASSERT_EQ(gaps.size(), 2U);
    const Lines before = NewDays();
    Workspace otherSeat;
    const DatabasePtr database = otherSeat.OpenDatabase(agency.Place("kestrava"));
    {
        Recordset held =
            database->OpenRecordset(Sql("select * from assign where sequence = {}", gaps[1].assignment));
        held.Edit();
        EXPECT_THROW(FillPatternGaps(session, gaps, removed_), EngineError);
        EXPECT_EQ(NewDays(), before);
        EXPECT_EQ(removed_.size(), 2U);
    }
    FillPatternGaps(session, gaps, removed_);
    EXPECT_EQ(NewDays(), (Lines{"03-12", "03-16", "03-19", "03-23", "03-26"}));
    EXPECT_EQ(removed_.size(), 4U) << "Mar 16 and 19 lose the caregiver, Mar 12 does not";
}

TEST_F(Assignments, ChangesAreCarriedToTheVisitsThatMayChange) {
    SaveNew();
    agency.Work().Execute("delete from sch_day");
    const auto visit = [&](Date day, const Cells& more = {}) {
        Cells cells = {{"assign_seq", 1},    {"CLIENT", "00001"}, {"Sch_code", "S"},
                       {"st_date", day},     {"HRS", 4},          {"St_time", At(9)},
                       {"END_TIME", At(13)}, {"emp_id", "E2"},    {"emp_name", "Bell, Al"}};
        cells.insert(cells.end(), more.begin(), more.end());
        return static_cast<long>(agency.Insert("sch_day", cells));
    };
    visit(Day(3, 9));
    visit(Day(3, 10));  // would fall on a Thursday
    visit(Day(3, 16), {{"act_hrs", 4}});
    visit(Day(3, 23), {{"Cancelled", true}});
    visit(Day(3, 23), {{"Sch_code", "X"}});
    visit(Day(3, 2));  // before today
    const long blocked = visit(Day(3, 30));
    agency.Insert("sch_day", {{"emp_id", "E1"},
                              {"CLIENT", ""},
                              {"st_date", Day(4, 1)},
                              {"Day", "WED"},
                              {"St_time", At(8)},
                              {"END_TIME", At(12)}});
    ScheduleUpdate update = {1, "WED", 2, "E1", At(10), At(12, 30), 2.5};
    Lines results;
    std::vector<ScheduleLine> lines = LoadScheduleLines(session, update, session.clock.Today(), results);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(results, Lines{"Schedule on Mar/12/2026 does not match the Assignment Day of the Week."});
    EXPECT_TRUE(lines[0].checked);
    EXPECT_FALSE(lines[1].checked);
    results.clear();
    lines[1].checked = true;  // the operator insists
    ProcessScheduleLines(session, update, lines, session.clock.Today(), results);
    EXPECT_EQ(
        results,
        (Lines{"Schedule on Mar/12/2026 does not match the Assignment Day of the Week.",
               "Caregiver:  Ames, Al has a Non-Visit Schedule Apr/01/2026",
               "Schedule changes completed. You may need to refresh your schedule screen to see changes."}));
    EXPECT_EQ(agency.Rows(Sql("select st_date, Day, emp_id, emp_name, HRS from sch_day where st_date = {}",
                              Day(3, 11).DayNumber())),
              Lines{"2026-03-11 00:00:00|WED|E1|Ames, Al|2.5"});
    EXPECT_EQ(agency.Rows(Sql("select st_date, emp_id, emp_name from sch_day where sequence = {}", blocked)),
              Lines{"2026-04-01 00:00:00||"});

    // Weeks end on Saturday: a visit that leaves its week carries the new one's end, others keep theirs.
    struct Moved {
        Date from;
        int days;
        const char* day;
        const char* weekEnd;
    };
    for (const Moved& each : {Moved{Day(5, 4), 2, "WED", "2026-05-01 00:00:00"},
                              Moved{Day(5, 4), -2, "SAT", "2026-05-02 00:00:00"},
                              Moved{Day(5, 4), -1, "SUN", "2026-05-01 00:00:00"},
                              Moved{Day(5, 8), 1, "SAT", "2026-05-01 00:00:00"},
                              Moved{Day(5, 8), 2, "SUN", "2026-05-16 00:00:00"},
                              Moved{Day(12, 31), 6, "WED", "2027-01-09 00:00:00"}}) {
        const long moved = visit(each.from, {{"WEEKEND", Day(5, 1)}});
        update = {1, each.day, each.days, "E1", At(10), At(12), 2};
        lines = LoadScheduleLines(session, update, each.from, results);
        ProcessScheduleLines(session, update, {lines.front()}, each.from, results);
        EXPECT_EQ(agency.Rows(Sql("select WEEKEND from sch_day where sequence = {}", moved)),
                  Lines{each.weekEnd})
            << each.day;
        agency.Work().Execute(Sql("delete * from sch_day where sequence = {}", moved));
    }

    // Without a caregiver the visits lose theirs; one who is in no list leaves them.
    for (const auto& [id, left] : {std::pair("E9", "E1"), std::pair("", "")}) {
        update = {1, "WED", 0, id, At(10), At(12), 2};
        lines = LoadScheduleLines(session, update, Day(3, 11), results);
        ProcessScheduleLines(session, update, {lines.front()}, Day(3, 11), results);
        EXPECT_EQ(agency.Rows(Sql("select emp_id from sch_day where st_date = {}", Day(3, 11).DayNumber())),
                  Lines{left});
    }
}

TEST_F(Assignments, TasksAreKeptByDay) {
    agency.Insert("main.tasks", {{"code", "BATH"}, {"Description", "Bath"}});
    agency.Insert("main.tasks", {{"code", "MEAL"}, {"Description", "Meal"}});
    session.OffLine = true;
    AddTasks(session, author_, {"Sunday", "Authorized", "Monday"}, {"BATH", "MEAL"});
    AddTasks(session, author_, {"Monday"}, {"BATH"});
    const auto tasks = [&] {
        Lines lines;
        for (const AuthorizationTask& task : LoadAuthorizationTasks(session, author_)) {
            lines.push_back(task.dow + "|" + task.task + "|" + task.description);
        }
        return lines;
    };
    EXPECT_EQ(tasks(), (Lines{"AUT|BATH|Bath", "AUT|MEAL|Meal", "MON|BATH|Bath", "MON|MEAL|Meal",
                              "SUN|BATH|Bath", "SUN|MEAL|Meal"}))
        << "the week begins on Monday, and nothing stands twice";
    agency.ports.dialogs.Input({std::string("Bath, with help"), std::nullopt});
    EXPECT_TRUE(EditTask(session, author_, {"MON", "BATH", "Bath"}));
    EXPECT_FALSE(EditTask(session, author_, {"MON", "MEAL", "Meal"}));
    agency.ports.dialogs.Answer({false, true});
    EXPECT_FALSE(RemoveTask(session, author_, {"SUN", "BATH", ""})) << "kept";
    EXPECT_TRUE(RemoveTask(session, author_, {"SUN", "BATH", ""}));
    EXPECT_FALSE(RemoveTask(session, author_, {"SUN", "BATH", ""}));
    EXPECT_EQ(tasks(), (Lines{"AUT|BATH|Bath", "AUT|MEAL|Meal", "MON|BATH|Bath, with help", "MON|MEAL|Meal",
                              "SUN|MEAL|Meal"}));
    EXPECT_EQ(agency.Rows("select Type, Module, ID from trans", "trans"), Lines{"E|A|1"});
}

}  // namespace
}  // namespace kv
