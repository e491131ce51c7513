#include "tool/check_service.h"

#include <algorithm>

#include <fmt/format.h>

#include "billing/authorization_cascade.h"
#include "billing/client_status.h"

namespace kv::tool {
namespace {

constexpr RecordsetType kRead = RecordsetType::Snapshot;

struct KnownClient {
    std::string name;  ///< "Last, First"; empty for one without a name
    std::string status;
    Value starts, ends;
    bool isTemplate = false;

    /// Its status is not worked out from authorizations.
    bool StandsApart() const { return isTemplate || EqualsNoCase(status, "Z"); }
};

KnownClient ReadClient(const Recordset& row) {
    KnownClient client;
    const std::string last = Trim(row.Text("LASTNAME"));
    const std::string first = Trim(row.Text("FIRSTNAM"));
    if (!last.empty() || !first.empty())
        client.name = last + ", " + first;
    client.status = row.Text("CASESTATCD");
    client.starts = row.Get("STARTSERVC");
    client.ends = row.Get("CASEEXPDAT");
    client.isTemplate = row.Get("ISTEMPLATE").IsTrue();
    return client;
}

ByKey<KnownClient> ReadClients(Database& work) {
    ByKey<KnownClient> clients;
    Recordset rows = work.OpenRecordset(
        "select CLIENT,LASTNAME,FIRSTNAM,CASESTATCD,STARTSERVC,CASEEXPDAT,ISTEMPLATE from ClientPR", kRead);
    for (; !rows.Eof(); rows.MoveNext())
        clients.emplace(rows.Text("CLIENT"), ReadClient(rows));
    return clients;
}

bool SameDay(const Value& a, const Value& b) {
    return a.IsNull() || b.IsNull() ? a.IsNull() == b.IsNull() : a.ToDate().DayOnly() == b.ToDate().DayOnly();
}

// Assignments against their authorizations.

/// An assignment beside its authorization.
constexpr const char* kCopies =
    "select assign.sequence, assign.author_seq, assign.CLIENT, assign.cli_name, assign.author_status, "
    "assign.billto, assign.st_date, assign.END_DATE, assign.visit_type, Authorizations.CLIENT as "
    "author_client, Authorizations.status_code, Authorizations.bill_code, Authorizations.from_date, "
    "Authorizations.to_DATE, Authorizations.visit_type as author_type from assign inner join Authorizations "
    "on assign.author_seq = Authorizations.sequence";

WrittenAuthorization AuthorizationIn(const Recordset& row) {
    WrittenAuthorization written;
    written.sequence = static_cast<long>(row.Get("author_seq").ToInteger());
    written.status = row.Text("status_code");
    written.billCode = static_cast<long>(row.Get("bill_code").NumberOr(0));
    written.from = row.Get("from_date").ToDate();
    written.to = row.Get("to_DATE").ToDate();
    written.visitType = row.Text("author_type");
    written.clientName = row.Text("cli_name");
    return written;
}

/// What the rules keep equal; the client's status and name come from other places too.
bool IsKeptEqual(std::string_view column) {
    static constexpr std::string_view kKept[] = {"author_status", "billto", "st_date", "END_DATE",
                                                 "visit_type"};
    return std::find(std::begin(kKept), std::end(kKept), column) != std::end(kKept);
}

/// An older program's bulk change moved ends forward without the assignments. Those of an authorization that
/// is not active make no visits, so that nobody misses one.
bool MayEndEarlier(std::string_view column, const Value& held, const WrittenAuthorization& written) {
    return column == "END_DATE" && !EqualsNoCase(written.status, "A") && !held.IsNull() &&
           held.ToDate() < written.to;
}

bool SameCopy(const Value& held, const Value& wanted) {
    if (wanted.Type() == ValueType::Date)
        return SameDay(held, wanted);
    if (wanted.Type() == ValueType::Text)
        return EqualsNoCase(Trim(held.ToText()), Trim(wanted.ToText()));
    return held.NumberOr(0) == wanted.NumberOr(0);
}

std::string CopyText(const Value& value) {
    return value.Type() == ValueType::Date ? DayWords(value) : value.ToText();
}

/// "author_status A and not C, END_DATE ..."; empty where the assignment holds what it should.
std::string CopyDifferences(const Recordset& row) {
    if (row.Get("from_date").IsNull() || row.Get("to_DATE").IsNull())
        return {};  // nothing to go by
    std::vector<std::string> differences;
    const WrittenAuthorization written = AuthorizationIn(row);
    for (const auto& [column, wanted] : AssignmentCopies(written)) {
        if (!IsKeptEqual(column))
            continue;
        const Value held = row.Get(column);
        if (!SameCopy(held, wanted) && !MayEndEarlier(column, held, written))
            differences.push_back(
                fmt::format("{} \"{}\" and not \"{}\"", column, CopyText(held), CopyText(wanted)));
    }
    return Join(differences, ", ");
}

/// As a save of the authorization brings its assignments up.
std::string RepairCopies(Database& work, const Value& sequence) {
    const Recordset row =
        work.OpenRecordset(Sql("{} where assign.sequence = {}", Raw{kCopies}, sequence), kRead);
    const std::string differences = row.Eof() ? "" : CopyDifferences(row);
    if (differences.empty())
        return {};
    const WrittenAuthorization written = AuthorizationIn(row);
    Recordset assignment = work.OpenRecordset(Sql("select * from assign where sequence = {}", sequence));
    assignment.Edit();
    for (const auto& [column, value] : AssignmentCopies(written))
        assignment.Set(column, value);
    assignment.Update();
    return fmt::format("assignment {} holds now what its authorization {} does; it held {}",
                       sequence.ToText(), written.sequence, differences);
}

Finding OtherClient(const Recordset& row) {
    return {"kestrava",
            fmt::format("assignment {} is of client {}, and its authorization {} of client {}",
                        row.Text("sequence"), row.Text("CLIENT"), row.Text("author_seq"),
                        row.Text("author_client")),
            {}};
}

// Clients against their authorizations.

/// What a client's authorizations make of it, and when the last of them was saved.
struct ComputedService {
    ServiceSpan span;
    Value saved;
};

std::string SpanStatement(const std::string& where = {}) {
    return "select CLIENT,status_code,from_date,to_DATE,status_date from Authorizations" + where +
           " order by CLIENT,status_code,from_date";
}

ByKey<ComputedService> ComputeService(Database& work) {
    ByKey<ComputedService> services;
    for (Recordset row = work.OpenRecordset(SpanStatement(), kRead); !row.Eof(); row.MoveNext()) {
        ComputedService& service = services[row.Text("CLIENT")];
        service.span.Take(row.Text("status_code"), row.Get("from_date"), row.Get("to_DATE"));
        const Value saved = row.Get("status_date");
        if (!saved.IsNull() && (service.saved.IsNull() || service.saved.ToDate() < saved.ToDate()))
            service.saved = saved;
    }
    return services;
}

bool IsSince(const std::optional<Date>& day, const Value& saved) {
    return day && !saved.IsNull() && *day >= saved.ToDate().DayOnly();
}

/// What of a client's service differs.
struct ServiceDifference {
    bool status = false;
    bool days = false;
    bool Any() const { return status || days; }
};

ServiceDifference Compare(const KnownClient& client, const ServiceSpan& span) {
    return {!EqualsNoCase(client.status, span.Letter()),
            !SameDay(client.starts, span.Lowest()) || !SameDay(client.ends, span.Highest())};
}

std::string StatusWords(const KnownClient& client, const ServiceSpan& span, ServiceDifference differs) {
    std::vector<std::string> words;
    if (differs.status)
        words.push_back(fmt::format("casestatcd \"{}\" and not \"{}\"", client.status, span.Letter()));
    if (differs.days && !SameDay(client.starts, span.Lowest()))
        words.push_back(
            fmt::format("startservc {} and not {}", DayWords(client.starts), DayWords(span.Lowest())));
    if (differs.days && !SameDay(client.ends, span.Highest()))
        words.push_back(
            fmt::format("caseexpdat {} and not {}", DayWords(client.ends), DayWords(span.Highest())));
    return Join(words, ", ");
}

/// As a save of an authorization computes the client.
std::string RepairStatus(Database& work, const std::string& id, bool daysToo) {
    Recordset authorizations = work.OpenRecordset(SpanStatement(Sql(" where CLIENT = {}", id)), kRead);
    Recordset row = work.OpenRecordset(Sql("select * from ClientPR where CLIENT = {}", id));
    if (authorizations.Eof() || row.Eof())
        return {};
    row.Edit();
    const ServiceSpan span = ServiceSpan::Of(authorizations);
    const KnownClient client = ReadClient(row);
    ServiceDifference differs = Compare(client, span);
    differs.days &= daysToo;
    if (client.StandsApart() || !differs.Any())
        return {};
    row.Set("casestatcd", span.Letter());
    if (differs.days) {
        row.Set("startservc", span.Lowest());
        row.Set("caseexpdat", span.Highest());
    }
    row.Update();
    return fmt::format("client {} holds now what the authorizations say; it held {}", id,
                       StatusWords(client, span, differs));
}

// Names.

struct NameHolder {
    const char* table;
    const char* thing;
    const char* where;
};
constexpr NameHolder kNameHolders[] = {
    {"assign", "assignment", ""},
    {"sch_day", "visit", "where act_hrs = 0 and pay_override = 0 and bill_override = 0"},
};

std::string RepairName(Database& work, const NameHolder& holder, const std::string& id,
                       const std::string& held) {
    const Recordset row = work.OpenRecordset(
        Sql("select CLIENT,LASTNAME,FIRSTNAM,CASESTATCD,STARTSERVC,CASEEXPDAT,ISTEMPLATE from ClientPR where "
            "CLIENT = {}",
            id),
        kRead);
    const std::string name = row.Eof() ? "" : ReadClient(row).name;
    if (name.empty())
        return {};
    const std::string where = *holder.where == '\0' ? "where" : std::string(holder.where) + " and";
    const long rows = work.Execute(Sql("update {} set cli_name = {} {} CLIENT = {} and cli_name = {}",
                                       Raw{holder.table}, name, Raw{where}, id, held));
    return rows == 0
               ? ""
               : fmt::format("{} of client {} under the client's name now", Counted(rows, holder.thing), id);
}

Findings OtherNamesIn(Database& work, const NameHolder& holder, const ByKey<KnownClient>& clients) {
    Findings found;
    Recordset rows = work.OpenRecordset(
        fmt::format("select CLIENT,cli_name,count(*) as number from {} {} group by CLIENT,cli_name",
                    holder.table, holder.where),
        kRead);
    for (; !rows.Eof(); rows.MoveNext()) {
        const std::string id = rows.Text("CLIENT");
        const std::string held = rows.Text("cli_name");
        const auto client = clients.find(id);
        if (client == clients.end() || client->second.name.empty() || Trim(held).empty() ||
            EqualsNoCase(Trim(held), client->second.name))
            continue;
        found.push_back(
            {"kestrava",
             fmt::format("{} of client {} under another name than the client's",
                         Counted(rows.Get("number").ToInteger(), holder.thing), id),
             [&holder, id, held](Database& database) { return RepairName(database, holder, id, held); }});
    }
    return found;
}

// Visits after an end.

/// `int` cuts the time of day off.
constexpr const char* kAfterAuthorization =
    "select Authorizations.sequence as parent, Authorizations.CLIENT as client, Authorizations.to_DATE as "
    "last_day, count(*) as number from sch_day inner join Authorizations on sch_day.author_seq = "
    "Authorizations.sequence where sch_day.act_hrs = 0 and sch_day.Cancelled = false and "
    "int(sch_day.st_date) > int(Authorizations.to_DATE) group by "
    "Authorizations.sequence,Authorizations.CLIENT,Authorizations.to_DATE order by Authorizations.sequence";
/// Those that the authorization's own line does not count.
constexpr const char* kAfterAssignment =
    "select assign.sequence as parent, assign.CLIENT as client, assign.END_DATE as last_day, count(*) as "
    "number from (sch_day inner join assign on sch_day.assign_seq = assign.sequence) left join "
    "Authorizations on sch_day.author_seq = Authorizations.sequence where sch_day.assign_seq > 0 and "
    "sch_day.act_hrs = 0 and sch_day.Cancelled = false and int(sch_day.st_date) > int(assign.END_DATE) and "
    "(Authorizations.to_DATE is null or int(sch_day.st_date) <= int(Authorizations.to_DATE)) group by "
    "assign.sequence,assign.CLIENT,assign.END_DATE order by assign.sequence";

void AddVisitsAfter(Database& work, const char* statement, const char* parent, Findings& found) {
    for (Recordset row = work.OpenRecordset(statement, kRead); !row.Eof(); row.MoveNext())
        found.push_back(
            {"kestrava",
             fmt::format("{} not worked after {}, the end of {} {} of client {}: kept on purpose, "
                         "or left by an interrupted save",
                         Counted(row.Get("number").ToInteger(), "visit"), DayWords(row.Get("last_day")),
                         parent, row.Text("parent"), row.Text("client")),
             {}});
}

}  // namespace

Findings FindOtherCopies(const OpenDatabases& databases) {
    Findings found;
    Recordset row =
        databases.At("kestrava").OpenRecordset(std::string(kCopies) + " order by assign.sequence", kRead);
    for (; !row.Eof(); row.MoveNext()) {
        if (!EqualsNoCase(row.Text("CLIENT"), row.Text("author_client"))) {
            found.push_back(OtherClient(row));
        } else if (const std::string differences = CopyDifferences(row); !differences.empty()) {
            found.push_back({"kestrava",
                             fmt::format("assignment {} differs from its authorization {}: {}",
                                         row.Text("sequence"), row.Text("author_seq"), differences),
                             [sequence = row.Get("sequence")](Database& database) {
                                 return RepairCopies(database, sequence);
                             }});
        }
    }
    return found;
}

Findings FindOtherStatus(const OpenDatabases& databases, PurposeHistory& history) {
    Findings found;
    Database& work = databases.At("kestrava");
    const ByKey<KnownClient> clients = ReadClients(work);
    for (const auto& [id, service] : ComputeService(work)) {
        const auto client = clients.find(id);
        if (client == clients.end() || client->second.StandsApart())
            continue;
        ServiceDifference differs = Compare(client->second, service.span);
        if (!differs.Any() || IsSince(history.AuthorizationDeleted(id), service.saved))
            continue;
        differs.days = differs.days && !IsSince(history.ServiceDaysTyped(id), service.saved);
        if (differs.Any())
            found.push_back({"kestrava",
                             fmt::format("client {} differs from what the authorizations say: {}", id,
                                         StatusWords(client->second, service.span, differs)),
                             [id = id, daysToo = differs.days](Database& database) {
                                 return RepairStatus(database, id, daysToo);
                             }});
    }
    std::sort(found.begin(), found.end(),
              [](const Finding& a, const Finding& b) { return a.words < b.words; });
    return found;
}

Findings FindOtherPhoneStatus(const OpenDatabases& databases) {
    Findings found;
    const ByKey<KnownClient> clients = ReadClients(databases.At("kestrava"));
    Recordset row = databases.At("main").OpenRecordset(
        "select CLTid,Status,count(*) as number from hkeylonglat group by CLTid,Status", kRead);
    for (; !row.Eof(); row.MoveNext()) {
        const std::string id = row.Text("CLTid");
        const auto client = clients.find(id);
        if (client == clients.end() || client->second.StandsApart() || Trim(client->second.status).empty() ||
            EqualsNoCase(row.Text("Status"), client->second.status))
            continue;
        found.push_back(
            {"main",
             fmt::format("{} of client {} with status \"{}\" and not \"{}\"",
                         Counted(row.Get("number").ToInteger(), "telephony number"), id, row.Text("Status"),
                         client->second.status),
             [id, status = client->second.status](Database& code) {
                 code.Execute(Sql("Update hkeylonglat set status = {} where cltID = {}", status, id));
                 return fmt::format("the telephony numbers of client {} have status \"{}\" now", id, status);
             }});
    }
    return found;
}

Findings FindOtherNames(const OpenDatabases& databases) {
    Findings found;
    Database& work = databases.At("kestrava");
    const ByKey<KnownClient> clients = ReadClients(work);
    for (const NameHolder& holder : kNameHolders)
        for (Finding& finding : OtherNamesIn(work, holder, clients))
            found.push_back(std::move(finding));
    return found;
}

Findings FindVisitsAfterEnd(const OpenDatabases& databases) {
    Findings found;
    AddVisitsAfter(databases.At("kestrava"), kAfterAuthorization, "authorization", found);
    AddVisitsAfter(databases.At("kestrava"), kAfterAssignment, "assignment", found);
    return found;
}

}  // namespace kv::tool
