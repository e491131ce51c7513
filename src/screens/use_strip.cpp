#include "screens/use_strip.h"

#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <algorithm>

#include "base/format.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"

namespace kv {

namespace {

QString Hours(double hours) {
    return ToQt(FormatNumber(hours, "##,##0.00"));
}

QString Day(Date date) {
    return ToQt(FormatDate(date, "MMM/DD/YYYY"));
}

QString LeftWords(double hours) {
    return hours < 0 ? UseStrip::tr("%1 too many").arg(Hours(-hours))
                     : UseStrip::tr("%1 left").arg(Hours(hours));
}

}  // namespace

UseStrip::UseStrip(QWidget* parent) : QWidget(parent) {
    LBLperiod = new QLabel(this);
    LBLperiod->setObjectName(QStringLiteral("LBLperiod"));
    LBLtotal = new QLabel(this);
    LBLtotal->setObjectName(QStringLiteral("LBLtotal"));
    Bar = new QProgressBar(this);
    Bar->setObjectName(QStringLiteral("Bar"));
    Bar->setAccessibleName(tr("Used of what is authorized in all"));
    Bar->setMaximumWidth(24 * theme::kUnit);
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setHorizontalSpacing(2 * theme::kUnit);
    layout->setVerticalSpacing(0);
    layout->addWidget(LBLperiod, 0, 0);
    layout->addWidget(LBLtotal, 1, 0);
    layout->addWidget(Bar, 0, 1, 2, 1);
    layout->setColumnStretch(0, 1);
}

void UseStrip::ShowUse(const std::optional<AuthorizationUse>& use) {
    constexpr int kAll = 100;
    Bar->setVisible(use && use->totalAuthorized > 0);
    if (!use) {
        LBLperiod->clear();
        LBLtotal->clear();
        return;
    }
    const QString period = use->per == "M" ? tr("This month") : tr("This week");
    LBLperiod->setText(tr("%1: %2 hours authorized, %3 scheduled, %4 worked, %5")
                           .arg(period, Hours(use->authorized), Hours(use->scheduled), Hours(use->worked),
                                LeftWords(use->left)));
    const QString end = use->runsOut ? tr("used up on %1 at the present pattern").arg(Day(use->lasts))
                                     : tr("ends on %1").arg(Day(use->lasts));
    LBLtotal->setText(
        tr("In all: %1 hours authorized, %2 used, %3; %4")
            .arg(Hours(use->totalAuthorized), Hours(use->totalUsed), LeftWords(use->totalLeft), end));
    if (use->totalAuthorized > 0) {
        Bar->setValue(std::clamp(static_cast<int>(kAll * use->totalUsed / use->totalAuthorized), 0, kAll));
    }
}

}  // namespace kv
