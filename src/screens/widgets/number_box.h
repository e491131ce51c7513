#pragma once
#include <QLineEdit>
#include <optional>
#include <string>

#include "screens/widgets/bound_control.h"

namespace kv {

/// A number, right-aligned, shown by a display format ("##,##0.00") and plain while it is being edited. Blank
/// is Null. A number outside of its limits, or no number, is told beside the box and is never the box's
/// value.
class NumberBox : public QLineEdit, public BoundControl {
    Q_OBJECT
  public:
    /// The format is one of FormatNumber; empty shows the shortest text.
    NumberBox(const QString& name, const QString& caption, const std::string& format, int characters,
              QWidget* parent);

    kv::Value Value() const override;
    QString Text() const override { return text(); }
    /// 0 where the box is blank.
    double Number() const { return number_.value_or(0); }
    /// As a routine enters it: marks the change.
    void SetNumber(double number);
    void SetDisplayFormat(const std::string& format);
    void SetLimits(std::optional<double> least, std::optional<double> most);
    bool CanFault() const override { return true; }
    bool Check();

  protected:
    void Show(const kv::Value& value) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void Display();
    void Judge();
    QString FaultOf(double number) const;

    std::string format_;
    std::optional<double> number_;
    std::optional<double> least_;
    std::optional<double> most_;
};

}  // namespace kv
