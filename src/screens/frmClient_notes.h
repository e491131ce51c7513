#pragma once
#include <functional>
#include <string>

#include "screens/frmClient_part.h"
#include "screens/screen_steps.h"
#include "session/session.h"

namespace kv {

class NotesBox;
class ToolBar;

/// The page of the general notes. TXTbox is what is shown; the reference copy TXTedit stays with the main
/// screen.
class FRMnotes : public ClientPart {
    Q_OBJECT
  public:
    FRMnotes(Session& session, QWidget* parent);
    std::vector<Tie> Ties() const override;

    ToolBar* Toolbar4 = nullptr;
    NotesBox* TXTbox = nullptr;

    /// The print key.
    std::function<void()> Print;

  private:
    void FullKey();

    Session& session_;
    KeySteps keys_;
};

}  // namespace kv
