// What the operator changes on the main screen, and how it is kept or dropped.
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "screens/FRMmisc.h"
#include "screens/FRMpotientalStatus.h"
#include "screens/client_screen.h"
#include "screens/frmClient_list.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/outline_tree.h"
#include "screens/widgets/text_box.h"

namespace kv {
namespace {

using test::Lines;

const char* const kPrompt = "question: Some information has changed, and is not saved.  Do you wish to save?";

class MainScreenEdit : public test::ClientScreenTest {
  protected:
    std::string Stored(const std::string& column) {
        return agency.Rows("select " + column + " from clientpr where client = '00001'").at(0);
    }
};

TEST_F(MainScreenEdit, AMoveAsksAndTakesEitherAnswer) {
    AddClient("00001", {{"STREET", "1 Oak"}});
    AddClient("00002");
    Open();
    Type("txtStreet", "9 Elm");
    agency.ports.dialogs.Answer({false});
    Press("next");
    EXPECT_EQ(agency.Said(), Lines{kPrompt});
    EXPECT_EQ(ShownId(), "00002");
    EXPECT_EQ(Stored("street"), "1 Oak");

    Press("previous");
    Type("txtStreet", "9 Elm");
    agency.ports.dialogs.Answer({true});
    Press("next");
    EXPECT_EQ(agency.Said(), Lines{kPrompt});
    EXPECT_EQ(ShownId(), "00002");
    EXPECT_EQ(Stored("street"), "9 Elm");

    Press("previous");
    EXPECT_EQ(agency.Said(), Lines()) << "nothing is left to ask about";
    EXPECT_EQ(Text("txtStreet"), "9 Elm");
}

TEST_F(MainScreenEdit, SaveKeepsStampsHistoryAndEverythingBound) {
    const std::string notes = R"({\rtf1\ansi {\b Calls} at noon.\par})";
    AddClient("00001", {{"LASTNAME", "Grant"}, {"Comments", notes}, {"STREET", "1 Oak"}});
    AddClient("00002", {{"LASTNAME", "Hill"}});
    agency.Insert("assign", {{"CLIENT", "00001"}, {"cli_name", "Grant, First"}});
    Open();
    Type("TxtLastname", "Young");
    Control("TDBCombo8").EnterValue(Value("D1"));
    Control("TxtB_date").EnterValue(Date::FromCivil(1950, 2, 3));
    Control("NUMbillmileage").EnterValue(Value(0.75));
    Control("Check2").EnterValue(Value(true));
    Type("TXTdirections", "Left at the oak");
    Type("cmbGroup", "North");
    Press("save");

    EXPECT_EQ(agency.Said(), Lines());
    EXPECT_EQ(Stored("lastname, diet, bdate, billmile_rate, istelephony, directions, grouping"),
              "Young|D1|1950-02-03 00:00:00|0.75|True|Left at the oak|North");
    EXPECT_EQ(Stored("Status, User_Id, vendor, status_date"), "E|ANN|01|2026-03-04 09:30:00");
    EXPECT_EQ(Stored("Comments"), notes);
    EXPECT_EQ(agency.Rows("select cli_name from assign"), Lines{"Young, First"});
    const Lines history = agency.Rows("select reason from changes");
    ASSERT_EQ(history.size(), 1U);
    EXPECT_NE(history[0].find("Last Name: Grant to Young\r\n"), std::string::npos) << history[0];
    EXPECT_NE(history[0].find("Client Group: to North\r\n"), std::string::npos) << history[0];

    EXPECT_EQ(ShownId(), "00001");
    EXPECT_EQ(screen_->ListPane->FGtree->TextOf("00001"), QStringLiteral("Young, First (A)"));
    EXPECT_EQ(Find<QLabel>("LBLname").text(), QStringLiteral("Young, First"));
    EXPECT_EQ(FromQt(Find<QLabel>("StatusBar1_1").text()), "Last Change by: ANN");
    Press("next");
    EXPECT_EQ(agency.Said(), Lines());
}

TEST_F(MainScreenEdit, DiscardShowsTheRowAgain) {
    AddClient("00001", {{"STREET", "1 Oak"}});
    Open();
    Type("txtStreet", "9 Elm");
    Press("discard");
    EXPECT_EQ(Text("txtStreet"), "1 Oak");
    Press("exit");
    EXPECT_EQ(agency.Said(), Lines());
}

TEST_F(MainScreenEdit, NamesTakeNoCommaAndNoApostrophe) {
    AddClient("00001", {{"LASTNAME", "Grant"}});
    Open();
    QTest::keyClicks(&Find("TxtLastname"), QStringLiteral("'"));
    EXPECT_EQ(Text("TxtLastname"), "Grant");
    EXPECT_EQ(agency.Said(), Lines{"message: You may not have a , or a ' in your name"});
}

TEST_F(MainScreenEdit, ARowThatAnotherSeatHoldsIsNotSaved) {
    AddClient("00001", {{"STREET", "1 Oak"}});
    Open();
    Workspace otherSeat;
    const DatabasePtr database = otherSeat.OpenDatabase(agency.Place("kestrava"));
    Recordset held = database->OpenRecordset("select * from clientpr");
    held.Edit();
    Type("txtStreet", "9 Elm");
    EXPECT_EQ(agency.Said(), Lines{"message: Another user is changing this record just now.  It can be "
                                   "changed here once they have saved or discarded their changes."});
    EXPECT_EQ(Text("txtStreet"), "1 Oak");
    Press("save");
    EXPECT_EQ(agency.Said(),
              Lines{"message: Another user is viewing this same client, so we can not save.\r\n"
                    "Please have the other user exit the client and save again."});
    held.Close();
    Type("txtStreet", "9 Elm");
    Press("save");
    EXPECT_EQ(Stored("street"), "9 Elm");
}

TEST_F(MainScreenEdit, ADoubleClickClearsTheLookUpsThatSaySo) {
    AddClient("00001", {{"MANAGER", "M1"}, {"FSL", "S1"}, {"DIET", "D1"}, {"SEX", "U"}});
    Open();
    for (const char* name :
         {"TDBCombo4", "TDBCombo5", "TDBCombo8", "TDBCombo26", "TDBCombo27", "TDBCombo28", "TDBGender"}) {
        auto& combo = Find<LookupCombo>(name);
        QTest::mouseDClick(combo.lineEdit(), Qt::LeftButton);
        const bool clears = std::string(name) != "TDBGender";
        EXPECT_EQ(combo.Text().isEmpty(), clears) << name;
    }
    Press("save");
    EXPECT_EQ(Stored("manager, fsl, diet, sex"), "|||U");
}

TEST_F(MainScreenEdit, PastedPhonesKeepTheirDigits) {
    AddClient("00001");
    Open();
    for (const char* name :
         {"TxtPhone", "txtPhone2", "TxtEmgcyphona", "TXTemgphone2", "TXTemgphone3", "TDBMask1"}) {
        QApplication::clipboard()->setText(QStringLiteral("call 1-555.123.4567 x8"));
        QTest::keyClick(&Find(name), Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(Text(name), "(555) 123-4567") << name;
    }
    // The key pastes into the box that had the focus last, by the same rule.
    QApplication::clipboard()->setText(QStringLiteral("1 212 555 0000"));
    Find("TxtPhone").setFocus();
    Find("TXTquick").setFocus();
    Click("CMDpaste");
    EXPECT_EQ(Text("TxtPhone"), "(212) 555-0000");
    Press("save");
    EXPECT_EQ(Stored("phone, emg_phone3, bill_phone"), "2125550000|5551234567|5551234567");
}

class Potential : public MainScreenEdit {
  protected:
    void Open() {
        AddClient("00001", {{"casestatcd", "Z"}, {"potientalstatus", "Active"}});
        agency.Insert("hkeylonglat", {{"CLTid", "00001"}, {"phonenum", "5551234567"}, {"Status", "Z"}});
        MainScreenEdit::Open();
        EXPECT_FALSE(Find("CMBpotientalStatus").isVisible());
        Pick("CMBcliStatus", "POTENTIAL");
        EXPECT_TRUE(Find("CMBpotientalStatus").isVisible());
        EXPECT_TRUE(Find("CMDchangeToActive").isVisible());
    }
    void Choose(std::size_t option) {
        const auto answer = OnDialog<FRMpotientalStatus>([option](FRMpotientalStatus& screen) {
            EXPECT_FALSE(screen.CMDok->isEnabled());
            screen.OPTstatus[option]->click();
            screen.CMDok->click();
        });
        Click("CMDchangeToActive");
    }
};

TEST_F(Potential, BecomesAnActiveClientAndStaysInView) {
    Open();
    agency.ports.dialogs.Answer({true});
    Choose(2);
    EXPECT_EQ(agency.Said(), Lines{"question: Are you sure you wish to change the status of this client?"});
    EXPECT_EQ(Text("CMBcliStatus"), "ACTIVE");
    EXPECT_EQ(ShownId(), "00001");
    EXPECT_EQ(Text("TXTStatus"), "Active");
    EXPECT_FALSE(Find("CMDchangeToActive").isVisible());
    EXPECT_FALSE(Find("CMBpotientalStatus").isVisible());
    EXPECT_EQ(agency.Rows("select status from hkeylonglat", "main"), Lines{"A"});
}

TEST_F(Potential, BecomesInactiveAndIsAskedAboutWhatWasTyped) {
    Open();
    Type("txtStreet", "9 Elm");
    agency.ports.dialogs.Answer({true, true});
    Choose(0);
    EXPECT_EQ(Stored("casestatcd, potientalstatus, street"), "Z|InActive|9 Elm");
    EXPECT_EQ(Text("CMBpotientalStatus"), "InActive");
    EXPECT_EQ(Text("TXTStatus"), "Potential");
}

class People : public MainScreenEdit {
  protected:
    void SetUp() override {
        agency.Insert("doctors", {{"Name", "Dr. Ames"}, {"Phone", "5551234567"}, {"Note", "Rings twice"}});
        agency.Insert("doctors", {{"Name", "Dr. Bell"}});
        AddClient("00001");
        Open();
    }
    static void Press(FRMmisc& screen, const char* key) {
        screen.Toolbar1->ActionOf(QString::fromLatin1(key))->trigger();
    }
    static void Type(FRMmisc& screen, const char* box, const char* text) {
        FindBoundControl(&screen, QString::fromLatin1(box))->EnterValue(Value(text));
    }
    Lines Names() { return agency.Rows("select name from doctors order by name", "main"); }
};

TEST_F(People, APickedDoctorBringsTheNote) {
    Pick("CMBdoctor", "Dr. Ames");
    EXPECT_EQ(Text("Text3"), "Rings twice");
    screen_->close();
}

TEST_F(People, AreAddedAndGoBackToTheClient) {
    const auto answer = OnDialog<FRMmisc>([this](FRMmisc& screen) {
        EXPECT_EQ(screen.windowTitle(), QStringLiteral("Doctors"));
        EXPECT_EQ(screen.FGinfo->CellText(0, 7), QStringLiteral("(555) 123-4567"));
        Press(screen, "save");
        Press(screen, "last");
        Press(screen, "next");
        EXPECT_EQ(agency.Said(), (Lines{"message: You must press 'Add New' first to add a record",
                                        "message: Moved to the last Record"}));
        Press(screen, "new");
        Type(screen, "TXTName", "Dr. Aaron with a name longer than thirty");
        Press(screen, "save");
        EXPECT_EQ(screen.FGinfo->RowCount(), 3);
        EXPECT_EQ(screen.FGinfo->CurrentRow(), 0);
        Press(screen, "exit");
    });
    screen_->ShowPart(1);
    Click("CMDviewDocs");
    EXPECT_EQ(Names()[0], "Dr. Aaron with a name longer than thirty");
    EXPECT_EQ(Text("CMBdoctor"), "Dr. Aaron with a name longer t");
    EXPECT_EQ(agency.Said(), Lines());
}

TEST_F(People, AreChangedDroppedAndDeleted) {
    const auto answer = OnDialog<FRMmisc>([this](FRMmisc& screen) {
        Type(screen, "TXTCity", "Troy");
        Press(screen, "discard");
        Type(screen, "TXTCity", "Rome");
        agency.ports.dialogs.Answer({false, true, false, true});
        Press(screen, "new");
        Press(screen, "discard");
        Type(screen, "TXTZip", "12180");
        emit screen.FGinfo->rowPicked(1);
        EXPECT_EQ(agency.Rows("select city, zip from doctors where name = 'Dr. Ames'", "main"),
                  Lines{"<Null>|12180"});
        Press(screen, "delete");
        EXPECT_EQ(screen.FGinfo->RowCount(), 2);
        Press(screen, "delete");
        EXPECT_EQ(screen.FGinfo->RowCount(), 1);
        EXPECT_EQ(
            agency.Said(),
            (Lines{kPrompt, kPrompt, "question: Are you sure you want to delete this record?\r\nDr. Bell",
                   "question: Are you sure you want to delete this record?\r\nDr. Bell"}));
        Press(screen, "exit");
    });
    screen_->ShowPart(1);
    Click("CMDviewDocs");
    EXPECT_EQ(Names(), Lines{"Dr. Ames"});
    EXPECT_EQ(Text("CMBdoctor"), "") << "the operator picked nobody";
}

}  // namespace
}  // namespace kv
