#include <gtest/gtest.h>

#include "clients/client_fixture.h"
#include "clients/client_record.h"
#include "clients/phone_digits.h"

namespace kv {
namespace {

using test::ClientTest;

TEST(PhoneDigits, KeepsTheDigitsOfAPastedNumber) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"(555) 123-4567", "5551234567"},
        {"1-555-123-4567", "5551234567"},
        {" +1 (555) 123 4567 x89 ", "5551234567"},
        {"555123456789", "5551234567"},
        {"123-4567", "2345671"},
        {"555", "5551"},
        {"1 111 111 1111", "1111111111"},
        {"", ""},
        {"none", ""},
        {"1", ""},
    };
    for (const auto& [text, digits] : cases) {
        EXPECT_EQ(PhoneDigits(text), digits) << text;
    }
}

TEST(ClientDays, AreCountedFromDateToDate) {
    const Date today = Date::FromCivil(2026, 3, 4);
    const auto day = [](int year, int month, int dayOfMonth) {
        return Value(Date::FromCivil(year, month, dayOfMonth));
    };
    struct Case {
        const char* what;
        Value firstContact, start, end;
        long days, activeDays;
    };
    const std::vector<Case> cases = {
        {"all filled, care goes on", day(2026, 1, 1), day(2026, 1, 31), day(2026, 12, 31), 30, 334},
        {"care has ended: counted to today", day(2026, 1, 1), day(2026, 1, 31), day(2026, 2, 10), 30, 32},
        {"care ends today", day(2026, 1, 1), day(2026, 3, 1), day(2026, 3, 4), 59, 3},
        {"no end: counted to today", day(2026, 1, 1), day(2026, 2, 4), Value(), 34, 28},
        {"no first contact", Value(), day(2026, 1, 31), day(2026, 12, 31), 0, 334},
        {"no start", day(2026, 1, 1), Value(), day(2026, 12, 31), 0, 0},
        {"nothing", Value(), Value(), Value(), 0, 0},
        {"a start before the first contact", day(2026, 1, 31), day(2026, 1, 1), day(2026, 1, 11), -30, 62},
        {"the most days shown", day(2020, 1, 1), day(2025, 6, 23), day(2036, 6, 5), 2000, 4000},
        {"one day more", day(2020, 1, 1), day(2025, 6, 24), day(2036, 6, 7), 0, 0},
        {"a first contact far behind", day(2026, 1, 1), day(2020, 7, 10), day(2026, 12, 31), 0, 2365},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(NumDays(each.firstContact, each.start), each.days) << each.what;
        EXPECT_EQ(NumActiveDays(each.start, each.end, today), each.activeDays) << each.what;
    }
}

TEST(ClientStatus, HasAWordForEachCode) {
    EXPECT_EQ(StatusWord("A", false), "Active");
    EXPECT_EQ(StatusWord("A", true), "Template");
    EXPECT_EQ(StatusWord("C", true), "Closed");
    EXPECT_EQ(StatusWord("Z", false), "Potential");
    EXPECT_EQ(StatusWord("", false), "");
}

std::string Open(const std::array<bool, kSectionCount>& images) {
    std::string open;
    for (std::size_t i = 0; i < images.size(); ++i) {
        open += images[i] ? (open.empty() ? "" : " ") + std::to_string(i) : std::string();
    }
    return open;
}

TEST(ClientSections, FollowTheKindOfClientAndTheRights) {
    const ClientRights all;
    ClientRights none;
    none.billRates = none.documentedEvents = false;
    EXPECT_EQ(Open(SectionsOf(ClientKind::Client, all).images), "0 1 2 3 4 5 6 7 8 9 10 11 12");
    EXPECT_EQ(Open(SectionsOf(ClientKind::Client, none).images), "0 2 4 5 6 7 8 9 10 11 12");
    EXPECT_EQ(Open(SectionsOf(ClientKind::Potential, all).images), "0 1 3 5 6 7 8 9 10 11 12");
    EXPECT_EQ(Open(SectionsOf(ClientKind::Template, none).images), "0 5 6 7 9 10 11");
    EXPECT_EQ(SectionsOf(ClientKind::Template, all).parts,
              (std::array<bool, kPartCount>{true, false, false, false, true, true, true}));
    EXPECT_FALSE(SectionsOf(ClientKind::Template, all).accountBoxes);
}

class ClientRecord : public ClientTest {};

TEST_F(ClientRecord, DescribesTheRowAndItsPlace) {
    AddClient(
        "00001",
        {{"status_date", Date::FromCivil(2026, 2, 3, 14, 5)}, {"User_Id", "ann"}, {"Comments", Value()}});
    AddClient("00002", {{"CASESTATCD", "Z"}, {"potientalstatus", "InActive"}, {"Comments", "Gate 5"}});
    AddClient("99900", {{"ISTEMPLATE", 1}});
    Recordset list = session.dbMainWork->OpenRecordset("select * from clientpr order by client");

    const ClientView first = DescribeClient(session, list, {});
    EXPECT_EQ(first.statusWord, "Active");
    EXPECT_EQ(first.notes, "");
    EXPECT_FALSE(first.potentialButtons);
    EXPECT_EQ(first.statusBar.lastChange, "Last Change by: ann");
    EXPECT_EQ(first.statusBar.dateTime, "Date/Time: Feb/03/2026 14:05");
    EXPECT_EQ(first.statusBar.position + " of " + first.statusBar.count, "1 of 3");

    list.MoveNext();
    const ClientView potential = DescribeClient(session, list, {});
    EXPECT_EQ(potential.statusWord + " " + potential.potentialStatus, "Potential InActive");
    EXPECT_TRUE(potential.potentialButtons);
    EXPECT_EQ(potential.notes, "Gate 5");
    EXPECT_EQ(potential.statusBar.dateTime, "Date/Time: ");

    list.MoveNext();
    EXPECT_EQ(DescribeClient(session, list, {}).kind, ClientKind::Template);
}

TEST_F(ClientRecord, AnEmptyListLeavesExitNewAndHelp) {
    Recordset list = session.dbMainWork->OpenRecordset("select * from clientpr");
    const ClientView view = DescribeClient(session, list, {});
    EXPECT_EQ(view.statusBar.position + view.statusBar.count, "00");
    EXPECT_EQ(Open(view.sections.images), "");
    ToolbarButtons expected{};
    expected[1] = expected[7] = expected[14] = true;
    EXPECT_EQ(ClientToolbar(session, false), expected);
    session.CanAdd = false;
    expected[7] = false;
    EXPECT_EQ(ClientToolbar(session, false), expected);
    session.CanSave = false;
    EXPECT_FALSE(ClientToolbar(session, true)[9]);
    EXPECT_TRUE(ClientToolbar(session, true)[8]);
}

}  // namespace
}  // namespace kv
