#include "matching/caregiver_panel.h"

#include <system_error>

#include "base/format.h"
#include "base/numbers.h"
#include "base/platform.h"
#include "base/text.h"
#include "datastore/try_step.h"
#include "matching/commitments.h"

namespace kv {

namespace {

constexpr double kWhole = 100;

std::string GenderWord(const std::string& code) {
    return EqualsNoCase(code, "F") ? "Female" : "Male";
}

Recordset Work(Session& session, const std::string& statement) {
    return session.dbMainWork->OpenRecordset(statement, RecordsetType::Snapshot);
}

Recordset Code(Session& session, const std::string& statement) {
    return session.dbMainCode->OpenRecordset(statement, RecordsetType::Snapshot);
}

void FillRows(Session& session, const Recordset& employee, CaregiverPanel& panel) {
    const Recordset discipline =
        Code(session, Sql("select * from discipline where [code] = {}", employee.Text("Disp")));
    panel.rows = {
        {"ID", employee.Text("emp_id")},
        {"Name", Trim(employee.Text("LastName")) + ", " + Trim(employee.Text("FirstName"))},
        {"Address", employee.Text("Street")},
        {"City", employee.Text("City")},
        {"State", employee.Text("State") + ", " + employee.Text("Zip")},
        {"Group", employee.Text("dept")},
        {"Phone", FormatPhone(employee.Text("Phone"))},
        {"Pager", FormatPhone(employee.Text("pager"))},
        {"Cell", FormatPhone(employee.Text("cellphone"))},
        {"Discipline", discipline.Eof() ? std::string() : discipline.Text("Description")},
        {"Type", Upper(employee.Text("EMP_TYPE"))},
        {"Gender", GenderWord(employee.Text("SEX"))},
    };
}

/// A type "BOTH" agrees with any, and so does a client without a wish.
void Compare(const ClientNeeds& needs, const Recordset& employee, CaregiverPanel& panel) {
    const std::string type = Upper(employee.Text("EMP_TYPE"));
    if (type != needs.type && type != "BOTH" && needs.type != "BOTH") {
        panel.differing.insert("Type");
    }
    const bool asked = needs.gender == "F" || needs.gender == "M";
    if (asked && GenderWord(employee.Text("SEX")) != GenderWord(needs.gender)) {
        panel.differing.insert("Gender");
    }
}

void FillSkills(Session& session, const ClientNeeds& needs, const std::string& emp_id,
                CaregiverPanel& panel) {
    for (Recordset row = Work(session, Sql("Select * from emp_misc where emp = {} and area = 'SKI'", emp_id));
         !row.Eof(); row.MoveNext()) {
        const std::string code = row.Text("ID");
        panel.skillCodes.insert(Upper(code));
        bool needed = false;
        for (const SkillNeed& need : needs.skills) {
            needed = needed || EqualsNoCase(need.code, code);
        }
        panel.skills.push_back({row.Text("Description"), needed});
    }
    for (const SkillNeed& need : needs.skills) {
        if (need.critical && panel.skillCodes.count(Upper(need.code)) == 0) {
            panel.missingCritical.push_back(need.description);
        }
    }
}

void FillNotes(Session& session, const ClientNeeds& needs, const Recordset& employee, CaregiverPanel& panel) {
    panel.notes = employee.Text("em_comment");
    panel.notesTitle = "Caregiver Notes";
    const Recordset ban = Work(session, Sql("Select * from emp_ban where client = {} and emp_id = {}",
                                            needs.client, employee.Text("emp_id")));
    if (!ban.Eof()) {
        panel.banned = true;
        panel.notes = ban.Text("Notes");
        panel.notesTitle = "Why Caregiver is not recommended";
    }
}

void FillHours(Session& session, const SuggestionRequest& request, const std::string& emp_id,
               CaregiverPanel& panel) {
    panel.weekHours = AllCommitments(session, request, Window(), emp_id).Of(emp_id).weekHours;
    panel.weekHoursAfter = panel.weekHours + request.hours;
    const Value visits = session.dbMainWork->Lookup(
        Sql("select num_visits from cli_emp where client = {} and emp_id = {}", request.client, emp_id));
    panel.visits = static_cast<long>(visits.NumberOr(0));
}

}  // namespace

CaregiverPanel DescribeCaregiverForVisit(Session& session, const ClientNeeds& needs,
                                         const SuggestionRequest& request, const SuggestionOptions& options,
                                         const std::string& emp_id, VisitAmounts& amounts) {
    CaregiverPanel panel;
    Try([&] {
        const Recordset employee = Work(session, Sql("select * from employee where emp_id = {}", emp_id));
        if (employee.Eof()) {
            return;
        }
        Try([&] { panel.expired = ExpiredInformation(session, employee); });
        Try([&] { panel.languages = LanguagesOf(session, employee, needs.language); });
        Try([&] { FillSkills(session, needs, emp_id, panel); });
        Try([&] { panel.areas = AreasOf(session, emp_id, needs.area); });
        Try([&] { FillRows(session, employee, panel); });
        Try([&] {
            const RatedVisit visit = {needs.client, needs.visitType, needs.billCode, needs.liveIn, emp_id};
            panel.pay = amounts.Pay(visit, request.day.At(request.time), request.hours);
            panel.rows.emplace_back("Pay Rate", FormatNumber(panel.pay, "##,##0.00"));
        });
        panel.payFault = panel.pay == 0 ? "Missing a Pay Rate" : "";
        Compare(needs, employee, panel);
        panel.picture = CaregiverPicture(session, emp_id);
        Try([&] { FillNotes(session, needs, employee, panel); });
        panel.margin = GrossMargin(needs.bill, panel.pay, Burdens(session));
        Try([&] { FillHours(session, request, emp_id, panel); });
        // One who should not visit is warned of; one without a critical skill, or not employed yet, can't be
        // chosen.
        panel.maySelect = panel.missingCritical.empty() && !options.potential;
    });
    return panel;
}

long Burdens(Session& session) {
    constexpr int kLongest = 50;
    return static_cast<long>(Val(session.Ini().Get("KESTRAVA SYSTEM", "BURDENS", "", kLongest)));
}

std::optional<double> GrossMargin(double bill, double pay, long burdens) {
    if (bill <= 0 || pay <= 0) {
        return std::nullopt;
    }
    const double cost = pay * (1 + static_cast<double>(burdens) / kWhole);
    return kWhole - cost / bill * kWhole;
}

std::string MarginTip(long burdens) {
    return "100 - (((Pay Rate * 1." + FormatNumber(static_cast<double>(burdens), "00") +
           " 'Burdens') / Billing Rate) * 100)";
}

std::vector<std::string> ExpiredInformation(Session& session, const Recordset& employee) {
    constexpr std::size_t kWidth = 20;
    constexpr const char* kDay = "MMM/DD/YYYY";
    const Date today = session.clock.Today();
    std::vector<std::string> expired;
    const Value licence = employee.Get("EXP_CYMMDD");
    if (!licence.IsNull() && licence.ToDate().DayOnly() <= today) {
        expired.push_back("RN License: " + FormatDate(licence.ToDate(), kDay));
    }
    for (Recordset row = Work(session, Sql("select * from Emp_REQUIRED WHERE EMP_ID = {} AND exp_date <= {}",
                                           employee.Text("emp_id"), today.DayNumber()));
         !row.Eof(); row.MoveNext()) {
        expired.push_back(Left(Trim(row.Text("Description")), kWidth) + " - " +
                          FormatDate(row.Get("exp_date").ToDate(), kDay));
    }
    return expired;
}

std::filesystem::path CaregiverPicture(const Session& session, const std::string& emp_id) {
    std::filesystem::path picture;
    for (const char* ending : {".BMP", ".JPG"}) {
        const std::filesystem::path file = session.DataFile("PICTURES/employee/" + emp_id + ending);
        std::error_code ignored;
        if (std::filesystem::is_regular_file(file, ignored)) {
            picture = file;
        }
    }
    return picture;
}

std::vector<PanelItem> LanguagesOf(Session& session, const Recordset& employee, const std::string& wanted) {
    std::vector<PanelItem> languages;
    for (const char* field : {"emlang1", "emlang2", "emlang3"}) {
        const std::string code = employee.Text(field);
        if (code.empty()) {
            continue;
        }
        const Recordset language = Code(session, Sql("select * from language where code = {}", code));
        languages.push_back(
            {language.Eof() ? code : language.Text("Description"), EqualsNoCase(code, wanted)});
    }
    return languages;
}

std::vector<PanelItem> AreasOf(Session& session, const std::string& emp_id, const std::string& wanted) {
    std::vector<PanelItem> areas;
    for (Recordset row = Work(session, Sql("Select * from emp_locations where emp = {}", emp_id)); !row.Eof();
         row.MoveNext()) {
        const std::string district = row.Text("DISTRICT");
        areas.push_back({district, !wanted.empty() && ContainsNoCase(wanted, district)});
    }
    return areas;
}

}  // namespace kv
