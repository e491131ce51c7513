#pragma once
#include <QDialog>
#include <array>
#include <optional>

class QLabel;
class QPushButton;
class QRadioButton;

namespace kv {

/// "Move Assignment Day": which way around the week the visits of an assignment move to its new day.
class FRMmoveAssign : public QDialog {
    Q_OBJECT
  public:
    /// The days forward, and the days back, to the new weekday.
    FRMmoveAssign(int forward, int back, QWidget* parent = nullptr);
    /// Days to move, below 0 for back; nothing when cancelled.
    std::optional<int> Ask();

    QLabel* LBLtitle = nullptr;
    std::array<QRadioButton*, 2> OPTdate{};
    QPushButton* CMDok = nullptr;
    QPushButton* CMDexit = nullptr;

  private:
    int forward_;
    int back_;
};

}  // namespace kv
