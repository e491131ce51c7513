#pragma once
#include <QDialog>
#include <array>

#include "clients/potential_status.h"

class QPushButton;
class QRadioButton;

namespace kv {

/// "Change Status": what becomes of a potential client.
class FRMpotientalStatus : public QDialog {
    Q_OBJECT
  public:
    explicit FRMpotientalStatus(QWidget* parent = nullptr);
    PotentialChoice Choice() const;

    std::array<QRadioButton*, kPotentialChoiceTexts.size()> OPTstatus{};
    QPushButton* CMDok = nullptr;
    QPushButton* CMDcancel = nullptr;
};

}  // namespace kv
