// What a box refuses is not saved, however the save is asked for.
#include <QAbstractButton>

#include <gmock/gmock.h>

#include "screens/bound_screens.h"

namespace kv {
namespace {

using test::BoundScreens;
using test::kSavePrompt;
using test::Lines;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;

/// A box, an entry that it refuses and one that it takes.
struct Refusal {
    const char* screen;
    const char* box;
    const char* refused;
    const char* told;  ///< of the message
    const char* taken;
    const char* field;
    const char* stored;
    bool marked = true;  ///< false where the screen's own rule refuses, and the message alone tells
};

struct Screen {
    std::function<void(BoundScreens&)> open;
    const char* database;
    const char* row;
};

/// The screens with the row that each shows first.
const Screen& ScreenOf(const std::string& name) {
    const auto part = [](int index) {
        return Screen{[index](BoundScreens& on) { on.OpenPart(index); }, "kestrava",
                      "clientpr where CLIENT = '00001'"};
    };
    static const std::map<std::string, Screen> screens = {
        {"Required", part(0)},
        {"General", part(1)},
        {"ThirdParty", part(4)},
        {"Referral", part(5)},
        {"Authorization",
         {[](BoundScreens& on) { on.OpenAuthorizations(), on.Key(Qt::Key_F2); }, "kestrava",
          "Authorizations where from_date = #2026-01-01# or from_date = #2026-02-01#"}},
        {"Assignment",
         {[](BoundScreens& on) { on.OpenAssignments(); }, "kestrava", "assign where sequence = 1"}},
        {"AssignmentByEnd",
         {[](BoundScreens& on) {
              on.OpenAssignments();
              on.Box("CHKend").setFocus();
              on.Key(Qt::Key_Space);
          },
          "kestrava", "assign where sequence = 1"}},
        {"Rates",
         {[](BoundScreens& on) { on.OpenRates(); }, "kestrava",
          "clirate where Description <> 'Personal Care'"}},
        {"Banned", {[](BoundScreens& on) { on.OpenBanned(); }, "kestrava", "emp_ban where emp_id <> 'E2'"}},
        {"Phones",
         {[](BoundScreens& on) { on.OpenPhones(); }, "main", "hkeylonglat where phonenum <> '5185550122'"}},
    };
    return screens.at(name);
}

constexpr const char* kTooLong = "Xxxxxxxxxxxxxxxxxxxxxx";
constexpr const char* kNoCode = "Xqwertyuio";

const Refusal kRefusals[] = {
    {"Required", "TxtB_date", "13452026", "Birth Date: Not a date", "02031950", "BDATE",
     "1950-02-03 00:00:00"},
    {"Required", "TDBCombo6", kTooLong, "Ethnic: Not in the list", "436", "ETHNIC", "436"},
    {"Required", "TDBCombo25", kNoCode, "Priority: Not in the list", "red", "DISASTER_CODE", "RED"},
    {"Required", "TDBCombo1", kTooLong, "'Language:' you entered is not in the drop down", "lt", "LANGUAGE",
     "LT", false},
    {"Required", "TDBCombo4", kNoCode, "'Manager:' you entered is not in the drop down", "m2", "MANAGER",
     "M2", false},
    {"Required", "TxtFirstnam", "", "You must fill in the first name field.", "Ina", "FIRSTNAM", "Ina",
     false},
    {"General", "TDBCombo26", kTooLong, "Diagnosis 1: Not in the list", "250", "DIAGNOSIS", "250"},
    {"General", "TDBCombo27", kNoCode, "Diagnosis 2: Not in the list", "stroke", "DIAGNOSIS2", "436"},
    {"General", "TDBCombo28", kTooLong, "Diagnosis 3: Not in the list", "Dia", "DIAGNOSIS3", "250"},
    {"General", "TDBCombo9", kTooLong, "Nurse: Not in the list", "436", "NURSE", "436"},
    {"General", "TDBCombo19", kTooLong, "Nurse Visit: Not in the list", "436", "NURLVCODE", "436"},
    {"General", "DteNurlasvis", "13452026", "Last Visit: Not a date", "", "NURLASTVIS", "<Null>"},
    {"ThirdParty", "NUMbillmileage", "1.2.3", "Rate per Mile: Not a number", "1.2", "billmile_rate", "1.2"},
    {"Referral", "DTEFirstContact", "02302026", "First Contact: Not a date", "02282026", "First_contact",
     "2026-02-28 00:00:00"},
    {"Referral", "DTEstartofcare", "13", "Start of Care: Not a date", "03012026", "STARTSERVC",
     "2026-03-01 00:00:00"},
    {"Referral", "DTEendofcare", "0101", "End of Care: Not a date", "12312026", "CASEEXPDAT",
     "2026-12-31 00:00:00"},
    {"Authorization", "TDBDate2", "13452026", "From: Not a date", "02012026", "from_date",
     "2026-02-01 00:00:00"},
    {"Authorization", "TDBDate3", "0230", "To: Not a date", "12302027", "to_DATE", "2027-12-30 00:00:00"},
    {"Authorization", "NUMhrs", "-5", "Hours: At least 0", "12.5", "HRS", "12.5"},
    {"Authorization", "NUMmin_hours", "-1", "Schedule, least: At least 0", "2", "Min_Sch_Hours", "2"},
    {"Authorization", "NUMmax_hours", "-1", "most: At least 0", "8", "Max_Sch_Hours", "8"},
    {"Authorization", "NUMcoBilling", "400", "The Percentage: At most 100", "40", "cobilling_amount", "40"},
    {"Authorization", "NUMcoBilling", "250", "The Percentage: At most 100", "25", "cobilling_amount", "25"},
    {"Authorization", "cmbVisType", "Dancing", "Invalid Call Description.  Please try again", "Nursing",
     "visit_type", "NUR", false},
    {"Assignment", "TXTsttime", "2599", "Start Time: Not a time", "0930a", "St_time", "1899-12-30 09:30:00"},
    {"Assignment", "TXTsttime", "0810a", "Assignments may only start every 15 minutes", "0815a", "St_time",
     "1899-12-30 08:15:00", false},
    {"Assignment", "NUMhrs", "30", "Hours: At most 24", "3", "HRS", "3"},
    {"Assignment", "NUMhowoften", "200", "Every: At most 99", "1", "howoften", "1"},
    {"Assignment", "TDBlastdate", "13452026", "Next Schedule Creation Date Not a date", "03212026",
     "Last_date", "2026-03-14 00:00:00"},
    {"Assignment", "TXTempid", "999999", "Caregiver was not found", "E3", "emp_id", "E3", false},
    {"AssignmentByEnd", "ENDtime", "2599", "End Time: Not a time", "1230p", "HRS", "3.5"},
    {"Rates", "txtVISitTYPE", "XX", "You must enter in a valid call type before saving", "NUR", "visittype",
     "NUR", false},
    {"Rates", "NUMrate1", "-1", "Weekday, day: At least 0", "22.5", "rate1", "22.5"},
    {"Rates", "Numrate7", "1-1", "Live In: Not a number", "200", "liveinrate", "200"},
    {"Banned", "TXTnoempid", "999999", "Caregiver was not found", "E3", "emp_id", "E3", false},
    {"Phones", "mskPhone", "518555", "Invalid Phone number!", "5185550177", "phonenum", "5185550177", false},
};

std::string NameOf(const testing::TestParamInfo<Refusal>& info) {
    std::string name = std::string(info.param.screen) + "_" + info.param.box + "_" + info.param.refused;
    std::erase_if(name, [](unsigned char c) { return std::isalnum(c) == 0 && c != '_'; });
    return name;
}

void PrintTo(const Refusal& refusal, std::ostream* out) {
    *out << refusal.box << " " << refusal.refused;
}

class SaveGate : public BoundScreens, public testing::WithParamInterface<Refusal> {};

TEST_P(SaveGate, AnEntryThatIsRefusedIsSavedByNoKeyAndNoPrompt) {
    const Refusal& each = GetParam();
    const Screen& screen = ScreenOf(each.screen);
    screen.open(*this);
    const Lines before = Everything();
    const std::pair<const char*, std::function<void()>> ways[] = {{"Ctrl+S", [&] { SaveByKey(); }},
                                                                  {"the button", [&] { Click("save"); }},
                                                                  {"the prompt", [&] {
                                                                       agency.ports.dialogs.Answer({true});
                                                                       LeaveScreen();
                                                                   }}};
    for (const auto& [way, save] : ways) {
        SCOPED_TRACE(way);
        Retype(each.box, each.refused);
        save();
        Lines said = agency.Said();
        std::erase(said, kSavePrompt);
        std::erase_if(said, [](const std::string& line) {
            return line == "fault: Information you must fix on this client." || line == "fault:  ";
        });
        EXPECT_THAT(said, ElementsAre(HasSubstr(each.told)));
        EXPECT_EQ(Everything(), before);
        EXPECT_TRUE(HasFocus(each.box));
        EXPECT_EQ(Bound(each.box).Fault().isEmpty(), !each.marked);
    }
    Retype(each.box, each.taken);
    agency.ports.dialogs.Answer({false});  // visits stay as they are
    SaveByKey();
    EXPECT_THAT(agency.Said(), Each(HasSubstr("schedules"))) << "nothing is refused";
    EXPECT_EQ(agency.Rows(std::string("select ") + each.field + " from " + screen.row, screen.database),
              Lines{each.stored});
}

using SaveGateOfClient = BoundScreens;

INSTANTIATE_TEST_SUITE_P(Boxes, SaveGate, testing::ValuesIn(kRefusals), NameOf);

class AuthorizationGate : public BoundScreens {
  protected:
    /// The screen on the client's one authorization, which has these fields, being edited.
    void Edit(const test::Cells& fields = {}) {
        Database& work = agency.Work();
        work.Execute("delete from Authorizations where from_date > #2026-01-31#");
        Recordset row = work.OpenRecordset("select * from Authorizations");
        row.Edit();
        for (const auto& [field, value] : fields) {
            row.Set(field, value);
        }
        row.Update();
        OpenAuthorizations();
        Key(Qt::Key_F2);
    }
    std::string Stored(const char* fields) {
        return agency.Rows(std::string("select ") + fields + " from Authorizations").at(0);
    }
    void Choose(const char* box, int item) {
        auto& combo = dynamic_cast<QComboBox&>(Box(box));
        combo.setCurrentIndex(item);
        emit combo.activated(item);
    }
};

TEST_F(AuthorizationGate, DollarsAreNoPercentage) {
    Edit({{"cobilling_type", 3}, {"cobilling_amount", 400}});
    EXPECT_EQ(Shown("NUMcoBilling"), "$ 400.00");
    Choose("CMBcoBilling", 1);
    SaveByKey();
    EXPECT_EQ(agency.Said(), Lines{"message: The Percentage: At most 100"});
    EXPECT_TRUE(HasFocus("NUMcoBilling"));
    EXPECT_EQ(Stored("cobilling_type, cobilling_amount"), "3|400");
    Retype("NUMcoBilling", "40");
    SaveByKey();
    EXPECT_EQ(Stored("cobilling_type, cobilling_amount"), "1|40");
}

TEST_F(AuthorizationGate, AStoredCallTypeIsNotAskedForItsWording) {
    // Imported: three lists, three wordings.
    agency.Work().Execute("update billcode_idetail set Description = 'PCA care' where visittype = 'PCA'");
    Edit({{"vis_desc", "P.C.A."}});
    Box("cmbVisType").setFocus();
    Key(Qt::Key_Tab);
    Choose("CMBAuthStatus", 1);
    agency.ports.dialogs.Answer({false});
    SaveByKey();
    EXPECT_THAT(agency.Said(), Each(HasSubstr("delete all schedules")));
    EXPECT_EQ(
        agency.Rows("select status_code, visit_type, vis_desc from Authorizations where client = '00001'"),
        Lines{"C|PCA|P.C.A."});
}

TEST_F(AuthorizationGate, PayersOfOneNameAreToldApartByTheirCode) {
    agency.Insert("billcode_imaster", {{"billcode", 8}, {"insname", "Medicaid"}});
    agency.Insert("billcode_idetail", {{"billcode", 8}, {"visittype", "NUR"}, {"Description", "Nursing"}});
    for (const int code : {7, 8}) {
        const char* type = code == 7 ? "PCA" : "NUR";
        Edit({{"bill_code", code},
              {"visit_type", type},
              {"vis_desc", code == 7 ? "Personal Care" : "Nursing"}});
        const auto& types = dynamic_cast<PlainCombo&>(Box("cmbVisType"));
        EXPECT_EQ(types.Items().size(), code == 7 ? 2 : 1) << "of the payer's own list";
        Retype("TXTauthmemo", code == 7 ? "Seven" : "Eight");
        SaveByKey();
        EXPECT_EQ(agency.Said(), Lines());
        EXPECT_EQ(Stored("bill_code, visit_type, NOTES"),
                  std::to_string(code) + "|" + type + (code == 7 ? "|Seven" : "|Eight"));
    }
}

TEST_F(AuthorizationGate, PeriodAndShiftAreTheRowsOwn) {
    Database& work = agency.Work();
    work.Execute(
        "update Authorizations set cobilling_type = 3, COBilling_HowOften = 'D', SHIFT_CODE = '3' "
        "where from_date = #2026-01-01#");
    work.Execute(
        "update Authorizations set cobilling_type = 3, COBilling_HowOften = null, SHIFT_CODE = null "
        "where from_date > #2026-01-31#");
    OpenAuthorizations();
    const auto shift = [&](int i) {
        return dynamic_cast<QAbstractButton&>(Box(i == 1   ? "Optshift0"
                                                  : i == 2 ? "Optshift1"
                                                           : "Optshift2"))
            .isChecked();
    };
    EXPECT_EQ(Shown("CMBwhen_Cobilling"), "Per Day");
    EXPECT_TRUE(shift(3));
    Key(Qt::Key_PageDown, Qt::AltModifier);
    EXPECT_EQ(Shown("CMBwhen_Cobilling"), "");
    EXPECT_FALSE(shift(1) || shift(2) || shift(3));
    Key(Qt::Key_F2);
    Retype("TXTauthmemo", "By letter");
    SaveByKey();
    EXPECT_EQ(agency.Rows("select NOTES from Authorizations where from_date > #2026-01-31# and "
                          "(SHIFT_CODE is null or SHIFT_CODE = '') and "
                          "(COBilling_HowOften is null or COBilling_HowOften = '')"),
              Lines{"By letter"});
}

TEST_F(SaveGateOfClient, AnApostropheInAListLetsNothingThrough) {
    agency.Insert("main.MANAGER", {{"code", "M3"}, {"description", "Pat O'Brien"}});
    agency.Work().Execute("update clientpr set MANAGER = 'M3' where client = '00001'");
    OpenPart(0);
    const auto save = [&](const char* box, const char* typed) {
        Retype(box, typed);
        SaveByKey();
        return agency.Said();
    };
    EXPECT_THAT(save("TxtFirstnam", ""), Contains("fault: You must fill in the first name field."));
    EXPECT_THAT(save("TxtFirstnam", "Ina"), Each(HasSubstr("O'Brien")))
        << "the store's own words of the search";
    EXPECT_THAT(save("TDBCombo4", "Pat O'Hara"),
                Contains("fault: The 'Manager:' you entered is not in the drop down list."));
    EXPECT_EQ(agency.Rows("select FIRSTNAM, MANAGER from clientpr where client = '00001'"), Lines{"Ina|M3"});
}

}  // namespace
}  // namespace kv
