#pragma once
#include <optional>

#include "base/date.h"
#include "screens/widgets/line_box.h"

namespace kv {

/// A time of day to the minute, shown "hh:mm AM/PM" or, military, "hh:mm"; "__:__" while unfilled (Null).
/// Typed as "9", "930", "9:30p", "21:30"; it takes its form when the box is left. An entry that is no time is
/// told beside the box then.
class TimeBox : public LineBox {
    Q_OBJECT
  public:
    TimeBox(const QString& name, const QString& caption, QWidget* parent);

    /// The time of day on the day 1899-12-30, or Null.
    kv::Value Value() const override;
    QString Text() const override { return text().isEmpty() ? placeholderText() : text(); }
    bool IsFilled() const { return time_.has_value(); }
    std::optional<Date> TimeValue() const { return time_; }
    void SetTime(std::optional<Date> time);
    /// "HHMMSS" or "HHMM" in digits, as routines hand times over. Hours are not wrapped: from 24 on it is an
    /// entry at fault.
    void SetDigits(const QString& digits);
    void SetMilitary(bool military);
    bool IsMilitary() const { return military_; }
    bool CanFault() const override { return true; }
    bool Check() override;

  protected:
    void Show(const kv::Value& value) override;
    void Read() override;
    void Leave() override { Check(); }
    bool SelectsOnEntry() const override { return true; }
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void Display();

    std::optional<Date> time_;
    std::optional<Date> kept_;  // what a faulty entry leaves in force
    bool military_ = false;
    bool typing_ = false;  ///< what is shown is an entry that has not taken its form yet
};

/// Reads an entry of a time box: "9" is nine o'clock, "930" half past, with a trailing a, p, am or pm.
/// Nothing for any other text.
std::optional<Date> ReadTimeEntry(const QString& entry);

}  // namespace kv
