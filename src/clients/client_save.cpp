#include "clients/client_save.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "clients/client_changes.h"
#include "clients/client_list.h"
#include "clients/lookups.h"
#include "clients/notes_text.h"
#include "clients/record_keys.h"
#include "session/trans.h"

namespace kv {

namespace {

struct ListCheck {
    std::string_view control;
    LookupSource source;
    std::string_view whenEmpty;  ///< "" where the box may be empty
};

constexpr std::array kListChecks = {
    ListCheck{"TDBCombo3", LookupSource::dbProvidersSex,
              "You must fill in 'Providers Gender' field in the Required section."},
    ListCheck{"TDBCombo1", LookupSource::dbLanguage,
              "You must fill in 'Language' field in the Required section."},
    ListCheck{"TDBCombo20", LookupSource::dbOrder_Discipline,
              "You must fill in 'Ordered Discipline' field in the Required section."},
    ListCheck{"TDBCombo29", LookupSource::DBDistrict, ""},
    ListCheck{"TDBGender", LookupSource::dbSex, ""},
    ListCheck{"TDBCombo4", LookupSource::dbManager, ""},
    ListCheck{"TDBCombo5", LookupSource::dbFsl, ""},
    ListCheck{"TDBCombo8", LookupSource::dbDiet, ""},
};

bool IsInList(Session& session, LookupSource source, const std::string& text) {
    Recordset rows = session.dbMainCode->OpenRecordset(LookupStatement(source));
    try {
        rows.FindFirst(Sql("Description = {}", text));
        return !rows.NoMatch();
    } catch (const EngineError& error) {
        // An apostrophe breaks the search, which is told; whether the entry is in the list still decides.
        ReportEngineError(session, error);
    }
    for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
        if (EqualsNoCase(rows.Text("Description"), text)) {
            return true;
        }
    }
    return false;
}

void CheckNames(const ScreenControls& controls, std::vector<std::string>& faults) {
    // Ids from 99900 on are templates and other patterns, which bear no person's name.
    if (controls.Text("txtCliId").starts_with("999")) {
        return;
    }
    if (Trim(controls.Text("TxtFirstnam")).empty()) {
        faults.emplace_back("You must fill in the first name field.");
    }
    if (Trim(controls.Text("TxtLastname")).empty()) {
        faults.emplace_back("You must fill in the last name field.");
    }
}

void CheckLists(Session& session, const ScreenControls& controls, std::vector<std::string>& faults) {
    for (const ListCheck& check : kListChecks) {
        const ScreenControl* combo = controls.Find(check.control);
        const std::string text = combo == nullptr ? std::string() : combo->text;
        if (Trim(text).empty()) {
            if (!check.whenEmpty.empty()) {
                faults.emplace_back(check.whenEmpty);
            }
        } else if (!IsInList(session, check.source, text)) {
            faults.push_back("The '" + combo->caption + "' you entered is not in the drop down list.");
        }
    }
}

bool NameChanged(const ScreenControls& controls) {
    return controls.Changed("TxtLastname") || controls.Changed("TxtFirstnam");
}

// What assignments and schedules hold of the client.

void CopyName(Session& session, const ScreenControls& controls, const std::string& id) {
    const std::string name = Trim(controls.Text("TxtLastname")) + ", " + Trim(controls.Text("TxtFirstnam"));
    session.dbMainWork->Execute(Sql("update assign set cli_name = {} where client = {}", name, id));
    session.dbMainWork->Execute(Sql("update sch_day set cli_name = {} where client = {}", name, id));
}

void CopyGroup(Session& session, const ScreenControls& controls, const std::string& id) {
    session.dbMainWork->Execute(
        Sql("update sch_day set cli_group = {} where client = {}", Trim(controls.Text("cmbGroup")), id));
}

void CopyPriority(Session& session, const ScreenControls& controls, const std::string& id) {
    session.dbMainWork->Execute(
        Sql("update sch_day set DISASTER_CODE = {} where client = {}", controls.Stored("TDBCombo25"), id));
}

/// Cancelled visits keep the manager they had.
void CopyManager(Session& session, const ScreenControls& controls, const std::string& id) {
    session.dbMainWork->Execute(Sql("update sch_day set Manager = {} where client = {} and sch_code <> 'C'",
                                    Trim(controls.Stored("TDBCombo4")), id));
}

void DeletePhone(Session& session, const std::string& id, const std::string& phone) {
    session.dbMainCode->Execute(Sql("Delete from hkeylonglat where cltid = {} and phonenum = {}", id, phone));
}

/// Replaces the client's main phone in the index by which the telephony system tells who calls.
void IndexPhone(Session& session, const ScreenControls& controls, const Recordset& row,
                const std::string& id) {
    DeletePhone(session, id, row.Text("PHONE"));
    const ScreenControl* telephony = controls.Find("Check2");
    const std::string phone = DigitsOf(controls.Stored("TxtPhone"));
    if (telephony == nullptr || !telephony->value.IsTrue() || phone.empty()) {
        return;
    }
    DeletePhone(session, id, phone);
    Recordset index =
        session.dbMainCode->OpenRecordset(Sql("select * from hkeylonglat where cltid = {}", id));
    index.AddNew();
    index.Set("branchid", session.VENDOR);
    index.Set("CLTid", id);
    index.Set("phonenum", phone);
    index.Set("addr", controls.Text("txtStreet"));
    index.Set("Zip", controls.Text("TXTzip"));
    index.Set("Status", row.Get("casestatcd"));
    index.Update();
}

/// The notes as shown become the reference, and so count as unchanged.
void KeepNotes(ClientForm& form, const ScreenControls& controls) {
    form.SetText("TXTedit", controls.Stored("TXTbox"));
}

/// The row with its line of history: no change is told of that was not stored.
void WriteChangedRow(Session& session, ClientForm& form, const ScreenControls& controls) {
    Transaction step = session.dbMainWork->BeginTransaction();
    WriteClientChanges(session, controls, form.List());
    StampClientRow(session, form);
    step.Commit();
}

void RunSave(Session& session, ClientForm& form) {
    const ScreenControls controls = form.Controls();
    const std::string id = controls.Text("txtCliId");
    const bool nameChanged = NameChanged(controls);
    IndexPhone(session, controls, form.List(), id);
    if (nameChanged) {
        CopyName(session, controls, id);
    }
    CopyGroup(session, controls, id);
    CopyPriority(session, controls, id);
    CopyManager(session, controls, id);
    WriteChangedRow(session, form, controls);
    KeepNotes(form, controls);
    if (nameChanged) {
        form.RefreshClientList();  // the client's place in the order of names may have moved
    }
    FindInList(form.List(), id);
    NoteOnTheRoad(session, "E", "C", id);
}

/// Lighter than the key's save on purpose: the phone index, the schedule's manager and the list wait for the
/// next one.
void RunPromptedSave(Session& session, ClientForm& form, const ScreenControls& controls) {
    const std::string id = controls.Text("txtCliId");
    const bool groupDiffers = GroupDiffers(controls, form.List());
    if (NameChanged(controls) && form.List().EditMode() != EditState::Add) {
        CopyName(session, controls, id);
    }
    if (groupDiffers) {
        CopyGroup(session, controls, id);
    }
    if (controls.Changed("TDBCombo25")) {
        CopyPriority(session, controls, id);
    }
    WriteChangedRow(session, form, controls);
    KeepNotes(form, controls);
    NoteOnTheRoad(session, "E", "C", id);
}

std::string SaveErrorText(const EngineError& error) {
    const std::string lockedByOther =
        "Another user is viewing this same client, so we can not save.\r\n"
        "Please have the other user exit the client and save again.";
    switch (error.Number()) {
        case engine_error::kLockedByOther:
            return lockedByOther;
        case engine_error::kUpdateCancelled:
            return "We found read only information in the notes, and removed it.\r\n" + lockedByOther;
        default:
            return error.Description();
    }
}

}  // namespace

