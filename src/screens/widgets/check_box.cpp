#include "screens/widgets/check_box.h"

namespace kv {

namespace {

bool Ticked(const Value& value) {
    const std::string* text = value.IfText();
    return text != nullptr && text->empty() ? false : value.IsTrue();
}

}  // namespace

CheckBox::CheckBox(const QString& name, const QString& caption, QWidget* parent)
    : QCheckBox(parent), BoundControl(this, ControlKind::CheckBox) {
    SetUp(name, caption);
    connect(this, &QCheckBox::toggled, this, [this] { NoteChange(); });
}

void CheckBox::Show(const kv::Value& value) {
    setChecked(Ticked(value));
}

OptionBox::OptionBox(const QString& name, const QString& caption, QWidget* parent)
    : QRadioButton(parent), BoundControl(this, ControlKind::CheckBox) {
    SetUp(name, caption);
    connect(this, &QRadioButton::toggled, this, [this] { NoteChange(); });
}

void OptionBox::Show(const kv::Value& value) {
    // The last ticked option of a group can't be unticked while the group is exclusive.
    const bool exclusive = autoExclusive();
    setAutoExclusive(exclusive && Ticked(value));
    setChecked(Ticked(value));
    setAutoExclusive(exclusive);
}

}  // namespace kv
