// The pages of notes and directions, and the browser.
#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QTextCursor>
#include <QUrl>
#include <fstream>
#include <stdexcept>

#include "base/platform.h"
#include "clients/directions.h"
#include "screens/FRMfullscr.h"
#include "screens/FRMweb.h"
#include "screens/client_screen.h"
#include "screens/frmClient_directions.h"
#include "screens/frmClient_notes.h"
#include "screens/plain_view.h"
#include "screens/widgets/notes_box.h"
#include "screens/widgets/text_box.h"

namespace kv {
namespace {

using test::Lines;
using test::PlainView;

// What another module left: a table, a picture and colours that this screen does not show.
const char* const kForeign =
    R"({\rtf1\ansi{\fonttbl{\f0 Arial;}}{\colortbl;\red255\green0\blue0;}\f0 Called \cf1 daughter\cf0 .\par
{\pict\wmetafile8 0102}\trowd\cellx100 cell\cell\row \protect -------- Jan/05/2026  09:00 AM -------\protect0\par
Zo\u235 ? was well.\par})";
const char* const kStamp = "-------- Jan/05/2026  09:00 AM -------";

class NotesAndWays : public test::ClientScreenTest {
  protected:
    void OpenNotes(const std::string& comments) {
        AddClient("00001", {{"Comments", comments},
                            {"STREET", "9 Elm St"},
                            {"CITY", "Troy"},
                            {"STATE", "NY"},
                            {"ZIP", "12180"},
                            {"directions", "Left at the oak"}});
        Open();
        screen_->ShowPart(3);
    }
    NotesBox& Box() { return *screen_->Notes->TXTbox; }
    void NotesKey(const char* key) {
        screen_->Notes->Toolbar4->ActionOf(QString::fromLatin1(key))->trigger();
    }
    std::string Stored() { return agency.Rows("select comments from clientpr where client = '00001'").at(0); }
    void PutCursorBefore(const char* text) {
        QTextCursor cursor = Box().document()->find(QString::fromLatin1(text));
        ASSERT_FALSE(cursor.isNull());
        cursor.setPosition(cursor.selectionStart());
        Box().setTextCursor(cursor);
    }
    /// Sets one key of the section "Maps" of KESTRAVA.INI.
    void Configure(const Lines& lines) {
        std::ofstream ini(agency.Folder() / "KESTRAVA.INI", std::ios::app);
        ini << "[Maps]\n";
        for (const std::string& line : lines) {
            ini << line << "\n";
        }
    }
};

TEST_F(NotesAndWays, WhatIsNotEditedStaysByteForByte) {
    OpenNotes(kForeign);
    EXPECT_TRUE(Box().toPlainText().contains(QStringLiteral("Zo\u00EB was well.")));
    Type("TXTcity", "Rome");
    Press("save");
    EXPECT_EQ(Stored(), kForeign);

    PutCursorBefore("was well");
    QTest::keyClicks(&Box(), QStringLiteral("really "));
    Press("save");
    EXPECT_EQ(agency.Said(), Lines());
    std::string expected = kForeign;
    expected.insert(expected.find("was well"), "really ");
    EXPECT_EQ(Stored(), expected);
}

TEST_F(NotesAndWays, AStampCanBeSetButNotEdited) {
    OpenNotes("First call.");
    NotesKey("stamp");
    NotesKey("bold");
    QTest::keyClicks(&Box(), QStringLiteral("Spoke to son"));
    const QString stamp = QStringLiteral("-------- Mar/04/2026  09:30 AM -------");
    EXPECT_EQ(Box().toPlainText(),
              QStringLiteral("First call.\n") + stamp + QStringLiteral("\nSpoke to son"));
    const QString before = Box().toPlainText();
    PutCursorBefore("Mar/04");
    QTest::keyClicks(&Box(), QStringLiteral("x"));
    QCoreApplication::processEvents();
    EXPECT_EQ(Box().toPlainText(), before);
    PutCursorBefore("Mar/04");
    QTest::keyClick(&Box(), Qt::Key_Backspace);
    QCoreApplication::processEvents();
    EXPECT_EQ(Box().toPlainText(), before);

    Press("save");
    EXPECT_EQ(agency.Said(), Lines());
    EXPECT_NE(Stored().find("\\protect "), std::string::npos) << Stored();
    EXPECT_NE(Stored().find("\\protect0"), std::string::npos) << Stored();
    Press("discard");
    EXPECT_EQ(Box().toPlainText(), before) << "reads back as it was";
    std::string printed;
    screen_->Preview = [&](const Document& document) { printed = PlainText(document); };
    NotesKey("print");
    EXPECT_TRUE(
        printed.starts_with("Client Notes Information\n     ID: 00001\n   Name: Last00001, First\n"
                            "Address: 9 Elm St\n"))
        << printed;
    EXPECT_NE(printed.find("Notes\n"), std::string::npos);
    EXPECT_NE(printed.find("Spoke to son"), std::string::npos);
}

