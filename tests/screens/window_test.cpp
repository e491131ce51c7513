#include <QApplication>
#include <QCloseEvent>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include "box_screen.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/section_strip.h"
#include "screens/widgets/status_bar.h"
#include "screens/widgets/window_tools.h"
#include "support/qt_driver.h"

namespace kv {
namespace {

struct StripScreen : BoxScreen<SectionStrip> {
    StripScreen()
        : BoxScreen("IMGCommand", "imgCHECK", Qt::Vertical,
                    std::vector<SectionItem>{{"section_demographics", "Client", "Client Demographics"},
                                             {"section_rates", "Rates", "Rates"},
                                             {"section_events", "Events", "Events"},
                                             {"section_phone", "Phones", "Phones"}}) {}
};

TEST(SectionStrip, TheScreenDecidesWhichItemIsOpen) {
    const StripScreen screen;
    SectionStrip& strip = *screen.box;
    strip.SetOpen(0);
    QSignalSpy picked(&strip, &SectionStrip::picked);
    QTest::mouseClick(qt_driver::Find<QToolButton>(&screen.window, "IMGCommand2"), Qt::LeftButton);
    ASSERT_EQ(picked.count(), 1);
    EXPECT_EQ(picked[0][0].toInt(), 2);
    EXPECT_EQ(strip.Open(), 0);
    EXPECT_TRUE(strip.Button(0)->isChecked());
    EXPECT_FALSE(strip.Button(2)->isChecked());
    strip.SetOpen(2);
    EXPECT_EQ(picked.count(), 1);
}

TEST(SectionStrip, TheMarkStandsOnTheOpenItem) {
    const StripScreen screen;
    const auto* mark = qt_driver::Find<QLabel>(&screen.window, "imgCHECK");
    EXPECT_TRUE(mark->isHidden());
    for (const int open : {3, 1}) {
        screen.box->SetOpen(open);
        EXPECT_FALSE(mark->isHidden());
        EXPECT_TRUE(screen.box->Button(open)->geometry().contains(mark->geometry()));
    }
    screen.box->SetItemShown(1, false);
    EXPECT_TRUE(mark->isHidden()) << "with its item";
}

TEST(SectionStrip, ArrowsPassOverWhatIsHiddenOrOff) {
    const StripScreen screen;
    screen.box->SetItemShown(1, false);
    screen.box->SetItemEnabled(2, false);
    screen.box->Button(0)->setFocus();
    qt_driver::Press(*screen.box, Qt::Key_Down);
    EXPECT_TRUE(screen.box->Button(3)->hasFocus());
    qt_driver::Press(*screen.box, Qt::Key_Down);
    EXPECT_TRUE(screen.box->Button(3)->hasFocus());
    QSignalSpy picked(screen.box, &SectionStrip::picked);
    qt_driver::Press(*screen.box, Qt::Key_Return);
    EXPECT_EQ(picked.count(), 1);
}

TEST(StatusBar, PanelsCountFromOne) {
    QWidget window;
    StatusBar bar("StatusBar1", {{"Last change", 20, true}, {"Moment", 20}}, &window);
    bar.SetPanel(2, "Date/Time: ");
    EXPECT_EQ(bar.PanelText(2), "Date/Time: ");
    EXPECT_EQ(bar.PanelText(1), "");
    EXPECT_THROW(bar.SetPanel(3, ""), std::out_of_range);
}

// The window system's request arrives as a spontaneous event; only QApplication::notify leaves that mark in
// place.
bool CloseByWindowSystem(QWidget& window) {
    QCloseEvent request;
    QSpontaneKeyEvent::setSpontaneous(&request);
    qApp->notify(&window, &request);
    return request.isAccepted();
}

TEST(WindowTools, OnlyTheProgramClosesAGuardedWindow) {
    QWidget window;
    qt_driver::Show(window);
    EXPECT_TRUE(CloseByWindowSystem(window)) << "unguarded";
    DisableCloseMenu(&window);
    EXPECT_FALSE(CloseByWindowSystem(window));
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(window.close());
}

TEST(WindowTools, GridColorsGoToTheNamedListsOfAColourSession) {
    QWidget window;
    Grid named("fgContact", {{"Name"}}, &window);
    Grid other("LSTgrid", {{"Name"}}, &window);
    QLabel label(&window);
    label.setObjectName("FGlabel");
    ApplyGridColors(&window, false);
    EXPECT_EQ(named.styleSheet(), "");
    ApplyGridColors(&window, true);
    EXPECT_NE(named.styleSheet(), "");
    EXPECT_EQ(other.styleSheet(), "");
    const QColor ground = theme::SessionGridColors(window.palette()).ground;
    named.resize(200, 200);
    qt_driver::Show(window);
    const QImage image = named.viewport()->grab().toImage();
    EXPECT_EQ(image.pixelColor(image.width() / 2, image.height() - 3), ground);
}

}  // namespace
}  // namespace kv
