#include "printing/render/page_layout.h"

#include <QPainter>
#include <QTextLayout>
#include <algorithm>

#include "printing/render/text_layout.h"

namespace kv {
namespace {

constexpr double kPaperWidth = 8.5;
constexpr double kPaperHeight = 11;
constexpr double kPictureDotsPerInch = 96;
/// Between the text of neighbouring columns, and above and below a row's text.
constexpr double kCellGap = 0.08;
constexpr double kRowGap = 0.02;
constexpr double kBarHeight = 0.16;
const QColor kFaint(0xC8, 0xC8, 0xC8);
const QColor kBarColor(0x3B, 0x6E, 0xA5);

QSizeF PaperSize(const PageSetup& setup) {
    const QSizeF upright(kPaperWidth, kPaperHeight);
    return setup.orientation == Orientation::Landscape ? upright.transposed() : upright;
}

QString NumberWord(double number) {
    return QString::number(number, 'f',
                           number == static_cast<double>(static_cast<long long>(number)) ? 0 : 2);
}

}  // namespace

/// Puts one block after the other on the pages.
class PageFlow {
  public:
    PageFlow(const Document& document, std::vector<PageMarks>& pages)
        : document_(document),
          pages_(pages),
          left_(Units(document.page.left)),
          top_(Units(document.page.top)) {
        const QSizeF paper = PaperSize(document.page) * kUnitsPerInch;
        width_ = paper.width() - left_ - Units(document.page.right);
        bottom_ = paper.height() - Units(document.page.bottom);
        NewPage();
    }

    void Run() {
        const std::vector<Block>& blocks = document_.Blocks();
        for (at_ = 0; at_ < blocks.size(); ++at_)
            std::visit([this](const auto& block) { Place(block); }, blocks[at_]);
        // A page that was begun and got nothing is not printed.
        if (pages_.size() > 1 && pages_.back().empty())
            pages_.pop_back();
    }

  private:
    using Layout = std::shared_ptr<QTextLayout>;

    void NewPage() {
        pages_.emplace_back();
        y_ = top_;
    }
    bool Fits(double height) const { return y_ + height <= bottom_; }
    /// A new page where the height does not fit on this one, but on a whole one.
    void Room(double height) {
        if (!Fits(height) && y_ > top_)
            NewPage();
    }
    void Put(PageMarks::value_type mark) { pages_.back().push_back(std::move(mark)); }

    static double HeightOf(const QTextLayout& layout) {
        double height = 0;
        for (int i = 0; i < layout.lineCount(); ++i)
            height += layout.lineAt(i).height();
        return height;
    }
    static double FirstLine(const QTextLayout& layout) {
        return layout.lineCount() > 0 ? layout.lineAt(0).height() : 0;
    }
    Layout LayOutParagraph(const Paragraph& paragraph) const {
        return LayOut(paragraph.runs, document_.style, paragraph.heading, paragraph.align,
                      width_ - Units(paragraph.indent));
    }

    /// The height that must stay together with a paragraph: those behind it that it is kept with, and the
    /// first line of what follows them.
    double KeptHeight() const {
        double height = 0;
        for (std::size_t i = at_; i < document_.Blocks().size(); ++i) {
            const auto* paragraph = std::get_if<Paragraph>(&document_.Blocks()[i]);
            if (paragraph == nullptr)
                return height + Units(3 * kBarHeight);
            const Layout layout = LayOutParagraph(*paragraph);
            height += Units(paragraph->spaceBefore);
            if (!paragraph->keepWithNext)
                return height + FirstLine(*layout);
            height += HeightOf(*layout) + Units(paragraph->spaceAfter);
        }
        return height;
    }

    void Place(const Paragraph& paragraph) {
        const Layout layout = LayOutParagraph(paragraph);
        if (paragraph.keepWithNext)
            Room(KeptHeight());
        if (y_ > top_)
            y_ += Units(paragraph.spaceBefore);
        for (int i = 0; i < layout->lineCount(); ++i) {
            const double height = layout->lineAt(i).height();
            Room(height);
            Put(TextMark{layout, i, {left_ + Units(paragraph.indent), y_}});
            y_ += height;
        }
        y_ += Units(paragraph.spaceAfter);
    }

