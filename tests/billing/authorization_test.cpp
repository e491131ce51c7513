// Authorizations: what a save checks, writes and carries down.
#include <gtest/gtest.h>

#include "base/format.h"
#include "billing/authorization_save.h"
#include "billing/authorization_use.h"
#include "billing/authorizations.h"
#include "billing/client_status.h"
#include "clients/client_fixture.h"
#include "scheduling/schedule_creation.h"
#include "support/plain_form.h"

namespace kv {
namespace {

using test::Cells;
using test::Lines;

Date Day(int month, int day, int year = 2026) {
    return Date::FromCivil(year, month, day);
}

class Authorizations : public test::ClientTest {
  protected:
    Authorizations() {
        session.WKENDING = "SAT";
        agency.Code().Execute("update Agency set sch_weeks = 4");
        AddClient("00001", {{"LASTNAME", "Grant"}, {"FIRSTNAM", "Ida"}});
        agency.Insert("billcode_imaster", {{"billcode", 1}, {"insname", "Client"}});
        agency.Insert("billcode_imaster", {{"billcode", 7}, {"insname", "Medicaid"}});
        agency.Insert("billcode_idetail",
                      {{"billcode", 7}, {"visittype", "PCA"}, {"Description", "Personal Care"}});
        agency.Insert("Visit_types",
                      {{"code", "PCA"}, {"Description", "Personal Care"}, {"payroll_or_billing", "Both"}});
        agency.Insert("Visit_types",
                      {{"code", "BIL"}, {"Description", "Supplies"}, {"payroll_or_billing", "Billing Only"}});
        agency.Insert("Visit_types",
                      {{"code", "PAY"}, {"Description", "Training"}, {"payroll_or_billing", "Payroll Only"}});
        entry_.payer = "Medicaid";
        entry_.billCode = 7;
        entry_.visitType = "PCA";
        entry_.visitDescription = "Personal Care";
        entry_.state = "Active";
        entry_.hourCode = "Regular";
        entry_.shift = "2";
        ask_ = [this](long) {
            ++asked_;
            return answer_;
        };
    }

    long Add(const Cells& more = {}) {
        Cells cells = {{"CLIENT", "00001"},
                       {"bill_code", 7},
                       {"bill_name", "Medicaid"},
                       {"visit_type", "PCA"},
                       {"vis_desc", "Personal Care"},
                       {"from_date", Day(1, 1)},
                       {"to_DATE", Day(12, 31)},
                       {"WEEKORMONTH", "W"},
                       {"HRS", 10},
                       {"status_code", "A"},
                       {"Live_in", "N"}};
        cells.insert(cells.end(), more.begin(), more.end());
        return static_cast<long>(agency.Insert("Authorizations", cells));
    }
    Recordset Rows() { return OpenAuthorizations(session, {"00001", false, {}, {}}); }
    AuthorizationSaved Save(Recordset& rows) {
        test::PlainForm form(session, {}, "00001");
        return SaveAuthorization(session, rows, entry_, "00001", form, ask_);
    }
    /// Edits the authorization: `change` sets what the bound boxes would.
    AuthorizationSaved Edit(long sequence, const std::function<void(Recordset&)>& change) {
        Recordset rows = Rows();
        MoveToAuthorization(rows, sequence);
        rows.Edit();
        change(rows);
        return Save(rows);
    }
    long Visit(long author, Date day, const Cells& more = {}) {
        Cells cells = {{"CLIENT", "00001"},   {"author_seq", author}, {"st_date", day}, {"Sch_code", "S"},
                       {"visit_type", "PCA"}, {"billto", 7},          {"HRS", 4}};
        cells.insert(cells.end(), more.begin(), more.end());
        return static_cast<long>(agency.Insert("sch_day", cells));
    }
    std::string Client(const char* columns) {
        return agency.Rows(std::string("select ") + columns + " from clientpr where client = '00001'").at(0);
    }

