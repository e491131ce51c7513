// Many random changes of authorizations and assignments on the made-up agency: no visit that was worked ever
// goes, no visit that was changed by hand goes with an assignment, and no visit points where nothing is.
#include <map>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include "billing/authorization_save.h"
#include "billing/authorizations.h"
#include "scheduling/assignments.h"
#include "scheduling/schedule_creation.h"
#include "support/plain_form.h"
#include "support/test_agency.h"
#include "tool/check_folder.h"
#include "tool/demo.h"

namespace kv {
namespace {

using Kept = std::map<long, double>;  ///< a visit's sequence and its actual hours

class ServiceDays : public ::testing::Test {
  protected:
    ServiceDays() {
        RunDemo(session.workspace, agency.Folder(), agency.ports.clock, agency.ports.progress, {25, 20, 7});
        session.rsEmployee.Requery();
        session.WKENDING = "SAT";
        agency.Work().Execute("update sch_day set pay_override = 1 where sequence / 13 = int(sequence / 13)");
        agency.Work().Execute(
            "update sch_day set bill_override = 1 where sequence / 17 = int(sequence / 17)");
        asks_.showConflicts = [](const std::vector<AssignmentConflict>&) { return true; };
        asks_.askMove = [this](int forward, int back) -> std::optional<int> {
            switch (Any(3)) {
                case 0:
                    return forward;
                case 1:
                    return -back;
                default:
                    return std::nullopt;
            }
        };
        asks_.updateSchedules = [this](const ScheduleUpdate& update) {
            std::vector<std::string> results;
            const Date from = session.clock.Today().AddDays(static_cast<double>(Any(20)));
            const auto lines = LoadScheduleLines(session, update, from, results);
            ProcessScheduleLines(session, update, lines, from, results);
        };
    }

    std::size_t Any(std::size_t below) {
        return std::uniform_int_distribution<std::size_t>(0, below - 1)(random_);
    }
    long AnyOf(const char* table) {
        const auto sequences = agency.Rows(std::string("select sequence from ") + table);
        return sequences.empty() ? 0 : std::stol(sequences[Any(sequences.size())]);
    }
    /// More answers than any step asks for.
    void AnswerAtRandom() {
        std::vector<bool> answers;
        for (int i = 0; i < 8; ++i) {
            answers.push_back(Any(2) == 0);
        }
        agency.ports.dialogs.Answer(answers);
    }
    Kept VisitsWhere(const char* condition) {
        Kept kept;
        for (Recordset row = agency.Work().OpenRecordset(
                 std::string("select sequence, act_hrs from sch_day where ") + condition,
                 RecordsetType::Snapshot);
             !row.Eof(); row.MoveNext()) {
            kept[static_cast<long>(row.Get("sequence").ToInteger())] = row.Get("act_hrs").NumberOr(0);
        }
        return kept;
    }
    std::set<long> Sequences(const char* table) {
        std::set<long> all;
        for (const std::string& row : agency.Rows(std::string("select sequence from ") + table)) {
            all.insert(std::stol(row));
        }
        return all;
    }
    /// Visits that point to an assignment or authorization which is not there.
    long Astray() {
        const std::set<long> assignments = Sequences("assign");
        const std::set<long> authorizations = Sequences("Authorizations");
        long astray = 0;
        for (Recordset row = agency.Work().OpenRecordset("select assign_seq, author_seq from sch_day",
                                                         RecordsetType::Snapshot);
             !row.Eof(); row.MoveNext()) {
            const long assignment = static_cast<long>(row.Get("assign_seq").NumberOr(0));
            const long authorization = static_cast<long>(row.Get("author_seq").NumberOr(0));
            astray += assignment > 0 && assignments.count(assignment) == 0 ? 1 : 0;
            astray += authorization != 0 && authorizations.count(authorization) == 0 ? 1 : 0;
        }
        return astray;
    }

