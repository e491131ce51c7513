#include "screens/widgets/quarter_chart.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>

#include "screens/widgets/theme.h"

namespace kv {

namespace {

constexpr int kQuartersOfHour = 4;
constexpr int kHours = 24;
constexpr int kMinutesOfQuarter = 15;
constexpr int kMinutesOfHour = 60;

QString ClockWord(int quarter) {
    const int minute = quarter * kMinutesOfQuarter;
    const int hour = minute / kMinutesOfHour % kHours;
    const int clock = hour % (kHours / 2) == 0 ? kHours / 2 : hour % (kHours / 2);
    return QStringLiteral("%1:%2 %3")
        .arg(clock)
        .arg(minute % kMinutesOfHour, 2, 10, QLatin1Char('0'))
        .arg(hour < kHours / 2 ? QStringLiteral("AM") : QStringLiteral("PM"));
}

QString HourWord(int hour) {
    const int clock = hour % (kHours / 2) == 0 ? kHours / 2 : hour % (kHours / 2);
    return QStringLiteral("%1 %2").arg(clock).arg(hour < kHours / 2 ? QStringLiteral("AM")
                                                                    : QStringLiteral("PM"));
}

/// The grounds of the bars; darker on a dark desktop.
QColor GroundOf(QuarterKind kind, bool isCurrent, bool dark) {
    const auto pick = [dark](QRgb light, QRgb night) { return QColor(dark ? night : light); };
    if (isCurrent && kind != QuarterKind::Free) {
        return pick(qRgb(255, 192, 255), qRgb(122, 66, 122));
    }
    switch (kind) {
        case QuarterKind::Busy:
            return pick(qRgb(192, 192, 255), qRgb(70, 70, 140));
        case QuarterKind::Unavailable:
            return pick(qRgb(192, 192, 192), qRgb(90, 90, 90));
        case QuarterKind::Assignment:
            return pick(qRgb(224, 224, 224), qRgb(66, 78, 90));
        case QuarterKind::Free:
            break;
    }
    return pick(qRgb(255, 255, 255), qRgb(35, 37, 40));
}

QColor RequestedGround(bool dark) {
    return dark ? QColor(34, 92, 54) : QColor(196, 238, 206);
}

}  // namespace

QuarterChart::QuarterChart(const QString& name, const std::vector<ChartColumn>& columns, QWidget* parent)
    : QAbstractScrollArea(parent), columns_(columns), shown_(columns.size(), true) {
    setObjectName(name);
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalScrollBar()->setSingleStep(1);
    viewport()->setBackgroundRole(QPalette::Base);
    viewport()->setAutoFillBackground(true);
}

void QuarterChart::SetRows(std::vector<ChartRow> rows, std::function<QString(std::uint32_t)> texts) {
    rows_ = std::move(rows);
    texts_ = std::move(texts);
    current_ = -1;
    TellEmpty();
    FitScrollBar();
    viewport()->update();
}

void QuarterChart::TellEmpty() {
    if (rows_.empty()) {
        setAccessibleDescription(emptyText_);
    }
}

QString QuarterChart::TextAt(int row, int quarter) const {
    return texts_(Row(row).quarters[static_cast<std::size_t>(quarter)].text);
}

void QuarterChart::SetColumnShown(int column, bool shown) {
    shown_[static_cast<std::size_t>(column)] = shown;
    viewport()->update();
}

void QuarterChart::SetCurrentRow(int row) {
    current_ = row >= 0 && row < RowCount() ? row : -1;
    if (current_ >= 0) {
        QScrollBar* bar = verticalScrollBar();
        if (current_ < bar->value()) {
            bar->setValue(current_);
        } else if (current_ >= bar->value() + bar->pageStep()) {
            bar->setValue(current_ - bar->pageStep() + 1);
        }
        QString words;
        for (const QString& cell : Row(current_).cells) {
            words += cell + QLatin1Char(' ');
        }
        setAccessibleDescription(Row(current_).tip.isEmpty()
                                     ? words.trimmed()
                                     : words.trimmed() + QStringLiteral(". ") + Row(current_).tip);
    }
    viewport()->update();
}

int QuarterChart::TopRow() const {
    return verticalScrollBar()->value();
}

void QuarterChart::SetTopRow(int row) {
    verticalScrollBar()->setValue(row);
}

void QuarterChart::SetRequested(int firstQuarter, int quarters) {
    requestedFirst_ = firstQuarter;
    requestedCount_ = quarters;
    viewport()->update();
}

void QuarterChart::SetEmptyText(const QString& text) {
    emptyText_ = text;
    TellEmpty();
    viewport()->update();
}

QSize QuarterChart::sizeHint() const {
    constexpr int kRows = 12;
    constexpr int kQuarterWidth = 6;
    return {LeadsWidth() + kChartQuarters * kQuarterWidth, HeaderHeight() + kRows * RowHeight()};
}

int QuarterChart::RowHeight() const {
    return fontMetrics().height() + theme::kHalfUnit + 2;
}

int QuarterChart::HeaderHeight() const {
    return fontMetrics().height() + theme::kUnit;
}

int QuarterChart::ColumnWidth(const ChartColumn& column) const {
    return theme::CharactersWide(*this, column.characters) + theme::kUnit;
}

int QuarterChart::LeadsWidth() const {
    int width = 0;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        width += shown_[i] ? ColumnWidth(columns_[i]) : 0;
    }
    return width;
}

