#include "screens/user_defaults_of.h"

#include "base/numbers.h"
#include "screens/widgets/bound_control.h"
#include "screens/widgets/qt_text.h"

namespace kv {

namespace {

bool IsNumeric(ControlKind kind) {
    return kind == ControlKind::Number || kind == ControlKind::Date;
}

/// Text boxes and combos as they read, numbers and days as numbers, masks and ticks by their value.
std::string ContentOf(const BoundControl& control) {
    const Value value = control.Value();
    switch (control.Kind()) {
        case ControlKind::CheckBox:
            return value.ToBoolean() ? "1" : "0";
        case ControlKind::Number:
        case ControlKind::Date:
            return value.IsNull() ? std::string() : NumberText(value.ToDouble());
        case ControlKind::Masked:
            return value.ToText();
        default:
            return FromQt(control.Text());
    }
}

void Enter(BoundControl& control, const std::string& text) {
    if (IsNumeric(control.Kind())) {
        control.EnterValue(text.empty() ? Value() : Value(Val(text)));
    } else if (control.Kind() == ControlKind::CheckBox) {
        control.EnterValue(Value(Val(text) != 0));
    } else {
        control.EnterValue(Value(text));
    }
}

}  // namespace

std::vector<DefaultControl> DefaultControlsOf(const QWidget* screen) {
    std::vector<DefaultControl> controls;
    for (BoundControl* control : BoundControlsOf(screen)) {
        if (!control->Tag().contains(QLatin1String("DEFAULT"))) {
            continue;
        }
        controls.push_back({FromQt(control->Name()), [control] { return ContentOf(*control); },
                            [control](const std::string& text) { Enter(*control, text); },
                            [control] { return FromQt(control->Tag()); },
                            [control](const std::string& tag) { control->SetTag(ToQt(tag)); }});
    }
    return controls;
}

}  // namespace kv