    struct TableShape {
        std::vector<double> lefts;
        std::vector<double> widths;
        double left = 0;
        double right = 0;
    };
    TableShape ShapeOf(const Table& table) const {
        TableShape shape;
        shape.left = left_ + Units(table.indent);
        double taken = 0;
        int open = 0;
        for (const TableColumn& column : table.columns) {
            taken += Units(column.width);
            open += column.width <= 0 ? 1 : 0;
        }
        const double gaps =
            Units(kCellGap) * std::max<double>(0, static_cast<double>(table.columns.size()) - 1);
        const double rest = std::max(0.0, width_ - Units(table.indent) - taken - gaps);
        double x = shape.left;
        for (const TableColumn& column : table.columns) {
            const double width = column.width > 0 ? Units(column.width) : rest / open;
            shape.lefts.push_back(x);
            shape.widths.push_back(width);
            x += width + Units(kCellGap);
        }
        shape.right = x - Units(kCellGap);
        return shape;
    }

    std::vector<Layout> RowLayouts(const Table& table, const TableShape& shape,
                                   const std::vector<std::string>& row, const TextStyle& style) const {
        std::vector<Layout> cells;
        for (std::size_t i = 0; i < row.size() && i < shape.widths.size(); ++i)
            cells.push_back(LayOut(row[i], style, document_.style, table.columns[i].align, shape.widths[i]));
        return cells;
    }
    static double HeightOf(const std::vector<Layout>& cells) {
        double height = 0;
        for (const Layout& cell : cells)
            height = std::max(height, HeightOf(*cell));
        return height + 2 * Units(kRowGap);
    }

    /// Line by line, so that a row that no page holds goes on on the next one.
    void PlaceRow(const TableShape& shape, const std::vector<Layout>& cells) {
        y_ += Units(kRowGap);
        int lines = 0;
        for (const Layout& cell : cells)
            lines = std::max(lines, cell->lineCount());
        for (int line = 0; line < lines; ++line) {
            double height = 0;
            for (const Layout& cell : cells)
                if (line < cell->lineCount())
                    height = std::max(height, cell->lineAt(line).height());
            Room(height);
            for (std::size_t i = 0; i < cells.size(); ++i)
                if (line < cells[i]->lineCount())
                    Put(TextMark{cells[i], line, {shape.lefts[i], y_}});
            y_ += height;
        }
        y_ += Units(kRowGap);
    }

    void Place(const Table& table) {
        const TableShape shape = ShapeOf(table);
        std::vector<std::string> headings;
        for (const TableColumn& column : table.columns)
            headings.push_back(column.heading);
        TextStyle bold = table.style;
        bold.bold = true;
        const bool headed =
            std::any_of(headings.begin(), headings.end(), [](const auto& h) { return !h.empty(); });
        const std::vector<Layout> head =
            headed ? RowLayouts(table, shape, headings, bold) : std::vector<Layout>();
        const auto placeHead = [&] {
            if (!headed)
                return;
            PlaceRow(shape, head);
            Put(RuleMark{{shape.left, y_, shape.right, y_}, false});
        };
        const double headHeight = headed ? HeightOf(head) : 0;
        bool begun = false;
        for (const std::vector<std::string>& row : table.rows) {
            const std::vector<Layout> cells = RowLayouts(table, shape, row, table.style);
            const double height = HeightOf(cells);
            if (!begun) {
                Room(headHeight + height);
                placeHead();
                begun = true;
            } else if (!Fits(height)) {
                NewPage();
                placeHead();
            }
            PlaceRow(shape, cells);
            if (table.lines)
                Put(RuleMark{{shape.left, y_, shape.right, y_}, true});
        }
        if (!begun) {
            Room(headHeight);
            placeHead();
        }
    }

