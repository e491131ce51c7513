#pragma once
#include <chrono>
#include <functional>
#include <memory>

#include "session/ports.h"

namespace kv {

class ProgressWindow;

/// The Progress port on the desktop. The hourglass shows at once; a small window with the text, a bar and a
/// stop key comes up when the work has taken a second, so that short work does not flash.
class DesktopProgress : public Progress {
  public:
    /// How long the program has run, in any steady form; tests hand in their own.
    using Elapsed = std::function<std::chrono::milliseconds()>;
    explicit DesktopProgress(Elapsed elapsed = {});
    ~DesktopProgress() override;

    void Begin(const std::string& text, long steps) override;
    void Advance(long steps) override;
    void End() override;
    /// Before the window is up, keys and clicks wait for the end of the work; after that only the window
    /// takes them.
    bool Yield() override;
    /// Counts: each `true` wants a `false`; a `false` too many does nothing.
    void SetHourglass(bool on) override;

    /// The window while it shows, else nullptr.
    ProgressWindow* Window() const { return window_.get(); }

  private:
    void Refresh();

    Elapsed elapsed_;
    std::unique_ptr<ProgressWindow> window_;
    std::string text_;
    long steps_ = 0;
    long done_ = 0;
    std::chrono::milliseconds begun_{};
    std::chrono::milliseconds shown_{};
    bool running_ = false;
    bool stopped_ = false;
    int hourglasses_ = 0;
};

}  // namespace kv
