#include "screens/widgets/bound_source.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "box_screen.h"
#include "datastore/workspace.h"
#include "screens/widgets/check_box.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/masked_box.h"
#include "screens/widgets/number_box.h"
#include "screens/widgets/text_box.h"
#include "support/test_places.h"

namespace kv {
namespace {

using engine_error::kDuplicateKey;
using engine_error::kLockedByOther;
using engine_error::kNoCurrentRecord;
using engine_error::kRecordDeleted;
using engine_error::kTypeConversion;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A small table with a column of each kind, a screen over it, and a second seat.
class BoundSourceTest : public testing::Test {
  protected:
    BoundSourceTest() {
        database = workspace.CreateDatabase(
            places.Place("people"),
            "CREATE TABLE people (id COUNTER PRIMARY KEY, code TEXT(5), name TEXT(8), note MEMO,"
            " born DATETIME, hours DOUBLE, phone TEXT(20), lang TEXT(2), active YESNO);"
            "CREATE UNIQUE INDEX by_code ON people (code)");
        database->Execute(
            "INSERT INTO people (code, name, note, born, hours, phone, lang, active)"
            " VALUES ('A', 'Ann', 'one', #1931/02/28#, 7.5, '2125551234', 'E', True)");
        database->Execute("INSERT INTO people (code, name) VALUES ('B', 'Bob')");
        database->Execute("INSERT INTO people (code, name) VALUES ('C', 'Cyd')");
        lang.SetItems({{"E", "English"}, {"S", "Spanish"}});
        const std::vector<std::pair<BoundControl*, std::string>> ties = {
            {&code, "code"},   {&name, "NAME"},   {&note, "note"}, {&born, "born"},
            {&hours, "hours"}, {&phone, "phone"}, {&lang, "lang"}, {&active, "active"}};
        for (const auto& [control, field] : ties) {
            source.Bind(*control, field);
        }
        source.SetRecordset(Open(*database));
        QObject::connect(&source, &BoundSource::rowFollowed, &source,
                         [this](const std::vector<std::string>& fields) { followed = fields; });
    }
    static Recordset Open(Database& from) { return from.OpenRecordset("select * from people order by code"); }
    std::string Stored(const std::string& field, const std::string& of) {
        const Value value = database->Lookup("select " + field + " from people where code = '" + of + "'");
        return value.IsNull() ? "Null" : value.ToText();
    }
    static int NumberOf(const std::function<void()>& act) {
        try {
            act();
        } catch (const EngineError& error) {
            return error.Number();
        }
        return 0;
    }

