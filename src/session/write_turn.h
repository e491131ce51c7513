#pragma once
#include <filesystem>

#include "base/platform.h"

namespace kv {

/// The turn to read, change and replace a file that other programs write too: without it the key that another wrote in
/// between would be lost with the old content. Makes the file's folder and a lock file beside it. Throws std::system_error.
class WriteTurn {
 public:
    explicit WriteTurn(const std::filesystem::path& file) : lock_(LockFileOf(file), file) { lock_.Lock(0); }
    WriteTurn(const WriteTurn&) = delete;
    WriteTurn& operator=(const WriteTurn&) = delete;

 private:
    static std::filesystem::path LockFileOf(const std::filesystem::path& file) {
        if (file.has_parent_path())
            std::filesystem::create_directories(file.parent_path());
        return std::filesystem::path(file) += ".lck";
    }

    ByteLocks lock_;
};

}  // namespace kv
