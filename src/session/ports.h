#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"

namespace kv {

// What a rule needs of the world outside the store. The desktop implements them with screens, kvtool with the
// terminal, tests with a script that answers and records; so every rule, its questions included, runs without
// a window.

/// The present moment. Rules never ask the system's clock.
class Clock {
  public:
    virtual ~Clock() = default;
    virtual Date Now() const = 0;
    Date Today() const { return Now().DayOnly(); }
};

/// The system's clock in local time, or a fixed moment when one is given (KV_NOW, --now).
class SystemClock : public Clock {
  public:
    SystemClock() = default;
    explicit SystemClock(Date fixed) : fixed_(fixed) {}
    Date Now() const override;

  private:
    std::optional<Date> fixed_;
};

/// A clock that stands at the moment written "YYYY-MM-DD HH:MM:SS" or at the beginning of a day "YYYY-MM-DD".
/// Throws std::invalid_argument for any other text or an impossible day or time.
SystemClock FixedClock(const std::string& moment);
/// The fixed clock of KV_NOW where the environment sets it, else the system's. Throws as FixedClock.
SystemClock SystemClockFromEnvironment();

/// What becomes of something that was typed and not saved.
enum class SaveAnswer {
    Save,
    Discard,
    Stay,  ///< back to what was typed, nothing lost
};

/// Speaks to the operator. Each call returns when the operator has answered.
class Dialogs {
  public:
    virtual ~Dialogs() = default;
    /// FRMmessage: a message that closes by itself.
    virtual void ShowMessageWindow(const std::string& text, bool beep) = 0;
    /// A message box of the information kind with a title.
    virtual void ShowInformation(const std::string& title, const std::string& text) = 0;
    /// FRMquestion: true for yes.
    virtual bool AskQuestion(const std::string& question) = 0;
    /// The same before something that can't be taken back: No is what a key pressed in haste answers. The
    /// question says what goes and how much of it.
    virtual bool AskToDestroy(const std::string& question) { return AskQuestion(question); }
    /// The same before a changed record goes out of sight, with a third answer: Escape stays.
    virtual SaveAnswer AskToSave(const std::string& question) {
        return AskQuestion(question) ? SaveAnswer::Save : SaveAnswer::Discard;
    }
    /// FRMDis_error: all faults of a screen in one list.
    virtual void ShowFaults(const std::vector<std::string>& lines) = 0;
    /// FRMinput: one line of text, or nothing when the operator cancelled.
    virtual std::optional<std::string> AskInput(const std::string& title, const std::string& prompt,
                                                const std::string& initial) = 0;
};

/// Shows that work goes on, and lets the window system breathe.
class Progress {
  public:
    virtual ~Progress() = default;
    /// Shows the text and a bar of so many steps. Begins nest no deeper than one.
    virtual void Begin(const std::string& text, long steps) = 0;
    virtual void Advance(long steps) = 0;
    virtual void End() = 0;
    /// Lets pending window work be done; false when the operator asked to break off.
    virtual bool Yield() = 0;
    virtual void SetHourglass(bool on) = 0;
};

/// Begin and End as one object on the stack.
class ProgressBar {
  public:
    ProgressBar(Progress& progress, const std::string& text, long steps) : progress_(progress) {
        progress_.Begin(text, steps);
    }
    ~ProgressBar() { progress_.End(); }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    void Advance(long steps = 1) { progress_.Advance(steps); }

  private:
    Progress& progress_;
};

/// The hourglass as an object on the stack.
class Hourglass {
  public:
    explicit Hourglass(Progress& progress) : progress_(progress) { progress_.SetHourglass(true); }
    ~Hourglass() { progress_.SetHourglass(false); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

  private:
    Progress& progress_;
};

}  // namespace kv