    void Place(const Picture& picture) {
        QImage image;
        image.loadFromData(
            QByteArray::fromRawData(picture.bytes.data(), static_cast<qsizetype>(picture.bytes.size())));
        if (image.isNull()) {
            Place(Paragraph{{{"(This picture can not be shown.)", {}}}});
            return;
        }
        const double own = image.width() / kPictureDotsPerInch;
        double width =
            std::min(Units(picture.width > 0 ? picture.width : own), width_ - Units(picture.indent));
        double height = width * image.height() / std::max(1, image.width());
        const double most = bottom_ - top_;
        if (height > most) {
            width *= most / height;
            height = most;
        }
        Room(height);
        Put(PictureMark{{left_ + Units(picture.indent), y_, width, height}, image});
        y_ += height;
    }

    void Place(const BarChart& chart) {
        double most = 0;
        double nameWidth = 0;
        double valueWidth = 0;
        std::vector<std::pair<Layout, Layout>> texts;
        for (const auto& [name, value] : chart.bars) {
            texts.emplace_back(
                LayOut(name, {}, document_.style, Align::Left, width_ / 3),
                LayOut(NumberWord(value).toStdString(), {}, document_.style, Align::Left, width_));
            most = std::max(most, value);
            nameWidth = std::max(nameWidth, texts.back().first->maximumWidth());
            valueWidth = std::max(valueWidth, texts.back().second->maximumWidth());
        }
        nameWidth = std::min(nameWidth, width_ / 3);
        const double barLeft = left_ + nameWidth + Units(kCellGap);
        const double barRoom = left_ + width_ - barLeft - valueWidth - Units(kCellGap);
        for (std::size_t i = 0; i < chart.bars.size(); ++i) {
            const double textHeight = std::max(HeightOf(*texts[i].first), Units(kBarHeight));
            Room(textHeight + Units(kCellGap));
            for (int line = 0; line < texts[i].first->lineCount(); ++line)
                Put(TextMark{texts[i].first, line, {left_, y_ + line * texts[i].first->lineAt(0).height()}});
            const double length = most > 0 ? barRoom * std::max(0.0, chart.bars[i].second) / most : 0;
            Put(BarMark{{barLeft, y_, length, Units(kBarHeight)}});
            Put(TextMark{texts[i].second, 0, {barLeft + length + Units(kCellGap), y_}});
            y_ += textHeight + Units(kCellGap);
        }
    }

    /// The headings of a chart's cells, and the hours over its days.
    void PlaceHours(const TableShape& shape, const std::vector<Layout>& head, double left, double hour) {
        constexpr int kHoursOfDay = 24;
        for (std::size_t i = 0; i < head.size(); ++i)
            Put(TextMark{head[i], 0, {shape.lefts[i], y_}});
        double height = HeightOf(head);
        for (int i = 0; i < kHoursOfDay; i += 2) {
            const int clock = i % (kHoursOfDay / 2);
            const std::string word =
                std::to_string(clock == 0 ? kHoursOfDay / 2 : clock) + (i < kHoursOfDay / 2 ? " AM" : " PM");
            const Layout text = LayOut(word, {}, document_.style, Align::Left, 2 * hour);
            Put(TextMark{text, 0, {left + i * hour, y_}});
            height = std::max(height, HeightOf(*text));
        }
        y_ += height;
        Put(RuleMark{{shape.left, y_, left + kHoursOfDay * hour, y_}, false});
        y_ += Units(kRowGap);
    }

