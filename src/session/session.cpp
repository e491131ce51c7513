#include "session/session.h"

#include "base/platform.h"
#include "session/data_folder.h"

namespace kv {

Session::Session(SettingsStore& settingsStore, Ports ports)
    : settings(settingsStore), clock(ports.clock), dialogs(ports.dialogs), progress(ports.progress) {
    workspace.SetClock([&now = clock] { return now.Now(); });
}

std::filesystem::path Session::DataFile(std::string_view name) const {
    std::filesystem::path place = NativePath(DBloc);
    for (const std::filesystem::path& piece : NativePath(name))
        place = FindNoCase(place, piece.string());
    return place;
}

IniFile Session::Ini() const {
    return IniOf(NativePath(DBloc));
}

DatabasePtr Session::OpenData(std::string_view name) {
    return workspace.OpenDatabase(PlaceOf(NativePath(DBloc), name));
}

void ReportEngineError(Session& session, const EngineError& error) {
    session.ShowMessageWindow(error.Description());
    session.progress.SetHourglass(false);
}

}  // namespace kv
