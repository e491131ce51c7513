#include "clients/change_history.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"

namespace kv {

namespace {

constexpr std::size_t kCodeLength = 3;
constexpr const char* kLatestFirst = " order by Date DESC, time DESC";

// The column is text, as other modules write it too; what is no time is shown as it stands.
std::string TimeText(const std::string& time, std::string_view pattern) {
    const std::optional<Date> moment = ParseDate(time);
    return moment ? FormatDate(*moment, pattern) : time;
}

std::string Searchable(const std::string& reason) {
    std::string line = ReplaceAll(reason, "\r\n", "~~");
    line = ReplaceAll(line, "\n", "~~");
    return Upper(ReplaceAll(line, "\r", "~~"));
}

}  // namespace

const std::vector<std::string_view>& ChangeAreas() {
    static const std::vector<std::string_view> areas = {
        "",
        "CLI - Client",
        "EMP - Caregiver",
        "LOG - Event",
        "SCH - Schedule",
        "PAY - Payroll",
        "BIL - Billing",
        "AUT - Authorization",
        "ASN - Assignment",
        "OPN - Open Calls",
    };
    return areas;
}

std::string AreaCode(std::string_view label) {
    return Left(label, kCodeLength);
}

std::string ChangeSearchStatement(const ChangeCriteria& criteria) {
    std::string statement = "select * from changes where status <> '' ";
    if (!Trim(criteria.user).empty()) {
        statement += Sql(" and user = {}", criteria.user);
    }
    if (!criteria.area.empty()) {
        statement += Sql(" and type = {}", AreaCode(criteria.area));
        if (!Trim(criteria.id).empty()) {
            statement += Sql(" and area = {}", criteria.id);
        }
    }
    if (criteria.from && criteria.to) {
        statement +=
            Sql(" and [Date] >= {} and [Date] <= {}", criteria.from->DayNumber(), criteria.to->DayNumber());
    } else if (criteria.from) {
        statement += Sql(" and [Date] = {}", criteria.from->DayNumber());
    }
    if (!criteria.time.empty()) {
        statement += Sql(" and [time] >= {}", criteria.time);
    }
    return statement + kLatestFirst;
}

std::string DeletedStatement(std::string_view area) {
    return Sql("select * from changes where type = {} and STATUS = 'DELETED' ORDER BY DATE DESC,time DESC",
               AreaCode(area));
}

std::string ClientHistoryStatement(const std::string& id) {
    return Sql(
        "select * from changes where type = 'CLI' and area = {} and Status <> 'Bill Rate' "
        "order by date DESC,time DESC",
        id);
}

std::vector<HistoryRow> LoadHistory(Database& database, const std::string& statement) {
    std::vector<HistoryRow> history;
    for (Recordset rows = database.OpenRecordset(statement, RecordsetType::Snapshot); !rows.Eof();
         rows.MoveNext()) {
        HistoryRow row;
        if (const Value date = rows.Get("Date"); !date.IsNull()) {
            row.day = date.ToDate();
            row.date = FormatDate(*row.day, "MMM/DD/YYYY");
        }
        row.time = TimeText(rows.Text("Time"), "HH:MM:SS AM/PM");
        row.area = rows.Text("Area");
        row.user = rows.Text("User");
        row.status = rows.Text("Status");
        row.reason = rows.Text("reason");
        history.push_back(std::move(row));
    }
    return history;
}

bool FindInReasons(Progress& progress, HistoryList& list, const std::string& text, bool behindCurrent) {
    const std::string wanted = Upper(text);
    list.at += behindCurrent ? 1 : 0;
    for (; list.at < list.rows.size(); ++list.at) {
        const bool goOn = progress.Yield();
        if (Searchable(list.rows[list.at].reason).find(wanted) != std::string::npos) {
            return true;
        }
        if (!goOn) {
            break;
        }
    }
    list.at = 0;
    return false;
}

Document HistoryPrint(const std::vector<HistoryRow>& rows, Date now) {
    constexpr double kReasonIndent = 0.4;
    constexpr double kHeadingPoints = 14;
    Document document("Edit History Print");
    document.style = {"Courier New", 10};
    TextStyle heading;
    heading.points = kHeadingPoints;
    heading.bold = true;
    document.Line("Edit History Print", heading);
    document.Line("Run Date: " + FormatDate(now, "MMM/DD/YYYY"));
    document.Line("Run Time: " + FormatDate(now, "HH:NN AM/PM"));
    for (const HistoryRow& row : rows) {
        const std::string day = row.day ? FormatDate(*row.day, "MMM/DD/YY") : std::string();
        Paragraph& line = document.Line(day + " = " + row.area + "  " + TimeText(row.time, "HH:MM AM/PM") +
                                        "  " + row.user);
        line.spaceBefore = 0.1;
        line.keepWithNext = true;
        // A reason of several lines ends in a line end, which would print as an empty line.
        std::string reason = ReplaceAll(row.reason, "\r\n", "\n");
        while (!reason.empty() && reason.back() == '\n') {
            reason.pop_back();
        }
        document.Line(reason).indent = kReasonIndent;
    }
    return document;
}

}  // namespace kv
