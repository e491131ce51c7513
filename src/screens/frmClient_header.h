#pragma once
#include <QWidget>

class QLabel;
class QPushButton;

namespace kv {

class NumberBox;
class TextBox;

/// The client header above the parts: who is on the screen, always in sight.
class ClientHeader : public QWidget {
    Q_OBJECT
  public:
    explicit ClientHeader(QWidget* parent);

    void ShowName(const QString& last, const QString& first);

    QLabel* LBLname = nullptr;
    TextBox* txtCliId = nullptr;
    TextBox* TXTStatus = nullptr;
    NumberBox* NUMdays = nullptr;
    NumberBox* NumactiveDays = nullptr;
    QPushButton* CMDAnyCaregivers = nullptr;
    QPushButton* CMDchangeToActive = nullptr;
    QPushButton* CMDpaste = nullptr;
};

}  // namespace kv
