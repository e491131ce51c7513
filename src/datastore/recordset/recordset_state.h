#pragma once
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "datastore/engine/compiler.h"
#include "datastore/engine/connection.h"
#include "datastore/recordset.h"
#include "datastore/recordset/edit_buffer.h"
#include "datastore/recordset/members.h"

namespace kv {

/// What stands behind an open Recordset: the members' keys, the place among them, the rows around it and the
/// row in edit.
class RecordsetState {
  public:
    RecordsetState(std::shared_ptr<Connection> connection, Ready<CompiledSelect> query, RecordsetType type);
    RecordsetState& operator=(const RecordsetState&) = delete;
    /// The same members, on the first of them.
    std::unique_ptr<RecordsetState> Clone() const;

    bool Eof() const { return place_ == Place::Behind || !members_.Any() || place_ == Place::None; }
    bool Bof() const { return place_ == Place::Before || !members_.Any() || place_ == Place::None; }
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    long Count() { return static_cast<long>(members_.Count()); }
    long Position() const;
    void SetPosition(long position);
    void Find(std::string_view criteria, bool behindCurrent);
    bool NoMatch() const { return noMatch_; }

    void AddNew();
    void Edit();
    void Update();
    void CancelUpdate() { edit_.Cancel(); }
    EditState EditMode() const { return edit_.Mode(); }
    bool HoldsRow() const { return edit_.Mode() == EditState::InProgress && edit_.Locked(); }
    std::string RowHolder();
    HeldEdit HoldEdit();
    void ResumeEdit(const HeldEdit& held);
    void Delete();
    void MoveToLastModified();
    void Requery();
    void Reread() { members_.DropValues(); }

    const std::vector<FieldInfo>& Fields() const { return query_->Fields(); }
    const NameIndex& Names() const { return query_->Names(); }
    Value Get(std::size_t field) {
        if (edit_.Mode() == EditState::None && place_ == Place::At && !deleted_)
            return members_.At(at_, field);
        return GetPending(field);
    }
    void Set(std::size_t field, Value&& value);

  private:
    enum class Place { None, Before, At, Behind };

    RecordsetState(const RecordsetState& other);
    Value GetPending(std::size_t field);
    void MoveTo(Place place, std::size_t at);
    std::size_t Current() const;
    KnownFields StoredRow();
    KnownFields SameFields(const KnownFields& fields);
    const TableInfo& WritableTarget() const;
    void UpdateAdded();
    void UpdateEdited();
    void CheckNotChanged();

    std::shared_ptr<Connection> connection_;
    std::shared_ptr<const CompiledSelect> query_;
    bool readOnly_;
    Members members_;
    EditBuffer edit_;

    Place place_ = Place::None;
    std::size_t at_ = 0;
    bool deleted_ = false;  // the current row was deleted here; at_ is where the next one stands
    bool noMatch_ = false;
    std::optional<RowKey> lastModified_;
};

}  // namespace kv
