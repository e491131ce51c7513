#pragma once
#include "session/ports.h"

namespace kv {

/// The Dialogs port on the desktop: each is modal to the active window, and the hourglass is put aside while
/// the operator answers.
class DesktopDialogs : public Dialogs {
  public:
    void ShowMessageWindow(const std::string& text, bool beep) override;
    void ShowInformation(const std::string& title, const std::string& text) override;
    bool AskQuestion(const std::string& question) override;
    bool AskToDestroy(const std::string& question) override;
    SaveAnswer AskToSave(const std::string& question) override;
    void ShowFaults(const std::vector<std::string>& lines) override;
    std::optional<std::string> AskInput(const std::string& title, const std::string& prompt,
                                        const std::string& initial) override;
};

}  // namespace kv
