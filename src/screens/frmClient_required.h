#pragma once
#include "screens/frmClient_part.h"

class QGroupBox;
class QToolButton;

namespace kv {

class DateBox;
class FieldForm;
class LookupCombo;
class MaskedBox;
class PlainCombo;
class TextBox;

/// The page of the client's identity, address, service terms and emergency contacts.
class FRMrequired_Info : public ClientPart {
    Q_OBJECT
  public:
    explicit FRMrequired_Info(QWidget* parent);
    std::vector<Tie> Ties() const override;

    TextBox* TxtLastname = nullptr;
    TextBox* TxtFirstnam = nullptr;
    TextBox* txtStreet = nullptr;
    TextBox* TXTaddress2 = nullptr;
    TextBox* TXTapt = nullptr;
    TextBox* TXTcity = nullptr;
    TextBox* TXTstate = nullptr;
    TextBox* TXTzip = nullptr;
    MaskedBox* TxtPhone = nullptr;
    MaskedBox* txtPhone2 = nullptr;
    PlainCombo* CMBphone = nullptr;
    TextBox* txtEmail = nullptr;
    QToolButton* CMDemail = nullptr;

    MaskedBox* txtSsn = nullptr;
    DateBox* TxtB_date = nullptr;
    LookupCombo* TDBGender = nullptr;
    LookupCombo* TDBCombo1 = nullptr;   ///< language
    LookupCombo* TDBCombo6 = nullptr;   ///< ethnic
    LookupCombo* TDBCombo29 = nullptr;  ///< district, stored as its text

    LookupCombo* TDBCombo3 = nullptr;   ///< wanted caregiver gender
    LookupCombo* TDBCombo20 = nullptr;  ///< ordered discipline
    PlainCombo* CMBhol = nullptr;
    PlainCombo* cmbGroup = nullptr;
    LookupCombo* TDBCombo4 = nullptr;   ///< manager
    LookupCombo* TDBCombo5 = nullptr;   ///< field supervisor
    LookupCombo* TDBCombo25 = nullptr;  ///< priority
    LookupCombo* TDBCombo8 = nullptr;   ///< diet

    QGroupBox* FRAMEemerg = nullptr;
    TextBox* TDBText7 = nullptr;
    TextBox* TDBText15 = nullptr;
    TextBox* TDBText16 = nullptr;
    TextBox* TDBText18 = nullptr;
    TextBox* TDBText17 = nullptr;
    MaskedBox* TxtEmgcyphona = nullptr;
    TextBox* TXTemgname2 = nullptr;
    MaskedBox* TXTemgphone2 = nullptr;
    TextBox* TXTemgname3 = nullptr;
    MaskedBox* TXTemgphone3 = nullptr;

  private:
    void MakeAddress(FieldForm* form);
    void MakePerson(FieldForm* form);
    void MakeService(FieldForm* form);
    void MakeEmergency(FieldForm* form);
};

}  // namespace kv
