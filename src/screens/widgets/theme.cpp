#include "screens/widgets/theme.h"

#include <QApplication>
#include <QFile>
#include <QFontMetrics>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <QWidget>

static void InitIcons() {
    // Inside a static library the linker would drop the resources that nothing names.
    Q_INIT_RESOURCE(icons_kv_screens);
}

namespace kv::theme {

namespace {

QByteArray IconSource(const QString& name) {
    InitIcons();
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return file.readAll();
}

QPixmap Render(const QString& name, const QByteArray& source, const QColor& ink, double opacity, QSize size) {
    const QString key = QStringLiteral("kv/%1/%2/%3/%4x%5")
                            .arg(name, ink.name(QColor::HexArgb))
                            .arg(opacity)
                            .arg(size.width())
                            .arg(size.height());
    QPixmap picture;
    if (QPixmapCache::find(key, &picture)) {
        return picture;
    }
    QByteArray drawing = source;
    drawing.replace("currentColor", ink.name().toLatin1());
    QSvgRenderer renderer(drawing);
    picture = QPixmap(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setOpacity(opacity);
    const double side = std::min(size.width(), size.height());
    renderer.render(&painter, QRectF((size.width() - side) / 2, (size.height() - side) / 2, side, side));
    painter.end();
    QPixmapCache::insert(key, picture);
    return picture;
}

// Draws in the ink of the palette that holds at the moment of painting, so that a desktop that turns dark
// takes the icons along.
class InkIconEngine : public QIconEngine {
  public:
    explicit InkIconEngine(const QString& name) : name_(name), source_(IconSource(name)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        const double ratio = painter->device()->devicePixelRatioF();
        QPixmap picture = pixmap(rect.size() * ratio, mode, state);
        picture.setDevicePixelRatio(ratio);
        painter->drawPixmap(rect.topLeft(), picture);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/) override {
        const QPalette palette = QApplication::palette();
        const QColor ink = palette.color(
            QPalette::Active, mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText);
        return Render(name_, source_, ink, mode == QIcon::Disabled ? 0.35 : 1.0, size);
    }

    QIconEngine* clone() const override { return new InkIconEngine(*this); }
    bool isNull() override { return source_.isEmpty(); }

  private:
    QString name_;
    QByteArray source_;
};

QPalette PaletteOf(const QColor& window, const QColor& base, const QColor& ink, const QColor& dim,
                   const QColor& highlight) {
    QPalette palette(window);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, IsDark(palette) ? base.lighter(118) : base.darker(104));
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, ink);
        palette.setColor(QPalette::Disabled, role, dim);
    }
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::PlaceholderText, dim);
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, highlight);
    return palette;
}

}  // namespace

void Apply(QApplication& application) {
    application.setStyle(QStringLiteral("Fusion"));
    // Kerning and ligatures are ornament on a screen full of boxes, and cost a third of the drawing.
    QFont font = QApplication::font();
    font.setStyleStrategy(QFont::PreferNoShaping);
    font.setKerning(false);
    QApplication::setFont(font);
}

bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < 128;
}

QPalette LightPalette() {
    return PaletteOf(QColor(0xef, 0xef, 0xef), Qt::white, Qt::black, QColor(0x6e, 0x6e, 0x6e),
                     QColor(0x2a, 0x6f, 0xb8));
}

QPalette DarkPalette() {
    return PaletteOf(QColor(0x31, 0x33, 0x36), QColor(0x23, 0x25, 0x28), QColor(0xee, 0xee, 0xee),
                     QColor(0x9a, 0x9a, 0x9a), QColor(0x2f, 0x6f, 0xad));
}

void KeepReadable(QWidget& widget) {
    QPalette palette = widget.palette();
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, palette.color(QPalette::Active, role));
    }
    widget.setPalette(palette);
}

QIcon Icon(const QString& name) {
    auto* engine = new InkIconEngine(name);
    if (engine->isNull()) {
        delete engine;
        return {};
    }
    return QIcon(engine);
}

QPixmap Picture(const QString& name, int size, const QWidget* on) {
    const double ratio = on->devicePixelRatioF();
    const QSize pixels = QSize(size, size) * ratio;
    QPixmap picture = Render(name, IconSource(name), on->palette().color(QPalette::WindowText), 1.0, pixels);
    picture.setDevicePixelRatio(ratio);
    return picture;
}

QColor ColorOf(Ink ink, const QPalette& palette) {
    struct Pair {
        Ink ink;
        QRgb light;
        QRgb dark;
    };
    static constexpr Pair kPairs[] = {
        {Ink::Fault, 0xffb3261e, 0xffff9187},  {Ink::Hint, 0xff696969, 0xffa6a6a6},
        {Ink::Marked, 0xff1f5fa8, 0xff8ec5ff}, {Ink::Current, 0xffcfe3fb, 0xff2d4f74},
        {Ink::Accent, 0xff1c7c43, 0xff6bd595},
    };
    for (const Pair& pair : kPairs) {
        if (pair.ink == ink) {
            return QColor(IsDark(palette) ? pair.dark : pair.light);
        }
    }
    return palette.color(QPalette::Text);
}

GridColors SessionGridColors(const QPalette& palette) {
    if (IsDark(palette)) {
        return {QColor(0x4a, 0x5d, 0x78), QColor(0x6b, 0x86, 0xab), QColor(0x29, 0x36, 0x48)};
    }
    return {QColor(0xa9, 0xc0, 0xde), QColor(0x5b, 0x82, 0xb5), QColor(0xe3, 0xec, 0xf7)};
}

int IconSide(const QWidget& widget) {
    return std::max(3 * kUnit, 3 * widget.fontMetrics().height() / 2);
}

int CharactersWide(const QWidget& widget, int characters) {
    const QFontMetrics metrics = widget.fontMetrics();
    return characters * std::max(metrics.averageCharWidth(), metrics.horizontalAdvance(QLatin1Char('0')));
}

}  // namespace kv::theme
