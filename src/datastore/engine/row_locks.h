#pragma once
#include <filesystem>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "base/platform.h"
#include "datastore/engine/row_block.h"

namespace kv {

/// Rows taken for editing, known to all programs through the bytes of a file beside the database. A program's
/// end, a killed one's too, frees its rows. The file is made by the first edit.
class RowLocks {
  public:
    explicit RowLocks(std::filesystem::path file) : file_(std::move(file)) {}

    bool TryLock(std::string_view table, RowKey key, const void* owner);
    void Unlock(std::string_view table, RowKey key, const void* owner);

  private:
    static std::uint64_t ByteOf(std::string_view table, RowKey key);

    std::filesystem::path file_;
    std::optional<ByteLocks> bytes_;
    /// The system's locks tell programs apart, but not two edits of this one.
    std::unordered_map<std::uint64_t, const void*> owners_;
};

}  // namespace kv
