#include "screens/widgets/notes_box.h"

#include <QApplication>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextBlock>

#include "clients/notes_text.h"

namespace kv {

namespace {

constexpr int kProtected = QTextFormat::UserProperty + 1;

}  // namespace

NotesBox::NotesBox(const QString& name, QWidget* parent) : QTextEdit(parent) {
    setObjectName(name);
    setAccessibleName(tr("Notes"));
    setAcceptRichText(false);
    setTabChangesFocus(true);
    connect(document(), &QTextDocument::contentsChanged, this, &NotesBox::TakeOver);
    connect(this, &QTextEdit::cursorPositionChanged, this, &NotesBox::LeaveProtection);
}

void NotesBox::SetNotes(const std::string& source) {
    if (source == text_.Source() && !source.empty()) {
        return;
    }
    text_ = rtf::RichText(source);
    Fill();
}

void NotesBox::EnterNotes(const std::string& source) {
    if (source != text_.Source()) {
        SetNotes(source);
        emit notesChanged();
    }
}

QTextCharFormat NotesBox::FormatOf(const rtf::Marks& marks) const {
    QTextCharFormat format;
    format.setFontWeight(marks.bold ? QFont::Bold : QFont::Normal);
    format.setFontItalic(marks.italic);
    format.setFontUnderline(marks.underline);
    if (marks.isProtected) {
        format.setProperty(kProtected, true);
        format.setForeground(palette().color(QPalette::PlaceholderText));
    }
    return format;
}

void NotesBox::Fill() {
    const QScopedValueRollback<bool> filling(filling_, true);
    const rtf::RichText::Characters shown = text_.Shown();
    document()->setUndoRedoEnabled(false);
    clear();
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    for (std::size_t at = 0; at < shown.size();) {
        const rtf::Marks marks = shown[at].marks;
        std::u32string run;
        for (; at < shown.size() && (shown[at].marks == marks || shown[at].code == U'\n'); ++at) {
            run += shown[at].code;
        }
        cursor.insertText(QString::fromStdU32String(run), FormatOf(marks));
    }
    cursor.endEditBlock();
    document()->setUndoRedoEnabled(true);
    moveCursor(QTextCursor::Start);
}

rtf::RichText::Characters NotesBox::Read() const {
    rtf::RichText::Characters read;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        if (block != document()->begin()) {
            read.push_back({U'\n', {}});
        }
        for (auto fragment = block.begin(); !fragment.atEnd(); ++fragment) {
            const QTextCharFormat format = fragment.fragment().charFormat();
            rtf::Marks marks;
            marks.bold = format.fontWeight() >= QFont::DemiBold;
            marks.italic = format.fontItalic();
            marks.underline = format.fontUnderline();
            marks.isProtected = format.hasProperty(kProtected);
            for (const char32_t code : fragment.fragment().text().toStdU32String()) {
                const bool lineEnd = code == QChar::LineSeparator;
                read.push_back({lineEnd ? U'\n' : code, marks});
            }
        }
    }
    return read;
}

void NotesBox::TakeOver() {
    if (filling_) {
        return;
    }
    if (text_.Update(Read())) {
        emit notesChanged();
        return;
    }
    // A stamp was touched. The document is in the middle of its change: it is put right behind it.
    QApplication::beep();
    const int position = textCursor().position();
    const int scrolled = verticalScrollBar()->value();
    QMetaObject::invokeMethod(
        this,
        [this, position, scrolled] {
            Fill();
            QTextCursor cursor = textCursor();
            cursor.setPosition(std::min(position, document()->characterCount() - 1));
            setTextCursor(cursor);
            verticalScrollBar()->setValue(scrolled);
        },
        Qt::QueuedConnection);
}

// What is typed behind a stamp is no part of it.
void NotesBox::LeaveProtection() {
    QTextCharFormat format = currentCharFormat();
    if (format.hasProperty(kProtected)) {
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
    text_.Append(StampOf(text_.Shown(), now));
    Fill();
    Bottom();
    emit notesChanged();
}

void NotesBox::Bottom() {
    moveCursor(QTextCursor::End);
    setFocus();
}

void NotesBox::insertFromMimeData(const QMimeData* source) {
    if (source->hasText()) {
        textCursor().insertText(source->text(), currentCharFormat());
    }
}

void NotesBox::changeEvent(QEvent* event) {
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        Fill();  // the stamps' ink comes from the palette
    }
}

}  // namespace kv
