#include "screens/FRMfullscr.h"

#include <QVBoxLayout>

#include "clients/record_keys.h"
#include "screens/notes_keys.h"
#include "screens/widgets/notes_box.h"
#include "screens/widgets/tool_bar.h"

namespace kv {

FRMfullscr::FRMfullscr(Session& session, const std::string& notes, QWidget* parent)
    : QDialog(parent), session_(session), notes_(notes) {
    setObjectName(QStringLiteral("FRMfullscr"));
    setWindowTitle(tr("Notes"));
    const QString stamp = QStringLiteral("datestamp");
    std::vector<ToolKey> keys = {StandardKey(QStringLiteral("exit")),
                                 StandardKey(QStringLiteral("save"), tr("Take the notes over to the client")),
                                 ToolSeparator()};
    for (ToolKey& key : NotesToolKeys(stamp)) {
        keys.push_back(std::move(key));
    }
    Toolbar1 = new ToolBar(QStringLiteral("Toolbar1"), keys, this);
    TXTbox = new NotesBox(QStringLiteral("TXTbox"), this);
    TXTbox->SetNotes(notes);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(Toolbar1);
    layout->addWidget(TXTbox, 1);
    keys_ = NotesKeyActions(stamp, *TXTbox, [this] { return session_.clock.Now(); });
    keys_[QStringLiteral("exit")] = [this] { reject(); };
    keys_[QStringLiteral("save")] = [this] { accept(); };
    connect(Toolbar1, &ToolBar::keyPressed, this, [this](const QString& key) { keys_.at(key)(); });
    setWindowState(windowState() | Qt::WindowFullScreen);
    TXTbox->setFocus();
}

void FRMfullscr::reject() {
    const SaveAnswer answer =
        TXTbox->Source() == notes_ ? SaveAnswer::Discard : session_.dialogs.AskToSave(kUnsavedPrompt);
    if (answer == SaveAnswer::Save) {
        accept();
    } else if (answer == SaveAnswer::Discard) {
        QDialog::reject();
    }
}

}  // namespace kv
