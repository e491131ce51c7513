#pragma once
#include <QDialog>
#include <functional>
#include <optional>
#include <string>

#include "clients/people_list.h"
#include "session/session.h"

namespace kv {

class Grid;
class RecordList;
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

    ToolBar* Toolbar1 = nullptr;
    Grid* FGinfo = nullptr;
    RecordList* dbInfo = nullptr;

    /// Shows a printout.
    std::function<void(const Document&)> Preview;

  private:
    void MakeBoxes();
    void Open(const std::string& name);

    Session& session_;
    PeopleTable table_;
    bool picked_ = false;
};

}  // namespace kv
