#pragma once
#include <functional>
#include <string>

#include "support/test_agency.h"

namespace kv::test {

/// A routine with more than one write, and the rows that it is run on.
struct FaultCase {
    std::string name;
    /// Adds the rows.
    std::function<void(TestAgency&)> prepare;
    /// Opens what the routine works on and answers the routine itself. It scripts its answers each time that
    /// it is called, and is called again after a failure, on what the failure left open.
    std::function<std::function<void()>(TestAgency&)> open;
    /// It makes visits, and by its rules goes on without one whose row is locked.
    bool skipsLockedRows = false;
};

/// Runs the routine once whole, then with its writes failing in turn: one row locked by another seat; a lost
/// connection or a full disk from that write on. Afterwards each database holds its rows from before or from
/// after. A failure between the commits may leave kestrava.mdb alone behind; otherwise calling the routine
/// again brings all to what they are after a whole run, counters apart.
void SweepFaults(const FaultCase& fault);

}  // namespace kv::test
