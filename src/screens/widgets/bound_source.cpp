#include "screens/widgets/bound_source.h"

#include <QLineEdit>
#include <algorithm>
#include <utility>

#include "base/text.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/text_box.h"

namespace kv {

namespace {

/// What the control leaves in a field of that type: an emptied box leaves no Null in a text.
Value StoredForm(const BoundControl& control, ColumnType type) {
    const Value value = control.Value();
    const bool text = FieldType(type) == ValueType::Text;
    if (text && value.IsNull()) {
        return std::string();
    }
    const std::string* typed = value.IfText();
    return !text && typed != nullptr && IsBlank(value) ? Value() : value;
}

}  // namespace

BoundSource::BoundSource(ErrorReport report, QObject* parent) : QObject(parent), report_(std::move(report)) {}

BoundSource::~BoundSource() = default;

void BoundSource::Bind(BoundControl& control, const std::string& field) {
    const Binding binding{control.Notifier(), &control, field, {}};
    if (rows_.IsOpen()) {
        LimitLength(binding);
    }
    control.SetDataField(field);
    bindings_.push_back(binding);
    connect(control.Notifier(), &ControlNotifier::changed, this, [this] { OnChanged(); });
    connect(control.Notifier(), &QObject::destroyed, this, [this] {
        bindings_.erase(std::remove_if(bindings_.begin(), bindings_.end(),
                                       [](const Binding& each) { return each.alive.isNull(); }),
                        bindings_.end());
    });
}

std::vector<BoundControl*> BoundSource::Controls() const {
    std::vector<BoundControl*> controls;
    for (const Binding& binding : bindings_) {
        controls.push_back(binding.control);
    }
    return controls;
}

BoundControl* BoundSource::ControlOf(std::string_view field) const {
    const auto found = std::find_if(bindings_.begin(), bindings_.end(), [&](const Binding& binding) {
        return EqualsNoCase(binding.field, field);
    });
    return found == bindings_.end() ? nullptr : found->control;
}

QString BoundSource::NameOf(std::string_view field) const {
    const auto watched = std::find_if(watched_.begin(), watched_.end(),
                                      [&](const Watched& each) { return EqualsNoCase(each.field, field); });
    if (watched != watched_.end()) {
        return watched->name;
    }
    QString name = ControlOf(field)->Caption().trimmed();
    if (name.endsWith(QLatin1Char(':'))) {
        name.chop(1);
    }
    return name;
}

void BoundSource::LimitLength(const Binding& binding) const {
    const FieldInfo& field = rows_.Fields()[rows_.FieldIndex(binding.field)];
    if (field.type != ColumnType::Text || field.size <= 0) {
        return;
    }
    constexpr int kQtOwnLimit = 32767;
    if (auto* line = qobject_cast<TextBox*>(binding.control->Widget());
        line != nullptr && line->maxLength() == kQtOwnLimit) {
        line->setMaxLength(field.size);
    }
    if (auto* memo = qobject_cast<MemoBox*>(binding.control->Widget());
        memo != nullptr && memo->MaxLength() == 0) {
        memo->SetMaxLength(field.size);
    }
    if (auto* combo = qobject_cast<PlainCombo*>(binding.control->Widget());
        combo != nullptr && combo->lineEdit() != nullptr) {
        combo->lineEdit()->setMaxLength(field.size);
    }
}

void BoundSource::SetRecordset(Recordset rows) {
    rows_ = std::move(rows);
    if (keyField_.empty()) {
        aside_.clear();
    }
    for (const Binding& binding : bindings_) {
        LimitLength(binding);
    }
    ShowRow();
}

void BoundSource::Close() {
    rows_.Close();
    ShowRow();
}

BoundMode BoundSource::Mode() const {
    if (!rows_.IsOpen() || gone_) {
        return BoundMode::NoRow;
    }
    switch (rows_.EditMode()) {
        case EditState::Add:
            return BoundMode::Add;
        case EditState::InProgress:
            return BoundMode::Edit;
        case EditState::None:
            break;
    }
    return rows_.AbsolutePosition() < 0 ? BoundMode::NoRow : BoundMode::View;
}

bool BoundSource::HasRow() const {
    return Mode() != BoundMode::NoRow;
}

long BoundSource::Position() const {
    return rows_.IsOpen() ? rows_.AbsolutePosition() : -1;
}

long BoundSource::Count() const {
    return rows_.IsOpen() ? rows_.RecordCount() : 0;
}

std::vector<Value> BoundSource::RowValues() {
    gone_ = false;
    shownKey_ = Value();
    std::vector<Value> values(bindings_.size() + watched_.size());
    if (!HasRow()) {
        return values;
    }
    try {
        if (!keyField_.empty() && !IsAdding()) {
            shownKey_ = rows_.Get(keyField_);
        }
        for (std::size_t i = 0; i < bindings_.size(); ++i) {
            values[i] = rows_.Get(bindings_[i].field);
        }
        for (std::size_t i = 0; i < watched_.size(); ++i) {
            values[bindings_.size() + i] = rows_.Get(watched_[i].field);
        }
    } catch (const EngineError& error) {
        if (error.Number() != engine_error::kRecordDeleted) {
            throw;
        }
        gone_ = true;
        std::fill(values.begin(), values.end(), Value());
    }
    return values;
}

void BoundSource::ShowRow() {
    // All are read before the first is shown, so that a failure leaves one row on the screen and not two
    // halves.
    const std::vector<Value> values = RowValues();
    for (std::size_t i = 0; i < bindings_.size(); ++i) {
        bindings_[i].shown = values[i];
        bindings_[i].control->SetValue(values[i]);
    }
    for (std::size_t i = 0; i < watched_.size(); ++i) {
        watched_[i].shown = values[bindings_.size() + i];
    }
    written_.clear();
    NoteMode();
    emit repositioned();
}

std::vector<std::string> BoundSource::Follow() {
    const std::vector<Value> values = RowValues();
    std::vector<std::string> followed;
    for (std::size_t i = 0; i < bindings_.size(); ++i) {
        Binding& binding = bindings_[i];
        if (values[i] == binding.shown) {
            continue;
        }
        binding.shown = values[i];
        followed.push_back(binding.field);
        if (!binding.control->IsDataChanged()) {
            binding.control->SetValue(values[i]);
        }
    }
    for (std::size_t i = 0; i < watched_.size(); ++i) {
        const Value& now = values[bindings_.size() + i];
        if (now != watched_[i].shown) {
            watched_[i].shown = now;
            followed.push_back(watched_[i].field);
        }
    }
    return followed;
}

bool BoundSource::FollowRow() {
    if (Mode() != BoundMode::View) {
        return false;
    }
    rows_.Reread();
    const std::vector<std::string> followed = Follow();
    if (gone_) {
        NoteMode();
        emit repositioned();
    } else if (!followed.empty()) {
        emit rowFollowed(followed);
    }
    return gone_ || !followed.empty();
}

void BoundSource::NoteMode() {
    const BoundMode mode = Mode();
    if (mode != shownMode_) {
        shownMode_ = mode;
        emit modeChanged(mode);
    }
}

void BoundSource::OnChanged() {
    if (Mode() != BoundMode::View) {
        return;
    }
    try {
        BeginEdit();
    } catch (const EngineError& error) {
        // What was typed can't be kept: the row is gone or may not be written.
        report_(error);
        try {
            Restore();
        } catch (const EngineError& again) {
            report_(again);
        }
    }
}

void BoundSource::BeginEdit() {
    if (!rows_.IsOpen()) {
        throw EngineError(engine_error::kNoCurrentRecord, "No current record.");
    }
    if (rows_.EditMode() != EditState::None) {
        return;
    }
    written_.clear();
    rows_.Edit();
    if (!rows_.HoldsRow()) {
        const std::string holder = rows_.RowHolder();
        rows_.CancelUpdate();
        throw EngineError(engine_error::kLockedByOther,
                          (holder.empty() ? "Another user" : holder) +
                              " is changing this record just now.  It can be changed here once they have "
                              "saved or discarded their changes.");
    }
    const std::vector<std::string> followed = Follow();
    NoteMode();
    if (!followed.empty()) {
        emit rowFollowed(followed);
    }
}

void BoundSource::AddRow() {
    rows_.AddNew();
    ShowRow();
}

bool BoundSource::Differs(const Binding& binding) const {
    // A row being added differs from its defaults, which routines may have set since they were shown.
    return DiffersFromColumn(DescribeControl(*binding.control),
                             IsAdding() ? rows_.Get(binding.field) : binding.shown);
}

std::vector<BoundControl*> BoundSource::ChangedControls(const QString& exceptTag) const {
    std::vector<BoundControl*> changed;
    if (!HasRow()) {
        return changed;
    }
    for (const Binding& binding : bindings_) {
        const bool counts = exceptTag.isEmpty() || binding.control->Tag() != exceptTag;
        if (counts && binding.control->IsDataChanged() && Differs(binding)) {
            changed.push_back(binding.control);
        }
    }
    return changed;
}

void BoundSource::WriteRow() {
    for (const Binding& binding : bindings_) {
        BoundControl& control = *binding.control;
        if (control.IsDataChanged() && !control.Check()) {
            throw EngineError(engine_error::kTypeConversion,
                              FromQt(control.Caption() + QLatin1Char(' ') + control.Fault()));
        }
    }
    BeginEdit();
    for (const Binding& binding : bindings_) {
        const std::size_t field = rows_.FieldIndex(binding.field);
        // The row in edit may hold what a save that was refused had put there.
        if (binding.control->IsDataChanged() &&
            DiffersFromColumn(DescribeControl(*binding.control), rows_.Get(field))) {
            rows_.Set(field, StoredForm(*binding.control, rows_.Fields()[field].type));
        }
    }
}

void BoundSource::Update() {
    const BoundMode mode = Mode();
    if (mode == BoundMode::NoRow || (mode == BoundMode::View && ChangedControls().empty())) {
        return;
    }
    WriteRow();
    rows_.Update();
    if (mode == BoundMode::Add) {
        rows_.MoveToLastModified();
    }
    aside_.clear();
    std::vector<SetAside> written = Typed();
    ShowRow();
    written_ = std::move(written);
}

std::vector<BoundSource::SetAside> BoundSource::Typed() const {
    std::vector<SetAside> typed;
    const auto add = [&typed](const QPointer<QObject>& alive, BoundControl* control) {
        if (!alive.isNull() && control->IsDataChanged()) {
            typed.push_back({alive, control, control->Value()});
        }
    };
    for (const Binding& binding : bindings_) {
        add(binding.alive, binding.control);
    }
    for (const SetAside& companion : companions_) {
        add(companion.alive, companion.control);
    }
    return typed;
}

void BoundSource::KeepTyped(std::vector<SetAside> typed) {
    if (typed.empty()) {
        return;
    }
    aside_ = std::move(typed);
    asideKey_ = shownKey_;
    asidePosition_ = IsAdding() ? -1 : Position();
    emit typedSetAside();
}

bool BoundSource::CanBringBack() const {
    const bool sameRow =
        keyField_.empty() ? asidePosition_ == (IsAdding() ? -1 : Position()) : shownKey_ == asideKey_;
    return !aside_.empty() && HasRow() && sameRow;
}

void BoundSource::BringBack() {
    if (!CanBringBack()) {
        return;
    }
    for (const SetAside& typed : std::exchange(aside_, {})) {
        if (!typed.alive.isNull()) {
            typed.control->EnterValue(typed.value);
        }
    }
}

void BoundSource::Restore() {
    std::vector<SetAside> typed = Typed();
    KeepTyped(typed.empty() ? std::exchange(written_, {}) : std::move(typed));
    if (rows_.IsOpen() && rows_.EditMode() != EditState::None) {
        rows_.CancelUpdate();
    }
    ShowRow();
}

void BoundSource::DeleteRow() {
    rows_.Delete();
    rows_.MoveNext();
    if (rows_.Eof() && rows_.RecordCount() > 0) {
        rows_.MoveLast();
    }
    ShowRow();
}

bool BoundSource::MoveTo(long position) {
    if (position < 0 || position >= Count()) {
        return false;
    }
    rows_.SetAbsolutePosition(position);
    ShowRow();
    return true;
}

bool BoundSource::MoveFirst() {
    return MoveTo(0);
}

bool BoundSource::MoveLast() {
    return MoveTo(Count() - 1);
}

bool BoundSource::MoveNext() {
    return MoveTo(Position() + 1);
}

bool BoundSource::MovePrevious() {
    return Position() > 0 && MoveTo(Position() - 1);
}

bool BoundSource::FindFirst(std::string_view criteria) {
    rows_.FindFirst(criteria);
    if (rows_.NoMatch()) {
        return false;
    }
    ShowRow();
    return true;
}

void BoundSource::Requery() {
    rows_.Requery();
    ShowRow();
}

}  // namespace kv
