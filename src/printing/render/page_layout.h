#pragma once
#include <QSizeF>
#include <vector>

#include "printing/document/document.h"
#include "printing/render/page_marks.h"

class QPainter;

namespace kv {

/// A document laid out on its pages. Needs a QGuiApplication for its fonts.
class PageLayout {
  public:
    explicit PageLayout(const Document& document);

    int PageCount() const { return static_cast<int>(pages_.size()); }
    /// In inches.
    QSizeF PageSize() const;
    const Document& Source() const { return document_; }
    /// Draws a page, counted from 1, with its header and footer, on a device of so many dots an inch. The
    /// painter's origin is the paper's upper left corner.
    void Draw(QPainter& painter, int page, double dotsPerInch) const;

  private:
    Document document_;
    std::vector<PageMarks> pages_;
};

}  // namespace kv
