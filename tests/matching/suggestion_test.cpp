// The caregiver search: against its plain transcription, and case by case.
#include <functional>
#include <random>

#include <gtest/gtest.h>

#include "base/text.h"
#include "matching/caregiver_panel.h"
#include "matching/row_by_row.h"
#include "matching/suggestion_prints.h"
#include "matching/why_not.h"
#include "support/test_agency.h"

namespace kv {
namespace {

using test::Cells;
using test::PlainRow;
using Lines = std::vector<std::string>;

Date Day(int month, int day) {
    return Date::FromCivil(2026, month, day);
}
Date At(int hour, int minute = 0) {
    return Date::FromTime(hour, minute);
}

/// The clock stands at Wednesday, 2026-03-04; the visit is wanted on Thursday the 5th, from 9 for 4 hours.
class Suggest : public ::testing::Test {
  protected:
    Suggest() {
        session.WKENDING = "SAT";
        working_ = session.OpenData("tempassign.mdb");
        agency.Client("00001", "Grant", "Ida",
                      {{"BORO", "North"}, {"LANGUAGE", "ES"}, {"PROV_SEX", "F"}, {"ORD_DISCPL", "HHA"}});
        agency.Code().Execute("update DISCIPLINE set [Value] = 2 where code = 'HHA'");
        request_ = {"00001", Day(3, 5), At(9), 4, 0, false};
    }
    void Caregiver(const std::string& id, const std::string& last, const Cells& more = {}) {
        Cells cells = {{"emp_id", id},        {"LastName", last}, {"FirstName", "Al"},
                       {"t_code", "A"},       {"disp_level", 2},  {"hrsper_week", 40},
                       {"EMP_TYPE", "FIELD"}, {"SEX", "F"},       {"tot_lang", "EN"}};
        for (const auto& cell : more) {
            cells.erase(std::remove_if(cells.begin(), cells.end(),
                                       [&](const auto& old) { return EqualsNoCase(old.first, cell.first); }),
                        cells.end());
            cells.push_back(cell);
        }
        agency.Insert("Employee", cells);
    }
    void Assignment(const std::string& id, const char* type, const char* day, Date start, Date end,
                    const Cells& more = {}) {
        Cells cells = {{"emp_id", id},
                       {"Type", type},
                       {"Day", day},
                       {"St_time", start},
                       {"END_TIME", end},
                       {"st_date", Day(1, 1)},
                       {"END_DATE", Day(12, 31)},
                       {"Last_date", Day(2, 28)},
                       {"cli_name", "Hill, Hal Henry"}};
        cells.insert(cells.end(), more.begin(), more.end());
        agency.Insert("assign", cells);
    }
    void Visit(const std::string& id, Date day, Date start, Date end, const Cells& more = {}) {
        Cells cells = {{"emp_id", id}, {"st_date", day},    {"St_time", start},      {"END_TIME", end},
                       {"HRS", 3},     {"CLIENT", "00009"}, {"cli_name", "Ivy, Una"}};
        cells.insert(cells.end(), more.begin(), more.end());
        agency.Insert("sch_day", cells);
    }
    Suggestion Search() {
        needs_ = PrepareClient(session, request_);
        return SearchCaregivers(session, needs_, request_, options_);
    }
    /// The ids of the result, joined.
    std::string Found() {
        std::string ids;
        for (const SuggestedCaregiver& row : Search().rows) {
            ids += row.emp_id + " ";
        }
        return Trim(ids);
    }
    WhyNot Why(const char* id) {
        needs_ = PrepareClient(session, request_);
        return ExplainCaregiver(session, needs_, request_, options_, id);
    }
    static std::vector<PlainRow> PlainRows(const Suggestion& suggestion) {
        std::vector<PlainRow> rows;
        for (const SuggestedCaregiver& row : suggestion.rows) {
            PlainRow plain = {row.emp_id, row.emp_name, row.max_hours, row.skills, row.longest, {}};
            for (int quarter = 0; quarter < kQuarters; ++quarter) {
                plain.quarters.push_back(suggestion.TextOf(row, quarter));
            }
            rows.push_back(std::move(plain));
        }
        return rows;
    }

