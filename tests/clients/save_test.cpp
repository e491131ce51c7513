#include <gtest/gtest.h>

#include "clients/client_fixture.h"
#include "clients/client_save.h"

namespace kv {
namespace {

using test::Lines;
using test::PlainForm;

constexpr const char* kLockedWords =
    "Another user is viewing this same client, so we can not save.\r\n"
    "Please have the other user exit the client and save again.";

class ClientSave : public test::ClientTest {
  protected:
    void SetUp() override {
        AddClient("00001", {{"LASTNAME", "Doe"},
                            {"FIRSTNAM", "Jane"},
                            {"STREET", "1 Main"},
                            {"ZIP", "12345"},
                            {"PHONE", "5550000001"},
                            {"istelephony", true},
                            {"grouping", "North"},
                            {"MANAGER", "M1"},
                            {"DISASTER_CODE", "RED"},
                            {"Comments", "note"}});
        AddClient("00002");
        for (const char* client : {"00001", "00002"}) {
            const test::Cells copies = {{"CLIENT", client}, {"cli_name", "old"}};
            agency.Insert("assign", copies);
            for (const char* code : {"A", "C"}) {
                agency.Insert("sch_day", {{"CLIENT", client},
                                          {"cli_name", "old"},
                                          {"cli_group", "old"},
                                          {"DISASTER_CODE", "old"},
                                          {"Manager", "old"},
                                          {"Sch_code", code}});
            }
        }
        AddPhone("00001", "5550000001");
        AddPhone("00001", "5559999999");
        AddPhone("00002", "5550000001");
    }
    void AddPhone(const char* client, const char* phone) {
        agency.Insert("hkeylonglat", {{"CLTid", client}, {"phonenum", phone}, {"Status", "A"}});
    }
    Lines Assignments() { return agency.Rows("select client, cli_name from assign order by client"); }
    Lines Visits() {
        return agency.Rows(
            "select client, sch_code, cli_name, cli_group, disaster_code, manager from sch_day order by "
            "client, sch_code");
    }
    Lines Phones() {
        return agency.Rows(
            "select cltid, phonenum, branchid, addr, zip, status from hkeylonglat order by cltid, phonenum",
            "main");
    }
    Lines Stamps() {
        return agency.Rows(
            "select lastname, vendor, status_date, status, user_id, deleted, comments from clientpr where "
            "client = '00001'");
    }

