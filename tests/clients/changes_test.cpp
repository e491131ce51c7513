#include <gtest/gtest.h>

#include "clients/change_history.h"
#include "clients/client_changes.h"
#include "clients/client_fixture.h"

namespace kv {
namespace {

using test::Lines;
using test::PlainForm;

TEST(DiffersFromColumn, ComparesByTheColumnsType) {
    const Value day = Date::FromCivil(2026, 3, 4);
    struct Case {
        const char* what;
        Value control, column;
        bool differs;
    };
    const std::vector<Case> cases = {
        {"Null and nothing typed", "", Value(), false},
        {"Null and an unfilled date", Value(), Value(), false},
        {"Null and an unticked box", false, Value(), false},
        {"Null and a ticked box", true, Value(), true},
        {"Null and a text", "x", Value(), true},
        {"empty text and nothing typed", "", "", false},
        {"a text taken away", "", "x", true},
        {"case counts in a text", "doe", "Doe", true},
        {"blanks count in a text", "Doe ", "Doe", true},
        {"one number in two types", 0.5, Currency::FromDouble(0.5), false},
        {"cents of a currency", 0.45, Currency::FromDouble(0.45), false},
        {"another number", 2.0, 1, true},
        {"a number typed as text", "1,000", 1000, false},
        {"an unfilled number", Value(), 1, true},
        {"no number", "x", 1, true},
        {"one day", day, day, false},
        {"another day", day, Date::FromCivil(2026, 3, 5), true},
        {"a date taken away", Value(), day, true},
        {"a date that counts as empty", Value(), Date(), false},
        {"a box and its column", true, true, false},
        {"a box changed", false, true, true},
    };
    for (const Case& each : cases) {
        ScreenControl control;
        control.value = each.control;
        EXPECT_EQ(DiffersFromColumn(control, each.column), each.differs) << each.what;
    }
}

class ClientChanges : public test::ClientTest {
  protected:
    void SetUp() override {
        AddClient("00001", {{"LASTNAME", "Doe"},
                            {"STREET", "1 Main"},
                            {"CITY", Value()},
                            {"LANGUAGE", "LT"},
                            {"BDATE", Date::FromCivil(1940, 5, 6)},
                            {"grouping", "North"},
                            {"Comments", "old note"}});
    }
    /// What the save would write of the operator's changes; "" for no row.
    std::string Reason(PlainForm& form) {
        agency.Work().Execute("delete from changes");
        WriteClientChanges(session, form.Controls(), form.List());
        const Lines rows = agency.Rows("select reason from changes");
        EXPECT_LE(rows.size(), 1U);
        return rows.empty() ? "" : rows[0];
    }
};

TEST_F(ClientChanges, EachDifferenceIsALine) {
    struct Change {
        const char* control;
        Value value;
        const char* reason;
    };
    const std::vector<Change> changes = {
        {"TxtLastname", "Roe", "Last Name: Doe to Roe\r\n"},
        {"TxtLastname", "Doe", ""},
        {"TXTcity", "Troy", "CITY to Troy\r\n"},
        {"TXTcity", "", ""},
        {"txtStreet", "2 Main", "STREET: 1 Main to 2 Main\r\n"},
        {"TDBCombo1", "English", "Language: LT to EN\r\n"},
        {"TxtB_date", Date::FromCivil(1941, 5, 6), "Birth Date: 5/6/1940 to 5/6/1941\r\n"},
        {"TxtB_date", Value(), "Birth Date: 5/6/1940 to \r\n"},
        {"Check2", true, "Telephony Client False to True\r\n"},
        {"cmbGroup", "South", "Client Group:North to South\r\n"},
        {"CMBhol", "YES", "Holiday Coverate: to YES\r\n"},
        {"TXTbox", "new note", "old note"},
        {"TXTdirections", "left", "directions to left\r\n"},
    };
    for (const Change& change : changes) {
        PlainForm form(session, {}, "00001");
        form.Type(change.control, change.value);
        EXPECT_EQ(Reason(form), change.reason) << change.control;
    }
}

TEST_F(ClientChanges, AllDifferencesStandInOneRowInTheOrderOfTheScreen) {
    PlainForm form(session, {}, "00001");
    form.Type("TXTbox", "new note");
    form.Type("cmbGroup", "South");
    form.Type("txtStreet", "2 Main");
    form.Type("TxtLastname", "Roe");
    EXPECT_EQ(WriteClientChanges(session, form.Controls(), form.List()), 4);
    EXPECT_EQ(agency.Rows("select type, area, [date], [time], [user], status, reason from changes"),
              Lines{"CLI|00001|2026-03-04 00:00:00|09:30:00 AM|ANN|Edit|Last Name: Doe to Roe\r\n"
                    "STREET: 1 Main to 2 Main\r\nClient Group:North to South\r\nold note"});
}

TEST_F(ClientChanges, UnmarkedAndTaggedControlsAreSteppedOver) {
    PlainForm form(session, {}, "00001");
    form.Type("TxtLastname", "Roe");
    form.Type("txtStreet", "2 Main");
    ScreenControls controls;
    for (ScreenControl control : form.Controls()) {
        control.changed = control.changed && control.name != "TxtLastname";
        control.tag = control.name == "txtStreet" ? "NOTCLIENT" : "";
        controls.Add(control);
    }
    session.Reply = "left over";
    EXPECT_EQ(WriteClientChanges(session, controls, form.List()), 0);
    EXPECT_EQ(session.Reply, "");
    EXPECT_EQ(agency.Rows("select area from changes"), Lines{});
}

TEST_F(ClientChanges, TheHistoryShowsTheLatestFirst) {
    const auto add = [this](const char* type, const char* area, int day, const char* time,
                            const char* status) {
        agency.Insert("kestrava.changes", {{"Type", type},
                                           {"Area", area},
                                           {"Date", Date::FromCivil(2026, 1, day)},
                                           {"Time", time},
                                           {"User", "ann"},
                                           {"Status", status},
                                           {"reason", "why"}});
    };
    add("CLI", "00001", 5, "09:00:00 AM", "Edit");
    add("CLI", "00001", 31, "02:00:00 PM", "Edit");
    add("CLI", "00001", 31, "09:00:00 AM", "DELETED");
    add("CLI", "00001", 31, "10:00:00 AM", "Bill Rate");
    add("CLI", "00002", 31, "10:00:00 AM", "Edit");
    add("AUT", "00001", 31, "10:00:00 AM", "Edit");
    add("CLI", "00001", 6, "noon", "Edit");
    Lines shown;
    for (const HistoryRow& row : LoadHistory(*session.dbMainWork, ClientHistoryStatement("00001"))) {
        shown.push_back(row.date + " " + row.time + " " + row.user + " " + row.status + " " + row.reason);
    }
    // The time is text and sorts as text: nine in the morning stands above two in the afternoon.
    EXPECT_EQ(shown, (Lines{"Jan/31/2026 09:00:00 AM ann DELETED why", "Jan/31/2026 02:00:00 PM ann Edit why",
                            "Jan/06/2026 noon ann Edit why", "Jan/05/2026 09:00:00 AM ann Edit why"}));
}

}  // namespace
}  // namespace kv
