#pragma once
#include "datastore/workspace.h"
#include "tool/demo/random.h"

// The code lists of the demonstration agency, which its rows point to by place.
namespace kv::demo {

struct ListRow {
    const char* code;
    const char* description;
};

inline constexpr const char* kVendor = "0001";
inline constexpr const char* kAgencyName = "Harrowgate Home Care";

inline constexpr ListRow kDistricts[] = {{"NS", "North Side"},     {"SS", "South Side"},
                                         {"DM", "Dunmere Valley"}, {"PC", "Port Callen"},
                                         {"AR", "Arden"},          {"MB", "Millbrook"}};
/// How often each language is met, in percent, stands beside it in kLanguageShares.
inline constexpr ListRow kLanguages[] = {{"EN", "English"}, {"SP", "Spanish"}, {"VI", "Vietnamese"},
                                         {"RU", "Russian"}, {"FR", "French"},  {"SL", "Sign Language"}};
inline constexpr int kLanguageShares[] = {74, 14, 4, 4, 3, 1};

/// The place of a discipline is its level less 1.
inline constexpr ListRow kDisciplines[] = {{"HMK", "Homemaker"},
                                           {"PCA", "Personal Care Aide"},
                                           {"HHA", "Home Health Aide"},
                                           {"LPN", "Licensed Practical Nurse"},
                                           {"RN", "Registered Nurse"}};

struct VisitType {
    const char* code;
    const char* description;
    const char* payrollOrBilling;
    int discipline;  ///< place in kDisciplines
    double bill;     ///< an hour of a weekday's day shift, or a visit
    double pay;
    const char* method;
};
enum VisitTypePlace {
    kHomemaker,
    kPersonalCare,
    kHomeHealth,
    kLiveIn,
    kRespite,
    kNurse,
    kAssessment,
    kMileage,
    kOrientation
};
inline constexpr VisitType kVisitTypes[] = {{"HMK", "Homemaker", "Both", 0, 22.50, 12.25, "H"},
                                            {"PCA", "Personal Care", "Both", 1, 25.00, 13.75, "H"},
                                            {"HHA", "Home Health Aide", "Both", 2, 27.50, 15.00, "H"},
                                            {"LIV", "Live-in Aide", "Both", 1, 25.00, 13.75, "H"},
                                            {"RSP", "Respite Care", "Both", 1, 24.00, 13.50, "H"},
                                            {"LPN", "Practical Nurse Visit", "Both", 3, 48.00, 27.00, "H"},
                                            {"RNV", "Nursing Assessment", "Both", 4, 120.00, 62.00, "V"},
                                            {"MIL", "Escort Mileage", "Billing Only", 0, 9.50, 0, "V"},
                                            {"ORI", "Orientation", "Payroll Only", 1, 0, 11.50, "H"}};

struct Payer {
    long code;
    const char* name;
    const char* careOf;
    bool mileage, errand, expenses;
    int percent;  ///< of the usual rates
};
/// The first one is the client himself.
inline constexpr Payer kPayers[] = {
    {1, "Client", "", false, false, false, 100},
    {2, "Bluestem Health Partners", "Claims Department", true, false, true, 96},
    {3, "Tri-County Waiver Program", "Fiscal Office", false, false, false, 88},
    {4, "Cottonwood Insurance Trust", "", true, true, true, 104},
    {5, "Harbor Senior Fund", "Intake Unit", false, true, false, 92},
    {6, "Lakeshore Long Term Care", "", true, false, false, 108},
    {7, "Valley Veterans Assistance", "Home Services", true, false, true, 94}};

inline constexpr ListRow kClientGroups[] = {
    {"", "North Office"}, {"", "South Office"}, {"", "Private Duty"}, {"", "Waiver"}};
inline constexpr ListRow kCaregiverGroups[] = {
    {"", "Aides North"}, {"", "Aides South"}, {"", "Nursing"}, {"", "Float Pool"}};
inline constexpr ListRow kReferralGroups[] = {
    {"", "Hospital"}, {"", "Physician"},   {"", "Rehabilitation Center"},
    {"", "Family"},   {"", "Advertising"}, {"", "Social Services"}};
inline constexpr ListRow kQuickBooksClasses[] = {
    {"", "Home Care"}, {"", "Nursing"}, {"", "Private Duty"}, {"", "Waiver Program"}};
inline constexpr ListRow kManagers[] = {
    {"M1", "Leona Marsh"}, {"M2", "Oscar Delgado"}, {"M3", "Petra Lindahl"}};
inline constexpr ListRow kFieldSupervisors[] = {
    {"F1", "Naomi Carver"}, {"F2", "Felix Okafor"}, {"F3", "Irene Winslow"}};
inline constexpr ListRow kNurses[] = {
    {"N1", "Clara Fenton RN"}, {"N2", "Victor Tran RN"}, {"N3", "Judith Salas RN"}};
inline constexpr ListRow kNurseVisits[] = {
    {"30", "Every 30 Days"}, {"60", "Every 60 Days"}, {"90", "Every 90 Days"}};
inline constexpr ListRow kPriorities[] = {
    {"R", "Red - Never Without Care"}, {"Y", "Yellow - Within a Day"}, {"G", "Green - May Wait"}};
inline constexpr ListRow kSexes[] = {{"F", "Female"}, {"M", "Male"}};
inline constexpr ListRow kCaregiverSexes[] = {{"E", "Either"}, {"F", "Female"}, {"M", "Male"}};
inline constexpr ListRow kCaregiverStatuses[] = {
    {"A", "Active"}, {"I", "InActive"}, {"T", "Terminated"}, {"Z", "Potential"}};
inline constexpr ListRow kEthnics[] = {{"1", "Not Asked"}, {"2", "Asian"}, {"3", "Black"},
                                       {"4", "Hispanic"},  {"5", "White"}, {"6", "Other"}};
inline constexpr ListRow kDiets[] = {{"REG", "Regular"},    {"DIA", "Diabetic"},   {"LOW", "Low Sodium"},
                                     {"SOF", "Soft Foods"}, {"VEG", "Vegetarian"}, {"KOS", "Kosher"}};
inline constexpr ListRow kDiagnoses[] = {
    {"ALZ", "Alzheimers Disease"},   {"ART", "Arthritis"},    {"CHF", "Heart Failure"},
    {"COP", "Chronic Lung Disease"}, {"DIA", "Diabetes"},     {"HIP", "Hip Replacement"},
    {"HYP", "Hypertension"},         {"PAR", "Parkinsonism"}, {"STR", "Stroke"}};
inline constexpr ListRow kIcd9[] = {{"250.00", "Diabetes mellitus, uncomplicated"},
                                    {"290.0", "Senile dementia"},
                                    {"332.0", "Paralysis agitans"},
                                    {"401.9", "Essential hypertension"},
                                    {"428.0", "Congestive heart failure"},
                                    {"436", "Acute cerebrovascular disease"},
                                    {"496", "Chronic airway obstruction"},
                                    {"715.90", "Osteoarthrosis"},
                                    {"733.00", "Osteoporosis"},
                                    {"820.8", "Fracture of neck of femur"},
                                    {"V43.64", "Hip joint replacement"}};

struct Skill {
    const char* code;
    const char* description;
    int critical;
};
inline constexpr Skill kSkills[] = {{"HOY", "Hoyer Lift", 1},   {"GTB", "Feeding Tube", 1},
                                    {"OXY", "Oxygen", 1},       {"DEM", "Dementia Care", 0},
                                    {"TRN", "Transfers", 0},    {"COK", "Cooking", 0},
                                    {"DRV", "Drives a Car", 0}, {"PET", "At Ease with Pets", 0},
                                    {"BTH", "Bed Bath", 0},     {"HOS", "Hospice Care", 0}};
inline constexpr int kCriticalSkills = 3;  ///< the first ones of kSkills

inline constexpr ListRow kExtraCallTypes[] = {{"ESC", "Escort to Appointments"},
                                              {"SHP", "Shopping"},
                                              {"LAU", "Laundry Service"},
                                              {"NEW", "ADD A NEW Call Type"}};

struct Requirement {
    const char* description;
    int months;
};
inline constexpr Requirement kClientRequirements[] = {
    {"Physician Orders", 6}, {"Home Safety Review", 12}, {"Service Agreement", 0}, {"Supervisory Visit", 3}};
inline constexpr Requirement kCaregiverRequirements[] = {
    {"TB Test", 12}, {"CPR Card", 24}, {"Physical Examination", 12}, {"Car Insurance", 0}};
inline constexpr const char* kClientExtras[] = {"POPUP",   "Door Code",  "Pets", "Hospital of Choice",
                                                "Parking", "Hearing Aid"};
enum ClientExtraPlace { kPopup, kDoorCode, kPets, kHospital, kParking, kHearingAid };
inline constexpr const char* kCaregiverExtras[] = {"Uniform Size", "Car", "Prefers"};

inline constexpr ListRow kCarePlan[] = {{"Bathing", "Shower with standby help"},
                                        {"Bathing", "Sponge bath"},
                                        {"Bathing", "Hair wash twice a week"},
                                        {"Mobility", "Walk with walker"},
                                        {"Mobility", "Transfer with gait belt"},
                                        {"Mobility", "Range of motion exercises"},
                                        {"Nutrition", "Prepare breakfast"},
                                        {"Nutrition", "Prepare lunch"},
                                        {"Nutrition", "Encourage fluids"},
                                        {"Housekeeping", "Change bed linen"},
                                        {"Housekeeping", "Light cleaning"},
                                        {"Safety", "Fall precautions"},
                                        {"Safety", "Lock doors and stove"},
                                        {"Medications", "Remind of morning medication"},
                                        {"Medications", "Remind of evening medication"},
                                        {"Medications", "Add a New Medication"}};
inline constexpr ListRow kTaskCodes[] = {{"BATH", "Bath or shower"},   {"DRES", "Dressing"},
                                         {"GROM", "Grooming"},         {"MEAL", "Meal preparation"},
                                         {"FEED", "Help with eating"}, {"AMBU", "Walking"},
                                         {"TRAN", "Transfers"},        {"MEDS", "Medication reminder"},
                                         {"LAUN", "Laundry"},          {"CLEA", "Light cleaning"},
                                         {"SHOP", "Shopping"},         {"ESCO", "Escort"}};
inline constexpr ListRow kEventTypes[] = {
    {"COM", "Complaint"},       {"CPM", "Compliment"},       {"FAL", "Fall"},
    {"HOS", "Hospitalization"}, {"MIS", "Missed Visit"},     {"CAL", "Phone Call"},
    {"SCH", "Schedule Change"}, {"SUP", "Supervisory Visit"}};
inline constexpr const char* kToDoActions[] = {"Call",   "Email",       "Fax",  "Meet",
                                               "Review", "Send Letter", "Visit"};

struct ClientTemplate {
    const char* id;
    const char* first;
    const char* last;
    VisitTypePlace visitType;
};
inline constexpr ClientTemplate kTemplates[] = {{"99900", "Standard", "Home Care", kPersonalCare},
                                                {"99901", "Private Duty", "Hourly", kHomeHealth},
                                                {"99902", "Waiver Program", "Homemaker", kHomemaker}};

struct User {
    const char* id;
    const char* name;
    const char* status;
};
inline constexpr User kUsers[] = {{"DEMO", "Demonstration", "Active"},  {"LEONA", "Leona Marsh", "Active"},
                                  {"OSCAR", "Oscar Delgado", "Active"}, {"PETRA", "Petra Lindahl", "Active"},
                                  {"NAOMI", "Naomi Carver", "Active"},  {"HUGO", "Hugo Benoit", "InActive"}};
inline constexpr int kActiveUsers = 5;  ///< the first ones of kUsers

/// Fills the lists of main.mdb and the payers of kestrava.mdb. Entries that a new data folder starts with
/// stay and are not doubled.
void WriteLists(Database& work, Database& code, Date now, Random random);

}  // namespace kv::demo
