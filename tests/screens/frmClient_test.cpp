// The main screen's start, its list, and what it shows of a client.
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolButton>
#include <fstream>
#include <set>

#include "screens/FRMQuickFind.h"
#include "screens/client_screen.h"
#include "screens/frmClient_general.h"
#include "screens/frmClient_header.h"
#include "screens/frmClient_history.h"
#include "screens/frmClient_list.h"
#include "screens/frmClient_notes.h"
#include "screens/frmClient_required.h"
#include "screens/history_view.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/notes_box.h"
#include "screens/widgets/outline_tree.h"
#include "screens/widgets/section_strip.h"
#include "screens/widgets/status_bar.h"

namespace kv {
namespace {

using test::Lines;

class MainScreen : public test::ClientScreenTest {
  protected:
    void AddThree() {
        AddClient("00001", {{"LASTNAME", "Grant"}, {"FIRSTNAM", "Lee"}, {"User_Id", "BOB"}});
        AddClient("00002", {{"LASTNAME", "Lee"}, {"FIRSTNAM", "Ann"}});
        AddClient("00003", {{"LASTNAME", "Young"}, {"FIRSTNAM", "Bo"}});
    }
    Lines EnabledKeys() {
        Lines keys;
        for (int i = 1; i <= screen_->Toolbar1->ButtonCount(); ++i) {
            const QString key = screen_->Toolbar1->KeyOfButton(i);
            if (screen_->Toolbar1->IsKeyShown(key) && screen_->Toolbar1->IsKeyEnabled(key)) {
                keys.push_back(FromQt(key));
            }
        }
        return keys;
    }
    Lines StatusBar() {
        Lines panels;
        for (int i = 1; i <= screen_->StatusBar1->PanelCount(); ++i) {
            panels.push_back(FromQt(screen_->StatusBar1->PanelText(i)));
        }
        return panels;
    }
};

TEST_F(MainScreen, StartsOnTheFirstClientAndEndsOnTheExitKey) {
    AddThree();
    session.settings.Set("Setting", "CLIENT", "O");
    session.settings.Set("CLIENT", "SORT", "lastname DESC");
    session.settings.Set("CLIENT", "SORT_DESC", "Last Name DESC ");
    QApplication::setApplicationVersion(QStringLiteral("2.3.4"));
    frmClient& screen = Open();

    EXPECT_EQ(screen.windowTitle(), QStringLiteral("Clients - 2.3.004"));
    EXPECT_EQ(session.settings.Get("Setting", "CLIENT"), "1");
    EXPECT_EQ(session.settings.Get("Setting", "Start"), "YES");
    EXPECT_EQ(ShownId(), "00003");
    EXPECT_EQ(StatusBar(),
              (Lines{"Last Change by: ", "Date/Time: ", "1", "3", "Current Sort: Last Name DESC "}));
    EXPECT_EQ(Text("TXTStatus"), "Active");
    EXPECT_EQ(Text("TDBCombo1"), "Latin");
    EXPECT_EQ(Find<QLabel>("LBLname").text(), QStringLiteral("Young, Bo"));
    EXPECT_EQ(screen.ListPane->FGtree->HighlightedId(), "00003");
    EXPECT_EQ(screen.ListPane->FGtree->Ids(), (Lines{"00001", "00002", "00003"}));
    EXPECT_EQ(EnabledKeys(), (Lines{"exit", "first", "previous", "next", "last", "new", "delete", "save",
                                    "discard", "sort", "help"}));

    Press("exit");
    EXPECT_FALSE(screen.isVisible());
    EXPECT_EQ(session.settings.Get("Setting", "CLIENT"), "O");
    EXPECT_EQ(session.dbMainWork, nullptr);
    EXPECT_EQ(agency.Said(), Lines());
}

TEST_F(MainScreen, SpeaksOfTheCountryItIsIn) {
    struct Case {
        const char* country;
        Lines captions;  ///< of state, zip and SSN
        const char* ssn;
    };
    for (const Case& each : {Case{"US", {"State:", "Zip:", "SSN"}, "123-45-6789"},
                             Case{"Canada", {"Province:", "Postal:", "Social:"}, "123-456-789"}}) {
        session.Ini().Set("Kestrava System", "Country", each.country);
        Open();
        for (const auto& names :
             {Lines{"TXTstate", "TXTzip", "txtSsn"}, Lines{"TDBText18", "TDBText17", "txtSsn"},
              Lines{"TDBText2", "TDBText1", "txtSsn"}}) {
            for (std::size_t i = 0; i < names.size(); ++i) {
                EXPECT_EQ(FromQt(Control(names[i].c_str()).Caption()), each.captions[i]) << names[i];
            }
        }
        Control("txtSsn").SetValue(Value("123456789"));
        EXPECT_EQ(Text("txtSsn"), each.ssn);
    }
}

TEST_F(MainScreen, MovesInTheListAndSaysWhereItEnds) {
    AddThree();
    Open();
    struct Case {
        const char* key;
        const char* id;
        const char* place;
        Lines said;
    };
    const std::vector<Case> cases = {
        {"previous", "00001", "1", {"message: Moving to the first record in the Client File"}},
        {"next", "00002", "2", {}},
        {"last", "00003", "3", {}},
        {"next", "00003", "3", {"message: Moving to the Last record in the Client File"}},
        {"first", "00001", "1", {}},
    };
    for (const Case& each : cases) {
        Press(each.key);
        EXPECT_EQ(ShownId(), each.id) << each.key;
        EXPECT_EQ(FromQt(screen_->StatusBar1->PanelText(3)), each.place) << each.key;
        EXPECT_EQ(screen_->ListPane->FGtree->HighlightedId(), each.id) << each.key;
        EXPECT_EQ(agency.Said(), each.said) << each.key;
    }
    EXPECT_EQ(StatusBar()[0], "Last Change by: BOB");
    emit screen_->ListPane->FGtree->rowPicked("00002");
    EXPECT_EQ(ShownId(), "00002");
    EXPECT_EQ(session.PickedClient, "00002");
}

TEST_F(MainScreen, AnEmptyListLeavesTheWayOutAndTheLimits) {
    AddThree();
    Open();
    Pick("CMBcliStatus", "CLOSED");
    EXPECT_EQ(EnabledKeys(), (Lines{"exit", "new", "help"}));
    EXPECT_EQ(StatusBar(), (Lines{"Last Change by: ", "Date/Time: ", "0", "0", "Current Sort: Client ID"}));
    EXPECT_EQ(ShownId(), "");
    EXPECT_EQ(Find<QLabel>("LBLname").text(), QString());
    EXPECT_FALSE(Find("TxtLastname").isEnabled());
    EXPECT_FALSE(screen_->IMGCommand->IsItemShown(0));
    Pick("CMBcliStatus", "ALL CLIENTS");
    EXPECT_EQ(ShownId(), "00001");
    EXPECT_TRUE(Find("TxtLastname").isEnabled());
    EXPECT_TRUE(screen_->IMGCommand->IsItemShown(0));
    EXPECT_EQ(agency.Said(), Lines());
}

TEST_F(MainScreen, LimitsTheListAndKeepsTheClientInIt) {
    agency.Insert("cli_group", {{"Description", "North"}});
    AddClient("00001", {{"grouping", "North"}, {"MANAGER", "M2"}});
    AddClient("00002", {{"grouping", "North"}});
    AddClient("00003", {{"MANAGER", "M2"}});
    Open();
    Press("next");
    Pick("cmbDISGROUP", "North");
    EXPECT_EQ(ShownId(), "00002");
    Pick("CMBmanager", "Mike Minor");
    EXPECT_EQ(session.Manager, "M2");
    EXPECT_EQ(screen_->ListPane->FGtree->Ids(), Lines{"00001"});
    Pick("CMBmanager", "All Managers");
    EXPECT_EQ(session.Manager, "all");
    EXPECT_EQ(ShownId(), "00001");
}

TEST_F(MainScreen, AFaultKeepsTheClientAndTheLimits) {
    AddClient("00001", {{"LANGUAGE", ""}});
    AddClient("00002");
    Open();
    const Lines fault = {"fault: Information you must fix on this client.",
                         "fault:  ", "fault: You must fill in 'Language' field in the Required section."};
    const std::vector<std::function<void()>> ways = {
        [this] { Press("next"); },
        [this] { Pick("CMBcliStatus", "ALL CLIENTS"); },
        [this] { emit screen_->ListPane->FGtree->rowPicked("00002"); },
        [this] { Press("save"); },
        [this] { Press("exit"); },
    };
    for (const auto& way : ways) {
        way();
        EXPECT_EQ(ShownId(), "00001");
        EXPECT_EQ(agency.Said(), fault);
        EXPECT_EQ(Text("CMBcliStatus"), "ACTIVE");
        EXPECT_TRUE(screen_->isVisible());
    }
}

TEST_F(MainScreen, QuickFindJumpsInTheList) {
    AddThree();
    Open();
    auto& box = Find<QLineEdit>("TXTquick");
    const auto find = [&](const char* text) {
        box.setText(QString::fromLatin1(text));
        QTest::keyClick(&box, Qt::Key_Return);
    };
    find("oung");
    EXPECT_EQ(ShownId(), "00003");
    EXPECT_EQ(box.text(), QString());

    const auto answer = OnDialog<FRMQuickFind>([](FRMQuickFind& hits) {
        EXPECT_EQ(hits.FG1->RowCount(), 2);
        hits.FG1->SetCurrentRow(1);
        hits.CMDselect->click();
    });
    find("lee");
    EXPECT_EQ(ShownId(), "00001");

    find("zz");
    EXPECT_EQ(agency.Said(), Lines{"message: There was no Client found"});
    EXPECT_EQ(ShownId(), "00001");
}

TEST_F(MainScreen, RightsHideAndDisable) {
    AddClient("00001");
    session.settings.Set("Setting", "Screens", "CLIE");
    for (const char* refused : {"CLIE", "CLIG"}) {
        agency.Insert("Screens", {{"Screen", refused}, {"access_code", "boss"}});
    }
    Open();
    EXPECT_EQ(EnabledKeys(), (Lines{"exit", "first", "previous", "next", "last", "new", "delete", "discard",
                                    "sort", "help"}));
    EXPECT_FALSE(Find("txtSsn").isVisible());
    EXPECT_FALSE(Find("LBLtxtSsn").isVisible());
    EXPECT_FALSE(Find("TxtB_date").isVisible());
    EXPECT_FALSE(Find("cmbGroup").isEnabled());
    Type("txtStreet", "9 Elm");
    Press("next");
    EXPECT_EQ(agency.Said(), Lines{"message: Moving to the Last record in the Client File"});

    session.settings.Set("Setting", "Screens", "*");
    session.settings.Set("Setting", "OFF_LINE", "True");
    Open();
    EXPECT_TRUE(Find("txtSsn").isVisible());
    EXPECT_TRUE(Find("cmbGroup").isEnabled());
    EXPECT_FALSE(Find("CMDviewDocs").isEnabled());
    EXPECT_FALSE(Find("CMDviewCase").isEnabled());
    EXPECT_FALSE(Find("TDBCombo6").isVisible()) << "the agency keeps no ethnic groups";
}

TEST_F(MainScreen, TemplatesKeepToTheirParts) {
    AddClient("99900", {{"ISTEMPLATE", 1}, {"LASTNAME", ""}, {"LANGUAGE", ""}});
    AddClient("00001");
    Open();
    screen_->ShowPart(3);
    Pick("CMBcliStatus", "TEMPLATES");
    EXPECT_EQ(Text("TXTStatus"), "Template");
    EXPECT_EQ(screen_->OpenPart(), 0);
    EXPECT_FALSE(screen_->CMDclient->IsItemEnabled(3));
    EXPECT_FALSE(Find("TDBText7").isEnabled());
    EXPECT_FALSE(Find("TXText").isEnabled());
    EXPECT_FALSE(Find("CMDpaste").isEnabled());
    Pick("CMBcliStatus", "ACTIVE");
    EXPECT_TRUE(screen_->CMDclient->IsItemEnabled(3));
    EXPECT_TRUE(Find("TDBText7").isEnabled());
    EXPECT_TRUE(Find("CMDpaste").isEnabled());
}

TEST_F(MainScreen, CountsTheDaysOfCare) {
    AddClient("00001", {{"First_contact", Date::FromCivil(2026, 1, 1)},
                        {"STARTSERVC", Date::FromCivil(2026, 1, 11)},
                        {"CASEEXPDAT", Date::FromCivil(2026, 12, 31)}});
    Open();
    EXPECT_EQ(Text("NUMdays"), "10");
    EXPECT_EQ(Text("NumactiveDays"), "354");
    Control("DTEFirstContact").EnterValue(Date::FromCivil(2026, 1, 9));
    EXPECT_EQ(Text("NUMdays"), "2");
}

TEST_F(MainScreen, ShowsTheNotesAsWordsAndTheHistoryOfTheClient) {
    AddClient("00001", {{"Comments", R"({\rtf1\ansi {\b Calls} at noon.\par})"}});
    AddClient("00002");
    for (const char* reason : {"Street: Oak to Elm", "Zip: 1 to 2"}) {
        agency.Insert("changes", {{"Type", "CLI"},
                                  {"Area", "00001"},
                                  {"Date", Date::FromCivil(2026, 3, 1)},
                                  {"Time", reason[0] == 'S' ? "09:00:00 AM" : "08:00:00 AM"},
                                  {"User", "BOB"},
                                  {"Status", "Edit"},
                                  {"reason", reason}});
    }
    Open();
    EXPECT_EQ(screen_->Notes->TXTbox->toPlainText().trimmed(), QStringLiteral("Calls at noon."));
    screen_->CMDclient->Button(6)->click();
    Grid& grid = *screen_->History->View->FGedit;
    ASSERT_EQ(grid.RowCount(), 2);
    EXPECT_EQ(grid.CellText(0, 0), QStringLiteral("Mar/01/2026"));
    EXPECT_EQ(screen_->History->View->Text2->toPlainText(), QStringLiteral("00001\nStreet: Oak to Elm"));
    grid.SetCurrentRow(1);
    EXPECT_EQ(screen_->History->View->Text2->toPlainText(), QStringLiteral("00001\nZip: 1 to 2"));
    Press("next");
    EXPECT_EQ(grid.RowCount(), 0);
    EXPECT_EQ(screen_->History->View->Text2->toPlainText(), QString());
}

TEST_F(MainScreen, TakesAClientThatAnotherModuleHandsOver) {
    AddThree();
    Open();
    session.settings.Set("Setting", "Sch_Cli", "00003");
    QEvent activated(QEvent::ActivationChange);
    QApplication::sendEvent(screen_.get(), &activated);
    ASSERT_TRUE(screen_->isActiveWindow());
    EXPECT_EQ(Text("TXTquick"), "00003");
    EXPECT_EQ(session.settings.Get("Setting", "Sch_Cli"), "");
    QApplication::sendEvent(screen_.get(), &activated);
    EXPECT_EQ(Text("TXTquick"), "");
}

TEST_F(MainScreen, EndsWithoutQuestionsWhenTheSystemCloses) {
    AddClient("00001");
    Open();
    Type("txtStreet", "9 Elm");
    screen_->Unload();
    screen_->close();
    EXPECT_EQ(agency.Said(), Lines());
    EXPECT_EQ(session.settings.Get("Setting", "CLIENT"), "O");
    const DatabasePtr work = session.OpenData("kestrava.mdb");
    EXPECT_TRUE(work->Lookup("select street from clientpr").IsNull());
}

TEST_F(MainScreen, TellsWhereAStartFails) {
    session.dbMainCode.reset();
    Workspace::DropDatabase(agency.Place("main"));
    frmClient screen(session);
    EXPECT_THROW(screen.Start(), EngineError);
    screen.Unload();
    EXPECT_EQ(session.settings.Get("Setting", "CLIENT"), "O");
}

TEST_F(MainScreen, OpensHelpAndMailOutside) {
    AddClient("00001", {{"EMAIL", "lee@example.org"}});
    Open();
    Lines opened;
    screen_->OpenOutside = [&](const std::string& target, const std::string& argument) {
        opened.push_back(target + "|" + argument);
        return true;
    };
    Press("help");
    ASSERT_EQ(agency.Said().size(), 1U) << "no help file was missed";
    std::ofstream(agency.Folder() / "KVHELP.EXE").put('x');
    Press("help");
    Click("CMDemail");
    EXPECT_EQ(opened,
              (Lines{(agency.Folder() / "KVHELP.EXE").string() + "|client", "mailto:lee@example.org|"}));
}

/// A section as small as it can be, that keeps what it is told.
class Listening : public SectionScreen {
  public:
    Listening(Session& /*session*/, QWidget* parent) : SectionScreen(parent) { told.clear(); }
    void SetHiddenID(const std::string& id, ClientForm& /*mainScreen*/) override { told.push_back(id); }
    inline static Lines told;
};

TEST_F(MainScreen, ASectionFillsTheAreaAndFollowsTheClient) {
    AddThree();
    Sections sections = ClientSectionScreens();
    sections[7].make = MakeSection<Listening>;
    screen_ = std::make_unique<frmClient>(session, sections);
    screen_->Start();
    qt_driver::Show(*screen_);
    EXPECT_TRUE(screen_->IMGCommand->IsItemShown(7));
    EXPECT_FALSE(screen_->IMGCommand->IsItemShown(6));
    screen_->IMGCommand->Button(7)->click();
    EXPECT_EQ(EnabledKeys(), (Lines{"sort", "help"}));
    EXPECT_FALSE(screen_->FRMmain_Frame->isVisible());
    emit screen_->ListPane->FGtree->rowPicked("00003");
    EXPECT_EQ(Listening::told, (Lines{"00001", "00003"}));
    EXPECT_EQ(EnabledKeys(), (Lines{"sort", "help"}));
    screen_->IMGCommand->Button(0)->click();
    EXPECT_TRUE(screen_->FRMmain_Frame->isVisible());
    EXPECT_EQ(EnabledKeys().size(), 11U);
}

TEST_F(MainScreen, ReadsFromTheKeyboard) {
    agency.Insert("ETHNIC", {{"code", "E"}, {"description", "Other"}});
    AddClient("00001", {{"casestatcd", "Z"}, {"potientalstatus", "Active"}});
    Open();
    Pick("CMBcliStatus", "POTENTIAL");
    for (int part = 0; part < static_cast<int>(kPartCount); ++part) {
        QTest::keyClick(screen_.get(), static_cast<Qt::Key>(Qt::Key_1 + part), Qt::ControlModifier);
        EXPECT_EQ(screen_->OpenPart(), part);
        EXPECT_EQ(qt_driver::StepsAgainstReading(*screen_), Lines()) << part;
        EXPECT_EQ(qt_driver::Unnamed(*screen_), Lines()) << part;
        std::set<QString> letters;
        for (const QWidget* widget : screen_->findChildren<QWidget*>()) {
            const QString text = widget->property("text").toString();
            const QString letter = QKeySequence::mnemonic(text).toString();
            if (widget->isVisible() && !letter.isEmpty()) {
                EXPECT_TRUE(letters.insert(letter).second)
                    << "two of " << FromQt(letter) << ": " << FromQt(widget->objectName());
            }
        }
    }
    QTest::keyClick(screen_.get(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(Find("TXTquick").hasFocus());
}

}  // namespace
}  // namespace kv
