#include "clients/client_delete.h"

#include <array>
#include <vector>

#include "base/format.h"
#include "base/text.h"
#include "clients/client_list.h"
#include "clients/client_record.h"
#include "clients/record_keys.h"
#include "session/whole_step.h"

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
struct OwnTable {
    const char* table;
    const char* thing;  ///< what a row of it is called
};
constexpr std::array kGoWithPotential = {
    OwnTable{"Logging", "documented event"},
    OwnTable{"clirate", "billing rate"},
    OwnTable{"Cli_Emp", "visiting caregiver"},
    OwnTable{"Cli_misc", "attribute"},
    OwnTable{"CLI_personnel", "extra information line"},
    OwnTable{"CLI_Required", "required date"},
    OwnTable{"Care_plan", "care plan item"},
    OwnTable{"Tasks", "To Do item"},
};

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

namespace {

std::int64_t CountOf(Database& database, const char* table, const char* column, const std::string& id) {
    return database.Lookup(Sql("select count(*) from {} where {} = {}", Raw{table}, Raw{column}, id))
        .ToInteger();
}

/// What goes with the client and what stays behind, for the question.
std::string WhatGoes(Session& session, const Recordset& client, const std::string& id, bool potential) {
    Database& work = *session.dbMainWork;
    std::vector<std::string> goes;
    const auto add = [&](std::int64_t number, std::string_view thing) {
        if (number > 0) {
            goes.push_back(Counted(number, thing));
        }
    };
    for (const OwnTable& own : kGoWithPotential) {
        add(potential ? CountOf(work, own.table, "Client", id) : 0, own.thing);
    }
    add(CountOf(work, "cli_documents", "client", id), "document");
    add(CountOf(*session.dbMainCode, "hkeylonglat", "cltid", id), "telephony number");
    std::string words = Trim(client.Text("LASTNAME")) + ", " + Trim(client.Text("FIRSTNAM")) + " (" + id +
                        ")" + (goes.empty() ? "" : " goes with " + Join(goes, ", ")) + ".";
    if (potential) {
        const std::int64_t authorizations = CountOf(work, "Authorizations", "Client", id);
        const std::int64_t visits = CountOf(work, "sch_day", "Client", id);
        if (authorizations + visits > 0) {
            words += "\r\n" + Counted(authorizations, "authorization") + " and " + Counted(visits, "visit") +
                     " stay behind without a client.";
        }
    }
    return words;
}

std::string StatusWordOf(const Recordset& client) {
    return StatusWord(client.Text("CASESTATCD"), client.Get("ISTEMPLATE").IsTrue());
}

void WriteDelete(Session& session, const Recordset& client, const std::string& id, bool potential) {
    Database& work = *session.dbMainWork;
    work.Execute(Sql("DELETE * FROM changes WHERE AREA = {} and type = 'CLI'", id));
    work.Execute(Sql("DELETE * FROM cli_documents WHERE client = {}", id));
    session.dbMainCode->Execute(Sql("DELETE * FROM hkeylonglat WHERE cltid = {}", id));
    if (potential) {
        for (const OwnTable& own : kGoWithPotential) {
            work.Execute(Sql("DELETE * from {} where Client = {}", Raw{own.table}, id));
        }
    }
    AddLastTrace(session, client, id);
    work.Execute(Sql("DELETE * from clientpr where Client = {}", id));
}

}  // namespace

bool DeleteClient(Session& session, ClientForm& form, const std::string& statusWord) {
    if (session.OffLine) {
        session.ShowMessageWindow("You may not remove a client, while 'On the Road'");
        return false;
    }
    const std::string id = HasClient(form.List()) ? form.List().Text("CLIENT") : std::string();
    if (Trim(id).empty()) {
        return false;
    }
    // A potential client goes without a look at what hangs from them: the word must be the row's own.
    const auto stillAsShown = [&] {
        form.List().Reread();
        if (StatusWordOf(form.List()) == statusWord) {
            return true;
        }
        session.ShowMessageWindow(kChangedBeforeDelete);
        form.RestoreRow();
        return false;
    };
    const bool potential = IsPotential(statusWord);
    if (!stillAsShown() || CheckClientDelete(session, id, statusWord) ||
        !session.dialogs.AskToDestroy("Are you sure you wish to delete this Client\r\n" +
                                      WhatGoes(session, form.List(), id, potential))) {
        return false;
    }
    try {
        form.EditRow();  // nobody else is changing the client
        if (!stillAsShown()) {
            return false;
        }
        if (CheckClientDelete(session, id, statusWord)) {
            form.RestoreRow();
            return false;
        }
        WholeStep step(session);
        WriteDelete(session, form.List(), id, potential);
        step.Finish();
    } catch (const EngineError&) {
        form.RestoreRow();
        throw;
    }
    form.RefreshClientList();
    return true;
}

}  // namespace kv