    test::TestAgency agency;
    Session& session = agency.session();
    DatabasePtr working_;
    SuggestionRequest request_;
    SuggestionOptions options_;
    ClientNeeds needs_;
};

TEST_F(Suggest, FindsWhatTheRulesFindRowByRow) {
    std::mt19937 random(5);
    const auto any = [&random](int below) {
        return std::uniform_int_distribution<int>(0, below - 1)(random);
    };
    const auto time = [&] { return At(any(24), any(8) == 0 ? 10 : 15 * any(4)); };
    constexpr std::array kDays = {"WED", "THU", "FRI", "SAT"};
    const char* const names[] = {"Ivy, Una", "O'Neil, Pat", "", "Kay, Ann"};
    for (const char* code : {"OX", "CO", "BA"}) {
        agency.Insert("skills",
                      {{"code", code}, {"Description", code}, {"critical", code[0] == 'O' ? 1 : 0}});
    }
    for (int i = 0; i < 60; ++i) {
        const std::string id = "E" + std::to_string(100 + i);
        Caregiver(id, i % 7 == 0 ? "O'Hara" : "Ames" + std::to_string(i % 5),
                  {{"t_code", i % 9 == 0   ? "Z"
                              : i % 8 == 0 ? "I"
                                           : "A"},
                   {"t_date", i % 16 == 0 ? Value(Day(3, 6)) : Value(Day(3, 1))},
                   {"hrsper_week", 10 * any(5)},
                   {"SEX", i % 3 == 0 ? "M" : "F"},
                   {"tot_lang", i % 2 == 0 ? "EN,ES" : "EN"},
                   {"disp_level", 1 + any(3)},
                   {"EMP_TYPE", i % 4 == 0   ? "STAFFING"
                                : i % 5 == 0 ? "BOTH"
                                             : "FIELD"},
                   {"dept", i % 2 == 0 ? "East" : "West"},
                   {"live_in", i % 2 == 0}});
        for (int j = any(3); j > 0; --j) {
            Assignment(id, any(3) == 0 ? "N" : "A", kDays[static_cast<std::size_t>(any(4))], time(), time(),
                       {{"Last_date", any(4) == 0 ? Value(Day(3, 7)) : Value(Day(2, 28))},
                        {"cli_name", names[any(4)]},
                        {"visit_desc", "Bath"}});
        }
        for (int j = any(3); j > 0; --j) {
            Visit(id, Day(3, 3 + any(5)), time(), time(),
                  {{"cli_name", names[any(4)]}, {"Cancelled", any(6) == 0}, {"act_hrs", any(3)}});
        }
        if (any(3) == 0) {
            agency.Insert(
                "Emp_willwork",
                {{"emp_id", id}, {"st_date", Day(3, 5 + any(2))}, {"St_time", time()}, {"END_TIME", time()}});
        }
        for (const char* code : {"OX", "CO", "BA"}) {
            if (any(2) == 0) {
                agency.Insert("emp_misc", {{"emp", id}, {"area", "SKI"}, {"ID", code}});
            }
        }
        agency.Insert("emp_locations", {{"emp", id}, {"district", any(2) == 0 ? "North" : "South"}});
        if (any(10) == 0) {
            agency.Insert("emp_locations", {{"emp", id}, {"district", "North"}});
        }
    }
    for (const char* code : {"OX", "CO"}) {
        agency.Insert("cli_misc", {{"CLIENT", "00001"}, {"Area", "SKI"}, {"ID", code}});
    }
    std::size_t shown = 0;
    std::size_t rejected = 0;
    for (int round = 0; round < 250; ++round) {
        request_.time = time();
        request_.hours = 0.25 * any(60);
        request_.liveIn = any(8) == 0;
        options_ = {any(3) == 0,
                    any(8) == 0,
                    any(4) == 0,
                    any(4) == 0,
                    any(4) == 0,
                    any(4) == 0,
                    any(3) == 0,
                    any(4) == 0,
                    any(3) == 0,
                    any(3) == 0,
                    any(4) == 0 ? "East" : "ALL"};
        const Suggestion found = Search();
        const test::PlainSuggestion plain =
            test::SearchRowByRow(session, *working_, needs_, request_, options_);
        ASSERT_EQ(found.rejected, plain.rejected) << "round " << round;
        const std::vector<PlainRow> rows = PlainRows(found);
        ASSERT_EQ(rows.size(), plain.rows.size()) << "round " << round;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            ASSERT_EQ(rows[i].emp_id, plain.rows[i].emp_id) << "round " << round << " place " << i;
            ASSERT_EQ(rows[i].quarters, plain.rows[i].quarters) << "round " << round << ' ' << rows[i].emp_id;
            ASSERT_EQ(rows[i], plain.rows[i]) << "round " << round << ' ' << rows[i].emp_id;
        }
        // Each one's reason agrees with the result.
        for (const char* id : {"E101", "E117", "E133"}) {
            const WhyNot why = ExplainCaregiver(session, needs_, request_, options_, id);
            const bool isShown =
                std::any_of(rows.begin(), rows.end(), [&](const PlainRow& row) { return row.emp_id == id; });
            ASSERT_EQ(why.shown, isShown) << "round " << round << ' ' << id << ' ' << why.reason;
        }
        shown += rows.size();
        rejected += plain.rejected.size();
    }
    EXPECT_GT(shown, 1000U);
    EXPECT_GT(rejected, 500U);
}

TEST_F(Suggest, OrdersByHoursLeftAndThenByName) {
    Caregiver("E1", "Cole", {{"hrsper_week", 20}});
    Caregiver("E2", "Bell", {{"hrsper_week", 30}});
    Caregiver("E3", "Ames", {{"hrsper_week", 20}});
    Caregiver("E4", "Dale", {{"hrsper_week", 0}});
    Visit("E2", Day(3, 1), At(8), At(20), {{"HRS", 12}});
    Visit("E2", Day(3, 2), At(8), At(20), {{"HRS", 12}, {"act_hrs", 4}});
    Visit("E4", Day(3, 7), At(8), At(20), {{"HRS", 50}});
    Visit("E1", Day(2, 28), At(8), At(20), {{"HRS", 50}});
    const Suggestion found = Search();
    Lines rows;
    for (const SuggestedCaregiver& row : found.rows) {
        rows.push_back(row.emp_name + " " + std::to_string(static_cast<int>(row.max_hours)));
    }
    EXPECT_EQ(rows, (Lines{"Ames, Al 20", "Cole, Al 20", "Bell, Al 14", "Dale, Al -50"}));
}

TEST_F(Suggest, ShowsTheDayInQuarters) {
    Caregiver("E1", "Ames");
    Assignment("E1", "N", "THU", At(6), At(7, 20));
    Assignment("E1", "N", "THU", At(22), At(6));  // past midnight: never shown
    Assignment("E1", "A", "WED", At(23), At(1));
    Visit("E1", Day(3, 5), At(13), At(14));
    Visit("E1", Day(3, 5), At(17), At(0), {{"cli_name", ""}, {"visit_desc", "Meeting of the office"}});
    Visit("E1", Day(3, 5), At(15), At(16), {{"cli_name", "O'Neil, Pat"}});  // breaks its statement
    agency.Insert("Emp_willwork",
                  {{"emp_id", "E1"}, {"st_date", Day(3, 5)}, {"St_time", At(6)}, {"END_TIME", At(6, 30)}});
    const Suggestion found = Search();
    ASSERT_EQ(found.rows.size(), 1U);
    const SuggestedCaregiver& row = found.rows[0];
    std::string line;
    for (int quarter = 0; quarter < kQuarters; ++quarter) {
        line += found.IsFree(row, quarter) ? '.' : found.TextOf(row, quarter)[0];
    }
    EXPECT_EQ(line, "HHHH" + std::string(22, '.') + "UUU" + std::string(23, '.') + "IIII" +
                        std::string(12, '.') + std::string(28, 'M'));
    EXPECT_EQ(found.TextOf(row, 0), "Hill, Hal Henr");
    EXPECT_EQ(found.TextOf(row, 95), "Meeting of the");
    EXPECT_EQ(row.longest, 23);

    const std::string report = PlainText(SuggestionReport(found, false, Day(3, 4)));
    EXPECT_EQ(
        report,
        " Run Date: Mar/04/2026\nCaregiver Suggestion Report\n\nAmes, Al | 31 | 00:00-01:00 Hill, Hal Henr | "
        "06:30-07:15 UnAvailable | 13:00-14:00 Ivy, Una | 17:00-24:00 Meeting of the\n");
    WriteAssignHead(*working_, found, request_);
    const Recordset head = working_->OpenRecordset("select * from assign_head");
    EXPECT_EQ(head.Text("emp_id") + head.Text("Day") + head.Text("1315") + head.Text("1400"),
              "E1THUIvy, Una");
}

TEST_F(Suggest, WhoMayBeLessFreeThanShownIsMarkedWithTheReason) {
    struct Case {
        const char* what;
        std::function<void()> make;
        Lines reasons;
    };
    const auto willing = [this](Date from, Date to) {
        agency.Insert("Emp_willwork",
                      {{"emp_id", "E1"}, {"st_date", Day(3, 5)}, {"St_time", from}, {"END_TIME", to}});
    };
    const Cells nonVisit = {{"CLIENT", ""}, {"cli_name", ""}, {"visit_desc", ""}};
    const Case cases[] = {
        {"what is shown as it is",
         [&] {
             Visit("E1", Day(3, 5), At(13), At(14));
             Visit("E1", Day(3, 5), At(18), At(18));
             Visit("E1", Day(3, 4), At(20), At(2));
             Visit("E1", Day(3, 4), At(18, 5), At(0));
             Assignment("E1", "N", "THU", At(6), At(8));
             Assignment("E1", "N", "THU", At(19), At(0));
             Assignment("E1", "N", "WED", At(8), At(20));
             Assignment("E1", "N", "WED", At(20), At(0));
             willing(At(6), At(7));
         },
         {}},
        {"a start off the quarter hour",
         [&] { Visit("E1", Day(3, 5), At(13, 10), At(14)); },
         {"Scheduled from 1:10 PM to 2:00 PM (Ivy, Una) is not shown: it does not begin on a quarter of an "
          "hour."}},
        {"an end off the quarter hour",
         [&] {
             Assignment("E1", "A", "THU", At(13), At(14, 20));
             Visit("E1", Day(3, 4), At(20), At(5, 40));
             Visit("E1", Day(3, 5), At(15), At(15, 10));
         },
         {"Assigned from 1:00 PM to 2:20 PM (Hill, Hal Henr) is shown only up to 2:15 PM: it does not end on "
          "a "
          "quarter of an hour.",
          "Scheduled until 5:40 AM (Ivy, Una) is shown only up to 5:30 AM: it does not end on a quarter of "
          "an "
          "hour.",
          "Scheduled from 3:00 PM to 3:10 PM (Ivy, Una) is not shown: it does not end on a quarter of an "
          "hour."}},
        {"an apostrophe",
         [&] {
             Visit("E1", Day(3, 5), At(15), At(16), {{"cli_name", "O'Neil, Pat"}});
         },
         {"Scheduled from 3:00 PM to 4:00 PM (O'Neil, Pat) is not shown: its description has an "
          "apostrophe."}},
        {"no description",
         [&] { Visit("E1", Day(3, 5), At(15), At(16), nonVisit); },
         {"Scheduled from 3:00 PM to 4:00 PM is not shown: it has no description."}},
        {"unavailable past midnight, its evening",
         [&] { Assignment("E1", "N", "THU", At(22), At(6)); },
         {"Unavailable from 10:00 PM to 6:00 AM is not shown: it runs past midnight."}},
        {"unavailable past midnight, its morning",
         [&] { Assignment("E1", "N", "WED", At(22), At(6)); },
         {"Unavailable from 10:00 PM the day before to 6:00 AM is not shown: it runs past midnight."}},
        {"its morning in the time asked for",
         [&] { Assignment("E1", "N", "WED", At(10), At(10)); },
         {"Unavailable from 10:00 AM the day before to 10:00 AM, in the time asked for, and shown as free: "
          "it "
          "runs past midnight."}},
        {"its morning, and the caregiver will work",
         [&] {
             Assignment("E1", "N", "WED", At(22), At(12));
             willing(At(0), At(13));
         },
         {}},
        {"its evening, and the caregiver will work",
         [&] {
             Assignment("E1", "N", "THU", At(22), At(6));
             willing(At(21), At(0));
         },
         {"Will work from 9:00 PM without an end: unavailable time after it is shown as free."}},
        {"willing without an end",
         [&] {
             Assignment("E1", "N", "THU", At(8), At(22));
             willing(At(9), At(0));
         },
         {"Will work from 9:00 AM without an end: unavailable time after it is shown as free."}},
        {"willing without an end, and nothing to free",
         [&] {
             Assignment("E1", "N", "THU", At(6), At(8));
             willing(At(8), At(0));
             willing(At(9), At(9));
         },
         {}},
    };
    Caregiver("E1", "Ames");
    Caregiver("E2", "Bell");
    for (const Case& each : cases) {
        for (const char* table : {"assign", "sch_day", "Emp_willwork"}) {
            agency.Work().Execute(std::string("delete from ") + table);
        }
        each.make();
        options_ = {};
        const Suggestion found = Search();
        ASSERT_EQ(found.rows.size(), 2U) << each.what;
        Lines reasons;
        for (const SuggestionWarning& warning : found.Warnings()) {
            EXPECT_EQ(warning.emp_id + warning.emp_name, "E1Ames, Al");
            reasons.push_back(warning.reason);
        }
        EXPECT_EQ(reasons, each.reasons) << each.what;
        // The rows stand as the rules say.
        const auto plain = test::SearchRowByRow(session, *working_, needs_, request_, options_);
        EXPECT_EQ(PlainRows(found), plain.rows) << each.what;
        // Who searches without regard to unavailable time is not warned of it.
        options_.ignoreUnavailable = true;
        for (const SuggestionWarning& warning : Search().Warnings()) {
            EXPECT_EQ(warning.reason.find("navailable"), std::string::npos) << each.what;
        }
    }
    // In the order of the result, and of nobody else.
    Visit("E2", Day(3, 5), At(15), At(16), nonVisit);
    Visit("E1", Day(3, 5), At(15), At(16), nonVisit);
    Visit("E1", Day(3, 5), At(16), At(17), nonVisit);
    Caregiver("E3", "Cole");
    Visit("E3", Day(3, 5), At(9), At(10), nonVisit);
    Lines ids;
    for (const SuggestionWarning& warning : Search().Warnings()) {
        ids.push_back(warning.emp_id);
    }
    EXPECT_EQ(ids, (Lines{"E2", "E1", "E1"}));
}

TEST_F(Suggest, TheRejectedAreListedInTheirOrder) {
    Caregiver("E1", "Ames");
    Caregiver("E2", "Bell");
    Caregiver("E3", "Cole");
    Assignment("E1", "A", "THU", At(8), At(9, 30));
    Assignment("E3", "N", "THU", At(8), At(9, 30));  // never listed
    Visit("E2", Day(3, 5), At(12, 45), At(14));
    EXPECT_EQ(Found(), "");
    const Lines lines = Search().rejected;
    EXPECT_EQ(lines, (Lines{std::string(42, ' ') + "Ames, Al is already assigned to be scheduled",
                            std::string(42, ' ') + "Bell, Al is already scheduled"}));
    EXPECT_EQ(
        PlainText(RejectedReport(session)),
        "Caregivers that were rejected by Caregiver Suggestion\n\n" + lines[0] + "\n" + lines[1] + "\n");
    options_.ignoreUnavailable = true;
    EXPECT_EQ(Found(), "E3");
    options_ = {};
    options_.ignoreStart = true;
    EXPECT_EQ(Found(), "E1 E3 E2") << "each has a free block; hers is booked for three hours this week";
    request_.hours = 13.5;
    EXPECT_EQ(Found(), "E1 E3") << "10 hours before the visit or after it are not enough";
}

TEST_F(Suggest, TheOperatorMayBreakItOff) {
    for (int i = 0; i < 200; ++i) {
        Caregiver("E" + std::to_string(100 + i), "Ames" + std::to_string(i));
    }
    agency.ports.progress.breakOffAt = 2;
    const Suggestion found = Search();
    EXPECT_TRUE(found.brokenOff);
    EXPECT_EQ(found.rows.size(), 128U) << "those looked at so far";
    EXPECT_EQ(agency.ports.progress.steps, 200);
    EXPECT_EQ(agency.ports.progress.open, 0);
    agency.ports.progress.breakOffAt = 0;
    EXPECT_EQ(Search().rows.size(), 200U);
}

TEST_F(Suggest, TheBoxesLetThroughWhomTheySay) {
    Caregiver("E1", "Ames", {{"tot_lang", "EN,ES"}, {"dept", "East"}});
    Caregiver("E2", "Bell", {{"SEX", "M"}, {"disp_level", 3}});
    Caregiver("E3", "Cole", {{"EMP_TYPE", "STAFFING"}});
    Caregiver("E4", "Dale", {{"t_code", "Z"}});
    Caregiver("E5", "Earl", {{"disp_level", 1}});
    Caregiver("E6", "Fern", {{"t_code", "I"}, {"t_date", Day(3, 5)}, {"live_in", true}});
    Caregiver("E7", "Gale", {{"t_code", "I"}, {"t_date", Day(3, 4)}});
    agency.Insert("emp_locations", {{"emp", "E2"}, {"district", "North"}});
    struct Case {
        const char* ids;
        SuggestionOptions options;
    };
    std::vector<Case> cases(9, {"", {}});
    cases[0] = {"E1 E2 E3 E6", {}};
    cases[1].ids = "E2";
    cases[1].options.areas = true;
    cases[2].ids = "E4";
    cases[2].options.potential = true;
    cases[3].ids = "E1";
    cases[3].options.language = true;
    cases[4].ids = "E1 E3 E6";
    cases[4].options.gender = true;
    cases[5].ids = "E1 E3 E6";
    cases[5].options.discipline = true;
    cases[6].ids = "E1 E2 E6";
    cases[6].options.type = true;
    cases[7].ids = "E1";
    cases[7].options.group = "East";
    cases[8].ids = "E1 E2 E3 E6";
    cases[8].options.skillsPercent = true;  // the client needs none
    for (const Case& each : cases) {
        options_ = each.options;
        EXPECT_EQ(Found(), each.ids);
    }
    options_ = {};
    options_.areas = true;
    agency.Work().Execute("update ClientPR set BORO = '', PROV_SEX = 'E'");
    options_.gender = true;
    EXPECT_EQ(Found(), "E1 E2 E3 E6") << "no area and no wish filter nobody";
    options_ = {};
    request_.liveIn = true;
    EXPECT_EQ(Found(), "E6");
    request_.liveIn = false;

    // Why not: the filter and the box that keeps her out.
    agency.Work().Execute("update ClientPR set BORO = 'North', PROV_SEX = 'F'");
    options_.gender = options_.language = true;
    WhyNot why = Why("E2");
    EXPECT_EQ(why.reason, "Does not speak the client's language; Is not of the requested gender.");
    EXPECT_EQ(why.change, "Search without 'Language' and 'Requested Gender'.");
    options_ = {};
    EXPECT_TRUE(Why("E2").shown);
    EXPECT_EQ(Why("E7").reason, "Is not active since Mar/04/2026.");
    EXPECT_EQ(Why("E5").reason, "The discipline level 1 is below the required 2.");
    EXPECT_EQ(Why("E5").change, "");
    EXPECT_FALSE(Why("E9").found);
}

TEST_F(Suggest, WhyNotFindsTheNearestStart) {
    Caregiver("E1", "Ames");
    Visit("E1", Day(3, 5), At(11, 30), At(13, 15));
    EXPECT_EQ(Why("E1").reason, "Is already scheduled then.");
    EXPECT_EQ(Why("E1").change, "Start at 7:30 AM, 1.5 hours earlier.");
    Visit("E1", Day(3, 5), At(7), At(8));
    EXPECT_EQ(Why("E1").change, "Start at 1:15 PM, 4.25 hours later.");
    request_.time = At(13);
    EXPECT_EQ(Why("E1").change, "Start at 1:15 PM, 15 minutes later.");
    Caregiver("E2", "Bell");
    Assignment("E2", "N", "THU", At(0), At(0));
    EXPECT_EQ(Why("E2").change, "Tick 'Ignore Unavailable Time'.");
    agency.Insert("skills", {{"code", "OX"}, {"Description", "Oxygen"}, {"critical", 1}});
    agency.Insert("cli_misc",
                  {{"CLIENT", "00001"}, {"Area", "SKI"}, {"ID", "OX"}, {"Description", "Oxygen"}});
    options_.critical = true;
    request_.time = At(14);
    EXPECT_EQ(Why("E1").change, "One skill: Oxygen.");
    options_ = {};
    options_.ignoreStart = true;
    request_.hours = 20;
    EXPECT_EQ(Why("E1").change, "Ask for 10.75 hours at most.");
}

TEST_F(Suggest, ThePanelTellsWhatMatters) {
    agency.Insert("skills", {{"code", "OX"}, {"Description", "Oxygen"}, {"critical", 1}});
    for (const char* skill : {"OX", "CO"}) {
        agency.Insert("cli_misc",
                      {{"CLIENT", "00001"}, {"Area", "SKI"}, {"ID", skill}, {"Description", skill}});
    }
    agency.Insert("main.LANGUAGE", {{"code", "ES"}, {"description", "Spanish"}});
    Caregiver("E1", "Ames",
              {{"SEX", "M"},
               {"emlang1", "ES"},
               {"EXP_CYMMDD", Day(3, 4)},
               {"em_comment", "Kind"},
               {"rate1", Currency::FromDouble(20)},
               {"EMP_TYPE", "STAFFING"}});
    agency.Insert("emp_misc", {{"emp", "E1"}, {"area", "SKI"}, {"ID", "CO"}, {"Description", "Cooking"}});
    agency.Insert(
        "Emp_required",
        {{"EMP_ID", "E1"}, {"Description", "Health Check of the whole body"}, {"exp_date", Day(3, 1)}});
    agency.Insert("emp_locations", {{"emp", "E1"}, {"district", "North"}});
    agency.Insert("cli_emp",
                  {{"client", "00001"}, {"emp_id", "E1"}, {"Last_date", Day(2, 1)}, {"num_visits", 12}});
    agency.Insert(
        "clirate",
        {{"CLIENT", "00001"}, {"visittype", "PCA"}, {"method", "H"}, {"rate1", Currency::FromDouble(30)}});
    agency.Code().Execute("update Agency set start1 = #08:00:00#, stop1 = #20:00:00#");
    request_.authorization = static_cast<long>(
        agency.Insert("Authorizations",
                      {{"CLIENT", "00001"}, {"visit_type", "PCA"}, {"bill_code", 1}, {"EMP_Type", "FIELD"}}));
    Visit("E1", Day(3, 2), At(8), At(11));
    needs_ = PrepareClient(session, request_);
    EXPECT_EQ(needs_.bill, 120);
    ASSERT_EQ(needs_.visited.size(), 1U);
    EXPECT_EQ(needs_.visited[0].text, "Ames, A Feb/01/26 - 012");
    VisitAmounts amounts(session);
    CaregiverPanel panel = DescribeCaregiverForVisit(session, needs_, request_, options_, "E1", amounts);
    EXPECT_EQ(panel.expired, (Lines{"RN License: Mar/04/2026", "Health Check of the  - Mar/01/2026"}));
    EXPECT_EQ(panel.missingCritical, Lines{"OX"});
    EXPECT_FALSE(panel.maySelect);
    EXPECT_EQ(panel.differing, (std::set<std::string>{"Type", "Gender"}));
    ASSERT_EQ(panel.languages.size(), 1U);
    EXPECT_TRUE(panel.languages[0].matches && panel.areas.at(0).matches && panel.skills.at(0).matches);
    EXPECT_EQ(panel.pay, 80);
    EXPECT_NEAR(panel.margin.value(), 33.333, 0.001);
    EXPECT_EQ(panel.notes + "|" + panel.notesTitle, "Kind|Caregiver Notes");
    EXPECT_EQ(panel.weekHours, 3);
    EXPECT_EQ(panel.weekHoursAfter, 7);
    EXPECT_EQ(panel.visits, 12);

    agency.Insert("emp_misc", {{"emp", "E1"}, {"area", "SKI"}, {"ID", "OX"}});
    agency.Insert("emp_ban", {{"client", "00001"}, {"emp_id", "E1"}, {"Notes", "Was late"}});
    panel = DescribeCaregiverForVisit(session, needs_, request_, options_, "E1", amounts);
    EXPECT_TRUE(panel.maySelect) << "the ban only warns";
    EXPECT_TRUE(panel.banned);
    EXPECT_EQ(panel.notes, "Was late");
    EXPECT_TRUE(Search().rows.at(0).banned);
    options_.potential = true;
    EXPECT_FALSE(DescribeCaregiverForVisit(session, needs_, request_, options_, "E1", amounts).maySelect);
    EXPECT_NEAR(GrossMargin(100, 50, 10).value(), 45, 0.0001);
    EXPECT_EQ(GrossMargin(0, 50, 10), std::nullopt);
    EXPECT_EQ(MarginTip(8), "100 - (((Pay Rate * 1.08 'Burdens') / Billing Rate) * 100)");
}

}  // namespace
}  // namespace kv
