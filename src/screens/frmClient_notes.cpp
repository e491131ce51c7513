#include "screens/frmClient_notes.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "clients/notes_text.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"

namespace kv {

FRMnotes::FRMnotes(QWidget* parent) : ClientPart(QStringLiteral("FRMnotes"), parent) {
    auto* label = new QLabel(tr("Notes about the client:"), Frame());
    TXTbox = new QPlainTextEdit(Frame());
    TXTbox->setObjectName(QStringLiteral("TXTbox"));
    TXTbox->setAccessibleName(tr("Notes"));
    TXTbox->setReadOnly(true);
    TXTbox->setTabChangesFocus(true);
    TXTbox->setPlaceholderText(tr("No notes on this client"));
    label->setBuddy(TXTbox);
    auto* layout = new QVBoxLayout(Frame());
    layout->setContentsMargins(theme::kUnit, theme::kUnit, theme::kUnit, theme::kUnit);
    layout->setSpacing(theme::kHalfUnit);
    layout->addWidget(label);
    layout->addWidget(TXTbox, 1);
}

void FRMnotes::ShowNotes(const std::string& comments) {
    TXTbox->setPlainText(ToQt(NotesText(comments)));
}

}  // namespace kv
