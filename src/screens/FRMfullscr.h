#pragma once
#include <QDialog>
#include <string>

#include "screens/screen_steps.h"
#include "session/session.h"

namespace kv {

class NotesBox;
class ToolBar;

/// The notes on the whole screen. Accepted when they are to go back to the page.
class FRMfullscr : public QDialog {
    Q_OBJECT
  public:
    FRMfullscr(Session& session, const std::string& notes, QWidget* parent = nullptr);
    /// Asks about what would be lost.
    void reject() override;

    ToolBar* Toolbar1 = nullptr;
    NotesBox* TXTbox = nullptr;

  private:
    Session& session_;
    std::string notes_;
    KeySteps keys_;
};

}  // namespace kv
