// May this caregiver be assigned to this client?
#include "base/format.h"
#include "base/text.h"
#include "scheduling/assignments.h"
#include "scheduling/work_week.h"
#include "session/rights.h"

namespace kv {

namespace {

constexpr const char* kLevelTooLow = "Discipline Level too low.";

Recordset OpenCaregiver(Session& session, const std::string& id) {
    return session.dbMainWork->OpenRecordset(Sql("select * from Employee where Emp_id = {}", id),
                                             RecordsetType::Snapshot);
}

DetailLine DetailsOf(const Recordset& caregiver, const std::string& id, const std::string& name) {
    return {{"ID", id},
            {"Name", name},
            {"Address", Trim(caregiver.Text("Street") + " " + caregiver.Text("Address2"))},
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
    return caregiver.Get("disp_level").NumberOr(0) < level.ToDouble() ? kLevelTooLow : std::string();
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

DetailLine ClientDetails(Session& session, const std::string& client) {
    const Recordset row = session.dbMainWork->OpenRecordset(
        Sql("select * from ClientPR where CLIENT = {}", client), RecordsetType::Snapshot);
    const auto text = [&row](const char* field) { return row.Eof() ? std::string() : Trim(row.Text(field)); };
    return {{"ID", client},
            {"Name", text("LASTNAME") + ", " + text("FIRSTNAM")},
            {"Address", Trim(text("STREET") + " " + text("ADDRESS2"))},
            {"City", text("CITY")},
            {"State", text("STATE")},
            {"Zip", text("ZIP")},
            {"Phone", FormatPhone(text("PHONE"))},
            {"Group", text("GROUPING")},
            {"Pager", ""},
            {"Cell", ""},
            {"Fax", ""}};
}

CaregiverCheck DescribeCaregiver(Session& session, const std::string& emp_id,
                                 const AssignmentParent& parent) {
    CaregiverCheck check;
    const Recordset caregiver = OpenCaregiver(session, emp_id);
    if (caregiver.Eof()) {
        return check;
    }
    check.accepted = true;
    check.name = Trim(caregiver.Text("LastName")) + ", " + Trim(caregiver.Text("FirstName"));
    check.details = DetailsOf(caregiver, emp_id, check.name);
    check.discipline = DisciplineFault(session, caregiver, parent.visitType);
    // Whoever is over her hours is told of, not refused.
    check.hours = HoursText(session, caregiver, emp_id);
    return check;
}

CaregiverCheck CheckCaregiver(Session& session, const std::string& emp_id, const AssignmentParent& parent,
                              Date creation) {
    CaregiverCheck check = DescribeCaregiver(session, emp_id, parent);
    if (!check.accepted) {
        session.ShowMessageWindow("Caregiver was not found");
        return check;
    }
    check.accepted = false;
    if (check.discipline == kLevelTooLow && !CheckScreenAccess(session, "DISO")) {
        return check;
    }
    if (IsBanned(session, emp_id, parent.client)) {
        session.ShowMessageWindow("This caregiver should not visit this client.");
        return check;
    }
    if (const auto missing = MissingSkills(session, emp_id, parent.client); !missing.empty()) {
        TellMissingSkills(session, missing, check.name, emp_id);
        return check;
    }
    const Recordset caregiver = OpenCaregiver(session, emp_id);
    const Value left = caregiver.Get("t_date");
    if (!EqualsNoCase(caregiver.Text("t_code"), "A") && !left.IsNull() &&
        left.ToDate().DayOnly() <= creation.DayOnly()) {
        session.ShowMessageWindow("This Caregiver is not Active as of: " +
                                  FormatDate(left.ToDate(), "MMM/DD/YYYY") + ".  Please select another one.");
        return check;
    }
    check.accepted = true;
    return check;
}

}  // namespace kv
