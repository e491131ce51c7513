#pragma once
#include <QDialog>
#include <functional>

#include "matching/visit_detail.h"
#include "screens/FRMweb.h"

class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace kv {

class Grid;
class OutlineTree;
class PlainCombo;
class ToolBar;

/// "Caregiver and Client Detail": what matters when one caregiver is sent to one client. Only to look at.
class FRMdisdetail : public QDialog {
    Q_OBJECT
  public:
    /// Either id may be empty.
    FRMdisdetail(Session& session, const std::string& client, const std::string& emp_id,
                 QWidget* parent = nullptr);
    ~FRMdisdetail() override;

    ToolBar* Toolbar1 = nullptr;
    Grid* FGcli = nullptr;
    Grid* fgEMP = nullptr;
    OutlineTree* TreeView1 = nullptr;
    OutlineTree* TreeView2 = nullptr;
    QPlainTextEdit* TXTCliNotes = nullptr;
    QPlainTextEdit* TXTEmpNotes = nullptr;
    QLabel* LBLname = nullptr;  ///< whose address the directions begin at
    QLineEdit* TXTaddr = nullptr;
    QLineEdit* TXTcity = nullptr;
    QLineEdit* TXTstate = nullptr;
    QLineEdit* TXTzip = nullptr;
    PlainCombo* CMBwhichMap = nullptr;
    QPushButton* CMDclient = nullptr;
    QPushButton* CMDcaregiver = nullptr;
    QPushButton* CMDdirections = nullptr;

    /// Pick a client or a caregiver; the id, or kCancelled.
    std::function<std::string()> PickTheClient;
    std::function<std::string()> PickTheCaregiver;
    /// Opens the browser.
    std::function<void(WebVisit)> Visit;

  private:
    struct Side {
        Grid*& rows;
        OutlineTree*& tree;
        QPlainTextEdit*& notes;
        const char* names[3];
    };
    QWidget* MakeSide(const QString& title, const PersonDetail& person, const Side& side);
    QWidget* MakeDirections();
    void StartAt(const PersonDetail& person);
    void FindDirections();

    Session& session_;
    PersonDetail client_;
    PersonDetail caregiver_;
};

/// Shows it for a client and a caregiver; "Show_Schedule_Detail".
void ShowScheduleDetail(Session& session, const std::string& client, const std::string& emp_id,
                        QWidget* parent);

}  // namespace kv
