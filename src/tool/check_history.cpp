#include "tool/check_history.h"

#include <algorithm>
#include <cstring>

#include "billing/authorization_save.h"
#include "clients/client_changes.h"

namespace kv::tool {
namespace {

constexpr const char* kDeleted = "DELETED";

/// The client whose authorization an entry says was deleted.
std::string ClientIn(const std::string& reason) {
    const std::size_t words = reason.find(kDeletedAuthorization);
    if (words == std::string::npos)
        return {};
    const std::size_t begin = words + std::strlen(kDeletedAuthorization);
    return Trim(reason.substr(begin, reason.find_first_of("\r\n", begin) - begin));
}

void KeepLast(ByKey<Date>& days, const std::string& key, const Value& day) {
    if (key.empty() || day.IsNull())
        return;
    const auto [place, added] = days.try_emplace(key, day.ToDate().DayOnly());
    if (!added)
        place->second = std::max(place->second, day.ToDate().DayOnly());
}

std::optional<Date> Found(const ByKey<Date>& days, const std::string& key) {
    const auto found = days.find(key);
    return found == days.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace

bool PurposeHistory::ClientWasDeleted(const std::string& id) {
    const std::optional<Date> deleted = Found(Read().clientDeleted, id);
    const std::optional<Date> changed = Found(Read().clientChanged, id);
    return deleted && (!changed || *changed < *deleted);
}

std::optional<Date> PurposeHistory::AuthorizationDeleted(const std::string& client) {
    return Found(Read().authorizationDeleted, client);
}

std::optional<Date> PurposeHistory::ServiceDaysTyped(const std::string& client) {
    return Found(Read().serviceDaysTyped, client);
}

const PurposeHistory::Known& PurposeHistory::Read() {
    if (known_)
        return *known_;
    known_.emplace();
    for (const char* name : {"kestrava", "archive"})
        if (databases_.HasWhole(name, "changes")) {
            ReadClients(databases_.At(name), *known_);
            ReadAuthorizations(databases_.At(name), *known_);
            ReadTyped(databases_.At(name), *known_);
        }
    return *known_;
}

void PurposeHistory::ReadClients(Database& database, Known& known) const {
    Recordset rows = database.OpenRecordset(
        "select Area,Status,max([Date]) as last_day from changes where Type = 'CLI' group by Area,Status",
        RecordsetType::Snapshot);
    for (; !rows.Eof(); rows.MoveNext())
        KeepLast(EqualsNoCase(rows.Text("Status"), kDeleted) ? known.clientDeleted : known.clientChanged,
                 rows.Text("Area"), rows.Get("last_day"));
}

void PurposeHistory::ReadAuthorizations(Database& database, Known& known) const {
    Recordset rows = database.OpenRecordset(
        Sql("select Area,[Date],reason from changes where Type = 'AUT' and Status = {}", kDeleted),
        RecordsetType::Snapshot);
    for (; !rows.Eof(); rows.MoveNext()) {
        known.authorizations.insert(rows.Text("Area"));
        KeepLast(known.authorizationDeleted, ClientIn(rows.Text("reason")), rows.Get("Date"));
    }
}

void PurposeHistory::ReadTyped(Database& database, Known& known) const {
    const auto like = [](const char* words) { return "reason like '*" + std::string(words) + "*'"; };
    Recordset rows = database.OpenRecordset(
        Sql("select Area,[Date] from changes where Type = 'CLI' and Status = 'Edit' and ({})",
            Raw{like(kStartOfCare) + " or " + like(kEndOfCare) + " or " + like("STARTSERVC to ") + " or " +
                like("CASEEXPDAT to ")}),
        RecordsetType::Snapshot);
    for (; !rows.Eof(); rows.MoveNext())
        KeepLast(known.serviceDaysTyped, rows.Text("Area"), rows.Get("Date"));
}

}  // namespace kv::tool
