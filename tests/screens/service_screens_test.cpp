// The screens of service: authorizations, rates, assignments, tasks, and the lists of a client's attributes.
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>

#include "billing/client_rates.h"
#include "screens/FRMICD9.h"
#include "screens/FRMMedinput.h"
#include "screens/FRMTask.h"
#include "screens/FRMauthorization.h"
#include "screens/FRMbillRates.h"
#include "screens/FRMcalc_percent.h"
#include "screens/FRMcopy.h"
#include "screens/FRMcopyAssign.h"
#include "screens/FRMextra_Calltype.h"
#include "screens/FRMimportant.h"
#include "screens/FRMmoveAssign.h"
#include "screens/FRMskills.h"
#include "screens/FRMupdatesch.h"
#include "screens/FRmassign.h"
#include "screens/client_screen.h"
#include "screens/frmClient_general.h"
#include "screens/frmClient_list.h"
#include "screens/record_list.h"
#include "screens/use_strip.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/number_box.h"
#include "screens/widgets/outline_tree.h"
#include "screens/widgets/text_box.h"
#include "screens/widgets/time_box.h"

namespace kv {
namespace {

using test::Lines;

Date Day(int month, int day) {
    return Date::FromCivil(2026, month, day);
}

/// The clock stands at Wednesday, 2026-03-04; weeks end on Saturday and the horizon is 2 weeks.
class ServiceScreens : public test::ClientScreenTest {
  protected:
    ServiceScreens() {
        session.WKENDING = "SAT";
        agency.Code().Execute("update Agency set sch_weeks = 2");
        AddClient("00001", {{"LASTNAME", "Grant"}, {"FIRSTNAM", "Ida"}});
        AddClient("00002", {{"LASTNAME", "Hill"}});
        agency.Insert("billcode_imaster", {{"billcode", 1}, {"insname", "Client"}});
        agency.Insert("billcode_imaster", {{"billcode", 7}, {"insname", "Medicaid"}});
        agency.Insert("billcode_idetail",
                      {{"billcode", 7}, {"visittype", "PCA"}, {"Description", "Personal Care"}});
        for (const auto& [code, text, kind] :
             {std::tuple("PCA", "Personal Care", "Both"), std::tuple("NUR", "Nursing", "Both"),
              std::tuple("PAY", "Training", "Payroll Only")}) {
            agency.Insert("Visit_types",
                          {{"code", code}, {"Description", text}, {"payroll_or_billing", kind}});
        }
        agency.Insert("Employee",
                      {{"Emp_id", "E1"}, {"LastName", "Ames"}, {"FirstName", "Al"}, {"t_code", "A"}});
        session.rsEmployee.Requery();
    }
    long Authorization(const test::Cells& more = {}) {
        test::Cells cells = {{"CLIENT", "00001"},
                             {"bill_code", 7},
                             {"bill_name", "Medicaid"},
                             {"visit_type", "PCA"},
                             {"vis_desc", "Personal Care"},
                             {"from_date", Day(3, 1)},
                             {"to_DATE", Day(12, 31)},
                             {"WEEKORMONTH", "W"},
                             {"HRS", 10},
                             {"status_code", "A"},
                             {"sch_type", "R"},
                             {"SHIFT_CODE", "2"}};
        cells.insert(cells.end(), more.begin(), more.end());
        return static_cast<long>(agency.Insert("Authorizations", cells));
    }
    template <typename Screen>
    Screen& Section(int index) {
        screen_->OpenSection(index);
        return *screen_->findChild<Screen*>();
    }
    static void Press(ToolBar* toolbar, const char* key) {
        QAction* action = toolbar->ActionOf(QString::fromLatin1(key));
        ASSERT_NE(action, nullptr) << key;
        ASSERT_TRUE(action->isEnabled()) << key;
        action->trigger();
    }
    static void PickItem(QComboBox* combo, const QString& item) {
        combo->setCurrentIndex(combo->findText(item));
        emit combo->activated(combo->currentIndex());
    }
};

TEST_F(ServiceScreens, AnAuthorizationIsMadeShownAndGivenUp) {
    Open();
    auto& screen = Section<FRMauthorization>(2);
    EXPECT_FALSE(screen.Toolbar3->IsKeyEnabled(QStringLiteral("edit")));
    EXPECT_FALSE(screen.Toolbar3->IsKeyEnabled(QStringLiteral("assign")));
    EXPECT_TRUE(screen.Toolbar3->ActionOf(QStringLiteral("tasks"))
                    ->toolTip()
                    .contains(QStringLiteral("You must add an authorization first")));
    Press(screen.Toolbar3, "new");
    EXPECT_EQ(screen.TDBDate2->DateValue(), Day(3, 4));
    EXPECT_EQ(screen.TDBDate3->DateValue(), Date::FromCivil(2036, 3, 4));
    EXPECT_EQ(screen.TXTweek->text() + screen.CMByes->Text() + screen.CMBAuthStatus->Text(),
              QStringLiteral("WNActive"));
    EXPECT_EQ(screen.NUMmax_hours->Number(), 24);
    EXPECT_FALSE(screen.FGauth->isEnabled());

    PickItem(screen.cmbPayor, QStringLiteral("Client"));
    EXPECT_FALSE(screen.Frame2->isVisible());
    EXPECT_FALSE(screen.txtCODE->isVisible());
    EXPECT_EQ(screen.cmbVisType->Items(),
              (QStringList{QStringLiteral("Personal Care"), QStringLiteral("Nursing")}))
        << "what is billed";
    PickItem(screen.cmbPayor, QStringLiteral("Medicaid"));
    EXPECT_TRUE(screen.Frame2->isVisible());
    EXPECT_EQ(screen.cmbVisType->Items(), QStringList{QStringLiteral("Personal Care")});
    qt_driver::Retype(*screen.cmbVisType, QStringLiteral("Dancing"));
    qt_driver::Leave(*screen.cmbVisType);
    EXPECT_EQ(agency.Said(), Lines{"message: Invalid Call Description.  Please try again"});
    EXPECT_FALSE(screen.Toolbar3->IsKeyEnabled(QStringLiteral("save")));
    PickItem(screen.cmbVisType, QStringLiteral("Personal Care"));
    EXPECT_EQ(screen.txtVisName->text(), QStringLiteral("PCA"));

    // Each kind of sharing the bill has its own amount.
    const std::tuple<int, const char*, bool, bool> kinds[] = {{0, "", false, false},
                                                              {1, "The Percentage:", false, true},
                                                              {3, "$ to Deduct:", true, false},
                                                              {6, "Max Hours:", true, false}};
    for (const auto& [type, caption, period, percentage] : kinds) {
        screen.CMBcoBilling->setCurrentIndex(type);
        emit screen.CMBcoBilling->activated(type);
        EXPECT_EQ(screen.NUMcoBilling->isVisible(), type != 0);
        EXPECT_EQ(screen.CMBwhen_Cobilling->isVisible(), period);
        EXPECT_EQ(screen.CMDcalc_Percentage->isVisible(), percentage);
        if (type != 0) {
            EXPECT_EQ(FromQt(screen.NUMcoBilling->Caption()), caption);
        }
    }
    screen.NUMcoBilling->SetNumber(3);
    screen.NUMhrs->SetNumber(12);
    screen.Optshift[2]->setChecked(true);
    Press(screen.Toolbar3, "save");
    EXPECT_EQ(agency.Said(), Lines());
    EXPECT_EQ(
        agency.Rows("select bill_code, visit_type, HRS, SHIFT_CODE, cobilling_type, cobilling_amount from "
                    "Authorizations"),
        Lines{"7|PCA|12|3|6|3"});
    ASSERT_EQ(screen.FGauth->RowCount(), 1);
    EXPECT_EQ(screen.FGauth->CellText(0, 2), QStringLiteral("Active"));
    EXPECT_TRUE(screen.FGauth->isEnabled());
    EXPECT_EQ(screen.cmbVisType->Text(), QStringLiteral("PCA - Personal Care"));
    EXPECT_TRUE(screen.Use->LBLperiod->text().contains(QStringLiteral("12.00")));
    EXPECT_TRUE(screen.Toolbar3->IsKeyEnabled(QStringLiteral("assign")));

    // Given up: the row as it was, and the keys reach the screen again.
    Press(screen.Toolbar3, "edit");
    screen.NUMhrs->SetNumber(99);
    screen.CMBAuthStatus->SetText(QStringLiteral("Closed"));
    Press(screen.Toolbar3, "discard");
    EXPECT_EQ(screen.NUMhrs->Number(), 12);
    EXPECT_EQ(screen.CMBAuthStatus->Text(), QStringLiteral("Active"));
    EXPECT_TRUE(screen.FGauth->hasFocus());
}

TEST_F(ServiceScreens, ACallTypeTypedLastIsLookedUpBeforeTheSave) {
    agency.Insert("billcode_idetail", {{"billcode", 7}, {"visittype", "NUR"}, {"Description", "Nursing"}});
    const long author = Authorization();
    agency.Insert("sch_day", {{"author_seq", author}, {"Sch_code", "S"}, {"visit_type", "PCA"}});
    Open();
    auto& screen = Section<FRMauthorization>(2);
    Press(screen.Toolbar3, "edit");
    qt_driver::Retype(*screen.cmbVisType, QStringLiteral("Dancing"));
    Press(screen.Toolbar3, "save");
    EXPECT_EQ(agency.Said(), Lines{"message: Invalid Call Description.  Please try again"});
    EXPECT_EQ(agency.Rows("select visit_type, vis_desc from Authorizations"), Lines{"PCA|Personal Care"});
    qt_driver::Retype(*screen.cmbVisType, QStringLiteral("Nursing"));
    qt_driver::Leave(*screen.cmbVisType);
    // Not after all: the row is as it was, and the list can be used again.
    screen.Ask = [](long) { return ImportantAnswer::No; };
    Press(screen.Toolbar3, "save");
    EXPECT_EQ(screen.txtVisName->text(), QStringLiteral("PCA"));
    EXPECT_TRUE(screen.FGauth->isEnabled());
    Press(screen.Toolbar3, "edit");
    qt_driver::Retype(*screen.cmbVisType, QStringLiteral("Nursing"));
    screen.Ask = [](long) { return ImportantAnswer::Yes; };
    Press(screen.Toolbar3, "save");
    EXPECT_EQ(agency.Rows("select visit_type, vis_desc from Authorizations"), Lines{"NUR|Nursing"});
}

TEST_F(ServiceScreens, AClosedAuthorizationClosesTheClientUnderTheScreen) {
    Authorization();
    Open();
    auto& screen = Section<FRMauthorization>(2);
    Press(screen.Toolbar3, "edit");
    PickItem(screen.CMBAuthStatus, QStringLiteral("Closed"));
    EXPECT_EQ(agency.Said(), Lines()) << "it ends within the year";
    agency.ports.dialogs.Answer({true, false});
    // Another client is picked: what was typed is asked for first.
    emit screen_->ListPane->FGtree->rowPicked("00002");
    EXPECT_EQ(agency.Said().front(),
              "question: Some information has changed, and is not saved.  Do you wish to save?");
    EXPECT_EQ(agency.Rows("select casestatcd from clientpr where client = '00001'"), Lines{"C"});
    EXPECT_EQ(ShownId(), "00002");
    EXPECT_EQ(screen.FGauth->RowCount(), 0);

    // The one in force opens; moves stay at the ends.
    for (const int month : {1, 3, 6}) {
        Authorization({{"CLIENT", "00002"}, {"from_date", Day(month, 1)}, {"to_DATE", Day(month + 1, 28)}});
    }
    emit screen_->ListPane->FGtree->rowPicked("00001");
    emit screen_->ListPane->FGtree->rowPicked("00002");
    EXPECT_EQ(screen.FGauth->CurrentRow(), 1);
    Press(screen.Toolbar3, "next");
    Press(screen.Toolbar3, "next");
    EXPECT_EQ(agency.Said(), Lines{"message: This is the Last Authorization for this Client"});
    EXPECT_EQ(screen.TDBDate2->DateValue(), Day(6, 1));
    emit screen.FGauth->rowPicked(0);
    Press(screen.Toolbar3, "previous");
    EXPECT_EQ(agency.Said(), Lines{"message: This is the first Authorization for this Client"});
    agency.Work().Execute("update Authorizations set status_code = 'S' where from_date = #2026-01-01#");
    screen.CHKActive_auth->click();
    EXPECT_EQ(screen.FGauth->RowCount(), 2);
}

TEST_F(ServiceScreens, TheBulkToolStandsOnlyInTheCheck) {
    Authorization({{"status_code", "C"}});
    Open();
    auto& screen = Section<FRMauthorization>(2);
    EXPECT_FALSE(screen.Migration->isVisible());
    screen_->OpenSection(0);
    Pick("CMBcliStatus", "Authorization Check");
    ASSERT_EQ(ShownId(), "00001");
    auto& check = Section<FRMauthorization>(2);
    ASSERT_TRUE(check.Migration->isVisible());
    EXPECT_EQ(check.TDBAbove->DateValue(), Day(3, 11));
    agency.Said();
    check.CMDmigration->click();
    EXPECT_EQ(agency.Said(), Lines{"message: Please fill in the new 'To Date'."});
    check.TDBMigration->SetDate(Day(6, 30));
    agency.ports.dialogs.Answer({false, true});
    check.CMDmigration->click();
    EXPECT_EQ(agency.Rows("select to_DATE from Authorizations"), Lines{"2026-12-31 00:00:00"});
    check.CMDmigration->click();
    EXPECT_EQ(agency.Said(), Lines(2,
                                   "question: Update the 'To Date' of 1 authorization to Jun/30/2026?\r\n"
                                   "0 visits not worked after that day will be deleted."));
    EXPECT_EQ(agency.Rows("select to_DATE from Authorizations"), Lines{"2026-06-30 00:00:00"});
    EXPECT_EQ(agency.Rows("select caseexpdat from clientpr where client = '00001'"),
              Lines{"2026-06-30 00:00:00"});
}

TEST_F(ServiceScreens, AssignmentsAreRefusedOnTheRoadAndToThoseWithoutTheRight) {
    Authorization();
    Open();
    auto& screen = Section<FRMauthorization>(2);
    session.OffLine = true;
    Press(screen.Toolbar3, "assign");
    Press(screen.Toolbar3, "delete");
    EXPECT_EQ(agency.Said(), (Lines{"message: You may not do any work on Assignments, while 'On the Road'",
                                    "message: You may not remove an Authorization while 'On the Road'"}));
    session.OffLine = false;
    for (const char* right : {"ASSV", "AUTA", "AUTE", "AUTD"}) {
        agency.Insert("Screens", {{"Screen", right}, {"access_code", "7"}});
    }
    session.Screens = "Q";
    screen_->OpenSection(0);
    auto& limited = Section<FRMauthorization>(2);
    for (const char* key : {"assign", "new", "edit", "delete"}) {
        EXPECT_FALSE(limited.Toolbar3->IsKeyEnabled(QString::fromLatin1(key))) << key;
    }
    EXPECT_TRUE(limited.Toolbar3->IsKeyEnabled(QStringLiteral("history")));
}

TEST_F(ServiceScreens, TheQuestionOfAnotherPayerHasThreeAnswers) {
    FRMimportant important(5);
    EXPECT_EQ(important.TXTauth->text(), QStringLiteral("Authorization 5"));
    const std::pair<QPushButton*, ImportantAnswer> answers[] = {{important.CMDall, ImportantAnswer::All},
                                                                {important.CMDyes, ImportantAnswer::Yes},
                                                                {important.CMDno, ImportantAnswer::No}};
    for (const auto& [key, answer] : answers) {
        auto driver = OnDialog<FRMimportant>([button = key](FRMimportant&) { button->click(); });
        EXPECT_EQ(important.Answer(), answer);
    }
    auto closed = OnDialog<FRMimportant>([](FRMimportant& dialog) { dialog.reject(); });
    EXPECT_EQ(important.Answer(), ImportantAnswer::No) << "closing the window saves nothing";
}

TEST_F(ServiceScreens, RatesAreTheClientsToChangeAndThePayersToLookAt) {
    agency.Code().Execute("update Agency set start1 = #08:00:00#, stop1 = #16:00:00#, start7 = null");
    agency.Insert("clirate", {{"CLIENT", "00001"},
                              {"visittype", "PCA"},
                              {"Description", "Personal Care"},
                              {"method", "H"},
                              {"rate1", Currency::FromDouble(20)},
                              {"rate5", Currency::FromDouble(31)}});
    Authorization();
    Open();
    auto& screen = Section<FRMbillRates>(1);
    EXPECT_EQ(screen.cmbPayor->currentText(), QStringLiteral("Medicaid"))
        << "the payer of the first authorization";
    EXPECT_FALSE(screen.DBcliRate->Form->isEnabled());
    EXPECT_FALSE(screen.DBcliRate->Toolbar->IsKeyEnabled(QStringLiteral("new")));
    EXPECT_EQ(screen.LBLrates->text(), QStringLiteral("All Billing Rates For Payer Medicaid"));
    PickItem(screen.cmbPayor, QStringLiteral("Client"));
    EXPECT_EQ(screen.LBLrates->text(), QStringLiteral("Billing Rates For This Client Only"));
    EXPECT_TRUE(screen.Rates[0]->isEnabled());
    EXPECT_FALSE(screen.Rates[4]->isEnabled()) << "the agency has no weekend evening";
    screen.Rates[0]->SetNumber(22.5);
    Press(screen.DBcliRate->Toolbar, "save");
    EXPECT_EQ(agency.Rows("select rate1, rate5 from clirate"), Lines{"22.5|31"});

    // A call type is picked for a new row; one that is only paid is refused.
    screen.PickType = [] { return std::string("PAY"); };
    Press(screen.DBcliRate->Toolbar, "new");
    EXPECT_EQ(screen.TXTmethod->text(), QStringLiteral("H"));
    Press(screen.DBcliRate->Toolbar, "save");
    EXPECT_EQ(agency.Said(), Lines{"message: You must enter in a valid call type before saving"});
    screen.PickType = [] { return std::string("NUR"); };
    screen.CMDvistype->click();
    EXPECT_EQ(screen.TXTvisdesc->text(), QStringLiteral("Nursing"));
    Press(screen.DBcliRate->Toolbar, "save");
    EXPECT_EQ(screen.DBcliRate->List->RowCount(), 2);

    // Another client's rates are pasted over these, once asked.
    agency.Insert("clirate", {{"CLIENT", "00002"}, {"visittype", "PCA"}, {"rate1", Currency::FromDouble(9)}});
    screen.PickOther = [] { return std::string("00002"); };
    screen.CMDcli_Find_Rates->click();
    agency.ports.dialogs.Answer({false, true});
    screen.CMDsave_Rates->click();
    EXPECT_EQ(screen.DBcliRate->List->RowCount(), 2);
    screen.CMDsave_Rates->click();
    EXPECT_EQ(agency.Rows("select visittype, rate1 from clirate where client = '00001'"), Lines{"PCA|9"});

    FRMcopy copy(session, "00001", {{"PCA", "Personal Care"}}, "PCA");
    ASSERT_EQ(copy.LST1->count(), 1);
    copy.Command1->click();
    copy.CMDsave->click();
    EXPECT_EQ(agency.Rows("select visittype, Description, rate1 from clirate where client = '00001' order by "
                          "visittype"),
              (Lines{"NUR|Nursing|9", "PCA|<Null>|9"}));
    FRMcopy none(session, "00001", {{"PCA", "Personal Care"}}, "PCA");
    EXPECT_EQ(none.LST1->item(0)->text(), QStringLiteral("There are no Call types"));
    EXPECT_FALSE(none.CMDsave->isEnabled());
}

class AssignScreen : public ServiceScreens {
  protected:
    AssignScreen() { author_ = Authorization(); }
    FRmassign& OpenAssign() {
        assign_ = std::make_unique<FRmassign>(session, ParentOf(session, author_).value());
        assign_->Preview = [this](const Document& document) { printed_.push_back(PlainText(document)); };
        assign_->Asks.showConflicts = [this](const std::vector<AssignmentConflict>& found) {
            conflicts_ += found.size();
            return true;
        };
        assign_->Asks.askMove = [](int forward, int) { return forward; };
        assign_->Asks.updateSchedules = [this](const ScheduleUpdate& update) { updates_.push_back(update); };
        qt_driver::Show(*assign_);
        return *assign_;
    }
    static QStringList Tree(const FRmassign& screen) {
        QStringList lines;
        for (const std::string& id : screen.FGtree->Ids()) {
            lines << screen.FGtree->TextOf(id);
        }
        return lines;
    }

