#include "tool/check_keys.h"

#include <fmt/format.h>

#include "tool/table_rows.h"

namespace kv::tool {
namespace {

struct KeyColumn {
    std::string_view database;
    std::string_view table;
    std::string_view column;
    friend bool operator==(const KeyColumn&, const KeyColumn&) = default;
};

constexpr KeyColumn kClient = {"kestrava", "ClientPR", "CLIENT"};
constexpr KeyColumn kAuthorization = {"kestrava", "Authorizations", "sequence"};
constexpr KeyColumn kAssignment = {"kestrava", "assign", "sequence"};

/// What the rules do with the rows when their parent is deleted.
enum class Fate {
    Refuses,  ///< the parent is not deleted while there are such rows
    Goes,
    MayStay,   ///< those of a potential client
    Detached,  ///< stay, and belong to nothing then
};

/// A column whose filled values each name a row of another table.
struct KeyRule {
    KeyColumn from;
    KeyColumn to;
    Fate fate;
};

/// Not here are the keys that the rules leave behind: a deleted client's tasks; the reminders of a deleted
/// event; the history. Caregivers and payers are deleted by other modules.
constexpr KeyRule kKeyRules[] = {
    {{"kestrava", "Authorizations", "CLIENT"}, kClient, Fate::MayStay},
    {{"kestrava", "assign", "CLIENT"}, kClient, Fate::MayStay},
    {{"kestrava", "sch_day", "CLIENT"}, kClient, Fate::MayStay},
    {{"kestrava", "Emp_ban", "CLIENT"}, kClient, Fate::MayStay},
    {{"kestrava", "assign", "author_seq"}, kAuthorization, Fate::Goes},
    {{"kestrava", "assign_task", "ID"}, kAuthorization, Fate::Goes},
    {{"kestrava", "sch_day", "author_seq"}, kAuthorization, Fate::Refuses},
    {{"kestrava", "sch_day", "assign_seq"}, kAssignment, Fate::Detached},
    {{"kestrava", "clirate", "CLIENT"}, kClient, Fate::Goes},
    {{"kestrava", "cli_emp", "client"}, kClient, Fate::Goes},
    {{"kestrava", "cli_misc", "CLIENT"}, kClient, Fate::Goes},
    {{"kestrava", "cli_personnel", "CLIENT"}, kClient, Fate::Goes},
    {{"kestrava", "CLI_Required", "CLIENT"}, kClient, Fate::Goes},
    {{"kestrava", "care_plan", "CLIENT"}, kClient, Fate::Goes},
    {{"kestrava", "cli_documents", "CLIENT"}, kClient, Fate::Goes},
    {{"kestrava", "logging", "CLIENT"}, kClient, Fate::Goes},
    {{"main", "hkeylonglat", "CLTid"}, kClient, Fate::Goes},
    {{"kestrava", "tasks", "OnGoing_Seq"}, {"kestrava", "ongoing", "sequence"}, Fate::Detached},
    {{"kestrava", "referral_contacts", "referral_seq"}, {"kestrava", "referral", "sequence"}, Fate::Refuses},
};

/// Nought, less than nought and blank stand for no row at all (a visit entered by hand has assign_seq 0, one
/// whose assignment was deleted -1).
bool IsFilled(const Value& key) {
    return key.Type() == ValueType::Text ? !IsBlank(key) : key.NumberOr(0) > 0;
}

Keys ReadKeys(const OpenDatabases& databases, const KeyColumn& column) {
    Keys keys;
    Recordset rows = databases.At(column.database)
                         .OpenRecordset(fmt::format("select {} from {}", Bracketed(column.column),
                                                    Bracketed(column.table)),
                                        RecordsetType::Snapshot);
    for (; !rows.Eof(); rows.MoveNext())
        keys.insert(rows.Get(0).ToText());
    return keys;
}

/// What is worked or was changed by hand stays as it is: payroll and billing stand on it.
constexpr const char* kUntouched = "act_hrs = 0 and pay_override = 0 and bill_override = 0";

std::string DetachVisits(Database& database, const Value& assignment) {
    // As the deletion of an assignment does it: 0 would make them look typed in by hand.
    const long rows = database.Execute(
        Sql("update sch_day set assign_seq = -1 where assign_seq = {} and {}", assignment, Raw{kUntouched}));
    return rows == 0 ? ""
                     : fmt::format("{} of the assignment {}, which is gone: assign_seq is -1 now",
                                   Counted(rows, "visit"), assignment.ToText());
}

std::string DetachTasks(Database& database, const Value& series) {
    const long rows = database.Execute(
        Sql("update tasks set OnGoing_Seq = 0, Ongoing_Desc = '' where OnGoing_Seq = {}", series));
    return rows == 0 ? ""
                     : fmt::format("{} of the series {}, which is gone: OnGoing_Seq is 0 now",
                                   Counted(rows, "To Do item"), series.ToText());
}

std::string DeleteRows(Database& database, const KeyRule& rule, const Value& key) {
    const long rows = database.Execute(Sql("delete * from {} where {} = {}", Raw{Bracketed(rule.from.table)},
                                           Raw{Bracketed(rule.from.column)}, key));
    return rows == 0
               ? ""
               : fmt::format("{} of {} deleted, whose {} {} was deleted", Counted(rows, "row"),
                             rule.from.table, rule.to == kClient ? "client" : "authorization", key.ToText());
}

bool HasVisits(Database& database, const Value& authorization) {
    return database.Lookup(Sql("select count(*) from sch_day where author_seq = {}", authorization))
               .ToInteger() > 0;
}

class LostParents {
  public:
    LostParents(const OpenDatabases& databases, PurposeHistory& history)
        : databases_(databases), history_(history) {}

