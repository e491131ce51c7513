#include "screens/widgets/number_box.h"

#include <gtest/gtest.h>

#include "box_screen.h"

namespace kv {
namespace {

using qt_driver::Leave;
using qt_driver::Retype;

TEST(NumberBox, PlainWhileEditedFormattedWhenLeft) {
    const BoxScreen<NumberBox> screen("NUMbillmileage", "Rate:", "$ ##,##0.00", 10);
    NumberBox& box = *screen.box;
    box.SetValue(1234.5);
    EXPECT_EQ(box.Text(), "$ 1,234.50");
    box.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(box.Text(), "1234.5");
    Leave(box);
    EXPECT_EQ(box.Text(), "$ 1,234.50");
    EXPECT_FALSE(box.IsDataChanged()) << "a visit is no change";
    Retype(box, "2,000.255");
    Leave(box);
    EXPECT_EQ(box.Value(), Value(2000.255)) << "the display rounds, the value does not";
    EXPECT_TRUE(box.IsDataChanged());
}

struct Case {
    const char* typed;
    const char* text;
    bool fault;
    double number;
};

class NumberBoxCases : public testing::TestWithParam<Case> {};

TEST_P(NumberBoxCases, EntryWithinLimits) {
    const Case& each = GetParam();
    const BoxScreen<NumberBox> screen("NUMcoBilling", "The Percentage:", "##0.000 %", 10);
    NumberBox& box = *screen.box;
    box.SetLimits(0, 100);
    box.SetValue(7.0);
    Retype(box, each.typed);
    Leave(box);
    EXPECT_EQ(box.Text().toStdString(), each.text);
    EXPECT_EQ(!box.Fault().isEmpty(), each.fault);
    EXPECT_EQ(box.Number(), each.number);
}

INSTANTIATE_TEST_SUITE_P(Entries, NumberBoxCases,
                         testing::Values(Case{"12.5", "12.500 %", false, 12.5},
                                         Case{"100", "100.000 %", false, 100},
                                         Case{"100.001", "100.001", true, 7}, Case{"-1", "-1", true, 7},
                                         Case{"12a%5", "125", true, 7}, Case{"1.2.3", "1.2.3", true, 7},
                                         Case{"", "", false, 0}));

TEST(NumberBox, BlankIsNullAndZeroIsZero) {
    const BoxScreen<NumberBox> screen("NUMhrs", "Hours:", "##0.00", 8);
    screen.box->SetValue({});
    EXPECT_TRUE(screen.box->Value().IsNull());
    EXPECT_EQ(screen.box->Text(), "");
    screen.box->SetValue(0);
    EXPECT_EQ(screen.box->Text(), "0.00");
    EXPECT_EQ(screen.box->Value(), Value(0.0));
}

TEST(NumberBox, LoadedNumberOutsideTheLimitsIsTheRowsBusiness) {
    const BoxScreen<NumberBox> screen("NUMhrs", "Hours:", "##0.00", 8);
    screen.box->SetLimits(0, 24);
    screen.box->SetValue(40.0);
    EXPECT_TRUE(screen.box->Check());
    screen.box->SetNumber(40.5);
    EXPECT_FALSE(screen.box->Check());
}

}  // namespace
}  // namespace kv
