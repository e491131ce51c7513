#pragma once
#include <QDialog>
#include <functional>

#include "matching/availability.h"
#include "screens/screen_steps.h"

class QGroupBox;
class QToolButton;

namespace kv {

class DateBox;
class Grid;
class NumberBox;
class QuarterChart;
class TextBox;
class ToolBar;

/// "Display Caregiver's Schedules": the coming days of one caregiver in quarters of an hour, with what stands
/// behind each.
class FRMdisEmp : public QDialog {
    Q_OBJECT
  public:
    /// Starts with a caregiver, a day and a number of days; an empty id starts empty.
    FRMdisEmp(Session& session, const std::string& emp_id, Date from, int days, QWidget* parent = nullptr);

    ToolBar* Toolbar1 = nullptr;
    TextBox* TXTempid = nullptr;
    QToolButton* Command1 = nullptr;
    DateBox* DTending = nullptr;
    NumberBox* TDBNumber1 = nullptr;
    Grid* fgEMP = nullptr;
    Grid* FGcli = nullptr;
    Grid* FGsch = nullptr;
    QuarterChart* FG2 = nullptr;

    /// Picks a caregiver; the id, or kCancelled.
    std::function<std::string()> Pick;
    /// Shows a printout.
    std::function<void(const Document&)> Preview;

  private:
    QWidget* MakeCriteria();
    QWidget* MakePeople();
    void Connect();
    void ShowCaregiver();
    void ClearOthersDays();
    void RedoDisplay();
    void ShowQuarter(int row, int quarter);
    void PickKey();

    Session& session_;
    Availability shown_;
    std::string checkedId_;
    KeySteps keys_;
};

}  // namespace kv
