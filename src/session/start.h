#pragma once
#include <string>
#include <vector>

#include "session/session.h"

namespace kv {

// The parts of the module's start and end that need no window, in the order in which the main screen runs
// them.

/// STARTED/STARTED is "Y": the menu program let this module start. Anything else ends the process at once.
bool IsStarted(SettingsStore& settings);
/// Reads the login (DBloc to Manager, COLOR) into the session; the lines of the program's log bear its user
/// from then on. Nothing is checked; a missing setting gives an empty value.
void ReadLogin(Session& session);
/// Reads the country from the INI file; "CANADA" in any case sets Session::Canada, a missing key reads as
/// "US".
void ReadCountry(Session& session);
/// Reads AgencyName and WKENDING from the open main.mdb, where they win over the settings. Throws
/// EngineError.
void ReadAgency(Session& session);
/// Opens kestrava.mdb and main.mdb; on main.mdb reads Agency (AgencyName, WKENDING wins over the setting);
/// gives each client without a mileage billing rate the agency's one, as every start does; opens rsEmployee
/// and rsChanges.
void OpenSessionData(Session& session);
/// Keeps the system's temporary folder without its characters of code below 1.
void ReadTempPath(Session& session);
/// Reads CLIENT/SORT and CLIENT/SORT_DESC. Returns the status bar's text "Current Sort: ...".
std::string ReadClientSort(Session& session);
/// CLIENT = "1" and Start = "YES": from here the menu program knows that the module is up.
void AnnounceUp(Session& session);
/// Closes the session's recordsets and databases and writes CLIENT = "O".
void AnnounceEnded(Session& session);
/// The setting Sch_Cli, a client id that another module left for this one; it is written back empty.
std::string TakeHandedClient(Session& session);

/// CMBmanager: "All Managers" and one item per manager, with the tag text "all~" + code + "~"...
struct ManagerList {
    std::vector<std::string> items;
    std::string tag;
    std::size_t chosen = 0;
};
/// Fills the list from MANAGER and limits the session: the item of Session::Manager is chosen; with none
/// Manager becomes "all".
ManagerList LoadManagerList(Session& session);

}  // namespace kv
