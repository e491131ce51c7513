#pragma once
#include "screens/frmClient_part.h"

class QLabel;

namespace kv {

class DateBox;
class FieldForm;
class PlainCombo;
class TextBox;

/// The page of who sent the client, and the dates of care with the days between them.
class FRMreferral : public ClientPart {
    Q_OBJECT
  public:
    explicit FRMreferral(QWidget* parent);
    std::vector<Tie> Ties() const override;

    /// The counts of days behind their dates, as the header has them.
    void ShowDays(long days, long activeDays);

    DateBox* DTEFirstContact;
    DateBox* DTEstartofcare;
    DateBox* DTEendofcare;
    PlainCombo* CMBref_group;
    TextBox* TXTrefSource;
    TextBox* TXTrefContact;
    QLabel* LBLdays;
    QLabel* LBLactiveDays;

  private:
    void MakeDates(FieldForm* form);
    void MakeSource(FieldForm* form);
};

}  // namespace kv
