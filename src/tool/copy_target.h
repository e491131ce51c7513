#pragma once
#include <filesystem>
#include <memory>
#include <string>

#include "datastore/workspace.h"

namespace kv::tool {

/// Where a copy of an agency's databases goes: it is made beside its place, and only when all of it is there
/// and sound does it take the place of what a fresh `init` left. Given up without Finish it leaves no trace.
class CopyTarget {
  public:
    virtual ~CopyTarget() = default;
    CopyTarget(const CopyTarget&) = delete;
    CopyTarget& operator=(const CopyTarget&) = delete;

    /// Makes ready for the copies; what an interrupted copy left is taken away. Throws Refused where the
    /// target holds rows already, and EngineError where it is in use, another copy's too.
    virtual void Begin() = 0;
    /// Whether that database goes there at all.
    virtual bool Takes(const std::string& name) const = 0;
    /// Where to make the copy of a database.
    virtual DatabasePlace Scratch(const std::string& name) const = 0;
    /// Puts the copies in their place. Nobody has them open. `from`: the data folder that they come from.
    /// Throws as Begin does: somebody may have begun to work there meanwhile.
    virtual void Finish(const std::filesystem::path& from) = 0;

  protected:
    CopyTarget() = default;
};

/// `to`: a data folder, or a connection string of a database server ("host=db dbname=agency",
/// "postgresql://db/agency"). A folder that is there is never taken for a server. Throws Refused for what is
/// neither, and EngineError for a password in the connection string.
std::unique_ptr<CopyTarget> MakeCopyTarget(const std::string& to, const std::filesystem::path& from);

}  // namespace kv::tool
