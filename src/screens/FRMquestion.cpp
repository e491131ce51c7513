#include "screens/FRMquestion.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

#include "screens/widgets/theme.h"

namespace kv {

FRMquestion::FRMquestion(QWidget* parent)
    : QDialog(parent),
      LBLquest(new QLabel(this)),
      CMDok(new QPushButton(QStringLiteral("&YES"), this)),
      CMDno(new QPushButton(QStringLiteral("&NO"), this)),
      LBLstay(new QLabel(tr("Escape: stay here, nothing is lost"), this)) {
    setObjectName(QStringLiteral("FRMquestion"));
    setWindowTitle(QStringLiteral("Important Question "));
    LBLquest->setObjectName(QStringLiteral("LBLquest"));
    LBLquest->setTextFormat(Qt::PlainText);
    LBLquest->setWordWrap(true);
    LBLquest->setMinimumWidth(theme::CharactersWide(*LBLquest, 44));
    CMDok->setObjectName(QStringLiteral("CMDok"));
    CMDok->setDefault(true);
    CMDno->setObjectName(QStringLiteral("CMDno"));
    LBLstay->setObjectName(QStringLiteral("LBLstay"));
    LBLstay->hide();

    auto* picture = new QLabel(this);
    picture->setPixmap(theme::Picture(QStringLiteral("question"), 5 * theme::kUnit, this));
    auto* upper = new QHBoxLayout;
    upper->setSpacing(2 * theme::kUnit);
    upper->addWidget(picture, 0, Qt::AlignTop);
    upper->addWidget(LBLquest, 1);
    auto* lower = new QHBoxLayout;
    lower->setSpacing(theme::kUnit);
    lower->addWidget(LBLstay);
    lower->addStretch(1);
    lower->addWidget(CMDok);
    lower->addWidget(CMDno);
    auto* all = new QVBoxLayout(this);
    all->setSpacing(2 * theme::kUnit);
    all->addLayout(upper, 1);
    all->addLayout(lower);

    connect(CMDok, &QPushButton::clicked, this, [this] { Decide(true); });
    connect(CMDno, &QPushButton::clicked, this, [this] { Decide(false); });
}

void FRMquestion::SetQuestion(const QString& question) {
    LBLquest->setText(question);
    // A screen reader that lands on the first button reads the question with it.
    setAccessibleDescription(question);
    CMDok->setAccessibleDescription(question);
    CMDno->setAccessibleDescription(question);
}

void FRMquestion::SetDefaultNo() {
    CMDok->setDefault(false);
    CMDok->setAutoDefault(false);
    CMDno->setDefault(true);
}

void FRMquestion::OfferStay() {
    mayStay_ = true;
    LBLstay->show();
}

void FRMquestion::Decide(bool yes) {
    Answer = yes;
    done(yes ? Accepted : Rejected);
}

void FRMquestion::reject() {
    Stayed = mayStay_;
    Decide(false);
}

void FRMquestion::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    Answer = false;
    Stayed = false;
    (CMDno->isDefault() ? CMDno : CMDok)->setFocus();
}

void FRMquestion::keyPressEvent(QKeyEvent* event) {
    // There is nothing to type here, so the letters answer without Alt too.
    if (event->modifiers() == Qt::NoModifier && event->key() == Qt::Key_Y) {
        Decide(true);
    } else if (event->modifiers() == Qt::NoModifier && event->key() == Qt::Key_N) {
        Decide(false);
    } else {
        QDialog::keyPressEvent(event);
    }
}

}  // namespace kv
