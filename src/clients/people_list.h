#pragma once
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "clients/list_move.h"
#include "printing/document/document.h"
#include "session/session.h"

namespace kv {

/// The two tables of main.mdb that FRMmisc edits.
enum class PeopleTable { doctors, casemgr };

/// "Doctors" or "Case Managers".
std::string_view PeopleTitle(PeopleTable table);

struct PeopleColumn {
    std::string_view heading;
    std::string_view field;
};
/// The columns of FGinfo.
const std::vector<PeopleColumn>& PeopleColumns();
/// The column that holds a person's note.
std::string_view PeopleNoteField();

/// All rows in the order of their names, updatable. Throws EngineError, as everything below does.
Recordset OpenPeople(Session& session, PeopleTable table);
/// Moves to the person of that name; false leaves the list where it is.
bool FindPerson(Recordset& people, const std::string& name);

/// The toolbar of FRMmisc. Each speaks to the operator and answers whether it did something. Between AddNew
/// or Edit and Save the screen writes its boxes into the row.
bool SavePerson(Session& session, Recordset& people);
bool DeletePerson(Session& session, Recordset& people);
bool MovePerson(Session& session, Recordset& people, ListMove move);

/// The printout of the list: a row for each person, the note below it.
Document PeoplePrint(PeopleTable table, const Recordset& people);

/// What a client's row keeps of a person's name: its first 30 characters.
std::string KeptName(const std::string& name);

/// What CMBdoctor and CMBcase list: the first 30 characters of each name, with the note that a click copies
/// to the client.
struct NamedNote {
    std::string name;
    std::string note;
};
std::vector<NamedNote> LoadPeople(Session& session, PeopleTable table);

}  // namespace kv
