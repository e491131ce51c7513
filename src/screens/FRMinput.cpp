#include "screens/FRMinput.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "screens/widgets/theme.h"

namespace kv {

FRMinput::FRMinput(const QString& title, const QString& prompt, const QString& initial, QWidget* parent)
    : QDialog(parent),
      LBLprompt(new QLabel(prompt, this)),
      TXTinput(new QLineEdit(initial, this)),
      CMDok(new QPushButton(QStringLiteral("&OK"), this)),
      CMDcancel(new QPushButton(QStringLiteral("&Cancel"), this)) {
    setObjectName(QStringLiteral("FRMinput"));
    setWindowTitle(title);
    LBLprompt->setObjectName(QStringLiteral("LBLprompt"));
    LBLprompt->setTextFormat(Qt::PlainText);
    LBLprompt->setWordWrap(true);
    TXTinput->setObjectName(QStringLiteral("TXTinput"));
    TXTinput->setAccessibleName(prompt);
    TXTinput->setMinimumWidth(theme::CharactersWide(*TXTinput, 44));
    TXTinput->selectAll();
    TXTinput->setFocus();
    CMDok->setObjectName(QStringLiteral("CMDok"));
    CMDok->setDefault(true);
    CMDcancel->setObjectName(QStringLiteral("CMDcancel"));

    auto* lower = new QHBoxLayout;
    lower->addStretch(1);
    lower->addWidget(CMDok);
    lower->addWidget(CMDcancel);
    auto* all = new QVBoxLayout(this);
    all->addWidget(LBLprompt);
    all->addWidget(TXTinput);
    all->addStretch(1);
    all->addLayout(lower);
    connect(CMDok, &QPushButton::clicked, this, &QDialog::accept);
    connect(CMDcancel, &QPushButton::clicked, this, &QDialog::reject);
}

QString FRMinput::Text() const {
    return TXTinput->text();
}

}  // namespace kv
