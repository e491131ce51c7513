#include "screens/widgets/line_box.h"

#include <QFocusEvent>
#include <algorithm>
#include <utility>

#include "screens/widgets/theme.h"

namespace kv {

LineBox::LineBox(const QString& name, const QString& caption, ControlKind kind, int characters,
                 QWidget* parent)
    : QLineEdit(parent), BoundControl(this, kind), characters_(characters) {
    SetUp(name, caption);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    connect(this, &QLineEdit::textChanged, this, [this] {
        if (!IsLoading()) {
            Read();
            NoteChange();
        }
    });
    connect(this, &QLineEdit::returnPressed, this, [this] {
        Leave();
        RunRule();
    });
}

void LineBox::SetCharacters(int characters) {
    characters_ = characters;
    updateGeometry();
}

QSize LineBox::sizeHint() const {
    return HintFor(characters_);
}

QSize LineBox::minimumSizeHint() const {
    // Words may be scrolled in a narrow window; a date or a number that is cut off would be misread.
    constexpr int kWord = 10;
    return HintFor(Kind() == ControlKind::Text ? std::min(characters_, kWord) : characters_);
}

QSize LineBox::HintFor(int characters) const {
    // Qt's own hint is made for 17 small x; the rest of it is frame, margins and the buttons inside.
    const QSize hint = QLineEdit::sizeHint();
    const int around = hint.width() - 17 * fontMetrics().horizontalAdvance(QLatin1Char('x'));
    return {around + theme::CharactersWide(*this, characters), hint.height()};
}

void LineBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    entered_ = event->reason() == Qt::MouseFocusReason && SelectsOnEntry();
    const bool byKey = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason ||
                       event->reason() == Qt::ShortcutFocusReason;
    if (byKey && !inputMask().isEmpty()) {
        // Without this a box with a mask puts the cursor behind its last character, where nothing can be
        // typed.
        selectAll();
    }
}

void LineBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason) {
        Leave();
        RunRule();
    }
}

void LineBox::mouseReleaseEvent(QMouseEvent* event) {
    QLineEdit::mouseReleaseEvent(event);
    if (std::exchange(entered_, false) && !hasSelectedText()) {
        selectAll();
    }
    const QString shown = displayText();
    const bool unfilled =
        std::none_of(shown.begin(), shown.end(), [](QChar c) { return c.isLetterOrNumber(); });
    if (!inputMask().isEmpty() && unfilled) {
        setCursorPosition(0);
    }
}

void LineBox::ShowText(const QString& text) {
    Quietly([&] { setText(text); });
}

}  // namespace kv
