#include "screens/frmClient_third.h"

#include <QGridLayout>
#include <QLabel>

#include "screens/frmClient_controls.h"
#include "screens/widgets/check_box.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/masked_box.h"
#include "screens/widgets/number_box.h"
#include "screens/widgets/text_box.h"
#include "screens/widgets/theme.h"

namespace kv {

namespace {

constexpr int kName = 28;

}  // namespace

FRMthird::FRMthird(QWidget* parent) : ClientPart(QStringLiteral("FRMthird"), parent) {
    auto* left = new FieldForm(Frame());
    auto* right = new FieldForm(Frame());
    auto* below = new FieldForm(Frame());
    MakeAddress(left->AddGroup(QStringLiteral("FRAMEbill"), tr("Third Party")));
    left->AddStretch();
    MakeOptions(right->AddGroup(QStringLiteral("FRAMEoptions"), tr("Billing Options")));
    right->AddStretch();
    MakeInvoice(below->AddGroup(QStringLiteral("FRAMEinvoice"), tr("Invoice")));
    below->AddStretch();

    auto* layout = new QGridLayout(Frame());
    layout->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, theme::kHalfUnit);
    layout->setSpacing(theme::kUnit);
    layout->addWidget(left, 0, 0);
    layout->addWidget(right, 0, 1);
    layout->addWidget(below, 1, 0, 1, 2);
    layout->setRowStretch(1, 1);
    layout->setColumnStretch(0, 1);
    layout->setColumnStretch(1, 1);
}

void FRMthird::MakeAddress(FieldForm* form) {
    TXTbillfirst = new TextBox(QStringLiteral("TXTbillfirst"), tr("First Name:"), kName, form);
    TXTbilllast = new TextBox(QStringLiteral("TXTbilllast"), tr("Last Name:"), kName, form);
    TDBText8 = new TextBox(QStringLiteral("TDBText8"), tr("Address:"), kName, form);
    TDBText10 = new TextBox(QStringLiteral("TDBText10"), tr("Address 2:"), kName, form);
    TDBText3 = new TextBox(QStringLiteral("TDBText3"), tr("City:"), 16, form);
    TDBText2 = new TextBox(QStringLiteral("TDBText2"), tr("State:"), 5, form);
    TDBText1 = new TextBox(QStringLiteral("TDBText1"), tr("Zip:"), 9, form);
    TDBMask1 = MakePhone(QStringLiteral("TDBMask1"), tr("Phone:"), form);

    const QString whenEmpty = tr("If this field is empty the billing information will come from the client.");
    TXTbillfirst->setToolTip(whenEmpty);
    auto* hint = new QLabel(whenEmpty, form);
    hint->setWordWrap(true);
    hint->setForegroundRole(QPalette::PlaceholderText);

    form->AddField(*TXTbillfirst);
    form->AddWide(hint);
    form->AddField(*TXTbilllast);
    form->AddField(*TDBText8);
    form->AddField(*TDBText10);
    form->AddLine({TDBText3, TDBText2, TDBText1});
    form->AddField(*TDBMask1);
}

void FRMthird::MakeOptions(FieldForm* form) {
    CMBhowoften = MakeOffering(QStringLiteral("CMBhowoften"), tr("How Often:"), 10, form);
    CMBbilltype = MakeOffering(QStringLiteral("CMBbilltype"), tr("Billing Type:"), 10, form);
    NUMbillmileage =
        new NumberBox(QStringLiteral("NUMbillmileage"), tr("Rate per Mile:"), "##,##0.00", 10, form);
    CHKbillmileage = new CheckBox(QStringLiteral("CHKbillmileage"), tr("Bill mileage"), form);
    CHKbillerrand = new CheckBox(QStringLiteral("CHKbillerrand"), tr("Bill errands"), form);
    CHKbillexpenses = new CheckBox(QStringLiteral("CHKbillexpenses"), tr("Bill expenses"), form);
    CHKbillholiday = new CheckBox(QStringLiteral("CHKbillholiday"), tr("Bill holidays"), form);
    CHKbillot = new CheckBox(QStringLiteral("CHKbillot"), tr("Bill overtime"), form);
    CHKbillot->setToolTip(
        tr("Bill overtime, if one caregiver visits this client more than 40 hours per week."));
    FillFixedList(*CMBhowoften);
    CMBhowoften->setToolTip(tr("How often the client is billed"));
    FillFixedList(*CMBbilltype);

    for (BoundControl* control :
         std::initializer_list<BoundControl*>{CMBhowoften, CMBbilltype, NUMbillmileage, CHKbillmileage,
                                              CHKbillerrand, CHKbillexpenses, CHKbillholiday, CHKbillot}) {
        form->AddField(*control);
    }
}

void FRMthird::MakeInvoice(FieldForm* form) {
    TXTinvoiceNote = new TextBox(QStringLiteral("TXTinvoiceNote"), tr("Invoice Terms:"), 70, form);
    TXTrules = new MemoBox(QStringLiteral("TXTrules"), tr("Instructions:"), 70, 5, form);
    form->AddField(*TXTinvoiceNote);
    form->AddField(*TXTrules);
}

std::vector<ClientPart::Tie> FRMthird::Ties() const {
    return {
        {TXTbillfirst, "BILL_NAME"},
        {TXTbilllast, "BILL_LASTNAME"},
        {TDBText8, "BILL_ADDRESS"},
        {TDBText10, "BILL_ADDRESS2"},
        {TDBText3, "BILL_CITY"},
        {TDBText2, "BILL_STATE"},
        {TDBText1, "BILL_ZIP"},
        {TDBMask1, "BILL_PHONE"},
        {CMBhowoften, "Bill_How_Often"},
        {CMBbilltype, "BILLING_TYPE"},
        {NUMbillmileage, "Billmile_rate"},
        {CHKbillmileage, "BILL_MILEAGE"},
        {CHKbillerrand, "BILL_ERRAND"},
        {CHKbillexpenses, "BILL_EXPENSES"},
        {CHKbillholiday, "BILL_HOLIDAY"},
        {CHKbillot, "Bill_Ot"},
        {TXTinvoiceNote, "Invoice_Terms"},
        {TXTrules, "Invoice_Instructions"},
    };
}

}  // namespace kv
