#include "session/whole_step.h"

#include "datastore/try_step.h"

namespace kv {

WholeStep::WholeStep(Session& session) {
    if (session.OffLine)
        databases_.push_back(session.OpenData("trans.mdb"));
    databases_.push_back(session.dbMainCode);
    databases_.push_back(session.dbMainWork);
    // Every seat takes them in the same order, so that no two wait for each other.
    for (const DatabasePtr& database : databases_)
        transactions_.push_back(database->BeginTransaction());
}

void WholeStep::Finish() {
    for (Transaction& transaction : transactions_)
        transaction.Commit();
}

void WriteWhole(Session& session, Recordset& row, const std::function<void()>& writes) {
    const HeldEdit held = row.HoldEdit();
    try {
        WholeStep step(session);
        writes();
        step.Finish();
    } catch (...) {
        // Where another seat has taken the row meanwhile the first failure is the one to tell.
        Try([&] { row.ResumeEdit(held); });
        throw;
    }
}

}  // namespace kv
