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
/// Showing a row loads the controls and clears their marks. The operator's first change takes the row for
/// edit: it is locked and read again, and the boxes that the operator has not touched follow what other seats
/// wrote meanwhile, so that a save writes nothing but what was changed here. WriteRow copies what changed
/// into the row, Update writes it. A failure throws EngineError to the caller and leaves controls and edit as
/// they are; the caller's handler reports it and calls Restore where the rules say so. What Restore takes off
/// the screen is kept until the next save, for BringBack.
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
    /// Takes the row for edit where it is not yet. 3021 without one, 3167 for one that is gone, 3186 with the
    /// other seat's name where that seat has it in edit.
    void BeginEdit();
    /// Reads the row again without taking it; untouched boxes follow. True where another seat has changed it
    /// since it was shown, or it is gone.
    bool FollowRow();
    /// Starts a new row and shows its defaults.
    void AddRow();
    /// The controls whose mark is set and whose content differs from their field as it was shown or last read
    /// (DiffersFromColumn), but for those whose tag is `exceptTag`.
    std::vector<BoundControl*> ChangedControls(const QString& exceptTag = {}) const;
    /// Controls that changed to their fields of the row in edit (begun here where it is not). An emptied box
    /// or mask gives the empty text in a text column and Null in others. A box at fault stops it with 3421
    /// and the box's own words before anything is copied.
    void WriteRow();
    /// WriteRow, then the row to the store; an added row becomes the current one. The row is shown as it is
    /// stored. With nothing in edit and nothing changed it does nothing.
    void Update();
    /// Cancels the edit or the new row and shows the current row again. What was typed is set aside.
    void Restore();
    /// A control of the same row that is bound to no field: what is typed in it is set aside and brought back
    /// with the rest.
    void Accompany(BoundControl& control) { companions_.push_back({control.Notifier(), &control, {}}); }
    /// A field that the screen shows by other means than a bound control: what another seat writes there is
    /// noticed and told under the name as for a bound one. The screen shows it again on rowFollowed.
    void Watch(const std::string& field, const QString& name) { watched_.push_back({field, name, {}}); }
    /// What the operator knows a field by: the caption of its control, or the name it is watched under.
    QString NameOf(std::string_view field) const;
    /// Something was set aside that belongs to the row that is shown.
    bool CanBringBack() const;
    /// Enters what was set aside again. Nothing happens where there is nothing.
    void BringBack();
    /// The field that tells a row from all others, by which what was set aside finds its row in another
    /// recordset too. Without one it is dropped with the recordset.
    void SetKeyField(const std::string& field) { keyField_ = field; }
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
    /// Boxes took what another seat had written since the row was shown: the fields of those boxes, and those
    /// that are watched.
    void rowFollowed(const std::vector<std::string>& fields);
    /// Restore has set something aside for BringBack.
    void typedSetAside();

  private:
    struct Binding {
        QPointer<QObject> alive;
        BoundControl* control;
        std::string field;
        Value shown;  ///< the field as it was shown, or read again for the edit
    };
    struct Watched {
        std::string field;
        QString name;
        Value shown;
    };
    struct SetAside {
        QPointer<QObject> alive;
        BoundControl* control;
        Value value;
    };
    void OnChanged();
    /// Untouched boxes take the row as it is now; those of the fields that changed.
    std::vector<std::string> Follow();
    std::vector<SetAside> Typed() const;
    void KeepTyped(std::vector<SetAside> typed);
    void LimitLength(const Binding& binding) const;
    bool Differs(const Binding& binding) const;
    /// The current row's values in the order of the bindings, then of the watched fields; Nulls without a
    /// row. Notes the row's key and whether the row is gone.
    std::vector<Value> RowValues();
    void NoteMode();

    ErrorReport report_;
    Recordset rows_;
    std::vector<Binding> bindings_;
    std::vector<Watched> watched_;
    BoundMode shownMode_ = BoundMode::NoRow;
    bool gone_ = false;  // the current row was deleted by another seat
    std::string keyField_;
    Value shownKey_;  // of the row that is shown, also after another seat deleted it; Null for a new one
    std::vector<SetAside> companions_;
    std::vector<SetAside> aside_;
    /// What the last Update wrote: set aside where its transaction is rolled back, which Restore tells.
    std::vector<SetAside> written_;
    Value asideKey_;           // the row that it was typed for; Null for a new one
    long asidePosition_ = -1;  // the same, where no field tells rows apart
};

}  // namespace kv
