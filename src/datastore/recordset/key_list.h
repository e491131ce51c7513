#pragma once
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "datastore/engine/row_block.h"

namespace kv {

/// The members of a recordset in its order: one key a row, or several where its query joins tables, or none
/// where its rows can't be found again.
class KeyList {
  public:
    explicit KeyList(std::size_t width) : width_(width) {}

    std::size_t Size() const { return size_; }
    std::span<const RowKey> At(std::size_t position) const {
        return {keys_.data() + position * width_, width_};
    }
    RowKey One(std::size_t position) const { return keys_[position]; }
    std::size_t Width() const { return width_; }

    void Clear();
    void Reserve(std::size_t rows) { keys_.reserve(rows * width_); }
    void Add(std::span<const RowKey> key);
    /// So many rows, key behind key.
    void AddAll(std::span<const RowKey> keys, std::size_t rows);
    void Remove(std::size_t position);
    /// Keeps the first so many.
    void Truncate(std::size_t size);
    /// The first position of that key, or nothing for a row that is no member.
    std::optional<std::size_t> Find(std::span<const RowKey> key) const;
    /// Single keys, each above the one before.
    bool Ascending() const { return ascending_; }

  private:
    void BuildOrder() const;
    bool Less(std::span<const RowKey> a, std::span<const RowKey> b) const;

    std::size_t width_;
    std::size_t size_ = 0;
    std::vector<RowKey> keys_;
    bool ascending_ = true;
    /// The positions in the order of their keys, as far as they have been sorted; rows added since are looked
    /// through.
    mutable std::vector<std::uint32_t> byKey_;
};

}  // namespace kv
