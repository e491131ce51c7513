#pragma once
#include <cstdint>
#include <filesystem>
#include <stdexcept>

#include "session/session.h"

namespace kv {

/// The greatest number of clients or of caregivers: ordinary client ids end at 99899.
inline constexpr long kMostDemoPeople = 90000;

/// How large an agency to make up. The same numbers, seed and moment give the same rows.
struct DemoOptions {
    long clients = 150;  ///< ordinary clients; the templates come on top
    long caregivers = 120;
    std::uint64_t seed = 20;
};

/// What was made. Clients without templates; schedules are the rows of sch_day, declared absences included.
struct DemoCounts {
    long clients = 0;
    long caregivers = 0;
    long authorizations = 0;
    long assignments = 0;
    long schedules = 0;
};

/// The folder or the numbers can't be used; nothing was changed. The words are for the operator.
class DemoRefused : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Fills the databases of a data folder with a made-up agency of half a year, up to the planning horizon from
/// the clock's today on; databases that are missing are made first. Each database is filled whole or not at
/// all. Throws DemoRefused for a folder that already holds clients or caregivers and for numbers outside 1 to
/// 90000, EngineError from the store.
///
/// The journal of trans.mdb stays empty, since only a workstation on the road writes it, and so does the
/// template tempassign.mdb.
DemoCounts RunDemo(Workspace& workspace, const std::filesystem::path& folder, const Clock& clock,
                   Progress& progress, const DemoOptions& options);

}  // namespace kv
