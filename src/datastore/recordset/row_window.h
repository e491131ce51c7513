#pragma once
#include <algorithm>
#include <cstdint>
#include <vector>

#include "datastore/engine/compiler.h"
#include "datastore/engine/connection.h"
#include "datastore/recordset/edit_buffer.h"
#include "datastore/recordset/key_list.h"

namespace kv {

/// The batch of rows around the current one. It reads ahead in the direction of the walk, more with each
/// batch, and one row at a time where the caller jumps or the data change between two steps.
class RowWindow {
  public:
    RowWindow(Connection& connection, const CompiledSelect& query, const std::vector<Value>& literals);

    /// Empties the window; what is taken next begins at that position, is as of that stamp and has those
    /// fields.
    void Begin(std::size_t first, std::int64_t stamp, std::shared_ptr<const FieldSubset> fields);
    /// Takes up to so many rows of the recordset's own query, values too as long as there is room. How many
    /// there were.
    std::size_t Take(Cursor& cursor, std::size_t most, KeyList& keys);
    /// Lets go the rows from that position on.
    void Truncate(std::size_t position) { count_ = std::min(count_, position - first_); }
    /// How many rows to read for a walk that goes on forward.
    std::size_t GrowBatch();
    /// From now on the rows stay as they are: a snapshot, or a query whose rows can't be found again.
    void Freeze() { frozen_ = true; }
    void Drop() { Begin(0, stamp_, fields_); }

    /// The field of the member at that position as it is now; throws 3167 where the row was deleted.
    Value At(std::size_t position, std::size_t field, const KeyList& keys) {
        if (!IsFresh(position))
            Load(position, keys);
        if (!slots_[field].ready)
            Prepare(position, field, keys);
        if (anyMissing_ && missing_[position - first_])
            FailDeleted();
        const Slot& slot = slots_[field];
        return block_.At((position - first_) * width_ + slot.cell, slot.type);
    }
    /// Whether the row still is there.
    bool Exists(std::size_t position, const KeyList& keys);
    bool Knows(std::size_t field) const { return fields_->CellOf(field) >= 0; }
    bool IsFresh(std::size_t position) const {
        return position - first_ < count_ && (frozen_ || connection_.Stamp(query_.Watch()) == stamp_);
    }
    void NoteWritten(std::size_t position, const EditBuffer& edit);

  private:
    void Load(std::size_t position, const KeyList& keys);
    /// Notes that the field is read, and brings all of the row where the batch does not have it.
    void Prepare(std::size_t position, std::size_t field, const KeyList& keys);
    void UseFields(std::shared_ptr<const FieldSubset> fields);
    void LoadRows(std::size_t first, std::size_t end, std::int64_t stamp, const KeyList& keys);
    bool LoadRange(const KeyList& keys);
    void LoadOneByOne(const KeyList& keys);
    void AddMissing(std::size_t row);
    [[noreturn]] static void FailDeleted();

    Connection& connection_;
    const CompiledSelect& query_;
    const std::vector<Value>& literals_;
    std::shared_ptr<const FieldSubset> fields_;
    /// Where a field stands in the block.
    struct Slot {
        std::uint32_t cell = 0;
        ColumnType type = ColumnType::Text;
        bool ready = false;  ///< the batch has it, and that it is read was noted
    };
    std::vector<Slot> slots_;
    std::size_t width_ = 0;
    RowBlock block_;
    std::size_t first_ = 0;
    std::size_t count_ = 0;
    std::vector<bool> missing_;  // of the rows in the window, filled where one is missing
    bool anyMissing_ = false;
    std::size_t batch_ = 1;
    std::int64_t stamp_ = 0;
    bool frozen_ = false;
};

}  // namespace kv
