#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "datastore/recordset.h"

namespace kv {

enum class ControlKind {
    Text,  ///< a text box, a rich-text box
    Number,
    Date,
    Masked,
    LookupCombo,  ///< shows a description, binds a code
    Combo,        ///< binds the text it shows
    CheckBox,
};

/// A control of a screen as the rules see it.
struct ScreenControl {
    std::string name;       ///< "TxtLastname"
    std::string dataField;  ///< the column it is bound to, "" for an unbound one
    std::string caption;    ///< its own caption or that of its label, as shown; "" where it has none
    ControlKind kind = ControlKind::Text;
    std::string text;  ///< what it shows
    /// What it would store: the text, a number, a date, the code of a look-up, a boolean. Null for an
    /// unfilled number, date or mask.
    Value value;
    bool changed = false;  ///< the data-changed mark
    std::string tag;       ///< "NOTCLIENT" keeps it out of the detection of changes
};

/// The controls of a screen in its control order, found by name.
class ScreenControls {
  public:
    ScreenControls() = default;
    explicit ScreenControls(std::vector<ScreenControl> controls) : controls_(std::move(controls)) {}
    void Add(ScreenControl control) { controls_.push_back(std::move(control)); }

    /// A control of the name, or null.
    const ScreenControl* Find(std::string_view name) const;
    /// What the control shows, its stored code or text, its changed mark; "" and false where the screen lacks
    /// it.
    std::string Text(std::string_view name) const;
    std::string Stored(std::string_view name) const;
    bool Changed(std::string_view name) const;

    auto begin() const { return controls_.begin(); }
    auto end() const { return controls_.end(); }

  private:
    std::vector<ScreenControl> controls_;
};

/// Does a control's value differ from its column? A Null column differs from a control that holds something
/// only; texts compare exactly, numbers and dates by their value; a date before 1901 and an unfilled date box
/// are alike.
bool DiffersFromColumn(const ScreenControl& control, const Value& column);
/// The bound controls that count: not tagged "NOTCLIENT", marked changed, and different from their column in
/// the row.
std::vector<const ScreenControl*> ChangedControls(const ScreenControls& controls, const Recordset& row);

}  // namespace kv
