#pragma once
#include "clients/people_list.h"
#include "screens/frmClient_part.h"

class QToolButton;

namespace kv {

class CheckBox;
class DateBox;
class FieldForm;
class LookupCombo;
class MemoBox;
class PlainCombo;
class TextBox;

/// The page of nursing, diagnoses, case manager, doctor and the numbers that other systems know the client
/// by.
class FRMgeneral : public ClientPart {
    Q_OBJECT
  public:
    explicit FRMgeneral(QWidget* parent);
    std::vector<Tie> Ties() const override;

    /// Fills CMBdoctor or CMBcase; a pick in it copies the person's note to the client.
    void SetPeople(PeopleTable table, std::vector<NamedNote> people);
    PlainCombo* PeopleCombo(PeopleTable table) const;
    /// Puts a diagnosis into the first of its fields that is empty: a look-up that lists it, else the free
    /// words. One that stands there already, or finds no room, changes nothing.
    void TakeDiagnosis(const std::string& code, const std::string& description);

    LookupCombo* TDBCombo9 = nullptr;   ///< nurse
    LookupCombo* TDBCombo19 = nullptr;  ///< nurse visit code
    DateBox* DteNurlasvis = nullptr;
    LookupCombo* TDBCombo26 = nullptr;  ///< diagnoses
    LookupCombo* TDBCombo27 = nullptr;
    LookupCombo* TDBCombo28 = nullptr;
    TextBox* Combo1 = nullptr;  ///< a diagnosis in free words
    QToolButton* CMDicd9 = nullptr;
    TextBox* TXText = nullptr;  ///< accounting ids
    TextBox* TXTexternal2 = nullptr;
    TextBox* TXTexternal3 = nullptr;
    PlainCombo* CMBqbclass = nullptr;
    TextBox* TXTmisc = nullptr;
    CheckBox* Check2 = nullptr;  ///< telephony client

    PlainCombo* CMBcase = nullptr;
    QToolButton* CMDviewCase = nullptr;
    MemoBox* Text2 = nullptr;  ///< the case manager's note
    PlainCombo* CMBdoctor = nullptr;
    QToolButton* CMDviewDocs = nullptr;
    MemoBox* Text3 = nullptr;  ///< the doctor's note

  private:
    void MakeNursing(FieldForm* form);
    void MakeDiagnoses(FieldForm* form);
    void MakeAccounts(FieldForm* form);
    void MakeCaseManager(FieldForm* form);
    void MakeDoctor(FieldForm* form);

    std::vector<NamedNote> doctors_;
    std::vector<NamedNote> caseManagers_;
};

}  // namespace kv
