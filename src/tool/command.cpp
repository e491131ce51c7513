#include "tool/command.h"

#include <ostream>

#include "base/numbers.h"
#include "base/platform.h"
#include "base/text.h"
#include "session/data_folder.h"
#include "session/login_limits.h"
#include "session/start.h"

namespace kv::tool {

const std::vector<Command>& Commands() {
    static const std::vector<Command> commands = {
        {"init", "Make the data folder with empty databases", PrepareInit},
        {"demo", "Fill an empty data folder with a made-up agency", PrepareDemo},
        {"login", "Write the settings that the menu program leaves", PrepareLogin},
        {"logout", "Take the login's STARTED mark away", PrepareLogout},
        {"load", "Add the rows of a CSV file to a table", PrepareLoad},
        {"dump", "Write a table as CSV, ordered by its key", PrepareDump},
        {"copy", "Copy all databases to an empty data folder or database server", PrepareCopy},
        {"import-mdb", "Read Access files into the databases of the data folder", PrepareImportMdb},
        {"check", "Test the databases", PrepareCheck},
        {"sql", "Run one statement", PrepareSql},
        {"next-id", "The id that a new client would get", PrepareNextId},
        {"schedule", "Make the visits of assignments up to the horizon", PrepareSchedule},
        {"conflicts", "How many Non-Visit rows of a caregiver a visit runs into", PrepareConflicts},
        {"will-work", "Whether a caregiver declared that she works over a visit", PrepareWillWork},
        {"week-hours", "The hours of a caregiver in the week of a day", PrepareWeekHours},
        {"cobilling", "The client's percentage of what is billed", PrepareCobilling},
        {"authorization-use", "What is authorized, scheduled, worked and left", PrepareAuthorizationUse},
        {"amount", "What a payer is billed or a caregiver is paid for a visit", PrepareAmount},
        {"suggest", "The caregivers who fit a visit and are free for it", PrepareSuggest},
    };
    return commands;
}

std::filesystem::path Context::DataFolder() const {
    if (session.DBloc.empty())
        throw Refused("No data folder is known; name it with --data, or log in");
    return NativePath(session.DBloc);
}

DatabasePtr Context::OpenDatabase(const std::string& name) const {
    for (const std::string& known : SharedDatabases())
        if (EqualsNoCase(name, known))
            return session.workspace.OpenDatabase(PlaceOf(DataFolder(), known));
    const std::filesystem::path file = NativePath(name);
    return session.workspace.OpenDatabase(PlaceOf(file.parent_path(), file.filename().string()));
}

void Context::OpenWork() const {
    CheckLogin(session);
    session.dbMainWork = OpenDatabase("kestrava");
    session.dbMainCode = OpenDatabase("main");
    ReadAgency(session);
}

void Context::Print(const Json& document) const {
    out << document.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
}

namespace {

Date DateArgument(const std::string& text, std::size_t length, const char* form) {
    const std::optional<Date> date = text.size() == length ? ParseDate(text) : std::nullopt;
    if (!date)
        throw UnusableArgument("\"" + text + "\" is not of the form " + form);
    return *date;
}

}  // namespace

Date DayArgument(const std::string& text) {
    return DateArgument(text, std::string_view("YYYY-MM-DD").size(), "YYYY-MM-DD");
}

Date TimeArgument(const std::string& text) {
    return DateArgument(text, std::string_view("HH:MM").size(), "HH:MM");
}

void AddDatabaseOption(CLI::App& command, std::string& name) {
    name = "kestrava";
    command.add_option("--db", name, Join(SharedDatabases(), ", ") + ", or a path")->capture_default_str();
}

}  // namespace kv::tool
