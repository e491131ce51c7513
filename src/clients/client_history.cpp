#include "clients/client_history.h"

#include "base/format.h"
#include "base/numbers.h"

namespace kv {

namespace {

// The column is text, as other modules write it too; what is no time is shown as it stands.
std::string TimeText(const std::string& time) {
    const std::optional<Date> moment = ParseDate(time);
    return moment ? FormatDate(*moment, "HH:MM:SS AM/PM") : time;
}

}  // namespace

std::string ClientHistoryStatement(const std::string& id) {
    return Sql(
        "select * from changes where type = 'CLI' and area = {} and Status <> 'Bill Rate' "
        "order by date DESC,time DESC",
        id);
}

std::vector<HistoryRow> LoadClientHistory(Session& session, const std::string& id) {
    std::vector<HistoryRow> history;
    Recordset rows = session.dbMainWork->OpenRecordset(ClientHistoryStatement(id), RecordsetType::Snapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        const Value date = rows.Get("Date");
        history.push_back({date.IsNull() ? std::string() : FormatDate(date.ToDate(), "MMM/DD/YYYY"),
                           TimeText(rows.Text("Time")), rows.Text("User"), rows.Text("Status"),
                           rows.Text("reason")});
    }
    return history;
}

}  // namespace kv
