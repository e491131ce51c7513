#include "support/qt_driver.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QStringList>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include "screens/widgets/tool_bar.h"

namespace kv::qt_driver {

namespace {

constexpr int kLimitMs = 10000;

QWidget* Receiver(QWidget& widget) {
    QWidget* focus = QApplication::focusWidget();
    return focus != nullptr && (focus == &widget || widget.isAncestorOf(focus)) ? focus : &widget;
}

QString NameOf(const QWidget* widget) {
    for (; widget != nullptr; widget = widget->parentWidget()) {
        if (!widget->objectName().isEmpty()) {
            return widget->objectName();
        }
    }
    return QStringLiteral("(no name)");
}

std::vector<QWidget*> TabWidgets(QWidget& window) {
    std::vector<QWidget*> visited;
    for (QWidget* widget = window.nextInFocusChain(); widget != &window;
         widget = widget->nextInFocusChain()) {
        const bool visits = (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->isVisibleTo(&window) &&
                            widget->isEnabled() && widget->focusProxy() == nullptr;
        if (visits && window.isAncestorOf(widget)) {
            visited.push_back(widget);
        }
    }
    return visited;
}

}  // namespace

QString NamesOf(const QWidget* screen) {
    QStringList names;
    for (const QWidget* widget : screen->findChildren<QWidget*>()) {
        if (!widget->objectName().isEmpty() && !widget->objectName().startsWith(QLatin1String("qt_"))) {
            names << widget->objectName();
        }
    }
    names.sort(Qt::CaseInsensitive);
    return names.join(QLatin1String(", "));
}

void Show(QWidget& window) {
    window.show();
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window)) {
        throw std::runtime_error("the window did not become active");
    }
}

void Type(QWidget& widget, const QString& text) {
    if (QApplication::focusWidget() == nullptr || Receiver(widget) == &widget) {
        widget.setFocus(Qt::TabFocusReason);
    }
    for (const QChar letter : text) {
        QTest::sendKeyEvent(QTest::Click, Receiver(widget), Qt::Key_unknown, QString(letter), Qt::NoModifier);
    }
}

void Press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(Receiver(widget), key, modifiers);
}

void Retype(QWidget& widget, const QString& text) {
    widget.setFocus(Qt::TabFocusReason);
    Press(widget, Qt::Key_A, Qt::ControlModifier);
    Press(widget, Qt::Key_Delete);
    Type(widget, text);
}

void Leave(QWidget& widget) {
    QWidget elsewhere(widget.window());
    elsewhere.setFocusPolicy(Qt::StrongFocus);
    elsewhere.show();
    elsewhere.setFocus(Qt::TabFocusReason);
}

void ClickKey(QWidget* screen, const QString& key) {
    QStringList found;
    for (const ToolBar* toolbar : screen->findChildren<ToolBar*>()) {
        const int index = toolbar->ButtonOfKey(key);
        if (index == 0) {
            found << toolbar->objectName();
            continue;
        }
        if (!toolbar->IsKeyEnabled(key)) {
            throw std::runtime_error(("the key " + key + " is off").toStdString());
        }
        QTest::mouseClick(toolbar->widgetForAction(toolbar->ActionOf(key)), Qt::LeftButton);
        return;
    }
    throw std::runtime_error(("no key " + key + " on: " + found.join(QLatin1String(", "))).toStdString());
}

ModalDriver::ModalDriver(std::function<void(QWidget&)> act) : act_(std::move(act)) {
    QObject::connect(&look_, &QTimer::timeout, &look_, [this] { Look(); });
    look_.start(0);
    guard_.setSingleShot(true);
    QObject::connect(&guard_, &QTimer::timeout, &guard_, [] {
        if (QWidget* dialog = QApplication::activeModalWidget()) {
            ADD_FAILURE() << "nobody closed " << NameOf(dialog).toStdString();
            dialog->close();
        }
    });
    guard_.start(kLimitMs);
}

ModalDriver::~ModalDriver() {
    EXPECT_TRUE(acted_) << "no dialog came up";
}

void ModalDriver::Look() {
    QWidget* dialog = QApplication::activeModalWidget();
    if (dialog == nullptr || !dialog->isActiveWindow()) {
        return;
    }
    look_.stop();
    acted_ = true;
    try {
        act_(*dialog);
    } catch (const std::exception& error) {
        // Past the event loop nobody could catch it.
        ADD_FAILURE() << error.what();
        dialog->close();
    }
}

std::vector<std::string> TabOrder(QWidget& window) {
    std::vector<std::string> names;
    for (const QWidget* widget : TabWidgets(window)) {
        names.push_back(NameOf(widget).toStdString());
    }
    return names;
}

std::vector<std::string> Unnamed(QWidget& window) {
    std::vector<std::string> names;
    for (QWidget* widget : TabWidgets(window)) {
        QAccessibleInterface* face = QAccessible::queryAccessibleInterface(widget);
        // A combo's inner line is read with the combo.
        const bool inner = widget->parentWidget() != nullptr && widget->parentWidget()->inherits("QComboBox");
        if (!inner && (face == nullptr || face->text(QAccessible::Name).trimmed().isEmpty())) {
            names.push_back(NameOf(widget).toStdString());
        }
    }
    return names;
}

std::vector<std::string> StepsAgainstReading(QWidget& window) {
    std::vector<std::string> steps;
    const std::vector<QWidget*> widgets = TabWidgets(window);
    for (std::size_t i = 1; i < widgets.size(); ++i) {
        const QRect from(widgets[i - 1]->mapTo(&window, QPoint(0, 0)), widgets[i - 1]->size());
        const QRect to(widgets[i]->mapTo(&window, QPoint(0, 0)), widgets[i]->size());
        const bool sameLine = to.center().y() >= from.top() && to.center().y() <= from.bottom();
        // The top of the next column to the right is where reading goes on.
        const bool backUp = to.center().y() < from.top() && to.left() <= from.left();
        if (sameLine ? to.left() < from.left() : backUp) {
            steps.push_back(
                (NameOf(widgets[i - 1]) + QLatin1String(" -> ") + NameOf(widgets[i])).toStdString());
        }
    }
    return steps;
}

}  // namespace kv::qt_driver
