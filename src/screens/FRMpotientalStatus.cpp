#include "screens/FRMpotientalStatus.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"

namespace kv {

FRMpotientalStatus::FRMpotientalStatus(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("FRMpotientalStatus"));
    setWindowTitle(tr("Change Status"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2 * theme::kUnit, 2 * theme::kUnit, 2 * theme::kUnit, 2 * theme::kUnit);
    layout->setSpacing(theme::kUnit);
    for (std::size_t i = 0; i < OPTstatus.size(); ++i) {
        OPTstatus[i] = new QRadioButton(ToQt(kPotentialChoiceTexts[i]), this);
        OPTstatus[i]->setObjectName(IndexedName(QStringLiteral("OPTstatus"), static_cast<int>(i)));
        layout->addWidget(OPTstatus[i]);
    }
    auto* buttons = new QDialogButtonBox(this);
    CMDok = buttons->addButton(QDialogButtonBox::Ok);
    CMDok->setObjectName(QStringLiteral("CMDok"));
    CMDcancel = buttons->addButton(QDialogButtonBox::Cancel);
    CMDcancel->setObjectName(QStringLiteral("CMDcancel"));
    layout->addWidget(buttons);
    // Nothing is chosen for the operator: the key waits for an option.
    CMDok->setEnabled(false);
    for (QRadioButton* option : OPTstatus) {
        connect(option, &QRadioButton::toggled, CMDok, [this] { CMDok->setEnabled(true); });
    }
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

PotentialChoice FRMpotientalStatus::Choice() const {
    std::size_t chosen = 0;
    while (chosen + 1 < OPTstatus.size() && !OPTstatus[chosen]->isChecked()) {
        ++chosen;
    }
    return static_cast<PotentialChoice>(chosen);
}

}  // namespace kv
