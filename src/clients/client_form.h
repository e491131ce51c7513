#pragma once
#include <string>
#include <string_view>

#include "clients/screen_controls.h"
#include "datastore/recordset.h"

namespace kv {

/// What the rules of a client's save need of the screen. frmClient implements it over its bound source,
/// kvtool and the tests over plain values: a screen then holds no rule, and a rule needs no window.
class ClientForm {
  public:
    virtual ~ClientForm() = default;

    /// The limited list; its current row is the client shown.
    virtual Recordset& List() = 0;
    /// Every bound control, and the named boxes txtCliId, cmbGroup, CMBhol, TXTdirections, TXTedit and
    /// TXTbox, in the order of the screen, as they stand now.
    virtual ScreenControls Controls() const = 0;
    /// CMBcliStatus: which clients the list is limited to.
    virtual std::string Filter() const = 0;
    /// The notes as the row had them when it was loaded.
    virtual std::string LoadedNotes() const = 0;
    /// Changes what a box holds: TxtFirstnam and TxtLastname, which then count as changed as if typed but
    /// without the box's own name check, and TXTedit, which takes what TXTbox stores.
    virtual void SetText(std::string_view control, const std::string& text) = 0;
    /// Puts the bound source in edit mode, unless it edits or adds.
    virtual void EditRow() = 0;
    /// Copies the bound controls that changed into the row in edit, updates it and returns to view mode
    /// without changed marks. Throws EngineError; the edit then goes on.
    virtual void UpdateRow() = 0;
    /// Cancels an edit or a new row, and restores the controls from the row (TXTbox and TXTedit too).
    virtual void RestoreRow() = 0;
    /// RefreshClientList on the present limits; List() is another recordset afterwards.
    virtual void RefreshClientList() = 0;
};

}  // namespace kv