    Findings Of(const KeyRule& rule) {
        Findings found;
        const Keys known = ReadKeys(databases_, rule.to);
        Recordset used =
            databases_.At(rule.from.database)
                .OpenRecordset(fmt::format("select {0}, count(*) as number from {1} group by {0}",
                                           Bracketed(rule.from.column), Bracketed(rule.from.table)),
                               RecordsetType::Snapshot);
        for (; !used.Eof(); used.MoveNext()) {
            const Value key = used.Get(0);
            if (!IsFilled(key) || known.count(key.ToText()) > 0)
                continue;
            if (rule.fate == Fate::MayStay && history_.ClientWasDeleted(key.ToText()))
                continue;
            found.push_back(
                {std::string(rule.from.database),
                 fmt::format("{}.{} {} names no row of {} ({} rows)", rule.from.table, rule.from.column,
                             key.ToText(), rule.to.table, used.Get(1).ToInteger()),
                 Repair(rule, key)});
        }
        return found;
    }

  private:
    std::function<std::string(Database&)> Repair(const KeyRule& rule, const Value& key) {
        if (rule.fate == Fate::Detached)
            return [key, visits = rule.to == kAssignment](Database& database) {
                return visits ? DetachVisits(database, key) : DetachTasks(database, key);
            };
        if (rule.fate != Fate::Goes || !WasDeleted(rule, key.ToText()))
            return {};
        return [rule, key](Database& database) -> std::string {
            // An authorization that visits hang from was not deleted by the rules.
            if (rule.to == kAuthorization && HasVisits(database, key))
                return {};
            return DeleteRows(database, rule, key);
        };
    }

    bool WasDeleted(const KeyRule& rule, const std::string& key) {
        return rule.to == kClient ? history_.ClientWasDeleted(key) : history_.AuthorizationWasDeleted(key);
    }

    const OpenDatabases& databases_;
    PurposeHistory& history_;
};

bool CanCheck(const OpenDatabases& databases, const KeyRule& rule) {
    const auto has = [&](const KeyColumn& column) {
        return databases.Has(column.database, column.table, column.column);
    };
    return has(rule.from) && has(rule.to);  // else the schema's faults tell it
}

}  // namespace

Findings FindLostParents(const OpenDatabases& databases, PurposeHistory& history) {
    Findings found;
    LostParents parents(databases, history);
    for (const KeyRule& rule : kKeyRules)
        if (CanCheck(databases, rule))
            for (Finding& finding : parents.Of(rule))
                found.push_back(std::move(finding));
    return found;
}

}  // namespace kv::tool