int QuarterChart::QuarterLeft(int quarter) const {
    const int left = LeadsWidth();
    return left + (viewport()->width() - left) * quarter / kChartQuarters;
}

int QuarterChart::QuarterAt(int x) const {
    const int left = LeadsWidth();
    const int width = viewport()->width() - left;
    return x < left || width <= 0 ? -1 : std::min(kChartQuarters - 1, (x - left) * kChartQuarters / width);
}

int QuarterChart::RowAt(int y) const {
    const int row = y < HeaderHeight() ? -1 : TopRow() + (y - HeaderHeight()) / RowHeight();
    return row < RowCount() ? row : -1;
}

void QuarterChart::FitScrollBar() {
    const int page = std::max(1, (viewport()->height() - HeaderHeight()) / RowHeight());
    verticalScrollBar()->setPageStep(page);
    verticalScrollBar()->setRange(0, std::max(0, RowCount() - page));
}

void QuarterChart::MakeCurrent(int row) {
    if (row != current_ && row >= 0 && row < RowCount()) {
        SetCurrentRow(row);
        emit currentRowChanged(row);
    }
}

void QuarterChart::PaintHeader(QPainter& painter) const {
    const QRect header(0, 0, viewport()->width(), HeaderHeight());
    painter.fillRect(header, palette().button());
    painter.setPen(palette().color(QPalette::ButtonText));
    int x = 0;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (!shown_[i]) {
            continue;
        }
        const int width = ColumnWidth(columns_[i]);
        painter.drawText(
            QRect(x, 0, width, HeaderHeight()).adjusted(theme::kHalfUnit, 0, -theme::kHalfUnit, 0),
            Qt::AlignVCenter | (columns_[i].right ? Qt::AlignRight : Qt::AlignLeft), columns_[i].heading);
        x += width;
    }
    const int hourWidth = QuarterLeft(kQuartersOfHour) - QuarterLeft(0);
    const int step = hourWidth > fontMetrics().horizontalAdvance(HourWord(kHours / 2)) + theme::kHalfUnit
                         ? 1
                         : 3;  // every third hour where the words would run into each other
    for (int hour = 0; hour < kHours; hour += step) {
        painter.drawText(QRect(QuarterLeft(hour * kQuartersOfHour) + 2, 0, step * hourWidth, HeaderHeight()),
                         Qt::AlignVCenter | Qt::AlignLeft, HourWord(hour));
    }
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(header.bottomLeft(), header.bottomRight());
}

