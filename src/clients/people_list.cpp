#include "clients/people_list.h"

#include <algorithm>
#include <iterator>

#include "base/format.h"
#include "base/text.h"
#include "clients/record_keys.h"

namespace kv {

namespace {

constexpr RecordTexts kTexts = {"There are no records to move to", "Moved to the first Record",
                                "Moved to the last Record", "There are no records to delete",
                                "Are you sure you want to delete this record?"};

std::string PeopleStatement(PeopleTable table) {
    return table == PeopleTable::doctors ? "select * from doctors ORDER BY NAME"
                                         : "select * from casemgr ORDER BY NAME";
}

}  // namespace

std::string_view PeopleTitle(PeopleTable table) {
    return table == PeopleTable::doctors ? "Doctors" : "Case Managers";
}

const std::vector<PeopleColumn>& PeopleColumns() {
    static const std::vector<PeopleColumn> columns = {
        {"Name", "Name"}, {"Address", "Address"},    {"City", "City"},   {"State", "State"},
        {"Zip", "Zip"},   {"Contact 1", "Contact1"}, {"Title", "Title"}, {"Phone", "Phone"},
        {"Fax", "Fax"},   {"Contact 2", "Contact2"},
    };
    return columns;
}

std::string_view PeopleNoteField() {
    return "Note";
}

Recordset OpenPeople(Session& session, PeopleTable table) {
    return session.dbMainCode->OpenRecordset(PeopleStatement(table));
}

bool FindPerson(Recordset& people, const std::string& name) {
    people.FindFirst(Sql("NAME = {}", name));
    return !people.NoMatch();
}

std::string KeptName(const std::string& name) {
    constexpr std::size_t kLength = 30;
    return Left(name, kLength);
}

bool SavePerson(Session& session, Recordset& people) {
    if (people.EditMode() == EditState::None) {
        session.ShowMessageWindow("You must press 'Add New' first to add a record");
        return false;
    }
    const Value id = people.Get("id");
    people.Update();
    people.Requery();  // the name may have moved the row
    people.FindFirst(Sql("id = {}", id));
    return true;
}

bool DeletePerson(Session& session, Recordset& people) {
    return DeleteRecord(session, people, kTexts, [](const Recordset& person) { return person.Text("Name"); });
}

bool MovePerson(Session& session, Recordset& people, ListMove move) {
    return MoveInRecords(session, people, move, kTexts);
}

Document PeoplePrint(PeopleTable table, const Recordset& people) {
    constexpr double kNoteIndent = 0.25;
    Document document{std::string(PeopleTitle(table))};
    document.Heading(1, std::string(PeopleTitle(table)));
    Recordset rows = people.Clone();
    if (rows.RecordCount() > 0) {
        rows.MoveFirst();
    }
    for (; !rows.Eof(); rows.MoveNext()) {
        TextStyle bold;
        bold.bold = true;
        Paragraph& name = document.Line(rows.Text("Name"), bold);
        name.spaceBefore = 0.1;
        name.keepWithNext = true;
        const auto line = [&](const std::vector<std::string>& texts) {
            std::vector<std::string> filled;
            std::copy_if(texts.begin(), texts.end(), std::back_inserter(filled),
                         [](const std::string& text) { return !Trim(text).empty(); });
            if (!filled.empty()) {
                document.Line(Join(filled, ", ")).indent = kNoteIndent;
            }
        };
        const auto labelled = [&](std::string_view label, const std::string& text) {
            return Trim(text).empty() ? std::string() : std::string(label) + ": " + text;
        };
        line({rows.Text("Title"), labelled("Contact 1", rows.Text("Contact1")),
              labelled("Contact 2", rows.Text("Contact2"))});
        line({rows.Text("Address"), rows.Text("City"), rows.Text("State"), rows.Text("Zip")});
        line({labelled("Phone", FormatPhone(rows.Text("Phone"))),
              labelled("Fax", FormatPhone(rows.Text("Fax")))});
        line({rows.Text(PeopleNoteField())});
    }
    return document;
}

std::vector<NamedNote> LoadPeople(Session& session, PeopleTable table) {
    std::vector<NamedNote> people;
    Recordset rows = session.dbMainCode->OpenRecordset(PeopleStatement(table), RecordsetType::Snapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        people.push_back({KeptName(rows.Text("Name")), rows.Text(PeopleNoteField())});
    }
    return people;
}

}  // namespace kv