    AuthorizationEntry entry_;
    AskImportant ask_;
    ImportantAnswer answer_ = ImportantAnswer::Yes;
    int asked_ = 0;
};

TEST_F(Authorizations, ANewOneIsWrittenWithItsHistory) {
    Recordset rows = Rows();
    rows.AddNew();
    FillNewAuthorization(session, rows);
    rows.Set("HRS", 12.5);
    rows.Set("WEEKORMONTH", "m");
    entry_.cobillingType = 3;
    entry_.cobillingAmount = 25;
    entry_.cobillingPeriod = "Per Week";
    const AuthorizationSaved saved = Save(rows);
    ASSERT_TRUE(saved.saved);
    EXPECT_EQ(agency.Said(), Lines());
    EXPECT_EQ(
        agency.Rows("select CLIENT, bill_code, bill_name, visit_type, vis_desc, from_date, to_DATE, HRS, "
                    "WEEKORMONTH, status_code, EMP_Type, Live_in, sch_type, SHIFT_CODE, Min_Sch_Hours, "
                    "Max_Sch_Hours, NOTES, vendor from Authorizations"),
        Lines{"00001|7|Medicaid|PCA|Personal Care|2026-03-04 00:00:00|2036-03-04 00:00:00|12.5|M|A|FIELD|N|"
              "R|2|0|24| |01"});
    EXPECT_EQ(agency.Rows("select cobilling_type, cobilling_amount, COBilling_HowOften, status_date from "
                          "Authorizations"),
              Lines{"3|25|W|2026-03-04 09:30:00"});
    EXPECT_EQ(agency.Rows("select Type, Area, User, Status, reason from changes"),
              Lines{"AUT|1|ANN|AUTH|When: Mar/04/26 09:30 AM    Who: ANN\r\nStart Date: Mar/04/2026\r\n"
                    "  End Date: Mar/04/2036\r\n     Payor: Medicaid\r\n Call Type: Personal Care\r\n"
                    "    Status: A\r\n   24 Hour: N\r\n-----\r\n"});
    EXPECT_EQ(Client("casestatcd, startservc, caseexpdat"), "A|2026-03-04 00:00:00|2036-03-04 00:00:00");

    rows.Edit();
    rows.Set("HRS", 20);
    EXPECT_TRUE(Save(rows).saved);
    const Lines history = agency.Rows("select reason from changes");
    ASSERT_EQ(history.size(), 1U) << "one row holds the whole history";
    EXPECT_EQ(history[0].find("When:", 10) != std::string::npos, true);
}

TEST_F(Authorizations, FaultsAreAllTold) {
    Recordset rows = Rows();
    EXPECT_FALSE(Save(rows).saved);
    EXPECT_EQ(agency.Said(), Lines{"fault: You must add a record before you can save!"});
    rows.AddNew();
    FillNewAuthorization(session, rows);
    rows.Set("to_DATE", Day(3, 3));
    rows.Set("WEEKORMONTH", "D");
    entry_.payer = " ";
    entry_.visitDescription = "";
    entry_.state = "";
    EXPECT_FALSE(Save(rows).saved);
    EXPECT_EQ(agency.Said(), (Lines{"fault: TO date cannot be less than FROM date!",
                                    "fault: Status must be filled in before you can save!",
                                    "fault: Week or Month must be entered before saving a record",
                                    "fault: Payer source must be filled in before you can save!",
                                    "fault: Call Type must be filled in before you can save!"}));
    EXPECT_EQ(agency.Rows("select sequence from Authorizations"), Lines());
    EXPECT_EQ(rows.EditMode(), EditState::Add) << "nothing typed is lost";
    rows.Set("to_DATE", Day(3, 4));
    rows.Set("WEEKORMONTH", "w");
    entry_.payer = "Medicaid";
    entry_.visitDescription = "Personal Care";
    entry_.state = "Active";
    EXPECT_TRUE(Save(rows).saved) << "one day is a span";
}

TEST_F(Authorizations, CobillingIsToldAndSavedAllTheSame) {
    const std::pair<int, const char*> types[] = {
        {0, ""},
        {1, "message: Your Co-Billing percentage must be greater than 0."},
        {3, "message: Your Co-Billing dollars must be greater than 0."},
        {4, "message: Your Co-Billing hours must be greater than 0."},
        {5, "message: Your Co-Billing dollars must be greater than 0."},
        {6, "message: Your Co-Billing hours must be greater than 0."},
    };
    const long sequence = Add({{"cobilling_amount", 5}, {"COBilling_HowOften", "D"}});
    for (const auto& [type, words] : types) {
        entry_.cobillingType = type;
        entry_.cobillingAmount = -1;
        entry_.cobillingPeriod = "Per Month";
        EXPECT_TRUE(Edit(sequence, [](Recordset&) {}).saved);
        EXPECT_EQ(agency.Said(), *words == '\0' ? Lines() : Lines{words}) << type;
        EXPECT_EQ(
            agency.Rows("select cobilling_type, cobilling_amount, COBilling_HowOften from Authorizations"),
            Lines{std::to_string(type) + "|0|M"});
    }
    agency.Work().Execute("update Authorizations set cobilling_amount = 9, COBilling_HowOften = 'D'");
    entry_.payer = "Client";
    entry_.billCode = 1;
    Edit(sequence, [](Recordset&) {});
    EXPECT_EQ(agency.Rows("select cobilling_type, cobilling_amount, COBilling_HowOften from Authorizations"),
              Lines{"0|9|D"})
        << "a client who pays himself shares with nobody; the rest stays";
    EXPECT_EQ(agency.Said(),
              Lines{"message: A billing record has been added for this call type.\r\nPlease go to "
                    "the Bill Rates section, and update the Bill Rates"});
    EXPECT_EQ(agency.Rows("select CLIENT, visittype, Description, method from clirate"),
              Lines{"00001|PCA|Personal Care|H"});
    Edit(sequence, [](Recordset&) {});
    EXPECT_EQ(agency.Said(), Lines()) << "the rate is there";
}

TEST_F(Authorizations, TheClientFollowsThem) {
    struct Case {
        std::vector<std::pair<const char*, Date>> rows;  ///< a state, and the day on which it ends
        const char* status;
        const char* ends;
    };
    const Case cases[] = {
        {{{"C", Day(5, 1)}}, "C", "2026-05-01"},
        {{{"S", Day(5, 1)}, {"C", Day(6, 1)}}, "S", "2026-06-01"},
        {{{"S", Day(5, 1)}, {"C", Day(6, 1)}, {"A", Day(4, 1)}}, "A", "2026-06-01"},
        {{{"D", Day(5, 1)}, {"A", Day(4, 1)}}, "D", "2026-05-01"},
        {{{"D", Day(4, 1)}, {"S", Day(7, 1)}, {"C", Day(3, 1)}}, "D", "2026-04-01"},
    };
    agency.Insert("hkeylonglat", {{"CLTid", "00001"}, {"phonenum", "5185550100"}, {"Status", "?"}});
    for (const Case& c : cases) {
        agency.Work().Execute("delete from Authorizations");
        for (const auto& [state, end] : c.rows) {
            Add({{"status_code", state}, {"to_DATE", end}});
        }
        test::PlainForm form(session, {"ALL CLIENTS", "ALL", ""}, "00001");
        UpdateClientStatus(session, form, "00001");
        EXPECT_EQ(Client("casestatcd"), c.status);
        EXPECT_EQ(Client("caseexpdat").substr(0, 10), c.ends) << c.status;
        EXPECT_EQ(agency.Rows("select status from hkeylonglat", "main"), Lines{c.status});
    }
}

TEST_F(Authorizations, AnotherPayerIsTakenToTheVisitsAsTheOperatorSays) {
    const long sequence = Add();
    Visit(sequence, Day(3, 2));
    Visit(sequence, Day(3, 9), {{"Sch_code", "C"}});
    entry_.visitType = "BIL";
    entry_.visitDescription = "Supplies";
    const auto visits = [this] {
        return agency.Rows("select visit_type, visit_desc, billto from sch_day order by st_date");
    };

    answer_ = ImportantAnswer::No;
    EXPECT_FALSE(Edit(sequence, [](Recordset&) {}).saved);
    EXPECT_EQ(agency.Rows("select visit_type from Authorizations"), Lines{"PCA"});
    EXPECT_EQ(agency.Rows("select reason from changes"), Lines());

    answer_ = ImportantAnswer::Yes;
    EXPECT_TRUE(Edit(sequence, [](Recordset&) {}).saved);
    EXPECT_EQ(visits(), (Lines{"PCA|<Null>|7", "PCA|<Null>|7"}));

    entry_.payer = "Client";
    entry_.billCode = 1;
    answer_ = ImportantAnswer::All;
    session.OffLine = true;
    EXPECT_TRUE(Edit(sequence, [](Recordset&) {}).saved);
    EXPECT_EQ(visits(), (Lines{"BIL|Supplies|1", "PCA|<Null>|7"})) << "a cancelled visit is none to bill";
    EXPECT_EQ(agency.Rows("select Type, Module, ID from trans order by Module", "trans"),
              (Lines{"E|A|1", "E|S|1"}));
    EXPECT_EQ(asked_, 3);
    session.OffLine = false;
    agency.Work().Execute("delete from sch_day");
    entry_.payer = "Medicaid";
    Edit(sequence, [](Recordset&) {});
    EXPECT_EQ(asked_, 3) << "no visits, no question";
}

TEST_F(Authorizations, AnEarlierEndTakesTheVisitsBehindIt) {
    const long sequence = Add();
    Visit(sequence, Day(3, 9));
    Visit(sequence, Day(3, 16));
    Visit(sequence, Day(3, 23), {{"act_hrs", 4}});
    agency.Insert(
        "assign",
        {{"author_seq", sequence}, {"CLIENT", "00001"}, {"Last_date", Day(3, 28)}, {"howoften", 1}});
    const auto shorten = [&](Date end, bool agrees, const char* count) {
        agency.ports.dialogs.Answer({agrees});
        EXPECT_TRUE(Edit(sequence, [&](Recordset& row) { row.Set("to_DATE", end); }).saved);
        EXPECT_EQ(agency.Said(),
                  Lines{std::string("question: Do you wish to delete all schedules for this client from the "
                                    "end of the authorization?\r\n") +
                        count});
    };
    shorten(Day(3, 20), false, "0 visits not worked after Mar/20/2026.");
    EXPECT_EQ(agency.Rows("select st_date from sch_day").size(), 3U);
    EXPECT_EQ(
        agency.Rows("select END_DATE, Last_date, visit_type, billto, visit_desc, author_status from assign"),
        Lines{"2026-03-20 00:00:00|2026-03-28 00:00:00|PCA|7|PCA-Grant, Id|A"});
    shorten(Day(3, 10), true, "1 visit not worked after Mar/10/2026.");
    EXPECT_EQ(agency.Rows("select st_date, act_hrs from sch_day order by st_date"),
              (Lines{"2026-03-09 00:00:00|0", "2026-03-23 00:00:00|4"}))
        << "a worked visit stays";
    EXPECT_EQ(agency.Rows("select Last_date from assign"), Lines{"2026-03-10 00:00:00"});

    entry_.state = "Closed";
    session.OffLine = true;
    shorten(Day(3, 5), true, "1 visit not worked after Mar/05/2026.");
    EXPECT_EQ(agency.Rows("select st_date from sch_day").size(), 1U);
    EXPECT_EQ(agency.Rows("select Type, Module, ID from trans order by Module", "trans"),
              (Lines{"E|A|1", "D|S|1"}));
    EXPECT_EQ(Client("casestatcd"), "C");
}

TEST_F(Authorizations, ALaterEndOffersTheMissingVisits) {
    const long sequence = Add({{"to_DATE", Day(3, 14)}});
    agency.Insert("assign", {{"author_seq", sequence},
                             {"CLIENT", "00001"},
                             {"Type", "A"},
                             {"Day", "MON"},
                             {"HRS", 4},
                             {"St_time", Date::FromTime(9, 0)},
                             {"END_TIME", Date::FromTime(13, 0)},
                             {"howoften", 1},
                             {"st_date", Day(1, 1)},
                             {"END_DATE", Day(3, 14)},
                             {"Last_date", Day(3, 14)},
                             {"author_status", "A"}});
    const auto extend = [&](Date end, std::vector<bool> answers) {
        agency.ports.dialogs.Answer(std::move(answers));
        EXPECT_TRUE(Edit(sequence, [&](Recordset& row) { row.Set("to_DATE", end); }).saved);
        return agency.Said();
    };
    const Lines question = {
        "question: You are moving an authorization forward.\r\nWould you like to create any "
        "missing schedules?"};
    EXPECT_EQ(extend(Day(3, 21), {false}), question);
    EXPECT_EQ(agency.Rows("select Last_date from assign"), Lines{"2026-02-28 00:00:00"});
    EXPECT_EQ(extend(Day(3, 28), {}), Lines()) << "Last_date lies before the old end: nothing is missing";
    agency.Work().Execute("update assign set Last_date = #2026-03-28#");
    EXPECT_EQ(extend(Day(12, 31), {true}), question);
    EXPECT_EQ(agency.Rows("select st_date from sch_day order by st_date"),
              (Lines{"2026-03-16 00:00:00", "2026-03-23 00:00:00"}));
}

TEST_F(Authorizations, AssignmentsThatWouldNeverBeginAreTold) {
    const long author = Add();
    agency.Insert("assign", {{"author_seq", author},
                             {"howoften", 1},
                             {"st_date", Day(1, 1)},
                             {"Last_date", Day(3, 7)},
                             {"END_DATE", Day(12, 31)}});
    EXPECT_TRUE(Edit(author, [](Recordset& row) { row.Set("from_date", Day(3, 14)); }).saved);
    EXPECT_EQ(agency.Said(), Lines()) << "the next week reaches the first day";
    EXPECT_TRUE(Edit(author, [](Recordset& row) { row.Set("from_date", Day(3, 15)); }).saved);
    EXPECT_EQ(agency.Said(),
              Lines{"message: 1 assignments of this authorization make no schedules: the week of their Next "
                    "Schedule Creation Date ends before it begins.  Please set that date to the From date."});
    EXPECT_TRUE(Edit(author, [](Recordset& row) { row.Set("HRS", 11); }).saved);
    EXPECT_EQ(agency.Said(), Lines()) << "told when it is moved, not at each save";
}

TEST_F(Authorizations, AreDeletedOnlyWithoutVisits) {
    const long sequence = Add();
    const long other = Add({{"from_date", Day(2, 1)}});
    agency.Insert("assign", {{"author_seq", sequence}});
    agency.Insert("assign", {{"author_seq", other}});
    agency.Insert("assign_task", {{"ID", sequence}, {"dow", "MON"}});
    Visit(sequence, Day(3, 2));
    Recordset rows = Rows();
    session.OffLine = true;
    EXPECT_FALSE(DeleteAuthorization(session, rows));
    session.OffLine = false;
    EXPECT_FALSE(DeleteAuthorization(session, rows));
    EXPECT_EQ(agency.Said(),
              (Lines{"message: You may not remove an Authorization while 'On the Road'",
                     "message: You can not delete an authorization with schedules.\r\nThis would stop "
                     "payroll and billing from working.\r\nTry changing the authorization status to "
                     "'Closed'."}));
    agency.Work().Execute("delete from sch_day");
    agency.ports.dialogs.Answer({false, true});
    EXPECT_FALSE(DeleteAuthorization(session, rows));
    EXPECT_TRUE(DeleteAuthorization(session, rows));
    EXPECT_EQ(rows.Get("sequence").ToInteger(), other);
    EXPECT_EQ(agency.Rows("select author_seq from assign"), Lines{std::to_string(other)});
    EXPECT_EQ(agency.Rows("select ID from assign_task"), Lines());
    EXPECT_EQ(
        agency.Rows("select Status, reason from changes"),
        Lines{
            "DELETED|When: Mar/04/26 09:30 AM    Who: ANN\r\nDeleted Authorization on client: 00001\r\n-----"
            "\r\n"});
    agency.Said();
    agency.ports.dialogs.Answer({true});
    EXPECT_TRUE(DeleteAuthorization(session, rows));
    EXPECT_FALSE(DeleteAuthorization(session, rows));
    EXPECT_EQ(agency.Said().back(), "message: There are no records to delete.");
}

TEST_F(Authorizations, TheBulkToolMovesEveryEnd) {
    const long first = Add();
    Add({{"visit_type", ""}, {"status_code", "C"}});
    Visit(first, Day(3, 9));
    Visit(first, Day(3, 16), {{"act_hrs", 2}});
    Visit(first, Day(3, 2));
    agency.Insert("assign", {{"author_seq", first}, {"END_DATE", Day(12, 31)}});
    Recordset rows = Rows();
    int along = 0;
    const auto alongWith = [&along] { ++along; };
    agency.ports.dialogs.Answer({false, true});
    EXPECT_FALSE(MoveAllEnds(session, rows, Day(3, 4), alongWith));
    EXPECT_TRUE(MoveAllEnds(session, rows, Day(3, 4), alongWith));
    EXPECT_EQ(along, 1);
    const std::string question =
        "question: Update the 'To Date' of 2 authorizations to Mar/04/2026?\r\n"
        "1 visit not worked after that day will be deleted.";
    EXPECT_EQ(agency.Said(), (Lines{question, question, "message: Please Edit and fix blank call types"}));
    EXPECT_EQ(agency.Rows("select END_DATE from assign"), Lines{"2026-03-04 00:00:00"})
        << "it would make the visits again";
    EXPECT_EQ(agency.Rows("select distinct to_DATE from Authorizations"), Lines{"2026-03-04 00:00:00"});
    EXPECT_EQ(agency.Rows("select st_date from sch_day order by st_date"),
              (Lines{"2026-03-02 00:00:00", "2026-03-16 00:00:00"}));
    EXPECT_EQ(agency.ports.progress.advanced, 2);
    agency.Work().Execute("delete from Authorizations");
    rows.Requery();
    EXPECT_FALSE(MoveAllEnds(session, rows, Day(3, 4), alongWith));
}

TEST_F(Authorizations, TheListOpensOnTheOneInForce) {
    Add({{"from_date", Day(1, 1)}, {"to_DATE", Day(2, 1)}, {"bill_code", 0}});
    Add({{"from_date", Day(2, 2)}, {"to_DATE", Day(3, 4)}});
    Add({{"from_date", Day(3, 5)}, {"bill_code", Value()}});
    Add({{"status_code", "C"}});
    Recordset rows = Rows();
    MoveToAuthorizationInForce(session, rows);
    EXPECT_EQ(rows.Get("sequence").ToInteger(), 2);
    EXPECT_EQ(agency.Said(), Lines{"message: Error with Authorization.  Please re-save each one"});
    EXPECT_EQ(OpenAuthorizations(session, {"00001", true, {}, {}}).RecordCount(), 3);
    EXPECT_EQ(OpenAuthorizations(session, {"00001", true, "Migration Check", Day(3, 4)}).RecordCount(), 1);
    agency.Work().Execute("delete from Authorizations where sequence = 2 or sequence = 4");
    rows.Requery();
    MoveToAuthorizationInForce(session, rows);
    EXPECT_EQ(rows.Get("sequence").ToInteger(), 3) << "none in force: the last";
}

TEST_F(Authorizations, CallTypesAreThoseOfThePayer) {
    const auto codes = [this](const PayerItem& payer) {
        Lines lines;
        for (const LookupItem& item : CallTypesOfPayer(session, payer, "00001")) {
            lines.push_back(item.code);
        }
        return lines;
    };
    EXPECT_EQ(codes({"Medicaid", 7}), Lines{"PCA"});
    EXPECT_EQ(codes({"Nobody", 0}), Lines());
    EXPECT_EQ(codes({"Client", 1}), (Lines{"PCA", "BIL"})) << "without rates of his own all that is billed";
    agency.Insert("clirate", {{"CLIENT", "00001"}, {"visittype", "BIL"}, {"Description", "Supplies"}});
    EXPECT_EQ(codes({"Client", 1}), Lines{"BIL"});
    EXPECT_EQ(CallTypeOfCode(session, "BIL").hourCode, "Bill Only");
    EXPECT_EQ(CallTypeOfDescription(session, "training").hourCode, "Pay Only");
    EXPECT_EQ(CallTypeOfCode(session, "XXX").code, "");
}

TEST_F(Authorizations, TheReminderComesBehindTwelveMonths) {
    RemindOfEndDate(session, "Closed", Day(3, 20, 2027));
    RemindOfEndDate(session, "Active", Day(4, 1, 2030));
    RemindOfEndDate(session, "Closed", Value());
    EXPECT_EQ(agency.Said(), Lines());
    RemindOfEndDate(session, "Suspended", Day(4, 1, 2027));
    EXPECT_EQ(agency.Said().size(), 1U);
}

TEST_F(Authorizations, TheirUseIsCountedInThePeriodAndInAll) {
    const long weekly = Add({{"from_date", Day(3, 1)}, {"to_DATE", Day(3, 28)}});
    Visit(weekly, Day(3, 2), {{"act_hrs", 5}});
    Visit(weekly, Day(3, 6));
    Visit(weekly, Day(3, 7), {{"Cancelled", true}});
    Visit(weekly, Day(3, 8));
    const AuthorizationUse use = UseOfAuthorization(session, weekly).value();
    EXPECT_EQ(use.periodFrom, Day(3, 1));
    EXPECT_EQ(use.periodTo, Day(3, 7));
    EXPECT_DOUBLE_EQ(use.scheduled, 8);
    EXPECT_DOUBLE_EQ(use.worked, 5);
    EXPECT_DOUBLE_EQ(use.left, 1);
    EXPECT_DOUBLE_EQ(use.totalAuthorized, 40);
    EXPECT_DOUBLE_EQ(use.totalUsed, 13);
    EXPECT_EQ(use.lasts, Day(3, 28));
    EXPECT_FALSE(use.runsOut);
    agency.Insert("assign", {{"author_seq", weekly}, {"Type", "A"}, {"HRS", 27}, {"howoften", 1}});
    const AuthorizationUse fast = UseOfAuthorization(session, weekly).value();
    EXPECT_TRUE(fast.runsOut);
    EXPECT_EQ(fast.lasts, Day(3, 15)) << "27 hours are left, and a week of them";

    const long monthly = Add({{"WEEKORMONTH", "M"}, {"from_date", Day(3, 20)}, {"to_DATE", Day(5, 2)}});
    const AuthorizationUse month = UseOfAuthorization(session, monthly).value();
    EXPECT_EQ(month.periodTo, Day(3, 31));
    EXPECT_DOUBLE_EQ(month.totalAuthorized, 20) << "the second month is begun";
    Add({{"status_code", "C"}});
    EXPECT_EQ(UseOfAuthorizations(session, "00001").size(), 2U);
    EXPECT_EQ(UseOfAuthorizations(session, "").size(), 2U);
    EXPECT_EQ(UseOfAuthorizations(session, "00009").size(), 0U);
    EXPECT_FALSE(UseOfAuthorization(session, 99));
}

TEST_F(Authorizations, AMonthIsCountedOnceWhereverItBegins) {
    struct Case {
        Date from, to;
        int months;
    };
    for (const Case& each :
         {Case{Day(9, 16, 2025), Day(9, 15), 12}, Case{Day(9, 16, 2025), Day(9, 16), 13},
          Case{Day(1, 1), Day(12, 31), 12}, Case{Day(1, 1), Day(1, 31), 1}, Case{Day(1, 1), Day(2, 1), 2},
          Case{Day(1, 15), Day(3, 14), 2}, Case{Day(1, 15), Day(3, 15), 3},
          // One day alone, and a span that ends before it begins.
          Case{Day(3, 31), Day(3, 31), 1}, Case{Day(2, 29, 2028), Day(2, 29, 2028), 1},
          Case{Day(3, 2), Day(3, 1), 0}, Case{Day(3, 20), Day(1, 10), 0},
          // Month ends: what a month lacks begins with the next one.
          Case{Day(1, 31), Day(2, 28), 1}, Case{Day(1, 31), Day(3, 1), 2}, Case{Day(1, 31), Day(3, 30), 2},
          Case{Day(1, 31), Day(3, 31), 3}, Case{Day(3, 31), Day(4, 30), 1}, Case{Day(3, 31), Day(5, 1), 2},
          Case{Day(8, 30), Day(2, 28, 2027), 6}, Case{Day(8, 30), Day(3, 1, 2027), 7},
          // Leap days.
          Case{Day(2, 28, 2028), Day(2, 29, 2028), 1}, Case{Day(2, 29, 2028), Day(2, 28, 2029), 12},
          Case{Day(2, 29, 2028), Day(3, 1, 2029), 13}, Case{Day(3, 1, 2027), Day(2, 29, 2028), 12},
          Case{Day(1, 31, 2028), Day(2, 29, 2028), 1}, Case{Day(1, 30, 2028), Day(2, 29, 2028), 1}}) {
        const long monthly =
            Add({{"WEEKORMONTH", "M"}, {"HRS", 1}, {"from_date", each.from}, {"to_DATE", each.to}});
        EXPECT_EQ(UseOfAuthorization(session, monthly).value().totalAuthorized, each.months)
            << FormatDate(each.from, "YYYY-MM-DD") << " to " << FormatDate(each.to, "YYYY-MM-DD");
    }
}

}  // namespace
}  // namespace kv
