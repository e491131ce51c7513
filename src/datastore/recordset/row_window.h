#pragma once
#include <cstdint>
#include <vector>

#include "datastore/engine/compiler.h"
#include "datastore/engine/connection.h"
#include "datastore/recordset/key_list.h"

namespace kv {

/// The batch of rows around the current one. It reads ahead in the direction of the walk, more with each
/// batch, and one row at a time where the caller jumps or the data change between two steps.
class RowWindow {
  public:
    RowWindow(Connection& connection, const CompiledSelect& query) : connection_(connection), query_(query) {}

    // Filling at the opening, from the rows' own query.
    void StartFill(std::int64_t stamp);
    /// Takes the cursor's row; its fields stand behind that many keys.
    void AddRow(const Cursor& cursor, std::size_t keys);
    /// From now on the rows stay as they are: a snapshot, or a query whose rows can't be found again.
    void Freeze() { frozen_ = true; }

    std::size_t First() const { return first_; }
    std::size_t Count() const { return count_; }
    void Drop();

    /// The field of the member at that position as it is now; throws 3167 where the row was deleted.
    Value At(std::size_t position, std::size_t field, const KeyList& keys, std::span<const Value> literals);
    /// Whether the row still is there.
    bool Exists(std::size_t position, const KeyList& keys, std::span<const Value> literals);

  private:
    void Ensure(std::size_t position, const KeyList& keys, std::span<const Value> literals);
    void Load(std::size_t first, std::size_t count, const KeyList& keys, std::span<const Value> literals);
    bool LoadRange(const KeyList& keys, std::span<const Value> literals);
    void LoadOneByOne(const KeyList& keys, std::span<const Value> literals);
    void AddMissing();

    Connection& connection_;
    const CompiledSelect& query_;
    RowBlock block_;
    std::vector<bool> missing_;
    std::size_t first_ = 0;
    std::size_t count_ = 0;
    std::size_t batch_ = 1;
    std::int64_t stamp_ = 0;
    bool frozen_ = false;
};

}  // namespace kv
