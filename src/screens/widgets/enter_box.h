#pragma once
#include <QKeyEvent>
#include <QLineEdit>

namespace kv {

/// A box whose Enter is its own (returnPressed): it presses no key of the dialog around it.
class EnterBox : public QLineEdit {
  public:
    using QLineEdit::QLineEdit;

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        QLineEdit::keyPressEvent(event);
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
            event->accept();
        }
    }
};

}  // namespace kv
