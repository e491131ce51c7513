#include "tool/check_folder.h"

#include <functional>
#include <memory>

#include <fmt/format.h>

#include "datastore/schema.h"
#include "session/data_folder.h"
#include "tool/check_keys.h"
#include "tool/check_schema.h"
#include "tool/check_service.h"
#include "tool/command.h"

namespace kv::tool {
namespace {

struct TableName {
    std::string_view database;
    std::string_view table;
};

/// A part of the check, with the tables that it can't do without.
struct Part {
    std::vector<TableName> tables;
    std::function<Findings(const OpenDatabases&, PurposeHistory&)> find;
};

/// In the order of repair: each stands on what those before it put right.
const std::vector<Part>& Parts() {
    constexpr TableName kClients = {"kestrava", "ClientPR"};
    constexpr TableName kAuthorizations = {"kestrava", "Authorizations"};
    constexpr TableName kAssignments = {"kestrava", "assign"};
    constexpr TableName kVisits = {"kestrava", "sch_day"};
    const auto alone = [](Findings (*find)(const OpenDatabases&)) {
        return [find](const OpenDatabases& databases, PurposeHistory&) { return find(databases); };
    };
    static const std::vector<Part> parts = {
        {{}, FindLostParents},
        {{kAssignments, kAuthorizations}, alone(FindOtherCopies)},
        {{kClients, kAuthorizations}, FindOtherStatus},
        {{kClients, {"main", "hkeylonglat"}}, alone(FindOtherPhoneStatus)},
        {{kClients, kAssignments, kVisits}, alone(FindOtherNames)},
        {{kVisits, kAuthorizations, kAssignments}, alone(FindVisitsAfterEnd)},
    };
    return parts;
}

class FolderCheck {
  public:
    FolderCheck(Workspace& workspace, std::filesystem::path folder)
        : workspace_(workspace), folder_(std::move(folder)) {}

    CheckResult Run(CheckMode mode) {
        for (const std::string& name : SchemaNames())
            Guard(name, [&] { CheckDatabase(name); });
        Guard("main", [&] { CheckAgency(); });
        if (mode == CheckMode::Repair && !damaged_)
            for (const Part& part : Parts())
                Repair(Find(part));
        for (const Part& part : Parts())
            for (const Finding& finding : Find(part))
                Report(finding.database, finding.words);
        return std::move(result_);
    }

  private:
    void Report(const std::string& database, const std::string& words) {
        result_.problems.push_back(DatabaseFile(database) + ": " + words);
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
        for (const std::string& fault : database->CheckIntegrity()) {
            Report(name, fault);
            damaged_ = true;
        }
        for (const Finding& fault : FindSchemaFaults(name, *database))
            Report(name, fault.words);
        databases_.Add(name, database);
    }

    void CheckAgency() {
        if (!databases_.Has("main", "Agency", "ag_name"))
            return;
        const long rows =
            databases_.At("main").OpenRecordset("Agency", RecordsetType::Snapshot).RecordCount();
        if (rows != 1)
            Report("main", fmt::format("Agency holds {} rows and not one", rows));
    }

    /// Nothing where a table or column that it needs is missing, which is told already.
    Findings Find(const Part& part) {
        for (const TableName& name : part.tables)
            if (!databases_.HasWhole(name.database, name.table))
                return {};
        Findings found;
        Guard("kestrava", [&] { found = part.find(databases_, history_); });
        return found;
    }

    void Repair(const Findings& findings) {
        for (const Finding& finding : findings)
            if (finding.repair)
                RepairOne(finding);
    }

    void RepairOne(const Finding& finding) {
        try {
            Database& database = databases_.At(finding.database);
            Transaction transaction = database.BeginTransaction();
            const std::string done = finding.repair(database);
            transaction.Commit();
            if (!done.empty())
                result_.repaired.push_back(DatabaseFile(finding.database) + ": " + done);
        } catch (const EngineError& error) {
            Report(finding.database, fmt::format("not repaired, error {}: {} ({})", error.Number(),
                                                 error.Description(), finding.words));
        }
    }

    Workspace& workspace_;
    std::filesystem::path folder_;
    OpenDatabases databases_;
    PurposeHistory history_{databases_};
    CheckResult result_;
    bool damaged_ = false;
};

}  // namespace

CheckResult CheckDataFolder(Workspace& workspace, const std::filesystem::path& folder, CheckMode mode) {
    return FolderCheck(workspace, folder).Run(mode);
}

Action PrepareCheck(CLI::App& command) {
    auto repair = std::make_shared<bool>(false);
    command.add_flag("--repair", *repair, "Put right what has one right answer");
    return [repair](Context& context) {
        const CheckResult result = CheckDataFolder(context.session.workspace, context.DataFolder(),
                                                   *repair ? CheckMode::Repair : CheckMode::Report);
        context.Print({{"problems", result.problems}, {"repaired", result.repaired}});
        return result.problems.empty() ? 0 : 1;
    };
}

}  // namespace kv::tool