    const Lines untouchedPhones = {"00001|5550000001|<Null>|<Null>|<Null>|A",
                                   "00001|5559999999|<Null>|<Null>|<Null>|A",
                                   "00002|5550000001|<Null>|<Null>|<Null>|A"};
    const Lines untouchedVisits = {"00001|A|old|old|old|old", "00001|C|old|old|old|old",
                                   "00002|A|old|old|old|old", "00002|C|old|old|old|old"};
};

TEST_F(ClientSave, TheKeyCopiesTheClientToEverythingThatHoldsIt) {
    PlainForm form(session, {}, "00001");
    form.Type("TxtLastname", "Roe ");
    form.Type("TxtPhone", "5550000003");
    form.Type("cmbGroup", "South ");
    form.Type("TDBCombo4", "Mike Minor");
    form.Type("TDBCombo25", "Blue");
    form.Type("TXTbox", "new note");
    EXPECT_TRUE(SaveClient(session, form));

    EXPECT_EQ(agency.Said(), Lines{});
    EXPECT_EQ(Assignments(), (Lines{"00001|Roe, Jane", "00002|old"}));
    EXPECT_EQ(Visits(), (Lines{"00001|A|Roe, Jane|South|BLU|M2", "00001|C|Roe, Jane|South|BLU|old",
                               "00002|A|old|old|old|old", "00002|C|old|old|old|old"}));
    EXPECT_EQ(Phones(),
              (Lines{"00001|5550000003|01|1 Main|12345|A", untouchedPhones[1], untouchedPhones[2]}));
    EXPECT_EQ(Stamps(), Lines{"Roe |01|2026-03-04 09:30:00|E|ANN|False|new note"});
    EXPECT_EQ(agency.Rows("select area from changes"), Lines{"00001"});
    EXPECT_EQ(form.refreshes, 1) << "the name moves the client in the list";
    EXPECT_EQ(form.List().Text("CLIENT"), "00001");
    EXPECT_EQ(CountClientDifferences(form.Controls(), form.List()), 0);
    EXPECT_FALSE(agency.ports.progress.hourglass);
}

TEST_F(ClientSave, WithoutAChangeTheStampsAndCopiesAreStillWritten) {
    PlainForm form(session, {}, "00001");
    EXPECT_TRUE(SaveClient(session, form));
    EXPECT_EQ(Assignments(), (Lines{"00001|old", "00002|old"}));
    EXPECT_EQ(Visits()[0], "00001|A|old|North|RED|M1");
    EXPECT_EQ(Stamps(), Lines{"Doe|01|2026-03-04 09:30:00|E|ANN|False|note"});
    EXPECT_EQ(agency.Rows("select area from changes"), Lines{});
    EXPECT_EQ(form.refreshes, 0);
}

TEST_F(ClientSave, AnEmptyManagerBecomesAnEmptyText) {
    PlainForm form(session, {}, "00001");
    form.Type("TDBCombo4", "");
    EXPECT_TRUE(SaveClient(session, form));
    EXPECT_EQ(agency.Rows("select sch_code from sch_day where manager = '' and client = '00001'"),
              Lines{"A"});
}

TEST_F(ClientSave, ThePhoneIndexFollowsTheTelephonyMark) {
    struct Case {
        const char* what;
        bool telephony;
        const char* phone;
        const char* mainRow;  ///< "" for none
    };
    const std::vector<Case> cases = {
        {"a new phone replaces the old one", true, "5550000003", "00001|5550000003"},
        {"a phone that the index held already stands there once", true, "5559999999", "00001|5559999999"},
        {"no telephony, no row", false, "5550000003", ""},
        {"no phone, no row", true, "", ""},
    };
    for (const Case& each : cases) {
        agency.Code().Execute("delete from hkeylonglat");
        agency.Work().Execute("update clientpr set phone = '5550000001' where client = '00001'");
        AddPhone("00001", "5550000001");
        if (std::string(each.phone) == "5559999999") {
            AddPhone("00001", each.phone);
        }
        PlainForm form(session, {}, "00001");
        form.Type("Check2", each.telephony);
        form.Type("TxtPhone", each.phone);
        EXPECT_TRUE(SaveClient(session, form)) << each.what;
        const Lines rows = agency.Rows("select cltid, phonenum from hkeylonglat", "main");
        EXPECT_EQ(rows, *each.mainRow != '\0' ? Lines{each.mainRow} : Lines{}) << each.what;
    }
}

TEST_F(ClientSave, FaultsAreListedInTheirOrder) {
    struct Case {
        const char* what;
        std::vector<std::pair<const char*, const char*>> typed;
        Lines faults;
    };
    const std::vector<Case> cases = {
        {"nothing wrong", {}, {}},
        {"everything empty",
         {{"TxtFirstnam", " "},
          {"TxtLastname", ""},
          {"TDBCombo3", ""},
          {"TDBCombo1", " "},
          {"TDBCombo20", ""}},
         {"You must fill in the first name field.", "You must fill in the last name field.",
          "You must fill in 'Providers Gender' field in the Required section.",
          "You must fill in 'Language' field in the Required section.",
          "You must fill in 'Ordered Discipline' field in the Required section."}},
        {"everything unknown",
         {{"TDBCombo8", "Cake"},
          {"TDBCombo5", "Nobody"},
          {"TDBCombo4", "Nobody"},
          {"TDBGender", "?"},
          {"TDBCombo29", "Moon"},
          {"TDBCombo20", "Magic"},
          {"TDBCombo1", "Elvish"},
          {"TDBCombo3", "?"}},
         {"The 'Providers Gender:' you entered is not in the drop down list.",
          "The 'Language:' you entered is not in the drop down list.",
          "The 'Ordered Discipline:' you entered is not in the drop down list.",
          "The 'District:' you entered is not in the drop down list.",
          "The 'Gender:' you entered is not in the drop down list.",
          "The 'Manager:' you entered is not in the drop down list.",
          "The 'Supervisor:' you entered is not in the drop down list.",
          "The 'Diet:' you entered is not in the drop down list."}},
        {"the lists are searched without regard to case",
         {{"TDBCombo1", "latin"}, {"TDBCombo29", "HILL SIDE"}},
         {}},
    };
    for (const Case& each : cases) {
        PlainForm form(session, {}, "00001");
        for (const auto& [control, text] : each.typed) {
            form.Type(control, text);
        }
        EXPECT_EQ(RequiredInfoFaults(session, form.List(), form.Controls()), each.faults) << each.what;
    }
}

TEST_F(ClientSave, FaultsStopTheSave) {
    PlainForm form(session, {}, "00001");
    form.Type("TxtLastname", "");
    EXPECT_FALSE(SaveClient(session, form));
    EXPECT_EQ(agency.Said(), (Lines{"fault: Information you must fix on this client.",
                                    "fault:  ", "fault: You must fill in the last name field."}));
    EXPECT_EQ(Visits(), untouchedVisits);
    EXPECT_EQ(Phones(), untouchedPhones);
    EXPECT_EQ(form.restores, 0) << "the operator goes on where the fault is";
    EXPECT_FALSE(MayLeaveClient(session, form));
}

TEST_F(ClientSave, PatternsNeedNoNameAndTemplatesNothing) {
    AddClient("99950", {{"LASTNAME", ""}, {"FIRSTNAM", Value()}});
    agency.Client("99900", "", "", {{"ISTEMPLATE", 1}});
    PlainForm pattern(session, {}, "99950");
    PlainForm patternless(session, {"TEMPLATES", "", ""}, "99900");
    EXPECT_TRUE(SaveClient(session, pattern));
    EXPECT_TRUE(SaveClient(session, patternless));
    PlainForm empty(session, {"CLOSED", "", ""});
    EXPECT_FALSE(CheckRequiredInfo(session, empty));
    EXPECT_EQ(PromptToSaveClient(session, empty), PromptResult::NothingToSave);
    EXPECT_EQ(agency.Said(), Lines{});
}

TEST_F(ClientSave, NamesLoseTheirCommasAndApostrophes) {
    PlainForm form(session, {}, "00001");
    form.Type("TxtFirstnam", "D'Ar,cy'");
    form.Type("TxtLastname", "O'Hara");
    EXPECT_TRUE(SaveClient(session, form));
    EXPECT_EQ(agency.Said(), (Lines{"message: You may not have a , or a ' in your name",
                                    "message: You may not have a , or a ' in your name"}));
    EXPECT_EQ(Assignments()[0], "00001|OHara, DArcy");
}

TEST_F(ClientSave, AnErrorLeavesTheStepsBeforeItDone) {
    struct Case {
        const char* what;
        const char* group;
        std::optional<EngineError> failure;
        std::string said;  ///< "" for the engine's own words
        const char* visit;
    };
    const std::vector<Case> cases = {
        {"an apostrophe in the group", "O'Group", std::nullopt, "", "00001|A|Roe, Jane|old|old|old"},
        {"the row is locked", "South", EngineError(engine_error::kLockedByOther, "locked"), kLockedWords,
         "00001|A|Roe, Jane|South|RED|M1"},
        {"read-only notes", "South", EngineError(engine_error::kUpdateCancelled, "cancelled"),
         std::string("We found read only information in the notes, and removed it.\r\n") + kLockedWords,
         "00001|A|Roe, Jane|South|RED|M1"},
        {"any other error", "South", EngineError(engine_error::kDiskFull, "Disk full."), "Disk full.",
         "00001|A|Roe, Jane|South|RED|M1"},
    };
    for (const Case& each : cases) {
        agency.Work().Execute("delete from changes");
        agency.Work().Execute(
            "update sch_day set cli_name = 'old', cli_group = 'old', disaster_code = 'old', manager = 'old'");
        agency.Work().Execute("update clientpr set phone = '5550000001' where client = '00001'");
        PlainForm form(session, {}, "00001");
        form.Type("TxtLastname", "Roe");
        form.Type("TxtPhone", "5550000003");
        form.Type("cmbGroup", each.group);
        form.failure = each.failure;
        EXPECT_FALSE(SaveClient(session, form)) << each.what;

        const Lines said = agency.Said();
        ASSERT_EQ(said.size(), 1U) << each.what;
        if (!each.said.empty()) {
            EXPECT_EQ(said[0], "message: " + each.said);
        }
        EXPECT_EQ(Phones()[0], "00001|5550000003|01|1 Main|12345|A") << each.what;
        EXPECT_EQ(Visits()[0], each.visit) << each.what;
        EXPECT_EQ(agency.Rows("select area from changes"), Lines()) << "no history of what was not stored";
        EXPECT_EQ(Stamps(), Lines{"Doe|<Null>|<Null>|<Null>|<Null>|False|note"}) << each.what;
        EXPECT_EQ(form.Controls().Text("TxtLastname"), "Doe") << each.what;
        EXPECT_EQ(form.List().EditMode(), EditState::None) << each.what;
        EXPECT_FALSE(agency.ports.progress.hourglass) << each.what;
    }
}

TEST_F(ClientSave, AnotherSeatThatHoldsTheRowStopsTheSave) {
    Workspace otherSeat;
    const DatabasePtr other = otherSeat.OpenDatabase(agency.Place("kestrava"));
    Recordset theirs = other->OpenRecordset("select * from clientpr where client = '00001'");
    theirs.Edit();
    PlainForm form(session, {}, "00001");
    EXPECT_FALSE(SaveClient(session, form));
    EXPECT_EQ(agency.Said(), Lines{std::string("message: ") + kLockedWords});
    theirs.CancelUpdate();
    EXPECT_TRUE(SaveClient(session, form));
}

TEST_F(ClientSave, ThePromptAppearsForDifferencesOnly) {
    struct Case {
        const char* what;
        const char* control;
        Value value;
        bool asks;
    };
    const std::vector<Case> cases = {
        {"another text", "txtStreet", "2 Main", true},
        {"the same text typed again", "txtStreet", "1 Main", false},
        {"a tick", "Check2", false, true},
        {"another code", "TDBCombo25", "Blue", true},
        {"a group", "cmbGroup", "South", true},
        {"holidays where Null stood", "CMBhol", "YES", true},
        {"nothing where Null stood", "CMBhol", "", false},
        {"directions where Null stood", "TXTdirections", "left", true},
        {"notes", "TXTbox", "new", true},
    };
    for (const Case& each : cases) {
        PlainForm form(session, {}, "00001");
        form.Type(each.control, each.value);
        agency.ports.dialogs.Answer(each.asks ? std::vector<bool>{false} : std::vector<bool>{});
        EXPECT_EQ(PromptToSaveClient(session, form),
                  each.asks ? PromptResult::Discarded : PromptResult::NothingToSave)
            << each.what;
        EXPECT_EQ(agency.Said().size(), each.asks ? 1U : 0U) << each.what;
        EXPECT_EQ(form.restores, each.asks ? 1 : 0) << each.what;
    }
    EXPECT_EQ(Stamps(), Lines{"Doe|<Null>|<Null>|<Null>|<Null>|False|note"});
    EXPECT_EQ(Visits(), untouchedVisits);

    PlainForm form(session, {}, "00001");
    form.Type("txtStreet", "2 Main");
    session.CanSave = false;
    EXPECT_EQ(PromptToSaveClient(session, form), PromptResult::NothingToSave);
}

TEST_F(ClientSave, ThePromptedSaveIsLighterThanTheKeys) {
    PlainForm form(session, {}, "00001");
    form.Type("TxtFirstnam", "Joan");
    form.Type("TxtPhone", "5550000003");
    form.Type("TDBCombo4", "Mike Minor");
    form.Type("TDBCombo25", "Blue");
    agency.ports.dialogs.Answer({true});
    EXPECT_EQ(PromptToSaveClient(session, form), PromptResult::Saved);
    EXPECT_EQ(agency.Said(),
              Lines{"question: Some information has changed, and is not saved.  Do you wish to save?"});
    EXPECT_EQ(Assignments()[0], "00001|Doe, Joan");
    EXPECT_EQ(Visits()[0], "00001|A|Doe, Joan|old|BLU|old")
        << "the group did not differ, the manager waits for the key";
    EXPECT_EQ(Phones(), untouchedPhones);
    EXPECT_EQ(Stamps(), Lines{"Doe|01|2026-03-04 09:30:00|E|ANN|False|note"});
    EXPECT_EQ(agency.Rows("select manager, phone from clientpr where client = '00001'"),
              Lines{"M2|5550000003"});
    EXPECT_EQ(form.refreshes, 0);

    form.Type("cmbGroup", "South");
    agency.ports.dialogs.Answer({true});
    EXPECT_EQ(PromptToSaveClient(session, form), PromptResult::Saved);
    EXPECT_EQ(Visits()[0], "00001|A|Doe, Joan|South|BLU|old");
}

TEST_F(ClientSave, OnTheRoadBothSavesLeaveAJournalRow) {
    session.OffLine = true;
    PlainForm first(session, {}, "00001");
    EXPECT_TRUE(SaveClient(session, first));
    PlainForm second(session, {}, "00002");
    second.Type("txtStreet", "2 Main");
    agency.ports.dialogs.Answer({true});
    EXPECT_EQ(PromptToSaveClient(session, second), PromptResult::Saved);
    EXPECT_EQ(agency.Rows("select type, module, id from trans order by id", "trans"),
              (Lines{"E|C|00001", "E|C|00002"}));
}

TEST_F(ClientSave, DiscardShowsTheRowAgain) {
    PlainForm form(session, {}, "00001");
    form.Type("txtStreet", "2 Main");
    DiscardClient(session, form);
    EXPECT_EQ(form.Controls().Text("txtStreet"), "1 Main");
    EXPECT_FALSE(agency.ports.progress.hourglass);
}

}  // namespace
}  // namespace kv
