#pragma once
#include <QLineEdit>

#include "screens/widgets/bound_control.h"

namespace kv {

/// What the boxes of one line share: the width in characters, and how the focus finds what is in them.
class LineBox : public QLineEdit, public BoundControl {
    Q_OBJECT
  public:
    void SetCharacters(int characters) override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    LineBox(const QString& name, const QString& caption, ControlKind kind, int characters, QWidget* parent);
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    /// The text shown is another one, loads apart: reads it before anybody hears of the change.
    virtual void Read() {}
    /// Entering the box with the mouse selects what is in it, so that typing replaces it; a further click
    /// places the cursor.
    virtual bool SelectsOnEntry() const { return false; }
    /// The operator is done with the box: it left, or pressed Enter.
    virtual void Leave() {}
    /// Replaces the text shown without counting as a change.
    void ShowText(const QString& text);

  private:
    QSize HintFor(int characters) const;

    int characters_;
    bool entered_ = false;  ///< with the mouse, whose button is still down
};

}  // namespace kv
