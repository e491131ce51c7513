#include "screens/FRMDis_error.h"

#include <QBoxLayout>
#include <QListWidget>
#include <QPushButton>

#include "screens/widgets/theme.h"

namespace kv {

FRMDis_error::FRMDis_error(QWidget* parent)
    : QDialog(parent), LSTerror(new QListWidget(this)), CMDok(new QPushButton(QStringLiteral("&OK"), this)) {
    setObjectName(QStringLiteral("FRMDis_error"));
    setWindowTitle(QStringLiteral("Current Errors Found"));
    LSTerror->setObjectName(QStringLiteral("LSTerror"));
    LSTerror->setAccessibleName(QStringLiteral("Errors"));
    LSTerror->setWordWrap(true);
    LSTerror->setResizeMode(QListView::Adjust);
    LSTerror->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    LSTerror->setVerticalScrollMode(QListView::ScrollPerPixel);
    LSTerror->setMinimumSize(theme::CharactersWide(*LSTerror, 56), 8 * LSTerror->fontMetrics().lineSpacing());
    CMDok->setObjectName(QStringLiteral("CMDok"));
    CMDok->setDefault(true);
    CMDok->setFocus();

    auto* lower = new QHBoxLayout;
    lower->addStretch(1);
    lower->addWidget(CMDok);
    auto* all = new QVBoxLayout(this);
    all->addWidget(LSTerror, 1);
    all->addLayout(lower);
    connect(CMDok, &QPushButton::clicked, this, &QDialog::accept);
}

void FRMDis_error::SetLines(const QStringList& lines) {
    LSTerror->clear();
    LSTerror->addItems(lines);
    const int height =
        (static_cast<int>(lines.size()) + 4) * (LSTerror->fontMetrics().lineSpacing() + theme::kHalfUnit);
    resize(theme::CharactersWide(*LSTerror, 64), std::clamp(height, sizeHint().height(), 60 * theme::kUnit));
}

}  // namespace kv