TEST_F(NotesAndWays, AStampThatWasRemovedOutsideStopsTheSave) {
    OpenNotes(kForeign);
    agency.Work().Execute("update clientpr set comments = 'rewritten elsewhere' where client = '00001'");
    PutCursorBefore("was well");
    QTest::keyClicks(&Box(), QStringLiteral("really "));
    Press("save");
    EXPECT_EQ(agency.Said(), Lines{"message: We found read only information in the notes, and removed it.\r\n"
                                   "Another user is viewing this same client, so we can not save.\r\n"
                                   "Please have the other user exit the client and save again."});
    EXPECT_EQ(Stored(), "rewritten elsewhere");
    EXPECT_EQ(Box().toPlainText(), QStringLiteral("rewritten elsewhere"));
    EXPECT_FALSE(Box().toPlainText().contains(QString::fromLatin1(kStamp)));
}

TEST_F(NotesAndWays, SelectingCuttingAndPastingKeepWhatIsBoldAndColoured) {
    const std::string notes =
        R"({\rtf1\ansi{\fonttbl{\f0 Arial;}{\f1 Times;}}{\colortbl;\red255\green0\blue0;}\f0\fs20 )"
        R"(One \b bold\b0  and {\f1\cf1 red} end.\par \protect -- stamp --\protect0\par })";
    OpenNotes(notes);
    const auto select = [this](const char* text) {
        const QTextCursor found = Box().document()->find(QString::fromLatin1(text));
        ASSERT_FALSE(found.isNull()) << text;
        Box().setTextCursor(found);
    };
    select("bold and red end.");
    QTextCursor intoStamp = Box().textCursor();
    intoStamp.setPosition(4);
    intoStamp.setPosition(Box().toPlainText().indexOf(QStringLiteral("stamp")) + 3, QTextCursor::KeepAnchor);
    Box().setTextCursor(intoStamp);
    EXPECT_TRUE(Box().textCursor().hasSelection()) << "a selection that ends in a stamp stays one";
    EXPECT_EQ(Box().Source(), notes) << "looking at it changes nothing";
    EXPECT_FALSE(screen_->DbClient.IsEditing());

    select("red");
    Box().cut();
    Box().moveCursor(QTextCursor::Start);
    Box().paste();
    EXPECT_EQ(Box().PlainText(), "redOne bold and  end.\n-- stamp --\n");
    Box().paste();
    const rtf::RichText::Characters shown = rtf::RichText(Box().Source()).Shown();
    EXPECT_EQ(shown[0].looks.colour, 1);
    EXPECT_EQ(shown[0].looks.font, 1);
    EXPECT_EQ(shown[7].code, U'n');
    EXPECT_EQ(shown[7].looks.font, 0) << "what stands behind it keeps its own";
    for (int undone = 0; undone < 3; ++undone) {
        Box().undo();
    }
    EXPECT_EQ(Box().PlainText(), "One bold and red end.\n-- stamp --\n");

    select("stamp --");
    Box().copy();
    PutCursorBefore("One");
    Box().paste();
    QTest::keyClicks(&Box(), QStringLiteral("x"));
    EXPECT_EQ(rtf::RichText(Box().Source()).ProtectedTexts(), Lines{"-- stamp --"}) << "a copy is plain text";
    QGuiApplication::clipboard()->setText(QStringLiteral("plain"));
    Box().moveCursor(QTextCursor::Start);
    Box().paste();
    EXPECT_TRUE(Box().PlainText().starts_with("plainstamp --x"));
}

TEST_F(NotesAndWays, UndoBringsBackWhatItTook) {
    OpenNotes(kForeign);
    const QString before = Box().toPlainText();
    Box().moveCursor(QTextCursor::End);
    QTest::keyClicks(&Box(), QStringLiteral("Later."));
    PutCursorBefore("Jan/05");
    QTest::keyClick(&Box(), Qt::Key_Backspace);
    QCoreApplication::processEvents();
    EXPECT_EQ(Box().toPlainText(), before + QStringLiteral("Later.")) << "a stamp can't be edited";
    Box().undo();
    EXPECT_EQ(Box().toPlainText(), before) << "what was typed before the refused key is still to be undone";
    NotesKey("stamp");
    EXPECT_EQ(rtf::RichText(Box().Source()).ProtectedTexts().size(), 2U);
    Box().undo();
    EXPECT_EQ(Box().toPlainText(), before) << "a stamp that was just set can be taken back";
    Box().redo();
    EXPECT_EQ(rtf::RichText(Box().Source()).ProtectedTexts().size(), 2U);
}