    void ChangeAuthorization() {
        const long sequence = AnyOf("Authorizations");
        Recordset rows =
            agency.Work().OpenRecordset(Sql("select * from Authorizations where sequence = {}", sequence));
        const std::string client = rows.Text("CLIENT");
        AuthorizationEntry entry;
        entry.payer = rows.Text("bill_name");
        entry.billCode = static_cast<long>(rows.Get("bill_code").NumberOr(0));
        entry.visitType = rows.Text("visit_type");
        entry.visitDescription = rows.Text("vis_desc");
        entry.state = std::string(kAuthorizationStates[Any(4) == 0 ? Any(kAuthorizationStates.size()) : 0]);
        entry.hourCode = "Regular";
        if (Any(3) == 0) {
            entry.payer = "Client";
            entry.billCode = 1;
        }
        rows.Edit();
        const Date end = session.clock.Today().AddDays(static_cast<double>(Any(120)) - 20);
        rows.Set("to_DATE", std::max(end, rows.Get("from_date").ToDate()));
        test::PlainForm form(session, {"ALL CLIENTS"}, client);
        constexpr std::array kAnswers = {ImportantAnswer::All, ImportantAnswer::Yes, ImportantAnswer::No};
        SaveAuthorization(session, rows, entry, client, form, [&](long) { return kAnswers[Any(3)]; });
    }
    void RemoveAuthorization() {
        Recordset rows = agency.Work().OpenRecordset(
            Sql("select * from Authorizations where sequence = {}", AnyOf("Authorizations")));
        DeleteAuthorization(session, rows);
    }
    void SaveAnAssignment(bool isNew) {
        const long authorization = AnyOf("Authorizations");
        const auto parent = ParentOf(session, authorization);
        Recordset rows = OpenAssignments(session, authorization);
        if (!parent || (!isNew && rows.Eof())) {
            return;
        }
        AssignmentEntry entry;
        entry.days[Any(kDaysOfWeek)] = true;
        entry.start = Date::FromTime(static_cast<int>(Any(24)), 15);
        entry.hours = 1.0 + static_cast<double>(Any(9));
        entry.howoften = 1 + static_cast<long>(Any(2));
        entry.creation = session.clock.Today().AddDays(static_cast<double>(Any(28)) - 14);
        entry.emp_id = Any(3) == 0 ? "" : agency.Rows("select emp_id from Employee")[Any(20)];
        isNew ? rows.AddNew() : rows.Edit();
        SaveAssignment(session, rows, entry, *parent, asks_);
    }
    void RemoveAssignment() {
        const long sequence = AnyOf("assign");
        Recordset rows =
            agency.Work().OpenRecordset(Sql("select * from assign where sequence = {}", sequence));
        if (!rows.Eof()) {
            const long authorization = static_cast<long>(rows.Get("author_seq").NumberOr(0));
            DeleteAssignment(session, rows, ParentOf(session, authorization).value_or(AssignmentParent()));
        }
    }

    test::TestAgency agency;
    Session& session = agency.session();
    std::mt19937 random_{20261123};
    AssignmentAsks asks_;
};

TEST_F(ServiceDays, NothingThatWasWorkedIsLost) {
    ASSERT_EQ(Astray(), 0);
    const Kept worked = VisitsWhere("act_hrs <> 0");
    ASSERT_GT(worked.size(), 100U);
    long removedVisits = 0;
    for (int step = 0; step < 300; ++step) {
        const std::set<long> before = Sequences("sch_day");
        const Kept adjusted = VisitsWhere("(pay_override <> 0 or bill_override <> 0)");
        AnswerAtRandom();
        const std::size_t kind = Any(6);
        switch (kind) {
            case 0:
                ChangeAuthorization();
                break;
            case 1:
                RemoveAuthorization();
                break;
            case 2:
            case 3:
                SaveAnAssignment(kind == 2);
                break;
            case 4:
                RemoveAssignment();
                break;
            default:
                agency.ports.clock.Set(agency.ports.clock.Now().AddDays(1));
                ScheduleCreation(session).RunAll(AllAssignments(session));
        }
        EXPECT_EQ(VisitsWhere("act_hrs <> 0"), worked) << "step " << step;
        if (kind > 1) {
            // The end of an authorization takes adjusted visits too, an assignment's does not.
            EXPECT_EQ(VisitsWhere("(pay_override <> 0 or bill_override <> 0)"), adjusted) << "step " << step;
        }
        EXPECT_EQ(Astray(), 0) << "step " << step;
        if (HasFailure()) {
            FAIL() << "kind " << kind;
        }
        const std::set<long> after = Sequences("sch_day");
        for (const long visit : before) {
            removedVisits += after.count(visit) == 0 ? 1 : 0;
        }
    }
    EXPECT_GT(removedVisits, 50) << "the steps did remove something";
    // Whatever was answered, a step that came to its end leaves nothing that looks like an interrupted one.
    for (const std::string& problem : tool::CheckDataFolder(session.workspace, agency.Folder()).problems) {
        EXPECT_NE(problem.find("kept on purpose"), std::string::npos) << problem;
    }
}

}  // namespace
}  // namespace kv
