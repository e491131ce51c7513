#include "tool/demo/lists.h"

#include <span>

#include "base/text.h"
#include "tool/demo/model.h"
#include "tool/demo/people.h"
#include "tool/demo/rates.h"
#include "tool/demo/rows.h"

namespace kv::demo {
namespace {

/// Adds a row unless the table has one with this content in the first column named.
void AddMissing(Database& database, std::string_view table, TableFiller& filler,
                std::initializer_list<TableFiller::Column> row) {
    const TableFiller::Column& key = *row.begin();
    const bool number = key.value.Type() == ValueType::Integer;
    const std::string found =
        Sql("select count(*) as n from [{}] where [{}] = {}", Raw{std::string(table)}, Raw{key.name},
            number ? SqlArgument(key.value.ToInteger()) : SqlArgument(key.value));
    if (database.Lookup(found).ToInteger() == 0) {
        filler.Add(row);
    }
}

void AddList(Database& code, std::string_view table, std::span<const ListRow> rows) {
    TableFiller filler(code, table);
    for (const ListRow& row : rows) {
        AddMissing(code, table, filler, {{"code", row.code}, {"description", row.description}});
    }
}

void AddDescriptions(Database& code, std::string_view table, std::span<const ListRow> rows) {
    TableFiller filler(code, table);
    for (const ListRow& row : rows) {
        AddMissing(code, table, filler, {{"Description", row.description}});
    }
}

void AddCodeLists(Database& code) {
    AddList(code, "LANGUAGE", kLanguages);
    AddList(code, "ETHNIC", kEthnics);
    AddList(code, "SEX", kSexes);
    AddList(code, "PROVIDERS SEX", kCaregiverSexes);
    AddList(code, "DIET", kDiets);
    AddList(code, "NURSE", kNurses);
    AddList(code, "MANAGER", kManagers);
    AddList(code, "FSL", kFieldSupervisors);
    AddList(code, "DIAGNOSIS", kDiagnoses);
    AddList(code, "BOROUGH", kDistricts);
    AddList(code, "COLOR_RESULT", kPriorities);
    AddList(code, "VISIT", kNurseVisits);
    AddList(code, "EMP STAT CODE", kCaregiverStatuses);
    AddList(code, "cli_calltype", kExtraCallTypes);
    AddList(code, "ICD9", kIcd9);
    AddList(code, "tasks", kTaskCodes);
    AddList(code, "logging", kEventTypes);
    AddDescriptions(code, "cli_group", kClientGroups);
    AddDescriptions(code, "emp_group", kCaregiverGroups);
    AddDescriptions(code, "Ref_group", kReferralGroups);
    AddDescriptions(code, "qbclass", kQuickBooksClasses);

    TableFiller disciplines(code, "DISCIPLINE");
    int level = 0;
    for (const ListRow& row : kDisciplines) {
        AddMissing(code, "DISCIPLINE", disciplines, {{"code", row.code}, {"description", row.description}});
        // A discipline that was there before gets its level too.
        code.Execute(Sql("update DISCIPLINE set [Value] = {} where code = {}", ++level, row.code));
    }
    TableFiller skills(code, "skills");
    for (const Skill& skill : kSkills) {
        AddMissing(code, "skills", skills,
                   {{"code", skill.code}, {"Description", skill.description}, {"critical", skill.critical}});
    }
    TableFiller visitTypes(code, "Visit_types");
    for (const VisitType& type : kVisitTypes) {
        AddMissing(code, "Visit_types", visitTypes,
                   {{"code", type.code},
                    {"Description", type.description},
                    {"payroll_or_billing", type.payrollOrBilling},
                    {"ord_Discpl", kDisciplines[type.discipline].code}});
    }
    TableFiller requirements(code, "cli_requirements");
    for (const Requirement& requirement : kClientRequirements) {
        AddMissing(code, "cli_requirements", requirements,
                   {{"Description", requirement.description}, {"months", requirement.months}});
    }
    TableFiller extras(code, "cli_PERSONNEL");
    for (const char* extra : kClientExtras) {
        AddMissing(code, "cli_PERSONNEL", extras, {{"Description", extra}});
    }
    TableFiller carePlan(code, "care_PLAN");
    for (const ListRow& row : kCarePlan) {
        AddMissing(code, "care_PLAN", carePlan, {{"Description", row.description}, {"code", row.code}});
    }
    TableFiller actions(code, "todoActions");
    for (const char* action : kToDoActions) {
        AddMissing(code, "todoActions", actions, {{"Description", action}});
    }
}

struct Right {
    const char* code;
    const char* description;
    const char* system;
    const char* access;
};

// What the screens register when they first ask: the code, the words of the refusal, the part of the system,
// who holds it.
constexpr Right kRights[] = {{"CLIA", "", "", ""},
                             {"CLID", "", "", ""},
                             {"CLIE", "", "", ""},
                             {"CLIB", "View the Client Billing Rates section", "Client", "*"},
                             {"LOGV", "View Documented Event Screen", "System", "*"},
                             {"CLIS", "View Client SSN", "Client", "~"},
                             {"CLBD", "View Client Birth Date", "Client", "~"},
                             {"CLIG", "Change Client Groups", "Client", "*"},
                             {"LOGA", "Add a New Log", "System", "*"},
                             {"LOGS", "Save an Existing Documented Event", "System", "*"},
                             {"LOGD", "Delete an Existing Documented Event", "System", "*"},
                             {"LOGP", "Print the Documented Event Report", "System", "*"},
                             {"ASSA", "", "", ""},
                             {"ASSE", "", "", ""},
                             {"ASSD", "", "", ""},
                             {"ASSV", "", "", ""},
                             {"DISO", "", "", ""},
                             {"AUTA", "", "", ""},
                             {"AUTE", "", "", ""},
                             {"AUTD", "", "", ""},
                             {"DOCA", "", "", ""},
                             {"DOCD", "", "", ""},
                             {"EMPS", "View Caregiver SSN", "Caregiver", "~"},
                             {"CPOA", "Plan of Care - Add Entry", "Client", "*"},
                             {"CPOR", "Plan of Care - Remove Entry", "Client", "*"},
                             {"CPOE", "Plan of Care - Edit Entry", "Client", "*"},
                             {"CSKA", "Skills Required - Add Entry", "Client", "*"},
                             {"CSKR", "Skills Required - Remove Entry", "Client", "*"},
                             {"CEIA", "Extra Information - Add Entry", "Client", "*"},
                             {"CEIR", "Extra Information - Remove Entry", "Client", "*"},
                             {"CEIE", "Extra Information - Edit Entry", "Client", "*"},
                             {"CRDA", "Required Dates - Add Entry", "Client", "*"},
                             {"CRDR", "Required Dates - Remove Entry", "Client", "*"},
                             {"CRDE", "Required Dates - Edit Entry", "Client", "*"},
                             {"CETA", "Extra Call Types - Add Entry", "Client", "*"},
                             {"CETR", "Extra Call Types - Remove Entry", "Client", "*"}};

void AddUsersAndRights(Database& code) {
    TableFiller users(code, "Security");
    int icon = 0;
    for (const User& user : kUsers) {
        AddMissing(code, "Security", users,
                   {{"USerId", user.id},
                    {"employee_name", user.name},
                    {"status", user.status},
                    {"usericon", "user" + std::to_string(++icon)}});
    }
    TableFiller rights(code, "Screens");
    for (const Right& right : kRights) {
        AddMissing(code, "Screens", rights,
                   {{"Screen", right.code},
                    {"access_code", right.access},
                    {"Description", right.description},
                    {"System", right.system}});
    }
}

/// Doctors or case managers: one edit screen serves both, and so does one form of row.
void AddContacts(Database& code, std::string_view table, std::string_view title, std::string_view office,
                 std::string_view note, int count, Random random) {
    TableFiller filler(code, table);
    for (int i = 0; i < count; ++i) {
        const Address address = MakeAddress(random);
        const std::string name = MakeName(random, random.Chance(50));
        filler.Add({{"Name", name + std::string(title)},
                    {"Address", address.street},
                    {"City", address.town->name},
                    {"State", kState},
                    {"Zip", address.town->zip},
                    {"Contact1", MakeName(random, true)},
                    {"Title", "Office Manager"},
                    {"Phone", MakePhone(3000 + i)},
                    {"Fax", MakePhone(3100 + i)},
                    {"Contact2", random.Chance(40) ? "Front Desk" : ""},
                    {"Note", random.Chance(50) ? std::string(office) + ", " + std::string(note)
                                               : std::string(office)}});
    }
}

void AddHolidays(Database& code, Date now) {
    std::set<long> known;
    for (Recordset row = code.OpenRecordset("Holidays"); !row.Eof(); row.MoveNext()) {
        known.insert(row.Get("date").ToDate().DayNumber());
    }
    TableFiller holidays(code, "Holidays");
    for (int year = now.Civil().year - 1; year <= now.Civil().year + 1; ++year) {
        for (const Holiday& holiday : HolidaysOf(year)) {
            if (known.insert(holiday.day).second) {
                holidays.Add({{"date", DayOrNull(holiday.day)}, {"Description", holiday.name}});
            }
        }
    }
}

void NameAgency(Database& code) {
    Recordset agency = code.OpenRecordset("Agency");
    agency.Edit();
    agency.Set("ag_name", kAgencyName);
    agency.Set("map_adr", "100 Chapel St");
    agency.Set("map_city", kTowns[0].name);
    agency.Set("map_state", kState);
    agency.Set("map_zip", kTowns[0].zip);
    agency.Set("billmile_rate", Currency::FromDouble(0.45));
    agency.Set("sch_weeks", 4);
    agency.Update();
}

void AddPayers(Database& work, Random random) {
    TableFiller payers(work, "billcode_imaster");
    TableFiller rates(work, "billcode_idetail");
    int place = 0;
    for (const Payer& payer : kPayers) {
        const Address address = MakeAddress(random);
        const bool outside = payer.code != kPayers[0].code;
        AddMissing(work, "billcode_imaster", payers,
                   {{"billcode", payer.code},
                    {"insname", payer.name},
                    {"insaddress", outside ? address.street : ""},
                    {"inscity", outside ? address.town->name : ""},
                    {"insstate", outside ? kState : ""},
                    {"inszip", outside ? address.town->zip : ""},
                    {"InsPhone", outside ? MakePhone(3200 + place) : ""},
                    {"inscareof", payer.careOf},
                    {"bill_mileage", payer.mileage},
                    {"bill_errand", payer.errand},
                    {"bill_expenses", payer.expenses}});
        for (int type = 0; outside && type < static_cast<int>(std::size(kVisitTypes)); ++type) {
            if (IsBilled(type)) {
                const Rates money = PayerRates(place, type);
                rates.Add({{"billcode", payer.code},
                           {"visittype", kVisitTypes[type].code},
                           {"Description", kVisitTypes[type].description},
                           {"method", kVisitTypes[type].method},
                           {"rate1", money.shift[0]},
                           {"rate2", money.shift[1]},
                           {"rate3", money.shift[2]},
                           {"rate4", money.shift[3]},
                           {"rate5", money.shift[4]},
                           {"rate6", money.shift[5]},
                           {"liveinrate", money.liveIn}});
            }
        }
        ++place;
    }
}

}  // namespace

void WriteLists(Database& work, Database& code, Date now, Random random) {
    NameAgency(code);
    AddCodeLists(code);
    AddUsersAndRights(code);
    AddContacts(code, "doctors", " MD", "Internal medicine", "refills by fax only", 14, random.Fork(1));
    AddContacts(code, "casemgr", "", "County case management", "prefers a call before noon", 8,
                random.Fork(2));
    AddHolidays(code, now);
    AddPayers(work, random.Fork(3));
}

}  // namespace kv::demo
