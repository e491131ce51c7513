#include "matching/visit_detail.h"

#include <system_error>

#include "base/format.h"
#include "base/platform.h"
#include "base/text.h"
#include "clients/notes_text.h"
#include "datastore/try_step.h"
#include "matching/caregiver_panel.h"

namespace kv {

namespace {

Recordset Work(Session& session, const std::string& statement) {
    return session.dbMainWork->OpenRecordset(statement, RecordsetType::Snapshot);
}

/// The description behind a code of one of the company's lists, or the other text.
std::string Described(Session& session, const char* table, const std::string& code,
                      const std::string& otherwise) {
    const Recordset row = session.dbMainCode->OpenRecordset(
        Sql("select * from {} where [code] = {}", Raw{table}, code), RecordsetType::Snapshot);
    return row.Eof() ? otherwise : row.Text("Description");
}

std::string WithSecondLine(const Recordset& row, const char* first, const char* second) {
    return Trim(Trim(row.Text(first)) + " " + Trim(row.Text(second)));
}

std::vector<DetailNode> Leaves(const std::vector<PanelItem>& items) {
    std::vector<DetailNode> leaves;
    for (const PanelItem& item : items) {
        leaves.push_back({item.text, false, {}});
    }
    return leaves;
}

/// Typed names and values: "Pets = two cats".
DetailNode ExtraInformation(Session& session, const std::string& statement) {
    DetailNode parent = {"Extra Information", false, {}};
    for (Recordset row = Work(session, statement); !row.Eof(); row.MoveNext()) {
        parent.children.push_back({row.Text("Description") + " = " + row.Text("input_text"), false, {}});
    }
    return parent;
}

DetailNode PlanOfCare(Session& session, const std::string& client) {
    DetailNode plan = {"Plan of Care", false, {}};
    for (Recordset row = Work(
             session, Sql("select * from care_plan where client = {} order by group,description", client));
         !row.Eof(); row.MoveNext()) {
        const std::string group = row.Text("Group");
        if (plan.children.empty() || !EqualsNoCase(plan.children.back().text, group)) {
            plan.children.push_back({group, false, {}});
        }
        plan.children.back().children.push_back({row.Text("Description"), false, {}});
    }
    return plan;
}

DetailNode EmergencyContacts(const Recordset& client) {
    struct Contact {
        const char* label;
        const char* field;
        bool phone;
    };
    constexpr std::array<Contact, 6> kContacts = {{{"Name 1: ", "EMERGCONT", false},
                                                   {"Phone 1: ", "EMGCYPHONe", true},
                                                   {"Name 2: ", "EMG_NAME2", false},
                                                   {"Phone 2: ", "EMG_PHONE2", true},
                                                   {"Name 3: ", "EMG_NAME3", false},
                                                   {"Phone 3: ", "EMG_PHONE3", true}}};
    DetailNode contacts = {"Emergency Contacts", false, {}};
    for (const Contact& contact : kContacts) {
        const std::string text = client.Text(contact.field);
        contacts.children.push_back({contact.label + (contact.phone ? FormatPhone(text) : text), false, {}});
    }
    return contacts;
}

std::string GenderOf(const std::string& code) {
    return EqualsNoCase(code, "F") ? "Female" : EqualsNoCase(code, "M") ? "Male" : "Not Applicable";
}

std::filesystem::path ClientPicture(const Session& session, const std::string& client) {
    std::filesystem::path picture;
    for (const char* ending : {".BMP", ".JPG"}) {
        const std::filesystem::path file = ClientPictureFile(session, client, ending);
        std::error_code ignored;
        if (std::filesystem::is_regular_file(file, ignored)) {
            picture = file;
        }
    }
    return picture;
}

void FillClientRows(Session& session, const Recordset& row, PersonDetail& detail) {
    const auto text = [&row](const char* field) { return row.Text(field); };
    const std::string apartment = Trim(text("apt"));
    const std::string area = text("BORO");
    detail.rows = {
        {"ID", detail.id},
        {"Name", detail.name},
        {"Address", WithSecondLine(row, "STREET", "ADDRESS2")},
        {"City", text("CITY")},
        {"State", text("STATE") + (apartment.empty() ? "" : "    APT#: " + apartment)},
        {"Zip", text("ZIP")},
        {"Telephony?", row.Get("istelephony").IsTrue() ? "Yes" : "No"},
        {"Phone", FormatPhone(text("PHONE"))},
        {"District", area},
        {"Discipline", Described(session, "discipline", text("ORD_DISCPL"), "")},
        {"Gender", GenderOf(text("PROV_SEX"))},
        {"Language", Described(session, "language", text("LANGUAGE"), "")},
        {"Manager", Described(session, "manager", text("MANAGER"), "None")},
        {"FSL", Described(session, "fsl", text("FSL"), "")},
        {"Group", text("grouping")},
        {"Comments", ReplaceAll(NotesText(text("Comments")), "\n", " ")},
    };
}

}  // namespace

PersonDetail DescribeClient(Session& session, const std::string& client) {
    PersonDetail detail;
    Try([&] {
        const Recordset row = Work(session, Sql("select * from ClientPR where client = {}", client));
        detail.id = client;
        if (client.empty() || row.Eof()) {
            return;
        }
        detail.name = Trim(row.Text("LASTNAME")) + ", " + Trim(row.Text("FIRSTNAM"));
        detail.address = {row.Text("STREET"), row.Text("CITY"), row.Text("STATE"), row.Text("ZIP")};
        detail.notes = row.Text("Comments");
        detail.picture = ClientPicture(session, client);
        Try([&] { FillClientRows(session, row, detail); });
        Try([&] {
            DetailNode skills = {"Skills needed by Client", false, {}};
            for (Recordset skill = Work(
                     session,
                     Sql("select * from cli_misc where client = {} and area = 'SKI' order by id", client));
                 !skill.Eof(); skill.MoveNext()) {
                skills.children.push_back({skill.Text("Description"), false, {}});
            }
            detail.tree.push_back(std::move(skills));
        });
        Try([&] { detail.tree.push_back(PlanOfCare(session, client)); });
        detail.tree.push_back(EmergencyContacts(row));
        Try([&] {
            detail.tree.push_back(
                ExtraInformation(session, Sql("select * from cli_personnel where client = {}", client)));
        });
    });
    return detail;
}

PersonDetail DescribeCaregiverInFull(Session& session, const std::string& emp_id) {
    PersonDetail detail;
    Try([&] {
        const Recordset row = Work(session, Sql("select * from employee where emp_id = {}", emp_id));
        detail.id = emp_id;
        if (emp_id.empty() || row.Eof()) {
            return;
        }
        const auto text = [&row](const char* field) { return row.Text(field); };
        detail.name = Trim(text("LastName")) + ", " + Trim(text("FirstName"));
        detail.address = {text("Street"), text("City"), text("State"), text("Zip")};
        detail.notes = text("em_comment");
        detail.picture = CaregiverPicture(session, emp_id);
        Try([&] {
            DetailNode expired = {"Expired Information", true, {}};
            for (const std::string& line : ExpiredInformation(session, row)) {
                expired.children.push_back({line, true, {}});
            }
            if (!expired.children.empty()) {
                detail.tree.push_back(std::move(expired));
            }
        });
        Try([&] {
            detail.tree.push_back(
                {"Districts Caregiver will work", false, Leaves(AreasOf(session, emp_id, ""))});
        });
        Try([&] {
            detail.tree.push_back(
                {"Languages the Caregiver Speaks", false, Leaves(LanguagesOf(session, row, ""))});
        });
        Try([&] {
            DetailNode skills = {"Skills Caregiver Has", false, {}};
            for (Recordset skill =
                     Work(session, Sql("Select * from emp_misc where emp = {} and area = 'SKI'", emp_id));
                 !skill.Eof(); skill.MoveNext()) {
                skills.children.push_back({skill.Text("Description"), false, {}});
            }
            detail.tree.push_back(std::move(skills));
        });
        Try([&] {
            detail.tree.push_back(
                ExtraInformation(session, Sql("Select * from emp_personnel where emp_id = {}", emp_id)));
        });
        Try([&] {
            detail.rows = {{"ID", emp_id},
                           {"Name", detail.name},
                           {"Address", WithSecondLine(row, "Street", "Address2")},
                           {"City", text("City")},
                           {"Zip", text("Zip")},
                           {"State", text("State")},
                           {"Phone", FormatPhone(text("Phone"))},
                           {"Pager", FormatPhone(text("pager"))},
                           {"Cell", FormatPhone(text("cellphone"))},
                           {"Discipline", Described(session, "discipline", text("Disp"), "")},
                           {"Type", text("EMP_TYPE")},
                           {"Gender", EqualsNoCase(text("SEX"), "F") ? "Female" : "Male"},
                           {"Group", text("dept")}};
        });
    });
    return detail;
}

std::string VisitDirections(const MapServers& servers, PostalAddress from, PostalAddress to) {
    constexpr std::size_t kStateLetters = 2;
    for (PostalAddress* place : {&from, &to}) {
        place->state = Left(Trim(place->state), kStateLetters);
    }
    return DirectionsAddress(servers, from, to, ",");
}

std::string VisitAddresses(const PostalAddress& from, const PostalAddress& to) {
    const auto line = [](const PostalAddress& place) {
        return "Address: " + place.street + "   City: " + place.city + "  State: " + place.state +
               "   Zip: " + place.zip;
    };
    return line(from) + "\n" + line(to);
}

}  // namespace kv
