#include "screens/frmClient_referral.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "screens/frmClient_controls.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/text_box.h"
#include "screens/widgets/theme.h"

namespace kv {

namespace {

constexpr int kName = 32;
constexpr int kText = kName + 3;  ///< as wide as a combo with its arrow

QLabel* MakeCount(const QString& name, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

}  // namespace

FRMreferral::FRMreferral(QWidget* parent) : ClientPart(QStringLiteral("FRMreferral"), parent) {
    auto* form = new FieldForm(Frame());
    MakeDates(form->AddGroup(QStringLiteral("FRAMEdates"), tr("Dates of Care")));
    MakeSource(form->AddGroup(QStringLiteral("FRAMEsource"), tr("Referred by")));
    form->AddStretch();
    auto* layout = new QVBoxLayout(Frame());
    layout->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, theme::kHalfUnit);
    layout->addWidget(form);
}

void FRMreferral::MakeDates(FieldForm* form) {
    DTEFirstContact = new DateBox(QStringLiteral("DTEFirstContact"), tr("First Contact:"), form);
    DTEstartofcare = new DateBox(QStringLiteral("DTEstartofcare"), tr("Start of Care:"), form);
    DTEendofcare = new DateBox(QStringLiteral("DTEendofcare"), tr("End of Care:"), form);
    DTEstartofcare->setToolTip(tr("Based on the earliest authorization 'From Date'"));
    DTEendofcare->setToolTip(tr("Based on the latest authorization 'To Date'"));
    LBLdays = MakeCount(QStringLiteral("LBLdays"), form);
    LBLactiveDays = MakeCount(QStringLiteral("LBLactiveDays"), form);

    form->AddField(*DTEFirstContact);
    form->AddField(*DTEstartofcare);
    form->AddBehind(LBLdays);
    form->AddField(*DTEendofcare);
    form->AddBehind(LBLactiveDays);
}

void FRMreferral::MakeSource(FieldForm* form) {
    CMBref_group = MakeOffering(QStringLiteral("CMBref_group"), tr("Category:"), kName, form);
    TXTrefSource = new TextBox(QStringLiteral("TXTrefSource"), tr("Source:"), kText, form);
    TXTrefContact = new TextBox(QStringLiteral("TXTrefContact"), tr("Contact:"), kText, form);
    form->AddField(*CMBref_group);
    form->AddField(*TXTrefSource);
    form->AddField(*TXTrefContact);
}

void FRMreferral::ShowDays(long days, long activeDays) {
    // A count from a date that is missing says nothing.
    LBLdays->setText(DTEFirstContact->IsFilled() && DTEstartofcare->IsFilled()
                         ? tr("%L1 days after the first contact").arg(days)
                         : QString());
    LBLactiveDays->setText(DTEstartofcare->IsFilled() ? tr("%L1 days in service").arg(activeDays)
                                                      : QString());
}

std::vector<ClientPart::Tie> FRMreferral::Ties() const {
    return {
        {DTEFirstContact, "First_contact"}, {DTEstartofcare, "STARTSERVC"}, {DTEendofcare, "CASEEXPDAT"},
        {CMBref_group, "ref_grouping"},     {TXTrefSource, "ref_source"},   {TXTrefContact, "Ref_name"},
    };
}

}  // namespace kv
