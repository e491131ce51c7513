#include "screens/help.h"

#include <filesystem>
#include <system_error>

#include "base/platform.h"

namespace kv {

void StartHelp(Session& session, const std::string& topic, const OpenFile& open) {
    const std::filesystem::path help = session.DataFile("kvhelp.exe");
    std::error_code none;
    if (!std::filesystem::exists(help, none)) {
        session.ShowMessageWindow("There is no help here: the file " + help.string() + " is missing.");
        return;
    }
    const bool opened = open ? open(help.string(), topic) : OpenWithDesktop(help.string(), topic);
    if (!opened) {
        session.ShowMessageWindow("The help file " + help.string() + " can not be opened.");
    }
}

}  // namespace kv
