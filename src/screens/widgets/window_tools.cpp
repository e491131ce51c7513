#include "screens/widgets/window_tools.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QToolTip>
#include <QWidget>

#include "screens/widgets/grid.h"
#include "screens/widgets/outline_tree.h"

namespace kv {

namespace {

// Turns down what the window system asks for; a close() of the program is no spontaneous event.
class CloseGuard : public QObject {
  public:
    using QObject::QObject;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Close || !event->spontaneous()) {
            return QObject::eventFilter(watched, event);
        }
        event->ignore();
        const auto* window = static_cast<QWidget*>(watched);
        QToolTip::showText(window->mapToGlobal(QPoint(0, 0)),
                           QStringLiteral("Please leave with the exit key."));
        return true;
    }
};

}  // namespace

void ApplyGridColors(QWidget* screen, bool color) {
    if (!color) {
        return;
    }
    const theme::GridColors colors = theme::SessionGridColors(screen->palette());
    for (QWidget* widget : screen->findChildren<QWidget*>()) {
        if (!widget->objectName().startsWith(QLatin1String("FG"), Qt::CaseInsensitive)) {
            continue;
        }
        if (auto* grid = qobject_cast<Grid*>(widget)) {
            grid->SetSessionColors(colors);
        } else if (auto* tree = qobject_cast<OutlineTree*>(widget)) {
            tree->SetSessionColors(colors);
        }
    }
}

void DisableCloseMenu(QWidget* window) {
    window->installEventFilter(new CloseGuard(window));
}

QString ClipboardText() {
    return QApplication::clipboard()->text();
}

QWidget* DialogOwner() {
    if (QWidget* modal = QApplication::activeModalWidget()) {
        return modal;
    }
    if (QWidget* active = QApplication::activeWindow()) {
        return active;
    }
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->windowType() == Qt::Window) {
            return window;
        }
    }
    return nullptr;
}

}  // namespace kv
