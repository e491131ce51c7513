#pragma once
#include <optional>

#include "base/date.h"
#include "screens/widgets/line_box.h"

namespace kv {

/// A day, typed MM/DD/YYYY, "__/__/____" while unfilled (Null). The button in the box or Alt+Down opens a
/// calendar. A year of two digits means 1930 to 2029. An entry that is no day is told beside the box when it
/// is left, and is never the box's value. A content before 1901-01-01 shows as unfilled.
class DateBox : public LineBox {
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
    bool Check() override;
    void OpenCalendar();

  protected:
    void Show(const kv::Value& value) override;
    void keyPressEvent(QKeyEvent* event) override;
    void Read() override;
    void Leave() override { Check(); }

  private:
    void ShowDate(std::optional<Date> date);

    std::optional<Date> date_;
    std::optional<Date> kept_;  // what a faulty entry leaves in force
};

}  // namespace kv
