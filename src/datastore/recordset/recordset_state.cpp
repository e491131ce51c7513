#include "datastore/recordset/recordset_state.h"

#include <fmt/format.h>

#include "datastore/faults.h"

namespace kv {

using Form = CompiledSelect::Form;

RecordsetState::RecordsetState(std::shared_ptr<Connection> connection, Ready<CompiledSelect> query,
                               RecordsetType type)
    : connection_(std::move(connection)),
      query_(std::move(query.statement)),
      literals_(std::move(query.literals)),
      snapshot_(type == RecordsetType::Snapshot || !query_->Keyed()),
      keys_(query_->KeyCount()),
      window_(*connection_, *query_),
      finder_(*connection_, *query_),
      edit_(*connection_) {
    if (snapshot_)
        window_.Freeze();
    Fetch();
}

RecordsetState::RecordsetState(const RecordsetState& other)
    : connection_(other.connection_),
      query_(other.query_),
      literals_(other.literals_),
      snapshot_(other.snapshot_),
      keys_(other.keys_),
      count_(other.count_),
      window_(other.window_),
      finder_(other.finder_),
      edit_(*connection_),
      place_(count_ > 0 ? Place::At : Place::None) {}

std::unique_ptr<RecordsetState> RecordsetState::Clone() const {
    return std::unique_ptr<RecordsetState>(new RecordsetState(*this));
}

// -------------------------------------------------------------------------------------------------------
// members

void RecordsetState::Fetch() {
    const std::int64_t stamp = connection_->Stamp();
    keys_.Clear();
    window_.StartFill(stamp);
    finder_.Opened(stamp);
    if (snapshot_)
        FetchAll();
    else if (query_->large || !FetchFirstRows())
        FetchKeys();
    query_->large = count_ > static_cast<std::size_t>(CompiledSelect::kFirstRows);
    MoveTo(count_ > 0 ? Place::At : Place::None, 0);
}

/// Every row with its values, which then stay.
void RecordsetState::FetchAll() {
    const EngineSql& sql = query_->Sql(query_->Keyed() ? Form::KeysAndFields : Form::Fields);
    const auto cursor = connection_->Query(sql.text, ParameterValues(sql, literals_, {}, connection_->clock));
    std::vector<RowKey> key(keys_.Width());
    for (count_ = 0; cursor->Next(); ++count_) {
        for (std::size_t i = 0; i < key.size(); ++i)
            key[i] = cursor->Key(static_cast<int>(i));
        keys_.Add(key);
        window_.AddRow(*cursor, key.size());
    }
}

/// Nearly all lists are short, and one query then fetches keys and values. False when there are more rows.
bool RecordsetState::FetchFirstRows() {
    const EngineSql& sql = query_->Sql(Form::FirstRows);
    const auto cursor = connection_->Query(sql.text, ParameterValues(sql, literals_, {}, connection_->clock));
    std::vector<RowKey> key(keys_.Width());
    for (count_ = 0; cursor->Next(); ++count_) {
        if (count_ == static_cast<std::size_t>(CompiledSelect::kFirstRows))
            return false;
        for (std::size_t i = 0; i < key.size(); ++i)
            key[i] = cursor->Key(static_cast<int>(i));
        keys_.Add(key);
        window_.AddRow(*cursor, key.size());
    }
    return true;
}

void RecordsetState::FetchKeys() {
    keys_.Clear();
    window_.StartFill(connection_->Stamp());
    const EngineSql& sql = query_->Sql(Form::Keys);
    const auto cursor = connection_->Query(sql.text, ParameterValues(sql, literals_, {}, connection_->clock));
    std::vector<RowKey> key(keys_.Width());
    while (cursor->Next()) {
        for (std::size_t i = 0; i < key.size(); ++i)
            key[i] = cursor->Key(static_cast<int>(i));
        keys_.Add(key);
    }
    count_ = keys_.Size();
}

void RecordsetState::Requery() {
    edit_.Cancel();
    Fetch();
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
    if (count_ == 0)
        throw faults::NoCurrentRecord();
    MoveTo(Place::At, 0);
}

void RecordsetState::MoveLast() {
    if (count_ == 0)
        throw faults::NoCurrentRecord();
    MoveTo(Place::At, count_ - 1);
}

void RecordsetState::MoveNext() {
    if (place_ == Place::Before && count_ > 0)
        return MoveTo(Place::At, 0);
    if (place_ != Place::At)
        throw faults::NoCurrentRecord();
    const std::size_t next = deleted_ ? at_ : at_ + 1;
    if (next < count_)
        MoveTo(Place::At, next);
    else
        MoveTo(count_ > 0 ? Place::Behind : Place::None, 0);
}

void RecordsetState::MovePrevious() {
    if (place_ == Place::Behind && count_ > 0)
        return MoveTo(Place::At, count_ - 1);
    if (place_ != Place::At)
        throw faults::NoCurrentRecord();
    if (at_ > 0)
        MoveTo(Place::At, at_ - 1);
    else
        MoveTo(count_ > 0 ? Place::Before : Place::None, 0);
}

long RecordsetState::Position() const {
    return place_ == Place::At && !deleted_ ? static_cast<long>(at_) : -1;
}

void RecordsetState::SetPosition(long position) {
    if (position < 0 || position >= Count())
        throw faults::NoCurrentRecord();
    MoveTo(Place::At, static_cast<std::size_t>(position));
}

void RecordsetState::Find(std::string_view criteria, bool behindCurrent) {
    std::size_t from = 0;
    if (behindCurrent && place_ == Place::At)
        from = deleted_ ? at_ : at_ + 1;
    else if (behindCurrent && place_ == Place::Behind)
        from = count_;
    const auto found = finder_.Find(criteria, from, keys_, literals_);
    noMatch_ = !found;
    if (found)
        MoveTo(Place::At, *found);
    else
        edit_.Cancel();
}

void RecordsetState::MoveToLastModified() {
    const auto position = lastModified_ ? keys_.Find({&*lastModified_, 1}) : std::nullopt;
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

Value RecordsetState::StoredField(std::size_t field) {
    return window_.At(Current(), field, keys_, literals_);
}

std::vector<Value> RecordsetState::StoredRow() {
    std::vector<Value> row(Fields().size());
    for (std::size_t field = 0; field < row.size(); ++field)
        row[field] = StoredField(field);
    return row;
}

Value RecordsetState::Get(std::size_t field) {
    if (edit_.Mode() == EditState::None)
        return StoredField(field);
    const int column = query_->TargetColumn(field);
    if (const Value* pending = column < 0 ? nullptr : edit_.Find(static_cast<std::size_t>(column)))
        return *pending;
    return edit_.Mode() == EditState::Add ? Value() : StoredField(field);
}

void RecordsetState::Set(std::size_t field, const Value& value) {
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
    const TableInfo* target = query_->Target();
    if (snapshot_ || !target)
        throw faults::ReadOnly();
    return *target;
}

void RecordsetState::AddNew() {
    edit_.BeginAdd(WritableTarget());
}

void RecordsetState::Edit() {
    const TableInfo& target = WritableTarget();
    const std::size_t at = Current();
    edit_.BeginEdit(target, keys_.One(at));
    try {
        if (!window_.Exists(at, keys_, literals_))
            throw faults::RecordDeleted();
        if (!edit_.LockedFromStart())
            edit_.SetOriginal(StoredRow());
    } catch (...) {
        edit_.Cancel();
        throw;
    }
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
    keys_.Add({&key, 1});
    count_ = keys_.Size();
    finder_.MembersChanged();
    lastModified_ = key;
    edit_.Finish();
}

void RecordsetState::UpdateEdited() {
    if (!edit_.Lock())
        throw faults::LockedByOther();
    const RowKey key = keys_.One(at_);
    if (edit_.LockedFromStart()) {
        if (!edit_.WriteEdited())
            throw faults::RecordDeleted();
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
    window_.Drop();
    std::vector<Value> now = StoredRow();
    if (now == edit_.Original())
        return;
    edit_.SetOriginal(std::move(now));
    throw faults::ChangedMeanwhile();
}

void RecordsetState::Delete() {
    const TableInfo& target = WritableTarget();
    const std::size_t at = Current();
    const RowKey key = keys_.One(at);
    edit_.BeginEdit(target, key);
    const bool locked = edit_.LockedFromStart();
    const Value values[] = {static_cast<long long>(key)};
    long deleted = 0;
    try {
        if (!locked)
            throw faults::LockedByOther();
        deleted = connection_->Change(connection_->Sql().DeleteRow(target), values);
    } catch (...) {
        edit_.Cancel();
        throw;
    }
    edit_.Cancel();
    if (deleted == 0)
        throw faults::RecordDeleted();
    keys_.Remove(at);
    count_ = keys_.Size();
    window_.Drop();
    finder_.MembersChanged();
    deleted_ = true;
}

}  // namespace kv
