#pragma once
#include <QDialog>
#include <vector>

#include "scheduling/schedule_update.h"

class QListWidget;
class QPushButton;

namespace kv {

class DateBox;
class Grid;

/// Carries a changed assignment to the visits that it made.
class FRMupdatesch : public QDialog {
    Q_OBJECT
  public:
    FRMupdatesch(Session& session, ScheduleUpdate update, QWidget* parent = nullptr);

    DateBox* DTEstart = nullptr;
    Grid* FGchg_Sch = nullptr;
    QListWidget* List1 = nullptr;
    QPushButton* CMDprocess = nullptr;
    QPushButton* CMDexit = nullptr;

  private:
    void Load();
    void Process();
    void OpenMenu(const QPoint& at);
    void Hide(int row);
    void ShowResults(const std::vector<std::string>& results);

    Session& session_;
    ScheduleUpdate update_;
    std::vector<ScheduleLine> lines_;
    Date from_;  ///< the day from which they are listed
};

}  // namespace kv
