#include "screens/widgets/preview_pages.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>

#include "screens/widgets/theme.h"

namespace kv {

namespace {

constexpr double kGap = 2 * theme::kUnit;
constexpr double kThumbnailWidth = 20 * theme::kUnit;

}  // namespace

PreviewPages::PreviewPages(const QString& name, const PageLayout& layout, QWidget* parent)
    : QAbstractScrollArea(parent), layout_(layout) {
    setObjectName(name);
    setAccessibleName(tr("Pages"));
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setBackgroundRole(QPalette::Mid);
}

void PreviewPages::SetPage(int page) {
    const int kept = std::clamp(page, 1, std::max(1, PageCount()));
    if (kept == page_) {
        return;
    }
    page_ = kept;
    Arrange();
    if (mode_ == ZoomMode::Thumbnail) {
        for (const Sheet& sheet : sheets_) {
            if (sheet.page == page_) {
                verticalScrollBar()->setValue(static_cast<int>(sheet.rect.top() - kGap));
            }
        }
    } else {
        verticalScrollBar()->setValue(0);
    }
    emit pageChanged(page_);
}

void PreviewPages::SetMode(ZoomMode mode) {
    mode_ = mode;
    Arrange();
    emit pageChanged(page_);
}

void PreviewPages::SetZoom(int percent) {
    zoom_ = std::max(1, percent);
    mode_ = ZoomMode::Percentage;
    Arrange();
}

QSizeF PreviewPages::SheetSize(QSizeF room) const {
    const QSizeF paper = layout_.PageSize();
    const auto byWidth = [&](double width) { return QSizeF(width, width * paper.height() / paper.width()); };
    switch (mode_) {
        case ZoomMode::Percentage:
            return paper * logicalDpiX() * zoom_ / 100.0;
        case ZoomMode::Thumbnail:
            return byWidth(kThumbnailWidth);
        case ZoomMode::TwoPages:
            return paper.scaled({(room.width() - kGap) / 2, room.height()}, Qt::KeepAspectRatio);
        case ZoomMode::WholePage:
            return paper.scaled(room, Qt::KeepAspectRatio);
        case ZoomMode::PageWidth:
            return byWidth(room.width());
        case ZoomMode::Stretch:
            return room;
    }
    return room;
}

void PreviewPages::ArrangeInRow(const std::vector<int>& pages, QSizeF sheet) {
    const double width = static_cast<double>(pages.size()) * (sheet.width() + kGap) - kGap;
    double x = std::max(kGap, (viewport()->width() - width) / 2);
    const double y = std::max(kGap, (viewport()->height() - sheet.height()) / 2);
    for (const int page : pages) {
        sheets_.push_back({page, QRectF(QPointF(x, y), sheet)});
        x += sheet.width() + kGap;
    }
}

void PreviewPages::ArrangeThumbnails(QSizeF room) {
    const QSizeF sheet = SheetSize(room);
    const int perRow = std::max(1, static_cast<int>((room.width() + kGap) / (sheet.width() + kGap)));
    for (int page = 1; page <= PageCount(); ++page) {
        const int column = (page - 1) % perRow;
        const int row = (page - 1) / perRow;
        const QPointF at(kGap + column * (sheet.width() + kGap), kGap + row * (sheet.height() + kGap));
        sheets_.push_back({page, QRectF(at, sheet)});
    }
}

void PreviewPages::Arrange() {
    sheets_.clear();
    const QSizeF room(std::max(1.0, viewport()->width() - 2 * kGap),
                      std::max(1.0, viewport()->height() - 2 * kGap));
    if (mode_ == ZoomMode::Thumbnail) {
        ArrangeThumbnails(room);
    } else if (mode_ == ZoomMode::TwoPages && page_ < PageCount()) {
        ArrangeInRow({page_, page_ + 1}, SheetSize(room));
    } else {
        ArrangeInRow({page_}, SheetSize(room));
    }
    QRectF all;
    for (const Sheet& sheet : sheets_) {
        all = all.united(sheet.rect);
    }
    const auto setUp = [](QScrollBar* bar, double content, int visible) {
        bar->setRange(0, std::max(0, static_cast<int>(content + kGap) - visible));
        bar->setPageStep(visible);
        bar->setSingleStep(5 * theme::kUnit);
    };
    setUp(horizontalScrollBar(), all.right(), viewport()->width());
    setUp(verticalScrollBar(), all.bottom(), viewport()->height());
    viewport()->update();
}

void PreviewPages::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(viewport());
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                           QPainter::SmoothPixmapTransform);
    painter.translate(-horizontalScrollBar()->value(), -verticalScrollBar()->value());
    const QRectF seen = painter.transform().inverted().mapRect(QRectF(viewport()->rect()));
    const QSizeF paper = layout_.PageSize();
    for (const Sheet& sheet : sheets_) {
        if (!sheet.rect.intersects(seen)) {
            continue;
        }
        painter.fillRect(sheet.rect, Qt::white);
        const bool chosen = mode_ == ZoomMode::Thumbnail && sheet.page == page_;
        painter.setPen(QPen(chosen ? palette().color(QPalette::Highlight) : palette().color(QPalette::Dark),
                            chosen ? 3 : 1));
        painter.drawRect(sheet.rect);
        painter.save();
        painter.setClipRect(sheet.rect);
        painter.translate(sheet.rect.topLeft());
        const double dots = sheet.rect.width() / paper.width();
        // Stretched, the paper's two sides have a scale each.
        painter.scale(1, sheet.rect.height() / (paper.height() * dots));
        layout_.Draw(painter, sheet.page, dots);
        painter.restore();
    }
}

void PreviewPages::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    Arrange();
}

void PreviewPages::keyPressEvent(QKeyEvent* event) {
    QScrollBar* down = verticalScrollBar();
    switch (event->key()) {
        case Qt::Key_Home:
            return SetPage(1);
        case Qt::Key_End:
            return SetPage(PageCount());
        case Qt::Key_PageDown:
            return down->value() < down->maximum() ? down->triggerAction(QScrollBar::SliderPageStepAdd)
                                                   : SetPage(std::min(page_ + Step(), PageCount()));
        case Qt::Key_PageUp:
            return down->value() > 0 ? down->triggerAction(QScrollBar::SliderPageStepSub)
                                     : SetPage(page_ - Step());
        default:
            QAbstractScrollArea::keyPressEvent(event);
    }
}

void PreviewPages::wheelEvent(QWheelEvent* event) {
    QScrollBar* down = verticalScrollBar();
    const int turned = event->angleDelta().y();
    if (turned < 0 && down->value() == down->maximum() && page_ + Step() <= PageCount()) {
        SetPage(page_ + Step());
    } else if (turned > 0 && down->value() == 0 && page_ > 1) {
        SetPage(page_ - Step());
    } else {
        QAbstractScrollArea::wheelEvent(event);
    }
}

void PreviewPages::mousePressEvent(QMouseEvent* event) {
    const QPointF at =
        event->position() + QPointF(horizontalScrollBar()->value(), verticalScrollBar()->value());
    for (const Sheet& sheet : sheets_) {
        if (sheet.rect.contains(at)) {
            SetPage(sheet.page);
            return;
        }
    }
}

}  // namespace kv
