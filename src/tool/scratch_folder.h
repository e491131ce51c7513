#pragma once
#include <filesystem>

namespace kv::tool {

/// A folder of its own that goes with the object, with all that it holds.
class ScratchFolder {
  public:
    /// Made below `parent`, the system's temporary folder by default. Throws std::system_error.
    explicit ScratchFolder(const std::filesystem::path& parent = {});
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    const std::filesystem::path& Path() const { return path_; }

  private:
    std::filesystem::path path_;
};

}  // namespace kv::tool
