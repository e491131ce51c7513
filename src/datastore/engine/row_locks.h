#pragma once
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
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
    /// Lets whoever finds the row taken know the seat that has it.
    virtual void Sign(std::uint64_t /*row*/, std::string_view /*seat*/) {}
    /// The seat of another program that has the row; empty where nobody has it, or it did not sign.
    virtual std::string Holder(std::uint64_t row) = 0;
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
    /// The seat as others are to be told of it; without one, edits are not signed.
    void SetSeat(std::string seat) { seat_ = std::move(seat); }
    /// An edit that waits for the operator says whose it is.
    void Sign(std::string_view table, RowKey key);
    /// The seat that has the row, this one included; empty where nobody has it or none has signed.
    std::string Holder(std::string_view table, RowKey key) const;
    /// Under which the board knows the row; the same in every program.
    static std::uint64_t NumberOf(std::string_view table, RowKey key);
    /// The board has let all rows go by itself.
    void Forget() { owners_.clear(); }

  private:
    std::unique_ptr<LockBoard> board_;
    std::string seat_;
    /// The board tells programs apart, but not two edits of this one.
    std::unordered_map<std::uint64_t, const void*> owners_;
};

}  // namespace kv
