#pragma once
#include <QLineEdit>
#include <optional>

#include "base/date.h"
#include "screens/widgets/bound_control.h"

class QAction;

namespace kv {

/// A day, typed MM/DD/YYYY, "__/__/____" while unfilled (Null). The button in the box or Alt+Down opens a
/// calendar. A year of two digits means 1930 to 2029. An entry that is no day is told beside the box when it
/// is left, and is never the box's value. A content before 1901-01-01 shows as unfilled.
class DateBox : public QLineEdit, public BoundControl {
    Q_OBJECT
  public:
    DateBox(const QString& name, const QString& caption, QWidget* parent);

    kv::Value Value() const override;
    /// As displayed: the month, day and year, or the unfilled form.
    QString Text() const override { return displayText(); }
    bool IsFilled() const;
    std::optional<Date> DateValue() const;
    /// As a routine enters it: marks the change. Nothing empties the box.
    void SetDate(std::optional<Date> date);
    bool CanFault() const override { return true; }
    /// Judges the entry as leaving the box does; true when it can be stored.
    bool Check();
    void OpenCalendar();

  protected:
    void Show(const kv::Value& value) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void Judge();

    std::optional<Date> date_;
    QAction* calendar_;
};

}  // namespace kv
