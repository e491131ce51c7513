#include "printing/render/print.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

#include "base/platform.h"

namespace kv {
namespace {

QPageLayout PaperOf(const PageLayout& layout) {
    const bool wide = layout.Source().page.orientation == Orientation::Landscape;
    return {QPageSize(QPageSize::Letter), wide ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF(),
            QPageLayout::Inch};
}

/// Pages on any device that takes them one by one; its origin must be the paper's corner.
template <typename Device>
bool DrawPages(const PageLayout& layout, Device& device, int from, int to) {
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    for (int page = from; page <= to; ++page) {
        if (page > from && !device.newPage())
            return false;
        layout.Draw(painter, page, device.logicalDpiX());
    }
    return painter.end();
}

}  // namespace

bool PrintPages(const PageLayout& layout, QPrinter& printer, int from, int to) {
    printer.setFullPage(true);
    printer.setPageOrientation(PaperOf(layout).orientation());
    printer.setDocName(QString::fromStdString(layout.Source().Title()));
    return DrawPages(layout, printer, from, to);
}

void SavePdf(const PageLayout& layout, const std::filesystem::path& file) {
    QBuffer content;
    content.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&content);
        writer.setPageLayout(PaperOf(layout));
        writer.setResolution(600);
        writer.setTitle(QString::fromStdString(layout.Source().Title()));
        DrawPages(layout, writer, 1, layout.PageCount());
    }
    const QByteArray& bytes = content.data();
    ReplaceFile(file, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

}  // namespace kv