std::string CleanName(std::string_view name) {
    return ReplaceAll(ReplaceAll(name, ",", ""), "'", "");
}

bool CheckName(Session& session, ClientForm& form, std::string_view control) {
    if (!form.List().IsOpen() || form.List().AbsolutePosition() < 0) {
        return false;
    }
    const std::string name = form.Controls().Text(control);
    const std::string clean = CleanName(name);
    if (clean == name) {
        return false;
    }
    form.SetText(control, clean);
    session.ShowMessageWindow("You may not have a , or a ' in your name");
    return true;
}

std::vector<std::string> RequiredInfoFaults(Session& session, const Recordset& list,
                                            const ScreenControls& controls) {
    std::vector<std::string> faults;
    if (!HasClient(list) || list.Get("istemplate").IsTrue()) {
        return faults;
    }
    CheckNames(controls, faults);
    CheckLists(session, controls, faults);
    return faults;
}

bool CheckRequiredInfo(Session& session, ClientForm& form) {
    const std::vector<std::string> faults = RequiredInfoFaults(session, form.List(), form.Controls());
    if (faults.empty()) {
        return false;
    }
    std::vector<std::string> lines = {"Information you must fix on this client.", " "};
    lines.insert(lines.end(), faults.begin(), faults.end());
    session.dialogs.ShowFaults(lines);
    session.progress.SetHourglass(false);
    return true;
}

