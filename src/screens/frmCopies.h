#pragma once
#include <QDialog>

#include "session/session.h"

class QCheckBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QSpinBox;

namespace kv {

/// Asks which pages to print and how many copies. Its answer goes through Session::Reply: "GO" or "NOGO".
class frmCopies : public QDialog {
    Q_OBJECT
  public:
    frmCopies(Session& session, int pageCount, QWidget* parent = nullptr);

    enum class Pages { All, FromTo, Current };
    Pages Which() const;

    QRadioButton* optAll;
    QRadioButton* optFrom;
    QRadioButton* optSelect;
    QSpinBox* numFrom;
    QSpinBox* numTo;
    QSpinBox* Numnum;  ///< the number of copies
    QCheckBox* chkCollate;
    QPushButton* CMDok[2];  ///< 0 gives up, 1 prints
    QLabel* Label2;

    void accept() override;
    void reject() override;

  private:
    void EnableRange(bool enabled);

    Session& session_;
};

}  // namespace kv
