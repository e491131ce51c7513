// What stands when a write in the middle of a routine fails.
#include <gtest/gtest.h>

#include "billing/authorization_save.h"
#include "billing/authorizations.h"
#include "billing/client_rates.h"
#include "billing/client_status.h"
#include "clients/banned_caregivers.h"
#include "clients/client_delete.h"
#include "clients/client_phones.h"
#include "clients/client_save.h"
#include "clients/new_client.h"
#include "clients/potential_status.h"
#include "scheduling/assignments.h"
#include "scheduling/authorization_tasks.h"
#include "scheduling/schedule_creation.h"
#include "support/fault_sweep.h"
#include "support/plain_form.h"

namespace kv {
namespace {

using test::Cells;
using test::FaultCase;
using test::TestAgency;

using Routine = std::function<void()>;

Date Day(int month, int day) {
    return Date::FromCivil(2026, month, day);
}

constexpr long kAuthorization = 1;

/// A client with an authorization, two assignments and their visits of four weeks, on a workstation On the
/// Road: so that every database has its part.
void MakeService(TestAgency& agency) {
    Session& session = agency.session();
    session.WKENDING = "SAT";
    agency.Code().Execute("update Agency set sch_weeks = 4");
    agency.Client("00001", "Grant", "Ida");
    agency.Insert("hkeylonglat", {{"CLTid", "00001"}, {"phonenum", "5550000001"}, {"Status", "A"}});
    agency.Insert("Employee", {{"emp_id", "E1"}, {"LastName", "Ames"}, {"FirstName", "Al"}, {"t_code", "A"}});
    agency.Insert("billcode_imaster", {{"billcode", 1}, {"insname", "Client"}});
    agency.Insert("billcode_imaster", {{"billcode", 7}, {"insname", "Medicaid"}});
    agency.Insert("Visit_types",
                  {{"code", "PCA"}, {"Description", "Personal Care"}, {"payroll_or_billing", "Both"}});
    agency.Insert("Authorizations", {{"CLIENT", "00001"},
                                     {"bill_code", 7},
                                     {"bill_name", "Medicaid"},
                                     {"visit_type", "PCA"},
                                     {"vis_desc", "Personal Care"},
                                     {"from_date", Day(1, 1)},
                                     {"to_DATE", Day(12, 31)},
                                     {"WEEKORMONTH", "W"},
                                     {"HRS", 10},
                                     {"status_code", "A"},
                                     {"Live_in", "N"}});
    for (const char* day : {"MON", "THU"}) {
        agency.Insert("assign", {{"author_seq", kAuthorization},
                                 {"CLIENT", "00001"},
                                 {"cli_name", "Grant, Ida"},
                                 {"Type", "A"},
                                 {"Day", day},
                                 {"emp_id", "E1"},
                                 {"HRS", 4},
                                 {"St_time", Date::FromTime(9, 0)},
                                 {"END_TIME", Date::FromTime(13, 0)},
                                 {"howoften", 1},
                                 {"st_date", Day(1, 1)},
                                 {"END_DATE", Day(12, 31)},
                                 {"author_status", "A"},
                                 {"CLIENT_STATUS", "A"},
                                 {"visit_type", "PCA"},
                                 {"billto", 7},
                                 {"Last_date", Day(3, 7)}});
    }
    ScheduleCreation creation(session);
    creation.RunAll(AllAssignments(session));
    session.OffLine = true;
}

AuthorizationEntry EntryOf(const char* payer, long code) {
    AuthorizationEntry entry;
    entry.payer = payer;
    entry.billCode = code;
    entry.visitType = "PCA";
    entry.visitDescription = "Personal Care";
    entry.state = "Active";
    entry.hourCode = "Regular";
    entry.shift = "2";
    return entry;
}

/// The save of an authorization whose boxes `fill` has filled: new, or the one there is.
std::function<Routine(TestAgency&)> SavesAuthorization(bool isNew, AuthorizationEntry entry,
                                                       std::function<void(Recordset&)> fill,
                                                       std::vector<bool> answers) {
    return [=](TestAgency& agency) -> Routine {
        Session& session = agency.session();
        auto rows = std::make_shared<Recordset>(OpenAuthorizations(session, {"00001", false, {}, {}}));
        if (isNew) {
            rows->AddNew();
            FillNewAuthorization(session, *rows);
        } else {
            rows->Edit();
        }
        fill(*rows);
        auto form = std::make_shared<test::PlainForm>(session, ClientLimits{}, "00001");
        return [=, &agency, &session] {
            ASSERT_NE(rows->EditMode(), EditState::None) << "the edit goes on";
            agency.ports.dialogs.Answer(answers);
            const auto all = [](long) { return ImportantAnswer::All; };
            EXPECT_TRUE(SaveAuthorization(session, *rows, entry, "00001", *form, all).saved);
        };
    };
}

AssignmentAsks QuietAsks() {
    AssignmentAsks asks;
    asks.showConflicts = [](const std::vector<AssignmentConflict>&) { return true; };
    asks.askMove = [](int forward, int) { return forward; };
    asks.updateSchedules = [](const ScheduleUpdate&) {};
    return asks;
}

AssignmentEntry TwoDays() {
    AssignmentEntry entry;
    entry.days[2] = true;
    entry.days[3] = true;
    entry.start = Date::FromTime(14, 0);
    entry.hours = 2;
    entry.creation = Day(3, 4);
    entry.emp_id = "E1";
    return entry;
}

Routine SavesNewAssignment(TestAgency& agency) {
    Session& session = agency.session();
    auto rows = std::make_shared<Recordset>(OpenAssignments(session, kAuthorization));
    rows->AddNew();
    return [=, &session] {
        ASSERT_EQ(rows->EditMode(), EditState::Add);
        const auto saved =
            SaveAssignment(session, *rows, TwoDays(), *ParentOf(session, kAuthorization), QuietAsks());
        EXPECT_EQ(saved.sequences.size(), 2U);
    };
}

Routine SavesEditedAssignment(TestAgency& agency) {
    Session& session = agency.session();
    auto rows = std::make_shared<Recordset>(OpenAssignments(session, kAuthorization));
    rows->Edit();
    return [=, &agency, &session] {
        ASSERT_EQ(rows->EditMode(), EditState::InProgress);
        agency.ports.dialogs.Answer({false});
        AssignmentEntry entry = TwoDays();
        entry.days = {};
        entry.days[1] = true;
        EXPECT_TRUE(
            SaveAssignment(session, *rows, entry, *ParentOf(session, kAuthorization), QuietAsks()).saved);
    };
}

/// The routine with answers, on nothing that is open before.
template <typename Run>
std::function<Routine(TestAgency&)> Runs(std::vector<bool> answers, Run run) {
    return [=](TestAgency& agency) -> Routine {
        return [=, &agency] {
            agency.ports.dialogs.Answer(answers);
            run(agency.session());
        };
    };
}

void OffTheRoad(TestAgency& agency) {
    MakeService(agency);
    agency.session().OffLine = false;
}

TEST(Faults, AnAuthorizationAndItsCascade) {
    const auto noChange = [](Recordset&) {};
    const auto ends = [](Date day) { return [day](Recordset& row) { row.Set("to_DATE", day); }; };
    const FaultCase cases[] = {
        {"a new one of a client who pays", MakeService,
         SavesAuthorization(true, EntryOf("Client", 1), noChange, {})},
        {"another payer", MakeService, SavesAuthorization(false, EntryOf("Client", 1), noChange, {})},
        {"an earlier end", MakeService,
         SavesAuthorization(false, EntryOf("Medicaid", 7), ends(Day(3, 12)), {true})},
        {"a later end",
         [](TestAgency& agency) {
             MakeService(agency);
             agency.Work().Execute("update Authorizations set to_DATE = #2026/03/14#");
             agency.Work().Execute("update assign set END_DATE = #2026/03/14#, Last_date = #2026/03/28#");
             agency.Work().Execute("delete from sch_day where st_date > #2026/03/14#");
         },
         SavesAuthorization(false, EntryOf("Medicaid", 7), ends(Day(12, 31)), {true}), true},
        {"deleted",
         [](TestAgency& agency) {
             OffTheRoad(agency);
             agency.Work().Execute("delete from sch_day");
             agency.Insert("assign_task", {{"ID", kAuthorization}, {"dow", "MON"}, {"task", "BATH"}});
         },
         Runs({true},
              [](Session& session) {
                  Recordset rows = OpenAuthorizations(session, {"00001", false, {}, {}});
                  EXPECT_TRUE(DeleteAuthorization(session, rows));
              })},
        {"the bulk tool", MakeService,
         Runs({true},
              [](Session& session) {
                  Recordset rows = OpenAuthorizations(session, {"00001", false, {}, {}});
                  test::PlainForm form(session, ClientLimits{}, "00001");
                  EXPECT_TRUE(MoveAllEnds(session, rows, Day(3, 12),
                                          [&] { UpdateClientStatus(session, form, "00001"); }));
              })},
    };
    for (const FaultCase& each : cases) {
        test::SweepFaults(each);
    }
}

TEST(Faults, AnAssignmentAndItsVisits) {
    const FaultCase cases[] = {
        {"a new one of two days", OffTheRoad, SavesNewAssignment, true},
        {"a changed one", OffTheRoad, SavesEditedAssignment},
        {"deleted", OffTheRoad,
         Runs({true, true},
              [](Session& session) {
                  Recordset rows = OpenAssignments(session, kAuthorization);
                  EXPECT_TRUE(DeleteAssignment(session, rows, *ParentOf(session, kAuthorization)));
              })},
        {"copied",
         [](TestAgency& agency) {
             OffTheRoad(agency);
             agency.Insert("Authorizations", {{"CLIENT", "00001"},
                                              {"status_code", "A"},
                                              {"visit_type", "PCA"},
                                              {"bill_code", 7},
                                              {"from_date", Day(3, 1)},
                                              {"to_DATE", Day(12, 31)}});
             agency.Work().Execute("delete from sch_day");
             agency.Work().Execute("update assign set Last_date = #2026/03/07#");
         },
         Runs({},
              [](Session& session) {
                  std::vector<RemovedVisit> removed;
                  EXPECT_TRUE(CopyAssignments(session, kAuthorization, *ParentOf(session, 2), removed));
              }),
         true},
        {"tasks", MakeService,
         Runs({},
              [](Session& session) {
                  AddTasks(session, kAuthorization, {"Monday", "Friday"}, {"BATH"});
              })},
    };
    for (const FaultCase& each : cases) {
        test::SweepFaults(each);
    }
}

TEST(Faults, AClientAndWhatHangsFromThem) {
    const auto potential = [](TestAgency& agency) {
        MakeService(agency);
        agency.Work().Execute("update clientpr set casestatcd = 'Z', potientalstatus = 'Active'");
        agency.Insert("clirate", {{"CLIENT", "00001"}, {"visittype", "PCA"}, {"rate1", 20}});
        agency.Insert("logging", {{"CLIENT", "00001"}});
    };
    const FaultCase cases[] = {
        {"deleted",
         [=](TestAgency& agency) {
             potential(agency);
             agency.session().OffLine = false;
         },
         Runs({true},
              [](Session& session) {
                  test::PlainForm form(session, {"POTENTIAL", "Active", "ALL"}, "00001");
                  EXPECT_TRUE(DeleteClient(session, form, "Potential"));
              })},
        {"a new one from a pattern", potential,
         Runs({},
              [](Session& session) {
                  NewClient client;
                  client.id = "00002";
                  client.pattern = "00001";
                  client.start = Day(3, 4);
                  client.payer = PayerItem{"Medicaid", 7};
                  client.visitType = "PCA";
                  client.visitDescription = "Personal Care";
                  EXPECT_EQ(SaveNewClient(session, client).result, NewClientResult::Saved);
              })},
        {"a potential one becomes active", potential,
         Runs({true},
              [](Session& session) {
                  Recordset list = session.dbMainWork->OpenRecordset("select * from clientpr");
                  EXPECT_EQ(ChangePotentialStatus(session, list, PotentialChoice::ActiveClient),
                            PotentialResult::BecameActive);
              })},
        {"a banned caregiver", MakeService,
         [](TestAgency& agency) -> Routine {
             Session& session = agency.session();
             auto rows = std::make_shared<Recordset>(OpenBannedCaregivers(session, "00001"));
             rows->AddNew();
             rows->Set("emp_id", "E1");
             return [=, &session] { EXPECT_TRUE(SaveBannedCaregiver(session, *rows, "00001")); };
         }},
        {"a rate", MakeService,
         [](TestAgency& agency) -> Routine {
             Session& session = agency.session();
             auto rows = std::make_shared<Recordset>(OpenRates(session, "Client", "00001"));
             rows->AddNew();
             rows->Set("visittype", "PCA");
             rows->Set("Description", "Personal Care");
             return [=, &session] { EXPECT_TRUE(SaveRate(session, *rows, "00001")); };
         }},
        {"rates of another",
         [](TestAgency& agency) {
             MakeService(agency);
             agency.Insert("clirate", {{"CLIENT", "00001"}, {"visittype", "OLD"}, {"rate1", 10}});
             for (const char* type : {"PCA", "HHA"}) {
                 agency.Insert("clirate", {{"CLIENT", "00002"}, {"visittype", type}, {"rate1", 20}});
             }
         },
         Runs({true}, [](Session& session) { EXPECT_TRUE(PasteRates(session, "00001", "00002")); })},
    };
    for (const FaultCase& each : cases) {
        test::SweepFaults(each);
    }
}

}  // namespace
}  // namespace kv
