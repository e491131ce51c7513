#include "datastore/recordset.h"

#include "datastore/faults.h"
#include "datastore/recordset/recordset_state.h"

namespace kv {
namespace {

RecordsetState& Opened(const std::unique_ptr<RecordsetState>& state) {
    if (!state)
        throw EngineError(engine_error::kObjectClosed, "Object invalid or no longer set.");
    return *state;
}

}  // namespace

Recordset::Recordset() = default;
Recordset::~Recordset() = default;
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;
Recordset::Recordset(std::unique_ptr<RecordsetState> state) : state_(std::move(state)) {}

void Recordset::Close() {
    state_.reset();
}

bool Recordset::Eof() const {
    return Opened(state_).Eof();
}

bool Recordset::Bof() const {
    return Opened(state_).Bof();
}

void Recordset::MoveFirst() {
    Opened(state_).MoveFirst();
}

void Recordset::MoveLast() {
    Opened(state_).MoveLast();
}

void Recordset::MoveNext() {
    Opened(state_).MoveNext();
}

void Recordset::MovePrevious() {
    Opened(state_).MovePrevious();
}

long Recordset::RecordCount() const {
    return Opened(state_).Count();
}

long Recordset::AbsolutePosition() const {
    return Opened(state_).Position();
}

void Recordset::SetAbsolutePosition(long position) {
    Opened(state_).SetPosition(position);
}

void Recordset::FindFirst(std::string_view criteria) {
    Opened(state_).Find(criteria, false);
}

void Recordset::FindNext(std::string_view criteria) {
    Opened(state_).Find(criteria, true);
}

bool Recordset::NoMatch() const {
    return Opened(state_).NoMatch();
}

void Recordset::AddNew() {
    Opened(state_).AddNew();
}

void Recordset::Edit() {
    Opened(state_).Edit();
}

void Recordset::Update() {
    Opened(state_).Update();
}

void Recordset::CancelUpdate() {
    Opened(state_).CancelUpdate();
}

void Recordset::Reread() {
    Opened(state_).Reread();
}

bool Recordset::HoldsRow() const {
    return Opened(state_).HoldsRow();
}

std::string Recordset::RowHolder() const {
    return Opened(state_).RowHolder();
}

HeldEdit Recordset::HoldEdit() const {
    return Opened(state_).HoldEdit();
}

void Recordset::ResumeEdit(const HeldEdit& held) {
    Opened(state_).ResumeEdit(held);
}

EditState Recordset::EditMode() const {
    return Opened(state_).EditMode();
}

void Recordset::Delete() {
    Opened(state_).Delete();
}

void Recordset::MoveToLastModified() {
    Opened(state_).MoveToLastModified();
}

void Recordset::Requery() {
    Opened(state_).Requery();
}

Recordset Recordset::Clone() const {
    return Recordset(Opened(state_).Clone());
}

const std::vector<FieldInfo>& Recordset::Fields() const {
    return Opened(state_).Fields();
}

std::size_t Recordset::FieldIndex(std::string_view name) const {
    const int place = Opened(state_).Names().Find(name);
    if (place < 0)
        throw faults::ItemNotFound(name);
    return static_cast<std::size_t>(place);
}

bool Recordset::HasField(std::string_view name) const {
    return Opened(state_).Names().Find(name) >= 0;
}

Value Recordset::Get(std::size_t index) const {
    return Opened(state_).Get(index);
}

void Recordset::Set(std::size_t index, Value value) {
    Opened(state_).Set(index, std::move(value));
}

}  // namespace kv
