#pragma once
#include <memory>
#include <string>

#include "base/platform.h"
#include "session/session.h"

namespace kv {

/// A private working database in the user's temporary folder, made afresh from the template "tempassign.mdb"
/// of the data folder. One screen at a time holds it; it is free again when its holder ends.
class WorkingCopy {
  public:
    /// `name` is "Tempcal.mdb" or "tempsch.mdb". Nothing where another holds it. Throws EngineError or
    /// std::system_error where it can't be made.
    static std::unique_ptr<WorkingCopy> Make(Session& session, const std::string& name);
    Database& Data() { return *database_; }

  private:
    explicit WorkingCopy(const std::filesystem::path& lock) : lock_(lock) {}
    ByteLocks lock_;
    DatabasePtr database_;
};

}  // namespace kv
