#include <QCalendarWidget>
#include <QTest>

#include <gtest/gtest.h>

#include "base/numbers.h"
#include "box_screen.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/time_box.h"

namespace kv {
namespace {

using qt_driver::Find;
using qt_driver::Leave;
using qt_driver::Press;
using qt_driver::Retype;

struct DateCase {
    const char* typed;
    const char* shown;
    const char* stored;  // "" for Null
    bool fault;
};

class DateBoxCases : public testing::TestWithParam<DateCase> {};

TEST_P(DateBoxCases, TypedAndLeft) {
    const DateCase& each = GetParam();
    const BoxScreen<DateBox> screen("TxtB_date", "Birthday:");
    DateBox& box = *screen.box;
    box.SetValue(Date::FromCivil(2020, 5, 6));
    Retype(box, each.typed);
    Leave(box);
    EXPECT_EQ(box.Text().toStdString(), each.shown);
    EXPECT_EQ(!box.Fault().isEmpty(), each.fault);
    EXPECT_EQ(box.Value().IsNull() ? "" : IsoText(box.Value().ToDate()).substr(0, 10), each.stored);
    EXPECT_TRUE(box.IsDataChanged());
}

// What is at fault keeps the last good value: the one that was loaded.
INSTANTIATE_TEST_SUITE_P(Entries, DateBoxCases,
                         testing::Values(DateCase{"01312026", "01/31/2026", "2026-01-31", false},
                                         DateCase{"1/3/2026", "01/03/2026", "2026-01-03", false},
                                         DateCase{"02292024", "02/29/2024", "2024-02-29", false},
                                         DateCase{"02292023", "02/29/2023", "2020-05-06", true},
                                         DateCase{"13012026", "13/01/2026", "2020-05-06", true},
                                         DateCase{"0131", "01/31/____", "2020-05-06", true},
                                         DateCase{"013129", "01/31/2029", "2029-01-31", false},
                                         DateCase{"013130", "01/31/1930", "1930-01-31", false},
                                         DateCase{"12311850", "12/31/1850", "2020-05-06", true},
                                         DateCase{"", "__/__/____", "", false}));

TEST(DateBox, NullAndDatesBefore1901AreUnfilled) {
    const BoxScreen<DateBox> screen("DTEFirstContact", "First Contact:");
    for (const Value& value : {Value(), Value(Date()), Value(Date::FromCivil(1900, 12, 31)), Value("")}) {
        screen.box->SetValue(Date::FromCivil(2026, 1, 2));
        screen.box->SetValue(value);
        EXPECT_EQ(screen.box->Text(), "__/__/____");
        EXPECT_FALSE(screen.box->IsFilled());
        EXPECT_TRUE(screen.box->Value().IsNull());
        EXPECT_FALSE(screen.box->IsDataChanged());
    }
}

TEST(DateBox, FaultIsToldBesideTheBoxAndGoesWithTheNextGoodEntry) {
    const BoxScreen<DateBox> screen("TxtB_date", "Birthday:");
    DateBox& box = *screen.box;
    QLabel* fault = box.PlaceFaultLabel();
    Retype(box, "9999");
    EXPECT_TRUE(fault->isHidden()) << "not while it is being typed";
    Leave(box);
    EXPECT_FALSE(fault->isHidden());
    EXPECT_TRUE(fault->text().contains(box.Fault()));
    EXPECT_EQ(box.accessibleDescription(), box.Fault());
    Retype(box, "01012026");
    EXPECT_TRUE(fault->isHidden());
    EXPECT_TRUE(box.Fault().isEmpty());
}

TEST(DateBox, CalendarOpensByKeyAndItsDayIsAnEntry) {
    const BoxScreen<DateBox> screen("TxtB_date", "Birthday:");
    DateBox& box = *screen.box;
    box.SetValue(Date::FromCivil(2026, 1, 30));
    QSignalSpy changes(box.Notifier(), &ControlNotifier::changed);
    Press(box, Qt::Key_Down, Qt::AltModifier);
    auto* calendar = box.findChild<QCalendarWidget*>();
    ASSERT_NE(calendar, nullptr);
    EXPECT_EQ(calendar->selectedDate(), QDate(2026, 1, 30));
    emit calendar->activated(QDate(2026, 1, 31));
    EXPECT_EQ(box.Text(), "01/31/2026");
    EXPECT_EQ(changes.count(), 1);
}

struct TimeCase {
    const char* typed;
    const char* shown;
    const char* military;
    bool fault;
};

class TimeBoxCases : public testing::TestWithParam<TimeCase> {};

TEST_P(TimeBoxCases, TypedAndLeftInBothForms) {
    const TimeCase& each = GetParam();
    const BoxScreen<TimeBox> screen("TXTsttime", "Start Time:");
    TimeBox& box = *screen.box;
    for (const bool military : {false, true}) {
        box.SetMilitary(military);
        box.SetValue(Date::FromTime(6, 15));
        Retype(box, each.typed);
        Leave(box);
        EXPECT_EQ(box.Text().toStdString(), military ? each.military : each.shown);
        EXPECT_EQ(!box.Fault().isEmpty(), each.fault);
    }
    if (each.fault) {
        EXPECT_EQ(box.Value(), Value(Date::FromTime(6, 15)));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Entries, TimeBoxCases,
    testing::Values(
        TimeCase{"9", "09:00 AM", "09:00", false}, TimeCase{"930", "09:30 AM", "09:30", false},
        TimeCase{"9:30p", "09:30 PM", "21:30", false}, TimeCase{"0930 PM", "09:30 PM", "21:30", false},
        TimeCase{"21:30", "09:30 PM", "21:30", false}, TimeCase{"12a", "12:00 AM", "00:00", false},
        TimeCase{"12:15 pm", "12:15 PM", "12:15", false}, TimeCase{"0000", "12:00 AM", "00:00", false},
        TimeCase{"", "__:__", "__:__", false}, TimeCase{"24:00", "24:00", "24:00", true},
        TimeCase{"9:60", "9:60", "9:60", true}, TimeCase{"13p", "13p", "13p", true}));

TEST(TimeBox, TypingReplacesATimeThatIsThere) {
    const BoxScreen<TimeBox> screen("TXTsttime", "Start Time:");
    TimeBox& box = *screen.box;
    const auto typed = [&](const char* keys, int cursor) {
        box.SetValue(Value(Date::FromTime(8, 0)));
        box.setFocus();
        box.deselect();
        box.setCursorPosition(cursor);
        QTest::keyClicks(&box, QString::fromLatin1(keys));
        box.Finish();
        return box.Text();
    };
    EXPECT_EQ(typed("1100PM", 8), QStringLiteral("11:00 PM"));
    EXPECT_EQ(typed("1100PM", 0), QStringLiteral("11:00 PM"));
    box.SetMilitary(true);
    EXPECT_EQ(typed("2300", 5), QStringLiteral("23:00"));
    box.SetMilitary(false);
    box.SetValue(Value(Date::FromTime(8, 0)));
    box.clearFocus();
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_TRUE(box.hasFocus());
    QTest::keyClicks(&box, QStringLiteral("930"));
    EXPECT_TRUE(box.Finish());
    EXPECT_EQ(box.Text(), QStringLiteral("09:30 AM"));
}

TEST(TimeBox, DigitsOfRoutinesAreNotWrapped) {
    const BoxScreen<TimeBox> screen("TMEstartTime", "Start:");
    screen.box->SetDigits("231500");
    EXPECT_EQ(screen.box->Value(), Value(Date::FromTime(23, 15)));
    EXPECT_TRUE(screen.box->IsDataChanged());
    screen.box->SetDigits("240000");
    EXPECT_FALSE(screen.box->Fault().isEmpty());
}

TEST(TimeBox, TakesTheTimeOfAMomentAndKeepsItsSecondsUntouched) {
    const BoxScreen<TimeBox> screen("tmeTime", "Time:");
    screen.box->SetValue(Date::FromCivil(2026, 1, 31, 15, 5, 59));
    EXPECT_EQ(screen.box->Text(), "03:05 PM");
    qt_driver::Leave(*screen.box);
    EXPECT_EQ(screen.box->Value(), Value(Date::FromTime(15, 5, 59)));
    EXPECT_FALSE(screen.box->IsDataChanged());
}

}  // namespace
}  // namespace kv
