#include <gtest/gtest.h>

#include "base/text.h"
#include "clients/client_fixture.h"
#include "clients/client_list.h"
#include "clients/client_rights.h"
#include "clients/lookups.h"

namespace kv {
namespace {

using test::Lines;

class ClientListTest : public test::ClientTest {
  protected:
    std::string Ids(const ClientLimits& limits) {
        Lines ids;
        for (Recordset list = OpenClientList(session, limits); !list.Eof(); list.MoveNext()) {
            ids.push_back(list.Text("CLIENT"));
        }
        return Join(ids, " ");
    }
    void AddAuthorization(const std::string& client, const char* status, int daysAhead,
                          const Value& visitType = "HHA") {
        agency.Insert("Authorizations", {{"CLIENT", client},
                                         {"status_code", status},
                                         {"to_DATE", session.clock.Today().AddDays(daysAhead)},
                                         {"visit_type", visitType}});
    }
};

TEST_F(ClientListTest, HoldsTheClientsOfTheLimits) {
    const Value none = Date();
    const Value birthday = Date::FromCivil(1940, 5, 6);
    const Value march = Date::FromCivil(2026, 3, 1);
    const Value april = Date::FromCivil(2026, 4, 1);
    AddClient("00001", {{"grouping", "North"},
                        {"MANAGER", "M1"},
                        {"BDATE", birthday},
                        {"First_contact", march},
                        {"STARTSERVC", april}});
    AddClient("00002", {{"grouping", "South"},
                        {"MANAGER", "M2"},
                        {"BDATE", none},
                        {"First_contact", april},
                        {"STARTSERVC", march}});
    AddClient("00003", {{"CASESTATCD", "C"}, {"grouping", "north"}, {"BDATE", none}});
    AddClient("00004", {{"CASESTATCD", "S"}, {"MANAGER", "M1"}, {"BDATE", birthday}});
    AddClient("00005",
              {{"CASESTATCD", "D"}, {"BDATE", birthday}, {"First_contact", none}, {"STARTSERVC", none}});
    AddClient("00006", {{"CASESTATCD", "Z"}, {"potientalstatus", "Active"}, {"BDATE", birthday}});
    AddClient("00007", {{"CASESTATCD", "Z"}, {"potientalstatus", "InActive"}, {"BDATE", birthday}});
    AddClient("99900", {{"ISTEMPLATE", 1}, {"BDATE", none}});
    AddClient("00008", {{"ISTEMPLATE", Value()}});

    struct Case {
        ClientLimits limits;
        std::string manager;
        std::string ids;
    };
    const std::vector<Case> cases = {
        {{"ACTIVE", "", "ALL"}, "all", "00001 00002"},
        {{"", "", ""}, "all", "00001 00002"},
        {{"CLOSED", "", "ALL"}, "all", "00003"},
        {{"Suspended", "", "ALL"}, "all", "00004"},
        {{"DECEASED", "", "ALL"}, "all", "00005"},
        {{"POTENTIAL", "Active", "ALL"}, "all", "00006"},
        {{"POTENTIAL", "InActive", "ALL"}, "all", "00007"},
        {{"TEMPLATES", "", "ALL"}, "all", "99900"},
        {{"ALL CLIENTS", "", "ALL"}, "all", "00001 00002 00003 00004 00005 00006 00007"},
        {{"ALL CLIENTS", "", "North"}, "all", "00001 00003"},
        {{"ALL CLIENTS", "", "ALL"}, "M1", "00001 00004"},
        {{"ALL CLIENTS", "", "North"}, "M1", "00001"},
        {{"First Contact Check", "", "ALL"}, "all", "00002"},
        {{"First Contact Check", "", "ALL"}, "M1", ""},
        {{"Birthday Check", "", "ALL"}, "all", "00002 00003"},
        {{"Birthday Check", "", "North"}, "all", "00003"},
    };
    for (const Case& each : cases) {
        session.Manager = each.manager;
        EXPECT_EQ(Ids(each.limits), each.ids)
            << each.limits.status << "/" << each.limits.group << "/" << each.manager;
    }
}

TEST_F(ClientListTest, AuthorizationCheckFindsWhatNeedsFixing) {
    const ClientLimits check{"Authorization Check", "", "ALL"};
    EXPECT_EQ(ClientCondition(session, check), "client in ('99999')");
    for (const char* id : {"00001", "00002", "00003", "00004", "00005", "00006"}) {
        AddClient(id);
    }
    AddAuthorization("00001", "P", 8);
    AddAuthorization("00001", "P", 30);
    AddAuthorization("00002", "P", 7);
    AddAuthorization("00003", "A", 30);
    AddAuthorization("00004", "A", 30, "");
    AddAuthorization("00005", "A", 30, Value());
    EXPECT_EQ(Ids(check), "00001 00004");
    AddClient("99999");
    EXPECT_EQ(Ids(check), "00001 00004 99999");
}

TEST_F(ClientListTest, AnApostropheInALimitIsRefused) {
    try {
        ClientCondition(session, {"ACTIVE", "", "St. Mary's"});
        FAIL() << "the statement would have been another one";
    } catch (const EngineError& error) {
        EXPECT_EQ(error.Number(), engine_error::kSyntaxInExpression);
    }
}

TEST_F(ClientListTest, KeepsTheClientAndTheOrder) {
    for (const char* id : {"00001", "00002", "00003"}) {
        AddClient(id);
    }
    session.ClientSort = "client DESC ";
    ClientListData data = RefreshClientList(session, {}, "00002");
    EXPECT_EQ(data.list.Text("CLIENT"), "00002");
    EXPECT_EQ(data.list.AbsolutePosition(), 1);
    EXPECT_EQ(RefreshClientList(session, {}, "00009").list.Text("CLIENT"), "00003");
    EXPECT_TRUE(RefreshClientList(session, {"CLOSED", "", ""}, "00002").list.Eof());
    EXPECT_FALSE(FindInList(data.list, "00009"));
    EXPECT_EQ(data.list.Text("CLIENT"), "00002") << "a find without a match stays";
}

TEST_F(ClientListTest, TheTreeHasALetterForEachFirstLetterOfLastNames) {
    const char* const names[][3] = {
        {"mendez", "Ana", "A"}, {"Adams", "Zoe", "A"}, {"Adams", " Bob ", "S"}, {"\xC3\x89mile", "Luc", "A"},
        {"Easton", "Kim", "A"}, {"Ezra", "Tom", "A"},  {" Moss ", "Al", "A"},   {"", "Nameless", "A"},
        {"  ", "Blank", "A"},   {"adler", "Eve", "C"},
    };
    int number = 0;
    for (const auto& [last, first, status] : names) {
        agency.Client("0000" + std::to_string(number++), last, first, {{"CASESTATCD", status}});
    }
    Lines shown;
    const ClientTree tree = LoadClientTree(session, "ISTEMPLATE = 0");
    for (const ClientTreeNode& node : tree.nodes) {
        shown.push_back(node.letter);
        for (const ClientTreeRow& row : node.rows) {
            shown.push_back(row.id + (row.marked ? "* " : " ") + row.text);
        }
    }
    const Lines expected = {"A",
                            "00002* Adams, Bob (S)",
                            "00001 Adams, Zoe (A)",
                            "00009* adler, Eve (C)",
                            "E",
                            "00004 Easton, Kim (A)",
                            "00005 Ezra, Tom (A)",
                            "\xC3\x89",
                            "00003 \xC3\x89mile, Luc (A)",
                            "M",
                            "00006 Moss, Al (A)",
                            "00000 mendez, Ana (A)"};
    EXPECT_EQ(shown, expected);
}

TEST_F(ClientListTest, MoreThanFortyRowsCollapse) {
    for (int i = 10; i < 50; ++i) {
        AddClient("000" + std::to_string(i));
    }
    EXPECT_FALSE(LoadClientTree(session, "ISTEMPLATE = 0").collapsed);
    AddClient("00050");
    EXPECT_TRUE(LoadClientTree(session, "ISTEMPLATE = 0").collapsed);
}

TEST_F(ClientListTest, LookupsStandInTheOrderOfTheirSources) {
    agency.Insert("main.NURSE", {{"code", "2"}, {"description", "Zwick"}});
    agency.Insert("main.NURSE", {{"code", "1"}, {"description", "abel"}});
    const std::vector<LookupItem> nurses = LoadLookup(session, LookupSource::dbNurse);
    ASSERT_EQ(nurses.size(), 2U);
    EXPECT_EQ(nurses[0].code + nurses[0].description, "1abel");
    EXPECT_EQ(LoadLookup(session, LookupSource::dbColor)[0].description, "Red")
        << "in the order of the table";
    EXPECT_EQ(LoadLookup(session, LookupSource::DBDistrict)[0].code, "Hill Side");
    for (const char* group : {"South", "North"}) {
        agency.Insert("cli_group", {{"Description", group}});
        agency.Insert("Ref_group", {{"Description", group}});
    }
    EXPECT_EQ(LoadDescriptions(session, "cli_group"), (Lines{"South", "North"}));
    EXPECT_EQ(LoadDescriptions(session, "Ref_group"), (Lines{"North", "South"}));
}

TEST_F(ClientListTest, RightsSetTheSessionAndHideSections) {
    session.Screens = "CLIA CLIE *";
    session.Blocked = "CLID";
    session.settings.Set("Setting", "OFF_LINE", "True");
    agency.Insert("Screens", {{"Screen", "CLID"}, {"access_code", "CLID"}});
    agency.Insert("Screens", {{"Screen", "LOGV"}, {"access_code", "CLID"}});
    const ClientRights rights = AskClientRights(session);
    EXPECT_TRUE(session.CanAdd && session.CanSave && session.OffLine && rights.billRates && rights.ssn);
    EXPECT_FALSE(session.CanDelete || rights.documentedEvents);
    EXPECT_EQ(agency.Rows("select access_code from Screens where screen = 'CLIB'", "main"), Lines{"*"});

    session.Screens = "x";
    ClientRights again;
    AskSectionRights(session, again);
    EXPECT_TRUE(again.billRates) << "the default of the first asker stays registered: everybody's";
}

}  // namespace
}  // namespace kv
