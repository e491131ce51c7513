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

    QRadioButton* optAll = nullptr;
    QRadioButton* optFrom = nullptr;
    QRadioButton* optSelect = nullptr;
    QSpinBox* numFrom = nullptr;
    QSpinBox* numTo = nullptr;
    QSpinBox* Numnum = nullptr;  ///< the number of copies
    QCheckBox* chkCollate = nullptr;
    QPushButton* CMDok[2] = {};  ///< 0 gives up, 1 prints
    QLabel* Label2 = nullptr;

    void accept() override;
    void reject() override;

  private:
    void EnableRange(bool enabled);

    Session& session_;
};

}  // namespace kv
