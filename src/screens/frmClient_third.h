#pragma once
#include "screens/frmClient_part.h"

namespace kv {

class CheckBox;
class FieldForm;
class MaskedBox;
class MemoBox;
class NumberBox;
class PlainCombo;
class TextBox;

/// The page of who is billed instead of the client, and how a client who pays is billed.
class FRMthird : public ClientPart {
    Q_OBJECT
  public:
    explicit FRMthird(QWidget* parent);
    std::vector<Tie> Ties() const override;

    TextBox* TXTbillfirst;
    TextBox* TXTbilllast;
    TextBox* TDBText8;    ///< address
    TextBox* TDBText10;   ///< second line of the address
    TextBox* TDBText3;    ///< city
    TextBox* TDBText2;    ///< state
    TextBox* TDBText1;    ///< zip
    MaskedBox* TDBMask1;  ///< phone
    PlainCombo* CMBhowoften;
    PlainCombo* CMBbilltype;
    NumberBox* NUMbillmileage;
    CheckBox* CHKbillmileage;
    CheckBox* CHKbillerrand;
    CheckBox* CHKbillexpenses;
    CheckBox* CHKbillholiday;
    CheckBox* CHKbillot;
    TextBox* TXTinvoiceNote;
    MemoBox* TXTrules;

  private:
    void MakeAddress(FieldForm* form);
    void MakeOptions(FieldForm* form);
    void MakeInvoice(FieldForm* form);
};

}  // namespace kv
