#pragma once
#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;

namespace kv {

/// The small window of DesktopProgress. Escape and the window's close press its stop key.
class ProgressWindow : public QDialog {
    Q_OBJECT
  public:
    explicit ProgressWindow(QWidget* parent = nullptr);
    void SetText(const QString& text);
    /// A bar that only shows life where there are no steps.
    void SetProgress(long done, long steps);
    bool StopPressed() const { return stopPressed_; }
    void reject() override;

    QLabel* LBLtext = nullptr;
    QProgressBar* Pbar = nullptr;
    QPushButton* CMDstop = nullptr;

  private:
    bool stopPressed_ = false;
};

}  // namespace kv
