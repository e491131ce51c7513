#pragma once
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "datastore/catalogue.h"
#include "datastore/value.h"

namespace kv {

enum class RecordsetType { Dynaset, Snapshot };
enum class EditState { None, InProgress, Add };

/// A field as a recordset offers it.
struct FieldInfo {
    std::string name;
    ColumnType type = ColumnType::Text;
    int size = 0;
    bool updatable = false;
};

class RecordsetState;

/// What an edit held before it was written (Recordset::HoldEdit).
struct HeldEdit {
    EditState mode = EditState::None;
    long position = -1;    ///< of the row in edit
    std::size_t rows = 0;  ///< how many the recordset had
    std::vector<std::pair<std::size_t, Value>> fields;
};

/// The rows of a query or table, one of them current. Membership and order are fixed at opening (or Requery),
/// values are live. Rows added through the recordset join it at the end. Failures throw EngineError; the
/// current row stays as it was. Fields are named without regard to case; where a query has a name twice, the
/// first counts. A joined query is read only.
class Recordset {
  public:
    Recordset();  ///< A closed one.
    ~Recordset();
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;
    explicit Recordset(std::unique_ptr<RecordsetState> state);

    bool IsOpen() const { return state_ != nullptr; }
    /// Lets the rows and any lock go; an edit in progress is cancelled. Closing a closed one does nothing.
    void Close();

    /// Behind the last row, or no rows.
    bool Eof() const;
    /// Before the first row, or no rows.
    bool Bof() const;
    /// A move cancels an edit in progress. MoveNext at Eof and MovePrevious at Bof throw 3021, as do moves in
    /// an empty set.
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    /// The number of rows, exact at any time.
    long RecordCount() const;
    /// The current row's place from 0, or -1 without one.
    long AbsolutePosition() const;
    void SetAbsolutePosition(long position);

    /// Moves to the first (next) row that meets the criteria, by a query of the engine. With none NoMatch()
    /// is true and the current row stays.
    void FindFirst(std::string_view criteria);
    void FindNext(std::string_view criteria);
    bool NoMatch() const;

    /// Starts a new row with the columns' defaults. A counter is handed out at once and can be read before
    /// Update.
    void AddNew();
    /// Starts changing the current row and takes its lock. Where another seat holds it the edit starts
    /// without, and Update tries again.
    void Edit();
    /// Writes the row. 3186 at once when another seat holds it, 3197 when another changed it while this edit
    /// had no lock, 3167 when it was deleted, 3022 for a duplicate key, 3020 without Edit or AddNew. After a
    /// failure the edit goes on. An edited row stays current; an added one becomes the last-modified row and
    /// the current row is the one before AddNew.
    void Update();
    void CancelUpdate();
    EditState EditMode() const;
    /// Whether the row in edit is this seat's until the edit ends. Without its lock Update fails with 3186
    /// while the other seat has it.
    bool HoldsRow() const;
    /// The seat that has the current row in edit, as Workspace::SetSeat named it; empty where none is known.
    std::string RowHolder() const;
    /// What the edit in progress has set so far; with nothing in edit, nothing.
    HeldEdit HoldEdit() const;
    /// Takes the edit up again that an Update ended within a transaction which was then rolled back. A row
    /// that was being added takes a new counter. Throws EngineError as Edit and AddNew do.
    void ResumeEdit(const HeldEdit& held);
    /// Deletes the current row; it stays current without values (3167) until a move.
    void Delete();
    /// Moves to the row last added or changed through this recordset.
    void MoveToLastModified();

    /// Runs the query again; the first row becomes current.
    void Requery();
    /// The rows' values are read from the store at the next look. Without it another seat's change is seen a
    /// moment later where a server does not tell of it.
    void Reread();
    /// Another recordset over the same rows with a current row of its own.
    Recordset Clone() const;

    const std::vector<FieldInfo>& Fields() const;
    /// The field's place, or 3265.
    std::size_t FieldIndex(std::string_view name) const;
    bool HasField(std::string_view name) const;
    /// The field's content: of the row being added or changed, else of the current row. 3021 without one,
    /// 3167 when it was deleted meanwhile.
    Value Get(std::string_view name) const { return Get(FieldIndex(name)); }
    Value Get(std::size_t index) const;
    /// Get(...).ToText(): Null becomes the empty text.
    std::string Text(std::string_view name) const { return Get(name).ToText(); }
    /// Writes into the row being added or changed (3020 without). The value is converted to the column's type
    /// (3421); a text longer than the column is refused with 3163.
    void Set(std::string_view name, Value value) { Set(FieldIndex(name), std::move(value)); }
    void Set(std::size_t index, Value value);

  private:
    std::unique_ptr<RecordsetState> state_;
};

}  // namespace kv
