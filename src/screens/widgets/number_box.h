#pragma once
#include <optional>
#include <string>
#include <utility>

#include "screens/widgets/line_box.h"

namespace kv {

/// A number, right-aligned, shown by a display format ("##,##0.00") and plain while it is being edited. Blank
/// is Null. A number outside of its limits, or no number, is told beside the box and is never the box's
/// value.
class NumberBox : public LineBox {
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
    bool Check() override;

  protected:
    void Show(const kv::Value& value) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void Read() override;
    bool SelectsOnEntry() const override { return true; }
    void Leave() override;

  private:
    void Display(bool plain);
    QString FaultOf(double number) const;
    /// The number of the text, or why it is none; neither for a blank one.
    std::pair<std::optional<double>, QString> Entry() const;

    std::string format_;
    std::optional<double> number_;
    std::optional<double> kept_;  // what a faulty entry leaves in force
    bool entered_ = false;        // the text is the operator's or a routine's, not this box's own display
    std::optional<double> least_;
    std::optional<double> most_;
};

}  // namespace kv
