// The chart of a caregiver's coming days, and the sheet of a visit's two people.
#include "matching/availability.h"

#include <fstream>
#include <functional>

#include <gtest/gtest.h>

#include "matching/visit_detail.h"
#include "matching/working_copy.h"
#include "support/test_agency.h"

namespace kv {
namespace {

using test::Cells;
using Lines = std::vector<std::string>;

Date Day(int month, int day) {
    return Date::FromCivil(2026, month, day);
}
Date At(int hour, int minute = 0) {
    return Date::FromTime(hour, minute);
}

class Display : public ::testing::Test {
  protected:
    Display() {
        agency.Client("00001", "Grant", "Ida", {{"PHONE", "5185550100"}});
        agency.Insert("Employee", {{"emp_id", "E1"}, {"LastName", "Ames"}, {"FirstName", "Al"}});
    }
    long Assignment(const char* type, const char* day, Date start, Date end, const Cells& more = {}) {
        Cells cells = {{"emp_id", "E1"},
                       {"Type", type},
                       {"Day", day},
                       {"St_time", start},
                       {"END_TIME", end},
                       {"st_date", Day(1, 1)},
                       {"END_DATE", Day(12, 31)},
                       {"HRS", 2},
                       {"author_status", "A"},
                       {"CLIENT", "00001"},
                       {"visit_desc", "PCA-Grant"}};
        cells.insert(cells.end(), more.begin(), more.end());
        return static_cast<long>(agency.Insert("assign", cells));
    }
    long Visit(Date day, Date start, Date end, const Cells& more = {}) {
        Cells cells = {
            {"emp_id", "E1"}, {"st_date", day},    {"St_time", start},         {"END_TIME", end},
            {"HRS", 3},       {"CLIENT", "00001"}, {"cli_name", "Grant, Ida"}, {"visit_desc", "Care"}};
        cells.insert(cells.end(), more.begin(), more.end());
        return static_cast<long>(agency.Insert("sch_day", cells));
    }
    /// A day as letters: "." free, U unavailable, A assignment, V visit; each an hour by its first quarter.
    static std::string Hours(const AvailabilityDay& day) {
        std::string line;
        for (int hour = 0; hour < 24; ++hour) {
            line += ".UAV"[static_cast<std::size_t>(day.quarters[4 * static_cast<std::size_t>(hour)].by)];
        }
        return line;
    }

