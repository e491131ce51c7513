#include "screens/FRMimportant.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "screens/widgets/theme.h"

namespace kv {

FRMimportant::FRMimportant(long authorization, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("FRMimportant"));
    setWindowTitle(QStringLiteral("Authorization Change"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2 * theme::kUnit, 2 * theme::kUnit, 2 * theme::kUnit, 2 * theme::kUnit);
    TXTauth = new QLabel(tr("Authorization %1").arg(authorization), this);
    TXTauth->setObjectName(QStringLiteral("TXTauth"));
    TXTauth->setForegroundRole(QPalette::PlaceholderText);
    auto* first =
        new QLabel(QStringLiteral("You have Changed the Authorizations Payer Source or Call Type."), this);
    QFont bold = first->font();
    bold.setBold(true);
    first->setFont(bold);
    layout->addWidget(first);
    layout->addWidget(TXTauth);
    for (const char* line :
         {"This will effect all current schedules based upon this authorization.",
          "Schedules created on the old information, are now incorrect.",
          "Schedules and Billing Descrepancy Report - 1010 may not work properly.",
          "You may not be able to create invoices for  these Schedules.",
          "If you continue, you will need to edit each schedule to correct this problem OR  Update all "
          "Schedules with new Info."}) {
        auto* label = new QLabel(QString::fromLatin1(line), this);
        label->setWordWrap(true);
        layout->addWidget(label);
    }
    auto* keys = new QHBoxLayout;
    keys->addStretch(1);
    const auto key = [&](const char* name, const QString& caption, ImportantAnswer answer) {
        auto* button = new QPushButton(caption, this);
        button->setObjectName(QString::fromLatin1(name));
        keys->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, answer] {
            answer_ = answer;
            accept();
        });
        return button;
    };
    CMDall = key("CMDall", tr("&Update all Schedules"), ImportantAnswer::All);
    CMDyes = key("CMDyes", tr("&Continue"), ImportantAnswer::Yes);
    CMDno = key("CMDno", tr("Do &not Save"), ImportantAnswer::No);
    CMDno->setDefault(true);
    layout->addSpacing(theme::kUnit);
    layout->addLayout(keys);
}

ImportantAnswer FRMimportant::Answer() {
    answer_ = ImportantAnswer::No;
    exec();
    return answer_;
}

}  // namespace kv
