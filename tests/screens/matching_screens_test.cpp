// The screens of the caregiver search.
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include "screens/FRMICD9.h"
#include "screens/FRMTask.h"
#include "screens/FRMcopyAssign.h"
#include "screens/FRMdisEmp.h"
#include "screens/FRMdisdetail.h"
#include "screens/FRMempsug.h"
#include "screens/FRMfindOpenEmployee.h"
#include "screens/FRMupdatesch.h"
#include "screens/FRmassign.h"
#include "screens/client_screen.h"
#include "screens/frmClient_header.h"
#include "screens/frmDiscrep.h"
#include "screens/widgets/check_box.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/number_box.h"
#include "screens/widgets/outline_tree.h"
#include "screens/widgets/quarter_chart.h"
#include "screens/widgets/text_box.h"
#include "screens/widgets/time_box.h"

namespace kv {
namespace {

using test::Lines;

Date Day(int month, int day) {
    return Date::FromCivil(2026, month, day);
}
Date At(int hour, int minute = 0) {
    return Date::FromTime(hour, minute);
}

/// The clock stands at Wednesday, 2026-03-04; a caregiver is looked for on Thursday, from 9 for 4 hours.
class MatchingScreens : public test::ClientScreenTest {
  protected:
    MatchingScreens() {
        session.WKENDING = "SAT";
        AddClient("00001", {{"LASTNAME", "Grant"}, {"FIRSTNAM", "Ida"}, {"LANGUAGE", "LT"}});
        const auto caregiver = [this](const char* id, const char* last, int hours) {
            agency.Insert("Employee", {{"emp_id", id},
                                       {"LastName", last},
                                       {"FirstName", "Al"},
                                       {"t_code", "A"},
                                       {"disp_level", 2},
                                       {"hrsper_week", hours},
                                       {"EMP_TYPE", "FIELD"},
                                       {"SEX", "F"},
                                       {"tot_lang", id[5] == '1' ? "LT" : "EN"}});
        };
        caregiver("000001", "Ames", 20);
        caregiver("000002", "Bell", 30);
        caregiver("000003", "Cole", 40);
        agency.Insert("sch_day", {{"emp_id", "000003"},
                                  {"CLIENT", "00009"},
                                  {"cli_name", "Ivy, Una"},
                                  {"st_date", Day(3, 5)},
                                  {"St_time", At(10)},
                                  {"END_TIME", At(11)},
                                  {"HRS", 1}});
        agency.Insert("sch_day", {{"emp_id", "000001"},
                                  {"CLIENT", "00009"},
                                  {"cli_name", "Ivy, Una"},
                                  {"st_date", Day(3, 5)},
                                  {"St_time", At(14)},
                                  {"END_TIME", At(15)},
                                  {"HRS", 1}});
        agency.Insert(
            "emp_ban",
            {{"client", "00001"}, {"emp_id", "000002"}, {"emp_name", "Bell, Al"}, {"Notes", "Was late"}});
        session.rsEmployee.Requery();
        request_ = {"00001", Day(3, 5), At(9), 4, 0, false};
    }
    FRMempsug& OpenSearch() {
        search_ = std::make_unique<FRMempsug>(session, request_);
        search_->Preview = [this](const Document& document) { printed_ = PlainText(document); };
        qt_driver::Show(*search_);
        return *search_;
    }
    static QString Names(const FRMempsug& screen) {
        QStringList names;
        for (int row = 0; row < screen.FG2->RowCount(); ++row) {
            names << screen.FG2->Row(row).cells[0];
        }
        return names.join(QLatin1Char(' '));
    }
    static void Press(ToolBar* toolbar, const char* key) {
        QAction* action = toolbar->ActionOf(QString::fromLatin1(key));
        ASSERT_NE(action, nullptr) << key;
        ASSERT_TRUE(action->isEnabled()) << key;
        action->trigger();
    }

