#include "tool/check_folder.h"

#include <map>
#include <memory>
#include <unordered_set>

#include <fmt/format.h>

#include "base/platform.h"
#include "base/text.h"
#include "datastore/schema.h"
#include "session/data_folder.h"
#include "tool/command.h"
#include "tool/schema_script.h"
#include "tool/table_rows.h"

namespace kv::tool {
namespace {

struct KeyColumn {
    const char* database;
    const char* table;
    const char* column;
};

/// A column whose filled values each name a row of another table.
struct KeyRule {
    KeyColumn from;
    KeyColumn to;
};

constexpr KeyColumn kClient = {"kestrava", "ClientPR", "CLIENT"};
constexpr KeyColumn kAuthorization = {"kestrava", "Authorizations", "sequence"};

/// Not here are the keys that the rules leave behind: a deleted client's tasks; the authorizations,
/// assignments, visits and banned caregivers of a deleted potential client; the reminders of a deleted event;
/// the history. Caregivers and payers are deleted by other modules.
constexpr KeyRule kKeyRules[] = {
    {{"kestrava", "assign", "author_seq"}, kAuthorization},
    {{"kestrava", "assign_task", "ID"}, kAuthorization},
    {{"kestrava", "sch_day", "author_seq"}, kAuthorization},
    {{"kestrava", "sch_day", "assign_seq"}, {"kestrava", "assign", "sequence"}},
    {{"kestrava", "clirate", "CLIENT"}, kClient},
    {{"kestrava", "cli_emp", "client"}, kClient},
    {{"kestrava", "cli_misc", "CLIENT"}, kClient},
    {{"kestrava", "cli_personnel", "CLIENT"}, kClient},
    {{"kestrava", "CLI_Required", "CLIENT"}, kClient},
    {{"kestrava", "care_plan", "CLIENT"}, kClient},
    {{"kestrava", "cli_documents", "CLIENT"}, kClient},
    {{"kestrava", "logging", "CLIENT"}, kClient},
    {{"main", "hkeylonglat", "CLTid"}, kClient},
    {{"kestrava", "tasks", "OnGoing_Seq"}, {"kestrava", "ongoing", "sequence"}},
    {{"kestrava", "referral_contacts", "referral_seq"}, {"kestrava", "referral", "sequence"}},
};

struct SameText {
    bool operator()(const std::string& a, const std::string& b) const { return CompareText(a, b) == 0; }
};
struct TextHash {
    std::size_t operator()(const std::string& text) const { return HashText(text); }
};
using Keys = std::unordered_set<std::string, TextHash, SameText>;

/// Nought, less than nought and blank stand for no row at all (a visit entered by hand has assign_seq 0, one
/// whose assignment was deleted -1).
bool IsFilled(const Value& key) {
    return key.Type() == ValueType::Text ? !IsBlank(key) : key.NumberOr(0) > 0;
}

class FolderCheck {
  public:
    FolderCheck(Workspace& workspace, std::filesystem::path folder)
        : workspace_(workspace), folder_(std::move(folder)) {}

    std::vector<std::string> Run() {
        for (const std::string& name : SchemaNames())
            Guard(name, [&] { CheckDatabase(name); });
        Guard("main", [&] { CheckAgency(); });
        for (const KeyRule& rule : kKeyRules)
            Guard(rule.from.database, [&] { CheckKeys(rule); });
        return std::move(problems_);
    }

  private:
    void Report(const std::string& database, const std::string& words) {
        problems_.push_back(DatabaseFile(database) + ": " + words);
    }

    /// What makes a test impossible is itself a problem to report.
    template <typename Test>
    void Guard(const std::string& database, Test test) {
        try {
            test();
        } catch (const EngineError& error) {
            Report(database, fmt::format("error {}: {}", error.Number(), error.Description()));
        }
    }

    /// Opens also what the program itself would refuse for its schema's version; nothing for what is no
    /// database at all.
    DatabasePtr Open(const std::string& name) {
        const DatabasePlace place = PlaceOf(folder_, name);
        try {
            return workspace_.OpenDatabase(place);
        } catch (const EngineError& error) {
            Report(name, error.Description());
        }
        try {
            return workspace_.OpenDatabase(place, SchemaCheck::Ignored);
        } catch (const EngineError&) {
            return nullptr;  // told above
        }
    }

