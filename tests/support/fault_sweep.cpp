#include "support/fault_sweep.h"

#include <algorithm>
#include <array>
#include <map>

#include <gtest/gtest.h>

#include "base/text.h"
#include "datastore/engine/connection.h"
#include "support/test_server.h"

namespace kv::test {
namespace {

constexpr std::array kDatabases = {"kestrava", "main", "trans"};
using Lines = std::vector<std::string>;
/// By database, each row behind the name of its table.
using State = std::map<std::string, Lines>;

/// Numbers that the store hands out, and columns that hold them: after a failure they go on elsewhere.
bool HoldsCounter(const std::string& column) {
    static const std::array<std::string_view, 5> kCounters = {"sequence", "assign_seq", "author_seq", "id",
                                                              "area"};
    return std::any_of(kCounters.begin(), kCounters.end(),
                       [&](std::string_view name) { return EqualsNoCase(name, column); });
}

State StateOf(TestAgency& agency, bool withCounters) {
    State state;
    for (const char* name : kDatabases) {
        Database& database = agency.Data(name);
        for (const std::string& table : database.Tables().Names()) {
            Recordset rows = database.OpenRecordset("select * from [" + table + "]", RecordsetType::Snapshot);
            for (; !rows.Eof(); rows.MoveNext()) {
                std::string line = table;
                for (std::size_t field = 0; field < rows.Fields().size(); ++field) {
                    if (withCounters || !HoldsCounter(rows.Fields()[field].name)) {
                        line += "|" + rows.Get(field).ToText();
                    }
                }
                state[name].push_back(line);
            }
        }
        std::sort(state[name].begin(), state[name].end());
    }
    return state;
}

/// Lets the n-th write from now on fail; and where no row is locked, but the store itself gone, all after it.
class Fault {
  public:
    Fault(TestAgency& agency, long at, const EngineError& error) {
        const bool stays = error.Number() != engine_error::kLockedByOther;
        for (const char* name : kDatabases) {
            Connection& engine = agency.Data(name).Engine();
            engines_.push_back(&engine);
            engine.beforeWrite = [this, at, error, stays] {
                ++writes_;
                if (writes_ == at || (stays && at > 0 && writes_ > at)) {
                    throw EngineError(error);
                }
            };
        }
    }
    ~Fault() {
        for (Connection* engine : engines_) {
            engine->beforeWrite = nullptr;
        }
    }
    Fault(const Fault&) = delete;
    Fault& operator=(const Fault&) = delete;
    long Writes() const { return writes_; }

  private:
    std::vector<Connection*> engines_;
    long writes_ = 0;
};

const EngineError kLocked(engine_error::kLockedByOther, "locked");
const EngineError kLost(engine_error::kConnectionFailed, "lost");
const EngineError kFull(engine_error::kDiskFull, "full");

std::string Difference(const Lines& before, const Lines& now) {
    Lines lines;
    std::set_difference(before.begin(), before.end(), now.begin(), now.end(), std::back_inserter(lines));
    Lines more;
    std::set_difference(now.begin(), now.end(), before.begin(), before.end(), std::back_inserter(more));
    return "gone:\n" + Join(lines, "\n") + "\ncame:\n" + Join(more, "\n") + "\n";
}

struct Whole {
    State before, after;
    State afterPlain;  ///< without counters
    long writes = 0;
};

Whole RunWhole(const FaultCase& fault) {
    TestAgency agency;
    fault.prepare(agency);
    const auto routine = fault.open(agency);
    Whole whole;
    whole.before = StateOf(agency, true);
    {
        const Fault none(agency, 0, kFull);
        routine();
        whole.writes = none.Writes();
    }
    whole.after = StateOf(agency, true);
    whole.afterPlain = StateOf(agency, false);
    EXPECT_TRUE(whole.before != whole.after) << fault.name << " writes nothing";
    return whole;
}

void RunFaulty(const FaultCase& fault, const Whole& whole, long at, const EngineError& error) {
    SCOPED_TRACE(fault.name + ", write " + std::to_string(at) + " of " + std::to_string(whole.writes) + " " +
                 error.Description());
    TestAgency agency;
    fault.prepare(agency);
    const auto routine = fault.open(agency);
    {
        const Fault failing(agency, at, error);
        try {
            routine();
        } catch (const EngineError& thrown) {
            EXPECT_EQ(thrown.Number(), error.Number()) << thrown.Description();
        }
    }
    const State now = StateOf(agency, true);
    const auto rowsOf = [](const State& state, const char* name) {
        return state.contains(name) ? state.at(name) : Lines();
    };
    bool anyBefore = false;
    bool anyAfter = false;
    for (const char* name : kDatabases) {
        const Lines rows = rowsOf(now, name);
        const Lines before = rowsOf(whole.before, name);
        const Lines after = rowsOf(whole.after, name);
        EXPECT_TRUE(rows == after || rows == before)
            << name << " holds neither the rows before nor those after; from before,\n"
            << Difference(before, rows);
        anyBefore |= rows == before && before != after;
        anyAfter |= rows == after && before != after;
    }
    if (anyBefore && anyAfter) {
        // The commits of trans.mdb, main.mdb and kestrava.mdb are the last writes, in this order.
        EXPECT_GE(at, whole.writes - 1) << "between the commits alone";
        EXPECT_EQ(rowsOf(now, "kestrava"), rowsOf(whole.before, "kestrava"));
    } else if (!anyAfter) {
        routine();
        const State again = StateOf(agency, false);
        for (const char* name : kDatabases) {
            EXPECT_TRUE(rowsOf(again, name) == rowsOf(whole.afterPlain, name))
                << name << " after it was run again,\n"
                << Difference(rowsOf(whole.afterPlain, name), rowsOf(again, name));
        }
    }
}

}  // namespace

void SweepFaults(const FaultCase& fault) {
    const Whole whole = RunWhole(fault);
    ASSERT_GT(whole.writes, 1) << fault.name;
    // An agency on the server takes a tenth of a second to make.
    const long most = std::getenv("KV_TEST_ENGINE") != nullptr ? 5 : 40;
    const long step = std::max(1L, whole.writes / most);
    for (long at = 1; at <= whole.writes; at += step) {
        RunFaulty(fault, whole, at, kFull);
        if (!fault.skipsLockedRows) {
            RunFaulty(fault, whole, at, kLocked);
        }
    }
    RunFaulty(fault, whole, whole.writes, kLost);
    RunFaulty(fault, whole, (whole.writes + 1) / 2, kLost);
}

}  // namespace kv::test
