#pragma once
#include <QDialog>

#include "session/session.h"

class QLabel;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace kv {

class NumberBox;

/// "Calculate the Co-Billing Percentage" from what client and payer pay.
class FRMcalc_percent : public QDialog {
    Q_OBJECT
  public:
    explicit FRMcalc_percent(Session& session, QWidget* parent = nullptr);
    /// 0 as long as nothing was worked out.
    double Percentage() const { return percentage_; }

    QRadioButton* Option1[2] = {};  ///< 0 both portions are known, 1 the total
    NumberBox* Numtotal = nullptr;
    NumberBox* NumPayer = nullptr;
    QPushButton* CMdcalc = nullptr;
    QPushButton* CMDok = nullptr;
    QListWidget* List1 = nullptr;

  private:
    void ShowLabels();
    void Calculate();

    Session& session_;
    double percentage_ = 0;
};

}  // namespace kv
