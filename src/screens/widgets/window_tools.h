#pragma once
#include <QString>

class QWidget;

namespace kv {

/// Does nothing unless `color` (the session's COLOR). Otherwise gives the session's colours to every control
/// of the screen whose name begins with "FG" in any case; controls without such colours are stepped over.
void ApplyGridColors(QWidget* screen, bool color);

/// The window's own close (its button, its menu, Alt+F4) no longer closes it: only the program's exit key
/// does. Window managers keep their "Close" in the menu; what they send is a request that the window turns
/// down with a word about the exit key. A close() called by the program goes through.
void DisableCloseMenu(QWidget* window);

/// The clipboard's text, empty when it holds none.
QString ClipboardText();

/// The window that a dialog of now belongs to: the active modal one, else the active one, else the first that
/// is visible.
QWidget* DialogOwner();

}  // namespace kv
