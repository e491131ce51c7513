#include "screens/widgets/date_box.h"

#include <QAction>
#include <QCalendarWidget>
#include <QFrame>
#include <QKeyEvent>
#include <QScreen>
#include <QTextCharFormat>
#include <QVBoxLayout>
#include <algorithm>

#include "base/numbers.h"
#include "screens/widgets/theme.h"

namespace kv {

namespace {

struct Entry {
    bool blank = false;
    std::optional<Date> date;
};

/// Two digits mean the hundred years that end with 2029, as the other programs of the suite read them.
int FullYear(const QString& digits) {
    const int year = digits.toInt();
    return digits.size() == 2 ? year + (year < 30 ? 2000 : 1900) : year;
}

Entry ReadEntry(QString shown) {
    shown.remove(QLatin1Char('_'));
    const QStringList parts = shown.split(QLatin1Char('/'));
    if (shown.size() == parts.size() - 1) {
        return {true, {}};
    }
    if (parts.size() != 3 || (parts[2].size() != 2 && parts[2].size() != 4)) {
        return {};
    }
    const int year = FullYear(parts[2]);
    if (!Date::IsCivil(year, parts[0].toInt(), parts[1].toInt())) {
        return {};
    }
    const Date date = Date::FromCivil(year, parts[0].toInt(), parts[1].toInt());
    return {false, CountsAsEmpty(date) ? std::nullopt : std::optional(date)};
}

QString Form(std::optional<Date> date) {
    if (!date) {
        return {};
    }
    const CivilDate civil = date->Civil();
    return QStringLiteral("%1/%2/%3")
        .arg(civil.month, 2, 10, QLatin1Char('0'))
        .arg(civil.day, 2, 10, QLatin1Char('0'))
        .arg(civil.year, 4, 10, QLatin1Char('0'));
}

}  // namespace

DateBox::DateBox(const QString& name, const QString& caption, QWidget* parent)
    : LineBox(name, caption, ControlKind::Date, 11, parent) {
    Quietly([this] { setInputMask(QStringLiteral("99/99/9999;_")); });
    auto* open = addAction(theme::Icon(QStringLiteral("calendar")), QLineEdit::TrailingPosition);
    open->setText(QStringLiteral("Calendar"));
    open->setToolTip(QStringLiteral("Calendar (Alt+Down)"));
    connect(open, &QAction::triggered, this, &DateBox::OpenCalendar);
}

kv::Value DateBox::Value() const {
    return date_ ? kv::Value(*date_) : kv::Value();
}

bool DateBox::IsFilled() const {
    return !Text().contains(QLatin1Char('_'));
}

std::optional<Date> DateBox::DateValue() const {
    return date_;
}

void DateBox::SetDate(std::optional<Date> date) {
    EnterValue(date ? kv::Value(*date) : kv::Value());
}

bool DateBox::Check() {
    const Entry entry = ReadEntry(displayText());
    const bool good = entry.blank || entry.date.has_value();
    SetFault(good ? QString() : QStringLiteral("Not a date (MM/DD/YYYY)"));
    if (good) {
        kept_ = date_;
        ShowText(Form(entry.date));
    }
    return good;
}

void DateBox::Read() {
    const Entry entry = ReadEntry(displayText());
    const bool good = entry.blank || entry.date.has_value();
    date_ = good ? entry.date : kept_;
    if (good) {
        SetFault({});
    }
}

void DateBox::Show(const kv::Value& value) {
    const std::string* text = value.IfText();
    date_ = text != nullptr  ? ParseDate(*text)
            : value.IsNull() ? std::nullopt
                             : std::optional(value.ToDate());
    if (date_ && CountsAsEmpty(*date_)) {
        date_.reset();
    }
    kept_ = date_;
    setText(Form(date_));
    setCursorPosition(0);
}

void DateBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Down && event->modifiers().testFlag(Qt::AltModifier)) {
        OpenCalendar();
        return;
    }
    LineBox::keyPressEvent(event);
}

void DateBox::OpenCalendar() {
    if (isReadOnly() || !isEnabled()) {
        return;
    }
    auto* popup = new QFrame(this, Qt::Popup);
    popup->setObjectName(objectName() + QStringLiteral("Calendar"));
    popup->setAttribute(Qt::WA_DeleteOnClose);
    popup->setFrameShape(QFrame::StyledPanel);
    auto* layout = new QVBoxLayout(popup);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* calendar = new QCalendarWidget(popup);
    calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    calendar->setMinimumDate(QDate(1901, 1, 1));
    calendar->setFirstDayOfWeek(Qt::Sunday);
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday}) {
        // The red of the week's end can't be read on dark desktops.
        calendar->setWeekdayTextFormat(day, QTextCharFormat());
    }
    if (date_) {
        const CivilDate civil = date_->Civil();
        calendar->setSelectedDate(QDate(civil.year, civil.month, civil.day));
    }
    layout->addWidget(calendar);
    const auto pick = [this, popup](QDate day) {
        popup->close();
        SetDate(Date::FromCivil(day.year(), day.month(), day.day()));
    };
    connect(calendar, &QCalendarWidget::clicked, this, pick);
    connect(calendar, &QCalendarWidget::activated, this, pick);
    const QRect room = screen()->availableGeometry();
    const QSize size = popup->sizeHint();
    QPoint at = mapToGlobal(QPoint(0, height()));
    if (at.y() + size.height() > room.bottom()) {
        at.setY(mapToGlobal(QPoint(0, 0)).y() - size.height());
    }
    popup->move(std::min(at.x(), room.right() - size.width()), at.y());
    popup->show();
    calendar->setFocus();
}

}  // namespace kv
