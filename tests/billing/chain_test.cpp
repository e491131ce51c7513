// The chain of service from an authorization to its visits, with what comes in between.
#include <gtest/gtest.h>

#include "billing/authorization_save.h"
#include "billing/authorizations.h"
#include "clients/client_fixture.h"
#include "scheduling/assignments.h"
#include "scheduling/schedule_creation.h"
#include "support/plain_form.h"

namespace kv {
namespace {

using test::Cells;
using test::Lines;

Date Day(int month, int day) {
    return Date::FromCivil(2026, month, day);
}

/// The clock stands at Wednesday, 2026-03-04; weeks end on Saturday and the horizon is 2 weeks.
class Chain : public test::ClientTest {
  protected:
    Chain() {
        session.WKENDING = "SAT";
        agency.Code().Execute("update Agency set sch_weeks = 2");
        AddClient("00001",
                  {{"LASTNAME", "Grant"}, {"FIRSTNAM", "Ida"}, {"HOL_COV", "No"}, {"CASESTATCD", "Z"}});
        agency.Insert("hkeylonglat", {{"CLTid", "00001"}, {"phonenum", "5185550100"}, {"status", "Z"}});
        for (const auto& [code, name] :
             {std::pair(1, "Client"), std::pair(7, "Medicaid"), std::pair(8, "County")}) {
            agency.Insert("billcode_imaster", {{"billcode", code}, {"insname", name}});
        }
        agency.Insert("Visit_types",
                      {{"code", "PCA"}, {"Description", "Personal Care"}, {"payroll_or_billing", "Both"}});
        for (const auto& [id, last] :
             {std::pair("E1", "Ames"), std::pair("E2", "Bell"), std::pair("E3", "Cole")}) {
            agency.Insert("Employee",
                          {{"emp_id", id}, {"LastName", last}, {"FirstName", "Al"}, {"t_code", "A"}});
        }
        agency.Work().Execute("update Employee set t_code = 'I', t_date = #2026-03-10# where emp_id = 'E2'");
        agency.Insert("Holidays", {{"date", Day(3, 9)}});
        for (const int day : {6, 13}) {
            agency.Insert("sch_day", {{"CLIENT", ""},
                                      {"emp_id", "E3"},
                                      {"st_date", Day(3, day)},
                                      {"Day", "FRI"},
                                      {"St_time", Date::FromTime(8, 0)},
                                      {"END_TIME", Date::FromTime(12, 0)}});
        }
        agency.Insert("Emp_willwork", {{"emp_id", "E3"},
                                       {"st_date", Day(3, 13)},
                                       {"St_time", Date::FromTime(8, 0)},
                                       {"END_TIME", Date::FromTime(17, 0)}});
        entry_.payer = "Medicaid";
        entry_.billCode = 7;
        entry_.visitType = "PCA";
        entry_.visitDescription = "Personal Care";
        entry_.state = "Active";
        entry_.hourCode = "Regular";
        asks_.showConflicts = [](const std::vector<AssignmentConflict>&) { return true; };
        asks_.askMove = [](int, int) { return std::nullopt; };
        asks_.updateSchedules = [](const ScheduleUpdate&) {};
    }

    /// Saves the authorization, the only one, after `change`.
    bool Authorize(const std::function<void(Recordset&)>& change,
                   ImportantAnswer important = ImportantAnswer::Yes) {
        Recordset rows = OpenAuthorizations(session, {"00001", false, {}, {}});
        if (rows.Eof()) {
            rows.AddNew();
            FillNewAuthorization(session, rows);
        } else {
            rows.Edit();
        }
        change(rows);
        test::PlainForm form(session, {"ALL"}, "00001");
        const AuthorizationSaved saved =
            SaveAuthorization(session, rows, entry_, "00001", form, [&](long) { return important; });
        removed_ = saved.removed;
        return saved.saved;
    }
    void Assign(int day, const char* caregiver) {
        AssignmentEntry entry;
        entry.days[static_cast<std::size_t>(day)] = true;
        entry.start = Date::FromTime(9, 0);
        entry.hours = 4;
        entry.creation = session.clock.Today();
        entry.emp_id = caregiver;
        Recordset rows = OpenAssignments(session, 1);
        rows.AddNew();
        const AssignmentSaved saved =
            SaveAssignment(session, rows, entry, ParentOf(session, 1).value(), asks_);
        removed_.insert(removed_.end(), saved.removed.begin(), saved.removed.end());
    }

