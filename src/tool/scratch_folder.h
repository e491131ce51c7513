#pragma once
#include <filesystem>
#include <optional>

#include "base/platform.h"

namespace kv::tool {

/// A folder of its own that goes with the object, with all that it holds. That of a program that was killed
/// stays, but other programs can tell it from one at work.
class ScratchFolder {
  public:
    /// Made below `parent`, the system's temporary folder by default. Throws std::system_error.
    explicit ScratchFolder(const std::filesystem::path& parent = {});
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    const std::filesystem::path& Path() const { return path_; }
    /// Takes away those that killed programs left beside this one. True where another program is at work in
    /// one; of two that ask at once at least one is told so.
    bool ClearBeside() const;

  private:
    std::filesystem::path path_;
    std::optional<ByteLocks> atWork_;
};

}  // namespace kv::tool