    long author_ = 0;
    std::unique_ptr<FRmassign> assign_;
    std::vector<std::string> printed_;
    std::size_t conflicts_ = 0;
    std::vector<ScheduleUpdate> updates_;
};

TEST_F(AssignScreen, SeveralDaysAreEnteredAtOnceThenChangedOneByOne) {
    FRmassign& screen = OpenAssign();
    EXPECT_EQ(screen.FGauth->CellText(0, 2), QStringLiteral("Medicaid"));
    EXPECT_EQ(screen.FGcli->CellText(0, 1), QStringLiteral("Grant, Ida"));
    EXPECT_FALSE(screen.TXTsttime->isEnabled()) << "nothing to change yet";
    Press(screen.Toolbar2, "new");
    EXPECT_EQ(screen.TXTsttime->Text(), QStringLiteral("08:00 AM"));
    EXPECT_EQ(screen.TDBlastdate->Caption(), QStringLiteral("First Schedule Creation Date"));
    EXPECT_EQ(screen.TDBlastdate->DateValue(), Day(3, 1)) << "the From date is not older than a week";
    EXPECT_FALSE(screen.ENDtime->isEnabled());
    Press(screen.Toolbar2, "save");
    EXPECT_EQ(agency.Said(), (Lines{"fault: At least one day must be checked before you can save!",
                                    "fault: Hours must be greater than 0 before you can save!"}));
    EXPECT_TRUE(screen.OPTday[0]->hasFocus());
    screen.OPTday[1]->click();
    screen.OPTday[3]->click();
    EXPECT_TRUE(screen.OPTday[1]->isChecked() && screen.OPTday[3]->isChecked());

    qt_driver::Retype(*screen.TXTsttime, QStringLiteral("8:10a"));
    qt_driver::Leave(*screen.TXTsttime);
    EXPECT_EQ(agency.Said(), Lines{"message: Assignments may only start every 15 minutes"});
    EXPECT_TRUE(screen.TXTsttime->hasFocus());
    qt_driver::Retype(*screen.TXTsttime, QStringLiteral("11p"));
    qt_driver::Leave(*screen.TXTsttime);
    qt_driver::Retype(*screen.NUMhrs, QStringLiteral("1.5"));
    qt_driver::Leave(*screen.NUMhrs);
    EXPECT_EQ(screen.ENDtime->Text(), QStringLiteral("12:30 AM"));
    screen.CHKend->click();
    EXPECT_TRUE(screen.ENDtime->isEnabled());
    EXPECT_FALSE(screen.NUMhrs->isEnabled());
    screen.ENDtime->SetDigits(QStringLiteral("0100"));
    EXPECT_EQ(screen.NUMhrs->Number(), 2) << "behind midnight";
    screen.CHKmil->click();
    EXPECT_EQ(screen.TXTsttime->Text() + screen.ENDtime->Text(), QStringLiteral("23:0001:00"));
    screen.CHKmil->click();
    qt_driver::Retype(*screen.NUMhowoften, QStringLiteral("2"));
    qt_driver::Leave(*screen.NUMhowoften);
    EXPECT_EQ(agency.Said(),
              Lines{"message: This assignment will only create a schedule once every 2 weeks!!!   It "
                    "is not used to tell the system how many weeks to schedule!"});
    qt_driver::Retype(*screen.NUMhowoften, QStringLiteral("1"));
    qt_driver::Leave(*screen.NUMhowoften);
    qt_driver::Retype(*screen.TXTempid, QStringLiteral("E9"));
    qt_driver::Leave(*screen.TXTempid);
    EXPECT_EQ(agency.Said(), Lines{"message: Caregiver was not found"});
    EXPECT_EQ(screen.TXTempid->text(), QString());
    screen.Pick = [] { return std::string("E1"); };
    screen.CMDempfind->click();
    EXPECT_EQ(screen.Text1->text(), QStringLiteral("Ames, Al"));
    EXPECT_EQ(screen.fgEMP->CellText(0, 0), QStringLiteral("E1"));
    EXPECT_TRUE(screen.LblHours->text().startsWith(QStringLiteral("Hrs current wk 0.00")));
    Press(screen.Toolbar2, "save");
    EXPECT_EQ(agency.Said(), Lines());
    EXPECT_EQ(Tree(screen), (QStringList{QStringLiteral("11:00 PM-01:00 AM   02.00 hrs  Ames, Al"),
                                         QStringLiteral("11:00 PM-01:00 AM   02.00 hrs  Ames, Al")}));
    EXPECT_EQ(agency.Rows("select sequence from sch_day").size(), 4U);
    EXPECT_EQ(screen.TDBlastdate->Caption(), QStringLiteral("Next Schedule Creation Date"));
    EXPECT_EQ(screen.TDBlastdate->DateValue(), Day(3, 21));
    EXPECT_EQ(agency.Rows("select Last_date from assign where sequence = 1"), Lines{"2026-03-14 00:00:00"});

    // A saved one has one day. The other rows wait while it is changed.
    emit screen.FGtree->rowPicked("2");
    EXPECT_TRUE(screen.OPTday[3]->isChecked());
    screen.OPTday[5]->click();
    EXPECT_FALSE(screen.OPTday[3]->isChecked());
    EXPECT_FALSE(screen.FGtree->isEnabled());
    agency.ports.dialogs.Answer({true});
    Press(screen.Toolbar2, "save");
    EXPECT_EQ(agency.Said(), Lines{"question: Change all exisiting schedules from today forward?"});
    ASSERT_EQ(updates_.size(), 1U);
    EXPECT_EQ(updates_[0].dayDifference, 2);
    EXPECT_EQ(screen.FGtree->HighlightedId(), "2");
    EXPECT_EQ(screen.TDBlastdate->DateValue(), Day(3, 21)) << "what the screen showed";

    // Leaving in the middle of a change asks; No keeps nothing.
    screen.NUMhrs->SetNumber(9);
    agency.ports.dialogs.Answer({false});
    screen.reject();
    EXPECT_EQ(agency.Said(),
              Lines{"question: Some information has changed, and is not saved.  Do you wish to save?"});
    EXPECT_FALSE(screen.isVisible());
    EXPECT_EQ(agency.Rows("select HRS from assign"), (Lines{"2", "2"}));
}

TEST_F(AssignScreen, ACaregiverTypedLastIsCheckedBeforeTheSave) {
    FRmassign& screen = OpenAssign();
    Press(screen.Toolbar2, "new");
    screen.OPTday[1]->click();
    screen.NUMhrs->SetNumber(2);
    qt_driver::Retype(*screen.TXTempid, QStringLiteral("E9"));
    Press(screen.Toolbar2, "save");
    EXPECT_EQ(agency.Said(), Lines{"message: Caregiver was not found"});
    EXPECT_EQ(agency.Rows("select sequence from assign"), Lines()) << "an open visit is made on purpose only";
    EXPECT_TRUE(screen.TXTempid->text().isEmpty());
    Press(screen.Toolbar2, "save");
    EXPECT_EQ(agency.Rows("select emp_id from assign"), Lines{""});
}

TEST_F(AssignScreen, LookingAtARowIsNoChangeAndNeverSpeaks) {
    agency.Insert("emp_ban", {{"emp_id", "E1"}, {"client", "00001"}});
    agency.Insert("assign", {{"author_seq", author_},
                             {"CLIENT", "00001"},
                             {"Day", "TUE"},
                             {"Status", "2"},
                             {"St_time", Date::FromTime(9, 0)},
                             {"END_TIME", Date::FromTime(10, 0)},
                             {"HRS", 1},
                             {"howoften", 3},
                             {"emp_id", "E1"},
                             {"Last_date", Day(3, 7)},
                             {"Type", "A"}});
    FRmassign& screen = OpenAssign();
    EXPECT_TRUE(screen.OPTday[2]->isChecked());
    EXPECT_EQ(screen.TDBlastdate->DateValue(), Day(3, 28));
    EXPECT_EQ(screen.Text1->text(), QStringLiteral("Ames, Al"));
    EXPECT_EQ(agency.Said(), Lines());
    EXPECT_FALSE(screen.Toolbar2->IsKeyEnabled(QStringLiteral("save")));
    EXPECT_EQ(screen.TXTempid->text(), QStringLiteral("E1"));
    Press(screen.Toolbar2, "next");
    EXPECT_EQ(agency.Said().size(), 1U);
    agency.ports.dialogs.Answer({true, true});
    Press(screen.Toolbar2, "delete");
    EXPECT_EQ(Tree(screen), QStringList());
    EXPECT_EQ(screen.fgEMP->RowCount(), 0);
    EXPECT_FALSE(screen.NUMhrs->isEnabled());

    // Copied from another authorization.
    const long other = Authorization();
    agency.Insert("assign", {{"author_seq", other},
                             {"CLIENT", "00001"},
                             {"Day", "FRI"},
                             {"Status", "5"},
                             {"St_time", Date::FromTime(9, 0)},
                             {"HRS", 1},
                             {"howoften", 1},
                             {"Last_date", Day(2, 28)},
                             {"Type", "A"}});
    FRMcopyAssign pick(session, ParentOf(session, author_).value());
    ASSERT_EQ(pick.FGauth->RowCount(), 1);
    auto driver = OnDialog<FRMcopyAssign>([](FRMcopyAssign& dialog) { dialog.CMDok->click(); });
    EXPECT_EQ(pick.Pick(), other);
    screen.PickSource = [other] { return other; };
    Press(screen.Toolbar2, "copy");
    EXPECT_EQ(Tree(screen).size(), 1);
    EXPECT_EQ(agency.Rows("select st_date from sch_day"),
              (Lines{"2026-03-06 00:00:00", "2026-03-13 00:00:00"}));
}

TEST_F(AssignScreen, VisitsAreChosenForTheChange) {
    for (const int day : {9, 10, 16}) {
        agency.Insert("sch_day", {{"assign_seq", 5},
                                  {"Sch_code", "S"},
                                  {"CLIENT", "00001"},
                                  {"st_date", Day(3, day)},
                                  {"HRS", 4},
                                  {"emp_name", "Bell, Bo"}});
    }
    FRMupdatesch screen(session, {5, "MON", 0, "", Date::FromTime(7, 0), Date::FromTime(9, 0), 2});
    ASSERT_EQ(screen.FGchg_Sch->RowCount(), 3);
    EXPECT_EQ(screen.FGchg_Sch->CellText(0, 2), QStringLiteral("Mon"));
    EXPECT_FALSE(screen.FGchg_Sch->Cell(1, 0).IsTrue()) << "a Tuesday";
    EXPECT_EQ(screen.List1->count(), 1);
    emit screen.FGchg_Sch->tickToggled(0, 0, false);
    screen.CMDprocess->click();
    EXPECT_EQ(agency.Rows("select HRS from sch_day order by st_date"), (Lines{"4", "4", "2"}));
    EXPECT_FALSE(screen.CMDprocess->isEnabled()) << "a second time would move them once more";
    EXPECT_EQ(
        screen.List1->item(screen.List1->count() - 1)->text(),
        QStringLiteral("Schedule changes completed. You may need to refresh your schedule screen to see "
                       "changes."));

    FRMmoveAssign move(2, 5);
    EXPECT_EQ(move.OPTdate[0]->text(), QStringLiteral("Move Schedules forward 2 days"));
    auto back = OnDialog<FRMmoveAssign>([](FRMmoveAssign& dialog) {
        dialog.OPTdate[1]->click();
        dialog.CMDok->click();
    });
    EXPECT_EQ(move.Ask(), -5);
    auto cancel = OnDialog<FRMmoveAssign>([](FRMmoveAssign& dialog) { dialog.CMDexit->click(); });
    EXPECT_EQ(move.Ask(), std::nullopt);
}

TEST_F(AssignScreen, ThirtyTasksAtMostAreChosen) {
    for (int i = 0; i < 31; ++i) {
        agency.Insert("main.tasks",
                      {{"code", "T" + std::to_string(i)}, {"Description", "Task " + std::to_string(i)}});
    }
    FRMTask screen(session, author_);
    for (int i = 0; i < 31; ++i) {
        screen.CHKtask->item(i)->setCheckState(Qt::Checked);
    }
    EXPECT_EQ(agency.Said(), Lines{"message: You Have reached the maximum number of tasks!"});
    EXPECT_EQ(screen.CHKtask->item(30)->checkState(), Qt::Unchecked);
    screen.CMDdoctor[0]->click();
    EXPECT_EQ(agency.Said().size(), 1U) << "no day is checked";
    screen.CHKDay[0]->click();
    screen.CMDdoctor[0]->click();
    EXPECT_EQ(screen.FGTasks->RowCount(), 30);
    EXPECT_EQ(screen.CHKtask->item(0)->checkState(), Qt::Unchecked);
    agency.ports.dialogs.Input({std::string("Another word")});
    screen.FGTasks->SetCurrentRow(3);
    screen.CMDdoctor[2]->click();
    EXPECT_EQ(agency.Rows("select dow from assign_task where description = 'Another word'"), Lines{"AUT"});
    agency.ports.dialogs.Answer({true});
    screen.CMDdoctor[1]->click();
    EXPECT_EQ(screen.FGTasks->RowCount(), 29);
}

TEST_F(ServiceScreens, SkillsAndCallTypesArePickedFromTheList) {
    agency.Insert("skills", {{"code", "OX"}, {"Description", "Oxygen"}, {"critical", 1}});
    agency.Insert("skills", {{"code", "CO"}, {"Description", "Cooking"}});
    agency.Insert("cli_calltype", {{"code", "NEW"}, {"Description", "ADD A NEW Call Type"}});
    Open();
    auto& skills = Section<FRMskills>(7);
    EXPECT_EQ(skills.FGmaster->CellText(1, 1), QStringLiteral("Oxygen  (critical)"));
    EXPECT_FALSE(skills.CMDremove->isEnabled());
    skills.CMDadd->click();
    EXPECT_EQ(agency.Said(), Lines{"message: Check items on the left first, then click Add"});
    skills.IMGCommand[0]->click();
    skills.CMDadd->click();
    EXPECT_EQ(skills.FGown->RowCount(), 2);
    EXPECT_FALSE(skills.FGmaster->Cell(0, 0).IsTrue()) << "the ticks are taken away";
    skills.FGown->SetCurrentRow(1);
    agency.ports.dialogs.Answer({true});
    skills.CMDremove->click();
    EXPECT_EQ(agency.Rows("select ID from cli_misc"), Lines{"CO"});
    emit screen_->ListPane->FGtree->rowPicked("00002");
    EXPECT_EQ(skills.FGown->RowCount(), 0);
    agency.Said();

    auto& types = Section<FRMextra_Calltype>(10);
    types.FGmaster->SetCell(0, 0, Value(true));
    auto driver = OnDialog<FRMMedinput>([this](FRMMedinput& input) {
        EXPECT_EQ(input.windowTitle(), QStringLiteral("Add a New Extra Call Type"));
        input.TXTinput->setText(QStringLiteral("Dog, cat's walk"));
        EXPECT_EQ(agency.Said(), Lines{"message: You may not have a , or a ' in your description"});
        EXPECT_EQ(input.TXTinput->text(), QStringLiteral("Dog cats walk"));
        qt_driver::Press(*input.TXTinput, Qt::Key_Return);
    });
    types.CMDadd->click();
    EXPECT_EQ(types.FGown->CellText(0, 0), QStringLiteral("Dog cats walk"));
}

TEST_F(ServiceScreens, DiagnosesAreLocatedAttachedAndTakenOver) {
    agency.Insert("ICD9", {{"code", "250.00"}, {"Description", "Diabetes"}});
    agency.Insert("ICD9", {{"code", "436"}, {"Description", "Stroke"}});
    agency.Insert("main.DIAGNOSIS", {{"code", "436"}, {"description", "Stroke"}});
    Open();
    screen_->ShowPart(1);
    auto driver = OnDialog<FRMICD9>([](FRMICD9& screen) {
        EXPECT_EQ(screen.TXTcliname->text(), QStringLiteral("Ida Grant"));
        EXPECT_FALSE(screen.CMDdel->isEnabled());
        for (const char* piece : {"stro", "DIAB"}) {
            qt_driver::Retype(*screen.txtLOCATE, QString::fromLatin1(piece));
            qt_driver::Press(*screen.txtLOCATE, Qt::Key_Return);
            EXPECT_EQ(screen.txtLOCATE->text(), QString());
        }
        EXPECT_TRUE(screen.isVisible()) << "Enter locates and closes nothing";
        screen.CMDadd->click();
        EXPECT_EQ(screen.FGicd9->RowCount(), 2);
        screen.CMDdel->click();
        EXPECT_EQ(screen.FGicd9->RowCount(), 1);
        screen.Toolbar1->ActionOf(QStringLiteral("exit"))->trigger();
    });
    screen_->General->CMDicd9->click();
    EXPECT_EQ(screen_->General->TDBCombo26->BoundText(), "436") << "a diagnosis of the list";
    EXPECT_EQ(screen_->General->Combo1->text(), QStringLiteral("250.00 Diabetes")) << "one of none, in words";
    EXPECT_EQ(agency.Rows("select ID from cli_misc where area = 'ICD'"), Lines{"436"});
}

}  // namespace
}  // namespace kv
