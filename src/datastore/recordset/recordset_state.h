#pragma once
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "datastore/engine/compiler.h"
#include "datastore/engine/connection.h"
#include "datastore/recordset.h"
#include "datastore/recordset/edit_buffer.h"
#include "datastore/recordset/finder.h"
#include "datastore/recordset/key_list.h"
#include "datastore/recordset/row_window.h"

namespace kv {

/// What stands behind an open Recordset: the members' keys, the place among them, the rows around it and the
/// row in edit.
class RecordsetState {
  public:
    RecordsetState(std::shared_ptr<Connection> connection, Ready<CompiledSelect> query, RecordsetType type);
    RecordsetState& operator=(const RecordsetState&) = delete;
    /// The same members, on the first of them.
    std::unique_ptr<RecordsetState> Clone() const;

    bool Eof() const { return place_ == Place::Behind || Count() == 0 || place_ == Place::None; }
    bool Bof() const { return place_ == Place::Before || Count() == 0 || place_ == Place::None; }
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    long Count() const { return static_cast<long>(count_); }
    long Position() const;
    void SetPosition(long position);
    void Find(std::string_view criteria, bool behindCurrent);
    bool NoMatch() const { return noMatch_; }

    void AddNew();
    void Edit();
    void Update();
    void CancelUpdate() { edit_.Cancel(); }
    EditState EditMode() const { return edit_.Mode(); }
    void Delete();
    void MoveToLastModified();
    void Requery();

    const std::vector<FieldInfo>& Fields() const { return query_->Fields(); }
    const NameIndex& Names() const { return query_->Names(); }
    Value Get(std::size_t field);
    void Set(std::size_t field, const Value& value);

  private:
    enum class Place { None, Before, At, Behind };

    RecordsetState(const RecordsetState& other);
    void Fetch();
    void FetchAll();
    bool FetchFirstRows();
    void FetchKeys();
    void MoveTo(Place place, std::size_t at);
    std::size_t Current() const;
    Value StoredField(std::size_t field);
    std::vector<Value> StoredRow();
    const TableInfo& WritableTarget() const;
    void UpdateAdded();
    void UpdateEdited();
    void CheckNotChanged();

    std::shared_ptr<Connection> connection_;
    std::shared_ptr<const CompiledSelect> query_;
    std::vector<Value> literals_;
    bool snapshot_;

    KeyList keys_;
    std::size_t count_ = 0;
    RowWindow window_;
    Finder finder_;
    EditBuffer edit_;

    Place place_ = Place::None;
    std::size_t at_ = 0;
    bool deleted_ = false;  // the current row was deleted here; at_ is where the next one stands
    bool noMatch_ = false;
    std::optional<RowKey> lastModified_;
};

}  // namespace kv
