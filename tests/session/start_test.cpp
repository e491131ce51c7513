#include "session/start.h"

#include <gmock/gmock.h>

#include "base/platform.h"
#include "session/data_folder.h"
#include "session/login_limits.h"
#include "support/test_agency.h"

namespace kv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

TEST(Start, RunsOnlyWhenTheMenuProgramLetsIt) {
    test::TestAgency agency;
    SettingsStore& settings = agency.session().settings;
    const std::pair<const char*, bool> texts[] = {{"Y", true}, {"y", false}, {"", false}, {"YES", false}};
    for (const auto& [text, started] : texts) {
        settings.Set("STARTED", "STARTED", text);
        EXPECT_EQ(IsStarted(settings), started) << text;
    }
    settings.Remove("STARTED", "STARTED");
    EXPECT_FALSE(IsStarted(settings));
}

TEST(Start, ReadsTheLoginUnchecked) {
    const test::TempFolder folder;
    SettingsStore settings(folder.Path() / "settings.ini");
    test::ScriptedPorts ports;
    Session session(settings, ports.Handles());
    ReadLogin(session);
    EXPECT_EQ(session.DBloc, "");
    EXPECT_EQ(session.User, "");
    EXPECT_FALSE(session.COLOR);

    settings.Set("Setting", "DBloc", folder.Path().string());
    settings.Set("Setting", "Screens", "CLIE|AUTA");
    settings.Set("SETTING", "COLOR", "True");
    ReadLogin(session);
    EXPECT_EQ(session.DBloc, folder.Path().string() + "/") << "names are joined to it without a separator";
    EXPECT_EQ(session.Screens, "CLIE|AUTA");
    EXPECT_TRUE(session.COLOR);
}

TEST(Start, ALoginIsRefusedThatNoColumnTakes) {
    test::TestAgency agency;
    Session& session = agency.session();
    EXPECT_NO_THROW(CheckLogin(session));
    // What the session's own databases take is what counts.
    const auto width = [&](Database& database, const char* table, const char* column) {
        const TableInfo& info = *database.Tables().Find(table);
        return info.columns[info.Find(column).value()].size;
    };
    EXPECT_EQ(LoginLimit("user"), width(agency.Work(), "ClientPR", "User_Id"));
    EXPECT_EQ(LoginLimit("VENDOR"), width(agency.Code(), "hkeylonglat", "branchid"));
    EXPECT_EQ(LoginLimit("Manager"), width(agency.Work(), "ClientPR", "MANAGER"));
    EXPECT_EQ(LoginLimit("Screens"), std::nullopt) << "it is stored nowhere";
    session.VENDOR = std::string(11, '7');
    EXPECT_THAT([&] { CheckLogin(session); },
                testing::ThrowsMessage<LoginTooLong>(
                    "The login's vendor code is 11 characters long, and at most 10 can be stored. Please log "
                    "in again with a shorter one."));
}

TEST(Start, CountryComesFromTheIniFile) {
    test::TestAgency agency;
    Session& session = agency.session();
    EXPECT_FALSE(session.Canada);
    const std::pair<const char*, bool> countries[] = {
        {"canada", true}, {"CANADA", true}, {"US", false}, {"CANADA2", false}};
    for (const auto& [country, canada] : countries) {
        session.Ini().Set("KESTRAVA SYSTEM", "COUNTRY", country);
        ReadCountry(session);
        EXPECT_EQ(session.Canada, canada) << country;
    }
    std::filesystem::remove(session.Ini().File());
    ReadCountry(session);
    EXPECT_FALSE(session.Canada);
}

TEST(Start, AServerThatCantBeReachedIsToldInWords) {
    test::TestAgency agency;
    agency.session().Ini().Set("Database", "Server", "host=/nowhere dbname=kv");
    try {
        OpenSessionData(agency.session());
        FAIL() << "the files were opened although the agency works on a server";
    } catch (const EngineError& error) {
        EXPECT_EQ(error.Number(), engine_error::kConnectionFailed);
        EXPECT_THAT(error.Description(), testing::HasSubstr("The database server can't be reached"));
    }
}

TEST(Start, TheAgencyWinsAndRepairsMileageRates) {
    test::TestAgency agency;
    EXPECT_EQ(agency.session().AgencyName, "Home Care Agency");
    EXPECT_EQ(agency.session().WKENDING, "SAT") << "the database wins over the setting";

    agency.Client("00001", "Doe", "Ann", {{"billmile_rate", 0}});
    agency.Client("00002", "Roe", "Bob", {{"billmile_rate", Currency::FromDouble(0.75)}});
    agency.Client("00003", "Poe", "Cy", {{"billmile_rate", Value()}});
    agency.Code().Execute("update Agency set billmile_rate = 0");
    OpenSessionData(agency.session());
    EXPECT_THAT(agency.Rows("select billmile_rate from clientpr order by client"),
                ElementsAre("0", "0.75", "<Null>"));
    agency.Code().Execute("update Agency set billmile_rate = 0.405");
    OpenSessionData(agency.session());
    EXPECT_THAT(agency.Rows("select billmile_rate from clientpr order by client"),
                ElementsAre("0.405", "0.75", "<Null>"));
}

