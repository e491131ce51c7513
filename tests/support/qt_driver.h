#pragma once
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace kv::qt_driver {

/// The names below a widget, for messages.
QString NamesOf(const QWidget* screen);

/// The control of a name below the screen. Throws with the names there are when there is none, or none of
/// that type.
template <typename Control>
Control* Find(const QWidget* screen, const QString& name) {
    auto* control = screen->findChild<Control*>(name);
    if (control == nullptr) {
        throw std::runtime_error(
            QStringLiteral("no %1 named %2 among: %3")
                .arg(QString::fromLatin1(Control::staticMetaObject.className()), name, NamesOf(screen))
                .toStdString());
    }
    return control;
}

/// Shows the window and makes it the active one, so that its controls can have the focus.
void Show(QWidget& window);
/// Gives the widget the focus as Tab does and types the text, letters of any script; `widget` may be a combo.
void Type(QWidget& widget, const QString& text);
/// One key to the widget that has the focus below `widget`, or to `widget`.
void Press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Empties the box by keys and types.
void Retype(QWidget& widget, const QString& text);
/// Takes the focus away to another widget, as Tab does.
void Leave(QWidget& widget);
/// Presses a toolbar's button by its key; throws where the screen has no such button or it is off.
void ClickKey(QWidget* screen, const QString& key);

/// Answers one modal dialog. Make it before the call that shows the dialog: `act` runs once the dialog is up.
/// A dialog that is still there after the limit is closed and the test fails; it fails too when none came up.
class ModalDriver {
  public:
    explicit ModalDriver(std::function<void(QWidget&)> act);
    ~ModalDriver();
    ModalDriver(const ModalDriver&) = delete;
    ModalDriver& operator=(const ModalDriver&) = delete;

  private:
    void Look();

    std::function<void(QWidget&)> act_;
    QTimer look_;
    QTimer guard_;
    bool acted_ = false;
};

/// The widgets that Tab visits, by name, from the first one on.
std::vector<std::string> TabOrder(QWidget& window);
/// The widgets that Tab visits and that no label, caption or accessible name tells a screen reader of.
std::vector<std::string> Unnamed(QWidget& window);
/// Steps of the tab order that go up (other than to a column further right), or to the left on one line, as
/// "A -> B".
std::vector<std::string> StepsAgainstReading(QWidget& window);

}  // namespace kv::qt_driver
