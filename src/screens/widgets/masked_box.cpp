#include "screens/widgets/masked_box.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <algorithm>
#include <memory>

#include "screens/widgets/qt_text.h"
#include "screens/widgets/window_tools.h"

namespace kv {

namespace {

constexpr QLatin1Char kBlank('_');

bool IsPlace(QChar mask) {
    return mask == QLatin1Char('9') || mask == QLatin1Char('L') || mask == QLatin1Char('A');
}

bool Takes(QChar mask, QChar c) {
    return mask == QLatin1Char('9')   ? c.isDigit()
           : mask == QLatin1Char('L') ? c.isLetter()
                                      : c.isLetterOrNumber();
}

/// The mask in Qt's letters: places that may stay empty, everything else literal.
QString QtMask(const QString& mask) {
    QString made;
    for (const QChar c : mask) {
        if (c == QLatin1Char('9')) {
            made += QLatin1Char('9');
        } else if (c == QLatin1Char('L')) {
            made += QLatin1Char('a');
        } else if (c == QLatin1Char('A')) {
            made += QLatin1Char('n');
        } else {
            made += QLatin1Char('\\');
            made += c;
        }
    }
    return made + QLatin1Char(';') + kBlank;
}

}  // namespace

MaskedBox::MaskedBox(const QString& name, const QString& caption, const QString& mask, QWidget* parent)
    : LineBox(name, caption, ControlKind::Masked, static_cast<int>(mask.size()) + 1, parent) {
    SetMask(mask);
}

kv::Value MaskedBox::Value() const {
    const QString characters = Characters();
    return characters.isEmpty() ? kv::Value() : kv::Value(FromQt(characters));
}

void MaskedBox::SetMask(const QString& mask) {
    const QString characters = mask_.isEmpty() ? QString() : Characters();
    mask_ = mask;
    Quietly([&] {
        setInputMask(QtMask(mask));
        setText(Filled(Taken(characters)));
    });
    SetCharacters(static_cast<int>(mask.size()) + 1);
}

bool MaskedBox::IsComplete() const {
    return Characters().size() == Places();
}

int MaskedBox::Places() const {
    return static_cast<int>(std::count_if(mask_.begin(), mask_.end(), IsPlace));
}

QString MaskedBox::Characters() const {
    QString characters;
    const QString shown = displayText();
    for (int i = 0; i < std::min(shown.size(), mask_.size()); ++i) {
        if (IsPlace(mask_[i]) && shown[i] != kBlank) {
            characters += shown[i];
        }
    }
    return characters;
}

QString MaskedBox::Taken(const QString& text) const {
    QString taken;
    auto from = text.begin();
    for (const QChar place : mask_) {
        if (!IsPlace(place)) {
            continue;
        }
        from = std::find_if(from, text.end(), [&](QChar c) { return Takes(place, c); });
        if (from == text.end()) {
            break;
        }
        taken += *from++;
    }
    return taken;
}

QString MaskedBox::Filled(const QString& characters) const {
    QString filled;
    auto from = characters.begin();
    for (const QChar c : mask_) {
        if (!IsPlace(c)) {
            filled += c;
        } else if (from != characters.end()) {
            filled += *from++;
        } else {
            break;
        }
    }
    return characters.isEmpty() ? QString() : filled;
}

void MaskedBox::Show(const kv::Value& value) {
    setText(Filled(Taken(ToQt(value.ToText()))));
    setCursorPosition(0);
}

void MaskedBox::Paste(const QString& text) {
    if (isReadOnly()) {
        return;
    }
    const QString taken = Taken(pasteRule_ ? pasteRule_(text) : text);
    if (pasteRule_ || taken.size() == Places() || Characters().isEmpty()) {
        setText(Filled(taken));
        end(false);
    } else {
        insert(taken);
    }
}

void MaskedBox::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Paste)) {
        Paste(ClipboardText());
        return;
    }
    LineBox::keyPressEvent(event);
}

void MaskedBox::contextMenuEvent(QContextMenuEvent* event) {
    const std::unique_ptr<QMenu> menu(createStandardContextMenu());
    if (auto* paste = menu->findChild<QAction*>(QStringLiteral("edit-paste"))) {
        paste->disconnect(this);
        connect(paste, &QAction::triggered, this, [this] { Paste(ClipboardText()); });
    }
    menu->exec(event->globalPos());
}

}  // namespace kv
