#include "screens/widgets/tool_bar.h"

#include <QApplication>
#include <QSignalSpy>
#include <QToolButton>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include "box_screen.h"
#include "screens/widgets/text_box.h"
#include "screens/widgets/theme.h"
#include "support/qt_driver.h"

namespace kv {
namespace {

struct KeyedScreen {
    KeyedScreen() {
        std::vector<ToolKey> keys;
        for (const char* key : {"exit", "first", "previous", "next", "last", "", "new", "delete", "save",
                                "discard", "", "sort", "interface", "help"}) {
            keys.push_back(*key == 0 ? ToolSeparator() : StandardKey(key));
        }
        toolbar = new ToolBar("Toolbar1", keys, &window);
        box = new TextBox("TXTquick", "Quick:", 10, &window);
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(toolbar);
        layout->addWidget(box);
        qt_driver::Show(window);
    }
    QWidget window;
    ToolBar* toolbar;
    TextBox* box;
};

TEST(ToolBar, ButtonsCountFromOneWithTheirSeparators) {
    const KeyedScreen screen;
    EXPECT_EQ(screen.toolbar->ButtonCount(), 14);
    EXPECT_EQ(screen.toolbar->KeyOfButton(1), "exit");
    EXPECT_EQ(screen.toolbar->KeyOfButton(6), "");
    EXPECT_EQ(screen.toolbar->KeyOfButton(7), "new");
    EXPECT_EQ(screen.toolbar->KeyOfButton(14), "help");
    EXPECT_EQ(screen.toolbar->ButtonOfKey("sort"), 12);
    EXPECT_EQ(screen.toolbar->ButtonOfKey("paint"), 0);
    screen.toolbar->EnableButtons(1, 10, false);
    EXPECT_FALSE(screen.toolbar->IsKeyEnabled("exit"));
    EXPECT_FALSE(screen.toolbar->IsKeyEnabled("discard"));
    EXPECT_TRUE(screen.toolbar->IsKeyEnabled("sort"));
}

TEST(ToolBar, ClicksAndShortcutsSendTheKey) {
    KeyedScreen screen;
    QSignalSpy pressed(screen.toolbar, &ToolBar::keyPressed);
    qt_driver::ClickKey(&screen.window, "save");
    screen.box->setFocus();
    qt_driver::Press(screen.window, Qt::Key_PageDown, Qt::AltModifier);
    ASSERT_EQ(pressed.count(), 2);
    EXPECT_EQ(pressed[0][0].toString(), "save");
    EXPECT_EQ(pressed[1][0].toString(), "next");
    screen.toolbar->EnableKey("next", false);
    qt_driver::Press(screen.window, Qt::Key_PageDown, Qt::AltModifier);
    EXPECT_EQ(pressed.count(), 2) << "a key that is off";
    EXPECT_THROW(qt_driver::ClickKey(&screen.window, "next"), std::runtime_error);
}

TEST(ToolBar, EveryKeyHasAPictureAWordAndATipAndNoShortcutTwice) {
    const KeyedScreen screen;
    QStringList shortcuts;
    for (int index = 1; index <= screen.toolbar->ButtonCount(); ++index) {
        const QString key = screen.toolbar->KeyOfButton(index);
        const QAction* action = screen.toolbar->ActionOf(key);
        if (action == nullptr) {
            continue;
        }
        EXPECT_FALSE(action->icon().isNull()) << key.toStdString();
        EXPECT_FALSE(action->toolTip().isEmpty());
        EXPECT_FALSE(shortcuts.contains(action->shortcut().toString())) << key.toStdString();
        shortcuts << action->shortcut().toString();
    }
}

TEST(ToolBar, ClearedCaptionsLeaveTheNames) {
    KeyedScreen screen;
    ClearToolbarCaptions(screen.toolbar);
    const auto* button = qt_driver::Find<QToolButton>(&screen.window, "Toolbar1_save");
    EXPECT_EQ(button->toolButtonStyle(), Qt::ToolButtonIconOnly);
    EXPECT_EQ(button->accessibleName(), "Save");
    EXPECT_TRUE(button->toolTip().contains("Ctrl+S"));
}

TEST(Theme, IconsAreDrawnInTheInkOfThePalette) {
    const QPalette before = QApplication::palette();
    const auto darkest = [](const QPalette& palette) {
        QApplication::setPalette(palette);
        const QImage image = theme::Icon("first").pixmap(24, 24).toImage();
        int least = 255;
        int drawn = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixelColor(x, y).alpha() > 200) {
                    least = std::min(least, image.pixelColor(x, y).lightness());
                    ++drawn;
                }
            }
        }
        EXPECT_GT(drawn, 20);
        return least;
    };
    EXPECT_LT(darkest(theme::LightPalette()), 60);
    EXPECT_GT(darkest(theme::DarkPalette()), 200);
    QApplication::setPalette(before);
    EXPECT_TRUE(theme::Icon("no such picture").isNull());
}

}  // namespace
}  // namespace kv
