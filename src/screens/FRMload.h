#pragma once
#include <QDialog>

class QLabel;
class QProgressBar;

namespace kv {

/// "Loading User Defined Information": what the program shows while it fills its lists. The caller shows it,
/// sets the bar and closes it.
class FRMload : public QDialog {
    Q_OBJECT
  public:
    explicit FRMload(QWidget* parent = nullptr);
    /// Also draws what changed, since its callers do not come back to the message loop.
    void SetValue(int value, int most);

    QLabel* LBLload = nullptr;
    QProgressBar* ProgressBar1 = nullptr;
};

}  // namespace kv
