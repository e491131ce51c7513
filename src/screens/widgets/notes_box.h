#pragma once
#include <QTextEdit>
#include <string>

#include "base/date.h"
#include "clients/rtf/rich_text.h"

namespace kv {

/// Rich notes: bold, italic and underlined text, and stamps that can't be edited. What it does not show of
/// the notes (fonts, colours, tables, pictures) stays in them.
class NotesBox : public QTextEdit {
    Q_OBJECT
  public:
    NotesBox(const QString& name, QWidget* parent);

    /// Loads notes; nothing counts as a change.
    void SetNotes(const std::string& source);
    /// Puts notes in as the operator would.
    void EnterNotes(const std::string& source);
    std::string Source() const { return text_.Source(); }
    std::string PlainText() const { return text_.PlainText(); }

    void ToggleBold();
    void ToggleItalic();
    void ToggleUnderline();
    /// Adds a stamp at the end and goes behind it.
    void Stamp(Date now);
    /// Goes to the end of the text.
    void Bottom();

  signals:
    /// The operator changed the notes.
    void notesChanged();

  protected:
    void insertFromMimeData(const QMimeData* source) override;
    void changeEvent(QEvent* event) override;

  private:
    void Fill();
    void TakeOver();
    void LeaveProtection();
    rtf::RichText::Characters Read() const;
    QTextCharFormat FormatOf(const rtf::Marks& marks) const;

    rtf::RichText text_;
    bool filling_ = false;
};

}  // namespace kv
