#pragma once
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "session/ports.h"

namespace kv::tool {

/// Says on a stream what a screen would show, each line behind "message: ". Questions have one answer for
/// all; inputs count as cancelled.
class TerminalDialogs : public Dialogs {
  public:
    TerminalDialogs(std::ostream& err, const bool& answer) : err_(err), answer_(answer) {}

    void ShowMessageWindow(const std::string& text, bool beep) override;
    void ShowInformation(const std::string& title, const std::string& text) override;
    bool AskQuestion(const std::string& question) override;
    void ShowFaults(const std::vector<std::string>& lines) override;
    std::optional<std::string> AskInput(const std::string& title, const std::string& prompt,
                                        const std::string& initial) override;

  private:
    std::ostream& err_;
    const bool& answer_;  ///< read at each question, since the options are read after the dialogs are made
};

/// Names on a stream what is going on.
class TerminalProgress : public Progress {
  public:
    explicit TerminalProgress(std::ostream& err) : err_(err) {}

    void Begin(const std::string& text, long steps) override;
    void Advance(long) override {}
    void End() override {}
    bool Yield() override { return true; }
    void SetHourglass(bool) override {}

  private:
    std::ostream& err_;
};

}  // namespace kv::tool
