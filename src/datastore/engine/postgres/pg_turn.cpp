#include "datastore/engine/postgres/pg_turn.h"

#include "datastore/engine/postgres/pg_open.h"

namespace kv::postgres {
namespace {

constexpr const char* kTakeTurn = "SELECT pg_try_advisory_lock(7310579022)::integer";
constexpr const char* kGiveTurn = "SELECT pg_advisory_unlock(7310579022)";

}  // namespace

/// A transaction on the connection that has the turn; undone unless it is finished.
class Turn::Step {
  public:
    explicit Step(Turn& turn) : link_(turn.link_) {
        link_.BeginTransaction();
        // A connection that was made again has not got the turn, and another program may have begun.
        if (link_.Epoch() != turn.epoch_) {
            link_.RollbackTransaction();
            throw ConnectionLost("another copy may have begun meanwhile", false);
        }
    }
    ~Step() {
        if (!finished_)
            link_.RollbackTransaction();
    }
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;
    void Finish() {
        link_.CommitTransaction();
        finished_ = true;
    }

  private:
    Link& link_;
    bool finished_ = false;
};

Turn::Turn(const std::string& server) : link_(server, "pg_catalog"), epoch_(link_.Epoch()) {
    const Result taken = link_.Call(kTakeTurn);
    if (WholeAt(taken.get(), 0, 0) == 0)
        throw EngineError(engine_error::kDatabaseBusy,
                          "Another copy to this database server is under way. Please wait for its end.");
}

/// The server lets go what a connection held a moment after its end; whoever comes next need not wait.
Turn::~Turn() {
    try {
        if (link_.IsAlive())
            link_.Call(kGiveTurn);
    } catch (const EngineError&) {
        // Then it goes with the connection.
    }
}

void Turn::Try(const std::vector<std::string>& databases, const TableLook& look) {
    std::vector<std::pair<std::string, std::string>> drops;
    for (const std::string& name : databases)
        drops.emplace_back(name, "");
    const Step undone(*this);
    MoveAll(link_, drops, look);
}

void Turn::Move(const std::vector<std::pair<std::string, std::string>>& moves, const TableLook& look) {
    Step step(*this);
    MoveAll(link_, moves, look);
    step.Finish();
}

}  // namespace kv::postgres
