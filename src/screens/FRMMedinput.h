#pragma once
#include <QDialog>
#include <optional>
#include <string>

#include "session/session.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace kv {

/// Takes one line of text without "," and "'": such lines are printed side by side and kept in lists.
class FRMMedinput : public QDialog {
    Q_OBJECT
  public:
    FRMMedinput(Session& session, const QString& caption, const QString& label, const QString& initial,
                QWidget* parent = nullptr);
    QString Text() const;

    QLabel* LBLinput = nullptr;
    QLineEdit* TXTinput = nullptr;
    QPushButton* CMDinput = nullptr;
    QPushButton* CMDcancel = nullptr;

  private:
    /// Takes both characters out of the box and says so; true where there was none.
    bool CheckText();
    void InputKey();

    Session& session_;
};

/// Shows it; nothing when the operator cancelled.
std::optional<std::string> AskMedinput(Session& session, const QString& caption, const QString& label,
                                       QWidget* parent, const QString& initial = {});

}  // namespace kv
