#pragma once
#include <filesystem>
#include <string>
#include <string_view>

#include "datastore/workspace.h"
#include "session/ini_file.h"
#include "session/ports.h"
#include "session/settings_store.h"

namespace kv {

/// The ports that a program hands in; they outlive the session.
struct Ports {
    Clock& clock;
    Dialogs& dialogs;
    Progress& progress;
};

/// What every routine may use. One per process, set once at start (start.h) except where noted; plain strings
/// unless said.
class Session {
  public:
    Session(SettingsStore& settings, Ports ports);

    SettingsStore& settings;
    Clock& clock;
    Dialogs& dialogs;
    Progress& progress;
    Workspace workspace;

    // Session values. DBloc always ends in its path separator.
    std::string DBloc, User, user_name, Screens, Blocked, Manager, VENDOR, WKENDING;
    bool COLOR = false;
    std::string ClientSort, ClientSortDescription;
    std::string Reply, PickedEmployee, PickedClient, FindCriteria;
    std::string TempPath;

    // What the main screen keeps open for the session.
    DatabasePtr dbMainWork;  ///< kestrava.mdb
    DatabasePtr dbMainCode;  ///< main.mdb
    Recordset rsEmployee;
    Recordset rsChanges;  ///< the changes of the last 60 days; change rows are appended to it
    std::string AgencyName;
    bool OffLine = false;  ///< On the Road
    bool CanSave = true;
    bool CanAdd = true;
    bool CanDelete = true;
    bool Canada = false;

    /// A file of the data folder, its name matched without regard to case.
    std::filesystem::path DataFile(std::string_view name) const;
    /// Opens a database of the data folder ("kestrava.mdb"), wherever it lies; closed by its opener. Throws
    /// EngineError.
    DatabasePtr OpenData(std::string_view name);
    IniFile Ini() const;
    void ShowMessageWindow(const std::string& text, bool beep = false) {
        dialogs.ShowMessageWindow(text, beep);
    }
};

/// The common error handler: shows the engine's words through ShowMessageWindow and clears the hourglass.
void ReportEngineError(Session& session, const EngineError& error);

}  // namespace kv
