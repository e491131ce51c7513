#include "screens/widgets/text_box.h"

#include <QStyle>
#include <QValidator>
#include <algorithm>

#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"

namespace kv {

namespace {

class UpperCase : public QValidator {
  public:
    using QValidator::QValidator;
    State validate(QString& text, int& /*cursor*/) const override {
        text = text.toUpper();
        return Acceptable;
    }
};

}  // namespace

TextBox::TextBox(const QString& name, const QString& caption, int characters, QWidget* parent)
    : LineBox(name, caption, ControlKind::Text, characters, parent) {}

kv::Value TextBox::Value() const {
    return FromQt(text());
}

void TextBox::SetUpperCase(bool upper) {
    setValidator(upper ? new UpperCase(this) : nullptr);
}

void TextBox::Show(const kv::Value& value) {
    // A routine that mends what is being typed leaves the cursor before the same following text.
    const int behind = static_cast<int>(text().size()) - cursorPosition();
    setText(ToQt(value.ToText()));
    setCursorPosition(hasFocus() ? std::max(0, static_cast<int>(text().size()) - behind) : 0);
}

MemoBox::MemoBox(const QString& name, const QString& caption, int characters, int lines, QWidget* parent)
    : QPlainTextEdit(parent), BoundControl(this, ControlKind::Text), characters_(characters), lines_(lines) {
    SetUp(name, caption);
    setTabChangesFocus(true);
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        CutToLength();
        NoteChange();
    });
}

kv::Value MemoBox::Value() const {
    // The editor shows CR LF and hard blanks as its own: while nothing was typed the text is what was loaded,
    // and what was typed takes the line ends of the rest.
    const QString shown = toPlainText();
    if (shown == loadedShown_) {
        return loaded_;
    }
    return FromQt(loaded_.find("\r\n") == std::string::npos
                      ? shown
                      : QString(shown).replace(QLatin1Char('\n'), QLatin1String("\r\n")));
}

void MemoBox::SetMaxLength(int length) {
    maxLength_ = length;
    CutToLength();
}

void MemoBox::CutToLength() {
    if (maxLength_ <= 0 || IsLoading() || document()->characterCount() - 1 <= maxLength_) {
        return;
    }
    QTextCursor cursor = textCursor();
    const int over = document()->characterCount() - 1 - maxLength_;
    const int at = std::max(cursor.position() - over, 0);
    Quietly([&] {
        cursor.setPosition(at);
        cursor.setPosition(at + over, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
    });
}

void MemoBox::SetCharacters(int characters) {
    characters_ = characters;
    updateGeometry();
}

QSize MemoBox::sizeHint() const {
    const int around = 2 * frameWidth() + static_cast<int>(2 * document()->documentMargin());
    return {
        theme::CharactersWide(*this, characters_) + around + style()->pixelMetric(QStyle::PM_ScrollBarExtent),
        lines_ * fontMetrics().lineSpacing() + around};
}

QSize MemoBox::minimumSizeHint() const {
    return {sizeHint().width() / 3, 2 * fontMetrics().lineSpacing() + 2 * frameWidth()};
}

void MemoBox::Show(const kv::Value& value) {
    loaded_ = value.ToText();
    setPlainText(ToQt(loaded_));
    loadedShown_ = toPlainText();
}

}  // namespace kv
