#include "tool/demo.h"

#include "base/platform.h"
#include "session/data_folder.h"
#include "tool/demo/lists.h"
#include "tool/demo/model.h"

namespace kv {
namespace {

void CheckNumbers(const DemoOptions& options) {
    if (options.clients < 1 || options.clients > kMostDemoPeople || options.caregivers < 1 ||
        options.caregivers > kMostDemoPeople) {
        throw DemoRefused("The numbers of clients and caregivers must lie between 1 and " +
                          std::to_string(kMostDemoPeople) + ".");
    }
}

void CheckEmpty(Database& work) {
    for (const char* table : {"ClientPR", "Employee", "Authorizations", "assign", "sch_day"}) {
        if (work.Lookup(Sql("select count(*) as n from {}", Raw{table})).ToInteger() != 0) {
            throw DemoRefused("The data folder already holds an agency's data (table " + std::string(table) +
                              "). The made-up agency needs an empty data folder.");
        }
    }
}

demo::World MakeWorld(Database& code, const Clock& clock, const DemoOptions& options,
                      const demo::Random& random) {
    demo::World world;
    world.calendar = demo::ReadCalendar(code, clock.Now());
    MakeCaregivers(world, options.caregivers, random.Fork(1));
    MakeClients(world, options.clients, random.Fork(2));
    PlanCare(world, random.Fork(3));
    MakeVisits(world, random.Fork(4));
    return world;
}

}  // namespace

DemoCounts RunDemo(Workspace& workspace, const std::filesystem::path& folder, const Clock& clock,
                   Progress& progress, const DemoOptions& options) {
    CheckNumbers(options);
    const auto place = [&](const char* name) { return PlaceOf(folder, name); };
    if (Workspace::HasDatabase(place("kestrava"))) {
        CheckEmpty(*workspace.OpenDatabase(place("kestrava")));
    }
    InitDataFolder(workspace, folder, "US");
    const auto open = [&](const char* name) { return workspace.OpenDatabase(place(name)); };
    const DatabasePtr work = open("kestrava");
    const DatabasePtr code = open("main");
    const DatabasePtr archive = open("archive");

    ProgressBar bar(progress, "Making the demonstration agency", 6);
    Transaction workRows = work->BeginTransaction();
    Transaction codeRows = code->BeginTransaction();
    Transaction archiveRows = archive->BeginTransaction();
    const demo::Random random(options.seed);
    WriteLists(*work, *code, clock.Now(), random.Fork(0));
    bar.Advance();
    demo::World world = MakeWorld(*code, clock, options, random);
    bar.Advance();
    WriteCaregivers(*work, world, random.Fork(5));
    WriteClients(*work, *code, world, random.Fork(6));
    bar.Advance();
    const demo::CareCounts care = WriteCare(*work, *archive, world, random.Fork(7));
    bar.Advance();
    WriteJournal(*work, *archive, world, random.Fork(8));
    bar.Advance();
    codeRows.Commit();
    archiveRows.Commit();
    workRows.Commit();
    for (const DatabasePtr& database : {work, code, archive})
        database->LearnTables();
    IniOf(folder).Set("KESTRAVA SYSTEM", "ClientID", std::to_string(options.clients));
    bar.Advance();
    return {options.clients, options.caregivers, care.authorizations, care.assignments, care.schedules};
}

}  // namespace kv
