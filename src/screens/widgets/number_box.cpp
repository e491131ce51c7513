#include "screens/widgets/number_box.h"

#include <QKeyEvent>

#include "base/format.h"
#include "base/numbers.h"
#include "screens/widgets/qt_text.h"

namespace kv {

NumberBox::NumberBox(const QString& name, const QString& caption, const std::string& format, int characters,
                     QWidget* parent)
    : LineBox(name, caption, ControlKind::Number, characters, parent), format_(format) {
    setAlignment(Qt::AlignRight);
}

kv::Value NumberBox::Value() const {
    return number_ ? kv::Value(*number_) : kv::Value();
}

void NumberBox::SetNumber(double number) {
    EnterValue(number);
}

void NumberBox::SetDisplayFormat(const std::string& format) {
    format_ = format;
    if (Fault().isEmpty()) {
        Display(hasFocus());
    }
}

void NumberBox::SetLimits(std::optional<double> least, std::optional<double> most) {
    least_ = least;
    most_ = most;
}

QString NumberBox::FaultOf(double number) const {
    if (least_ && number < *least_) {
        return QStringLiteral("At least %1").arg(ToQt(NumberText(*least_)));
    }
    if (most_ && number > *most_) {
        return QStringLiteral("At most %1").arg(ToQt(NumberText(*most_)));
    }
    return {};
}

std::pair<std::optional<double>, QString> NumberBox::Entry() const {
    const std::string entry = FromQt(text().trimmed());
    if (entry.empty()) {
        return {};
    }
    const std::optional<double> number = ParseNumber(entry);
    return {number, number ? FaultOf(*number) : QStringLiteral("Not a number")};
}

bool NumberBox::Check() {
    if (IsDataChanged()) {
        // A number that was loaded is the row's business; only what was entered is held to the limits.
        SetFault(entered_ ? Entry().second : number_ ? FaultOf(*number_) : QString());
    }
    if (Fault().isEmpty()) {
        kept_ = number_;
    }
    return Fault().isEmpty();
}

void NumberBox::Read() {
    entered_ = true;
    const auto [number, fault] = Entry();
    number_ = fault.isEmpty() ? number : kept_;
    if (fault.isEmpty()) {
        SetFault({});
    }
}

void NumberBox::Display(bool plain) {
    entered_ = false;
    ShowText(!number_
                 ? QString()
                 : ToQt(plain || format_.empty() ? NumberText(*number_) : FormatNumber(*number_, format_)));
}

void NumberBox::Show(const kv::Value& value) {
    const std::string* text = value.IfText();
    number_ = text != nullptr  ? ParseNumber(*text)
              : value.IsNull() ? std::nullopt
                               : std::optional(value.ToDouble());
    kept_ = number_;
    Display(hasFocus());
}

void NumberBox::focusInEvent(QFocusEvent* event) {
    if (Fault().isEmpty() && !isReadOnly()) {
        Display(true);
    }
    LineBox::focusInEvent(event);
}

void NumberBox::Leave() {
    if (Check() && !hasFocus()) {
        Display(false);
    }
}

void NumberBox::keyPressEvent(QKeyEvent* event) {
    const QString typed = event->text();
    const bool letter = typed.size() == 1 && typed[0].isPrint() &&
                        !event->modifiers().testFlag(Qt::ControlModifier) &&
                        !event->modifiers().testFlag(Qt::AltModifier);
    if (letter && !QStringLiteral("0123456789.,-").contains(typed)) {
        return;
    }
    LineBox::keyPressEvent(event);
}

}  // namespace kv
