// The screens that find something: the history, clients, caregivers, call types.
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>

#include "clients/call_types.h"
#include "screens/FRMIdFind.h"
#include "screens/FRMedit.h"
#include "screens/client_screen.h"
#include "screens/frmCLIFIND.h"
#include "screens/frmEMPFIND.h"
#include "screens/history_view.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/text_box.h"

namespace kv {
namespace {

using test::Lines;

class FindScreens : public test::ClientTest {
  protected:
    void Change(const char* type, const char* area, Date day, const char* user, const char* reason,
                const char* status = "Edit") {
        agency.Insert("changes", {{"Type", type},
                                  {"Area", area},
                                  {"Date", day},
                                  {"Time", "09:15:00 AM"},
                                  {"User", user},
                                  {"Status", status},
                                  {"reason", reason}});
    }
    static void Press(ToolBar* bar, const char* key) { bar->ActionOf(QString::fromLatin1(key))->trigger(); }
    static Lines Column(const Grid* grid, int column) {
        Lines texts;
        for (int row = 0; row < grid->RowCount(); ++row) {
            texts.push_back(FromQt(grid->CellText(row, column)));
        }
        return texts;
    }

    const Date today_ = Date::FromCivil(2026, 3, 4);
};

TEST_F(FindScreens, TheHistoryIsSearchedMovedThroughAndPrinted) {
    Change("CLI", "00001", today_, "ANN", "Street: 1 Oak to 2 Elm\r\nCity: Rome to Troy\r\n");
    Change("AUT", "00001", today_, "BOB", "Hours: 10 to 12\r\n");
    Change("CLI", "00002", today_.AddDays(-1), "ANN", "Deleted Client", "DELETED");
    FRMedit screen(session);
    qt_driver::Show(screen);
    EXPECT_EQ(screen.View->FGedit->RowCount(), 0);
    Press(screen.Toolbar1, "next");
    screen.TXTfind->setText(QStringLiteral("x"));
    screen.CMDfind->click();
    EXPECT_EQ(agency.Said(), Lines{"message: There are no records to move to."});

    screen.CMDlook->click();
    EXPECT_EQ(screen.View->FGedit->RowCount(), 2) << "both date boxes hold today";
    Press(screen.Toolbar1, "user");
    EXPECT_EQ(Column(screen.View->FGedit, 3), Lines{"ANN"});
    EXPECT_EQ(screen.View->FGedit->CellText(0, 0), QStringLiteral("Mar/04/2026"));
    EXPECT_TRUE(screen.View->Text2->toPlainText().contains(QStringLiteral("City: Rome to Troy")));
    Press(screen.Toolbar1, "next");
    Press(screen.Toolbar1, "previous");
    EXPECT_EQ(agency.Said(), (Lines{"message: End of file, moving to the last record.",
                                    "message: Beginning of file, moving to the first record."}));

    screen.TXTarea->SetText(QStringLiteral("CLI - Client"));
    Press(screen.Toolbar1, "delete");
    EXPECT_EQ(Column(screen.View->FGedit, 4), Lines{"DELETED"});
    EXPECT_TRUE(screen.TXTuser->text().isEmpty());
    EXPECT_FALSE(screen.TXTStartdate->IsFilled());

    screen.CMDlook->click();
    ASSERT_EQ(screen.View->FGedit->RowCount(), 3) << "no criterion is left";
    screen.TXTfind->setText(QStringLiteral("TO 12"));
    screen.CMDfind->click();
    EXPECT_EQ(screen.CMDfind->text(), QStringLiteral("Next"));
    EXPECT_EQ(FromQt(screen.View->FGedit->CellText(screen.View->FGedit->CurrentRow(), 3)), "BOB");
    screen.CMDfind->click();
    EXPECT_EQ(screen.CMDfind->text(), QStringLiteral("Find"));
    EXPECT_EQ(screen.View->FGedit->CurrentRow(), 0);
    EXPECT_EQ(screen.LBLmessage->text(), QString());

    std::string printed;
    screen.Preview = [&](const Document& document) { printed = PlainText(document); };
    Press(screen.Toolbar1, "print");
    EXPECT_TRUE(printed.starts_with("Edit History Print\nRun Date: Mar/04/2026\nRun Time: 09:30 AM\n"))
        << printed;
    EXPECT_NE(printed.find("Mar/03/26 = 00002  09:15 AM  ANN\nDeleted Client\n"), std::string::npos)
        << printed;
}

TEST_F(FindScreens, TheArchiveIsAFileOfItsOwn) {
    agency.Data("archive").Execute(
        "insert into changes (Type, Area, [Date], [Time], [User], Status, reason) values ('CLI', '00009', "
        "#2026-03-04#, '08:00:00 AM', 'OLD', 'Edit', 'long ago')");
    FRMedit screen(session);
    screen.OPTtime[1]->click();
    screen.CMDlook->click();
    EXPECT_EQ(Column(screen.View->FGedit, 3), Lines{"OLD"});
    screen.OPTtime[0]->click();
    EXPECT_EQ(screen.View->FGedit->RowCount(), 0) << "rows of the other file are gone";
    screen.TXTuser->setText(QStringLiteral("O'Hara"));
    screen.CMDlook->click();
    const Lines said = agency.Said();
    ASSERT_EQ(said.size(), 1U);
    EXPECT_NE(said[0].find("yntax error"), std::string::npos) << said[0];
}

TEST_F(FindScreens, ClientsAreFoundWhileTyping) {
    AddClient("00001", {{"LASTNAME", "Grant"}, {"PHONE", "5185550100"}, {"grouping", "North"}});
    AddClient("00002", {{"LASTNAME", "Granger"}, {"CASESTATCD", "C"}});
    AddClient("99900", {{"LASTNAME", "Plan"}, {"ISTEMPLATE", 1}});
    agency.Insert("cli_group", {{"description", "North"}});
    frmCLIFIND screen(session);
    qt_driver::Show(screen);
    screen.Combo2->setCurrentText(QStringLiteral("All Clients"));
    EXPECT_EQ(Column(screen.FGfind, 0), (Lines{"00002", "00001"}));
    EXPECT_EQ(screen.LBLtext->text(), QStringLiteral("Last Name:"));
    qt_driver::Type(*screen.Text1, QStringLiteral("grant"));
    EXPECT_EQ(Column(screen.FGfind, 0), Lines{"00001"});
    EXPECT_EQ(screen.FGfind->CellText(0, 3), QStringLiteral("(518) 555-0100"));
    screen.Combo1->setCurrentText(QStringLiteral("TELEPHONE #"));
    qt_driver::Retype(*screen.Text1, QStringLiteral("(518)"));
    EXPECT_EQ(Column(screen.FGfind, 0), Lines{"00001"});
    screen.Text1->clear();
    screen.cmbDISGROUP->setCurrentText(QStringLiteral("North"));
    EXPECT_EQ(Column(screen.FGfind, 0), Lines{"00001"});
    screen.cmbDISGROUP->setCurrentText(QStringLiteral("ALL"));
    screen.Combo2->setCurrentText(QStringLiteral("Templates"));
    EXPECT_EQ(Column(screen.FGfind, 0), Lines{"99900"});

    screen.Combo2->setCurrentText(QStringLiteral("All Clients"));
    Press(screen.Toolbar3, "previous");
    Press(screen.Toolbar3, "last");
    Press(screen.Toolbar3, "next");
    EXPECT_EQ(agency.Said(), (Lines{"message: Start of File!", "message: End of the file!"}));
    screen.Combo1->setCurrentText(QStringLiteral("LAST NAME"));
    screen.Text1->setText(QStringLiteral("zzz"));
    Press(screen.Toolbar3, "next");
    EXPECT_EQ(agency.Said(), Lines{"message: There are no records to move to"});
}

TEST_F(FindScreens, APickIsLeftForTheScreenThatAsked) {
    AddClient("00001");
    agency.Insert("Employee", {{"Emp_id", "E1"}, {"LastName", "Ames"}, {"FirstName", "Al"}, {"t_code", "A"}});
    session.rsEmployee.Requery();
    const auto pick = [this](const char* key, const std::function<std::string()>& step) {
        const qt_driver::ModalDriver driver(
            [&](QWidget& modal) { Press(qobject_cast<PickScreen*>(&modal)->Toolbar3, key); });
        return step();
    };
    const auto client = [this] { return PickClient(session, nullptr); };
    const auto caregiver = [this] { return PickEmployee(session, nullptr); };
    EXPECT_EQ(pick("select", client), "00001");
    EXPECT_EQ(session.PickedClient, "00001");
    EXPECT_EQ(pick("exit", client), "CANCEL");
    EXPECT_EQ(session.PickedClient, "CANCEL");
    EXPECT_EQ(pick("select", caregiver), "E1");
    EXPECT_EQ(session.PickedEmployee, "E1");
    EXPECT_EQ(pick("exit", caregiver), "CANCEL");
    EXPECT_EQ(session.PickedEmployee, "CANCEL");
}

TEST_F(FindScreens, CallTypesAreThoseThatArePaidAndBilled) {
    {
        FRMIdFind empty(session, LoadCallTypes(session));
        EXPECT_FALSE(empty.CMDselect->isEnabled());
    }
    agency.Insert("Visit_types",
                  {{"Code", "PCA"}, {"Description", "Personal Care"}, {"payroll_or_billing", "Both"}});
    agency.Insert("Visit_types",
                  {{"Code", "HHA"}, {"Description", "Home Health"}, {"payroll_or_billing", "Both"}});
    agency.Insert("Visit_types",
                  {{"Code", "OFF"}, {"Description", "Office"}, {"payroll_or_billing", "Payroll"}});
    FRMIdFind screen(session, LoadCallTypes(session));
    EXPECT_EQ(Column(screen.FGfind, 0), (Lines{"HHA", "PCA"}));
    const auto pick = [&](const std::function<void()>& act) {
        const qt_driver::ModalDriver driver([&](QWidget& /*modal*/) { act(); });
        return screen.Pick();
    };
    EXPECT_EQ(pick([&] {
                  screen.FGfind->SetCurrentRow(1);
                  screen.CMDselect->click();
              }),
              "PCA");
    EXPECT_EQ(pick([&] { screen.Command1->click(); }), "CANCEL");
}

}  // namespace
}  // namespace kv
