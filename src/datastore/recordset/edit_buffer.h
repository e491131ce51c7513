#pragma once
#include <optional>
#include <vector>

#include "datastore/engine/connection.h"
#include "datastore/recordset.h"

namespace kv {

/// Fields of a row by their places in the query.
using KnownFields = std::vector<std::pair<std::size_t, Value>>;

/// The row being added or changed: what was set and not written yet. It holds the lock of a row in edit.
class EditBuffer {
  public:
    explicit EditBuffer(Connection& connection) : connection_(connection) {}
    ~EditBuffer() { Cancel(); }
    EditBuffer(const EditBuffer&) = delete;
    EditBuffer& operator=(const EditBuffer&) = delete;

    EditState Mode() const { return mode_; }
    void BeginAdd(const TableInfo& table);
    /// `values`: the row's fields at the beginning, to tell whether another changed them while it was not
    /// locked.
    void BeginEdit(const TableInfo& table, RowKey key);
    void SetOriginal(KnownFields fields) { original_ = std::move(fields); }
    const KnownFields& Original() const { return original_; }
    void Cancel() {
        if (mode_ != EditState::None)
            Abandon();
    }

    /// True once the row's lock is held; tries again where it was not, or was lost with the connection.
    bool Lock();
    /// The row's lock is held.
    bool Locked() const { return locked_; }
    /// The lock was there all the time, so nobody else can have edited the row.
    bool LockedFromStart() const { return lockedFromStart_ && epoch_ == connection_.LockEpoch(); }

    /// The column's value of the row being added or changed, where it has one here.
    const Value* Find(std::size_t column) const;
    void Set(std::size_t column, const Value& value);
    bool IsCounter(std::size_t column) const { return table_->columns[column].counter; }

    /// Writes what was set. Returns the added row's key.
    RowKey WriteAdded();
    /// False when there was no such row any more.
    bool WriteEdited();
    void Finish();

  private:
    void Abandon();
    void Unlock();

    Connection& connection_;
    EditState mode_ = EditState::None;
    const TableInfo* table_ = nullptr;
    RowKey key_ = kNoRow;
    bool locked_ = false;
    bool lockedFromStart_ = false;
    std::int64_t epoch_ = 0;
    std::optional<std::int64_t> counter_;  // handed out by the store for the row being added
    bool counterTried_ = false;            // a row was to be written with it
    bool counterInTransaction_ = false;
    std::int64_t rolledBackThen_ = 0;
    std::vector<std::optional<Value>> values_;
    KnownFields original_;
};

}  // namespace kv
