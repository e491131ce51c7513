#include "clients/record_history.h"

#include "base/format.h"

namespace kv {

std::string HistoryHead(const Session& session) {
    return "When: " + FormatDate(session.clock.Now(), "MMM/DD/YY HH:MM AM/PM") + "    Who: " + session.User;
}

void WriteHistory(Session& session, const HistoryEntry& entry) {
    const std::string area = std::to_string(entry.sequence);
    Recordset changes = session.dbMainWork->OpenRecordset(
        Sql("select * from changes where type = {} and area = {}", entry.type, area));
    const Date now = session.clock.Now();
    std::string before;
    if (changes.Eof()) {
        changes.AddNew();
        changes.Set("Type", entry.type);
        changes.Set("Area", area);
    } else {
        before = changes.Text("reason");
        changes.Edit();
    }
    changes.Set("Date", now.DayOnly());
    changes.Set("Time", FormatDate(now, "HH:MM:SS AM/PM"));
    changes.Set("User", session.User);
    changes.Set("Status", entry.status);
    changes.Set("reason", entry.text + before);
    changes.Update();
}

std::string RecordHistoryStatement(const std::string& type, long sequence) {
    return Sql("select * from changes where type = {} and area = {} order by date DESC,time DESC", type,
               std::to_string(sequence));
}

}  // namespace kv
