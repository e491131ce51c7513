#include "support/plain_form.h"

#include <algorithm>
#include <map>

#include <gtest/gtest.h>

namespace kv::test {

namespace {

const std::map<std::string, LookupSource>& Sources() {
    static const std::map<std::string, LookupSource> sources = {
        {"TDBCombo1", LookupSource::dbLanguage}, {"TDBCombo3", LookupSource::dbProvidersSex},
        {"TDBCombo4", LookupSource::dbManager},  {"TDBCombo5", LookupSource::dbFsl},
        {"TDBCombo8", LookupSource::dbDiet},     {"TDBCombo20", LookupSource::dbOrder_Discipline},
        {"TDBCombo25", LookupSource::dbColor},   {"TDBCombo29", LookupSource::DBDistrict},
        {"TDBGender", LookupSource::dbSex},
    };
    return sources;
}

ScreenControl Bound(const char* name, const char* field, ControlKind kind, const char* caption = "") {
    ScreenControl control;
    control.name = name;
    control.dataField = field;
    control.kind = kind;
    control.caption = caption;
    return control;
}

std::vector<ScreenControl> DesignedControls() {
    return {
        Bound("txtCliId", "CLIENT", ControlKind::Text),
        Bound("TxtLastname", "LASTNAME", ControlKind::Text, "Last Name:"),
        Bound("TxtFirstnam", "FIRSTNAM", ControlKind::Text, "First Name:"),
        Bound("txtStreet", "STREET", ControlKind::Text),
        Bound("TXTcity", "CITY", ControlKind::Text, " City: "),
        Bound("TXTzip", "ZIP", ControlKind::Text, "Zip:"),
        Bound("TxtPhone", "PHONE", ControlKind::Masked, "Phone:"),
        Bound("TxtB_date", "BDATE", ControlKind::Date, "Birth Date:"),
        Bound("TDBCombo3", "PROV_SEX", ControlKind::LookupCombo, "Providers Gender:"),
        Bound("TDBCombo1", "LANGUAGE", ControlKind::LookupCombo, "Language:"),
        Bound("TDBCombo20", "ORD_DISCPL", ControlKind::LookupCombo, "Ordered Discipline:"),
        Bound("TDBCombo29", "BORO", ControlKind::LookupCombo, "District:"),
        Bound("TDBGender", "SEX", ControlKind::LookupCombo, "Gender:"),
        Bound("TDBCombo4", "MANAGER", ControlKind::LookupCombo, "Manager:"),
        Bound("TDBCombo5", "FSL", ControlKind::LookupCombo, "Supervisor:"),
        Bound("TDBCombo8", "DIET", ControlKind::LookupCombo, "Diet:"),
        Bound("TDBCombo25", "DISASTER_CODE", ControlKind::LookupCombo, "Priority:"),
        Bound("Check2", "istelephony", ControlKind::CheckBox, "Telephony Client"),
        Bound("NUMbillmileage", "Billmile_rate", ControlKind::Number, "Rate:"),
        Bound("cmbGroup", "grouping", ControlKind::Combo),
        Bound("CMBhol", "HOL_COV", ControlKind::Combo),
        Bound("TXTdirections", "directions", ControlKind::Text),
        Bound("TXTedit", "", ControlKind::Text),
        Bound("TXTbox", "", ControlKind::Text),
    };
}

}  // namespace

PlainForm::PlainForm(Session& session, ClientLimits limits, const std::string& id)
    : session_(session),
      limits_(std::move(limits)),
      list_(OpenClientList(session, limits_)),
      controls_(DesignedControls()) {
    if (!id.empty()) {
        EXPECT_TRUE(FindInList(list_, id)) << id << " is not in the list";
    }
    Show();
}

void PlainForm::SetText(std::string_view control, const std::string& text) {
    Control(control).text = text;
    Control(control).value = text;
    Control(control).changed = true;
}

void PlainForm::Type(std::string_view name, const Value& value) {
    ScreenControl& control = Control(name);
    control.changed = true;
    control.text = value.ToText();
    control.value = value;
    if (control.kind == ControlKind::LookupCombo) {
        control.value = "";
        for (const LookupItem& item : Items(control.name)) {
            if (item.description == control.text) {
                control.value = item.code;
            }
        }
    }
}

void PlainForm::Show() {
    loadedNotes = list_.AbsolutePosition() < 0 ? std::string() : list_.Text("Comments");
    for (ScreenControl& control : controls_) {
        Load(control);
    }
}

void PlainForm::EditRow() {
    if (list_.EditMode() == EditState::None) {
        list_.Edit();
    }
}

void PlainForm::UpdateRow() {
    if (failure) {
        const EngineError error = *failure;
        failure.reset();
        throw error;
    }
    for (const ScreenControl& control : controls_) {
        if (control.changed && !control.dataField.empty()) {
            list_.Set(control.dataField, control.value);
        }
    }
    list_.Update();
    for (ScreenControl& control : controls_) {
        control.changed = false;
    }
}

void PlainForm::RestoreRow() {
    ++restores;
    list_.CancelUpdate();
    Show();
}

void PlainForm::RefreshClientList() {
    ++refreshes;
    list_ = OpenClientList(session_, limits_);
}

ScreenControl& PlainForm::Control(std::string_view name) {
    const auto found = std::find_if(controls_.begin(), controls_.end(),
                                    [name](const ScreenControl& control) { return control.name == name; });
    if (found == controls_.end()) {
        throw std::out_of_range("no control " + std::string(name));
    }
    return *found;
}

std::vector<LookupItem> PlainForm::Items(const std::string& control) const {
    const auto source = Sources().find(control);
    return source == Sources().end() ? std::vector<LookupItem>() : LoadLookup(session_, source->second);
}

void PlainForm::Load(ScreenControl& control) {
    control.changed = false;
    if (list_.AbsolutePosition() < 0) {
        control.text.clear();
        control.value = Value();
        return;
    }
    const bool isNotes = control.dataField.empty();
    const Value column = list_.Get(isNotes ? "Comments" : control.dataField);
    const bool isTyped = control.kind == ControlKind::Date || control.kind == ControlKind::Number ||
                         control.kind == ControlKind::CheckBox;
    control.value = isTyped ? column : Value(column.ToText());
    control.text = column.ToText();
    for (const LookupItem& item : Items(control.name)) {
        if (item.code == column.ToText()) {
            control.text = item.description;
        }
    }
}

}  // namespace kv::test
