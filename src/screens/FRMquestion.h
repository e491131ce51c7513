#pragma once
#include <QDialog>

class QLabel;
class QPushButton;

namespace kv {

/// "Important Question ": yes or no. Escape and the window's close mean no, or to stay where that is offered.
class FRMquestion : public QDialog {
    Q_OBJECT
  public:
    explicit FRMquestion(QWidget* parent = nullptr);

    void SetQuestion(const QString& question);
    /// Enter answers No: for what can't be taken back.
    void SetDefaultNo();
    /// Escape and the window's close stay where the operator is; a line says so.
    void OfferStay();
    /// True for yes.
    bool Answer = false;
    /// Neither yes nor no, where OfferStay was called.
    bool Stayed = false;
    void reject() override;

    QLabel* LBLquest = nullptr;
    QPushButton* CMDok = nullptr;
    QPushButton* CMDno = nullptr;
    QLabel* LBLstay = nullptr;

  protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void Decide(bool yes);

    bool mayStay_ = false;
};

}  // namespace kv