    void CheckDatabase(const std::string& name) {
        const DatabasePtr database = Open(name);
        if (!database)
            return;
        for (const std::string& fault : database->CheckIntegrity())
            Report(name, fault);
        CheckSchema(name, *database);
        open_[name] = database;
    }

    void CheckSchema(const std::string& name, const Database& database) {
        const Catalogue& schema = SchemaTables(name);
        for (const std::string& tableName : schema.Names()) {
            const TableInfo* table = database.Tables().Find(tableName);
            if (table == nullptr) {
                Report(name, fmt::format("the table {} is missing", tableName));
                continue;
            }
            for (const ColumnInfo& wanted : schema.Find(tableName)->columns)
                CheckColumn(name, *table, wanted);
            for (const IndexInfo& wanted : schema.Find(tableName)->indexes)
                CheckIndex(name, *table, wanted);
        }
    }

    void CheckIndex(const std::string& name, const TableInfo& table, const IndexInfo& wanted) {
        const auto same = [&](const IndexInfo& index) {
            return index.unique == wanted.unique &&
                   std::equal(index.columns.begin(), index.columns.end(), wanted.columns.begin(),
                              wanted.columns.end(),
                              [](const std::string& a, const std::string& b) { return EqualsNoCase(a, b); });
        };
        if (std::none_of(table.indexes.begin(), table.indexes.end(), same))
            Report(name, fmt::format("the {}index of {} by {} is missing", wanted.unique ? "unique " : "",
                                     table.name, Join(wanted.columns, ", ")));
    }

    void CheckColumn(const std::string& name, const TableInfo& table, const ColumnInfo& wanted) {
        const auto place = table.Find(wanted.name);
        if (!place)
            Report(name, fmt::format("the column {}.{} is missing", table.name, wanted.name));
        else if (const std::string words = TypeWords(table.columns[*place]); words != TypeWords(wanted))
            Report(name, fmt::format("the column {}.{} is {} and not {}", table.name, wanted.name, words,
                                     TypeWords(wanted)));
    }

    void CheckAgency() {
        if (!Has({"main", "Agency", "ag_name"}))
            return;
        const long rows = open_.at("main")->OpenRecordset("Agency", RecordsetType::Snapshot).RecordCount();
        if (rows != 1)
            Report("main", fmt::format("Agency holds {} rows and not one", rows));
    }

    void CheckKeys(const KeyRule& rule) {
        if (!Has(rule.from) || !Has(rule.to))
            return;  // reported as missing
        const Keys known = ReadKeys(rule.to);
        const std::string key = Bracketed(rule.from.column);
        Recordset used =
            open_.at(rule.from.database)
                ->OpenRecordset(fmt::format("select {0}, count(*) as number from {1} group by {0}", key,
                                            Bracketed(rule.from.table)),
                                RecordsetType::Snapshot);
        for (; !used.Eof(); used.MoveNext()) {
            const Value value = used.Get(0);
            if (IsFilled(value) && known.count(value.ToText()) == 0)
                Report(rule.from.database,
                       fmt::format("{}.{} {} names no row of {} ({} rows)", rule.from.table, rule.from.column,
                                   value.ToText(), rule.to.table, used.Get(1).ToInteger()));
        }
    }

    Keys ReadKeys(const KeyColumn& column) {
        Keys keys;
        Recordset rows = open_.at(column.database)
                             ->OpenRecordset(fmt::format("select {} from {}", Bracketed(column.column),
                                                         Bracketed(column.table)),
                                             RecordsetType::Snapshot);
        for (; !rows.Eof(); rows.MoveNext())
            keys.insert(rows.Get(0).ToText());
        return keys;
    }

    bool Has(const KeyColumn& column) const {
        const auto database = open_.find(column.database);
        if (database == open_.end())
            return false;
        const TableInfo* table = database->second->Tables().Find(column.table);
        return table != nullptr && table->Find(column.column);
    }

    Workspace& workspace_;
    std::filesystem::path folder_;
    std::map<std::string, DatabasePtr> open_;
    std::vector<std::string> problems_;
};

}  // namespace

std::vector<std::string> CheckDataFolder(Workspace& workspace, const std::filesystem::path& folder) {
    return FolderCheck(workspace, folder).Run();
}

Action PrepareCheck(CLI::App& /*command*/) {
    return [](Context& context) {
        const auto problems = CheckDataFolder(context.session.workspace, context.DataFolder());
        context.Print({{"problems", problems}});
        return problems.empty() ? 0 : 1;
    };
}

}  // namespace kv::tool
