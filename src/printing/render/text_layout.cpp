#include "printing/render/text_layout.h"

#include <QTextLayout>
#include <array>

namespace kv {
namespace {

constexpr double kPointsPerInch = 72;
/// How much larger than the running text a heading stands.
constexpr std::array<double, 4> kHeadingScale = {1.0, 1.5, 1.2, 1.05};

Qt::Alignment QtAlignment(Align align) {
    switch (align) {
        case Align::Center:
            return Qt::AlignHCenter;
        case Align::Right:
            return Qt::AlignRight;
        case Align::Left:
            break;
    }
    return Qt::AlignLeft;
}

}  // namespace

QFont FontOf(const TextStyle& style, const TextStyle& base, int heading) {
    const std::string& family = style.font.empty() ? base.font : style.font;
    const double points = style.points > 0 ? style.points : base.points;
    const auto level = static_cast<std::size_t>(heading) % kHeadingScale.size();
    QFont font(QString::fromStdString(family));
    font.setStyleHint(family.rfind("Courier", 0) == 0 ? QFont::TypeWriter : QFont::SansSerif);
    font.setPixelSize(static_cast<int>(points * kHeadingScale[level] / kPointsPerInch * kUnitsPerInch));
    font.setHintingPreference(QFont::PreferNoHinting);
    // No ligatures: who looks for "first" in a PDF must find it.
    font.setStyleStrategy(QFont::PreferNoShaping);
    font.setBold(style.bold || base.bold || heading > 0);
    font.setItalic(style.italic || base.italic);
    font.setUnderline(style.underline);
    return font;
}

std::shared_ptr<QTextLayout> LayOut(const std::vector<TextRun>& runs, const TextStyle& base, int heading,
                                    Align align, double width) {
    QString text;
    QList<QTextLayout::FormatRange> formats;
    for (const TextRun& run : runs) {
        const QString piece =
            QString::fromStdString(run.text).replace(QLatin1Char('\n'), QChar::LineSeparator);
        QTextLayout::FormatRange range;
        range.start = static_cast<int>(text.size());
        range.length = static_cast<int>(piece.size());
        range.format.setFont(FontOf(run.style, base, heading));
        formats.push_back(range);
        text += piece;
    }
    auto layout = std::make_shared<QTextLayout>(text, FontOf({}, base, heading));
    layout->setFormats(formats);
    QTextOption option(QtAlignment(align));
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout->setTextOption(option);
    layout->setCacheEnabled(true);
    layout->beginLayout();
    for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
        line.setLineWidth(width);
        line.setPosition({0, 0});
    }
    layout->endLayout();
    return layout;
}

std::shared_ptr<QTextLayout> LayOut(const std::string& text, const TextStyle& style, const TextStyle& base,
                                    Align align, double width) {
    return LayOut({{text, style}}, base, 0, align, width);
}

}  // namespace kv
