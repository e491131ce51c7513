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

    TextBox* TXTbillfirst = nullptr;
    TextBox* TXTbilllast = nullptr;
    TextBox* TDBText8 = nullptr;    ///< address
    TextBox* TDBText10 = nullptr;   ///< second line of the address
    TextBox* TDBText3 = nullptr;    ///< city
    TextBox* TDBText2 = nullptr;    ///< state
    TextBox* TDBText1 = nullptr;    ///< zip
    MaskedBox* TDBMask1 = nullptr;  ///< phone
    PlainCombo* CMBhowoften = nullptr;
    PlainCombo* CMBbilltype = nullptr;
    NumberBox* NUMbillmileage = nullptr;
    CheckBox* CHKbillmileage = nullptr;
    CheckBox* CHKbillerrand = nullptr;
    CheckBox* CHKbillexpenses = nullptr;
    CheckBox* CHKbillholiday = nullptr;
    CheckBox* CHKbillot = nullptr;
    TextBox* TXTinvoiceNote = nullptr;
    MemoBox* TXTrules = nullptr;

  private:
    void MakeAddress(FieldForm* form);
    void MakeOptions(FieldForm* form);
    void MakeInvoice(FieldForm* form);
};

}  // namespace kv
