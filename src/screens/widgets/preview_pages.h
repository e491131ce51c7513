#pragma once
#include <QAbstractScrollArea>
#include <utility>
#include <vector>

#include "printing/render/page_layout.h"

namespace kv {

enum class ZoomMode { Percentage, Thumbnail, TwoPages, WholePage, PageWidth, Stretch };

/// Shows the pages of a layout, which outlives it. Page Up, Page Down, Home, End and the wheel beyond a
/// page's edge turn the pages.
class PreviewPages : public QAbstractScrollArea {
    Q_OBJECT
  public:
    PreviewPages(const QString& name, const PageLayout& layout, QWidget* parent);

    int PageCount() const { return layout_.PageCount(); }
    /// The current page, counted from 1; with two pages in view the left one.
    int Page() const { return page_; }
    /// Kept inside the document.
    void SetPage(int page);
    ZoomMode Mode() const { return mode_; }
    void SetMode(ZoomMode mode);
    /// In percent of the paper's size; holds in the mode Percentage.
    int Zoom() const { return zoom_; }
    void SetZoom(int percent);
    /// How many pages a step goes.
    int Step() const { return mode_ == ZoomMode::TwoPages ? 2 : 1; }

  signals:
    void pageChanged(int page);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    struct Sheet {
        int page = 0;
        QRectF rect;
    };
    void Arrange();
    void ArrangeInRow(const std::vector<int>& pages, QSizeF sheet);
    void ArrangeThumbnails(QSizeF room);
    QSizeF SheetSize(QSizeF room) const;

    const PageLayout& layout_;
    int page_ = 1;
    int zoom_ = 100;
    ZoomMode mode_ = ZoomMode::WholePage;
    std::vector<Sheet> sheets_;
};

}  // namespace kv