TEST_F(NotesAndWays, BothSeatsNotesStand) {
    OpenNotes("First call.");
    const auto theyWrite = [this](const char* notes) {
        agency.Work().Execute(Sql("update clientpr set comments = {} where client = '00001'", notes));
    };
    theyWrite("First call. Son phoned.");
    Type("TXTcity", "Rome");
    Press("save");
    EXPECT_EQ(Stored(), "First call. Son phoned.") << "untouched here";
    EXPECT_EQ(agency.Rows("select reason from changes"), Lines{"City: Troy to Rome\r\n"});

    theyWrite("First call. Son phoned. Doctor came.");
    Box().moveCursor(QTextCursor::Start);
    QTest::keyClicks(&Box(), QStringLiteral("Urgent: "));
    QCoreApplication::processEvents();
    EXPECT_EQ(Box().toPlainText(), QStringLiteral("Urgent: First call. Son phoned. Doctor came."));
    Press("save");
    EXPECT_EQ(Stored(), "Urgent: First call. Son phoned. Doctor came.");
    EXPECT_EQ(agency.Said(), Lines());

    Box().moveCursor(QTextCursor::End);
    QTest::keyClicks(&Box(), QStringLiteral(" Lost?"));
    Press("discard");
    EXPECT_EQ(Box().toPlainText(), QStringLiteral("Urgent: First call. Son phoned. Doctor came."));
    screen_->DbClient.BringBack();
    EXPECT_TRUE(Box().toPlainText().endsWith(QStringLiteral(" Lost?")));
}

TEST_F(NotesAndWays, TheFullScreenGivesTheNotesBack) {
    OpenNotes("First call.");
    const auto full = [this](const std::function<void(FRMfullscr&)>& act) {
        const auto driver = OnDialog<FRMfullscr>(act);
        NotesKey("full");
    };
    full([this](FRMfullscr& screen) {
        screen.TXTbox->EnterNotes("Dropped.");
        agency.ports.dialogs.Answer({false});
        screen.Toolbar1->ActionOf(QStringLiteral("exit"))->trigger();
    });
    EXPECT_EQ(Box().toPlainText(), QStringLiteral("First call."));
    agency.Said();
    full([](FRMfullscr& screen) {
        screen.Toolbar1->ActionOf(QStringLiteral("bottom"))->trigger();
        QTest::keyClicks(screen.TXTbox, QStringLiteral(" Second."));
        screen.Toolbar1->ActionOf(QStringLiteral("save"))->trigger();
    });
    EXPECT_EQ(Box().toPlainText(), QStringLiteral("First call. Second."));
    Press("save");
    EXPECT_EQ(Stored(), "First call. Second.");
}

TEST_F(NotesAndWays, WithoutServersTheKeysSayWhatToSet) {
    OpenNotes("");
    for (const char* key : {"find_dir", "find_map"}) {
        screen_->Directions->Toolbar7->ActionOf(QString::fromLatin1(key))->trigger();
        const Lines said = agency.Said();
        ASSERT_EQ(said.size(), 1U);
        EXPECT_NE(said[0].find("KESTRAVA.INI"), std::string::npos) << said[0];
    }
    std::string printed;
    screen_->Directions->Preview = [&](const Document& document) { printed = PlainText(document); };
    screen_->Directions->Fetch = [](const std::string&) -> std::string {
        ADD_FAILURE() << "no server is set";
        return {};
    };
    screen_->Directions->Toolbar7->ActionOf(QStringLiteral("print"))->trigger();
    EXPECT_EQ(printed.find("[picture]"), std::string::npos);
    EXPECT_NE(printed.find("Directions\nLeft at the oak\n"), std::string::npos) << printed;
}

