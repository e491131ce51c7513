#pragma once
#include <QTextEdit>
#include <string>
#include <vector>

#include "base/date.h"
#include "clients/rtf/rich_text.h"
#include "screens/widgets/bound_control.h"

namespace kv {

/// Rich notes: bold, italic and underlined text, and stamps that can't be edited. What it does not show of
/// the notes (fonts, colours, tables, pictures) stays in them; fonts and colours go along where a text is cut
/// or copied and pasted again. A stamp that was set since the notes were loaded can be taken back by undo.
/// Its value is the notes' source.
class NotesBox : public QTextEdit, public BoundControl {
    Q_OBJECT
  public:
    NotesBox(const QString& name, QWidget* parent);

    kv::Value Value() const override { return Source(); }
    QString Text() const override;
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
    void Show(const kv::Value& value) override;
    QMimeData* createMimeDataFromSelection() const override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;
    void changeEvent(QEvent* event) override;

  private:
    enum class Cursor { ToStart, Stays };
    /// Shows text_; while the document is in the middle of a change of its own, right after that.
    void Refill(Cursor cursor);
    void Fill(Cursor cursor);
    void TakeOver();
    void Refuse();
    /// Stamps that were there when the notes were loaded stand as they were, and the others as they were set.
    bool StampsStand(const rtf::RichText::Characters& now) const;
    void LeaveProtection();
    rtf::RichText::Characters Read(int from, int to) const;
    rtf::RichText::Characters Read() const;
    QTextCharFormat FormatOf(const rtf::RichText::Character& character) const;

    rtf::RichText text_;
    std::vector<std::string> loadedStamps_;
    std::vector<std::string> freshStamps_;  ///< set since then
    bool filling_ = false;
    bool entering_ = false;
    bool taking_ = false;  ///< a change of the document is being taken over
};

}  // namespace kv
