#include <gtest/gtest.h>

#include "base/text.h"
#include "clients/client_fixture.h"
#include "clients/client_moves.h"

namespace kv {
namespace {

using test::Lines;
using test::PlainForm;

class ClientMoves : public test::ClientTest {
  protected:
    void AddThree() {
        AddClient("00001", {{"LASTNAME", "Grant"}, {"FIRSTNAM", "Lee"}, {"SSN", "123450000"}});
        AddClient("00002", {{"LASTNAME", "Lee"}, {"FIRSTNAM", "Ann"}, {"SSN", "000029999"}});
        AddClient("00003", {{"LASTNAME", "Leeds"}, {"FIRSTNAM", "Leeroy"}});
    }
};

TEST_F(ClientMoves, StayInTheListAndSayWhere) {
    AddThree();
    PlainForm form(session);
    struct Case {
        ListMove move;
        const char* id;
        Lines said;
    };
    const std::vector<Case> cases = {
        {ListMove::Next, "00002", {}},
        {ListMove::Last, "00003", {}},
        {ListMove::Next, "00003", {"message: Moving to the Last record in the Client File"}},
        {ListMove::Previous, "00002", {}},
        {ListMove::First, "00001", {}},
        {ListMove::Previous, "00001", {"message: Moving to the first record in the Client File"}},
    };
    for (const Case& each : cases) {
        EXPECT_TRUE(MoveInClientList(session, form, each.move));
        form.Show();
        EXPECT_EQ(form.List().Text("CLIENT"), each.id);
        EXPECT_EQ(agency.Said(), each.said);
    }
}

TEST_F(ClientMoves, AnEmptyListHasNowhereToGo) {
    PlainForm form(session);
    EXPECT_FALSE(MoveInClientList(session, form, ListMove::Next));
    EXPECT_FALSE(MoveInClientList(session, form, ListMove::Previous));
    EXPECT_FALSE(MoveInClientList(session, form, ListMove::First));
    EXPECT_EQ(agency.Said(), (Lines{"message: You must Add a Client before skipping",
                                    "message: You must Add a Client before skipping"}));
    EXPECT_TRUE(QuickFind(form.List(), "Lee").empty());
}

TEST_F(ClientMoves, EachAsksForUnsavedChangesAndKeepsToFaults) {
    AddThree();
    PlainForm form(session);
    form.Type("txtStreet", "9 Elm");
    agency.ports.dialogs.Answer({true});
    EXPECT_TRUE(MoveToTreeClient(session, form, "00003"));
    EXPECT_EQ(session.PickedClient, "00003");
    EXPECT_EQ(form.List().Text("CLIENT"), "00003");
    EXPECT_EQ(agency.Rows("select client from clientpr where street = '9 Elm'"), Lines{"00001"});

    form.Show();
    form.Type("TDBCombo1", "");
    EXPECT_FALSE(MoveToTreeClient(session, form, "00001"));
    EXPECT_FALSE(MoveInClientList(session, form, ListMove::First));
    EXPECT_FALSE(MayQuickFind(session, form, "Lee"));
    EXPECT_EQ(form.List().Text("CLIENT"), "00003");
}

TEST_F(ClientMoves, APickedClientMustBeInTheLimits) {
    AddThree();
    AddClient("00004", {{"CASESTATCD", "C"}});
    PlainForm form(session, {}, "00002");
    MoveToPickedClient(session, form, "00004");
    EXPECT_EQ(form.List().Text("CLIENT"), "00002");
    EXPECT_EQ(agency.Said(),
              Lines{"message: Could not show client because your selected client is not included in the "
                    "'Limit Client by:' section."});
    MoveToPickedClient(session, form, "00001");
    EXPECT_EQ(form.List().Text("CLIENT"), "00001");
}

TEST_F(ClientMoves, QuickFindSearchesTheLimitedList) {
    AddThree();
    AddClient("00005", {{"LASTNAME", "Lee"}, {"CASESTATCD", "C"}});
    PlainForm form(session, {}, "00003");
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"2", "00002"},      // in an id and in another client's SSN: the id counts
        {"12345", "00001"},  // in no id
        {" 3 ", "00003"},   {"77", ""},     {"lee", "00002 00003 00001 00003"},
        {"grant", "00001"}, {"nobody", ""},
    };
    for (const auto& [text, ids] : cases) {
        Lines found;
        for (const QuickFindRow& row : QuickFind(form.List(), text)) {
            found.push_back(row.id);
        }
        EXPECT_EQ(Join(found, " "), ids) << text;
    }
    EXPECT_EQ(form.List().Text("CLIENT"), "00003") << "a search moves nothing";
    EXPECT_FALSE(MoveToQuickFound(session, form, ""));
    EXPECT_EQ(agency.Said(), Lines{"message: There was no Client found"});
    EXPECT_TRUE(MoveToQuickFound(session, form, "00002"));
    EXPECT_EQ(form.List().Text("CLIENT"), "00002");

    EXPECT_FALSE(MayQuickFind(session, form, ""));
    form.List().AddNew();
    EXPECT_FALSE(MayQuickFind(session, form, "Lee"));
    EXPECT_EQ(agency.Said(), Lines{"message: You must save the client information first"});
}

}  // namespace
}  // namespace kv
