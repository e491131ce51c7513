#include "screens/desktop_progress.h"

#include <QApplication>

#include "screens/progress_window.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/window_tools.h"

namespace kv {

namespace {

constexpr std::chrono::milliseconds kUntilWindow{1000};

std::chrono::milliseconds Steady() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

}  // namespace

DesktopProgress::DesktopProgress(Elapsed elapsed)
    : elapsed_(elapsed ? std::move(elapsed) : Elapsed(Steady)) {}

DesktopProgress::~DesktopProgress() = default;

void DesktopProgress::Begin(const std::string& text, long steps) {
    if (jobs_.empty()) {
        begun_ = elapsed_();
    }
    jobs_.push_back({text, steps, 0});
    SetHourglass(true);
    Refresh();
}

void DesktopProgress::Advance(long steps) {
    if (!jobs_.empty()) {
        jobs_.back().done += steps;
        Refresh();
    }
}

void DesktopProgress::End() {
    if (jobs_.empty()) {
        return;
    }
    jobs_.pop_back();
    SetHourglass(false);
    if (jobs_.empty()) {
        window_.reset();
    } else {
        Refresh();
    }
}

bool DesktopProgress::Yield() {
    if (!jobs_.empty()) {
        Refresh();
    }
    QApplication::processEvents(window_ ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
    return !window_ || !window_->StopPressed();
}

void DesktopProgress::SetHourglass(bool on) {
    if (on) {
        ++hourglasses_;
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else if (hourglasses_ > 0) {
        --hourglasses_;
        QApplication::restoreOverrideCursor();
    }
}

void DesktopProgress::Refresh() {
    if (!window_) {
        if (elapsed_() - begun_ < kUntilWindow) {
            return;
        }
        window_ = std::make_unique<ProgressWindow>(DialogOwner());
        window_->show();
    }
    const Job& job = jobs_.back();
    window_->SetText(ToQt(job.text));
    window_->SetProgress(job.done, job.steps);
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace kv