TEST(Start, HoldsTheChangesOfSixtyDays) {
    test::TestAgency agency;
    const Date today = agency.session().clock.Today();
    for (const int days : {0, 59, 60, 61})
        agency.Insert("changes",
                      {{"Type", "CLI"}, {"Area", std::to_string(days)}, {"Date", today.AddDays(-days)}});
    agency.Insert("Employee", {{"emp_id", "000123"}});
    OpenSessionData(agency.session());
    std::vector<std::string> areas;
    for (Recordset& changes = agency.session().rsChanges; !changes.Eof(); changes.MoveNext())
        areas.push_back(changes.Text("Area"));
    EXPECT_THAT(areas, UnorderedElementsAre("0", "59"));
    EXPECT_EQ(agency.session().rsEmployee.RecordCount(), 1);
    agency.session().rsChanges.AddNew();
    agency.session().rsChanges.Set("Type", "CLI");
    agency.session().rsChanges.Update();
    EXPECT_EQ(agency.Rows("select * from changes").size(), 5U);
}

TEST(Start, AFailingStepStopsNoOther) {
    test::TestAgency agency;
    Session& session = agency.session();
    session.rsChanges.Close();
    session.rsEmployee.Close();
    agency.Code().Execute("delete * from Agency");
    try {
        OpenSessionData(session);
        ADD_FAILURE() << "a missing Agency row was passed over";
    } catch (const EngineError& error) {
        EXPECT_EQ(error.Number(), engine_error::kNoCurrentRecord);
        ReportEngineError(session, error);
        EXPECT_THAT(agency.Said(), ElementsAre("message: " + error.Description()));
    }
    EXPECT_TRUE(session.rsEmployee.IsOpen());
    EXPECT_TRUE(session.rsChanges.IsOpen());

    const test::TempFolder empty;
    SettingsStore settings(empty.Path() / "settings.ini");
    settings.Set("Setting", "DBloc", empty.Path().string());
    Session without(settings, agency.ports.Handles());
    ReadLogin(without);
    EXPECT_THROW(OpenSessionData(without), EngineError);
}

TEST(Start, SortAndItsDescription) {
    test::TestAgency agency;
    Session& session = agency.session();
    EXPECT_EQ(ReadClientSort(session), "Current Sort: Client ID");
    EXPECT_EQ(session.ClientSort, "client");
    session.settings.Set("CLIENT", "SORT", "lastname,firstnam");
    EXPECT_EQ(ReadClientSort(session), "Current Sort: ");
    session.settings.Set("CLIENT", "SORT_DESC", "Last Name");
    EXPECT_EQ(ReadClientSort(session), "Current Sort: Last Name");
    EXPECT_EQ(session.ClientSort, "lastname,firstnam");
}

TEST(Start, TheMenuProgramLearnsOfStartAndEnd) {
    test::TestAgency agency;
    Session& session = agency.session();
    AnnounceUp(session);
    EXPECT_EQ(session.settings.Get("Setting", "CLIENT"), "1");
    EXPECT_EQ(session.settings.Get("Setting", "Start"), "YES");
    session.settings.Set("Setting", "Sch_Cli", "00042");
    EXPECT_EQ(TakeHandedClient(session), "00042");
    EXPECT_EQ(TakeHandedClient(session), "");
    AnnounceEnded(session);
    EXPECT_EQ(session.settings.Get("Setting", "CLIENT"), "O");
    EXPECT_FALSE(session.rsEmployee.IsOpen());
    EXPECT_FALSE(session.rsChanges.IsOpen());
    EXPECT_EQ(session.dbMainWork, nullptr);
    EXPECT_EQ(session.dbMainCode, nullptr);
}

TEST(Start, AUserWithAManagerStartsLimited) {
    test::TestAgency agency;
    Session& session = agency.session();
    session.Manager = "M2";
    ManagerList list = LoadManagerList(session);
    EXPECT_THAT(list.items, ElementsAre("All Managers"));
    EXPECT_EQ(session.Manager, "all");

    agency.Insert("MANAGER", {{"code", "M2"}, {"description", "Zed"}});
    agency.Insert("MANAGER", {{"code", "M1"}, {"description", "Amy"}});
    struct Case {
        std::string manager;
        std::size_t chosen = 0;
        std::string kept;
    };
    const Case cases[] = {
        {"M2", 2, "M2"}, {"m1", 1, "m1"}, {"M3", 0, "all"}, {"", 0, "all"}, {"all", 0, "all"}};
    for (const Case& c : cases) {
        session.Manager = c.manager;
        list = LoadManagerList(session);
        EXPECT_THAT(list.items, ElementsAre("All Managers", "Amy", "Zed"));
        EXPECT_EQ(list.tag, "all~M1~M2~");
        EXPECT_EQ(list.chosen, c.chosen) << c.manager;
        EXPECT_EQ(session.Manager, c.kept) << c.manager;
    }
}

