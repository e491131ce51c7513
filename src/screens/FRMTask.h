#pragma once
#include <QDialog>
#include <array>
#include <vector>

#include "scheduling/authorization_tasks.h"
#include "session/session.h"

class QCheckBox;
class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace kv {

class Grid;
class ToolBar;

/// "Authorization Tasks Codes": what the caregiver is to do under an authorization, by weekday.
class FRMTask : public QDialog {
    Q_OBJECT
  public:
    FRMTask(Session& session, long authorization, QWidget* parent = nullptr);

    ToolBar* Toolbar1 = nullptr;
    std::vector<QCheckBox*> CHKDay;
    QListWidget* CHKtask = nullptr;
    Grid* FGTasks = nullptr;
    std::array<QPushButton*, 3> CMDdoctor{};  ///< add, remove, edit

  private:
    QWidget* MakeChoice();
    QWidget* MakeTasks();
    void LimitTicks(QListWidgetItem* item);
    void ShowTasks();
    void AddKey();
    template <typename Change>
    void ChangeCurrent(const Change& change);

    Session& session_;
    long authorization_;
    std::vector<LookupItem> codes_;
    std::vector<AuthorizationTask> tasks_;
};

}  // namespace kv
