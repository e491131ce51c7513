#include "screens/widgets/bound_control.h"

#include <QApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "box_screen.h"
#include "screens/widgets/check_box.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/masked_box.h"
#include "screens/widgets/number_box.h"
#include "screens/widgets/text_box.h"
#include "screens/widgets/time_box.h"

namespace kv {
namespace {

// One control of each kind, with two contents that it can hold.
struct Kinds {
    Kinds() {
        Add(new TextBox("text", "&Text:", 10, &window), "a", "b");
        Add(new MemoBox("memo", "&Memo:", 10, 3, &window), "a\nb", "c");
        Add(new MaskedBox("mask", "Mas&k:", mask::kZip, &window), "10012", "99");
        Add(new DateBox("date", "&Date:", &window), Date::FromCivil(2026, 1, 31), Value());
        Add(new TimeBox("time", "T&ime:", &window), Date::FromTime(9, 30), Date::FromTime(21, 0));
        Add(new NumberBox("number", "&Number:", "0.00", 10, &window), 1.5, Value());
        Add(new CheckBox("check", "C&heck", &window), true, false);
        Add(new OptionBox("option", "&Option", &window), true, false);
        auto* lookup = new LookupCombo("look", "&Look:", 10, &window);
        lookup->SetItems({{"A", "Alpha"}, {"B", "Beta"}});
        Add(lookup, "A", "B");
        auto* combo = new PlainCombo("combo", "&Combo:", PlainCombo::Style::List, 10, &window);
        combo->SetItems(QStringList{"one", "two"});
        Add(combo, "one", "two");
    }
    void Add(BoundControl* control, Value one, Value two) {
        cases.push_back({control, std::move(one), std::move(two)});
    }
    struct Case {
        BoundControl* control;
        Value one;
        Value two;
    };
    QWidget window;
    std::vector<Case> cases;
};

TEST(BoundControl, LoadsAreNoChangesAndEntriesAreOne) {
    Kinds kinds;
    for (const auto& [control, one, two] : kinds.cases) {
        SCOPED_TRACE(control->Name().toStdString());
        QSignalSpy changes(control->Notifier(), &ControlNotifier::changed);
        control->SetValue(one);
        EXPECT_EQ(control->Value(), one);
        EXPECT_FALSE(control->IsDataChanged());
        EXPECT_EQ(changes.count(), 0);
        control->EnterValue(one);
        EXPECT_FALSE(control->IsDataChanged()) << "the same again";
        control->EnterValue(two);
        EXPECT_EQ(control->Value(), two);
        EXPECT_TRUE(control->IsDataChanged());
        EXPECT_EQ(changes.count(), 1);
        control->SetValue(one);
        EXPECT_FALSE(control->IsDataChanged());
        EXPECT_EQ(changes.count(), 1);
    }
}

TEST(BoundControl, EveryKindTakesNull) {
    Kinds kinds;
    for (const auto& [control, one, two] : kinds.cases) {
        SCOPED_TRACE(control->Name().toStdString());
        control->SetValue(one);
        control->SetValue({});
        EXPECT_TRUE(IsBlank(control->Value()) || control->Value() == Value(false));
    }
}

TEST(BoundControl, NativeSettersCountAsChanges) {
    QWidget window;
    TextBox text("TXTcity", "City:", 10, &window);
    CheckBox check("Check2", "Telephony", &window);
    text.setText("x");
    check.setChecked(true);
    EXPECT_TRUE(text.IsDataChanged());
    EXPECT_TRUE(check.IsDataChanged());
}

TEST(BoundControl, CaptionLabelAndNamesForAssistiveTools) {
    Kinds kinds;
    auto* form = new FieldForm(&kinds.window);
    auto* layout = new QVBoxLayout(&kinds.window);
    layout->addWidget(form);
    for (const auto& [control, one, two] : kinds.cases) {
        form->AddField(*control);
    }
    qt_driver::Show(kinds.window);
    EXPECT_THAT(qt_driver::Unnamed(kinds.window), testing::IsEmpty());
    EXPECT_THAT(qt_driver::StepsAgainstReading(kinds.window), testing::IsEmpty());

    auto* box = qt_driver::Find<TextBox>(&kinds.window, "text");
    EXPECT_EQ(box->Caption(), "Text:");
    EXPECT_EQ(box->accessibleName(), "Text");
    EXPECT_EQ(box->Label()->buddy(), box);
    box->SetRequired(true);
    EXPECT_EQ(box->Label()->text(), "&Text: *");
    EXPECT_EQ(box->accessibleDescription(), "Required");
    box->SetCaption("Province && State:");
    EXPECT_EQ(box->Caption(), "Province & State:");
    box->SetShown(false);
    EXPECT_TRUE(box->Label()->isHidden());
    box->SetShown(true);
    EXPECT_FALSE(box->Label()->isHidden());
}

TEST(BoundControl, AMnemonicBringsTheFocus) {
    QWidget window;
    auto* form = new FieldForm(&window);
    auto* layout = new QVBoxLayout(&window);
    layout->addWidget(form);
    TextBox first("TxtLastname", "&Last Name:", 10, form);
    TextBox second("TxtFirstnam", "&First Name:", 10, form);
    form->AddField(first);
    form->AddField(second);
    qt_driver::Show(window);
    first.setFocus();
    qt_driver::Press(window, Qt::Key_F, Qt::AltModifier);
    EXPECT_TRUE(second.hasFocus());
}

TEST(BoundControl, RulesSeeTheControlsInTheirOrder) {
    QWidget window;
    TextBox city("TXTcity", "&City:", 10, &window);
    NumberBox days("NUMdays", "Days:", "0", 5, &window);
    city.SetDataField("CITY");
    city.SetTag("NOTCLIENT");
    city.setText("Troy");
    std::vector<std::string> names;
    for (const ScreenControl& control : DescribeControls(&window)) {
        names.push_back(control.name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"TXTcity", "NUMdays"}));
    const ScreenControl described = DescribeControl(city);
    EXPECT_EQ(described.dataField, "CITY");
    EXPECT_EQ(described.caption, "City:");
    EXPECT_EQ(described.text, "Troy");
    EXPECT_EQ(described.tag, "NOTCLIENT");
    EXPECT_TRUE(described.changed);
    EXPECT_TRUE(DescribeControl(days).value.IsNull());
}

TEST(BoundControl, DestroyedTakesItsLabelAlong) {
    QWidget window;
    auto* box = new TextBox("TXTcity", "City:", 10, &window);
    const QPointer<QLabel> label = box->Label();
    delete box;
    EXPECT_TRUE(label.isNull());
}

TEST(MemoBox, KeepsTheLineEndsOfTheStore) {
    QWidget window;
    MemoBox memo("TXTdirections", "Directions:", 20, 3, &window);
    memo.SetValue("one\r\ntwo\xC2\xA0three");
    EXPECT_EQ(memo.Value(), Value("one\r\ntwo\xC2\xA0three")) << "as it was loaded";
    memo.appendPlainText("four");
    EXPECT_EQ(memo.Value().ToText().substr(0, 8), "one\r\ntwo");
    EXPECT_EQ(memo.Value().ToText().substr(memo.Value().ToText().size() - 6), "\r\nfour");
    memo.SetValue("one");
    memo.appendPlainText("two");
    EXPECT_EQ(memo.Value(), Value("one\ntwo"));
}

TEST(MemoBox, CutsWhatIsPastedBeyondItsLength) {
    QWidget window;
    MemoBox memo("TXTinvoiceNote", "Note:", 20, 3, &window);
    memo.SetMaxLength(5);
    memo.SetValue("abcd");
    memo.setFocus();
    memo.moveCursor(QTextCursor::End);
    memo.insertPlainText("efgh");
    EXPECT_EQ(memo.Text(), "abcde");
    memo.SetValue("a longer text of the row");
    EXPECT_EQ(memo.Text(), "a longer text of the row") << "a load is never cut";
}

TEST(TextBox, FoldsToUpperCase) {
    const BoxScreen<TextBox> screen("TXTweek", "Week:", 2);
    screen.box->SetUpperCase(true);
    qt_driver::Retype(*screen.box, "m\u00f6");
    EXPECT_EQ(screen.box->Text(), "M\u00d6");
}

}  // namespace
}  // namespace kv
