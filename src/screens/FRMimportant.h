#pragma once
#include <QDialog>

#include "billing/authorization_cascade.h"

class QLabel;
class QPushButton;

namespace kv {

/// "Authorization Change": what shall become of the visits that stand on another payer or call type.
class FRMimportant : public QDialog {
    Q_OBJECT
  public:
    FRMimportant(long authorization, QWidget* parent = nullptr);
    /// Closing it gives the save up.
    ImportantAnswer Answer();

    QLabel* TXTauth = nullptr;
    QPushButton* CMDall = nullptr;
    QPushButton* CMDyes = nullptr;
    QPushButton* CMDno = nullptr;

  private:
    ImportantAnswer answer_ = ImportantAnswer::No;
};

}  // namespace kv