void QuarterChart::PaintBars(QPainter& painter, const ChartRow& row, int top, bool isCurrent) const {
    const bool dark = theme::IsDark(palette());
    const int height = RowHeight() - 1;
    for (int quarter = 0; quarter < kChartQuarters;) {
        const ChartQuarter first = row.quarters[static_cast<std::size_t>(quarter)];
        int end = quarter + 1;
        while (end < kChartQuarters && row.quarters[static_cast<std::size_t>(end)].kind == first.kind &&
               row.quarters[static_cast<std::size_t>(end)].text == first.text) {
            ++end;
        }
        const QRect bar(QuarterLeft(quarter), top, QuarterLeft(end) - QuarterLeft(quarter), height);
        if (first.kind != QuarterKind::Free) {
            painter.fillRect(bar, GroundOf(first.kind, isCurrent, dark));
            if (first.kind == QuarterKind::Unavailable) {
                painter.fillRect(bar, QBrush(palette().color(QPalette::Mid), Qt::BDiagPattern));
            }
            painter.setPen(palette().color(QPalette::Mid));
            painter.drawRect(bar.adjusted(0, 0, -1, -1));
            painter.setPen(palette().color(QPalette::Text));
            painter.drawText(bar.adjusted(3, 0, -2, 0), Qt::AlignVCenter | Qt::AlignLeft,
                             fontMetrics().elidedText(texts_(first.text), Qt::ElideRight, bar.width() - 5));
        } else if (isCurrent && requestedFirst_ >= 0) {
            const int from = std::max(quarter, requestedFirst_);
            const int to = std::min(end, requestedFirst_ + requestedCount_);
            if (from < to) {
                painter.fillRect(QRect(QuarterLeft(from), top, QuarterLeft(to) - QuarterLeft(from), height),
                                 RequestedGround(dark));
            }
        }
        quarter = end;
    }
}

void QuarterChart::PaintRow(QPainter& painter, int index, int top) const {
    const ChartRow& row = Row(index);
    const bool isCurrent = index == current_;
    const bool dark = theme::IsDark(palette());
    const int height = RowHeight() - 1;
    const int leads = LeadsWidth();
    painter.fillRect(QRect(0, top, leads, height),
                     isCurrent ? GroundOf(QuarterKind::Busy, true, dark)
                               : palette().color(index % 2 == 0 ? QPalette::Base : QPalette::AlternateBase));
    painter.setPen(palette().color(QPalette::Text));
    QFont font = this->font();
    font.setBold(isCurrent);
    painter.setFont(font);
    int x = 0;
    for (std::size_t i = 0; i < columns_.size() && i < row.cells.size(); ++i) {
        if (!shown_[i]) {
            continue;
        }
        const int width = ColumnWidth(columns_[i]);
        QRect cell = QRect(x, top, width, height).adjusted(theme::kHalfUnit, 0, -theme::kHalfUnit, 0);
        for (const QString& icon : {row.icon, row.mark}) {
            if (i == 0 && !icon.isEmpty()) {
                const int side = height - 2;
                theme::Icon(icon).paint(&painter, QRect(cell.left(), top + 1, side, side));
                cell.setLeft(cell.left() + side + 2);
            }
        }
        painter.drawText(cell, Qt::AlignVCenter | (columns_[i].right ? Qt::AlignRight : Qt::AlignLeft),
                         QFontMetrics(font).elidedText(row.cells[i], Qt::ElideRight, cell.width()));
        x += width;
    }
    painter.setFont(this->font());
    PaintBars(painter, row, top, isCurrent);
    if (hasFocus() && isCurrent) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DashLine));
        const QRect place = hasCursor_ ? QRect(QuarterLeft(quarter_), top,
                                               QuarterLeft(quarter_ + 1) - QuarterLeft(quarter_), height)
                                       : QRect(0, top, viewport()->width(), height);
        painter.drawRect(place.adjusted(0, 0, -1, -1));
    }
}