TEST_F(NotesAndWays, TheMapIsFetchedForThePrint) {
    Configure({"MapServer=https://maps.example.com", "MapKey=Qw%7C1"});
    OpenNotes("");
    std::string asked;
    std::string printed;
    screen_->Directions->Preview = [&](const Document& document) { printed = PlainText(document); };
    screen_->Directions->Fetch = [&](const std::string& address) {
        asked = address;
        return std::string("JPEG");
    };
    screen_->Directions->Toolbar7->ActionOf(QStringLiteral("print"))->trigger();
    EXPECT_EQ(asked,
              "https://maps.example.com/staticmap/v3/getplacemap?key=Qw%7C1&location=9+Elm+St,Troy,NY,12180"
              "&size=500,400&type=map&zoom=12&imagetype=jpeg&showicon=green-1&style=european");
    EXPECT_NE(printed.find("[picture]"), std::string::npos);
    EXPECT_EQ(ReadFile(ClientPictureFile(session, "00001", ".jpg")), "JPEG");

    screen_->Directions->Fetch = [](const std::string&) -> std::string {
        throw std::runtime_error("no answer");
    };
    screen_->Directions->Toolbar7->ActionOf(QStringLiteral("print"))->trigger();
    EXPECT_EQ(agency.Said(), Lines{"message: The map could not be fetched: no answer"});
    EXPECT_NE(printed.find("[picture]"), std::string::npos) << "the one of before";
}

TEST(Browser, WithoutItsModuleSaysSo) {
    try {
        MakeWebView(nullptr);
        FAIL() << "there is no browser beside the tests";
    } catch (const std::runtime_error& error) {
        EXPECT_TRUE(std::string(error.what()).starts_with("The browser can not be opened: ")) << error.what();
    }
}

TEST_F(NotesAndWays, TheBrowserKeepsWhatWasCopied) {
    Configure({"DirectionsServer=https://way.example.com", "MapServer=https://maps.example.com",
               "HomePage=www.example.com"});
    OpenNotes("");
    PlainView* view = nullptr;
    screen_->Directions->MakeView = [&](QWidget* parent) { return view = new PlainView(parent); };
    const auto visit = [&](const char* key, const std::function<void(FRMweb&)>& act) {
        const auto driver = OnDialog<FRMweb>(act);
        screen_->Directions->Toolbar7->ActionOf(QString::fromLatin1(key))->trigger();
    };
    QClipboard& clipboard = *QGuiApplication::clipboard();
    const auto press = [](FRMweb& screen, const char* key) {
        screen.Toolbar1->ActionOf(QString::fromLatin1(key))->trigger();
    };
    visit("find_dir", [&](FRMweb& screen) {
        EXPECT_TRUE(screen.TXTcurrent->text().startsWith(
            QStringLiteral("https://way.example.com/maps?hl=en&tab=wl&saddr=")))
            << FromQt(screen.TXTcurrent->text());
        EXPECT_TRUE(screen.TXTcurrent->text().endsWith(QStringLiteral("&daddr=9+Elm+St+Troy+NY+12180")));
        EXPECT_EQ(screen.LBLstate->text(), QStringLiteral("Busy"));
        emit view->loadFinished(true);
        EXPECT_EQ(screen.LBLstate->text(), QStringLiteral("Done"));
        for (const char* key : {"back", "forward", "stop", "refresh", "home"}) {
            press(screen, key);
        }
        EXPECT_EQ(view->done.mid(1),
                  (QStringList{QStringLiteral("back"), QStringLiteral("forward"), QStringLiteral("stop"),
                               QStringLiteral("reload"), QStringLiteral("http://www.example.com")}));
        clipboard.clear();
        press(screen, "save");
        clipboard.setText(QStringLiteral("Right at the elm"));
        press(screen, "save");
    });
    EXPECT_EQ(agency.Said(), (Lines{"message: You must highlight the directions, then right click and choose "
                                    "'Copy' from the popup menu, before saving.",
                                    "message: Save complete, exiting Web browser"}));
    EXPECT_EQ(Text("TXTdirections"), "Right at the elm");

    visit("find_map", [&](FRMweb& screen) {
        press(screen, "save");
        QImage image(4, 3, QImage::Format_RGB32);
        image.fill(Qt::blue);
        clipboard.setImage(image);
        press(screen, "save");
    });
    EXPECT_EQ(agency.Said(),
              (Lines{"message: You must right click on the map and choose 'Copy' from the popup "
                     "menu, before saving.",
                     "message: Save complete, exiting Web browser"}));
    const auto kept = ReadFile(ClientPictureFile(session, "00001", ".BMP"));
    ASSERT_TRUE(kept);
    EXPECT_EQ(QImage::fromData(QByteArray::fromStdString(*kept)).size(), QSize(4, 3));

    screen_->Directions->MakeView = [](QWidget*) -> QWidget* { throw std::runtime_error("no browser here"); };
    screen_->Directions->Toolbar7->ActionOf(QStringLiteral("find_map"))->trigger();
    EXPECT_EQ(agency.Said(), Lines{"message: no browser here"});
}

}  // namespace
}  // namespace kv
