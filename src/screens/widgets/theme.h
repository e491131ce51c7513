#pragma once
#include <QColor>
#include <QIcon>
#include <QMargins>
#include <QString>

class QApplication;
class QPalette;
class QWidget;

namespace kv::theme {

/// The spacing unit of all screens and its half, in device-independent pixels.
inline constexpr int kUnit = 8;
inline constexpr int kHalfUnit = 4;

/// Fusion on the desktop's palette, before the first window is made.
void Apply(QApplication& application);

/// Light ink on a dark ground?
bool IsDark(const QPalette& palette);
/// Palettes for desktops that give none, and for looking at the screens both ways.
QPalette LightPalette();
QPalette DarkPalette();

/// What stands in the boxes below a widget keeps the ink of text while they are disabled: they are only
/// looked at.
void KeepReadable(QWidget& widget);

/// An icon of the program by its name without folder and ending ("first"). It is drawn in the ink of the
/// palette that holds while it is painted, greyed where disabled. An unknown name gives an empty icon.
QIcon Icon(const QString& name);
/// The same as a picture of `size` device-independent pixels for a label.
QPixmap Picture(const QString& name, int size, const QWidget* on);

/// Inks with a meaning. Each has a light and a dark form that reads on the palette's base; beside them always
/// stands a word or an icon.
enum class Ink {
    Fault,    ///< what can't be stored
    Hint,     ///< grey words in an empty list
    Marked,   ///< rows apart from the ordinary ones (a client who is not active)
    Current,  ///< the ground of the current row's place in an outline
    Accent,   ///< the mark of the open section
};
QColor ColorOf(Ink ink, const QPalette& palette);

/// The colours that a session with COLOR gives to its grids: lines, border, and the ground behind the rows.
struct GridColors {
    QColor grid;
    QColor border;
    QColor ground;
};
GridColors SessionGridColors(const QPalette& palette);

/// The side of the icons on keys beside the widget's font.
int IconSide(const QWidget& widget);
/// The width of so many average characters of the widget's font.
int CharactersWide(const QWidget& widget, int characters);

}  // namespace kv::theme
