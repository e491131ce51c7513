#include "screens/FRMcalc_percent.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "base/format.h"
#include "billing/cobilling_shares.h"
#include "screens/widgets/bound_control.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/number_box.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"

namespace kv {

FRMcalc_percent::FRMcalc_percent(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
    setObjectName(QStringLiteral("FRMcalc_percent"));
    setWindowTitle(QStringLiteral("Calculate the Co-Billing Percentage"));
    constexpr const char* kOptions[] = {"I know the client and payer portion.",
                                        "I know the total amount and the payer portion."};
    auto* layout = new QVBoxLayout(this);
    for (int i = 0; i < 2; ++i) {
        Option1[i] = new QRadioButton(QString::fromLatin1(kOptions[i]), this);
        Option1[i]->setObjectName(IndexedName(QStringLiteral("Option1"), i));
        layout->addWidget(Option1[i]);
        connect(Option1[i], &QRadioButton::toggled, this, &FRMcalc_percent::ShowLabels);
    }
    auto* form = new FieldForm(this);
    Numtotal = new NumberBox(QStringLiteral("Numtotal"), tr("Total"), "#,##0.00", 12, form);
    NumPayer = new NumberBox(QStringLiteral("NumPayer"), tr("Payer"), "#,##0.00", 12, form);
    for (NumberBox* box : {Numtotal, NumPayer}) {
        box->SetLimits(0, std::nullopt);
        form->AddField(*box);
        connect(box->Notifier(), &ControlNotifier::changed, this, [this] {
            List1->clear();
            percentage_ = 0;
            CMDok->setEnabled(false);
        });
    }
    List1 = new QListWidget(this);
    List1->setObjectName(QStringLiteral("List1"));
    List1->setAccessibleName(tr("Result"));
    List1->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    List1->setFixedHeight(9 * theme::kUnit);
    CMdcalc = new QPushButton(tr("&Calculate"), this);
    CMdcalc->setObjectName(QStringLiteral("CMdcalc"));
    CMdcalc->setDefault(true);
    CMDok = new QPushButton(tr("&Use This Percentage"), this);
    CMDok->setObjectName(QStringLiteral("CMDok"));
    CMDok->setEnabled(false);
    auto* cancel = new QPushButton(tr("Cance&l"), this);
    auto* keys = new QHBoxLayout;
    keys->addStretch(1);
    keys->addWidget(CMdcalc);
    keys->addWidget(CMDok);
    keys->addWidget(cancel);
    layout->addWidget(form);
    layout->addWidget(List1);
    layout->addLayout(keys);
    resize(60 * theme::kUnit, sizeHint().height());
    connect(CMdcalc, &QPushButton::clicked, this, &FRMcalc_percent::Calculate);
    connect(CMDok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    Option1[1]->setChecked(true);
}

void FRMcalc_percent::ShowLabels() {
    const bool total = Option1[1]->isChecked();
    Numtotal->SetCaption(total ? QStringLiteral("Total Amount to Bill:")
                               : QStringLiteral("Client Portion to Bill:"));
    Numtotal->setToolTip(
        total ? QStringLiteral("This is the maximum you may bill the client and the payer combined.")
              : QString());
    NumPayer->SetCaption(total ? QStringLiteral("Payer Portion of Total:")
                               : QStringLiteral("Payer Portion to Bill:"));
    List1->clear();
    percentage_ = 0;
    CMDok->setEnabled(false);
}

void FRMcalc_percent::Calculate() {
    List1->clear();
    if (!Numtotal->Check() || !NumPayer->Check()) {
        return;
    }
    const bool total = Option1[1]->isChecked();
    const auto shares = total ? SharesOfTotal(Numtotal->Number(), NumPayer->Number())
                              : SharesOfPortions(Numtotal->Number(), NumPayer->Number());
    if (!shares) {
        session_.ShowMessageWindow(kTotalTooLow);
        return;
    }
    List1->addItem(total ? QStringLiteral("   The clients portion is: ") +
                               ToQt(FormatNumber(shares->client, "#,##0.00"))
                         : QStringLiteral("   The Total Amount to Bill is: ") +
                               ToQt(FormatNumber(shares->total, "#,##0.00")));
    List1->addItem(QString());
    List1->addItem(QStringLiteral("The clients percentage is: ") +
                   ToQt(FormatNumber(shares->percent, "##0.000")));
    percentage_ = shares->percent;
    CMDok->setEnabled(percentage_ > 0);
}

}  // namespace kv
