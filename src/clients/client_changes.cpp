#include "clients/client_changes.h"

#include "base/format.h"
#include "base/text.h"

namespace kv {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

std::string ChangeLine(const ScreenControl& control, const Value& old) {
    const std::string change = " to " + control.value.ToText() + std::string(kLineEnd);
    if (old.IsNull()) {
        return Trim(control.dataField) + change;
    }
    const std::string caption = Trim(control.caption);
    return (caption.empty() ? Trim(control.dataField) + ": " : caption + " ") + old.ToText() + change;
}

std::string NamedChange(std::string_view words, const std::string& old, const std::string& now) {
    return std::string(words) + old + " to " + now + std::string(kLineEnd);
}

}  // namespace

void AppendClientHistory(Session& session, const std::string& id, const std::string& reason) {
    const Date now = session.clock.Now();
    Recordset& changes = session.rsChanges;
    changes.AddNew();
    changes.Set("Type", "CLI");
    changes.Set("Area", id);
    changes.Set("Date", now.DayOnly());
    changes.Set("Time", FormatDate(now, "HH:MM:SS AM/PM"));
    changes.Set("User", session.User);
    changes.Set("Status", "Edit");
    changes.Set("reason", reason);
    changes.Update();
}

bool GroupDiffers(const ScreenControls& controls, const Recordset& row) {
    return controls.Changed("cmbGroup") && controls.Text("cmbGroup") != row.Text("Grouping");
}

bool HolidayDiffers(const ScreenControls& controls, const Recordset& row) {
    return controls.Changed("CMBhol") && controls.Text("CMBhol") != row.Text("HOL_COV");
}

bool NotesDiffer(const ScreenControls& controls) {
    return controls.Stored("TXTedit") != controls.Stored("TXTbox");
}

long WriteClientChanges(Session& session, const ScreenControls& controls, const Recordset& row) {
    session.Reply.clear();
    long count = 0;
    for (const ScreenControl* control : ChangedControls(controls, row)) {
        session.Reply += ChangeLine(*control, row.Get(control->dataField));
        ++count;
    }
    if (GroupDiffers(controls, row)) {
        session.Reply += NamedChange("Client Group:", row.Text("Grouping"), controls.Text("cmbGroup"));
        ++count;
    }
    if (HolidayDiffers(controls, row)) {
        // The word stands so in years of history, which is searched by it.
        session.Reply += NamedChange("Holiday Coverate:", row.Text("HOL_COV"), controls.Text("CMBhol"));
        ++count;
    }
    if (NotesDiffer(controls)) {
        session.Reply += controls.Text("TXTedit");
        ++count;
    }
    if (count > 0) {
        AppendClientHistory(session, controls.Text("txtCliId"), session.Reply);
    }
    return count;
}

}  // namespace kv
