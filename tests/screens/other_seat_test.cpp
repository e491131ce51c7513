// Two seats on one row: what the other one writes while this one has the row on the screen.
#include <QToolButton>

#include <gmock/gmock.h>

#include "base/text.h"
#include "screens/bound_screens.h"
#include "screens/widgets/section_strip.h"

namespace kv {
namespace {

using test::BoundScreens;
using test::Lines;
using testing::Contains;
using testing::ContainsRegex;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// A row that both seats have on their screens.
struct SharedRow {
    const char* name;
    std::function<void(BoundScreens&)> open;
    const char* database;
    const char* table;
    const char* where;
    /// What the other seat changes: a field, what it writes there, and how the box of the field shows it; no
    /// box where the screen shows the field by other means.
    struct Theirs {
        const char* field;
        const char* written;
        const char* caption;
        const char* box;
        const char* shown;
    } theirs;
    /// What this seat changes: a box by its keys, and how the row keeps it.
    struct Ours {
        const char* box;
        const char* typed;
        const char* field;
        const char* stored;
    } ours;
    /// What another seat may write into the box that this one changes.
    const char* contested;
    /// What the line of history says of this seat's change, and where the other seat had written `contested`;
    /// empty where the screen keeps no history.
    const char* history = "";
    const char* overContested = "";
    /// The key that begins a change, where typing does not.
    Qt::Key edit = Qt::Key_unknown;
};

void PrintTo(const SharedRow& row, std::ostream* out) {
    *out << row.name;
}

/// What the operator may press on a row that is gone.
constexpr std::pair<Qt::Key, Qt::KeyboardModifier> kKeys[] = {
    {Qt::Key_S, Qt::ControlModifier}, {Qt::Key_D, Qt::ControlModifier},    {Qt::Key_R, Qt::ControlModifier},
    {Qt::Key_F9, Qt::NoModifier},     {Qt::Key_PageDown, Qt::AltModifier}, {Qt::Key_PageUp, Qt::AltModifier}};

class OtherSeat : public BoundScreens, public testing::WithParamInterface<SharedRow> {
  protected:
    OtherSeat() : row_(GetParam()) {}

    void Open() { row_.open(*this); }
    void BeginEdit() {
        if (row_.edit != Qt::Key_unknown) {
            Key(row_.edit);
        }
    }
    void Type() { Retype(row_.ours.box, row_.ours.typed); }
    void Save() {
        agency.ports.dialogs.Answer({false});  // visits stay as they are
        SaveByKey();
        EXPECT_THAT(agency.Said(), Each(HasSubstr("chedules"))) << "nothing else is asked or told";
    }
    std::string From() const { return std::string(row_.table) + " where " + row_.where; }
    Database& Theirs() { return OtherSeatOn(row_.database); }
    bool IsClient() const { return std::string(row_.table) == "clientpr"; }
    void TheyWrite(const char* field, const std::string& written) {
        const std::string assignment = std::string(field) + " = " + written;
        ASSERT_EQ(Theirs().Execute(std::string("update ") + row_.table + " set " + assignment +
                                   (IsClient() ? ", User_Id = 'BOB'" : "") + " where " + row_.where),
                  1);
    }
    void TheyChangeTheirBox() { TheyWrite(row_.theirs.field, row_.theirs.written); }
    std::string Stored(const char* field) {
        return Join(agency.Rows(std::string("select ") + field + " from " + From(), row_.database), ";");
    }
    std::string History() { return Join(agency.Rows("select reason from changes"), ";"); }

