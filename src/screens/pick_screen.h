#pragma once
#include <QDialog>
#include <functional>
#include <string>
#include <vector>

#include "clients/pick_query.h"
#include "screens/screen_steps.h"
#include "screens/widgets/grid.h"
#include "session/session.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace kv {

class ToolBar;

/// What makes one pick screen different from another.
struct PickScreenTexts {
    QString name;
    QString title;
    QString exitTip;
    std::vector<std::string> fields;
    std::vector<std::string> statuses;
    std::string status;               ///< chosen at first
    std::vector<std::string> groups;  ///< behind "ALL"
    bool emptyTextResetsGroup = false;
    std::vector<GridColumn> columns;
    std::function<QString(const std::string& field)> label;
    std::function<PickRows(const PickQuery&)> search;
};

/// Searches one table while the text is typed, and answers the id of the row that is taken.
class PickScreen : public QDialog {
    Q_OBJECT
  public:
    PickScreen(Session& session, PickScreenTexts texts, QWidget* parent);
    /// The id of the row taken, or kCancelled.
    std::string Pick();

    ToolBar* Toolbar3 = nullptr;
    QComboBox* Combo1 = nullptr;  ///< which field
    QComboBox* Combo2 = nullptr;  ///< which status
    QComboBox* cmbDISGROUP = nullptr;
    QLabel* LBLtext = nullptr;
    QLineEdit* Text1 = nullptr;
    Grid* FGfind = nullptr;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void MakeToolbar();
    QWidget* MakeCriteria();
    void Search();
    void Take();
    void MoveTo(int row);

    Session& session_;
    PickScreenTexts texts_;
    PickRows rows_;
    std::string picked_ = kCancelled;
    KeySteps keys_;
};

/// frmCLIFIND: the id of the client that the operator picks out of all, or "CANCEL"; also in
/// Session::PickedClient.
std::string PickClient(Session& session, QWidget* parent);
/// frmEMPFIND: the id of the caregiver that the operator picks, or "CANCEL"; also in Session::PickedEmployee.
std::string PickEmployee(Session& session, QWidget* parent);

}  // namespace kv
