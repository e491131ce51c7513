// The sections behind IMGCommand, the page of the referral, and the screen of a new client.
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QToolButton>

#include "screens/FRMNotVisit.h"
#include "screens/client_screen.h"
#include "screens/frmAddPhone.h"
#include "screens/frmClient_list.h"
#include "screens/frmClient_referral.h"
#include "screens/frmnew.h"
#include "screens/record_list.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/masked_box.h"
#include "screens/widgets/outline_tree.h"
#include "screens/widgets/text_box.h"

namespace kv {
namespace {

using test::Lines;

const char* const kPrompt = "question: Some information has changed, and is not saved.  Do you wish to save?";

class ClientSectionScreens : public test::ClientScreenTest {
  protected:
    ClientSectionScreens() {
        AddClient("00001",
                  {{"LASTNAME", "Grant"}, {"FIRSTNAM", "Ida"}, {"PHONE", "5185550100"}, {"ZIP", "12180"}});
        AddClient("00002", {{"LASTNAME", "Hill"}});
        agency.Insert("Employee", {{"Emp_id", "E1"}, {"LastName", "Ames"}, {"FirstName", "Al"}});
        agency.Insert("Employee", {{"Emp_id", "E2"}, {"LastName", "Bell"}, {"FirstName", "Bo"}});
        agency.Insert("Employee", {{"Emp_id", "E3"}, {"LastName", "Zorn"}, {"FirstName", "Zoe"}});
        session.rsEmployee.Requery();
    }
    template <typename Screen>
    Screen& Section(int index) {
        screen_->OpenSection(index);
        return *screen_->findChild<Screen*>();
    }
    static void Press(RecordList* list, const char* key) {
        list->Toolbar->ActionOf(QString::fromLatin1(key))->trigger();
    }
    using test::ClientScreenTest::Press;
};

TEST_F(ClientSectionScreens, PhonesAreAddedCheckedAndFollowTheClient) {
    agency.Insert("hkeylonglat", {{"CLTid", "00001"}, {"phonenum", "5185550100"}});
    agency.Insert("hkeylonglat", {{"CLTid", "00001"}, {"phonenum", "5185550177"}});
    Open();
    auto& phones = Section<frmAddPhone>(5);
    EXPECT_EQ(FromQt(phones.txtId->Text()), "00001, Grant, Ida");
    ASSERT_EQ(phones.dbPhone->List->RowCount(), 1) << "the main phone is the client's own";
    EXPECT_EQ(phones.dbPhone->List->CellText(0, 0), QStringLiteral("(518) 555-0177"));

    Press(phones.dbPhone, "new");
    phones.mskPhone->EnterValue(Value("518555"));
    Press(phones.dbPhone, "save");
    EXPECT_EQ(agency.Said(), Lines{"message: Invalid Phone number!"});
    phones.mskPhone->EnterValue(Value("5185550133"));
    Press(phones.dbPhone, "save");
    EXPECT_EQ(phones.dbPhone->List->RowCount(), 2);
    EXPECT_EQ(phones.dbPhone->List->CurrentRow(), 0) << "by number";
    EXPECT_EQ(
        agency.Rows("select CLTid, branchid, Zip, Status from hkeylonglat where phonenum = '5185550133'",
                    "main"),
        Lines{"00001|01|12180|A"});

    // Leaving with something typed asks, and No keeps nothing of it.
    Press(phones.dbPhone, "new");
    phones.mskPhone->EnterValue(Value("5185550144"));
    agency.ports.dialogs.Answer({false});
    emit screen_->ListPane->FGtree->rowPicked("00002");
    EXPECT_EQ(agency.Said(), Lines{kPrompt});
    EXPECT_EQ(FromQt(phones.txtId->Text()), "00002, Hill, First");
    EXPECT_EQ(phones.dbPhone->List->RowCount(), 0);
    Press(phones.dbPhone, "new");
    phones.mskPhone->EnterValue(Value("12"));
    agency.ports.dialogs.Answer({true});
    emit screen_->ListPane->FGtree->rowPicked("00001");
    EXPECT_EQ(agency.Said(), (Lines{kPrompt, "message: Invalid Phone number!"}));
    EXPECT_EQ(FromQt(phones.txtId->Text()), "00002, Hill, First") << "what can't be saved keeps the operator";
    Press(phones.dbPhone, "discard");
    EXPECT_EQ(agency.Rows("select phonenum from hkeylonglat where CLTid = '00002'", "main"), Lines());
}

TEST_F(ClientSectionScreens, CaregiversWhoShouldNotVisit) {
    Open();
    auto& banned = Section<FRMNotVisit>(4);
    Press(banned.DBnoemp, "new");
    qt_driver::Type(*banned.TXTnoempid, QStringLiteral("E9"));
    qt_driver::Leave(*banned.TXTnoempid);
    EXPECT_EQ(agency.Said(), Lines{"message: Caregiver was not found"});
    EXPECT_EQ(banned.TXTnoempid->text(), QString());
    qt_driver::Type(*banned.TXTnoempid, QStringLiteral("E2"));
    qt_driver::Leave(*banned.TXTnoempid);
    EXPECT_EQ(banned.Text4->text(), QStringLiteral("Bell, Bo"));
    Press(banned.DBnoemp, "save");
    Press(banned.DBnoemp, "new");
    banned.Pick = [] { return std::string("E1"); };
    banned.Command7->click();
    EXPECT_EQ(banned.Text4->text(), QStringLiteral("Ames, Al"));
    Press(banned.DBnoemp, "save");
    EXPECT_EQ(agency.Rows("select client, emp_id, Emp_name from emp_ban order by emp_id"),
              (Lines{"00001|E1|Ames, Al", "00001|E2|Bell, Bo"}));

    // A change that is kept on leaving moves the rows: the one that was picked is found all the same.
    emit banned.DBnoemp->List->rowPicked(0);
    banned.TXTnoempid->EnterValue(Value("E3"));
    agency.ports.dialogs.Answer({true});
    emit banned.DBnoemp->List->rowPicked(1);
    EXPECT_EQ(banned.TXTnoempid->text(), QStringLiteral("E2"));
    EXPECT_EQ(banned.DBnoemp->List->CurrentRow(), 0);

    agency.Said();
    agency.ports.dialogs.Answer({false, true});
    Press(banned.DBnoemp, "delete");
    Press(banned.DBnoemp, "delete");
    EXPECT_EQ(agency.Said(),
              (Lines{"question: Are you sure you wish to delete this Caregiver\r\nBell, Bo (E2)",
                     "question: Are you sure you wish to delete this Caregiver\r\nBell, Bo (E2)"}));
    EXPECT_EQ(agency.Rows("select emp_id from emp_ban"), Lines{"E3"});
}

TEST_F(ClientSectionScreens, AReferralIsPickedSavedAndCounted) {
    agency.Insert("Ref_group", {{"description", "Hospital"}});
    agency.Insert("Ref_group", {{"description", "Friend"}});
    const auto source = agency.Insert("referral", {{"FullName", "Mercy"},
                                                   {"Category", "Hospital"},
                                                   {"Status", "Active"},
                                                   {"Ref_Group", "Both"},
                                                   {"Phone", "5185550111"},
                                                   {"State", "NY"},
                                                   {"Zip", "12180"}});
    agency.Insert(
        "Referral_contacts",
        {{"referral_seq", source}, {"FullName", "Nurse Joy"}, {"ext", "12"}, {"Phone", "5185550112"}});
    agency.Insert(
        "referral",
        {{"FullName", "Old"}, {"Category", "Friend"}, {"Status", "InActive"}, {"Ref_Group", "Client"}});
    Open();
    screen_->ShowPart(5);
    FRMreferral& page = *screen_->Referral;
    EXPECT_EQ(page.FGreferralFind->Ids(), (Lines{"0", "0~0"}));
    emit page.FGreferralFind->rowPicked("0~0");
    EXPECT_EQ(Text("TXTrefSource") + "|" + Text("TXTrefContact") + "|" + Text("CMBref_group"),
              "Mercy|Nurse Joy|Hospital");
    EXPECT_EQ(page.FGReferral->CellText(4, 1), QStringLiteral("(518) 555-0111"));
    EXPECT_EQ(page.FGcontact->CellText(5, 1), QStringLiteral("(518) 555-0112  Ext: 12"));
    Press("save");
    EXPECT_EQ(agency.Rows("select ref_source, Ref_name, ref_grouping from clientpr where client = '00001'"),
              Lines{"Mercy|Nurse Joy|Hospital"});

    Type("TXTrefSource", "Dr. O'Neil, MD");
    Type("TXTrefContact", "");
    page.CMDsaveReferral->click();
    EXPECT_EQ(agency.Said(), Lines{"message: You may not have a , or a ' in your Source"});
    EXPECT_EQ(Text("TXTrefSource"), "Dr. ONeil MD");
    EXPECT_EQ(agency.Rows("select FullName, Category, Status, Ref_Group from referral order by FullName"),
              (Lines{"Dr. ONeil MD|Hospital|Active|Client", "Mercy|Hospital|Active|Both",
                     "Old|Friend|InActive|Client"}));

    std::string printed;
    page.Preview = [&](const Document& document) { printed = PlainText(document); };
    page.CMDgraph->click();
    EXPECT_NE(printed.find("Hospital"), std::string::npos) << printed;
    EXPECT_EQ(printed.find("Friend"), std::string::npos) << "only what was sent is counted\n" << printed;
    agency.ports.dialogs.Answer({false});
    Press("next");
    EXPECT_EQ(agency.Said(), Lines{kPrompt});
}

class NewClientScreen : public test::ClientTest {
  protected:
    void SetUp() override {
        agency.Insert("billcode_imaster", {{"INSNAME", "Medicaid"}, {"BILLCODE", 7}});
        agency.Insert("Visit_types",
                      {{"Code", "PCA"}, {"Description", "Personal Care"}, {"payroll_or_billing", "Both"}});
        AddClient("00001");
    }
    static void Press(frmnew& screen, const char* key) {
        screen.Toolbar1->ActionOf(QString::fromLatin1(key))->trigger();
    }
    static bool MaySave(frmnew& screen) { return screen.Toolbar1->IsKeyEnabled(QStringLiteral("save")); }
};

TEST_F(NewClientScreen, ChecksTheIdAsItIsTyped) {
    frmnew screen(session);
    qt_driver::Show(screen);
    const std::pair<const char*, const char*> ids[] = {
        {"123", "ID must be atleast 5 digits"},
        {"00001", "This new ID has already been used."},
        {"AB123", "The new Client ID is OK."},
    };
    for (const auto& [id, answer] : ids) {
        qt_driver::Retype(*screen.TDBText1, QString::fromLatin1(id));
        EXPECT_EQ(FromQt(screen.LBLresult->text()), std::string(id).size() < 5
                                                        ? "Client Id must be atleast 5 Characters."
                                                        : "Press the 'TAB' key to check ID.");
        EXPECT_FALSE(MaySave(screen));
        qt_driver::Leave(*screen.TDBText1);
        EXPECT_EQ(FromQt(screen.LBLresult->text()), answer);
    }
    EXPECT_TRUE(MaySave(screen));
    screen.CHKnew_Template->click();
    EXPECT_EQ(screen.TDBText1->text(), QString());
    EXPECT_FALSE(MaySave(screen));
    EXPECT_FALSE(screen.CHKPotential->isEnabled());
    EXPECT_FALSE(screen.FRAauth->isVisible());
    Press(screen, "generate");
    EXPECT_EQ(screen.TDBText1->text(), QStringLiteral("99900"));
    screen.reject();
    EXPECT_EQ(session.PickedEmployee, "Cancel");
}

TEST_F(NewClientScreen, MakesAnAuthorizationWithThePayer) {
    frmnew screen(session);
    qt_driver::Show(screen);
    Press(screen, "generate");
    screen.cmbPayor->setCurrentIndex(1);
    Press(screen, "save");
    EXPECT_EQ(agency.Said(),
              Lines{"message: You must choose a valid Call Type Description, if you choose a Payer Source"});
    EXPECT_EQ(agency.Rows("select client from clientpr"), Lines{"00001"});
    screen.cmbVisType->setCurrentIndex(1);
    EXPECT_EQ(screen.TXTviscode->text(), QStringLiteral("PCA"));
    // Another seat takes the id while this one looks at it.
    AddClient("00002");
    Press(screen, "save");
    EXPECT_EQ(screen.LBLresult->text(), QStringLiteral("00002 has already been used!"));
    EXPECT_FALSE(MaySave(screen));
    Press(screen, "generate");
    Press(screen, "save");
    EXPECT_EQ(session.PickedEmployee, "00003");
    EXPECT_EQ(agency.Rows("select Client, bill_name, visit_type, status_code from authorizations"),
              Lines{"00003|Medicaid|PCA|A"});
    EXPECT_EQ(agency.Rows("select client, visittype, method from clirate"), Lines{"00003|PCA|H"});
}

TEST_F(NewClientScreen, AnyClientCanBeThePattern) {
    frmnew screen(session);
    Press(screen, "generate");
    QListWidgetItem* any = screen.LSTtemplate->item(screen.LSTtemplate->count() - 1);
    EXPECT_EQ(any->text(), QStringLiteral("Use an Existing Client"));
    screen.PickPattern = [] { return std::string("CANCEL"); };
    any->setCheckState(Qt::Checked);
    EXPECT_EQ(any->checkState(), Qt::Unchecked);
    screen.PickPattern = [] { return std::string("00001"); };
    any->setCheckState(Qt::Checked);
    EXPECT_EQ(any->checkState(), Qt::Checked);
    EXPECT_TRUE(any->text().contains(QStringLiteral("Last00001"))) << FromQt(any->text());
    Press(screen, "save");
    EXPECT_EQ(agency.Rows("select ORD_DISCPL, lastname from clientpr where client = '00002'"), Lines{"NU|"});
}

}  // namespace
}  // namespace kv