TEST(Start, TempPathIsAFolder) {
    test::TestAgency agency;
    ReadTempPath(agency.session());
    EXPECT_TRUE(std::filesystem::is_directory(agency.session().TempPath));
    EXPECT_EQ(agency.session().TempPath.back(), '/');
}

TEST(DataFolder, IsMadeOnceAndLeftAlone) {
    const test::TempFolder folder;
    const std::filesystem::path data = folder.Path() / "a" / "b";
    Workspace workspace;
    EXPECT_THAT(InitDataFolder(workspace, data, "CANADA"),
                ElementsAre("kestrava.mdb", "main.mdb", "archive.mdb", "trans.mdb", "tempassign.mdb"));
    EXPECT_EQ(IniFile(data / "KESTRAVA.INI").Get("Kestrava System", "Country", ""), "CANADA");
    {
        const DatabasePtr main = workspace.OpenDatabase(data / "main.mdb");
        EXPECT_EQ(main->Lookup("select sch_weeks from Agency").ToInteger(), 4);
        EXPECT_EQ(main->Lookup("select start8 from Agency").ToDate(), Date::FromTime(23, 0));
        EXPECT_EQ(main->Lookup("select stop3 from Agency").ToDate(), Date::FromTime(7, 0));
        EXPECT_EQ(main->Lookup("select map_adr from Agency"), Value());
        for (const std::string& table : main->Tables().Names())
            EXPECT_EQ(main->Lookup("select count(*) as n from [" + table + "]").ToInteger(),
                      table == "Agency" ? 1 : 0)
                << table;
        main->Execute("update Agency set ag_name = 'Kept'");
    }
    std::filesystem::remove(data / "trans.mdb");
    EXPECT_THAT(InitDataFolder(workspace, data, "US"), ElementsAre("trans.mdb"));
    EXPECT_THAT(InitDataFolder(workspace, data, "US"), IsEmpty());
    EXPECT_EQ(workspace.OpenDatabase(data / "MAIN.mdb")->Lookup("select ag_name from Agency"), Value("Kept"));
    EXPECT_EQ(IniFile(data / "KESTRAVA.INI").Get("Kestrava System", "Country", ""), "CANADA");
}

TEST(DataFolder, NamesAServerWithoutAPassword) {
    const test::TempFolder folder;
    const IniFile ini(folder.Path() / "Kestrava.ini");
    ini.Set("Database", "Server", "host=db dbname=agency user=agency");
    EXPECT_EQ(PlaceOf(folder.Path(), "main.mdb").server, "host=db dbname=agency user=agency");
    EXPECT_EQ(PlaceOf(folder.Path(), "tempassign").server, "") << "each seat's own";
    for (const char* server :
         {"host=db dbname=agency password=secret", "postgresql://agency:secret@db/agency"}) {
        ini.Set("Database", "Server", server);
        try {
            PlaceOf(folder.Path(), "kestrava");
            ADD_FAILURE() << "taken: " << server;
        } catch (const EngineError& error) {
            EXPECT_EQ(error.Number(), engine_error::kCannotOpenFile);
            EXPECT_THAT(error.Description(), testing::HasSubstr(ini.File().string()));
            EXPECT_THAT(error.Description(), testing::HasSubstr(".pgpass"));
            EXPECT_THAT(error.Description(), Not(testing::HasSubstr("secret")));
        }
    }
}

TEST(DataFolder, IsNotMadeEmptyWhereACopyWasBrokenOff) {
    const test::TempFolder folder;
    const std::filesystem::path& data = folder.Path();
    Workspace workspace;
    InitDataFolder(workspace, data, "US");
    std::filesystem::rename(data / "kestrava.mdb", data / "scratch");
    ReplaceFile(CopyMark(data), "");
    try {
        InitDataFolder(workspace, data, "US");
        ADD_FAILURE() << "an empty agency was made";
    } catch (const EngineError& error) {
        EXPECT_THAT(error.Description(), testing::HasSubstr("kvtool copy"));
        EXPECT_THAT(error.Description(), testing::HasSubstr(CopyMark(data).filename().string()));
    }
    EXPECT_FALSE(std::filesystem::exists(data / "kestrava.mdb"));
    // Broken off behind the last step all of it is there.
    std::filesystem::rename(data / "scratch", data / "KESTRAVA.MDB");
    EXPECT_THAT(InitDataFolder(workspace, data, "US"), IsEmpty());
}

}  // namespace
}  // namespace kv
