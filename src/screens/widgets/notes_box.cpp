#include "screens/widgets/notes_box.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDataStream>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocumentFragment>
#include <algorithm>

#include "clients/notes_text.h"
#include "screens/widgets/qt_text.h"

namespace kv {

namespace {

constexpr int kProtected = QTextFormat::UserProperty + 1;
constexpr int kFirstLook = QTextFormat::UserProperty + 2;  // font, size, colour, highlight
/// Notes on the clipboard, beside their plain text. The numbers of fonts and colours hold in one program
/// alone.
const QString kNotesType = QStringLiteral("application/x-kv-notes");

int& LookOf(rtf::Looks& looks, int index) {
    int* const all[] = {&looks.font, &looks.size, &looks.colour, &looks.highlight};
    return *all[index];
}
constexpr int kLookCount = 4;

rtf::RichText::Character CharacterOf(char32_t code, const QTextCharFormat& format) {
    rtf::RichText::Character character;
    character.code = code;
    character.marks.bold = format.fontWeight() >= QFont::DemiBold;
    character.marks.italic = format.fontItalic();
    character.marks.underline = format.fontUnderline();
    character.marks.isProtected = format.hasProperty(kProtected);
    for (int look = 0; look < kLookCount; ++look) {
        if (format.hasProperty(kFirstLook + look)) {
            LookOf(character.looks, look) = format.intProperty(kFirstLook + look);
        }
    }
    return character;
}

}  // namespace

NotesBox::NotesBox(const QString& name, QWidget* parent)
    : QTextEdit(parent), BoundControl(this, ControlKind::Text) {
    SetUp(name, tr("Notes"));
    setAcceptRichText(false);
    setTabChangesFocus(true);
    connect(document(), &QTextDocument::contentsChanged, this, &NotesBox::TakeOver);
    connect(this, &QTextEdit::cursorPositionChanged, this, &NotesBox::LeaveProtection);
}

QString NotesBox::Text() const {
    return ToQt(PlainText());
}

void NotesBox::Show(const kv::Value& value) {
    SetNotes(value.ToText());
}

void NotesBox::SetNotes(const std::string& source) {
    if (source != text_.Source() || source.empty()) {
        text_ = rtf::RichText(source);
        Refill(entering_ ? Cursor::Stays : Cursor::ToStart);
    }
    loadedStamps_ = text_.ProtectedTexts();
    freshStamps_.clear();
}

void NotesBox::EnterNotes(const std::string& source) {
    if (source != text_.Source()) {
        const QScopedValueRollback<bool> entering(entering_, true);
        EnterValue(source);
        emit notesChanged();
    }
}

QTextCharFormat NotesBox::FormatOf(const rtf::RichText::Character& character) const {
    const rtf::Marks& marks = character.marks;
    QTextCharFormat format;
    format.setFontWeight(marks.bold ? QFont::Bold : QFont::Normal);
    format.setFontItalic(marks.italic);
    format.setFontUnderline(marks.underline);
    if (marks.isProtected) {
        format.setProperty(kProtected, true);
        format.setForeground(palette().color(QPalette::PlaceholderText));
    }
    rtf::Looks looks = character.looks;
    for (int look = 0; look < kLookCount; ++look) {
        format.setProperty(kFirstLook + look, LookOf(looks, look));
    }
    return format;
}

void NotesBox::Refill(Cursor cursor) {
    if (taking_) {
        QMetaObject::invokeMethod(
            this, [this, cursor] { Fill(cursor); }, Qt::QueuedConnection);
    } else {
        Fill(cursor);
    }
}

void NotesBox::Fill(Cursor stays) {
    const QScopedValueRollback<bool> filling(filling_, true);
    const int position = textCursor().position();
    const int scrolled = verticalScrollBar()->value();
    const QString before = toPlainText().left(position);
    const rtf::RichText::Characters shown = text_.Shown();
    document()->setUndoRedoEnabled(false);
    clear();
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    for (std::size_t at = 0; at < shown.size();) {
        const rtf::RichText::Character& first = shown[at];
        std::u32string run;
        for (; at < shown.size() && ((shown[at].marks == first.marks && shown[at].looks == first.looks) ||
                                     shown[at].code == U'\n');
             ++at) {
            run += shown[at].code;
        }
        cursor.insertText(QString::fromStdU32String(run), FormatOf(first));
    }
    cursor.endEditBlock();
    document()->setUndoRedoEnabled(true);
    moveCursor(QTextCursor::Start);
    if (stays == Cursor::Stays) {
        // Where the text up to it is another one now, what was typed stands at the end.
        cursor = textCursor();
        toPlainText().startsWith(before) ? cursor.setPosition(position)
                                         : static_cast<void>(cursor.movePosition(QTextCursor::End));
        setTextCursor(cursor);
        verticalScrollBar()->setValue(scrolled);
    }
}

rtf::RichText::Characters NotesBox::Read(int from, int to) const {
    rtf::RichText::Characters read;
    for (QTextBlock block = document()->findBlock(from); block.isValid() && block.position() <= to;
         block = block.next()) {
        if (block.position() > from) {
            read.push_back({U'\n', {}, {}});
        }
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextFragment fragment = part.fragment();
            const int first = std::max(from - fragment.position(), 0);
            const int last = std::min(to - fragment.position(), fragment.length());
            const QString text = fragment.text().mid(first, std::max(last - first, 0));
            for (const char32_t code : text.toStdU32String()) {
                const bool lineEnd = code == QChar::LineSeparator;
                read.push_back(CharacterOf(lineEnd ? U'\n' : code, fragment.charFormat()));
            }
        }
    }
    return read;
}