    const SharedRow& row_;
};

class TwoBoxes : public OtherSeat {};

TEST_P(TwoBoxes, NeitherSeatLosesWhatItChanged) {
    Open();
    TheyChangeTheirBox();
    const std::string theirs = Stored(row_.theirs.field);
    BeginEdit();
    Type();
    if (row_.theirs.box != nullptr) {
        EXPECT_EQ(Shown(row_.theirs.box), row_.theirs.shown) << "the box follows";
    }
    EXPECT_EQ(Status(), std::string(IsClient() ? "BOB" : "Another user") + " has meanwhile changed " +
                            row_.theirs.caption);
    EXPECT_EQ(agency.Said(), Lines());
    Save();
    EXPECT_EQ(Stored(row_.ours.field), row_.ours.stored);
    EXPECT_EQ(Stored(row_.theirs.field), theirs);
    EXPECT_THAT(History(), HasSubstr(row_.history));
    if (IsClient()) {
        EXPECT_THAT(History(), Not(HasSubstr(row_.theirs.caption))) << "nobody changed that at this seat";
    }
}

TEST_P(OtherSeat, ASeatThatTypedNothingAsksAndWritesNothing) {
    Open();
    TheyChangeTheirBox();
    const Lines before = Everything();
    Key(Qt::Key_PageDown, Qt::AltModifier);
    Key(Qt::Key_PageUp, Qt::AltModifier);
    if (dialog_ != nullptr) {
        Key(Qt::Key_Escape);
        EXPECT_FALSE(dialog_->isVisible());
    } else {
        screen_->IMGCommand->Button(0)->click();
        emit screen_->ListPane->FGtree->rowPicked("00002");
        EXPECT_EQ(ShownId(), "00002");
    }
    EXPECT_EQ(agency.Said(), Lines());
    EXPECT_EQ(Everything(), before);
}

TEST_P(OtherSeat, InOneBoxTheLastWriterWins) {
    Open();
    TheyWrite(row_.ours.field, row_.contested);
    BeginEdit();
    Type();
    Save();
    EXPECT_EQ(Stored(row_.ours.field), row_.ours.stored);
    EXPECT_THAT(History(), HasSubstr(row_.overContested)) << "the old value is the other seat's";
}

TEST_P(OtherSeat, ADeletedRowIsToldAndNothingElseIsChanged) {
    Open();
    Theirs().Execute("delete from " + From());
    const Lines before = Everything();
    BeginEdit();
    if (row_.edit == Qt::Key_unknown) {
        Box(row_.ours.box).setFocus(Qt::TabFocusReason);
        qt_driver::Type(Box(row_.ours.box), QStringLiteral("7"));
    }
    EXPECT_THAT(agency.Said(), Contains(ContainsRegex("[Dd]eleted")));
    for (const auto& [key, modifiers] : kKeys) {
        Key(key, modifiers);
    }
    agency.Said();
    EXPECT_EQ(Everything(), before);
}

TEST_P(OtherSeat, ARowInAnotherSeatsHandsIsToldAtTheFirstKey) {
    Open();
    const std::string stored = Stored(row_.ours.field);
    Recordset held = Theirs().OpenRecordset("select * from " + From());
    held.Edit();
    if (row_.edit != Qt::Key_unknown) {
        BeginEdit();
    } else {
        Box(row_.ours.box).setFocus(Qt::TabFocusReason);
        Key(Qt::Key_A, Qt::ControlModifier);
        qt_driver::Type(Box(row_.ours.box), QStringLiteral("7"));
    }
    EXPECT_THAT(agency.Said(), ElementsAre(HasSubstr("BOB is changing this record just now.")));
    EXPECT_THAT(Shown(row_.ours.box), Not(HasSubstr("7")));
    held.Close();
    if (row_.edit != Qt::Key_unknown) {
        BeginEdit();
    } else {
        EXPECT_THAT(Status(), HasSubstr("F9"));
        Key(Qt::Key_F9);
        EXPECT_THAT(Shown(row_.ours.box), HasSubstr("7")) << "what was typed is back";
    }
    Type();
    Save();
    EXPECT_EQ(Stored(row_.ours.field), row_.ours.stored);
}

TEST_P(OtherSeat, ARowThatChangedSinceItWasShownIsNotDeleted) {
    Open();
    TheyChangeTheirBox();
    const Lines before = Everything();
    Key(Qt::Key_D, Qt::ControlModifier);
    EXPECT_THAT(agency.Said(), ElementsAre(HasSubstr("Another user has changed this record")));
    EXPECT_EQ(Everything(), before);
    if (row_.theirs.box != nullptr) {
        EXPECT_EQ(Shown(row_.theirs.box), row_.theirs.shown) << "there to be looked at";
    }
}

using ClientOfTwoSeats = BoundScreens;

TEST_F(ClientOfTwoSeats, APotentialClientWhoBecameActiveIsNotDeleted) {
    AddClient("00003", {{"casestatcd", "Z"}, {"potientalstatus", "Active"}});
    OpenPart(0);
    Pick("CMBcliStatus", "POTENTIAL");
    ASSERT_EQ(ShownId(), "00003");
    Database& theirs = OtherSeatOn("kestrava");
    theirs.Execute("update clientpr set casestatcd = 'A' where CLIENT = '00003'");
    theirs.Execute("insert into Authorizations (CLIENT, bill_code) values ('00003', 7)");
    Key(Qt::Key_D, Qt::ControlModifier);
    EXPECT_THAT(agency.Said(), ElementsAre(HasSubstr("Another user has changed this record")));
    EXPECT_EQ(Text("TXTStatus"), "Active");
    // Nor now that the status is seen: the authorization holds the client.
    Key(Qt::Key_D, Qt::ControlModifier);
    EXPECT_THAT(agency.Said(), Contains("fault: Found 1 records on the Authorzation section"));
    EXPECT_EQ(agency.Rows("select casestatcd from clientpr where CLIENT = '00003'"), Lines{"A"});
}

std::vector<SharedRow> SharedRows() {
    const auto part = [](int index) { return [index](BoundScreens& screens) { screens.OpenPart(index); }; };
    const auto client = [&](const char* name, int index, SharedRow::Theirs theirs, SharedRow::Ours ours,
                            const char* contested, const char* history, const char* overContested) {
        return SharedRow{name,   part(index), "kestrava", "clientpr", "CLIENT = '00001'",
                         theirs, ours,        contested,  history,    overContested};
    };
    // The notes are a box of their own kind and come here when they are bound like the others.
    std::vector<SharedRow> rows = {
        client("RequiredInfo", 0, {"grouping", "'South'", "Group", "cmbGroup", "South"},
               {"txtStreet", "7 Elm", "STREET", "7 Elm"}, "'2 Ash'", "Street: 1 Oak to 7 Elm",
               "Street: 2 Ash to 7 Elm"),
        client("Group", 0, {"HOL_COV", "'YES'", "Holiday Coverage", "CMBhol", "YES"},
               {"cmbGroup", "South 7", "grouping", "South 7"}, "'East'", "Client Group:North to South 7",
               "Client Group:East to South 7"),
        client("HolidayCoverage", 0, {"grouping", "'South'", "Group", "cmbGroup", "South"},
               {"CMBhol", "7", "HOL_COV", "7"}, "'YES'", "Holiday Coverate:NO to 7",
               "Holiday Coverate:YES to 7"),
        client("General", 1, {"diagnosis4", "'Gout'", "Other", "Combo1", "Gout"},
               {"TXText", "77", "external_id", "77"}, "'66'", "external_id to 77", "Accounting ID: 66 to 77"),
        client("Directions", 2, {"EMAIL", "'ida@x.org'", "E-mail", "txtEmail", "ida@x.org"},
               {"TXTdirections", "Exit 7", "directions", "Exit 7"}, "'Exit 6'", "irections to Exit 7",
               "Directions to the client: Exit 6 to Exit 7"),
        client("ThirdParty", 4, {"BILL_CITY", "'Rome'", "City", "TDBText3", "Rome"},
               {"NUMbillmileage", "0.75", "billmile_rate", "0.75"}, "0.6", "Rate per Mile: 0.5 to 0.75",
               "Rate per Mile: 0.6 to 0.75"),
        client("Referral", 5,
               {"First_contact", "#2026-02-01#", "First Contact", "DTEFirstContact", "02/01/2026"},
               {"TXTrefSource", "Ward 7", "ref_source", "Ward 7"}, "'Ward 6'", "ref_source to Ward 7",
               "Source: Ward 6 to Ward 7"),
        {"Authorization",
         [](BoundScreens& screens) { screens.OpenAuthorizations(); },
         "kestrava",
         "Authorizations",
         "from_date = #2026-01-01#",
         {"HRS", "12", "Hours", "NUMhrs", "12.00"},
         {"TXTauthmemo", "Room 7", "NOTES", "Room 7"},
         "'Room 6'",
         "Status: A",
         "Status: A",
         Qt::Key_F2},
        {"AuthorizationClosed",
         [](BoundScreens& screens) { screens.OpenAuthorizations(); },
         "kestrava",
         "Authorizations",
         "from_date = #2026-01-01#",
         {"status_code", "'C'", "Status", "CMBAuthStatus", "Closed"},
         {"TXTauthmemo", "Room 7", "NOTES", "Room 7"},
         "'Room 6'",
         "Status: C",
         "Status: A",
         Qt::Key_F2},
        {"Assignment",
         [](BoundScreens& screens) { screens.OpenAssignments(); },
         "kestrava",
         "assign",
         "sequence = 1",
         {"emp_id", "'E3'", "Caregiver ID", "TXTempid", "E3"},
         {"NUMhrs", "7", "HRS", "7"},
         "3",
         "Caregiver: E3",
         "Hours: 7.00"},
        {"AssignmentsDay",
         [](BoundScreens& screens) { screens.OpenAssignments(); },
         "kestrava",
         "assign",
         "sequence = 1",
         {"Day", "'FRI'", "Day", nullptr, nullptr},
         {"NUMhrs", "7", "HRS", "7"},
         "3",
         "Day: FRI",
         "Hours: 7.00"},
        {"BillRate",
         [](BoundScreens& screens) { screens.OpenRates(); },
         "kestrava",
         "clirate",
         "visittype = 'NUR'",
         {"rate2", "25", "Weekday, evening", "Numrate2", "$25.00"},
         {"NUMrate1", "27.5", "rate1", "27.5"},
         "23",
         "Rate 1: 27.50",
         "Rate 1: 27.50"},
        {"BannedCaregiver",
         [](BoundScreens& screens) { screens.OpenBanned(); },
         "kestrava",
         "emp_ban",
         "emp_id <> 'E2'",
         {"Notes", "'Rude'", "Notes", "Text5", "Rude"},
         {"TXTnoempid", "E3", "emp_id", "E3"},
         "'E9'"},
        {"Phone",
         [](BoundScreens& screens) { screens.OpenPhones(); },
         "main",
         "hkeylonglat",
         "phonenum <> '5185550122'",
         {"phonenum", "'5185550133'", "Phone Number", "mskPhone", "(518) 555-0133"},
         {"mskPhone", "5185550177", "phonenum", "5185550177"},
         "'5185550166'"},
    };
    for (const auto& [table, people] :
         {std::pair("doctors", PeopleTable::doctors), {"casemgr", PeopleTable::casemgr}}) {
        rows.push_back({table,
                        [people = people](BoundScreens& screens) { screens.OpenPeople(people); },
                        "main",
                        table,
                        "Name = 'Dr. Ames'",
                        {"City", "'Rome'", "City", "TXTCity", "Rome"},
                        {"TXTZip", "12207", "Zip", "12207"},
                        "'12208'"});
    }
    return rows;
}

/// The rows that both seats can change in boxes of their own.
std::vector<SharedRow> RowsOfTwoBoxes() {
    std::vector<SharedRow> rows = SharedRows();
    std::erase_if(rows, [](const SharedRow& row) { return std::string(row.theirs.field) == row.ours.field; });
    return rows;
}

const auto kNameOf = [](const testing::TestParamInfo<SharedRow>& info) {
    return std::string(info.param.name);
};
INSTANTIATE_TEST_SUITE_P(Screens, OtherSeat, testing::ValuesIn(SharedRows()), kNameOf);
INSTANTIATE_TEST_SUITE_P(Screens, TwoBoxes, testing::ValuesIn(RowsOfTwoBoxes()), kNameOf);

}  // namespace
}  // namespace kv
