#include "datastore/recordset/recordset_state.h"

#include <fmt/format.h>

#include "datastore/faults.h"

namespace kv {

RecordsetState::RecordsetState(std::shared_ptr<Connection> connection, Ready<CompiledSelect> query,
                               RecordsetType type)
    : connection_(std::move(connection)),
      query_(std::move(query.statement)),
      readOnly_(type == RecordsetType::Snapshot || !query_->Target()),
      members_(*connection_, query_, std::move(query.literals), type == RecordsetType::Snapshot),
      edit_(*connection_) {
    Requery();
}

RecordsetState::RecordsetState(const RecordsetState& other)
    : connection_(other.connection_),
      query_(other.query_),
      readOnly_(other.readOnly_),
      members_(other.members_),
      edit_(*connection_),
      place_(members_.Any() ? Place::At : Place::None) {}

std::unique_ptr<RecordsetState> RecordsetState::Clone() const {
    return std::unique_ptr<RecordsetState>(new RecordsetState(*this));
}

void RecordsetState::Requery() {
    edit_.Cancel();
    members_.Fetch();
    MoveTo(members_.Any() ? Place::At : Place::None, 0);
}

// ----------------------------------------------------------------------------------------------------------
// moves

void RecordsetState::MoveTo(Place place, std::size_t at) {
    edit_.Cancel();
    place_ = place;
    at_ = at;
    deleted_ = false;
}

void RecordsetState::MoveFirst() {
    if (!members_.Any())
        throw faults::NoCurrentRecord();
    MoveTo(Place::At, 0);
}

void RecordsetState::MoveLast() {
    if (!members_.Any())
        throw faults::NoCurrentRecord();
    MoveTo(Place::At, members_.All().Size() - 1);
}

void RecordsetState::MoveNext() {
    if (place_ == Place::Before && members_.Any())
        return MoveTo(Place::At, 0);
    if (place_ != Place::At)
        throw faults::NoCurrentRecord();
    const std::size_t next = deleted_ ? at_ : at_ + 1;
    if (members_.Has(next))
        MoveTo(Place::At, next);
    else
        MoveTo(members_.Any() ? Place::Behind : Place::None, 0);
}

void RecordsetState::MovePrevious() {
    if (place_ == Place::Behind && members_.Any())
        return MoveTo(Place::At, members_.All().Size() - 1);
    if (place_ != Place::At)
        throw faults::NoCurrentRecord();
    if (at_ > 0)
        MoveTo(Place::At, at_ - 1);
    else
        MoveTo(members_.Any() ? Place::Before : Place::None, 0);
}

long RecordsetState::Position() const {
    return place_ == Place::At && !deleted_ ? static_cast<long>(at_) : -1;
}

void RecordsetState::SetPosition(long position) {
    if (position < 0 || !members_.Has(static_cast<std::size_t>(position)))
        throw faults::NoCurrentRecord();
    MoveTo(Place::At, static_cast<std::size_t>(position));
}

void RecordsetState::Find(std::string_view criteria, bool behindCurrent) {
    std::size_t from = 0;
    if (behindCurrent && place_ == Place::At)
        from = deleted_ ? at_ : at_ + 1;
    else if (behindCurrent && place_ == Place::Behind)
        from = members_.All().Size();
    const auto found = members_.Find(criteria, from);
    noMatch_ = !found;
    if (found)
        MoveTo(Place::At, *found);
    else
        edit_.Cancel();
}

void RecordsetState::MoveToLastModified() {
    const auto position = lastModified_ ? members_.All().Find({&*lastModified_, 1}) : std::nullopt;
    if (!position)
        throw faults::NoCurrentRecord();
    MoveTo(Place::At, *position);
}

// ---------------------------------------------------------------------------------------------------------
// values

std::size_t RecordsetState::Current() const {
    if (place_ != Place::At)
        throw faults::NoCurrentRecord();
    if (deleted_)
        throw faults::RecordDeleted();
    return at_;
}

/// What tells later whether another seat changed the row. While the lock is held only a lost connection can
/// let another one in; what was read of the row already is enough then, since a field that nobody here has
/// looked at makes no difference to the change.
KnownFields RecordsetState::StoredRow() {
    KnownFields row;
    for (std::size_t field = 0; field < Fields().size(); ++field)
        if (!edit_.LockedFromStart() || members_.Knows(field))
            row.emplace_back(field, members_.At(Current(), field));
    return row;
}

KnownFields RecordsetState::SameFields(const KnownFields& fields) {
    KnownFields row;
    for (const auto& [field, value] : fields)
        row.emplace_back(field, members_.At(Current(), field));
    return row;
}

Value RecordsetState::GetPending(std::size_t field) {
    if (edit_.Mode() == EditState::None)
        return members_.At(Current(), field);
    const int column = query_->TargetColumn(field);
    if (const Value* pending = column < 0 ? nullptr : edit_.Find(static_cast<std::size_t>(column)))
        return *pending;
    return edit_.Mode() == EditState::Add ? Value() : members_.At(Current(), field);
}

void RecordsetState::Set(std::size_t field, Value&& value) {
    if (edit_.Mode() == EditState::None)
        throw EngineError(engine_error::kUpdateWithoutEdit, "Update or CancelUpdate without AddNew or Edit.");
    const int column = query_->TargetColumn(field);
    if (column < 0)
        throw EngineError(engine_error::kFieldNotUpdatable,
                          fmt::format("Field '{}' cannot be updated.", Fields()[field].name));
    edit_.Set(static_cast<std::size_t>(column), value);
}

// --------------------------------------------------------------------------------------------------------
// changes

const TableInfo& RecordsetState::WritableTarget() const {
    if (readOnly_)
        throw faults::ReadOnly();
    return *query_->Target();
}

void RecordsetState::AddNew() {
    const TableInfo& target = WritableTarget();
    members_.All();  // the new row comes behind all of them
    edit_.BeginAdd(target);
}

void RecordsetState::Edit() {
    const TableInfo& target = WritableTarget();
    const std::size_t at = Current();
    try {
        edit_.BeginEdit(target, members_.Key(at)[0]);
        if (!members_.Exists(at))
            throw faults::RecordDeleted();
        // Where the lock may be lost with a connection, the row is compared then, too.
        if (!edit_.LockedFromStart() || connection_->IsRemote())
            edit_.SetOriginal(StoredRow());
    } catch (...) {
        edit_.Cancel();
        throw;
    }
}

std::string RecordsetState::RowHolder() {
    return connection_->RowHolder(WritableTarget(), members_.Key(Current())[0]);
}

HeldEdit RecordsetState::HoldEdit() {
    HeldEdit held{edit_.Mode(), Position(), members_.Count(), {}};
    for (std::size_t field = 0; field < Fields().size() && held.mode != EditState::None; ++field) {
        const int column = query_->TargetColumn(field);
        const Value* value = column < 0 ? nullptr : edit_.Find(static_cast<std::size_t>(column));
        if (value != nullptr && !edit_.IsCounter(static_cast<std::size_t>(column)))
            held.fields.emplace_back(field, *value);
    }
    return held;
}

void RecordsetState::ResumeEdit(const HeldEdit& held) {
    if (held.mode == EditState::None)
        return;
    // Rows that were added and rolled back are none of the members.
    while (members_.Count() > held.rows)
        members_.Remove(members_.All().Size() - 1);
    lastModified_.reset();
    members_.DropValues();
    if (held.position >= 0)
        SetPosition(held.position);
    else
        MoveTo(members_.Any() ? Place::At : Place::None, 0);
    if (held.mode == EditState::Add)
        AddNew();
    else
        Edit();
    for (const auto& [field, value] : held.fields)
        Set(field, Value(value));
}

void RecordsetState::Update() {
    switch (edit_.Mode()) {
        case EditState::None:
            throw EngineError(engine_error::kUpdateWithoutEdit,
                              "Update or CancelUpdate without AddNew or Edit.");
        case EditState::Add:
            return UpdateAdded();
        case EditState::InProgress:
            return UpdateEdited();
    }
}

void RecordsetState::UpdateAdded() {
    const RowKey key = edit_.WriteAdded();
    members_.Add(key);
    lastModified_ = key;
    edit_.Finish();
}

void RecordsetState::UpdateEdited() {
    if (!edit_.Lock())
        throw faults::LockedByOther();
    const RowKey key = members_.Key(at_)[0];
    if (edit_.LockedFromStart()) {
        const bool seen = connection_->IsRemote() && members_.IsFresh(at_);
        if (!edit_.WriteEdited())
            throw faults::RecordDeleted();
        if (seen)
            members_.NoteWritten(at_, edit_);
    } else {
        WriteStep step(*connection_);
        CheckNotChanged();
        if (!edit_.WriteEdited())
            throw faults::RecordDeleted();
        step.Finish();
    }
    lastModified_ = key;
    edit_.Finish();
}

/// The edit began while another held the row. A second Update, after the operator was told, goes through.
void RecordsetState::CheckNotChanged() {
    members_.DropValues();
    KnownFields now = SameFields(edit_.Original());
    if (now == edit_.Original())
        return;
    edit_.SetOriginal(std::move(now));
    throw faults::ChangedMeanwhile();
}

void RecordsetState::Delete() {
    const TableInfo& target = WritableTarget();
    const std::size_t at = Current();
    const RowKey key = members_.Key(at)[0];
    bool deleted = false;
    try {
        edit_.BeginEdit(target, key);
        if (!edit_.LockedFromStart())
            throw faults::LockedByOther();
        connection_->AboutToWrite();
        deleted = connection_->DeleteRow(target, key);
    } catch (...) {
        edit_.Cancel();
        throw;
    }
    edit_.Cancel();
    if (!deleted)
        throw faults::RecordDeleted();
    members_.Remove(at);
    deleted_ = true;
}

}  // namespace kv
