#include "screens/FRMload.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>

#include "screens/widgets/theme.h"

namespace kv {

FRMload::FRMload(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      LBLload(new QLabel(QStringLiteral("Loading User Defined Information"), this)),
      ProgressBar1(new QProgressBar(this)) {
    setObjectName(QStringLiteral("FRMload"));
    setWindowTitle(LBLload->text());
    LBLload->setObjectName(QStringLiteral("LBLload"));
    ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1->setAccessibleName(LBLload->text());
    ProgressBar1->setMinimumWidth(theme::CharactersWide(*this, 48));
    auto* all = new QVBoxLayout(this);
    all->addWidget(LBLload);
    all->addWidget(ProgressBar1);
}

void FRMload::SetValue(int value, int most) {
    ProgressBar1->setMaximum(most);
    ProgressBar1->setValue(value);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace kv