void QuarterChart::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(viewport());
    const int header = HeaderHeight();
    const int bottom = viewport()->height();
    int top = header;
    painter.setClipRect(0, header, viewport()->width(), bottom - header);
    for (int row = TopRow(); row < RowCount() && top < bottom; ++row, top += RowHeight()) {
        PaintRow(painter, row, top);
    }
    painter.setPen(QPen(palette().color(QPalette::Mid), 1, Qt::DotLine));
    for (int hour = 0; hour < kHours; ++hour) {
        const int x = QuarterLeft(hour * kQuartersOfHour);
        painter.drawLine(x, header, x, std::min(top, bottom));
    }
    if (requestedFirst_ >= 0 && requestedCount_ > 0) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        const int last = std::min(kChartQuarters, requestedFirst_ + requestedCount_);
        for (const int quarter : {requestedFirst_, last}) {
            painter.drawLine(QuarterLeft(quarter), header, QuarterLeft(quarter), std::min(top, bottom));
        }
    }
    if (rows_.empty()) {
        painter.setPen(theme::ColorOf(theme::Ink::Hint, palette()));
        painter.drawText(viewport()->rect().adjusted(theme::kUnit, header + theme::kUnit, -theme::kUnit, 0),
                         Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, emptyText_);
    }
    painter.setClipping(false);
    PaintHeader(painter);
}

void QuarterChart::resizeEvent(QResizeEvent* /*event*/) {
    FitScrollBar();
}

void QuarterChart::scrollContentsBy(int /*dx*/, int /*dy*/) {
    viewport()->update();
}

void QuarterChart::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        FitScrollBar();
    }
}

void QuarterChart::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void QuarterChart::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

void QuarterChart::mousePressEvent(QMouseEvent* event) {
    const int row = RowAt(event->pos().y());
    if (row < 0) {
        return;
    }
    MakeCurrent(row);
    if (const int quarter = QuarterAt(event->pos().x()); hasCursor_ && quarter >= 0) {
        quarter_ = quarter;
        viewport()->update();
        emit quarterPicked(row, quarter);
    }
}

void QuarterChart::mouseDoubleClickEvent(QMouseEvent* event) {
    if (const int row = RowAt(event->pos().y()); row >= 0) {
        emit rowActivated(row);
    }
}

void QuarterChart::keyPressEvent(QKeyEvent* event) {
    const int page = verticalScrollBar()->pageStep();
    const int last = RowCount() - 1;
    switch (event->key()) {
        case Qt::Key_Up:
            MakeCurrent(std::max(0, current_ - 1));
            return;
        case Qt::Key_Down:
            MakeCurrent(std::min(last, current_ + 1));
            return;
        case Qt::Key_PageUp:
            MakeCurrent(std::max(0, current_ - page));
            return;
        case Qt::Key_PageDown:
            MakeCurrent(std::min(last, current_ + page));
            return;
        case Qt::Key_Home:
            MakeCurrent(0);
            return;
        case Qt::Key_End:
            MakeCurrent(last);
            return;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (current_ >= 0) {
                emit rowActivated(current_);
            }
            return;
        case Qt::Key_Left:
        case Qt::Key_Right:
            if (hasCursor_) {
                quarter_ =
                    std::clamp(quarter_ + (event->key() == Qt::Key_Left ? -1 : 1), 0, kChartQuarters - 1);
                viewport()->update();
                return;
            }
            break;
        case Qt::Key_Space:
            if (hasCursor_ && current_ >= 0) {
                emit quarterPicked(current_, quarter_);
                return;
            }
            break;
        default:
            break;
    }
    QAbstractScrollArea::keyPressEvent(event);
}

QString QuarterChart::TipAt(const QPoint& at) const {
    const int row = RowAt(at.y());
    if (row < 0) {
        return {};
    }
    const int quarter = QuarterAt(at.x());
    if (quarter < 0) {
        return Row(row).tip;
    }
    const auto& quarters = Row(row).quarters;
    const ChartQuarter& here = quarters[static_cast<std::size_t>(quarter)];
    int first = quarter;
    int end = quarter + 1;
    const auto same = [&](int other) {
        const ChartQuarter& there = quarters[static_cast<std::size_t>(other)];
        return there.kind == here.kind && there.text == here.text;
    };
    while (first > 0 && same(first - 1)) {
        --first;
    }
    while (end < kChartQuarters && same(end)) {
        ++end;
    }
    const QString what = here.kind == QuarterKind::Free ? tr("free") : texts_(here.text);
    return QStringLiteral("%1 - %2: %3").arg(ClockWord(first), ClockWord(end), what);
}

bool QuarterChart::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        QToolTip::showText(help->globalPos(), TipAt(help->pos()), viewport());
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

}  // namespace kv
