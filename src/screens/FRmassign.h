#pragma once
#include <QDialog>
#include <array>
#include <functional>

#include "clients/list_move.h"
#include "matching/client_needs.h"
#include "scheduling/assignments.h"
#include "screens/screen_steps.h"
#include "screens/widgets/bound_source.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QToolButton;

namespace kv {

class DateBox;
class FieldForm;
class Grid;
class NumberBox;
class OutlineTree;
class TextBox;
class TimeBox;
class ToolBar;

/// "Add/Change Client Assignments": who goes to the client under one authorization, on which weekdays and at
/// what time. Saving makes the visits.
class FRmassign : public QDialog {
    Q_OBJECT
  public:
    FRmassign(Session& session, AssignmentParent parentRow, QWidget* parent = nullptr);
    /// Asks about what was typed and not saved; stays where it could not be saved.
    void reject() override;
    /// Redraws FGtree.
    void Dis_Tree();

    ToolBar* Toolbar2 = nullptr;
    Grid* FGauth = nullptr;
    Grid* FGcli = nullptr;
    Grid* fgEMP = nullptr;
    OutlineTree* FGtree = nullptr;
    std::array<QCheckBox*, kDaysOfWeek> OPTday{};
    TimeBox* TXTsttime = nullptr;
    TimeBox* ENDtime = nullptr;
    NumberBox* NUMhrs = nullptr;
    QCheckBox* CHKend = nullptr;
    QCheckBox* CHKmil = nullptr;
    NumberBox* NUMhowoften = nullptr;
    DateBox* TDBlastdate = nullptr;
    TextBox* TXTempid = nullptr;
    QToolButton* CMDempfind = nullptr;
    QToolButton* CMDsuggestion = nullptr;
    QLineEdit* Text1 = nullptr;  ///< the caregiver's name
    QLabel* Label2 = nullptr;    ///< what is wrong with the caregiver's discipline
    QLabel* LblHours = nullptr;
    BoundSource DBassign;

    /// Picks a caregiver; the id, or kCancelled.
    std::function<std::string()> Pick;
    /// Looks for a caregiver who fits and is free; the id, or the empty text.
    std::function<std::string(const SuggestionRequest&)> Suggest;
    /// Picks an authorization to copy from; 0 for none.
    std::function<long()> PickSource;
    /// What a save asks.
    AssignmentAsks Asks;
    /// Shows a printout.
    std::function<void(const Document&)> Preview;

  private:
    void MakeToolbar();
    QWidget* MakeInformation();
    QWidget* MakeTree();
    QWidget* MakeBoxes();
    void MakeDays(FieldForm* form);
    void MakeTimes(FieldForm* form);
    void MakeCaregiver(FieldForm* form);
    void Connect();
    void ShowInformation();

    /// Opens the rows again and shows the one of that sequence, else the first.
    void Load(long sequence);
    void ShowRow();
    void ShowDay(int day);
    void ShowCreation();
    void FollowRow();
    void ShowCaregiver(const CaregiverCheck& caregiver);
    void SetButtons();
    bool IsWriting() const { return DBassign.IsEditing() || DBassign.IsAdding(); }
    /// The boxes that are bound to no field put the row in edit like the others.
    void BeginEdit();
    AssignmentEntry Entry() const;

    void DayClicked(int day);
    /// Hours from the times, or the end from the hours, whichever is typed.
    void DeriveTimes();
    /// False for a start off the quarter hour, which is told.
    bool CheckStart();
    void CheckHowOften();
    void LimitCreation();
    /// False where the caregiver who was entered is not accepted; the box is empty then.
    bool CheckCaregiverBox();
    /// True where every box holds what can be stored; goes to the first that doesn't.
    bool CheckBoxes();
    void FocusFirstFault();

    void NewKey();
    bool SaveKey();
    void DiscardKey();
    void DeleteKey();
    void Move(ListMove move);
    void CopyKey();
    void HistoryKey();
    void PickKey();
    void SuggestKey();
    void TakeCaregiver(const std::string& id);

    Session& session_;
    AssignmentParent parentRow_;
    std::string checkedId_;  ///< the caregiver that was looked at last
    double warnedOften_ = 1;
    bool showing_ = false;  ///< a row is being shown: nothing is the operator's change
    int shownDay_ = -1;     ///< the row's, as it was shown
    bool mayAdd_ = false;
    bool mayEdit_ = false;
    bool mayDelete_ = false;
    KeySteps keys_;
};

}  // namespace kv
