#pragma once
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "datastore/engine/compiler.h"
#include "datastore/engine/connection.h"
#include "datastore/recordset/edit_buffer.h"
#include "datastore/recordset/finder.h"
#include "datastore/recordset/key_list.h"
#include "datastore/recordset/row_window.h"

namespace kv {

/// The rows of a recordset: which they are, fixed at the opening, and their values as they are now.
///
/// A whole table is opened by noting its last key: its keys are read as the walk comes to them, or all at
/// once when a place among them is asked for, and rows added later lie behind the last key and stay out. All
/// other queries are run to their end at the opening.
class Members {
  public:
    /// `snapshot`: the values are those of the opening, too.
    Members(Connection& connection, std::shared_ptr<const CompiledSelect> query, std::vector<Value> literals,
            bool snapshot);
    Members(const Members& other);
    Members& operator=(const Members&) = delete;

    void Fetch();
    bool Any() const { return keys_.Size() > 0; }
    bool Has(std::size_t position);
    std::size_t Count();
    /// All keys; what searches and additions need.
    const KeyList& All();
    std::span<const RowKey> Key(std::size_t position) const { return keys_.At(position); }

    Value At(std::size_t position, std::size_t field) { return window_.At(position, field, keys_); }
    bool Exists(std::size_t position) { return window_.Exists(position, keys_); }
    /// The field is at hand with the rows that were read.
    bool Knows(std::size_t field) const { return window_.Knows(field); }
    bool IsFresh(std::size_t position) const { return window_.IsFresh(position); }
    /// The row was just written through this recordset and its values were at hand: what was written stands
    /// in their place, and nothing is read again.
    void NoteWritten(std::size_t position, const EditBuffer& edit) { window_.NoteWritten(position, edit); }
    /// The values are read anew at the next look.
    void DropValues() { window_.Drop(); }

    void Add(RowKey key);
    void Remove(std::size_t position);
    /// The first match at or behind the position.
    std::optional<std::size_t> Find(std::string_view criteria, std::size_t from);

  private:
    void OpenWholeTable(std::int64_t stamp, const std::shared_ptr<const FieldSubset>& fields);
    void Extend(const std::shared_ptr<const FieldSubset>& fields);
    std::unique_ptr<Cursor> Query(const EngineSql& sql, std::span<const Value> given = {});

    Connection& connection_;
    std::shared_ptr<const CompiledSelect> query_;
    std::shared_ptr<const std::vector<Value>> literals_;
    bool frozen_;
    KeyList keys_;
    RowWindow window_;
    Finder finder_;

    // Of a whole table that is not read to its end yet.
    bool complete_ = true;
    RowKey lastRead_ = kNoRow;
    RowKey lastKey_ = kNoRow;
    std::int64_t openedAt_ = 0;
    std::optional<std::size_t> counted_;
};

}  // namespace kv