long CountClientDifferences(const ScreenControls& controls, const Recordset& row) {
    const std::vector<const ScreenControl*> changed = ChangedControls(controls, row);
    const ScreenControl* directions = controls.Find("TXTdirections");
    const bool directionsCounted = std::find(changed.begin(), changed.end(), directions) != changed.end();
    long count = static_cast<long>(changed.size());
    count += GroupDiffers(controls, row) ? 1 : 0;
    count += HolidayDiffers(controls, row) ? 1 : 0;
    count += directions != nullptr && directions->changed && !directionsCounted &&
                     directions->value.ToText() != row.Text("Directions")
                 ? 1
                 : 0;
    count += NotesDiffer(controls) ? 1 : 0;
    return count;
}

PromptResult PromptToSaveClient(Session& session, ClientForm& form) {
    if (!HasClient(form.List())) {
        return PromptResult::NothingToSave;
    }
    const ScreenControls controls = form.Controls();
    if (CountClientDifferences(controls, form.List()) == 0 || !session.CanSave) {
        return PromptResult::NothingToSave;
    }
    switch (session.dialogs.AskToSave(kUnsavedPrompt)) {
        case SaveAnswer::Stay:
            return PromptResult::Stayed;
        case SaveAnswer::Discard:
            form.RestoreRow();
            return PromptResult::Discarded;
        case SaveAnswer::Save:
            break;
    }
    try {
        RunPromptedSave(session, form, controls);
    } catch (const EngineError&) {
        // What was typed stays on the screen. What the row in edit already took would hide from the next
        // prompt that the screen still differs.
        if (form.List().EditMode() == EditState::InProgress) {
            form.List().CancelUpdate();
        }
        throw;
    }
    return PromptResult::Saved;
}

bool MayLeaveClient(Session& session, ClientForm& form) {
    if (CheckRequiredInfo(session, form)) {
        return false;
    }
    return PromptToSaveClient(session, form) != PromptResult::Stayed;
}

void WriteStamps(const Session& session, Recordset& row) {
    row.Set("Deleted", false);
    row.Set("vendor", session.VENDOR);
    row.Set("status_date", session.clock.Now());
    row.Set("Status", "E");
    row.Set("User_Id", session.User);
}

void StampClientRow(Session& session, ClientForm& form) {
    form.EditRow();
    const ScreenControls controls = form.Controls();
    Recordset& row = form.List();
    WriteStamps(session, row);
    // Notes that nobody has touched here are the row's own, whatever came to them meanwhile.
    if (NotesDiffer(controls)) {
        CheckStamps(form.LoadedNotes(), row.Text("Comments"));
        row.Set("Comments", controls.Stored("TXTbox"));
    }
    form.UpdateRow();
}

bool SaveClient(Session& session, ClientForm& form) {
    try {
        CheckName(session, form, "TxtFirstnam");
        CheckName(session, form, "TxtLastname");
        if (CheckRequiredInfo(session, form)) {
            return false;
        }
        const Hourglass hourglass(session.progress);
        // The row is this seat's before anything is written that follows from it, and boxes that were not
        // touched hold what other seats have written.
        form.EditRow();
        RunSave(session, form);
        return true;
    } catch (const EngineError& error) {
        session.ShowMessageWindow(SaveErrorText(error));
        form.RestoreRow();
        session.progress.SetHourglass(false);
        return false;
    }
}

void DiscardClient(Session& session, ClientForm& form) {
    const Hourglass hourglass(session.progress);
    form.RestoreRow();
}

}  // namespace kv
