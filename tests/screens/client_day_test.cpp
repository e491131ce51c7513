// A day at the main screen: found, changed, saved, made, deleted; each question answered both ways.
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>

#include "screens/FRMsort.h"
#include "screens/client_screen.h"
#include "screens/frmCLIFIND.h"
#include "screens/frmClient_header.h"
#include "screens/frmClient_history.h"
#include "screens/frmClient_list.h"
#include "screens/frmnew.h"
#include "screens/history_view.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/outline_tree.h"
#include "screens/widgets/status_bar.h"

namespace kv {
namespace {

using test::Lines;

const char* const kPrompt = "question: Some information has changed, and is not saved.  Do you wish to save?";
const char* const kOutside =
    "message: Could not show client because your selected client is not included in the 'Limit Client by:' "
    "section.";

class ClientDay : public test::ClientScreenTest {
  protected:
    ClientDay() {
        AddClient("00001", {{"LASTNAME", "Grant"},
                            {"FIRSTNAM", "Ida"},
                            {"PHONE", "5185550100"},
                            {"istelephony", true},
                            {"MANAGER", "M1"},
                            {"grouping", "North"}});
        AddClient("00002", {{"LASTNAME", "Granger"}, {"FIRSTNAM", "Otto"}});
        AddClient("00003", {{"LASTNAME", "Hill"}, {"FIRSTNAM", "Una"}, {"CASESTATCD", "C"}});
        agency.Insert("cli_group", {{"description", "North"}});
        agency.Insert("cli_group", {{"description", "South"}});
        agency.Insert("hkeylonglat", {{"CLTid", "00001"}, {"phonenum", "5185550100"}});
        agency.Insert("assign", {{"CLIENT", "00001"}, {"cli_name", "Grant, Ida"}});
        for (const char* code : {"A", "C"}) {
            agency.Insert("sch_day", {{"CLIENT", "00001"},
                                      {"cli_name", "Grant, Ida"},
                                      {"sch_code", code},
                                      {"Manager", "M1"},
                                      {"cli_group", "North"}});
        }
    }

