#pragma once
#include <QDialog>

class QLabel;
class QPushButton;

namespace kv {

/// "Important Question ": yes or no. Escape and the window's close mean no.
class FRMquestion : public QDialog {
    Q_OBJECT
  public:
    explicit FRMquestion(QWidget* parent = nullptr);

    void SetQuestion(const QString& question);
    /// True for yes.
    bool Answer = false;
    void reject() override;

    QLabel* LBLquest = nullptr;
    QPushButton* CMDok = nullptr;
    QPushButton* CMDno = nullptr;

  protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void Decide(bool yes);
};

}  // namespace kv
