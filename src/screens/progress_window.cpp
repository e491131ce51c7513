#include "screens/progress_window.h"

#include <QBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include "screens/widgets/theme.h"

namespace kv {

ProgressWindow::ProgressWindow(QWidget* parent)
    : QDialog(parent),
      LBLtext(new QLabel(this)),
      Pbar(new QProgressBar(this)),
      CMDstop(new QPushButton(QStringLiteral("&Stop"), this)) {
    setObjectName(QStringLiteral("ProgressWindow"));
    setWindowTitle(QStringLiteral("Please wait"));
    setWindowModality(Qt::ApplicationModal);
    LBLtext->setObjectName(QStringLiteral("LBLtext"));
    LBLtext->setTextFormat(Qt::PlainText);
    LBLtext->setWordWrap(true);
    LBLtext->setMinimumWidth(theme::CharactersWide(*LBLtext, 48));
    Pbar->setObjectName(QStringLiteral("Pbar"));
    CMDstop->setObjectName(QStringLiteral("CMDstop"));
    auto* lower = new QHBoxLayout;
    lower->addStretch(1);
    lower->addWidget(CMDstop);
    auto* all = new QVBoxLayout(this);
    all->addWidget(LBLtext);
    all->addWidget(Pbar);
    all->addLayout(lower);
    connect(CMDstop, &QPushButton::clicked, this, &ProgressWindow::reject);
}

void ProgressWindow::SetText(const QString& text) {
    LBLtext->setText(text);
    Pbar->setAccessibleName(text);
}

void ProgressWindow::SetProgress(long done, long steps) {
    Pbar->setMaximum(static_cast<int>(steps));
    Pbar->setValue(static_cast<int>(done));
}

void ProgressWindow::reject() {
    // The work ends at its next step; until then the window says that it was heard.
    stopPressed_ = true;
    CMDstop->setEnabled(false);
    CMDstop->setText(QStringLiteral("Stopping"));
}

}  // namespace kv
