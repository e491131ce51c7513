#include "clients/client_delete.h"

#include <array>
#include <vector>

#include "base/format.h"
#include "base/text.h"
#include "clients/client_list.h"

namespace kv {

namespace {

struct DependentTable {
    const char* table;
    bool archived;
    const char* words;
};
constexpr std::array kDependents = {
    DependentTable{"Authorizations", false, " records on the Authorzation section"},
    DependentTable{"clirate", false, " records on the Bill Rates section"},
    DependentTable{"assign", false, " records in Assignments button on the Authorzation section"},
    DependentTable{"Payroll", false, " records in Payrolls"},
    DependentTable{"Logging", false, " records in Client Documented Event"},
    DependentTable{"Emp_ban", false, " records in Caregiver Who Should Not Visit section"},
    DependentTable{"Cli_Emp", false, " records in Caregiver who has visited this client table"},
    DependentTable{"Cli_misc", false, " records in the Skills section"},
    DependentTable{"Care_plan", false, " records in Care Plan section"},
    DependentTable{"Cli_personnel", false, " records in Extra Info section"},
    DependentTable{"Cli_Required", false, " records in Required Dates section"},
    DependentTable{"Sch_day", false, " records in Schedule Module"},
    DependentTable{"Payroll", true, " records in Payroll History"},
    DependentTable{"Billing", true, " records in Billing History"},
};

/// What goes with a potential client. Authorizations are not among them, and stay behind.
constexpr std::array kGoWithPotential = {"Logging",       "clirate",      "Cli_Emp",   "Cli_misc",
                                         "CLI_personnel", "CLI_Required", "Care_plan", "Tasks"};

bool IsPotential(const std::string& statusWord) {
    return statusWord == "Potential";
}

void AddLastTrace(Session& session, const Recordset& client, const std::string& id) {
    const Date now = session.clock.Now();
    session.rsChanges.AddNew();
    session.rsChanges.Set("Type", "CLI");
    session.rsChanges.Set("Area", id);
    session.rsChanges.Set("Date", now.DayOnly());
    session.rsChanges.Set("Time", FormatDate(now, "HH:MM:SS AM/PM"));
    session.rsChanges.Set("User", session.User);
    session.rsChanges.Set("Status", "DELETED");
    session.rsChanges.Set("reason", "Deleted Client\r\n\r\n" + Trim(client.Text("firstnam")) + " " +
                                        Trim(client.Text("lastname")));
    session.rsChanges.Update();
}

}  // namespace

bool CheckClientDelete(Session& session, const std::string& id, const std::string& statusWord) {
    if (IsPotential(statusWord)) {
        return false;
    }
    std::vector<std::string> lines = {"Cannot Delete this Client because:"};
    const DatabasePtr archive = session.OpenData("archive.mdb");
    for (const DependentTable& each : kDependents) {
        Database& database = each.archived ? *archive : *session.dbMainWork;
        const std::string statement =
            Sql("select count(*) as Client_total from {} where Client = {}", Raw{each.table}, id);
        const std::int64_t total = database.Lookup(statement).ToInteger();
        if (total > 0) {
            lines.push_back("Found " + FormatNumber(static_cast<double>(total), "##,##0") + each.words);
        }
    }
    const bool refused = lines.size() > 1;
    if (refused) {
        session.dialogs.ShowFaults(lines);
    }
    return refused;
}

bool DeleteClient(Session& session, ClientForm& form, const std::string& statusWord) {
    if (session.OffLine) {
        session.ShowMessageWindow("You may not remove a client, while 'On the Road'");
        return false;
    }
    const std::string id = HasClient(form.List()) ? form.List().Text("CLIENT") : std::string();
    if (Trim(id).empty() || CheckClientDelete(session, id, statusWord) ||
        !session.dialogs.AskQuestion("Are you sure you wish to delete this Client")) {
        return false;
    }
    Database& work = *session.dbMainWork;
    work.Execute(Sql("DELETE * FROM changes WHERE AREA = {} and type = 'CLI'", id));
    work.Execute(Sql("DELETE * FROM cli_documents WHERE client = {}", id));
    session.dbMainCode->Execute(Sql("DELETE * FROM hkeylonglat WHERE cltid = {}", id));
    if (IsPotential(statusWord)) {
        for (const char* table : kGoWithPotential) {
            work.Execute(Sql("DELETE * from {} where Client = {}", Raw{table}, id));
        }
    }
    AddLastTrace(session, form.List(), id);
    work.Execute(Sql("DELETE * from clientpr where Client = {}", id));
    form.RefreshClientList();
    return true;
}

}  // namespace kv
