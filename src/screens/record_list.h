#pragma once
#include <QWidget>
#include <functional>
#include <vector>

#include "clients/list_move.h"
#include "screens/screen_steps.h"
#include "screens/widgets/bound_source.h"
#include "screens/widgets/grid.h"
#include "screens/widgets/tool_bar.h"
#include "session/session.h"

namespace kv {

class FieldForm;

/// What a list of records does by its rules. Each speaks to the operator and answers whether it did
/// something; what is left out is always allowed.
struct RecordRules {
    std::string key;  ///< the field that tells a row from all others
    std::function<GridRow(const Recordset&)> row;
    std::function<bool()> mayAdd;
    std::function<bool(Recordset&)> save;
    std::function<bool(Recordset&)> remove;
    std::function<bool(Recordset&, ListMove)> move;
};

/// A list of records over the boxes of the one that is picked, with the keys first, previous, next, last,
/// new, delete, save and discard. The boxes are put into Form and bound to Source.
class RecordList : public QWidget {
    Q_OBJECT
  public:
    /// `keys` stand at the end of the toolbar; what they do is the owner's (Toolbar's keyPressed).
    RecordList(Session& session, const QString& toolbar, const QString& grid,
               const std::vector<GridColumn>& columns, RecordRules rules, QWidget* parent,
               const std::vector<ToolKey>& keys = {});

    /// Shows a list on its current row.
    void SetRecords(Recordset rows);
    /// Before the row goes out of sight: asks about what was typed and not saved. False where it could not be
    /// saved, and the operator stays.
    bool Leave();

    ToolBar* Toolbar = nullptr;
    Grid* List = nullptr;
    FieldForm* Form = nullptr;
    BoundSource Source;

  signals:
    /// A new row waits for its first entry.
    void rowAdded();
    /// The operator chose the row that is shown: picked it, moved to it or saved it.
    void rowChosen();
    void rowDeleted();

  private:
    /// Something was typed that would be lost with the row.
    bool HasTyped() const;
    void NewKey();
    bool SaveKey();
    void DeleteKey();
    void Move(ListMove move);
    void Pick(int row);
    Value KeyAt(long row) const;
    void FillList();

    Session& session_;
    RecordRules rules_;
    KeySteps keys_;
};

}  // namespace kv
