#pragma once
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "session/session.h"

namespace kv::tool {

using Json = nlohmann::ordered_json;

/// The work was refused or failed: exit status 1, the words behind "error: ".
class Refused : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// An argument can't be used: exit status 2.
class UnusableArgument : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// What every command works with.
struct Context {
    Session& session;
    std::ostream& out;
    std::ostream& err;

    /// The data folder of --data or the login. Throws Refused when neither names one.
    std::filesystem::path DataFolder() const;
    /// A database of the data folder by its short name ("main"), or by a path.
    DatabasePtr OpenDatabase(const std::string& name) const;
    /// Opens kestrava and main for the session and reads what the rules take from the agency's row. Throws
    /// LoginTooLong, EngineError.
    void OpenWork() const;
    /// Writes the command's one document.
    void Print(const Json& document) const;
};

/// Does the work once the arguments are read; answers the exit status.
using Action = std::function<int(Context&)>;

/// One command: its options are added to `command`, and the action reads what was given to them.
struct Command {
    const char* name;
    const char* description;
    Action (*prepare)(CLI::App& command);
};

/// All commands, in the order of the help text.
const std::vector<Command>& Commands();

Action PrepareInit(CLI::App& command);
Action PrepareDemo(CLI::App& command);
Action PrepareLogin(CLI::App& command);
Action PrepareLogout(CLI::App& command);
Action PrepareLoad(CLI::App& command);
Action PrepareDump(CLI::App& command);
Action PrepareCopy(CLI::App& command);
Action PrepareImportMdb(CLI::App& command);
Action PrepareCheck(CLI::App& command);
Action PrepareSql(CLI::App& command);
Action PrepareNextId(CLI::App& command);
Action PrepareSchedule(CLI::App& command);
Action PrepareConflicts(CLI::App& command);
Action PrepareWillWork(CLI::App& command);
Action PrepareWeekHours(CLI::App& command);
Action PrepareCobilling(CLI::App& command);
Action PrepareAuthorizationUse(CLI::App& command);
Action PrepareAmount(CLI::App& command);
Action PrepareSuggest(CLI::App& command);

/// A day "YYYY-MM-DD" or a time "HH:MM" from the arguments. Throws UnusableArgument.
Date DayArgument(const std::string& text);
Date TimeArgument(const std::string& text);

/// Adds --db with its default kestrava; the name lands in `name`.
void AddDatabaseOption(CLI::App& command, std::string& name);

}  // namespace kv::tool