    void Place(const DayChart& chart) {
        constexpr double kMinutes = 1440;
        constexpr double kHours = 24;
        Table cells;
        cells.columns = chart.columns;
        const TableShape shape = ShapeOf(cells);
        const double left = shape.right + Units(kCellGap);
        const double minute = (left_ + width_ - left) / kMinutes;
        std::vector<std::string> headings;
        for (const TableColumn& column : chart.columns)
            headings.push_back(column.heading);
        const std::vector<Layout> head = RowLayouts(cells, shape, headings, {});
        bool begun = false;
        for (const DayChart::Row& row : chart.rows) {
            const std::vector<Layout> texts = RowLayouts(cells, shape, row.cells, {});
            const double height = std::max(HeightOf(texts), Units(kBarHeight));
            if (!begun || !Fits(height)) {
                begun ? NewPage() : Room(2 * height);
                PlaceHours(shape, head, left, minute * kMinutes / kHours);
                begun = true;
            }
            for (std::size_t i = 0; i < texts.size(); ++i)
                Put(TextMark{texts[i], 0, {shape.lefts[i], y_}});
            for (const DayChart::Span& span : row.spans) {
                const double width = (span.to - span.from) * minute;
                Put(BarMark{{left + span.from * minute, y_, width, height - Units(kRowGap)}, true});
                const Layout text = LayOut(span.text, {}, document_.style, Align::Left, width);
                // A word that its bar is too narrow for would run over the next one.
                if (text->lineCount() > 0 && text->lineAt(0).naturalTextWidth() <= width)
                    Put(TextMark{text, 0, {left + span.from * minute, y_}});
            }
            y_ += height;
            Put(RuleMark{{shape.left, y_, left + kMinutes * minute, y_}, true});
        }
    }

    void Place(const PageBreak& /*pageBreak*/) { NewPage(); }

    const Document& document_;
    std::vector<PageMarks>& pages_;
    std::size_t at_ = 0;
    double left_;
    double top_;
    double width_ = 0;
    double bottom_ = 0;
    double y_ = 0;
};

namespace {

void DrawStrip(QPainter& painter, const PageStrip& strip, const TextStyle& style, double left, double width,
               double y) {
    const std::pair<const std::string&, Align> texts[] = {
        {strip.left, Align::Left}, {strip.center, Align::Center}, {strip.right, Align::Right}};
    for (const auto& [text, align] : texts) {
        if (text.empty())
            continue;
        const auto layout = LayOut(text, {}, style, align, width);
        for (int i = 0; i < layout->lineCount(); ++i)
            layout->lineAt(i).draw(&painter, {left, y + i * layout->lineAt(0).height()});
    }
}

PageStrip NumberStrip(int page, int pages) {
    return {{}, "Page " + std::to_string(page) + " of " + std::to_string(pages), {}};
}

/// Draws what stands on a page.
struct Drawing {
    QPainter& painter;

    void operator()(const TextMark& text) const { text.layout->lineAt(text.line).draw(&painter, text.at); }
    void operator()(const RuleMark& rule) const {
        painter.setPen(QPen(rule.faint ? kFaint : QColor(Qt::black), Units(rule.faint ? 0.005 : 0.01)));
        painter.drawLine(rule.line);
        painter.setPen(Qt::black);
    }
    void operator()(const BarMark& bar) const { painter.fillRect(bar.rect, bar.faint ? kFaint : kBarColor); }
    void operator()(const PictureMark& picture) const { painter.drawImage(picture.rect, picture.image); }
};

}  // namespace

PageLayout::PageLayout(const Document& document) : document_(document) {
    PageFlow(document_, pages_).Run();
}

QSizeF PageLayout::PageSize() const {
    return PaperSize(document_.page);
}

void PageLayout::Draw(QPainter& painter, int page, double dotsPerInch) const {
    if (page < 1 || page > PageCount())
        return;
    painter.save();
    painter.scale(dotsPerInch / kUnitsPerInch, dotsPerInch / kUnitsPerInch);
    painter.setPen(Qt::black);
    for (const auto& mark : pages_[static_cast<std::size_t>(page) - 1])
        std::visit(Drawing{painter}, mark);
    const PageSetup& setup = document_.page;
    const QSizeF paper = PageSize() * kUnitsPerInch;
    const double left = Units(setup.left);
    const double width = paper.width() - left - Units(setup.right);
    if (document_.header)
        DrawStrip(painter, document_.header(page, PageCount()), document_.style, left, width,
                  Units(setup.top / 2));
    const PageHook footer = document_.footer ? document_.footer : PageHook(NumberStrip);
    DrawStrip(painter, footer(page, PageCount()), document_.style, left, width,
              paper.height() - Units(setup.bottom * 2 / 3));
    painter.restore();
}

}  // namespace kv
