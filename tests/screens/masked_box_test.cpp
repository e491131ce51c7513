#include "screens/widgets/masked_box.h"

#include <QApplication>
#include <QClipboard>

#include <gtest/gtest.h>

#include "box_screen.h"

namespace kv {
namespace {

using qt_driver::Press;
using qt_driver::Retype;

struct Case {
    const char* mask;
    const char* entry;
    const char* shown;
    const char* value;
};

class MaskedBoxCases : public testing::TestWithParam<Case> {};

TEST_P(MaskedBoxCases, TypingPastingAndLoadingAgree) {
    const Case& each = GetParam();
    const BoxScreen<MaskedBox> screen("TxtPhone", "Phone:", each.mask);
    MaskedBox& box = *screen.box;

    Retype(box, each.entry);
    EXPECT_EQ(box.Text().toStdString(), each.shown) << "typed";
    EXPECT_EQ(box.Value().ToText(), each.value) << "typed";
    EXPECT_TRUE(box.IsDataChanged());

    box.SetValue({});
    QApplication::clipboard()->setText(each.entry);
    box.setFocus(Qt::TabFocusReason);
    Press(box, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(box.Text().toStdString(), each.shown) << "pasted";
    EXPECT_EQ(box.Value().ToText(), each.value) << "pasted";

    box.SetValue(std::string(each.value));
    EXPECT_EQ(box.Text().toStdString(), each.shown) << "loaded";
    EXPECT_EQ(box.Value().ToText(), each.value) << "loaded";
    EXPECT_FALSE(box.IsDataChanged());
}

INSTANTIATE_TEST_SUITE_P(Masks, MaskedBoxCases,
                         testing::Values(Case{mask::kPhone, "2125551234", "(212) 555-1234", "2125551234"},
                                         Case{mask::kPhone, "(212) 555-1234", "(212) 555-1234", "2125551234"},
                                         Case{mask::kPhone, "212x555x12", "(212) 555-12__", "21255512"},
                                         Case{mask::kPhone, "", "(___) ___-____", ""},
                                         Case{mask::kSocial, "123-45-6789", "123-45-6789", "123456789"},
                                         Case{mask::kSocialCanada, "123456789", "123-456-789", "123456789"},
                                         Case{mask::kZip, "10012", "10012-____", "10012"},
                                         Case{"L9L 9L9", "K1A0B1", "K1A 0B1", "K1A0B1"}));

TEST(MaskedBox, UnfilledIsNull) {
    const BoxScreen<MaskedBox> screen("txtSsn", "SSN", mask::kSocial);
    EXPECT_TRUE(screen.box->Value().IsNull());
    EXPECT_FALSE(screen.box->IsComplete());
}

TEST(MaskedBox, PasteOfAWholeNumberReplacesWhereverTheCursorStands) {
    const BoxScreen<MaskedBox> screen("TxtPhone", "Phone:", mask::kPhone);
    MaskedBox& box = *screen.box;
    box.SetValue("9998887777");
    box.setFocus();
    box.setCursorPosition(7);
    QApplication::clipboard()->setText(" 212.555.1234 ");
    Press(box, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(box.Value().ToText(), "2125551234");
    EXPECT_TRUE(box.IsComplete());
}

TEST(MaskedBox, PasteRuleGetsTheClipboardAsItIs) {
    const BoxScreen<MaskedBox> screen("TxtPhone", "Phone:", mask::kPhone);
    MaskedBox& box = *screen.box;
    box.SetPasteRule([](const QString& text) { return text.mid(3); });
    box.SetValue("9998887777");
    QApplication::clipboard()->setText("+1 (212) 555-1234");
    box.setFocus();
    Press(box, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(box.Value().ToText(), "2125551234");
    box.Paste("+1 555");
    EXPECT_EQ(box.Text(), "(555) ___-____") << "a rule's answer replaces all";
}

TEST(MaskedBox, ContentThatDoesNotFitStaysTheRowsOwn) {
    const BoxScreen<MaskedBox> screen("txtSsn", "SSN", mask::kSocial);
    screen.box->SetValue("123456789012");
    EXPECT_EQ(screen.box->Text(), "123-45-6789");
    EXPECT_FALSE(screen.box->IsDataChanged());
}

TEST(MaskedBox, AnotherMaskKeepsTheCharacters) {
    const BoxScreen<MaskedBox> screen("txtSsn", "SSN", mask::kSocial);
    screen.box->SetValue("123456789");
    screen.box->SetMask(mask::kSocialCanada);
    EXPECT_EQ(screen.box->Text(), "123-456-789");
    EXPECT_FALSE(screen.box->IsDataChanged());
}

}  // namespace
}  // namespace kv