    SuggestionRequest request_;
    std::unique_ptr<FRMempsug> search_;
    std::string printed_;
};

TEST_F(MatchingScreens, TheSearchShowsWhoIsFreeAndOneIsChosen) {
    FRMempsug& screen = OpenSearch();
    ASSERT_TRUE(screen.IsUsable());
    EXPECT_EQ(Names(screen), QStringLiteral("Bell, Al Ames, Al")) << "most hours left first";
    EXPECT_EQ(screen.LBLRecordCount->text(), QStringLiteral("Count: 2"));
    EXPECT_EQ(screen.FG2->Row(0).icon, QStringLiteral("warning"));
    EXPECT_EQ(screen.FG2->CurrentRow(), 0);
    EXPECT_EQ(screen.Label1->text(), QStringLiteral("This Caregiver Should not be Selected"));
    EXPECT_EQ(screen.Sugtxt->toPlainText(), QStringLiteral("Was late"));
    EXPECT_EQ(screen.Frame1->title(), QStringLiteral("Why Caregiver is not recommended"));
    EXPECT_EQ(screen.LBLbillrate->text(), QStringLiteral("Missing a Bill Rate"));
    EXPECT_EQ(screen.FG2->TextAt(1, 56), QStringLiteral("Ivy, Una"));

    // The arrows move, and the panel follows.
    screen.FG2->setFocus();
    QTest::keyClick(screen.FG2, Qt::Key_Down);
    EXPECT_EQ(screen.fgEMP->CellText(0, 1), QStringLiteral("000001"));
    EXPECT_FALSE(screen.Label1->isVisible());
    EXPECT_EQ(screen.LBLweek->text(),
              QStringLiteral("This week: 1.00 hours, 5.00 with this visit. Visits to this client: 0."));
    Press(screen.Toolbar1, "next");
    EXPECT_EQ(screen.FG2->CurrentRow(), 1) << "past the end it stays";

    // Why not?
    screen.TXTwhy->setText(QStringLiteral("cole, a"));
    QTest::keyClick(screen.TXTwhy, Qt::Key_Return);
    EXPECT_EQ(
        screen.LBLwhy->text(),
        QStringLiteral("Cole, Al (000003): Is already scheduled then. Start at 11:00 AM, 2 hours later."));
    EXPECT_EQ(screen.FG2->CurrentRow(), 1) << "Enter searches nothing anew";
    screen.TXTwhy->setText(QStringLiteral("Bell"));
    QTest::keyClick(screen.TXTwhy, Qt::Key_Return);
    EXPECT_EQ(screen.FG2->CurrentRow(), 0);

    // Printed as it stands; the rejected by themselves.
    Press(screen.Toolbar1, "print");
    EXPECT_NE(printed_.find("Ames, Al | 19 | 14:00-15:00 Ivy, Una"), std::string::npos) << printed_;
    Press(screen.Toolbar1, "notdisplayed");
    EXPECT_NE(printed_.find("Cole, Al is already scheduled"), std::string::npos);

    // A box that is ticked and a start that is changed.
    screen.CHKLanguage->setChecked(true);
    screen.Command1->click();
    EXPECT_EQ(Names(screen), QStringLiteral("Ames, Al"));
    screen.CHKLanguage->setChecked(false);
    screen.TXTtime->SetTime(At(11));
    screen.Command1->click();
    EXPECT_EQ(Names(screen), QStringLiteral("Cole, Al Bell, Al")) << "the other one visits at two";
    screen.CHKignore_Times->setChecked(true);
    EXPECT_FALSE(screen.TXTtime->isEnabled());
    screen.CHKPotential->setChecked(true);
    screen.Command1->click();
    EXPECT_EQ(screen.FG2->RowCount(), 0);
    EXPECT_FALSE(screen.CMDshowWeek->isVisible());
    EXPECT_FALSE(screen.Toolbar1->IsKeyEnabled(QStringLiteral("select")));
    screen.CHKignore_Times->setChecked(false);
    screen.CHKPotential->setChecked(false);
    screen.Command1->click();

    agency.Said();
    agency.ports.dialogs.Answer({false, true});
    Press(screen.Toolbar1, "select");
    EXPECT_TRUE(screen.isVisible());
    Press(screen.Toolbar1, "select");
    EXPECT_EQ(agency.Said(), Lines(2, "question: Are you sure you wish to schedule Caregiver: Cole, Al"));
    EXPECT_EQ(screen.Chosen(), "000003");
    EXPECT_FALSE(screen.isVisible());
}

TEST_F(MatchingScreens, WhoMayBeLessFreeThanShownBearsAMarkAndTheReason) {
    agency.Insert(
        "assign",
        {{"emp_id", "000002"}, {"Type", "N"}, {"Day", "WED"}, {"St_time", At(22)}, {"END_TIME", At(10)}});
    FRMempsug& screen = OpenSearch();
    EXPECT_EQ(Names(screen), QStringLiteral("Bell, Al Ames, Al")) << "the result stands";
    EXPECT_EQ(screen.LBLRecordCount->text(), QStringLiteral("Count: 2 (1 may be less free than shown)"));
    const QString reasons = QStringLiteral(
        "May be less free than shown:\nUnavailable from 10:00 PM the day before to 10:00 AM, in the time "
        "asked "
        "for, and shown as free: it runs past midnight.");
    const ChartRow& marked = screen.FG2->Row(0);
    EXPECT_EQ(marked.icon, QStringLiteral("warning")) << "should not visit this client either";
    EXPECT_EQ(marked.mark, QStringLiteral("question"));
    EXPECT_EQ(marked.tip, QStringLiteral("This caregiver should not visit this client\n") + reasons);
    EXPECT_TRUE(screen.FG2->accessibleDescription().endsWith(reasons))
        << FromQt(screen.FG2->accessibleDescription());
    EXPECT_TRUE(screen.LBLfree->isVisible());
    EXPECT_EQ(screen.LBLfree->text(), reasons);
    EXPECT_TRUE(screen.FG2->Row(1).mark.isEmpty());
    Press(screen.Toolbar1, "next");
    EXPECT_FALSE(screen.LBLfree->isVisible());
    Press(screen.Toolbar1, "previous");
    EXPECT_TRUE(screen.LBLfree->isVisible());
    // More than the panel has room for stand in its tip.
    for (const int hour : {14, 15}) {
        agency.Insert("assign", {{"emp_id", "000002"},
                                 {"Type", "N"},
                                 {"Day", "THU"},
                                 {"St_time", At(hour, 5)},
                                 {"END_TIME", At(hour, 30)}});
    }
    screen.Command1->click();
    EXPECT_EQ(screen.LBLfree->text().count(QLatin1Char('\n')), 3);
    EXPECT_TRUE(screen.LBLfree->text().endsWith(QStringLiteral("and 1 more, see the tip")));
    EXPECT_EQ(screen.LBLfree->toolTip().count(QStringLiteral("quarter of an hour")), 2);
    // Nobody is left.
    screen.CHKPotential->setChecked(true);
    screen.Command1->click();
    EXPECT_FALSE(screen.LBLfree->isVisible());
    EXPECT_EQ(screen.LBLRecordCount->text(), QStringLiteral("Count: 0"));
}

TEST_F(MatchingScreens, AMissingRateIsExplained) {
    const auto author = static_cast<long>(
        agency.Insert("Authorizations", {{"CLIENT", "00001"}, {"visit_type", "PCA"}, {"bill_code", 1}}));
    FRMempsug& screen = OpenSearch();
    EXPECT_EQ(screen.LBLbillrate->text(), QStringLiteral("Missing a Bill Rate"));
    EXPECT_EQ(screen.LBLbillreason->text(), QStringLiteral("No authorization stands behind this search."));
    search_.reset();
    request_.openedFrom = author;
    EXPECT_EQ(
        OpenSearch().LBLbillreason->text(),
        QStringLiteral("No authorization stands behind this search. The assignment's own has no rate for "
                       "this visit either."));
    agency.Insert(
        "clirate",
        {{"CLIENT", "00001"}, {"visittype", "PCA"}, {"method", "H"}, {"rate1", Currency::FromDouble(30)}});
    agency.Code().Execute("update Agency set start1 = #08:00:00#, stop1 = #20:00:00#");
    search_->NUMhours->SetNumber(3);
    search_->Command1->click();
    EXPECT_EQ(search_->LBLbillrate->text(), QStringLiteral("Missing a Bill Rate"))
        << "as the search has none";
    EXPECT_EQ(
        search_->LBLbillreason->text(),
        QStringLiteral("No authorization stands behind this search. The assignment's own would bill 90.00 "
                       "for this visit."));
    EXPECT_EQ(Names(*search_), QStringLiteral("Bell, Al Ames, Al")) << "it filters nobody";
    search_->NUMhours->SetNumber(0);
    search_->Command1->click();
    EXPECT_EQ(search_->LBLbillreason->text(),
              QStringLiteral("No authorization stands behind this search. Without hours nothing is billed."));
    search_.reset();
    request_.authorization = author;
    EXPECT_FALSE(OpenSearch().LBLbillreason->isVisible());
    EXPECT_FALSE(search_->LBLbillrate->isVisible());
}

TEST_F(MatchingScreens, OneSearchAtATimeAndTheBoxesAreRemembered) {
    FRMempsug& first = OpenSearch();
    const FRMempsug second(session, request_);
    EXPECT_FALSE(second.IsUsable());
    EXPECT_EQ(agency.Said(), Lines{"message: The Caregiver Suggestion is being used by the schedule module.  "
                                   "Please exit it, then try again"});
    first.CHKgender->setChecked(true);
    agency.ports.dialogs.Answer({true, true});
    search_.reset();
    EXPECT_TRUE(OpenSearch().CHKgender->isChecked());
    EXPECT_FALSE(search_->CHKLanguage->isChecked());
}

TEST_F(MatchingScreens, TheChartDrawsMoreRowsThanCanBeSeen) {
    std::vector<ChartRow> rows(2000);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        rows[i].cells = {QString::number(i), QStringLiteral("1")};
        rows[i].quarters[40] = {QuarterKind::Busy, 1};
    }
    QuarterChart chart(QStringLiteral("FGtest"),
                       {{QStringLiteral("Name"), 10}, {QStringLiteral("Hours"), 6, true}}, nullptr);
    chart.SetRows(std::move(rows),
                  [](std::uint32_t text) { return text == 0 ? QString() : QStringLiteral("Busy"); });
    chart.SetRequested(36, 8);
    chart.SetQuarterCursor(true);
    chart.resize(800, 300);
    qt_driver::Show(chart);
    QSignalSpy moved(&chart, &QuarterChart::currentRowChanged);
    QSignalSpy picked(&chart, &QuarterChart::quarterPicked);
    QTest::keyClick(&chart, Qt::Key_End);
    EXPECT_EQ(chart.CurrentRow(), 1999);
    EXPECT_GT(chart.TopRow(), 1900);
    QTest::keyClick(&chart, Qt::Key_PageUp);
    QTest::keyClick(&chart, Qt::Key_Home);
    EXPECT_EQ(chart.TopRow(), 0);
    EXPECT_EQ(moved.count(), 3);
    QTest::keyClick(&chart, Qt::Key_Right);
    QTest::keyClick(&chart, Qt::Key_Space);
    ASSERT_EQ(picked.count(), 1);
    EXPECT_EQ(picked[0][1].toInt(), 1);
    const QImage picture = chart.grab().toImage();
    EXPECT_FALSE(picture.isNull());
    chart.SetRows({}, {});
    chart.SetEmptyText(QStringLiteral("Nobody"));
    EXPECT_EQ(chart.CurrentRow(), -1);
    QTest::keyClick(&chart, Qt::Key_Down);
    EXPECT_EQ(chart.CurrentRow(), -1);
}

TEST_F(MatchingScreens, AnAssignmentTakesTheCaregiverFound) {
    const auto author = agency.Insert("Authorizations", {{"CLIENT", "00001"},
                                                         {"status_code", "A"},
                                                         {"from_date", Day(3, 1)},
                                                         {"to_DATE", Day(12, 31)},
                                                         {"Live_in", "Y"}});
    FRmassign screen(session, ParentOf(session, static_cast<long>(author)).value());
    qt_driver::Show(screen);
    EXPECT_FALSE(screen.CMDsuggestion->isEnabled());
    screen.Toolbar2->ActionOf(QStringLiteral("new"))->trigger();
    screen.OPTday[2]->click();
    screen.OPTday[5]->click();
    screen.NUMhrs->SetNumber(3);
    std::string found;
    auto driver = OnDialog<FRMfindOpenEmployee>([&](FRMfindOpenEmployee& dialog) {
        EXPECT_EQ(dialog.DTEStart->DateValue(), Day(3, 10)) << "the first Tuesday from today on";
        EXPECT_EQ(dialog.DTEtime->Text(), QStringLiteral("08:00 AM"));
        EXPECT_EQ(dialog.NUMhours->Number(), 3);
        EXPECT_EQ(dialog.CMBlivein->Text(), QStringLiteral("Y"));
        dialog.Search = [&](const SuggestionRequest& request) {
            EXPECT_TRUE(request.liveIn);
            EXPECT_EQ(request.client, "00001");
            EXPECT_EQ(request.authorization, 0);
            EXPECT_EQ(request.openedFrom, author) << "only to explain a missing rate";
            return std::string("000001");
        };
        dialog.CMDgo->click();
    });
    screen.CMDsuggestion->click();
    EXPECT_EQ(screen.TXTempid->text(), QStringLiteral("000001"));
    EXPECT_EQ(screen.Text1->text(), QStringLiteral("Ames, Al"));
    agency.ports.dialogs.Answer({false});
}

TEST_F(MatchingScreens, APotentialClientIsLookedForToo) {
    agency.Work().Execute(
        "update ClientPR set casestatcd = 'Z', potientalstatus = 'Active' where client = '00001'");
    Open();
    Pick("CMBcliStatus", "POTENTIAL");
    ASSERT_TRUE(screen_->Header->CMDAnyCaregivers->isVisible());
    auto driver = OnDialog<FRMfindOpenEmployee>([](FRMfindOpenEmployee& dialog) {
        EXPECT_EQ(dialog.DTEStart->DateValue(), Day(3, 4));
        EXPECT_EQ(dialog.CMBlivein->Text(), QStringLiteral("N"));
        dialog.CMDexit->click();
    });
    Click("CMDAnyCaregivers");
}

TEST_F(MatchingScreens, TheDaysOfACaregiverTellWhatStandsBehindThem) {
    FRMdisEmp screen(session, "000001", Day(3, 4), 15);
    screen.Preview = [this](const Document& document) { printed_ = PlainText(document); };
    qt_driver::Show(screen);
    ASSERT_EQ(screen.FG2->RowCount(), 15);
    EXPECT_EQ(screen.FG2->Row(1).cells[0], QStringLiteral("THU"));
    emit screen.FG2->quarterPicked(1, 56);
    EXPECT_EQ(screen.FGsch->CellText(0, 1), QStringLiteral("02:00 PM"));
    EXPECT_EQ(screen.FGcli->RowCount(), 0) << "the client of that visit is gone";
    emit screen.FG2->quarterPicked(1, 0);
    EXPECT_EQ(screen.FGsch->RowCount(), 0);
    Press(screen.Toolbar1, "print");
    EXPECT_NE(printed_.find("THU | Mar/05/2026 | 14:00-15:00 Ivy, Una"), std::string::npos) << printed_;
    qt_driver::Retype(*screen.TDBNumber1, QStringLiteral("0"));
    qt_driver::Leave(*screen.TDBNumber1);
    EXPECT_EQ(screen.TDBNumber1->Number(), 1);
    qt_driver::Retype(*screen.TXTempid, QStringLiteral("E9"));
    qt_driver::Leave(*screen.TXTempid);
    EXPECT_FALSE(screen.Toolbar1->IsKeyEnabled(QStringLiteral("display")));
    EXPECT_FALSE(screen.Toolbar1->IsKeyEnabled(QStringLiteral("print")));
    // The key counts the id that was typed last, though the box was not left.
    qt_driver::Retype(*screen.TXTempid, QStringLiteral("000001"));
    qt_driver::Leave(*screen.TXTempid);
    qt_driver::Retype(*screen.TXTempid, QStringLiteral("000002"));
    Press(screen.Toolbar1, "display");
    EXPECT_EQ(screen.fgEMP->CellText(0, 1), QStringLiteral("000002"));
    screen.Pick = [] { return std::string("000003"); };
    screen.Command1->click();
    EXPECT_EQ(screen.FG2->RowCount(), 1);
    EXPECT_EQ(screen.fgEMP->CellText(1, 1), QStringLiteral("Cole, Al"));
}

TEST_F(MatchingScreens, AnotherIdClearsTheDaysUntilTheyAreShownAgain) {
    agency.Insert(
        "assign",
        {{"emp_id", "000001"}, {"Type", "N"}, {"Day", "THU"}, {"St_time", At(22)}, {"END_TIME", At(6)}});
    FRMdisEmp screen(session, "000001", Day(3, 4), 15);
    qt_driver::Show(screen);
    ASSERT_EQ(screen.FG2->RowCount(), 15);
    EXPECT_TRUE(screen.FG2->Row(0).icon.isEmpty());
    EXPECT_EQ(screen.FG2->Row(1).icon, QStringLiteral("question"));
    EXPECT_EQ(screen.FG2->Row(1).tip,
              QStringLiteral("Unavailable from 10:00 PM to 6:00 AM is not shown: it runs past midnight."));
    emit screen.FG2->quarterPicked(1, 56);
    EXPECT_GT(screen.FGsch->RowCount(), 0);
    // The first letter is enough.
    qt_driver::Retype(*screen.TXTempid, QStringLiteral("00000"));
    EXPECT_EQ(screen.FG2->RowCount(), 0);
    EXPECT_EQ(screen.FGsch->RowCount() + screen.fgEMP->RowCount(), 0);
    EXPECT_FALSE(screen.Toolbar1->IsKeyEnabled(QStringLiteral("print")));
    EXPECT_EQ(screen.FG2->accessibleDescription(),
              QStringLiteral("Press Display (F5) to show the days of this caregiver"));
    qt_driver::Leave(*screen.TXTempid);
    EXPECT_EQ(screen.FG2->accessibleDescription(), QStringLiteral("There is no caregiver with this id"));
    // Back to the first one: nothing is shown before it is asked for.
    qt_driver::Retype(*screen.TXTempid, QStringLiteral("000001"));
    qt_driver::Leave(*screen.TXTempid);
    EXPECT_EQ(screen.FG2->RowCount(), 0);
    EXPECT_EQ(screen.FG2->accessibleDescription(),
              QStringLiteral("Press Display (F5) to show the days of this caregiver"));
    EXPECT_FALSE(screen.Toolbar1->IsKeyEnabled(QStringLiteral("print")));
    Press(screen.Toolbar1, "display");
    EXPECT_EQ(screen.FG2->RowCount(), 15);
    EXPECT_TRUE(screen.Toolbar1->IsKeyEnabled(QStringLiteral("print")));
    // Other days are told by their own dates.
    qt_driver::Retype(*screen.TDBNumber1, QStringLiteral("3"));
    qt_driver::Leave(*screen.TDBNumber1);
    EXPECT_EQ(screen.FG2->RowCount(), 15);
}

TEST_F(MatchingScreens, ACopyTellsWhatItLeavesWithoutVisitsAndMakesIt) {
    agency.Code().Execute("update Agency set sch_weeks = 2");
    const auto author = [this](Date from, Date to) {
        return static_cast<long>(
            agency.Insert("Authorizations",
                          {{"CLIENT", "00001"}, {"status_code", "A"}, {"from_date", from}, {"to_DATE", to}}));
    };
    const long old = author(Day(1, 1), Day(3, 10));
    const long renewed = author(Day(3, 11), Day(12, 31));
    agency.Insert("assign", {{"author_seq", old},
                             {"CLIENT", "00001"},
                             {"Day", "THU"},
                             {"HRS", 3},
                             {"St_time", At(10)},
                             {"END_TIME", At(13)},
                             {"howoften", 1},
                             {"Type", "A"},
                             {"emp_id", "000001"},
                             {"Last_date", Day(3, 14)}});
    agency.Work().Execute("update Employee set t_code = 'T', t_date = #2026-03-01# where emp_id = '000001'");
    FRmassign screen(session, ParentOf(session, renewed).value());
    screen.PickSource = [&] { return old; };
    screen.Preview = [this](const Document& document) { printed_ = PlainText(document); };
    qt_driver::Show(screen);
    agency.Said();
    agency.ports.dialogs.Answer({true});
    Press(screen.Toolbar2, "copy");
    EXPECT_EQ(
        agency.Said(),
        Lines{"question: The copied assignments leave 1 day without visits: Thu Mar/12/2026.\r\nWould you "
              "like to create the visits from today on?"});
    EXPECT_EQ(agency.Rows("select st_date from sch_day where assign_seq > 0 order by st_date"),
              Lines{"2026-03-12 00:00:00"});
    EXPECT_NE(printed_.find("Not Active"), std::string::npos) << "and who was taken off: " << printed_;
}

TEST_F(MatchingScreens, EveryBoxIsReachedByKeysAndNamed) {
    const auto author = static_cast<long>(agency.Insert(
        "Authorizations",
        {{"CLIENT", "00001"}, {"status_code", "A"}, {"from_date", Day(3, 1)}, {"to_DATE", Day(12, 31)}}));
    const AssignmentParent parent = ParentOf(session, author).value();
    std::vector<std::unique_ptr<QWidget>> screens;
    screens.push_back(std::make_unique<FRmassign>(session, parent));
    screens.push_back(std::make_unique<FRMcopyAssign>(session, parent));
    screens.push_back(std::make_unique<FRMTask>(session, author));
    screens.push_back(std::make_unique<FRMICD9>(session, DiagnosisClient{"00001", "Ida Grant", ""}));
    screens.push_back(std::make_unique<FRMupdatesch>(session, ScheduleUpdate{}));
    screens.push_back(std::make_unique<frmDiscrep>(std::vector<AssignmentConflict>(1)));
    screens.push_back(std::make_unique<FRMempsug>(session, request_));
    screens.push_back(std::make_unique<FRMfindOpenEmployee>(session, "00001"));
    screens.push_back(std::make_unique<FRMdisEmp>(session, "000001", Day(3, 4), 3));
    screens.push_back(std::make_unique<FRMdisdetail>(session, "00001", "000001"));
    static_cast<FRmassign&>(*screens.front()).Toolbar2->ActionOf(QStringLiteral("new"))->trigger();
    for (const auto& screen : screens) {
        qt_driver::Show(*screen);
        EXPECT_EQ(qt_driver::Unnamed(*screen), Lines()) << FromQt(screen->objectName());
        EXPECT_EQ(qt_driver::StepsAgainstReading(*screen), Lines()) << FromQt(screen->objectName());
        screen->hide();
    }
}

TEST_F(MatchingScreens, TheSheetLeadsFromOneToTheOther) {
    FRMdisdetail screen(session, "00001", "");
    qt_driver::Show(screen);
    EXPECT_EQ(screen.fgEMP->CellText(0, 1), QStringLiteral("NONE"));
    EXPECT_EQ(screen.FGcli->CellText(1, 1), QStringLiteral("Grant, Ida"));
    std::vector<WebVisit> visits;
    screen.Visit = [&](const WebVisit& visit) { visits.push_back(visit); };
    screen.CMDdirections->click();
    EXPECT_EQ(visits.at(0).address, "about:blank") << "no page is set: the addresses are told all the same";
    visits.clear();
    screen.CMBwhichMap->SetText(QStringLiteral("Google Maps"));
    screen.CMDdirections->click();
    EXPECT_EQ(agency.Said().size(), 1U) << "which server?";
    screen.CMBwhichMap->SetText(QStringLiteral("Map Quest"));
    session.Ini().Set("Maps", "DirectionsServer", "https://maps.example.com");
    session.Ini().Set("Maps", "HomePage", "https://www.example.com");
    agency.Work().Execute(
        "update Employee set Street = '2 Elm St', City = 'Troy', State = 'NY' where emp_id = '000001'");
    screen.PickTheCaregiver = [] { return std::string("000001"); };
    screen.CMDcaregiver->click();
    EXPECT_EQ(screen.LBLname->text() + screen.TXTaddr->text(), QStringLiteral("Ames, Al2 Elm St"));
    screen.CMDdirections->click();
    screen.CMBwhichMap->SetText(QStringLiteral("Google Maps"));
    screen.CMDdirections->click();
    ASSERT_EQ(visits.size(), 2U);
    EXPECT_EQ(visits[0].address, "https://www.example.com");
    EXPECT_EQ(visits[0].note.substr(0, 18), "Address: 2 Elm St ");
    EXPECT_EQ(visits[1].address.substr(0, 66),
              "https://maps.example.com/maps?hl=en&tab=wl&saddr=2+Elm+St,Troy,NY,");
}

}  // namespace
}  // namespace kv
