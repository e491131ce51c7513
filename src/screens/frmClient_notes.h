#pragma once
#include <string>

#include "screens/frmClient_part.h"

class QPlainTextEdit;

namespace kv {

/// The page of the general notes, to be read. The box shows the words; the column's own text, with the marks
/// of its rich text, stays with the main screen.
class FRMnotes : public ClientPart {
    Q_OBJECT
  public:
    explicit FRMnotes(QWidget* parent);
    void ShowNotes(const std::string& comments);

    QPlainTextEdit* TXTbox;
};

}  // namespace kv
