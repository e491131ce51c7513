#include "screens/widgets/time_box.h"

#include <QKeyEvent>
#include <QRegularExpression>
#include <QRegularExpressionValidator>

#include "base/format.h"
#include "base/numbers.h"
#include "screens/widgets/qt_text.h"

namespace kv {

std::optional<Date> ReadTimeEntry(const QString& entry) {
    static const QRegularExpression kForm(QStringLiteral("^(\\d{1,2})(?::?(\\d{2}))?\\s*([ap]?)m?$"),
                                          QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = kForm.match(entry.trimmed());
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    int hour = match.captured(1).toInt();
    const int minute = match.captured(2).toInt();
    const QString half = match.captured(3).toLower();
    if (!half.isEmpty()) {
        if (hour < 1 || hour > 12) {
            return std::nullopt;
        }
        hour = hour % 12 + (half == QLatin1String("p") ? 12 : 0);
    }
    if (hour > 23 || minute > 59) {
        return std::nullopt;
    }
    return Date::FromTime(hour, minute);
}

TimeBox::TimeBox(const QString& name, const QString& caption, QWidget* parent)
    : LineBox(name, caption, ControlKind::Date, 8, parent) {
    setPlaceholderText(QStringLiteral("__:__"));
    setMaxLength(8);
    setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9: apmAPM]*")), this));
}

kv::Value TimeBox::Value() const {
    return time_ ? kv::Value(*time_) : kv::Value();
}

void TimeBox::SetTime(std::optional<Date> time) {
    EnterValue(time ? kv::Value(*time) : kv::Value());
}

void TimeBox::SetDigits(const QString& digits) {
    setText(digits.left(2) + QLatin1Char(':') + digits.mid(2, 2));
    Check();
}

void TimeBox::SetMilitary(bool military) {
    military_ = military;
    if (Fault().isEmpty()) {
        Display();
    }
}

bool TimeBox::Check() {
    const bool good = text().trimmed().isEmpty() || ReadTimeEntry(text()).has_value();
    SetFault(good ? QString() : QStringLiteral("Not a time (HH:MM)"));
    if (good) {
        kept_ = time_;
        Display();
    }
    return good;
}

void TimeBox::Read() {
    typing_ = true;
    const std::optional<Date> entry = ReadTimeEntry(text());
    const bool good = entry || text().trimmed().isEmpty();
    time_ = good ? entry : kept_;
    if (good) {
        SetFault({});
    }
}

void TimeBox::Display() {
    typing_ = false;
    ShowText(time_ ? ToQt(FormatDate(*time_, military_ ? "HH:NN" : "HH:NN AM/PM")) : QString());
}

void TimeBox::keyPressEvent(QKeyEvent* event) {
    // A whole time is replaced by what is typed before or after it: there is no room for more.
    const QString typed = event->text();
    const bool letter = typed.size() == 1 && typed[0].isPrint() && !isReadOnly();
    const bool atAnEnd = cursorPosition() == 0 || cursorPosition() == text().size();
    if (letter && atAnEnd && !typing_ && !hasSelectedText()) {
        selectAll();
    }
    LineBox::keyPressEvent(event);
}

void TimeBox::Show(const kv::Value& value) {
    const std::string* text = value.IfText();
    const std::optional<Date> moment = text != nullptr  ? ParseDate(*text)
                                       : value.IsNull() ? std::nullopt
                                                        : std::optional(value.ToDate());
    time_ = moment ? std::optional(moment->TimeOnly()) : std::nullopt;
    kept_ = time_;
    Display();
}

}  // namespace kv