rtf::RichText::Characters NotesBox::Read() const {
    return Read(0, document()->characterCount() - 1);
}

bool NotesBox::StampsStand(const rtf::RichText::Characters& now) const {
    rtf::RichText next = text_;
    next.Update(now, true);
    auto loaded = loadedStamps_.begin();
    for (const std::string& stamp : next.ProtectedTexts()) {
        if (loaded != loadedStamps_.end() && *loaded == stamp) {
            ++loaded;
        } else if (std::find(freshStamps_.begin(), freshStamps_.end(), stamp) == freshStamps_.end()) {
            return false;
        }
    }
    return loaded == loadedStamps_.end();
}

void NotesBox::TakeOver() {
    if (filling_) {
        return;
    }
    const rtf::RichText::Characters now = Read();
    if (text_.Update(now) || (StampsStand(now) && text_.Update(now, true))) {
        const QScopedValueRollback<bool> taking(taking_, true);
        NoteChange();
        emit notesChanged();
        return;
    }
    // A stamp was touched. The document is in the middle of its change: it is put right after it.
    QApplication::beep();
    QMetaObject::invokeMethod(this, &NotesBox::Refuse, Qt::QueuedConnection);
}

/// Takes the edit back that touched a stamp; what was typed before it can still be undone.
void NotesBox::Refuse() {
    {
        const QScopedValueRollback<bool> filling(filling_, true);
        undo();
    }
    if (Read() != text_.Shown()) {
        Fill(Cursor::Stays);
    }
}

// What is typed behind a stamp is no part of it. A selection keeps the looks of what is selected.
void NotesBox::LeaveProtection() {
    QTextCharFormat format = currentCharFormat();
    if (format.hasProperty(kProtected) && !textCursor().hasSelection()) {
        format.clearProperty(kProtected);
        format.clearForeground();
        setCurrentCharFormat(format);
    }
}

void NotesBox::ToggleBold() {
    setFontWeight(fontWeight() >= QFont::DemiBold ? QFont::Normal : QFont::Bold);
}

void NotesBox::ToggleItalic() {
    setFontItalic(!fontItalic());
}

void NotesBox::ToggleUnderline() {
    setFontUnderline(!fontUnderline());
}

void NotesBox::Stamp(Date now) {
    const rtf::RichText::Characters stamp = StampOf(text_.Shown(), now);
    std::string words;
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    cursor.beginEditBlock();
    for (const rtf::RichText::Character& character : stamp) {
        words += character.marks.isProtected ? rtf::Utf8Of(character.code) : std::string();
        cursor.insertText(QString::fromUcs4(&character.code, 1), FormatOf(character));
    }
    freshStamps_.push_back(words);
    cursor.endEditBlock();
    Bottom();
}

void NotesBox::Bottom() {
    moveCursor(QTextCursor::End);
    setFocus();
}

QMimeData* NotesBox::createMimeDataFromSelection() const {
    const QTextCursor cursor = textCursor();
    auto* data = new QMimeData;
    data->setText(cursor.selection().toPlainText());
    QByteArray notes;
    QDataStream stream(&notes, QIODevice::WriteOnly);
    stream << QCoreApplication::applicationPid();
    for (const rtf::RichText::Character& character : Read(cursor.selectionStart(), cursor.selectionEnd())) {
        const rtf::Marks& marks = character.marks;
        rtf::Looks looks = character.looks;
        stream << static_cast<quint32>(character.code) << marks.bold << marks.italic << marks.underline;
        for (int look = 0; look < kLookCount; ++look) {
            stream << LookOf(looks, look);
        }
    }
    data->setData(kNotesType, notes);
    return data;
}

bool NotesBox::canInsertFromMimeData(const QMimeData* source) const {
    return source->hasText();
}

/// Notes of this program keep their looks, without the protection of stamps; anything else is plain text in
/// the looks of its place.
void NotesBox::insertFromMimeData(const QMimeData* source) {
    QTextCursor cursor = textCursor();
    QByteArray notes = source->data(kNotesType);
    QDataStream stream(&notes, QIODevice::ReadOnly);
    qint64 program = 0;
    stream >> program;
    if (stream.status() != QDataStream::Ok || program != QCoreApplication::applicationPid()) {
        if (source->hasText()) {
            cursor.insertText(source->text(), currentCharFormat());
        }
        return;
    }
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    while (!stream.atEnd()) {
        rtf::RichText::Character character;
        quint32 code = 0;
        stream >> code >> character.marks.bold >> character.marks.italic >> character.marks.underline;
        for (int look = 0; look < kLookCount; ++look) {
            stream >> LookOf(character.looks, look);
        }
        character.code = code;
        cursor.insertText(QString::fromUcs4(&character.code, 1), FormatOf(character));
    }
    cursor.endEditBlock();
    setTextCursor(cursor);
}

void NotesBox::changeEvent(QEvent* event) {
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        Fill(Cursor::Stays);  // the stamps' ink comes from the palette
    }
}

}  // namespace kv
