#pragma once
#include <QDialog>
#include <functional>

#include "clients/change_history.h"
#include "screens/screen_steps.h"
#include "session/session.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace kv {

class DateBox;
class HistoryView;
class PlainCombo;
class TextBox;
class TimeBox;
class ToolBar;

/// "View History": searches, shows and prints the changes of the whole system.
class FRMedit : public QDialog {
    Q_OBJECT
  public:
    explicit FRMedit(Session& session, QWidget* parent = nullptr);
    void reject() override;
    /// Shows one record's history: what its id is called, the family ("AUT"), the id, and the statement.
    void ShowRecord(const QString& caption, const std::string& area, const std::string& id,
                    const std::string& statement);

    ToolBar* Toolbar1 = nullptr;
    QRadioButton* OPTtime[2] = {};  ///< 0 the current file, 1 the archived one
    TextBox* TXTuser = nullptr;
    PlainCombo* TXTarea = nullptr;
    TextBox* txtId = nullptr;
    DateBox* TXTStartdate = nullptr;
    DateBox* TXTEndDate = nullptr;
    TimeBox* TDBstart = nullptr;
    QPushButton* CMDlook = nullptr;
    QLineEdit* TXTfind = nullptr;
    QPushButton* CMDfind = nullptr;
    QLabel* LBLmessage = nullptr;
    HistoryView* View = nullptr;

    /// Shows a printout.
    std::function<void(const Document&)> Preview;

  private:
    void MakeToolbar();
    QWidget* MakeCriteria();
    QWidget* MakeFind();
    void OpenFile(bool archived);
    ChangeCriteria Criteria() const;
    void Show(const std::string& statement);
    void LookKey();
    void UserKey();
    void DeleteKey();
    void MoveTo(long row, const char* beyond);
    void FindKey();
    void SetSearching(bool searching);

    Session& session_;
    DatabasePtr dbEdits_;
    HistoryList list_;
    bool searching_ = false;
    KeySteps keys_;
};

}  // namespace kv