    /// Days without their time of day.
    Lines Rows(const char* statement, const char* database = "kestrava") {
        Lines lines = agency.Rows(statement, database);
        for (std::string& line : lines) {
            for (std::size_t at; (at = line.find(" 00:00:00")) != std::string::npos;) {
                line.erase(at, 9);
            }
        }
        return lines;
    }
    Lines Authorization() {
        return Rows("select bill_name, visit_type, from_date, to_DATE, status_code from Authorizations");
    }
    Lines Assignments() {
        return Rows(
            "select Day, emp_id, billto, author_status, st_date, END_DATE, Last_date from assign order by "
            "sequence");
    }
    Lines Visits() {
        return Rows(
            "select st_date, emp_id, assign_seq, author_seq, billto from sch_day where CLIENT = '00001' "
            "order "
            "by st_date");
    }
    std::string Client() {
        return Rows("select CASESTATCD, STARTSERVC, CASEEXPDAT from ClientPR").at(0) + "|" +
               Rows("select status from hkeylonglat", "main").at(0);
    }
    Lines Removed() const {
        Lines lines;
        for (const RemovedVisit& visit : removed_) {
            lines.push_back(visit.what + "|" + visit.reason + "|" + visit.caregiver);
        }
        return lines;
    }

    AuthorizationEntry entry_;
    AssignmentAsks asks_;
    std::vector<RemovedVisit> removed_;
};

TEST_F(Chain, FromAuthorizationToVisits) {
    // The payer agrees to March.
    ASSERT_TRUE(Authorize([](Recordset& row) {
        row.Set("from_date", Day(3, 1));
        row.Set("to_DATE", Day(3, 31));
    }));
    EXPECT_EQ(Authorization(), Lines{"Medicaid|PCA|2026-03-01|2026-03-31|A"});
    EXPECT_EQ(Client(), "A|2026-03-01|2026-03-31|A");
    EXPECT_EQ(Visits(), Lines());

    // Three days: one holiday, one caregiver who leaves, one who is not there on the first Friday and would
    // be away on the second but for her word that she works.
    Assign(1, "E1");
    Assign(3, "E2");
    Assign(5, "E3");
    EXPECT_EQ(Assignments(), (Lines{"MON|E1|7|A|2026-03-01|2026-03-31|2026-03-14",
                                    "WED|E2|7|A|2026-03-01|2026-03-31|2026-03-14",
                                    "FRI|E3|7|A|2026-03-01|2026-03-31|2026-03-14"}));
    const Lines twoWeeks = {"2026-03-02|E1|1|1|7", "2026-03-04|E2|2|1|7", "2026-03-06||3|1|7",
                            "2026-03-11||2|1|7", "2026-03-13|E3|3|1|7"};
    EXPECT_EQ(Visits(), twoWeeks);
    EXPECT_EQ(Removed(),
              (Lines{"No Schedule Created|Holiday|Ames, Al", "Removed Caregiver|Not Active|Bell, Al",
                     "Removed Caregiver|Non-Visit Schedule|Cole, Al"}));
    EXPECT_EQ(Rows("select Type, Area, Status from changes"),
              (Lines{"AUT|1|AUTH", "ASN|1|Edit", "ASN|2|Edit", "ASN|3|Edit"}));
    agency.Said();

    // Two weeks later the horizon has moved on; the first visits were worked.
    agency.Work().Execute("update sch_day set act_hrs = 4 where CLIENT = '00001' and st_date < #2026-03-05#");
    agency.ports.clock.Set(Day(3, 18));
    ScheduleCreation creation(session);
    EXPECT_TRUE(creation.RunAll(AllAssignments(session)));
    Lines visits = twoWeeks;
    for (const char* visit : {"2026-03-16|E1|1|1|7", "2026-03-18||2|1|7", "2026-03-20|E3|3|1|7",
                              "2026-03-23|E1|1|1|7", "2026-03-25||2|1|7", "2026-03-27|E3|3|1|7"}) {
        visits.emplace_back(visit);
    }
    EXPECT_EQ(Visits(), visits);
    EXPECT_TRUE(creation.RunAll(AllAssignments(session)));
    EXPECT_EQ(Visits(), visits) << "once the horizon is reached nothing is added";

    // The payer takes the last days back, then gives more than before.
    agency.ports.dialogs.Answer({true});
    ASSERT_TRUE(Authorize([](Recordset& row) { row.Set("to_DATE", Day(3, 21)); }));
    EXPECT_EQ(agency.Said(),
              Lines{"question: Do you wish to delete all schedules for this client from the end of the "
                    "authorization?\r\n3 visits not worked after Mar/21/2026."});
    visits.resize(8);
    EXPECT_EQ(Visits(), visits);
    EXPECT_EQ(Assignments().front(), "MON|E1|7|A|2026-03-01|2026-03-21|2026-03-21");
    EXPECT_EQ(Client(), "A|2026-03-01|2026-03-21|A");
    agency.ports.dialogs.Answer({true});
    ASSERT_TRUE(Authorize([](Recordset& row) { row.Set("to_DATE", Day(3, 26)); }));
    EXPECT_EQ(agency.Said(),
              Lines{"question: You are moving an authorization forward.\r\nWould you like to create "
                    "any missing schedules?"});
    // As many weeks as the horizon has, from two weeks before the old end; the nightly run does the rest.
    EXPECT_EQ(Visits(), visits);
    EXPECT_TRUE(creation.RunAll(AllAssignments(session)));
    visits.insert(visits.end(), {"2026-03-23|E1|1|1|7", "2026-03-25||2|1|7"});
    EXPECT_EQ(Visits(), visits) << "up to the new end, and nothing twice";
    EXPECT_EQ(Client(), "A|2026-03-01|2026-03-26|A");

    // Another payer: not after all; with the visits as they are; with the visits too.
    entry_.payer = "County";
    entry_.billCode = 8;
    const auto nothing = [](Recordset&) {};
    EXPECT_FALSE(Authorize(nothing, ImportantAnswer::No));
    EXPECT_EQ(Authorization(), Lines{"Medicaid|PCA|2026-03-01|2026-03-26|A"});
    EXPECT_EQ(Visits(), visits);
    EXPECT_TRUE(Authorize(nothing, ImportantAnswer::Yes));
    EXPECT_EQ(Authorization(), Lines{"County|PCA|2026-03-01|2026-03-26|A"});
    EXPECT_EQ(Assignments().front().substr(0, 8), "MON|E1|8");
    EXPECT_EQ(Visits(), visits);
    entry_.payer = "Medicaid";
    entry_.billCode = 7;
    EXPECT_TRUE(Authorize(nothing, ImportantAnswer::Yes));
    entry_.payer = "County";
    entry_.billCode = 8;
    EXPECT_TRUE(Authorize(nothing, ImportantAnswer::All));
    for (std::string& visit : visits) {
        visit.back() = '8';
    }
    EXPECT_EQ(Visits(), visits);
    EXPECT_EQ(agency.Said(), Lines());

    // Closed from the last Sunday on: what was worked or lies before it stays.
    entry_.state = "Closed";
    agency.ports.dialogs.Answer({true});
    ASSERT_TRUE(Authorize([](Recordset& row) { row.Set("to_DATE", Day(3, 15)); }));
    visits.resize(5);
    EXPECT_EQ(Visits(), visits);
    EXPECT_EQ(Client(), "C|2026-03-01|2026-03-15|C");
    EXPECT_EQ(Assignments(), (Lines{"MON|E1|8|C|2026-03-01|2026-03-15|2026-03-15",
                                    "WED|E2|8|C|2026-03-01|2026-03-15|2026-03-15",
                                    "FRI|E3|8|C|2026-03-01|2026-03-15|2026-03-15"}));
    creation.RunAll(AllAssignments(session));
    EXPECT_EQ(Visits(), visits) << "a closed authorization makes no visits";
    EXPECT_EQ(Rows("select Type, Area, Status from changes").size(), 4U) << "one row for each record";
    EXPECT_EQ(Rows("select st_date from sch_day where CLIENT = ''").size(), 2U)
        << "her own time is nobody's visit";
}

}  // namespace
}  // namespace kv
