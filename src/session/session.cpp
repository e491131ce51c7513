#include "session/session.h"

#include "base/platform.h"

namespace kv {

Session::Session(SettingsStore& settingsStore, Ports ports)
    : settings(settingsStore), clock(ports.clock), dialogs(ports.dialogs), progress(ports.progress) {}

std::filesystem::path Session::DataFile(std::string_view name) const {
    return FindNoCase(NativePath(DBloc), NativePath(name).string());
}

DatabasePtr Session::OpenData(std::string_view name) {
    return workspace.OpenDatabase(DataFile(name));
}

void ReportEngineError(Session& session, const EngineError& error) {
    session.ShowMessageWindow(error.Description());
    session.progress.SetHourglass(false);
}

}  // namespace kv
