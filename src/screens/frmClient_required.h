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

    TextBox* TxtLastname;
    TextBox* TxtFirstnam;
    TextBox* txtStreet;
    TextBox* TXTaddress2;
    TextBox* TXTapt;
    TextBox* TXTcity;
    TextBox* TXTstate;
    TextBox* TXTzip;
    MaskedBox* TxtPhone;
    MaskedBox* txtPhone2;
    PlainCombo* CMBphone;
    TextBox* txtEmail;
    QToolButton* CMDemail;

    MaskedBox* txtSsn;
    DateBox* TxtB_date;
    LookupCombo* TDBGender;
    LookupCombo* TDBCombo1;   ///< language
    LookupCombo* TDBCombo6;   ///< ethnic
    LookupCombo* TDBCombo29;  ///< district, stored as its text

    LookupCombo* TDBCombo3;   ///< wanted caregiver gender
    LookupCombo* TDBCombo20;  ///< ordered discipline
    PlainCombo* CMBhol;
    PlainCombo* cmbGroup;
    LookupCombo* TDBCombo4;   ///< manager
    LookupCombo* TDBCombo5;   ///< field supervisor
    LookupCombo* TDBCombo25;  ///< priority
    LookupCombo* TDBCombo8;   ///< diet

    QGroupBox* FRAMEemerg;
    TextBox* TDBText7;
    TextBox* TDBText15;
    TextBox* TDBText16;
    TextBox* TDBText18;
    TextBox* TDBText17;
    MaskedBox* TxtEmgcyphona;
    TextBox* TXTemgname2;
    MaskedBox* TXTemgphone2;
    TextBox* TXTemgname3;
    MaskedBox* TXTemgphone3;

  private:
    void MakeAddress(FieldForm* form);
    void MakePerson(FieldForm* form);
    void MakeService(FieldForm* form);
    void MakeEmergency(FieldForm* form);
};

}  // namespace kv
