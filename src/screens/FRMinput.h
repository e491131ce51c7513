#pragma once
#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

namespace kv {

/// Takes one line of text.
class FRMinput : public QDialog {
    Q_OBJECT
  public:
    FRMinput(const QString& title, const QString& prompt, const QString& initial, QWidget* parent = nullptr);
    QString Text() const;

    QLabel* LBLprompt = nullptr;
    QLineEdit* TXTinput = nullptr;
    QPushButton* CMDok = nullptr;
    QPushButton* CMDcancel = nullptr;
};

}  // namespace kv
