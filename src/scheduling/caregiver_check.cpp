// May this caregiver be assigned to this client?
#include "base/format.h"
#include "base/text.h"
#include "scheduling/assignments.h"
#include "scheduling/work_week.h"
#include "session/rights.h"

namespace kv {

namespace {

std::vector<std::pair<std::string, std::string>> DetailsOf(const Recordset& caregiver, const std::string& id,
                                                           const std::string& name) {
    return {{"ID", id},
            {"Name", name},
            {"Address", Join({Trim(caregiver.Text("Street")), Trim(caregiver.Text("Address2"))}, " ")},
            {"City", caregiver.Text("City")},
            {"State", caregiver.Text("State")},
            {"Zip", caregiver.Text("Zip")},
            {"Phone", FormatPhone(caregiver.Text("Phone"))},
            {"Group", caregiver.Text("dept")},
            {"Pager", caregiver.Text("pager")},
            {"Cell", caregiver.Text("cellphone")},
            {"Fax", caregiver.Text("Fax")}};
}

/// Empty where the caregiver's level suffices.
std::string DisciplineFault(Session& session, const Recordset& caregiver, const std::string& visitType) {
    const Value wanted =
        session.dbMainCode->Lookup(Sql("select ord_Discpl from Visit_types where code = {}", visitType));
    if (wanted.ToText().empty()) {
        return {};
    }
    const Value level =
        session.dbMainCode->Lookup(Sql("select [Value] from DISCIPLINE where [code] = {}", wanted));
    if (level.IsNull()) {
        return "Could not verify Discipline Level.";
    }
    return caregiver.Get("disp_level").NumberOr(0) < level.ToDouble() ? "Discipline Level too low."
                                                                      : std::string();
}

bool IsBanned(Session& session, const std::string& id, const std::string& client) {
    return !session.dbMainWork
                ->OpenRecordset(Sql("select * from emp_ban where emp_id = {} and client = {}", id, client),
                                RecordsetType::Snapshot)
                .Eof();
}

/// The client's skills that a caregiver must have.
std::vector<std::string> CriticalSkills(Session& session, const std::string& client) {
    Recordset critical =
        session.dbMainCode->OpenRecordset("Select * from skills where critical = 1", RecordsetType::Snapshot);
    Recordset wanted = session.dbMainWork->OpenRecordset(
        Sql("Select * from cli_misc where client = {} and area = 'SKI'", client), RecordsetType::Snapshot);
    std::vector<std::string> codes;
    for (; !wanted.Eof() && critical.RecordCount() > 0; wanted.MoveNext()) {
        critical.FindFirst(Sql("code = {}", wanted.Text("ID")));
        if (!critical.NoMatch()) {
            codes.push_back(wanted.Text("ID"));
        }
    }
    return codes;
}

std::vector<std::string> MissingSkills(Session& session, const std::string& id, const std::string& client) {
    std::vector<std::string> missing;
    Recordset skills = session.dbMainWork->OpenRecordset(
        Sql("Select * from emp_misc where emp = {} and area = 'SKI'", id), RecordsetType::Snapshot);
    for (const std::string& code : CriticalSkills(session, client)) {
        bool has = false;
        if (skills.RecordCount() > 0) {
            skills.FindFirst(Sql("id = {}", code));
            has = !skills.NoMatch();
        }
        if (!has) {
            missing.push_back(code);
        }
    }
    return missing;
}

void TellMissingSkills(Session& session, const std::vector<std::string>& missing, const std::string& name,
                       const std::string& id) {
    std::vector<std::string> lines = {"Missing Critical Skills for Caregiver: " + name + " " + id, ""};
    lines.insert(lines.end(), missing.begin(), missing.end());
    lines.emplace_back("");
    lines.emplace_back("This caregiver is missing Critical Skills.  Clearing out the Cargiver ID field");
    session.dialogs.ShowFaults(lines);
}

std::string HoursText(Session& session, const Recordset& caregiver, const std::string& id) {
    const double worked = CaregiverWeekHours(session, id, session.clock.Today());
    const double left = caregiver.Get("hrsper_week").NumberOr(0) - worked;
    return "Hrs current wk " + FormatNumber(worked, "##0.00") + " Left: " + FormatNumber(left, "##0.00");
}

}  // namespace

CaregiverCheck CheckCaregiver(Session& session, const std::string& emp_id, const AssignmentParent& parent,
                              Date creation) {
    CaregiverCheck check;
    const Recordset caregiver = session.dbMainWork->OpenRecordset(
        Sql("select * from Employee where Emp_id = {}", emp_id), RecordsetType::Snapshot);
    if (caregiver.Eof()) {
        session.ShowMessageWindow("Caregiver was not found");
        return check;
    }
    check.name = Trim(caregiver.Text("LastName")) + ", " + Trim(caregiver.Text("FirstName"));
    check.details = DetailsOf(caregiver, emp_id, check.name);
    check.accepted = true;

    check.discipline = DisciplineFault(session, caregiver, parent.visitType);
    if (check.discipline == "Discipline Level too low." && !CheckScreenAccess(session, "DISO")) {
        check.accepted = false;
        return check;
    }
    if (IsBanned(session, emp_id, parent.client)) {
        session.ShowMessageWindow("This caregiver should not visit this client.");
        check.accepted = false;
        return check;
    }
    if (const auto missing = MissingSkills(session, emp_id, parent.client); !missing.empty()) {
        TellMissingSkills(session, missing, check.name, emp_id);
        check.accepted = false;
        return check;
    }
    const Value left = caregiver.Get("t_date");
    if (!EqualsNoCase(caregiver.Text("t_code"), "A") && !left.IsNull() &&
        left.ToDate().DayOnly() <= creation.DayOnly()) {
        session.ShowMessageWindow("This Caregiver is not Active as of: " +
                                  FormatDate(left.ToDate(), "MMM/DD/YYYY") + ".  Please select another one.");
        check.accepted = false;
        return check;
    }
    // Whoever is over her hours is told of, not refused.
    check.hours = HoursText(session, caregiver, emp_id);
    return check;
}

}  // namespace kv
