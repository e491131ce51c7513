#pragma once
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

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
    struct Job {
        std::string text;
        long steps = 0;
        long done = 0;
    };
    void Refresh();

    Elapsed elapsed_;
    std::unique_ptr<ProgressWindow> window_;
    std::vector<Job> jobs_;
    std::chrono::milliseconds begun_{};
    int hourglasses_ = 0;
};

}  // namespace kv
