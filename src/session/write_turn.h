#pragma once
#include <filesystem>

#include "base/platform.h"

namespace kv {

/// The turn to read, change and replace a file that other programs write too: without it the key that another
/// wrote in between would be lost with the old content. Makes a lock file beside it. Throws
/// std::system_error.
class WriteTurn {
  public:
    explicit WriteTurn(const std::filesystem::path& file)
        : lock_(std::filesystem::path(file) += ".lck", file) {
        lock_.Lock(0);
    }
    WriteTurn(const WriteTurn&) = delete;
    WriteTurn& operator=(const WriteTurn&) = delete;

  private:
    ByteLocks lock_;
};

}  // namespace kv
