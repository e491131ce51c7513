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

    QLabel* LBLname;
    TextBox* txtCliId;
    TextBox* TXTStatus;
    NumberBox* NUMdays;
    NumberBox* NumactiveDays;
    QPushButton* CMDchangeToActive;
    QPushButton* CMDpaste;
};

}  // namespace kv
