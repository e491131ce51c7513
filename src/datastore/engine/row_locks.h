#pragma once
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string_view>
#include <unordered_map>

#include "datastore/engine/row_block.h"

namespace kv {

/// Where all programs see which rows are taken, each row under a number. A program's end, a killed one's too,
/// frees what it took.
class LockBoard {
  public:
    virtual ~LockBoard() = default;
    virtual bool TryLock(std::uint64_t row) = 0;
    virtual void Unlock(std::uint64_t row) = 0;
};

/// The bytes of a file beside the database. The file is made by the first edit.
std::unique_ptr<LockBoard> MakeFileLockBoard(std::filesystem::path file);

/// Rows taken for editing.
class RowLocks {
  public:
    explicit RowLocks(std::unique_ptr<LockBoard> board) : board_(std::move(board)) {}

    bool TryLock(std::string_view table, RowKey key, const void* owner);
    void Unlock(std::string_view table, RowKey key, const void* owner);
    bool Holds(std::string_view table, RowKey key, const void* owner) const;
    /// Whether any edit of this program has it.
    bool HoldsAny(std::string_view table, RowKey key) const { return owners_.contains(NumberOf(table, key)); }
    bool Any() const { return !owners_.empty(); }
    /// Under which the board knows the row; the same in every program.
    static std::uint64_t NumberOf(std::string_view table, RowKey key);
    /// The board has let all rows go by itself.
    void Forget() { owners_.clear(); }

  private:
    std::unique_ptr<LockBoard> board_;
    /// The board tells programs apart, but not two edits of this one.
    std::unordered_map<std::uint64_t, const void*> owners_;
};

}  // namespace kv
