#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "box_screen.h"
#include "screens/FRMDis_error.h"
#include "screens/FRMinput.h"
#include "screens/FRMload.h"
#include "screens/FRMmessage.h"
#include "screens/FRMquestion.h"
#include "screens/desktop_dialogs.h"
#include "screens/desktop_progress.h"
#include "screens/progress_window.h"
#include "support/qt_driver.h"

namespace kv {
namespace {

using qt_driver::Find;
using qt_driver::ModalDriver;
using qt_driver::Press;

struct CountdownCase {
    int length;
    int first;
    int seconds;
};

class MessageCountdown : public testing::TestWithParam<CountdownCase> {};

TEST_P(MessageCountdown, ClosesWhenItsSecondsAreOver) {
    const CountdownCase& each = GetParam();
    FRMmessage message;
    message.SetMessage("  " + QString(each.length, 'x') + "   ");
    message.show();
    EXPECT_TRUE(message.Timer1->isActive());
    EXPECT_EQ(message.LBLcount->text(), QStringLiteral("System Message will close in %1").arg(each.first));
    for (int second = 1; second < each.seconds; ++second) {
        message.Tick();
        ASSERT_EQ(message.LBLcount->text(),
                  QStringLiteral("System Message will close in %1").arg(each.seconds - second));
        ASSERT_TRUE(message.isVisible());
    }
    message.Tick();
    EXPECT_FALSE(message.isVisible());
    EXPECT_FALSE(message.Timer1->isActive());
    EXPECT_FALSE(message.Timer2->isActive());
}

INSTANTIATE_TEST_SUITE_P(Lengths, MessageCountdown,
                         testing::Values(CountdownCase{0, 4, 3}, CountdownCase{55, 4, 3},
                                         CountdownCase{56, 6, 5}, CountdownCase{70, 6, 5},
                                         CountdownCase{71, 8, 8}, CountdownCase{120, 8, 8},
                                         CountdownCase{121, 14, 14}));

TEST(FRMmessage, WaitsWithoutItsTimer) {
    FRMmessage message;
    message.SetMessage("Saved");
    message.show();
    EXPECT_TRUE(message.Label2->isHidden());
    message.Check1->setChecked(false);
    EXPECT_FALSE(message.Timer1->isActive());
    EXPECT_FALSE(message.Label2->isHidden());
    EXPECT_EQ(message.Label2->text(), "Press any key to continue");
    EXPECT_EQ(message.Command1->text(), "Continue");
    EXPECT_TRUE(message.isVisible());
    message.Check1->setChecked(true);
    EXPECT_TRUE(message.Timer1->isActive());
}

TEST(FRMmessage, AnyKeyOrClickClosesIt) {
    FRMmessage message;
    const auto closes = [&](const std::function<void()>& act) {
        message.Command1->setProperty("tag", {});
        qt_driver::Show(message);
        act();
        const bool closed = !message.isVisible() && message.Command1->property("tag") == "Pressed";
        message.hide();
        return closed;
    };
    EXPECT_TRUE(closes([&] { Press(message, Qt::Key_Space); }));
    EXPECT_TRUE(closes([&] { Press(message, Qt::Key_Q); }));
    EXPECT_TRUE(closes([&] { Press(message, Qt::Key_F5); }));
    EXPECT_TRUE(closes([&] { Press(message, Qt::Key_Escape); }));
    EXPECT_TRUE(closes([&] { QTest::mouseClick(message.Label1, Qt::LeftButton); }));
    EXPECT_TRUE(closes([&] { QTest::mouseClick(&message, Qt::LeftButton, {}, QPoint(2, 2)); }));
    EXPECT_TRUE(closes([&] { QTest::mouseClick(message.Command1, Qt::LeftButton); }));
    EXPECT_FALSE(closes([&] { Press(message, Qt::Key_Shift); }));
    EXPECT_FALSE(closes([&] {
        QKeyEvent held(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, "a", true);
        QApplication::sendEvent(message.Command1, &held);
    })) << "a key held down since before";
    EXPECT_FALSE(closes([&] { Press(message, Qt::Key_U, Qt::AltModifier); })) << "the key of Use Timer";
    EXPECT_TRUE(QTest::qWaitFor([&] { return !message.Check1->isChecked(); }));
}

TEST(FRMmessage, ItsTenPicturesStartOver) {
    FRMmessage message;
    message.show();
    std::vector<QImage> pictures;
    for (int i = 0; i < 10; ++i) {
        const QImage picture = message.Image1->pixmap().toImage();
        for (const QImage& earlier : pictures) {
            EXPECT_NE(picture, earlier) << i;
        }
        pictures.push_back(picture);
        message.NextPicture();
    }
    EXPECT_EQ(message.PictureIndex(), 0);
    EXPECT_EQ(message.Image1->pixmap().toImage(), pictures.front());
}

struct AnswerCase {
    const char* name;
    std::function<void(FRMquestion&)> act;
    bool yes;
};

TEST(FRMquestion, Answers) {
    const AnswerCase cases[] = {
        {"enter", [](FRMquestion& box) { Press(box, Qt::Key_Return); }, true},
        {"space", [](FRMquestion& box) { Press(box, Qt::Key_Space); }, true},
        {"y", [](FRMquestion& box) { Press(box, Qt::Key_Y); }, true},
        {"Alt+Y", [](FRMquestion& box) { Press(box, Qt::Key_Y, Qt::AltModifier); }, true},
        {"CMDok", [](FRMquestion& box) { QTest::mouseClick(box.CMDok, Qt::LeftButton); }, true},
        {"n", [](FRMquestion& box) { Press(box, Qt::Key_N); }, false},
        {"Alt+N", [](FRMquestion& box) { Press(box, Qt::Key_N, Qt::AltModifier); }, false},
        {"escape", [](FRMquestion& box) { Press(box, Qt::Key_Escape); }, false},
        {"close", [](FRMquestion& box) { box.close(); }, false},
        {"CMDno", [](FRMquestion& box) { QTest::mouseClick(box.CMDno, Qt::LeftButton); }, false},
        {"tab, enter",
         [](FRMquestion& box) {
             Press(box, Qt::Key_Tab);
             Press(box, Qt::Key_Return);
         },
         false}};
    FRMquestion box;
    box.SetQuestion("Are you sure?");
    for (const AnswerCase& each : cases) {
        SCOPED_TRACE(each.name);
        box.Answer = !each.yes;
        qt_driver::Show(box);
        EXPECT_TRUE(box.CMDok->hasFocus());
        each.act(box);
        // Qt shows a button pressed by its mnemonic for a moment before it clicks.
        EXPECT_TRUE(QTest::qWaitFor([&] { return !box.isVisible(); }));
        EXPECT_EQ(box.Answer, each.yes);
        box.hide();
    }
}

TEST(DesktopDialogs, AskAndTell) {
    DesktopDialogs dialogs;
    {
        const ModalDriver driver([](QWidget& box) {
            EXPECT_EQ(box.windowTitle(), "System Message");
            EXPECT_EQ(Find<QLabel>(&box, "Label1")->text(), "There was no Client found");
            Press(box, Qt::Key_Space);
        });
        dialogs.ShowMessageWindow("There was no Client found", true);
    }
    {
        const ModalDriver driver([](QWidget& box) {
            EXPECT_EQ(box.windowTitle(), "Important Question ");
            EXPECT_EQ(Find<QLabel>(&box, "LBLquest")->text(), "Save <all> & go?");
            Press(box, Qt::Key_Y);
        });
        EXPECT_TRUE(dialogs.AskQuestion("Save <all> & go?"));
    }
    {
        const ModalDriver driver([](QWidget& box) { Press(box, Qt::Key_Escape); });
        EXPECT_FALSE(dialogs.AskQuestion("Save?"));
    }
    {
        const ModalDriver driver([](QWidget& box) {
            EXPECT_EQ(box.windowTitle(), "Current Errors Found");
            const auto* list = Find<QListWidget>(&box, "LSTerror");
            ASSERT_EQ(list->count(), 3);
            EXPECT_EQ(list->item(2)->text(), "You must fill in the last name field.");
            EXPECT_GE(list->width(), list->sizeHintForColumn(0)) << "nothing is cut off";
            QTest::mouseClick(Find<QPushButton>(&box, "CMDok"), Qt::LeftButton);
        });
        dialogs.ShowFaults(
            {"Information you must fix on this client.", " ", "You must fill in the last name field."});
    }
    {
        const ModalDriver driver([](QWidget& box) {
            EXPECT_EQ(box.windowTitle(), "Security Message");
            Press(box, Qt::Key_Return);
        });
        dialogs.ShowInformation("Security Message", "You have no right to this screen.");
    }
}

TEST(DesktopDialogs, InputAnswersTheTextOrNothing) {
    DesktopDialogs dialogs;
    {
        const ModalDriver driver([](QWidget& box) {
            auto* line = Find<QLineEdit>(&box, "TXTinput");
            EXPECT_EQ(line->text(), "3");
            EXPECT_TRUE(line->hasFocus());
            qt_driver::Type(*line, "17");
            Press(box, Qt::Key_Return);
        });
        EXPECT_EQ(dialogs.AskInput("Go to Page", "Page:", "3"), "17")
            << "what was there is selected and gives way";
    }
    {
        const ModalDriver driver([](QWidget& box) { Press(box, Qt::Key_Escape); });
        EXPECT_EQ(dialogs.AskInput("Go to Page", "Page:", "3"), std::nullopt);
    }
}

TEST(DesktopDialogs, TheHourglassIsAsideWhileTheOperatorAnswers) {
    DesktopDialogs dialogs;
    DesktopProgress progress;
    progress.SetHourglass(true);
    {
        const ModalDriver driver([](QWidget& box) {
            EXPECT_EQ(QApplication::overrideCursor(), nullptr);
            Press(box, Qt::Key_Y);
        });
        dialogs.AskQuestion("Go on?");
    }
    EXPECT_NE(QApplication::overrideCursor(), nullptr);
    progress.SetHourglass(false);
    progress.SetHourglass(false);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    progress.SetHourglass(true);
    EXPECT_NE(QApplication::overrideCursor(), nullptr) << "a false too many counts for nothing";
    progress.SetHourglass(false);
}

TEST(Dialogs, TabGoesAsTheyReadAndEverythingHasAName) {
    FRMmessage message;
    message.SetMessage("Moved to the last Record");
    FRMquestion question;
    FRMDis_error faults;
    faults.SetLines({"Information you must fix on this client."});
    FRMinput input("Text search", "Search:", "");
    ProgressWindow progress;
    for (QWidget* dialog :
         {static_cast<QWidget*>(&message), static_cast<QWidget*>(&question), static_cast<QWidget*>(&faults),
          static_cast<QWidget*>(&input), static_cast<QWidget*>(&progress)}) {
        SCOPED_TRACE(dialog->objectName().toStdString());
        qt_driver::Show(*dialog);
        EXPECT_THAT(qt_driver::TabOrder(*dialog), testing::Not(testing::IsEmpty()));
        EXPECT_THAT(qt_driver::Unnamed(*dialog), testing::IsEmpty());
        EXPECT_THAT(qt_driver::StepsAgainstReading(*dialog), testing::IsEmpty());
        EXPECT_FALSE(dialog->windowTitle().isEmpty());
        dialog->hide();
    }
}

TEST(FRMload, ShowsHowFarItIs) {
    FRMload load;
    load.show();
    load.SetValue(25, 65);
    EXPECT_EQ(load.windowTitle(), "Loading User Defined Information");
    EXPECT_EQ(load.ProgressBar1->value(), 25);
    EXPECT_EQ(load.ProgressBar1->maximum(), 65);
}

struct TimedProgress {
    std::chrono::milliseconds now{0};
    DesktopProgress progress{[this] { return now; }};
};

TEST(DesktopProgress, TheWindowComesAfterASecond) {
    TimedProgress timed;
    timed.progress.Begin("Creating schedules", 100);
    EXPECT_NE(QApplication::overrideCursor(), nullptr);
    timed.now = std::chrono::milliseconds(999);
    timed.progress.Advance(10);
    EXPECT_TRUE(timed.progress.Yield());
    EXPECT_EQ(timed.progress.Window(), nullptr);
    timed.now = std::chrono::milliseconds(1000);
    timed.progress.Advance(20);
    ASSERT_NE(timed.progress.Window(), nullptr);
    EXPECT_TRUE(timed.progress.Window()->isVisible());
    EXPECT_EQ(timed.progress.Window()->LBLtext->text(), "Creating schedules");
    EXPECT_EQ(timed.progress.Window()->Pbar->value(), 30);
    EXPECT_EQ(timed.progress.Window()->Pbar->maximum(), 100);
    timed.progress.End();
    EXPECT_EQ(timed.progress.Window(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(DesktopProgress, TheOperatorCanBreakOff) {
    TimedProgress timed;
    timed.progress.Begin("Searching", 0);
    timed.now = std::chrono::milliseconds(2000);
    EXPECT_TRUE(timed.progress.Yield());
    Press(*timed.progress.Window(), Qt::Key_Escape);
    EXPECT_TRUE(timed.progress.Window()->isVisible()) << "until the work ends";
    EXPECT_FALSE(timed.progress.Yield());
    timed.progress.End();
    timed.progress.Begin("Again", 0);
    EXPECT_TRUE(timed.progress.Yield()) << "the next work starts afresh";
    timed.progress.End();
}

TEST(DesktopProgress, YieldLetsTheWindowSystemBreathe) {
    TimedProgress timed;
    const QWidget window;
    int done = 0;
    QTimer::singleShot(0, &window, [&] { ++done; });
    EXPECT_TRUE(timed.progress.Yield());
    EXPECT_EQ(done, 1);
}

}  // namespace
}  // namespace kv
