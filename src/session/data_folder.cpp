#include "session/data_folder.h"

#include "base/platform.h"
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

void MakeDatabase(Workspace& workspace, const std::filesystem::path& file, const std::string& name) {
    const DatabasePtr made = workspace.CreateDatabase(file, SchemaScript(name));
    if (name != "main")
        return;
    try {
        AddAgency(*made);
    } catch (...) {
        // A main.mdb without its Agency row would count as existing from now on.
        std::filesystem::remove(file);
        throw;
    }
}

}  // namespace

std::string DatabaseFile(const std::string& name) {
    return name + ".mdb";
}

std::vector<std::string> InitDataFolder(Workspace& workspace, const std::filesystem::path& folder,
                                        const std::string& country) {
    std::filesystem::create_directories(folder);
    std::vector<std::string> created;
    for (const std::string& name : SchemaNames()) {
        const std::filesystem::path file = FindNoCase(folder, DatabaseFile(name));
        if (std::filesystem::exists(file))
            continue;
        MakeDatabase(workspace, file, name);
        created.push_back(DatabaseFile(name));
    }
    const IniFile ini(FindNoCase(folder, "KESTRAVA.INI"));
    if (ini.Get("Kestrava System", "Country", "").empty())
        ini.Set("Kestrava System", "Country", country);
    return created;
}

}  // namespace kv
