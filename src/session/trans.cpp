#include "session/trans.h"

#include "base/text.h"

namespace kv {
namespace {

void AddEntry(Recordset& journal, const std::string& type, const std::string& module, const std::string& id,
              Date now) {
    journal.AddNew();
    journal.Set("Type", type);
    journal.Set("Module", module);
    journal.Set("ID", id);
    journal.Set("WHEN", now);
    journal.Update();
}

/// An added record that is then changed is still replayed as added; one added and removed never reaches the
/// office.
void ChangeEntry(Recordset& journal, const std::string& type, Date now) {
    const bool removed = type == "D";
    if (removed && journal.Text("Type") == "A") {
        journal.Delete();
        return;
    }
    journal.Edit();
    if (removed)
        journal.Set("Type", type);
    journal.Set("WHEN", now);
    journal.Update();
}

}  // namespace

bool WriteTransRecord(Session& session, const std::string& type, const std::string& module,
                      const std::string& id) {
    const std::string key = Trim(id);
    const DatabasePtr database = session.OpenData("trans.mdb");
    Recordset journal = database->OpenRecordset("trans");
    journal.FindFirst(Sql("ID = {} and module = {}", key, module));
    if (journal.NoMatch())
        AddEntry(journal, type, module, key, session.clock.Now());
    else
        ChangeEntry(journal, type, session.clock.Now());
    return true;
}

void NoteOnTheRoad(Session& session, const std::string& type, const std::string& module,
                   const std::string& id) {
    if (session.OffLine) {
        WriteTransRecord(session, type, module, id);
    }
}

}  // namespace kv
