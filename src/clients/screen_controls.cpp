#include "clients/screen_controls.h"

#include <algorithm>
#include <array>

#include "base/numbers.h"
#include "base/text.h"

namespace kv {

namespace {

/// Compared by name, each in its own way, and so left out of the walk over the bound controls.
constexpr std::array<std::string_view, 4> kNamedControls = {"cmbGroup", "CMBhol", "TXTedit", "TXTbox"};

bool IsNamedControl(const ScreenControl& control) {
    return std::find(kNamedControls.begin(), kNamedControls.end(), control.name) != kNamedControls.end();
}

bool IsUnfilled(const Value& value) {
    return value.IsNull() || (value.IfText() != nullptr && value.IfText()->empty());
}

bool NumbersDiffer(const Value& value, const Value& column) {
    if (IsUnfilled(value)) {
        return true;
    }
    const std::optional<double> number = value.IfText() ? ParseNumber(*value.IfText()) : value.ToDouble();
    if (!number) {
        return true;
    }
    if (column.Type() == ValueType::Currency) {
        return Currency::FromDouble(*number) != column.ToCurrency();
    }
    return *number != column.ToDouble();
}

bool DatesDiffer(const Value& value, Date column) {
    if (IsUnfilled(value)) {
        return !CountsAsEmpty(column);
    }
    const std::optional<Date> date = value.IfText() ? ParseDate(*value.IfText()) : value.ToDate();
    return !date || *date != column;
}

}  // namespace

const ScreenControl* ScreenControls::Find(std::string_view name) const {
    const auto found = std::find_if(controls_.begin(), controls_.end(),
                                    [name](const ScreenControl& control) { return control.name == name; });
    return found == controls_.end() ? nullptr : &*found;
}

std::string ScreenControls::Text(std::string_view name) const {
    const ScreenControl* control = Find(name);
    return control == nullptr ? std::string() : control->text;
}

std::string ScreenControls::Stored(std::string_view name) const {
    const ScreenControl* control = Find(name);
    return control == nullptr ? std::string() : control->value.ToText();
}

bool ScreenControls::Changed(std::string_view name) const {
    const ScreenControl* control = Find(name);
    return control != nullptr && control->changed;
}

bool DiffersFromColumn(const ScreenControl& control, const Value& column) {
    const Value& value = control.value;
    switch (column.Type()) {
        case ValueType::Null:
            return !IsUnfilled(value) && !(value.Type() == ValueType::Boolean && !value.ToBoolean());
        case ValueType::Boolean:
            return value.IsTrue() != column.ToBoolean();
        case ValueType::Integer:
        case ValueType::Double:
        case ValueType::Currency:
            return NumbersDiffer(value, column);
        case ValueType::Date:
            return DatesDiffer(value, column.ToDate());
        case ValueType::Text:
            break;
    }
    return value.ToText() != column.ToText();
}

std::vector<const ScreenControl*> ChangedControls(const ScreenControls& controls, const Recordset& row) {
    std::vector<const ScreenControl*> changed;
    for (const ScreenControl& control : controls) {
        const bool counts = !control.dataField.empty() && control.tag != "NOTCLIENT" && control.changed &&
                            !IsNamedControl(control);
        if (counts && DiffersFromColumn(control, row.Get(control.dataField))) {
            changed.push_back(&control);
        }
    }
    return changed;
}

}  // namespace kv
