#pragma once
#include <optional>
#include <string>
#include <vector>

#include "clients/client_form.h"
#include "clients/client_list.h"
#include "clients/lookups.h"
#include "session/session.h"

namespace kv::test {

/// A client's screen without a window: plain values for the controls, tied to the list's row as the screen
/// ties them.
class PlainForm : public ClientForm {
  public:
    explicit PlainForm(Session& session, ClientLimits limits = {}, const std::string& id = {});

    Recordset& List() override { return list_; }
    ScreenControls Controls() const override { return ScreenControls(controls_); }
    std::string Filter() const override { return limits_.status; }
    std::string LoadedNotes() const override { return loadedNotes; }
    void SetText(std::string_view control, const std::string& text) override;
    void EditRow() override;
    void UpdateRow() override;
    void RestoreRow() override;
    void RefreshClientList() override;

    /// What the operator types: marks the control as changed. A look-up takes its description.
    void Type(std::string_view control, const Value& value);
    /// Loads the controls from the list's row, after a move.
    void Show();

    std::string loadedNotes;
    int refreshes = 0;
    int restores = 0;
    /// Thrown by the next UpdateRow, as the screen's own boxes may.
    std::optional<EngineError> failure;

  private:
    ScreenControl& Control(std::string_view name);
    std::vector<LookupItem> Items(const std::string& control) const;
    void Load(ScreenControl& control);

    Session& session_;
    ClientLimits limits_;
    Recordset list_;
    std::vector<ScreenControl> controls_;
};

}  // namespace kv::test
