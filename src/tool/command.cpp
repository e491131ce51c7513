#include "tool/command.h"

#include <ostream>

#include "base/platform.h"
#include "base/text.h"
#include "session/data_folder.h"

namespace kv::tool {

const std::vector<Command>& Commands() {
    static const std::vector<Command> commands = {
        {"init", "Make the data folder with empty databases", PrepareInit},
        {"demo", "Fill an empty data folder with a made-up agency", PrepareDemo},
        {"login", "Write the settings that the menu program leaves", PrepareLogin},
        {"logout", "Take the login's STARTED mark away", PrepareLogout},
        {"load", "Add the rows of a CSV file to a table", PrepareLoad},
        {"dump", "Write a table as CSV, ordered by its key", PrepareDump},
        {"copy", "Copy all databases to an empty data folder", PrepareCopy},
        {"check", "Test the databases", PrepareCheck},
        {"sql", "Run one statement", PrepareSql},
        {"next-id", "The id that a new client would get", PrepareNextId},
    };
    return commands;
}

std::filesystem::path Context::DataFolder() const {
    if (session.DBloc.empty())
        throw Refused("No data folder is known; name it with --data, or log in");
    RefuseServer(session.Ini());
    return NativePath(session.DBloc);
}

DatabasePtr Context::OpenDatabase(const std::string& name) const {
    static const std::vector<std::string> kShortNames = {"kestrava", "main", "archive", "trans"};
    for (const std::string& known : kShortNames)
        if (EqualsNoCase(name, known))
            return session.workspace.OpenDatabase(FindNoCase(DataFolder(), DatabaseFile(known)));
    return session.workspace.OpenDatabase(NativePath(name));
}

void Context::Print(const Json& document) const {
    out << document.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
}

void AddDatabaseOption(CLI::App& command, std::string& name) {
    name = "kestrava";
    command.add_option("--db", name, "kestrava, main, archive, trans, or a path")->capture_default_str();
}

}  // namespace kv::tool
