#include "tool/tool.h"

#include <algorithm>
#include <ostream>

#include "base/platform.h"
#include "base/program_log.h"
#include "session/start.h"
#include "tool/command.h"
#include "tool/terminal.h"

namespace kv {
namespace {

using namespace tool;

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kUnusable = 2;

/// The options in front of the command.
struct GeneralOptions {
    std::string data, settings, now;
    bool yes = false;
    bool no = false;
};

void AddGeneralOptions(CLI::App& app, GeneralOptions& options) {
    app.add_option("--data", options.data, "The data folder; left out, the setting DBloc");
    app.add_option("--settings", options.settings, "The per-user settings store; left out, the user's own");
    app.add_option("--now", options.now, "The moment to take as now, \"YYYY-MM-DD HH:MM:SS\"");
    CLI::Option* yes = app.add_flag("--yes", options.yes, "Answer every question with Yes");
    app.add_flag("--no", options.no, "Answer every question with No, as without either")->excludes(yes);
}

SystemClock ClockOf(const GeneralOptions& options) {
    try {
        return options.now.empty() ? SystemClockFromEnvironment() : FixedClock(options.now);
    } catch (const std::invalid_argument& error) {
        throw UnusableArgument(error.what());
    }
}

int RunAction(const Action& action, const GeneralOptions& options, std::ostream& out, std::ostream& err) {
    SystemClock clock = ClockOf(options);
    TerminalDialogs dialogs(err, options.yes);
    TerminalProgress progress(err);
    SettingsStore settings(options.settings.empty() ? SettingsStore::DefaultFile()
                                                    : std::filesystem::path(options.settings));
    const ProgramLog log(settings.File().parent_path(), "kvtool");
    Session session(settings, {clock, dialogs, progress});
    ReadLogin(session);
    if (!options.data.empty())
        session.DBloc = (std::filesystem::absolute(NativePath(options.data)) / "").string();
    Context context{session, out, err};
    return action(context);
}

int ParseAndRun(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    CLI::App app("The command-line companion of kvCli", "kvtool");
    app.fallthrough();
    app.require_subcommand(1);
    GeneralOptions options;
    AddGeneralOptions(app, options);
    Action chosen;
    for (const Command& command : Commands()) {
        CLI::App& added = *app.add_subcommand(command.name, command.description);
        added.callback([&chosen, action = command.prepare(added)] { chosen = action; });
    }
    try {
        // The parser takes its arguments from the back.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::CallForHelp&) {
        const auto& used = app.get_subcommands();
        out << (used.empty() ? app : *used.front()).help();
        return kDone;
    } catch (const CLI::ParseError& error) {
        throw UnusableArgument(error.what());
    }
    return RunAction(chosen, options, out, err);
}

}  // namespace

int RunTool(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    try {
        return ParseAndRun(arguments, out, err);
    } catch (const UnusableArgument& error) {
        err << "error: " << error.what() << '\n';
        return kUnusable;
    } catch (const EngineError& error) {
        err << "error " << error.Number() << ": " << error.Description() << '\n';
    } catch (const std::exception& error) {
        err << "error: " << error.what() << '\n';
    }
    return kFailed;
}

}  // namespace kv
