#include "screens/frmClient_required.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QToolButton>

#include "screens/frmClient_controls.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/date_box.h"
#include "screens/widgets/field_form.h"
#include "screens/widgets/masked_box.h"
#include "screens/widgets/text_box.h"
#include "screens/widgets/theme.h"

namespace kv {

namespace {

constexpr int kName = 26;
constexpr int kState = 5;
constexpr int kZip = 9;
constexpr int kLookup = 20;

}  // namespace

FRMrequired_Info::FRMrequired_Info(QWidget* parent) : ClientPart(QStringLiteral("FRMrequired_Info"), parent) {
    auto* left = new FieldForm(Frame());
    auto* right = new FieldForm(Frame());
    MakeAddress(left->AddGroup(QStringLiteral("FRAMEaddress"), tr("Name and Address")));
    MakePerson(left->AddGroup(QStringLiteral("FRAMEperson"), tr("Person")));
    left->AddStretch();
    MakeService(right->AddGroup(QStringLiteral("FRAMEservice"), tr("Service")));
    FieldForm* emergency = right->AddGroup(QStringLiteral("FRAMEemerg"), tr("Emergency Contacts"));
    FRAMEemerg = emergency->GroupBox();
    MakeEmergency(emergency);
    right->AddStretch();

    auto* layout = new QHBoxLayout(Frame());
    layout->setContentsMargins(theme::kUnit, theme::kHalfUnit, theme::kUnit, theme::kHalfUnit);
    layout->setSpacing(theme::kUnit);
    layout->addWidget(left, 1);
    layout->addWidget(right, 1);
}

void FRMrequired_Info::MakeAddress(FieldForm* form) {
    TxtLastname = new TextBox(QStringLiteral("TxtLastname"), tr("Last Name:"), kName, form);
    TxtFirstnam = new TextBox(QStringLiteral("TxtFirstnam"), tr("First Name:"), kName, form);
    txtStreet = new TextBox(QStringLiteral("txtStreet"), tr("Street:"), kName, form);
    TXTaddress2 = new TextBox(QStringLiteral("TXTaddress2"), tr("Address 2:"), kName, form);
    TXTapt = new TextBox(QStringLiteral("TXTapt"), tr("Apt:"), 5, form);
    TXTcity = new TextBox(QStringLiteral("TXTcity"), tr("City:"), 16, form);
    TXTstate = new TextBox(QStringLiteral("TXTstate"), tr("State:"), kState, form);
    TXTzip = new TextBox(QStringLiteral("TXTzip"), tr("Zip:"), kZip, form);
    TxtPhone = MakePhone(QStringLiteral("TxtPhone"), tr("Phone:"), form);
    txtPhone2 = MakePhone(QStringLiteral("txtPhone2"), tr("Second Phone:"), form);
    CMBphone = MakeOffering(QStringLiteral("CMBphone"), {}, 6, form);
    CMBphone->setAccessibleName(tr("What the second phone is"));
    FillFixedList(*CMBphone);
    txtEmail = new TextBox(QStringLiteral("txtEmail"), tr("E-mail:"), kName, form);
    CMDemail =
        MakeSmallButton(QStringLiteral("CMDemail"), QStringLiteral("mail"), tr("Write an e-mail"), form);

    TxtLastname->SetRequired(true);
    TxtFirstnam->SetRequired(true);
    form->AddField(*TxtLastname);
    form->AddField(*TxtFirstnam);
    form->AddField(*txtStreet);
    form->AddLine({TXTaddress2, TXTapt});
    form->AddLine({TXTcity, TXTstate, TXTzip});
    form->AddField(*TxtPhone);
    form->AddLine({txtPhone2, CMBphone});
    form->AddField(*txtEmail);
    form->AddBehind(CMDemail);
}

void FRMrequired_Info::MakePerson(FieldForm* form) {
    txtSsn = new MaskedBox(QStringLiteral("txtSsn"), tr("SSN"), QString::fromLatin1(mask::kSocial), form);
    TxtB_date = new DateBox(QStringLiteral("TxtB_date"), tr("Birth Date:"), form);
    TDBGender = new LookupCombo(QStringLiteral("TDBGender"), tr("Gender:"), kLookup, form);
    TDBCombo1 = new LookupCombo(QStringLiteral("TDBCombo1"), tr("Language:"), kLookup, form);
    TDBCombo6 = new LookupCombo(QStringLiteral("TDBCombo6"), tr("Ethnic:"), kLookup, form);
    TDBCombo29 = new LookupCombo(QStringLiteral("TDBCombo29"), tr("District:"), kLookup, form);

    TDBCombo1->SetRequired(true);
    form->AddField(*txtSsn);
    form->AddField(*TxtB_date);
    TDBCombo6->SetListOnly(true);
    for (LookupCombo* combo : {TDBGender, TDBCombo1, TDBCombo6, TDBCombo29}) {
        form->AddField(*combo);
    }
}

void FRMrequired_Info::MakeService(FieldForm* form) {
    TDBCombo3 = new LookupCombo(QStringLiteral("TDBCombo3"), tr("Providers Gender:"), kLookup, form);
    TDBCombo20 = new LookupCombo(QStringLiteral("TDBCombo20"), tr("Ordered Discipline:"), kLookup, form);
    CMBhol = MakeOffering(QStringLiteral("CMBhol"), tr("Holiday Coverage:"), 6, form);
    FillFixedList(*CMBhol);
    cmbGroup = MakeOffering(QStringLiteral("cmbGroup"), tr("Group:"), kLookup, form);
    TDBCombo4 = MakeClearable(QStringLiteral("TDBCombo4"), tr("Manager:"), kLookup, form);
    TDBCombo5 = MakeClearable(QStringLiteral("TDBCombo5"), tr("Field Supervisor:"), kLookup, form);
    TDBCombo25 = new LookupCombo(QStringLiteral("TDBCombo25"), tr("Priority:"), kLookup, form);
    TDBCombo25->SetListOnly(true);
    TDBCombo8 = MakeClearable(QStringLiteral("TDBCombo8"), tr("Diet:"), kLookup, form);

    TDBCombo3->SetRequired(true);
    TDBCombo20->SetRequired(true);
    for (BoundControl* control : std::initializer_list<BoundControl*>{
             TDBCombo3, TDBCombo20, CMBhol, cmbGroup, TDBCombo4, TDBCombo5, TDBCombo25, TDBCombo8}) {
        form->AddField(*control);
    }
}

void FRMrequired_Info::MakeEmergency(FieldForm* form) {
    TDBText7 = new TextBox(QStringLiteral("TDBText7"), tr("Name:"), kName, form);
    TDBText15 = new TextBox(QStringLiteral("TDBText15"), tr("Address:"), kName, form);
    TDBText16 = new TextBox(QStringLiteral("TDBText16"), tr("City:"), 20, form);
    TDBText18 = new TextBox(QStringLiteral("TDBText18"), tr("State:"), kState, form);
    TDBText17 = new TextBox(QStringLiteral("TDBText17"), tr("Zip:"), kZip, form);
    TxtEmgcyphona = MakePhone(QStringLiteral("TxtEmgcyphona"), tr("Phone:"), form);
    TXTemgname2 = new TextBox(QStringLiteral("TXTemgname2"), tr("Second:"), 18, form);
    TXTemgphone2 = MakePhone(QStringLiteral("TXTemgphone2"), tr("Phone:"), form);
    TXTemgname3 = new TextBox(QStringLiteral("TXTemgname3"), tr("Third:"), 18, form);
    TXTemgphone3 = MakePhone(QStringLiteral("TXTemgphone3"), tr("Phone:"), form);

    form->AddField(*TDBText7);
    form->AddField(*TDBText15);
    form->AddLine({TDBText16, TDBText18});
    form->AddLine({TDBText17, TxtEmgcyphona});
    form->AddLine({TXTemgname2, TXTemgphone2});
    form->AddLine({TXTemgname3, TXTemgphone3});
}

std::vector<ClientPart::Tie> FRMrequired_Info::Ties() const {
    return {
        {TxtLastname, "LASTNAME"},
        {TxtFirstnam, "FIRSTNAM"},
        {txtStreet, "STREET"},
        {TXTaddress2, "ADDRESS2"},
        {TXTapt, "apt"},
        {TXTcity, "CITY"},
        {TXTstate, "STATE"},
        {TXTzip, "ZIP"},
        {TxtPhone, "PHONE"},
        {txtPhone2, "EXT_PHONE"},
        {CMBphone, "ALT_PHONE_DESC"},
        {txtEmail, "EMAIL"},
        {txtSsn, "SSN"},
        {TxtB_date, "BDATE"},
        {TDBGender, "SEX"},
        {TDBCombo1, "LANGUAGE"},
        {TDBCombo6, "ETHNIC"},
        {TDBCombo29, "BORO"},
        {TDBCombo3, "PROV_SEX"},
        {TDBCombo20, "ORD_DISCPL"},
        {CMBhol, "HOL_COV"},
        {cmbGroup, "grouping"},
        {TDBCombo4, "MANAGER"},
        {TDBCombo5, "FSL"},
        {TDBCombo25, "DISASTER_CODE"},
        {TDBCombo8, "DIET"},
        {TDBText7, "EMERGCONT"},
        {TDBText15, "EMGSTREET"},
        {TDBText16, "EMGCITY"},
        {TDBText18, "EMGSTATE"},
        {TDBText17, "EMGZIP"},
        {TxtEmgcyphona, "EMGCYPHONe"},
        {TXTemgname2, "EMG_NAME2"},
        {TXTemgphone2, "EMG_PHONE2"},
        {TXTemgname3, "EMG_NAME3"},
        {TXTemgphone3, "EMG_PHONE3"},
    };
}

}  // namespace kv