    test::TestAgency agency;
    Session& session = agency.session();
};

TEST_F(Display, ShowsWhatOccupiesEachDay) {
    // From Wednesday the 4th to Friday the 6th.
    Assignment("A", "WED", At(22), At(2));  // goes on on Thursday
    Assignment("A", "FRI", At(22), At(2));  // its second part has no row
    Assignment("A", "THU", At(6), At(7), {{"author_status", "C"}});
    Assignment("A", "THU", At(6), At(7), {{"END_DATE", Day(3, 4)}});
    Assignment("N", "THU", At(4), At(10));
    Assignment("N", "FRI", At(20), At(0));
    agency.Insert("Emp_willwork",
                  {{"emp_id", "E1"}, {"st_date", Day(3, 5)}, {"St_time", At(5)}, {"END_TIME", At(9)}});
    Visit(Day(3, 5), At(8), At(9));  // over what she is willing to work
    Visit(Day(3, 5), At(12), At(13), {{"cancelled", true}});
    Visit(Day(3, 5), At(14), At(15), {{"cli_name", "O'Neil"}});  // its number tells it
    Visit(Day(3, 6), At(12, 10), At(13));                        // starts between two quarters
    const long late =
        Visit(Day(3, 6), At(21), At(0),
              {{"cli_name", ""}, {"assign_seq", 4}, {"act_hrs", 2.5}, {"visit_time", At(21, 15)}});
    const Availability shown = LoadAvailability(session, "E1", Day(3, 4), 3);
    ASSERT_EQ(shown.days.size(), 3U);
    EXPECT_EQ(shown.emp_name, "Ames, Al");
    EXPECT_EQ(shown.days[0].day, "WED");
    EXPECT_EQ(Hours(shown.days[0]), "......................AA");
    EXPECT_EQ(Hours(shown.days[1]), "AA..U...VU....V.........");
    EXPECT_EQ(Hours(shown.days[2]), "....................UVVV")
        << "she is unavailable from eight, and visits from nine";
    EXPECT_EQ(shown.days[2].quarters[95].by, Occupied::Unavailable)
        << "a visit to midnight leaves the last quarter";
    EXPECT_EQ(shown.texts.Text(shown.days[2].quarters[94].text), "Care");
    EXPECT_EQ(shown.days[2].quarters[94].id, late);
    EXPECT_EQ(LoadAvailability(session, "E1", Day(3, 4), 0).days.size(), 1U);

    const QuarterDetail visit = DetailOf(session, shown.days[2].quarters[94]);
    EXPECT_EQ(visit.schedule, (std::vector<LabelledText>{{"Start", "09:00 PM"},
                                                         {"End", "12:00 AM"},
                                                         {"Hours", "3.00"},
                                                         {"Call", "Care"},
                                                         {"Actual", "09:15 PM"},
                                                         {"Act Hrs", "2.50"},
                                                         {"Created", "From Assignment"}}));
    ASSERT_EQ(visit.client.size(), 8U);
    EXPECT_EQ(visit.client[6].second, "(518) 555-0100");
    const QuarterDetail assignment = DetailOf(session, shown.days[0].quarters[92]);
    EXPECT_EQ(assignment.schedule[3].second, "PCA-Grant");
    EXPECT_TRUE(DetailOf(session, shown.days[1].quarters[16]).schedule.empty())
        << "what is unavailable tells no more";
    EXPECT_EQ(
        PlainText(AvailabilityReport(shown, Day(3, 4))),
        " Run Date: Mar/04/2026\nCaregiver: Ames, Al\n\nWED | Mar/04/2026 | 22:00-24:00 Assignment\n"
        "THU | Mar/05/2026 | 00:00-02:00 Assignment | 04:00-05:00 Unavailable | 08:00-09:00 Grant, Ida | "
        "09:00-10:00 Unavailable | 14:00-15:00 O\'Neil\n"
        "FRI | Mar/06/2026 | 20:00-21:00 Unavailable | 21:00-23:45 Care | 23:45-24:00 Unavailable\n");
}

TEST_F(Display, WholeDaysAndNightsAreDrawnAsTheSearchCountsThem) {
    struct Case {
        const char* what;
        std::function<void()> make;
        const char* days[3];  ///< from Thursday the 5th on
        std::size_t notes = 0;
    };
    constexpr const char* kFree = "........................";
    const auto willing = [this](int from, int to) {
        agency.Insert(
            "Emp_willwork",
            {{"emp_id", "E1"}, {"st_date", Day(3, 5)}, {"St_time", At(from)}, {"END_TIME", At(to)}});
    };
    const Case cases[] = {
        {"a visit of 24 hours",
         [&] { Visit(Day(3, 5), At(8), At(8)); },
         {"........VVVVVVVVVVVVVVVV", "VVVVVVVV................", kFree}},
        {"a visit of 24 hours from the evening before",
         [&] { Visit(Day(3, 4), At(20), At(20)); },
         {"VVVVVVVVVVVVVVVVVVVV....", kFree, kFree}},
        {"an assignment of 24 hours",
         [&] { Assignment("A", "THU", At(9), At(9)); },
         {".........AAAAAAAAAAAAAAA", "AAAAAAAAA...............", kFree}},
        {"an assignment from midnight to midnight",
         [&] { Assignment("A", "FRI", At(0), At(0)); },
         {kFree, "AAAAAAAAAAAAAAAAAAAAAAAA", kFree}},
        {"a night begun before the first day",
         [&] { Visit(Day(3, 4), At(22), At(6)); },
         {"VVVVVV..................", kFree, kFree}},
        {"an assignment's night begun before",
         [&] { Assignment("A", "WED", At(23), At(2)); },
         {"AA......................", kFree, kFree}},
        {"an evening that ends at midnight, and one two days before",
         [&] {
             Visit(Day(3, 4), At(22), At(0));
             Visit(Day(3, 3), At(22), At(6));
         },
         {kFree, kFree, kFree}},
        {"a cancelled night",
         [&] {
             Visit(Day(3, 4), At(22), At(6), {{"cancelled", true}});
         },
         {kFree, kFree, kFree}},
        {"unavailable with equal times",
         [&] { Assignment("N", "THU", At(10), At(10)); },
         {"..........UUUUUUUUUUUUUU", kFree, kFree},
         1},
        {"a willingness frees nothing of the night",
         [&] {
             Visit(Day(3, 4), At(22), At(6));
             Assignment("N", "THU", At(4), At(12));
             willing(5, 8);
         },
         {"VVVVVV..UUUU............", kFree, kFree}},
        {"one with equal times frees the rest of the day",
         [&] {
             Assignment("N", "THU", At(4), At(12));
             willing(9, 9);
         },
         {"....UUUUU...............", kFree, kFree}},
    };
    for (const Case& each : cases) {
        for (const char* table : {"assign", "sch_day", "Emp_willwork"}) {
            agency.Work().Execute(std::string("delete from ") + table);
        }
        each.make();
        const Availability shown = LoadAvailability(session, "E1", Day(3, 5), 3);
        std::size_t notes = 0;
        for (std::size_t day = 0; day < 3; ++day) {
            EXPECT_EQ(Hours(shown.days[day]), each.days[day]) << each.what << ", day " << day;
            notes += shown.days[day].notes.size();
        }
        EXPECT_EQ(notes, each.notes) << each.what;
    }
}

TEST_F(Display, ADayTellsWhatItDoesNotShow) {
    Assignment("N", "THU", At(22), At(6));
    Assignment("A", "THU", At(8, 5), At(9));
    Visit(Day(3, 5), At(14), At(15, 10));
    Visit(Day(3, 5), At(20), At(2));
    const Availability shown = LoadAvailability(session, "E1", Day(3, 5), 2);
    EXPECT_EQ(
        shown.days[0].notes,
        (Lines{"Assigned from 8:05 AM to 9:00 AM is not shown: it does not begin on a quarter of an hour.",
               "Unavailable from 10:00 PM to 6:00 AM is not shown: it runs past midnight.",
               "Scheduled from 2:00 PM to 3:10 PM is shown only up to 3:00 PM: it does not end on a "
               "quarter of an hour."}));
    EXPECT_EQ(
        shown.days[1].notes,
        Lines{"Unavailable from 10:00 PM the day before to 6:00 AM is not shown: it runs past midnight."});
}

TEST_F(Display, TheSheetShowsBothOrEither) {
    agency.Insert("main.MANAGER", {{"code", "M1"}, {"description", "Mary Major"}});
    agency.Work().Execute(
        "update ClientPR set MANAGER = 'M1', apt = '4', STATE = 'New York', STREET = '1 Oak St', CITY = "
        "'Troy', "
        "ZIP = '12180', EMERGCONT = 'Son'");
    agency.Work().Execute(
        "update Employee set Street = '2 Elm St', City = 'West Troy', State = 'NY', Zip = '12189'");
    agency.Insert("care_plan", {{"CLIENT", "00001"}, {"Group", "Bathing"}, {"Description", "Shower"}});
    agency.Insert("care_plan", {{"CLIENT", "00001"}, {"Group", "Bathing"}, {"Description", "Bed bath"}});
    agency.Insert("cli_personnel",
                  {{"CLIENT", "00001"}, {"Description", "Pets"}, {"input_text", "two cats"}});
    agency.Insert("emp_personnel", {{"emp_id", "E1"}, {"Description", "Car"}, {"input_text", "own"}});
    const PersonDetail client = DescribeClient(session, "00001");
    EXPECT_EQ(client.rows[4], LabelledText("State", "New York    APT#: 4"));
    EXPECT_EQ(client.rows[12], LabelledText("Manager", "Mary Major"));
    ASSERT_EQ(client.tree.size(), 4U);
    ASSERT_EQ(client.tree[1].children.size(), 1U);
    EXPECT_EQ(client.tree[1].children[0].children.at(0).text, "Bed bath");
    EXPECT_EQ(client.tree[2].children[0].text, "Name 1: Son");
    EXPECT_EQ(client.tree[3].children[0].text, "Pets = two cats");
    EXPECT_TRUE(client.picture.empty());
    const std::filesystem::path pictures = agency.Folder() / "PICTURES" / "employee";
    std::filesystem::create_directories(pictures);
    for (const char* name : {"E1.BMP", "E1.JPG"}) {
        std::ofstream(pictures / name) << "x";
    }
    const PersonDetail caregiver = DescribeCaregiverInFull(session, "E1");
    EXPECT_EQ(caregiver.picture.filename(), "E1.JPG");
    EXPECT_EQ(caregiver.tree.back().children.at(0).text, "Car = own");
    for (const PersonDetail& none : {DescribeClient(session, ""), DescribeCaregiverInFull(session, "E9")}) {
        EXPECT_TRUE(none.rows.empty() && none.tree.empty() && none.picture.empty());
    }
    EXPECT_EQ(
        VisitDirections({"https://maps", "", "", ""}, caregiver.address, client.address),
        "https://maps/maps?hl=en&tab=wl&saddr=2+Elm+St,West+Troy,NY,12189&daddr=1+Oak+St,Troy,Ne,12180");
    EXPECT_EQ(
        VisitAddresses(caregiver.address, client.address),
        "Address: 2 Elm St   City: West Troy  State: NY   Zip: 12189\nAddress: 1 Oak St   City: Troy  State: "
        "New York   Zip: 12180");
}

TEST_F(Display, AWorkingCopyHasOneHolderAndIsAlwaysFresh) {
    auto copy = WorkingCopy::Make(session, "Tempcal.mdb");
    ASSERT_NE(copy, nullptr);
    copy->Data().Execute("insert into assign_head (emp_id) values ('E1')");
    EXPECT_EQ(WorkingCopy::Make(session, "Tempcal.mdb"), nullptr);
    EXPECT_NE(WorkingCopy::Make(session, "tempsch.mdb"), nullptr) << "under another name";
    copy.reset();
    copy = WorkingCopy::Make(session, "Tempcal.mdb");
    ASSERT_NE(copy, nullptr);
    EXPECT_TRUE(copy->Data().OpenRecordset("select * from assign_head").Eof());
}

}  // namespace
}  // namespace kv
