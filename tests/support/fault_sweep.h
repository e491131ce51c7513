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
};

/// Runs the routine once whole, then with its writes failing in turn: a row locked by another seat, a lost
/// connection, a full disk. Afterwards each database holds its rows from before or from after, kestrava.mdb
/// never those from after while another one holds those from before, and calling the routine again brings all
/// to what they are after a whole run, counters apart.
void SweepFaults(const FaultCase& fault);

}  // namespace kv::test
