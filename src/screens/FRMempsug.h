#pragma once
#include <QDialog>
#include <functional>
#include <memory>
#include <vector>

#include "clients/list_move.h"
#include "matching/caregiver_panel.h"
#include "matching/suggestion.h"
#include "matching/working_copy.h"
#include "printing/document/document.h"
#include "screens/screen_steps.h"

class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace kv {

class CheckBox;
class DateBox;
class QuarterChart;
class FieldForm;
class Grid;
class NumberBox;
class OutlineTree;
class PlainCombo;
class TimeBox;
class ToolBar;

/// "Caregiver Suggestion": who can be sent to a client on a day, at a time, for some hours.
class FRMempsug : public QDialog {
    Q_OBJECT
  public:
    FRMempsug(Session& session, const SuggestionRequest& request, QWidget* parent = nullptr);
    ~FRMempsug() override;
    /// False where its working database is in use, which was told: it is not to be shown then.
    bool IsUsable() const { return working_ != nullptr; }
    /// The caregiver chosen; empty for none.
    const std::string& Chosen() const { return chosen_; }
    /// Runs the search.
    void redo_Search();

    ToolBar* Toolbar1 = nullptr;
    DateBox* DTending = nullptr;
    TimeBox* TXTtime = nullptr;
    NumberBox* NUMhours = nullptr;
    PlainCombo* CMBempgroup = nullptr;
    CheckBox* CHKWillWork = nullptr;
    CheckBox* CHKPotential = nullptr;
    CheckBox* CHKLanguage = nullptr;
    CheckBox* CHKgender = nullptr;
    CheckBox* CHKDiscipline = nullptr;
    CheckBox* CHKtype = nullptr;
    CheckBox* CHKskills = nullptr;
    CheckBox* CHKcritical = nullptr;
    CheckBox* CHKtime = nullptr;
    CheckBox* CHKignore_Times = nullptr;
    QPushButton* Command1 = nullptr;
    QGroupBox* TDBFrame3D5 = nullptr;  ///< the client
    QGroupBox* TDBFrame3D2 = nullptr;  ///< the caregiver
    Grid* FGcli = nullptr;
    Grid* fgEMP = nullptr;
    OutlineTree* TreeView1 = nullptr;
    OutlineTree* TreeView2 = nullptr;
    QLabel* LBLbillrate = nullptr;
    QLabel* LBLbillreason = nullptr;  ///< why it is missing
    QLabel* LBLpayrate = nullptr;
    QLabel* Numgross = nullptr;
    QLabel* LBLweek = nullptr;  ///< her hours this week, and her visits to this client
    QLabel* LBLfree = nullptr;  ///< why the caregiver may be less free than shown
    QLabel* Label1 = nullptr;   ///< the warning that she should not be selected
    QGroupBox* Frame1 = nullptr;
    QPlainTextEdit* Sugtxt = nullptr;
    QLabel* Image1 = nullptr;
    QuarterChart* FG2 = nullptr;
    QLabel* LBLRecordCount = nullptr;
    QPushButton* CMDshowWeek = nullptr;
    QLineEdit* TXTwhy = nullptr;
    QLabel* LBLwhy = nullptr;

    /// Shows a printout.
    std::function<void(const Document&)> Preview;

  private:
    void MakeToolbar();
    QWidget* MakeCriteria();
    void AddOption(CheckBox*& box, const char* name, const char* caption, FieldForm* form);
    QWidget* MakeNotes();
    QWidget* MakeClient();
    QWidget* MakeCaregiver();
    QWidget* MakeResult();
    void Connect();

    void Activate();
    void FillClient();
    void ShowBill();
    SuggestionOptions Options() const;
    void FillSuggestionGrid(int topRow);
    void ShowCaregiverPanel();
    void ShowTrees(const CaregiverPanel& panel);
    void ShowMargin(const CaregiverPanel& panel);
    void ShowReasons(const std::vector<std::string>& reasons);
    void ShowPicture(const std::filesystem::path& file);
    void Move(ListMove move);
    void SelectKey();
    void NodePicked(const std::string& tag);
    void Why();

    Session& session_;
    std::unique_ptr<WorkingCopy> working_;
    SuggestionRequest request_;
    ClientNeeds needs_;
    SuggestionOptions options_;  ///< of the search whose result is shown
    Suggestion found_;
    std::unique_ptr<VisitAmounts> amounts_;
    long burdens_ = 0;
    std::string chosen_;
    KeySteps keys_;
};

}  // namespace kv
