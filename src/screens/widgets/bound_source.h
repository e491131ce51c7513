#pragma once
#include <QObject>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "datastore/engine_error.h"
#include "datastore/recordset.h"
#include "screens/widgets/bound_control.h"

namespace kv {

enum class BoundMode { NoRow, View, Edit, Add };

/// Ties controls to the fields of the current row of a recordset; the only code that copies values between
/// the two.
///
/// Showing a row loads the controls and clears their marks. The operator's first change puts the row in edit
/// (Recordset::Edit, which takes its lock). WriteRow copies what changed into the row, Update writes it. A
/// failure throws EngineError to the caller and leaves controls and edit as they are; the caller's handler
/// reports it and calls Restore where the rules say so.
class BoundSource : public QObject {
    Q_OBJECT
  public:
    using ErrorReport = std::function<void(const EngineError&)>;
    /// `report` is told when the operator's change can't put the row in edit: that happens in an event, where
    /// nobody could catch. The controls then show the row again.
    explicit BoundSource(ErrorReport report, QObject* parent = nullptr);
    ~BoundSource() override;

    /// Ties a control, which lives as long as the source or unties itself by dying. A text box without a
    /// length of its own takes the field's size. The field must be one of the recordset's when there is one
    /// (3265).
    void Bind(BoundControl& control, const std::string& field);
    std::vector<BoundControl*> Controls() const;
    /// The control of a field, without regard to case, or nullptr.
    BoundControl* ControlOf(std::string_view field) const;

    /// Takes a recordset over and shows its current row.
    void SetRecordset(Recordset rows);
    /// For routines that read and write fields without a control. After a move of theirs call ShowRow.
    Recordset& Rows() { return rows_; }
    const Recordset& Rows() const { return rows_; }
    /// Closes the recordset, empties the controls.
    void Close();

    BoundMode Mode() const;
    /// A row to show: an existing one or one being added.
    bool HasRow() const;
    bool IsAdding() const { return Mode() == BoundMode::Add; }
    bool IsEditing() const { return Mode() == BoundMode::Edit; }
    /// The current row's place from 0, or -1; and the number of rows.
    long Position() const;
    long Count() const;

    /// Row to controls, marks cleared. Without a row, and for one that another seat deleted, the controls are
    /// emptied.
    void ShowRow();
    /// Puts the row in edit where it is not yet. 3021 without one.
    void BeginEdit();
    /// Starts a new row and shows its defaults.
    void AddRow();
    /// The controls whose mark is set and whose content differs from their field (DiffersFromColumn), but
    /// for those whose tag is `exceptTag`.
    std::vector<BoundControl*> ChangedControls(const QString& exceptTag = {}) const;
    /// Controls that changed to their fields of the row in edit (begun here where it is not). An emptied box
    /// or mask gives the empty text in a text column and Null in others. A box at fault stops it with 3421
    /// and the box's own words before anything is copied.
    void WriteRow();
    /// WriteRow, then the row to the store; an added row becomes the current one. The row is shown as it is
    /// stored. With nothing in edit and nothing changed it does nothing.
    void Update();
    /// Cancels the edit or the new row and shows the current row again.
    void Restore();
    /// Deletes the current row and shows the next one, behind the last the one before.
    void DeleteRow();

    /// Moves cancel an edit and show the row. MoveNext on the last row and MovePrevious on the first stay
    /// there and answer false, as do moves in an empty list.
    bool MoveFirst();
    bool MoveLast();
    bool MoveNext();
    bool MovePrevious();
    bool MoveTo(long position);
    /// Moves to the first row that meets the criteria and shows it; answers false and stays where none does.
    bool FindFirst(std::string_view criteria);
    /// Runs the query again and shows the first row.
    void Requery();

  signals:
    /// Another row, or the same one afresh, is shown.
    void repositioned();
    void modeChanged(kv::BoundMode mode);

  private:
    struct Binding {
        QPointer<QObject> alive;
        BoundControl* control;
        std::string field;
    };
    void OnChanged();
    void LimitLength(const Binding& binding) const;
    bool Differs(const Binding& binding) const;
    /// The current row's values in the order of the bindings; Nulls without a row. Notes whether the row is
    /// gone.
    std::vector<Value> RowValues();
    void NoteMode();

    ErrorReport report_;
    Recordset rows_;
    std::vector<Binding> bindings_;
    BoundMode shownMode_ = BoundMode::NoRow;
    bool gone_ = false;  // the current row was deleted by another seat
};

}  // namespace kv