    test::TestPlaces places;
    Workspace workspace;
    DatabasePtr database;
    QWidget window;
    TextBox code{"TXTcode", "Code:", 5, &window};
    TextBox name{"TXTname", "Name:", 8, &window};
    MemoBox note{"TXTnote", "Note:", 20, 3, &window};
    DateBox born{"DTEborn", "Born:", &window};
    NumberBox hours{"NUMhours", "Hours:", "0.00", 6, &window};
    MaskedBox phone{"TxtPhone", "Phone:", mask::kPhone, &window};
    LookupCombo lang{"TDBCombo1", "Language:", 10, &window};
    CheckBox active{"Check2", "Active", &window};
    std::vector<int> reported;
    std::vector<std::string> words;
    std::vector<std::string> followed;
    BoundSource source{[this](const EngineError& error) {
        reported.push_back(error.Number());
        words.push_back(error.Description());
    }};
};

TEST_F(BoundSourceTest, ShowsTheRowByEachKindOfControl) {
    EXPECT_EQ(name.Text(), "Ann");
    EXPECT_EQ(note.Text(), "one");
    EXPECT_EQ(born.Text(), "02/28/1931");
    EXPECT_EQ(hours.Text(), "7.50");
    EXPECT_EQ(phone.Text(), "(212) 555-1234");
    EXPECT_EQ(lang.Text(), "English");
    EXPECT_TRUE(active.isChecked());
    EXPECT_EQ(source.Mode(), BoundMode::View);
    EXPECT_TRUE(source.MoveNext());
    EXPECT_EQ(name.Text(), "Bob");
    EXPECT_EQ(born.Text(), "__/__/____");
    EXPECT_EQ(hours.Text(), "");
    EXPECT_FALSE(active.isChecked());
    EXPECT_THAT(source.ChangedControls(), IsEmpty());
}

TEST_F(BoundSourceTest, TextBoxesTakeTheFieldsSize) {
    EXPECT_EQ(name.maxLength(), 8);
    EXPECT_EQ(note.MaxLength(), 0);
}

TEST_F(BoundSourceTest, MovesStayInsideTheList) {
    QSignalSpy repositioned(&source, &BoundSource::repositioned);
    EXPECT_FALSE(source.MovePrevious());
    EXPECT_EQ(name.Text(), "Ann");
    EXPECT_TRUE(source.MoveLast());
    EXPECT_FALSE(source.MoveNext());
    EXPECT_EQ(name.Text(), "Cyd");
    EXPECT_EQ(source.Position(), 2);
    EXPECT_EQ(source.Count(), 3);
    EXPECT_TRUE(source.FindFirst("code = 'B'"));
    EXPECT_EQ(name.Text(), "Bob");
    EXPECT_FALSE(source.FindFirst("code = 'Q'"));
    EXPECT_EQ(name.Text(), "Bob");
    EXPECT_EQ(repositioned.count(), 2);
}

TEST_F(BoundSourceTest, TheFirstChangePutsTheRowInEditAndRestoreTakesItBack) {
    QSignalSpy modes(&source, &BoundSource::modeChanged);
    qt_driver::Show(window);
    qt_driver::Retype(name, "Zoe");
    EXPECT_EQ(source.Mode(), BoundMode::Edit);
    EXPECT_EQ(modes.count(), 1);
    EXPECT_THAT(source.ChangedControls(), ElementsAre(&name));
    EXPECT_EQ(Stored("name", "A"), "Ann");
    source.Restore();
    EXPECT_EQ(source.Mode(), BoundMode::View);
    EXPECT_EQ(name.Text(), "Ann");
    EXPECT_FALSE(name.IsDataChanged());
}

TEST_F(BoundSourceTest, UpdateWritesWhatChangedAndNothingElse) {
    // What this screen did not touch must not be written back over another seat's change.
    name.setText("Zoe");
    born.SetDate(std::nullopt);
    hours.EnterValue(Value());
    phone.EnterValue(Value());
    lang.SetBoundText("S");
    active.setChecked(false);
    source.WriteRow();
    EXPECT_EQ(Stored("name", "A"), "Ann") << "not before Update";
    source.Update();
    EXPECT_EQ(source.Mode(), BoundMode::View);
    EXPECT_EQ(Stored("name", "A"), "Zoe");
    EXPECT_EQ(Stored("note", "A"), "one");
    EXPECT_EQ(Stored("born", "A"), "Null");
    EXPECT_EQ(Stored("hours", "A"), "Null");
    EXPECT_EQ(Stored("phone", "A"), "") << "an emptied text is no Null";
    EXPECT_EQ(Stored("lang", "A"), "S");
    EXPECT_EQ(Stored("active", "A"), "False");
    EXPECT_EQ(Stored("name", "B"), "Bob");
    EXPECT_THAT(source.ChangedControls(), IsEmpty());
}

TEST_F(BoundSourceTest, AChangeThatIsTakenBackIsNone) {
    name.setText("Zoe");
    name.setText("Ann");
    EXPECT_TRUE(name.IsDataChanged());
    EXPECT_THAT(source.ChangedControls(), IsEmpty());
    ASSERT_TRUE(source.MoveNext());
    name.setText("x");
    note.SetText("y");
    name.SetTag("NOTCLIENT");
    EXPECT_THAT(source.ChangedControls(), ElementsAre(&name, &note));
    EXPECT_THAT(source.ChangedControls("NOTCLIENT"), ElementsAre(&note));
    note.SetText("");
    EXPECT_THAT(source.ChangedControls("NOTCLIENT"), IsEmpty()) << "a Null column and an empty box";
    source.Update();
    EXPECT_EQ(Stored("note", "B"), "Null");
}

TEST_F(BoundSourceTest, MoveWithoutUpdateCancels) {
    name.setText("Zoe");
    EXPECT_TRUE(source.MoveNext());
    EXPECT_EQ(source.Mode(), BoundMode::View);
    EXPECT_EQ(Stored("name", "A"), "Ann");
}

TEST_F(BoundSourceTest, AFaultyBoxStopsTheWriteBeforeAnythingIsCopied) {
    qt_driver::Show(window);
    name.setText("Zoe");
    qt_driver::Retype(born, "13452026");
    EXPECT_EQ(NumberOf([&] { source.Update(); }), kTypeConversion);
    EXPECT_EQ(source.Rows().Text("name"), "Ann");
    EXPECT_FALSE(born.Fault().isEmpty());
    qt_driver::Retype(born, "01022026");
    source.Update();
    EXPECT_EQ(Stored("name", "A"), "Zoe");
    EXPECT_EQ(database->Lookup("select born from people where code = 'A'"),
              Value(Date::FromCivil(2026, 1, 2)));
}

TEST_F(BoundSourceTest, AnAddedRowBecomesTheCurrentOne) {
    source.AddRow();
    EXPECT_EQ(source.Mode(), BoundMode::Add);
    EXPECT_EQ(name.Text(), "");
    EXPECT_GT(source.Rows().Get("id").ToInteger(), 3) << "the counter is known before Update";
    code.setText("D");
    name.setText("Dee");
    source.Update();
    EXPECT_EQ(source.Mode(), BoundMode::View);
    EXPECT_EQ(name.Text(), "Dee");
    EXPECT_EQ(source.Count(), 4);
    EXPECT_EQ(Stored("name", "D"), "Dee");

    source.AddRow();
    name.setText("Eve");
    source.Restore();
    EXPECT_EQ(source.Count(), 4);
    EXPECT_EQ(name.Text(), "Dee");
}

TEST_F(BoundSourceTest, ARefusedUpdateLeavesScreenAndEditAsTheyAre) {
    code.setText("B");
    EXPECT_EQ(NumberOf([&] { source.Update(); }), kDuplicateKey);
    EXPECT_EQ(source.Mode(), BoundMode::Edit);
    EXPECT_EQ(code.Text(), "B");
    EXPECT_TRUE(code.IsDataChanged());
    code.setText("E");
    source.Update();
    EXPECT_EQ(Stored("name", "E"), "Ann");
}

TEST_F(BoundSourceTest, ARowInAnotherSeatsHandsIsToldAtTheFirstKey) {
    Workspace otherSeat;
    otherSeat.SetSeat("BOB (Bob Bell) at FRONT");
    const DatabasePtr theirs = otherSeat.OpenDatabase(places.Place("people"), SchemaCheck::Ignored);
    Recordset row = Open(*theirs);
    row.Edit();
    name.setText("Zoe");
    EXPECT_THAT(reported, ElementsAre(kLockedByOther));
    EXPECT_THAT(words, ElementsAre(HasSubstr("BOB (Bob Bell) at FRONT is changing this record")));
    EXPECT_EQ(source.Mode(), BoundMode::View);
    EXPECT_EQ(name.Text(), "Ann");
    EXPECT_TRUE(source.CanBringBack());
    row.CancelUpdate();
    source.BringBack();
    source.Update();
    EXPECT_EQ(Stored("name", "A"), "Zoe");
}

TEST_F(BoundSourceTest, BoxesThatWereNotTouchedFollowTheOtherSeat) {
    database->Execute("UPDATE people SET name = 'Amy', hours = 99 WHERE code = 'A'");
    EXPECT_EQ(name.Text(), "Ann") << "as it was shown";
    EXPECT_THAT(source.ChangedControls(), IsEmpty()) << "nobody here has changed anything";
    code.setText("AA");
    EXPECT_EQ(name.Text(), "Amy");
    EXPECT_THAT(followed, ElementsAre("NAME", "hours"));
    source.Update();
    EXPECT_EQ(Stored("name", "AA"), "Amy");

    name.setText("Ada");
    source.Restore();
    EXPECT_EQ(name.Text(), "Amy");
    EXPECT_TRUE(source.MoveNext());
    EXPECT_FALSE(source.CanBringBack()) << "it was typed for another row";
    EXPECT_TRUE(source.MovePrevious());
    source.BringBack();
    EXPECT_EQ(name.Text(), "Ada");
    EXPECT_EQ(source.Mode(), BoundMode::Edit);
}

TEST_F(BoundSourceTest, TypingIntoARowThatIsGoneIsReported) {
    database->Execute("DELETE FROM people WHERE code = 'A'");
    name.setText("Zoe");
    EXPECT_THAT(reported, ElementsAre(kRecordDeleted));
    EXPECT_EQ(source.Mode(), BoundMode::NoRow);
    EXPECT_EQ(name.Text(), "");
    EXPECT_TRUE(source.MoveNext());
    EXPECT_EQ(name.Text(), "Bob");
}

TEST_F(BoundSourceTest, DeleteShowsTheNextRowAndBehindTheLastTheOneBefore) {
    ASSERT_TRUE(source.MoveTo(1));
    source.DeleteRow();
    EXPECT_EQ(name.Text(), "Cyd");
    source.DeleteRow();
    EXPECT_EQ(name.Text(), "Ann");
    source.DeleteRow();
    EXPECT_EQ(source.Mode(), BoundMode::NoRow);
    EXPECT_EQ(name.Text(), "");
    EXPECT_EQ(source.Count(), 0);
}

TEST_F(BoundSourceTest, WithoutARowTheScreenIsEmptyAndTypingChangesNothing) {
    source.SetRecordset(database->OpenRecordset("select * from people where code = 'Q'"));
    EXPECT_EQ(source.Mode(), BoundMode::NoRow);
    EXPECT_EQ(name.Text(), "");
    EXPECT_FALSE(source.MoveFirst());
    EXPECT_FALSE(source.MoveLast());
    name.setText("Zoe");
    source.Update();
    EXPECT_THAT(reported, IsEmpty());
    EXPECT_EQ(NumberOf([&] { source.BeginEdit(); }), kNoCurrentRecord);
    source.Close();
    EXPECT_EQ(name.Text(), "");
    EXPECT_EQ(source.Position(), -1);
}

TEST_F(BoundSourceTest, ADestroyedControlUntiesItself) {
    auto* extra = new TextBox("TXTextra", "Extra:", 5, &window);
    source.Bind(*extra, "note");
    delete extra;
    EXPECT_EQ(source.Controls().size(), 8U);
    EXPECT_TRUE(source.MoveNext());
    EXPECT_EQ(source.ControlOf("Name"), &name);
    EXPECT_EQ(source.ControlOf("id"), nullptr);
}

}  // namespace
}  // namespace kv
