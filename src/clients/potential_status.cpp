#include "clients/potential_status.h"

#include "clients/client_changes.h"
#include "clients/client_save.h"
#include "session/trans.h"
#include "session/whole_step.h"

namespace kv {

namespace {

/// The row's own words for what it is: "Potential - Active", "Active".
std::string StateOf(const Recordset& client) {
    return client.Text("casestatcd") == "Z" ? "Potential - " + client.Text("potientalstatus") : "Active";
}

void WriteStatus(Session& session, Recordset& list, PotentialChoice choice) {
    const std::string id = list.Text("CLIENT");
    const std::string before = StateOf(list);
    if (choice == PotentialChoice::ActiveClient) {
        list.Set("casestatcd", "A");
    }
    list.Set("potientalstatus", choice == PotentialChoice::Inactive ? "InActive" : "Active");
    const std::string now = StateOf(list);
    WriteStamps(session, list);
    list.Update();
    AppendClientHistory(session, id, "Status: " + before + " to " + now + "\r\n");
    if (choice == PotentialChoice::ActiveClient) {
        session.dbMainCode->Execute(Sql("Update hkeylonglat set status = 'A' where cltID = {}", id));
    }
    NoteOnTheRoad(session, "E", "C", id);
}

}  // namespace

PotentialResult ChangePotentialStatus(Session& session, Recordset& list, PotentialChoice choice) {
    if (!session.dialogs.AskQuestion("Are you sure you wish to change the status of this client?")) {
        return PotentialResult::Unchanged;
    }
    if (list.EditMode() == EditState::None) {
        list.Edit();
    }
    try {
        // The question may have stood for long.
        if (list.Text("casestatcd") != "Z") {
            list.CancelUpdate();
            session.ShowMessageWindow("Another user has meanwhile changed the status of this client.");
            return PotentialResult::Changed;
        }
        WholeStep step(session);
        WriteStatus(session, list, choice);
        step.Finish();
    } catch (const EngineError&) {
        if (list.EditMode() != EditState::None) {
            list.CancelUpdate();
        }
        throw;
    }
    return choice == PotentialChoice::ActiveClient ? PotentialResult::BecameActive : PotentialResult::Changed;
}

}  // namespace kv
