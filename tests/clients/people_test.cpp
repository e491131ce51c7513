#include <gtest/gtest.h>

#include "base/text.h"
#include "clients/client_fixture.h"
#include "clients/people_list.h"
#include "clients/potential_status.h"

namespace kv {
namespace {

using test::Lines;

class People : public test::ClientTest {
  protected:
    void SetUp() override {
        agency.Insert("doctors", {{"Name", "Dr. Moss"}, {"Note", "call first"}});
        agency.Insert("doctors", {{"Name", "Dr. Abel"}});
    }
    std::string Names() {
        Lines names;
        for (const NamedNote& each : LoadPeople(session, PeopleTable::doctors)) {
            names.push_back(each.name + (each.note.empty() ? "" : "=" + each.note));
        }
        return Join(names, " ");
    }
};

TEST_F(People, AddedAndRenamedOnesTakeTheirPlace) {
    Recordset people = OpenPeople(session, PeopleTable::doctors);
    EXPECT_FALSE(SavePerson(session, people));
    EXPECT_EQ(agency.Said(), Lines{"message: You must press 'Add New' first to add a record"});
    people.AddNew();
    people.Set("Name", "Dr. Gray");
    EXPECT_TRUE(SavePerson(session, people));
    EXPECT_EQ(people.Text("Name"), "Dr. Gray");
    EXPECT_EQ(people.AbsolutePosition(), 1);
    people.Edit();
    people.Set("Name", "Dr. Zorn");
    EXPECT_TRUE(SavePerson(session, people));
    EXPECT_EQ(people.AbsolutePosition(), 2);
    EXPECT_EQ(Names(), "Dr. Abel Dr. Moss=call first Dr. Zorn");
    EXPECT_TRUE(FindPerson(people, "dr. moss"));
    EXPECT_FALSE(FindPerson(people, "Dr. Nobody"));
    EXPECT_EQ(people.Text("Name"), "Dr. Moss");
    for (const PeopleColumn& column : PeopleColumns()) {
        EXPECT_TRUE(people.HasField(column.field)) << column.heading;
    }
}

TEST_F(People, AreDeletedOnceTheOperatorIsSure) {
    Recordset people = OpenPeople(session, PeopleTable::doctors);
    people.MoveLast();
    agency.ports.dialogs.Answer({false, true, true});
    EXPECT_FALSE(DeletePerson(session, people));
    EXPECT_TRUE(DeletePerson(session, people));
    EXPECT_EQ(people.Text("Name"), "Dr. Abel") << "behind the last one the one before is shown";
    EXPECT_TRUE(DeletePerson(session, people));
    const std::string question = "question: Are you sure you want to delete this record?\r\nDr. ";
    EXPECT_EQ(agency.Said(), (Lines{question + "Moss", question + "Moss", question + "Abel"}));
    EXPECT_FALSE(DeletePerson(session, people));
    EXPECT_FALSE(MovePerson(session, people, ListMove::Next));
    EXPECT_EQ(agency.Said(),
              (Lines{"message: There are no records to delete", "message: There are no records to move to"}));
}

TEST_F(People, MovesStayInTheList) {
    Recordset people = OpenPeople(session, PeopleTable::doctors);
    MovePerson(session, people, ListMove::Previous);
    MovePerson(session, people, ListMove::Last);
    MovePerson(session, people, ListMove::Next);
    EXPECT_EQ(people.Text("Name"), "Dr. Moss");
    EXPECT_EQ(agency.Said(),
              (Lines{"message: Moved to the first Record", "message: Moved to the last Record"}));
}

class PotentialStatus : public test::ClientTest {
  protected:
    void SetUp() override {
        AddClient("00001", {{"CASESTATCD", "Z"}, {"potientalstatus", "Active"}});
        for (const char* client : {"00001", "00002"}) {
            agency.Insert("hkeylonglat", {{"CLTid", client}, {"phonenum", "5550000001"}, {"Status", "Z"}});
        }
    }
    std::string State() {
        return agency.Rows("select casestatcd, potientalstatus from clientpr")[0] + " " +
               Join(agency.Rows("select status from hkeylonglat order by cltid", "main"), "");
    }
};

TEST_F(PotentialStatus, ChangesWhenTheOperatorIsSure) {
    Recordset list = session.dbMainWork->OpenRecordset("select * from clientpr");
    agency.ports.dialogs.Answer({false, true, true, true, true});
    EXPECT_EQ(ChangePotentialStatus(session, list, PotentialChoice::ActiveClient),
              PotentialResult::Unchanged);
    EXPECT_EQ(State(), "Z|Active ZZ");
    session.OffLine = true;
    EXPECT_EQ(ChangePotentialStatus(session, list, PotentialChoice::Inactive), PotentialResult::Changed);
    EXPECT_EQ(State(), "Z|InActive ZZ");
    EXPECT_EQ(ChangePotentialStatus(session, list, PotentialChoice::Active), PotentialResult::Changed);
    EXPECT_EQ(State(), "Z|Active ZZ");
    EXPECT_EQ(ChangePotentialStatus(session, list, PotentialChoice::ActiveClient),
              PotentialResult::BecameActive);
    EXPECT_EQ(State(), "A|Active AZ");
    EXPECT_EQ(agency.Said(),
              Lines(4, "question: Are you sure you wish to change the status of this client?"));
    EXPECT_EQ(agency.Rows("select Area, User, Status, reason from changes order by reason"),
              (Lines{"00001|ANN|Edit|Status: Potential - Active to Active\r\n",
                     "00001|ANN|Edit|Status: Potential - Active to Potential - InActive\r\n",
                     "00001|ANN|Edit|Status: Potential - InActive to Potential - Active\r\n"}));
    EXPECT_EQ(agency.Rows("select User_Id, Status, status_date from clientpr"),
              Lines{"ANN|E|2026-03-04 09:30:00"});
    EXPECT_EQ(agency.Rows("select Type, Module, ID from trans", "trans"), Lines{"E|C|00001"});
    EXPECT_EQ(ChangePotentialStatus(session, list, PotentialChoice::Inactive), PotentialResult::Changed);
    EXPECT_EQ(State(), "A|Active AZ") << "no potential client any more";
    EXPECT_EQ(agency.Said().size(), 2U);
}

TEST_F(PotentialStatus, ARefusedWriteLeavesNoEditBehind) {
    Workspace otherSeat;
    Recordset theirs =
        otherSeat.OpenDatabase(agency.Place("kestrava"))->OpenRecordset("select * from clientpr");
    theirs.Edit();
    Recordset list = session.dbMainWork->OpenRecordset("select * from clientpr");
    agency.ports.dialogs.Answer({true});
    EXPECT_THROW(ChangePotentialStatus(session, list, PotentialChoice::ActiveClient), EngineError);
    EXPECT_EQ(list.EditMode(), EditState::None);
    EXPECT_EQ(State(), "Z|Active ZZ");
}

}  // namespace
}  // namespace kv
