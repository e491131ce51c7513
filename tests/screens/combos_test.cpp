#include "screens/widgets/combos.h"

#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

#include "box_screen.h"

namespace kv {
namespace {

using qt_driver::Leave;
using qt_driver::Retype;

const std::vector<LookupItem> kLanguages = {
    {"E", "English"}, {"S", "Spanish"}, {"SW", "Swahili"}, {"X", "English"}};

struct LookupScreen : BoxScreen<LookupCombo> {
    LookupScreen() : BoxScreen("TDBCombo1", "Language:", 20) { box->SetItems(kLanguages); }
};

struct Case {
    const char* typed;
    const char* text;
    const char* bound;
    bool inList;
};

class LookupCases : public testing::TestWithParam<Case> {};

TEST_P(LookupCases, TypedAndLeft) {
    const Case& each = GetParam();
    const LookupScreen screen;
    screen.box->SetValue("SW");
    Retype(*screen.box, each.typed);
    Leave(*screen.box);
    EXPECT_EQ(screen.box->Text().toStdString(), each.text);
    EXPECT_EQ(screen.box->BoundText(), each.bound);
    EXPECT_EQ(screen.box->IsInList(), each.inList);
    EXPECT_TRUE(screen.box->IsDataChanged());
}

INSTANTIATE_TEST_SUITE_P(Entries, LookupCases,
                         testing::Values(Case{"Spanish", "Spanish", "S", true},
                                         Case{"sp", "Spanish", "S", true},
                                         Case{"SPANISH", "Spanish", "S", true},
                                         Case{"Klingon", "Klingon", "Klingon", false},
                                         Case{"", "", "", false}));

TEST(LookupCombo, LoadsByCodeInAnyCaseAndShowsAnUnknownCodeAsItIs) {
    const LookupScreen screen;
    screen.box->SetValue("s");
    EXPECT_EQ(screen.box->Text(), "Spanish");
    screen.box->SetValue("X");
    EXPECT_EQ(screen.box->BoundText(), "X") << "of two items that read alike the one that was loaded";
    screen.box->SetValue("ZZ");
    EXPECT_EQ(screen.box->Text(), "ZZ");
    EXPECT_EQ(screen.box->BoundText(), "ZZ");
    screen.box->SetValue({});
    EXPECT_EQ(screen.box->Text(), "");
    EXPECT_FALSE(screen.box->IsDataChanged());
}

TEST(LookupCombo, AListThatComesLaterKeepsTheCode) {
    const BoxScreen<LookupCombo> screen("TDBCombo1", "Language:", 20);
    screen.box->SetValue("S");
    QSignalSpy changes(screen.box->Notifier(), &ControlNotifier::changed);
    screen.box->SetItems(kLanguages);
    EXPECT_EQ(screen.box->Text(), "Spanish");
    EXPECT_EQ(screen.box->BoundText(), "S");
    EXPECT_EQ(changes.count(), 0);
    EXPECT_FALSE(screen.box->IsDataChanged());
}

TEST(LookupCombo, DoubleClickClearsOnlyWhereTheTipSaysSo) {
    const LookupScreen screen;
    LookupCombo& combo = *screen.box;
    combo.SetValue("S");
    QTest::mouseDClick(combo.lineEdit(), Qt::LeftButton);
    EXPECT_EQ(combo.BoundText(), "S");
    combo.setToolTip(kDoubleClickToClear);
    QTest::mouseDClick(combo.lineEdit(), Qt::RightButton);
    EXPECT_EQ(combo.BoundText(), "S");
    QTest::mouseDClick(combo.lineEdit(), Qt::LeftButton);
    EXPECT_EQ(combo.BoundText(), "");
    EXPECT_EQ(combo.Text(), "");
    EXPECT_TRUE(combo.IsDataChanged());
}

TEST(LookupCombo, TheWheelPassesBy) {
    const LookupScreen screen;
    screen.box->SetValue("E");
    QWheelEvent roll(QPointF(5, 5), screen.box->mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, -120),
                     Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(screen.box, &roll);
    EXPECT_EQ(screen.box->BoundText(), "E");
    EXPECT_FALSE(roll.isAccepted());
}

TEST(PlainCombo, ListTakesItemsOnlyEditableTakesAnyText) {
    QWidget window;
    PlainCombo list("CMBhol", "Holiday:", PlainCombo::Style::List, 5, &window);
    PlainCombo free("cmbGroup", "Group:", PlainCombo::Style::Editable, 5, &window);
    for (PlainCombo* combo : {&list, &free}) {
        combo->SetItems(QStringList{"YES", "NO"});
        EXPECT_FALSE(combo->IsDataChanged()) << "a list that comes is no change";
        combo->SetValue("no");
        EXPECT_EQ(combo->currentIndex(), 1);
        combo->SetValue("Other");
    }
    EXPECT_EQ(list.currentIndex(), -1);
    EXPECT_EQ(list.Text(), "");
    EXPECT_EQ(free.Text(), "Other");
    EXPECT_EQ(free.Key(), "");
}

TEST(PlainCombo, KeysStandBesideTheItems) {
    QWidget window;
    PlainCombo combo("CMBwhen_Cobilling", "When:", PlainCombo::Style::Editable, 12, &window);
    combo.SetItems({"Per Day", "Per Week", "Per Month"}, {"D", "W", "M"});
    EXPECT_TRUE(combo.PickKey("W"));
    EXPECT_EQ(combo.Text(), "Per Week");
    EXPECT_TRUE(combo.IsDataChanged());
    combo.setEditText("per month");
    EXPECT_EQ(combo.Key(), "M") << "the key is of the text shown, not of the item picked before";
    EXPECT_FALSE(combo.PickKey("Q"));
}

}  // namespace
}  // namespace kv
