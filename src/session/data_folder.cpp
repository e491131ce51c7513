#include "session/data_folder.h"

#include <algorithm>

#include "base/platform.h"
#include "base/text.h"
#include "datastore/connection_text.h"
#include "datastore/schema.h"
#include "session/ini_file.h"

namespace kv {
namespace {

struct ShiftWindow {
    int start, stop;  ///< hours
};
/// Day, evening and night.
constexpr ShiftWindow kShifts[] = {{7, 15}, {15, 23}, {23, 7}};
/// The numbers of the weekday's and the weekend's first window in the column names.
constexpr int kFirstWindows[] = {1, 6};

/// The one database that is not shared: the template of each seat's private copies.
constexpr const char* kTemplate = "tempassign";

void AddAgency(Database& main) {
    Recordset agency = main.OpenRecordset("Agency");
    agency.AddNew();
    agency.Set("ag_name", "Home Care Agency");
    agency.Set("wkending", "SAT");
    agency.Set("billmile_rate", Currency::FromDouble(0.5));
    agency.Set("sch_weeks", 4);
    for (const int first : kFirstWindows) {
        int window = first;
        for (const ShiftWindow& shift : kShifts) {
            const std::string number = std::to_string(window++);
            agency.Set("start" + number, Date::FromTime(shift.start, 0));
            agency.Set("stop" + number, Date::FromTime(shift.stop, 0));
        }
    }
    agency.Update();
}

void MakeDatabase(Workspace& workspace, const DatabasePlace& place, const std::string& name) {
    DatabasePtr made = workspace.CreateDatabase(place, SchemaScript(name));
    if (name != "main")
        return;
    try {
        AddAgency(*made);
    } catch (...) {
        // Without its Agency row it would count as existing from now on.
        made.reset();
        Workspace::DropDatabase(place);
        throw;
    }
}

}  // namespace

std::string DatabaseFile(const std::string& name) {
    return name + ".mdb";
}

const std::vector<std::string>& SharedDatabases() {
    static const std::vector<std::string> kShared = [] {
        std::vector<std::string> names = SchemaNames();
        std::erase(names, kTemplate);
        return names;
    }();
    return kShared;
}

std::string ServerOf(const std::filesystem::path& folder) {
    constexpr std::size_t kLongest = 4096;
    const IniFile ini = IniOf(folder);
    // Without it nobody knows where the agency works: files that lie here may be those of long ago.
    std::error_code none;
    if (std::filesystem::exists(ini.File(), none) && !ReadFile(ini.File()))
        throw EngineError(
            engine_error::kCannotOpenFile,
            "The file '" + ini.File().string() + "' can't be read. It tells where the databases are.");
    std::string server = ini.Get("Database", "Server", "", kLongest);
    RefusePassword(server, "The key Server in '" + ini.File().string() + "'");
    return server;
}

void RefusePassword(const std::string& server, const std::string& where) {
    if (ReadConnectionText(server).holdsPassword)
        throw EngineError(engine_error::kCannotOpenFile,
                          where +
                              " holds a password, which others could read there. Please take it out: each "
                              "user's password belongs into the user's own file ~/.pgpass.");
}

DatabasePlace PlaceOf(const std::filesystem::path& folder, std::string_view name) {
    const std::filesystem::path file = name;
    const std::string stem = Lower(file.stem().string());
    const bool database = !file.has_extension() || EqualsNoCase(file.extension().string(), ".mdb");
    const std::vector<std::string>& shared = SharedDatabases();
    if (database && std::find(shared.begin(), shared.end(), stem) != shared.end()) {
        if (std::string server = ServerOf(folder); !server.empty())
            return {std::move(server), stem};
    }
    return FindNoCase(folder, file.has_extension() ? file.string() : DatabaseFile(stem));
}

std::filesystem::path CopyMark(const std::filesystem::path& folder) {
    return folder / ".kvtool-moving";
}

bool HoldsBrokenCopy(const std::filesystem::path& folder) {
    return std::filesystem::exists(CopyMark(folder)) &&
           !std::filesystem::exists(FindNoCase(folder, DatabaseFile(kLastMoved)));
}

std::vector<std::string> InitDataFolder(Workspace& workspace, const std::filesystem::path& folder,
                                        const std::string& country) {
    // Empty databases beside some of the real ones would pass for the agency.
    if (HoldsBrokenCopy(folder))
        throw EngineError(engine_error::kCannotOpenFile,
                          "A copy to '" + folder.string() +
                              "' was broken off and only some of its databases are there. Run 'kvtool copy' "
                              "to this folder again. For an empty agency remove the databases and '" +
                              CopyMark(folder).filename().string() + "' from it first.");
    std::filesystem::create_directories(folder);
    std::vector<std::string> created;
    for (const std::string& name : SchemaNames()) {
        const DatabasePlace place = PlaceOf(folder, name);
        if (Workspace::HasDatabase(place))
            continue;
        MakeDatabase(workspace, place, name);
        created.push_back(DatabaseFile(name));
    }
    const IniFile ini = IniOf(folder);
    if (ini.Get("Kestrava System", "Country", "").empty())
        ini.Set("Kestrava System", "Country", country);
    return created;
}

}  // namespace kv