    /// Presses Ctrl+Shift+F's button, searches and takes the first hit.
    void FindByPiece(const char* piece, const char* status = "All Clients") {
        const auto driver = OnDialog<frmCLIFIND>([&](frmCLIFIND& screen) {
            screen.Combo2->setCurrentText(QString::fromLatin1(status));
            qt_driver::Type(*screen.Text1, QString::fromLatin1(piece));
            QTest::keyClick(screen.Text1, Qt::Key_Return);
        });
        Click("Command1");
    }
    /// A new client by the key "new"; `fill` sets what is not the default.
    void MakeClient(const std::function<void(frmnew&)>& fill) {
        const auto driver = OnDialog<frmnew>([&](frmnew& screen) {
            screen.Toolbar1->ActionOf(QStringLiteral("generate"))->trigger();
            fill(screen);
        });
        Press("new");
    }
    static void Save(frmnew& screen) { screen.Toolbar1->ActionOf(QStringLiteral("save"))->trigger(); }
    Lines Ids() { return agency.Rows("select client from clientpr order by client"); }
};

TEST_F(ClientDay, FindsChangesAndSavesAClient) {
    Open();
    FindByPiece("grang");
    EXPECT_EQ(ShownId(), "00002");
    FindByPiece("hill");
    EXPECT_EQ(agency.Said(), Lines{kOutside});
    EXPECT_EQ(ShownId(), "00002") << "the client stays put";
    FindByPiece("grant");
    EXPECT_EQ(ShownId(), "00001");

    Type("TxtLastname", "Young");
    Type("TxtPhone", "5185550199");
    Type("cmbGroup", "South");
    Control("TDBCombo4").EnterValue(Value("M2"));
    agency.ports.dialogs.Answer({false});
    FindByPiece("grang");
    EXPECT_EQ(agency.Said(), Lines{kPrompt});
    FindByPiece("grant");
    EXPECT_EQ(Text("TxtLastname"), "Grant") << "No drops what was typed";
    EXPECT_EQ(agency.Rows("select reason from changes"), Lines());

    Type("TxtLastname", "Young");
    Type("TxtPhone", "5185550199");
    Type("cmbGroup", "South");
    Control("TDBCombo4").EnterValue(Value("M2"));
    Press("save");
    EXPECT_EQ(agency.Said(), Lines());
    EXPECT_EQ(ShownId(), "00001");
    EXPECT_EQ(agency.Rows("select lastname, phone, grouping, manager from clientpr where client = '00001'"),
              Lines{"Young|5185550199|South|M2"});
    EXPECT_EQ(agency.Rows("select cli_name from assign"), Lines{"Young, Ida"});
    EXPECT_EQ(agency.Rows("select sch_code, cli_name, cli_group, Manager from sch_day order by sch_code"),
              (Lines{"A|Young, Ida|South|M2", "C|Young, Ida|South|M1"}))
        << "a cancelled visit keeps its manager";
    EXPECT_EQ(agency.Rows("select phonenum, CLTid from hkeylonglat", "main"), Lines{"5185550199|00001"});
    EXPECT_EQ(agency.Rows("select type, area, user, status from changes"), Lines{"CLI|00001|ANN|Edit"});

    screen_->ShowPart(6);
    ASSERT_EQ(screen_->History->View->FGedit->RowCount(), 1);
    EXPECT_NE(screen_->History->View->Text2->toPlainText().indexOf(QStringLiteral("Grant to Young")), -1);
    EXPECT_EQ(screen_->ListPane->FGtree->TextOf("00001"), QStringLiteral("Young, Ida (A)"));
}

TEST_F(ClientDay, AMoveWithYesSavesLessThanTheKey) {
    Open();
    FindByPiece("grant");
    Type("TxtLastname", "Young");
    Type("cmbGroup", "South");
    Control("TDBCombo4").EnterValue(Value("M2"));
    agency.ports.dialogs.Answer({true});
    FindByPiece("grang");
    EXPECT_EQ(agency.Said(), Lines{kPrompt});
    EXPECT_EQ(ShownId(), "00002");
    EXPECT_EQ(agency.Rows("select cli_name, cli_group, Manager from sch_day where sch_code = 'A'"),
              Lines{"Young, Ida|South|M1"});
    EXPECT_EQ(agency.Rows("select lastname, manager from clientpr where client = '00001'"),
              Lines{"Young|M2"});
}

TEST_F(ClientDay, MakesAClientFromATemplate) {
    AddClient("99900", {{"LASTNAME", "Plan"}, {"FIRSTNAM", "Usual"}, {"ISTEMPLATE", 1}, {"DIET", "D1"}});
    agency.Insert("cli_misc", {{"client", "99900"}, {"area", "SKI"}, {"ID", "7"}});
    Open();
    Type("txtStreet", "9 Elm");
    agency.ports.dialogs.Answer({false});
    MakeClient([](frmnew& screen) { screen.reject(); });
    EXPECT_EQ(agency.Said(), Lines{kPrompt});
    EXPECT_EQ(Ids(), (Lines{"00001", "00002", "00003", "99900"}))
        << "giving up makes nobody, but its number stays counted";

    MakeClient([](frmnew& screen) {
        EXPECT_EQ(screen.TDBText1->text(), QStringLiteral("00005"));
        EXPECT_EQ(screen.LBLresult->text(), QStringLiteral("The new Client ID is OK."));
        ASSERT_EQ(screen.LSTtemplate->count(), 2);
        screen.LSTtemplate->item(0)->setCheckState(Qt::Checked);
        Save(screen);
    });
    EXPECT_EQ(ShownId(), "00005");
    EXPECT_EQ(Text("CMBcliStatus"), "ACTIVE");
    EXPECT_EQ(agency.Rows("select lastname, diet, casestatcd, istemplate, startservc from clientpr where "
                          "client = '00005'"),
              Lines{"|D1|A|0|2026-03-04 00:00:00"});
    EXPECT_EQ(agency.Rows("select ID from cli_misc where client = '00005'"), Lines{"7"});
    EXPECT_EQ(agency.Said(), Lines());

    // A client needs a name before the operator can go on.
    Press("next");
    const Lines said = agency.Said();
    ASSERT_GE(said.size(), 3U);
    EXPECT_EQ(said[2], "fault: You must fill in the first name field.");
    EXPECT_EQ(ShownId(), "00005");
}

TEST_F(ClientDay, MakesAndDeletesAPotentialClient) {
    Open();
    MakeClient([](frmnew& screen) {
        screen.CHKPotential->click();
        EXPECT_FALSE(screen.FRAauth->isVisible());
        Save(screen);
    });
    EXPECT_EQ(ShownId(), "00004");
    EXPECT_EQ(Text("CMBcliStatus"), "POTENTIAL");
    EXPECT_EQ(Text("TXTStatus"), "Potential");
    Type("TxtLastname", "Maybe");
    Type("TxtFirstnam", "Max");
    Control("TDBCombo3").EnterValue(Value("X"));
    Control("TDBCombo1").EnterValue(Value("LT"));
    Control("TDBCombo20").EnterValue(Value("NU"));
    Press("save");
    EXPECT_EQ(agency.Said(), Lines());
    agency.Insert("clirate", {{"CLIENT", "00004"}});

    agency.ports.dialogs.Answer({false, true});
    Press("delete");
    EXPECT_EQ(Ids().size(), 4U);
    Press("delete");
    EXPECT_EQ(agency.Said(), Lines(2,
                                   "question: Are you sure you wish to delete this Client\r\n"
                                   "Maybe, Max (00004) goes with 1 billing rate."));
    EXPECT_EQ(Ids(), (Lines{"00001", "00002", "00003"}));
    EXPECT_EQ(agency.Rows("select client from clirate"), Lines());
    EXPECT_EQ(agency.Rows("select status, reason from changes where area = '00004'"),
              Lines{"DELETED|Deleted Client\r\n\r\nMax Maybe"});
    EXPECT_EQ(ShownId(), "") << "no potential client is left";
    EXPECT_FALSE(screen_->Toolbar1->IsKeyEnabled(QStringLiteral("delete")));
    EXPECT_TRUE(screen_->Toolbar1->IsKeyEnabled(QStringLiteral("new")));
}

TEST_F(ClientDay, AClientWithRowsIsNotDeleted) {
    Open();
    FindByPiece("grant");
    Press("delete");
    const Lines said = agency.Said();
    ASSERT_FALSE(said.empty());
    EXPECT_EQ(said[0], "fault: Cannot Delete this Client because:");
    EXPECT_EQ(said.back(), "fault: Found 2 records in Schedule Module");
    EXPECT_EQ(Ids().size(), 3U);
}

TEST_F(ClientDay, SortsTheListAndKeepsTheClient) {
    Open();
    FindByPiece("grant");
    const auto sort = [this](const std::function<void(FRMsort&)>& act) {
        const auto driver = OnDialog<FRMsort>(act);
        Press("sort");
    };
    sort([](FRMsort& screen) { screen.CMDok->click(); });
    EXPECT_EQ(session.settings.Get("CLIENT", "SORT_DESC"), "") << "no field, no change";
    sort([](FRMsort& screen) {
        screen.lstData->setCurrentRow(1);
        screen.CMDadd->click();
        screen.Check1->click();
        screen.lstData->setCurrentRow(0);
        screen.CMDadd->click();
        EXPECT_EQ(screen.lstSort->count(), 2);
        screen.CMDok->click();
    });
    EXPECT_EQ(ShownId(), "00001");
    EXPECT_EQ(FromQt(Find<QLabel>("StatusBar1_5").text()), "Current Sort: Last Name DESC  and Client ID");
    EXPECT_EQ(session.settings.Get("CLIENT", "SORT"), "lastname DESC ,client");
    Press("first");
    EXPECT_EQ(ShownId(), "00001") << "Grant before Granger, from Z to A";
}

}  // namespace
}  // namespace kv
