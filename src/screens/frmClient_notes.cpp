#include "screens/frmClient_notes.h"

#include <QVBoxLayout>

#include "screens/FRMfullscr.h"
#include "screens/notes_keys.h"
#include "screens/widgets/notes_box.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/tool_bar.h"

namespace kv {

FRMnotes::FRMnotes(Session& session, QWidget* parent)
    : ClientPart(QStringLiteral("FRMnotes"), parent), session_(session) {
    const QString stamp = QStringLiteral("stamp");
    // The print key's shortcut is the page's own, so that it does not hold on the other pages.
    std::vector<ToolKey> keys = {
        StandardKey(QStringLiteral("print"), tr("Print the notes")),
        ToolKey{QStringLiteral("full"), tr("Full Screen"), tr("Show the notes on the full screen"),
                QStringLiteral("full"), QKeySequence(QStringLiteral("F11"))},
        ToolSeparator()};
    for (ToolKey& key : NotesToolKeys(stamp)) {
        keys.push_back(std::move(key));
    }
    Toolbar4 = new ToolBar(QStringLiteral("Toolbar4"), keys, Frame());
    TXTbox = new NotesBox(QStringLiteral("TXTbox"), Frame());
    TXTbox->setPlaceholderText(tr("No notes on this client"));
    auto* layout = new QVBoxLayout(Frame());
    layout->setContentsMargins(theme::kUnit, 0, theme::kUnit, theme::kUnit);
    layout->setSpacing(0);
    layout->addWidget(Toolbar4);
    layout->addWidget(TXTbox, 1);

    keys_ = NotesKeyActions(stamp, *TXTbox, [this] { return session_.clock.Now(); });
    keys_[QStringLiteral("print")] = [this] { Print(); };
    keys_[QStringLiteral("full")] = [this] { FullKey(); };
    connect(Toolbar4, &ToolBar::keyPressed, this, [this](const QString& key) { keys_.at(key)(); });
}

std::vector<ClientPart::Tie> FRMnotes::Ties() const {
    return {{TXTbox, "Comments"}};
}

void FRMnotes::FullKey() {
    FRMfullscr screen(session_, TXTbox->Source(), this);
    if (screen.exec() == QDialog::Accepted) {
        TXTbox->EnterNotes(screen.TXTbox->Source());
    }
}

}  // namespace kv
