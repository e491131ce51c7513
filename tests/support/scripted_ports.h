#pragma once
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "session/session.h"

namespace kv::test {

/// A clock that stands still until it is set.
class SettableClock : public Clock {
  public:
    explicit SettableClock(Date now) : now_(now) {}
    Date Now() const override { return now_; }
    void Set(Date now) { now_ = now; }

  private:
    Date now_;
};

/// Answers questions and inputs in the order of its script and keeps all that was said, one text each:
/// "message: ...", "beep: ..." (a message with the bell), "TITLE: ..." (information), "question: ...",
/// "fault: ..." (each line), "input: ..." (the prompt). A question or an input that the script has no answer
/// for fails the test and counts as No, or cancelled.
class ScriptedDialogs : public Dialogs {
  public:
    void Answer(std::vector<bool> answers);
    /// Escape, to the next question whether to save.
    void AnswerStay() { answers_.push_back(std::nullopt); }
    void Input(std::vector<std::optional<std::string>> inputs);
    const std::vector<std::string>& Said() const { return said_; }
    /// What was said since the last call.
    std::vector<std::string> TakeSaid();
    /// True when the script was used up.
    bool IsScriptDone() const { return answers_.empty() && inputs_.empty(); }

    void ShowMessageWindow(const std::string& text, bool beep) override;
    void ShowInformation(const std::string& title, const std::string& text) override;
    bool AskQuestion(const std::string& question) override;
    SaveAnswer AskToSave(const std::string& question) override;
    void ShowFaults(const std::vector<std::string>& lines) override;
    std::optional<std::string> AskInput(const std::string& title, const std::string& prompt,
                                        const std::string& initial) override;

  private:
    std::optional<bool> NextAnswer(const std::string& question);

    std::deque<std::optional<bool>> answers_;
    std::deque<std::optional<std::string>> inputs_;
    std::vector<std::string> said_;
};

/// Counts what a routine shows of its progress.
class RecordingProgress : public Progress {
  public:
    void Begin(const std::string& text, long stepCount) override;
    void Advance(long count) override { advanced += count; }
    void End() override { --open; }
    bool Yield() override;
    void SetHourglass(bool on) override { hourglass = on; }

    std::vector<std::string> begun;  ///< the texts, in order
    long steps = 0;                  ///< of the last bar
    long advanced = 0;               ///< in the last bar
    long yields = 0;
    int open = 0;  ///< bars begun and not ended
    bool hourglass = false;
    /// Yield answers false from this call on; 0 for never.
    long breakOffAt = 0;
};

/// The ports of a session under test. The clock stands at 2026-03-04 09:30, a Wednesday, until it is set.
struct ScriptedPorts {
    SettableClock clock{Date::FromCivil(2026, 3, 4, 9, 30)};
    ScriptedDialogs dialogs;
    RecordingProgress progress;
    Ports Handles() { return {clock, dialogs, progress}; }
};

}  // namespace kv::test
