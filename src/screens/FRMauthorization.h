#pragma once
#include <functional>
#include <vector>

#include "billing/authorization_save.h"
#include "clients/list_move.h"
#include "clients/new_client.h"
#include "printing/document/document.h"
#include "screens/screen_steps.h"
#include "screens/section_screen.h"
#include "screens/widgets/bound_source.h"

class QCheckBox;
class QGroupBox;
class QPushButton;
class QRadioButton;
class QToolButton;

namespace kv {

class DateBox;
class FieldForm;
class Grid;
class MemoBox;
class NumberBox;
class PlainCombo;
class TextBox;
class ToolBar;
class UseStrip;

/// "Authorizations": what the payers allow for a client, and what a change of it means for the visits.
class FRMauthorization : public SectionScreen {
    Q_OBJECT
  public:
    FRMauthorization(Session& session, QWidget* parent);
    void SetHiddenID(const std::string& id, ClientForm& mainScreen) override;
    bool MayLeave() override;

    ToolBar* Toolbar3 = nullptr;
    Grid* FGauth = nullptr;
    QCheckBox* CHKActive_auth = nullptr;
    UseStrip* Use = nullptr;
    BoundSource Dbauthor;
    PlainCombo* cmbPayor = nullptr;
    TextBox* txtCODE = nullptr;
    PlainCombo* cmbVisType = nullptr;
    TextBox* txtVisName = nullptr;
    PlainCombo* CMBAuthStatus = nullptr;
    PlainCombo* cmbHourCode = nullptr;
    DateBox* TDBDate2 = nullptr;
    DateBox* TDBDate3 = nullptr;
    QToolButton* IMGtoday = nullptr;
    NumberBox* NUMhrs = nullptr;
    TextBox* TXTweek = nullptr;
    PlainCombo* CMBtype = nullptr;
    PlainCombo* CMByes = nullptr;
    QRadioButton* Optshift[3] = {};
    NumberBox* NUMmin_hours = nullptr;
    NumberBox* NUMmax_hours = nullptr;
    QGroupBox* Frame2 = nullptr;  ///< co-billing
    PlainCombo* CMBcoBilling = nullptr;
    NumberBox* NUMcoBilling = nullptr;
    PlainCombo* CMBwhen_Cobilling = nullptr;
    QPushButton* CMDcalc_Percentage = nullptr;
    MemoBox* TXTauthmemo = nullptr;
    QWidget* Migration = nullptr;  ///< the bulk tool's line
    DateBox* TDBAbove = nullptr;
    DateBox* TDBMigration = nullptr;
    QPushButton* CMDmigration = nullptr;

    /// What is asked about the visits when payer or call type change.
    AskImportant Ask;
    /// Shows a printout.
    std::function<void(const Document&)> Preview;

  private:
    void MakeToolbar();
    QWidget* MakeList();
    QWidget* MakeMigration();
    void MakePayer(FieldForm* form);
    void MakeDates(FieldForm* form);
    void MakeHours(FieldForm* form);
    void MakeCobilling(FieldForm* form);
    void Connect();
    void CheckRights();

    void RequeryAuthorizations();
    void LoadAuthorizationScreen();
    void FillList();
    void ShowAuthorizationRow();
    void SetCoBillingInput(int type);
    void ShowShift(const std::string& shift);
    /// The payer that the box shows, by the code of the item.
    PayerItem Payer() const;
    void ShowPayer();
    void FillCallTypes(const PayerItem& payer);
    void PickCallType();
    /// False where the description that was typed is in no list, which is told.
    bool LeaveCallType();
    /// Boxes and keys for looking, or for writing.
    void SetWriting(bool writing);
    bool IsWriting() const { return Dbauthor.IsEditing() || Dbauthor.IsAdding(); }
    AuthorizationEntry Entry() const;
    bool HasRows() const { return Dbauthor.Count() > 0; }

    void NewKey();
    void EditKey();
    bool SaveKey();
    void DiscardKey();
    void DeleteKey();
    void Move(ListMove move);
    void HistoryKey();
    void AssignKey();
    void TasksKey();
    void CalcKey();
    void MigrationKey();

    Session& session_;
    ClientForm* form_ = nullptr;
    std::string client_;
    long sequence_ = 0;  ///< the row to come back to
    bool mayAdd_ = true;
    bool mayEdit_ = true;
    bool mayDelete_ = true;
    bool mayAssign_ = true;
    bool validCallType_ = true;
    KeySteps keys_;
};

}  // namespace kv
