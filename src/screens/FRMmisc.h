#pragma once
#include <QDialog>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "clients/people_list.h"
#include "screens/widgets/bound_source.h"
#include "session/session.h"

namespace kv {

class FieldForm;
class Grid;
class MemoBox;
class ToolBar;

/// "Doctors" or "Case Managers": the list of them and the one that is picked, to be changed.
class FRMmisc : public QDialog {
    Q_OBJECT
  public:
    /// Opens on the person of that name where there is one.
    FRMmisc(Session& session, PeopleTable table, const std::string& name, QWidget* parent = nullptr);

    /// The name of the person on the screen, unless the operator only looked: the name handed in was nobody's
    /// and no row was picked. As long as a client keeps it.
    std::optional<std::string> PickedName() const;
    /// Asks about what was typed and not saved.
    void reject() override;

    ToolBar* Toolbar1;
    Grid* FGinfo;
    BoundSource dbInfo;

  private:
    using Step = std::function<void()>;

    void MakeToolbar();
    QWidget* MakeBoxes();
    void Open(const std::string& name);
    void Handle(const Step& step);
    /// Before another row: asks about what was typed. Throws where it can't be saved, which keeps the
    /// operator on the row.
    void LeaveRow();
    void NewKey();
    void SaveKey();
    void DeleteKey();
    void Move(ListMove move);
    void FillGrid();

    Session& session_;
    PeopleTable table_;
    std::map<QString, Step> keys_;
    bool picked_ = false;
};

}  // namespace kv
