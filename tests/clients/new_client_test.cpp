#include "clients/new_client.h"

#include "clients/client_delete.h"
#include "clients/client_fixture.h"
#include "clients/client_id.h"

namespace kv {
namespace {

using test::Lines;

class NewClients : public test::ClientTest {
  protected:
    NewClient Plain(const char* id) {
        NewClient client;
        client.id = id;
        client.start = Date::FromCivil(2026, 3, 4);
        return client;
    }
    Lines Row(const std::string& columns, const char* id) {
        return agency.Rows("select " + columns + " from clientpr where client = '" + id + "'");
    }
};

TEST_F(NewClients, IdsAreCountedPastThoseInUse) {
    AddClient("00001");
    AddClient("00003");
    AddClient("99900", {{"ISTEMPLATE", 1}});
    EXPECT_EQ(NextClientId(session, false), "00002");
    EXPECT_EQ(session.Ini().Get("KESTRAVA SYSTEM", "ClientID", "none"), "none") << "asking writes nothing";
    EXPECT_EQ(GenerateClientId(session, false), "00002");
    EXPECT_EQ(GenerateClientId(session, false), "00004");
    EXPECT_EQ(session.Ini().Get("KESTRAVA SYSTEM", "ClientID", ""), "4");
    EXPECT_EQ(GenerateClientId(session, true), "99901");
    EXPECT_EQ(session.Ini().Get("KESTRAVA SYSTEM", "ClientID", ""), "4") << "a template moves no counter";
    session.Ini().Set("KESTRAVA SYSTEM", "ClientID", "99898");
    EXPECT_EQ(GenerateClientId(session, false), "99899");
    EXPECT_EQ(GenerateClientId(session, false), std::nullopt);

    const std::pair<const char*, IdState> checks[] = {{" ", IdState::Empty},
                                                      {"1234", IdState::TooShort},
                                                      {" 00001 ", IdState::Used},
                                                      {"ABCDE", IdState::Free}};
    for (const auto& [id, state] : checks) {
        EXPECT_EQ(CheckNewId(session, id), state) << id;
    }
}

TEST_F(NewClients, ArePlainPotentialOrTemplates) {
    session.Manager = "M1";
    EXPECT_EQ(SaveNewClient(session, Plain("00010")).result, NewClientResult::Saved);
    NewClient potential = Plain("00011");
    potential.potential = true;
    SaveNewClient(session, potential);
    NewClient model = Plain("99900");
    model.asTemplate = true;
    SaveNewClient(session, model);
    const std::string columns =
        "casestatcd, potientalstatus, startservc, caseexpdat, first_contact, istemplate, manager";
    EXPECT_EQ(Row(columns, "00010"), Lines{"A|<Null>|2026-03-04 00:00:00|2036-03-04 00:00:00|<Null>|0|M1"});
    EXPECT_EQ(Row(columns, "00011"), Lines{"Z|Active|<Null>|<Null>|2026-03-04 00:00:00|0|M1"});
    EXPECT_EQ(Row("casestatcd, istemplate", "99900"), Lines{"A|1"});
    EXPECT_EQ(session.PickedEmployee, "99900");

    EXPECT_EQ(SaveNewClient(session, Plain("00010")).words, "00010 has already been used!");
    EXPECT_EQ(SaveNewClient(session, Plain("0012")).words, "You must enter a valid ID of 5 chars.");
    NewClient payer = Plain("00012");
    payer.payer = PayerItem{"Medicaid", 4};
    EXPECT_EQ(SaveNewClient(session, payer).result, NewClientResult::NoCallType);
    EXPECT_EQ(agency.Said(),
              Lines{"message: You must choose a valid Call Type Description, if you choose a Payer Source"});
    EXPECT_EQ(Row("client", "00012"), Lines());
}

TEST_F(NewClients, TakeTheRowsOfTheirPattern) {
    AddClient("99901", {{"ISTEMPLATE", 1},
                        {"LASTNAME", "Model"},
                        {"STREET", "1 Main"},
                        {"external_id", "X1"},
                        {"CITY", Value()},
                        {"MANAGER", "M2"}});
    agency.Insert("hkeylonglat", {{"CLTid", "99901"}, {"phonenum", "5551112222"}});
    agency.Insert("care_plan", {{"CLIENT", "99901"}, {"Description", "Bath"}});
    agency.Insert("cli_misc", {{"CLIENT", "99901"}, {"Area", "SKI"}, {"ID", "7"}});
    agency.Insert("cli_documents", {{"CLIENT", "99901"}, {"Path", "c:\\x"}});
    agency.Insert("cli_personnel", {{"CLIENT", "99901"}, {"ID", 3}});
    agency.Insert(
        "clirate",
        {{"CLIENT", "99901"}, {"visittype", "PCA"}, {"rate1", Currency::FromDouble(21.5)}, {"method", "V"}});
    session.OffLine = true;
    NewClient client = Plain("00020");
    client.pattern = "99901";
    client.payer = PayerItem{"Medicaid", 4};
    client.visitType = "PCA";
    client.visitDescription = "Personal Care";
    ASSERT_EQ(SaveNewClient(session, client).result, NewClientResult::Saved);
    EXPECT_EQ(Row("lastname, firstnam, external_id, street, city, manager, istemplate, casestatcd", "00020"),
              Lines{"|||1 Main||M2|0|A"})
        << "what was Null in a text has become empty";
    for (const char* table : {"care_plan", "cli_misc", "cli_documents", "cli_personnel"}) {
        EXPECT_EQ(agency.Rows("select client from " + std::string(table) + " order by client"),
                  (Lines{"00020", "99901"}))
            << table;
    }
    EXPECT_EQ(agency.Rows("select cltid, phonenum from hkeylonglat order by cltid", "main"),
              (Lines{"00020|5551112222", "99901|5551112222"}));
    EXPECT_EQ(agency.Rows("select visittype, method, rate1 from clirate where client = '00020'"),
              Lines{"PCA|V|21.5"});
    EXPECT_EQ(
        agency.Rows(
            "select client, bill_code, bill_name, visit_type, vis_desc, from_date, to_date, status_code, "
            "live_in, hrs, weekormonth, cobilling_type, emp_type from authorizations"),
        Lines{"00020|4|Medicaid|PCA|Personal Care|2026-03-04 00:00:00|2036-03-04 "
              "00:00:00|A|N|0|W|<Null>|FIELD"});
    EXPECT_EQ(agency.Rows("select type, module, id from trans", "trans"), Lines{"A|C|00020"});

    client.id = "00021";
    client.pattern.clear();
    SaveNewClient(session, client);
    EXPECT_EQ(agency.Rows("select visittype, description, method, rate1 from clirate where client = '00021'"),
              Lines{"PCA|Personal Care|H|0"})
        << "without a pattern's rate one is made";
    EXPECT_EQ(LoadTemplates(session).front().text, "First Model");
    EXPECT_FALSE(LoadTemplates(session).back().isTemplate);
}

class DeletedClients : public test::ClientTest {
  protected:
    bool Delete(const char* status) {
        form_ = std::make_unique<test::PlainForm>(session, ClientLimits{"ALL CLIENTS"}, "00001");
        return DeleteClient(session, *form_, status);
    }
    Lines Clients() { return agency.Rows("select client from clientpr order by client"); }
    std::unique_ptr<test::PlainForm> form_;
};

TEST_F(DeletedClients, AreRefusedWhileRowsStandAgainstThem) {
    AddClient("00001");
    for (int i = 0; i < 1200; ++i) {
        agency.Insert("sch_day", {{"CLIENT", "00001"}});
    }
    agency.Insert("Authorizations", {{"CLIENT", "00001"}});
    agency.Insert("archive.Payroll", {{"CLIENT", "00001"}});
    agency.Insert("archive.Billing", {{"CLIENT", "00001"}});
    agency.Insert("tasks", {{"client", "00001"}});
    EXPECT_FALSE(Delete("Active"));
    EXPECT_EQ(
        agency.Said(),
        (Lines{
            "fault: Cannot Delete this Client because:", "fault: Found 1 records on the Authorzation section",
            "fault: Found 1,200 records in Schedule Module", "fault: Found 1 records in Payroll History",
            "fault: Found 1 records in Billing History"}));
    session.OffLine = true;
    EXPECT_FALSE(Delete("Active"));
    EXPECT_EQ(agency.Said(), Lines{"message: You may not remove a client, while 'On the Road'"});
    EXPECT_EQ(Clients(), Lines{"00001"});
}

TEST_F(DeletedClients, LeaveOneTrace) {
    AddClient("00001", {{"LASTNAME", "Doe "}, {"FIRSTNAM", "Jane"}});
    AddClient("00002");
    agency.Insert("changes", {{"Type", "CLI"}, {"Area", "00001"}, {"reason", "older"}});
    agency.Insert("tasks", {{"client", "00001"}});
    agency.Insert("cli_documents", {{"CLIENT", "00001"}});
    agency.Insert("hkeylonglat", {{"CLTid", "00001"}});
    agency.ports.dialogs.Answer({false, true});
    EXPECT_FALSE(Delete("Active"));
    EXPECT_TRUE(Delete("Active"));
    EXPECT_EQ(Clients(), Lines{"00002"});
    EXPECT_EQ(form_->refreshes, 1);
    EXPECT_EQ(agency.Rows("select area, status, user, reason from changes"),
              Lines{"00001|DELETED|ANN|Deleted Client\r\n\r\nJane Doe"});
    EXPECT_EQ(agency.Rows("select client from tasks"), Lines{"00001"}) << "its To Do items stay behind";
    EXPECT_EQ(agency.Rows("select cltid from hkeylonglat", "main"), Lines());
    EXPECT_EQ(agency.Rows("select client from cli_documents"), Lines());
}

TEST_F(DeletedClients, TakeTheirRowsAlongWhenTheyWerePotential) {
    AddClient("00001", {{"casestatcd", "Z"}});
    for (const char* table : {"logging", "clirate", "Cli_Emp", "cli_misc", "cli_personnel", "CLI_Required",
                              "care_plan", "tasks"}) {
        agency.Insert(std::string("kestrava.") + table, {{"CLIENT", "00001"}});
    }
    agency.Insert("Authorizations", {{"CLIENT", "00001"}});
    agency.ports.dialogs.Answer({true});
    EXPECT_TRUE(Delete("Potential"));
    for (const char* table : {"logging", "clirate", "Cli_Emp", "cli_misc", "cli_personnel", "CLI_Required",
                              "care_plan", "tasks"}) {
        EXPECT_EQ(agency.Rows("select count(*) from " + std::string(table)), Lines{"0"}) << table;
    }
    EXPECT_EQ(agency.Rows("select client from authorizations"), Lines{"00001"})
        << "authorizations stay behind";
}

}  // namespace
}  // namespace kv
