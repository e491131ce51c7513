#include "clients/potential_status.h"

namespace kv {

PotentialResult ChangePotentialStatus(Session& session, Recordset& list, PotentialChoice choice) {
    if (!session.dialogs.AskQuestion("Are you sure you wish to change the status of this client?")) {
        return PotentialResult::Unchanged;
    }
    const bool becomesActive = choice == PotentialChoice::ActiveClient;
    const std::string id = list.Text("CLIENT");
    if (list.EditMode() == EditState::None) {
        list.Edit();
    }
    try {
        if (becomesActive) {
            list.Set("casestatcd", "A");
        }
        list.Set("potientalstatus", choice == PotentialChoice::Inactive ? "InActive" : "Active");
        list.Update();
    } catch (const EngineError&) {
        list.CancelUpdate();
        throw;
    }
    if (!becomesActive) {
        return PotentialResult::Changed;
    }
    session.dbMainCode->Execute(Sql("Update hkeylonglat set status = 'A' where cltID = {}", id));
    return PotentialResult::BecameActive;
}

}  // namespace kv
