#pragma once
#include <functional>
#include <vector>

#include "session/session.h"

namespace kv {

/// A routine's writes to the session's databases as one: all are stored by Finish, or none. What a routine
/// asks the operator it asks before, since other seats that write wait until the end. One within another
/// belongs to it.
///
///     WholeStep step(session);
///     ... statements, recordsets, Create_schedule_now ...
///     step.Finish();
class WholeStep {
  public:
    /// Begins on kestrava.mdb, main.mdb and, On the Road, trans.mdb. Throws EngineError.
    explicit WholeStep(Session& session);
    WholeStep(const WholeStep&) = delete;
    WholeStep& operator=(const WholeStep&) = delete;
    /// Throws EngineError where a store can't take its part. The databases are stored one after the other,
    /// kestrava.mdb last: a seat that dies between them leaves the journal or the phone index ahead of the
    /// records, never behind them.
    void Finish();

  private:
    std::vector<DatabasePtr> databases_;  ///< outlive the transactions
    std::vector<Transaction> transactions_;
};

/// Runs a routine's writes as one WholeStep. Where it fails nothing is stored, the row that was in edit
/// before is in edit again with what it held, and the failure goes on to the caller.
void WriteWhole(Session& session, Recordset& row, const std::function<void()>& writes);

}  // namespace kv
