// init, login and logout: what a seat needs before its first start.
#include <memory>
#include <ostream>
#include <tuple>

#include <fmt/format.h>

#include "base/platform.h"
#include "base/text.h"
#include "datastore/schema.h"
#include "session/data_folder.h"
#include "session/login_limits.h"
#include "tool/command.h"

namespace kv::tool {
namespace {

struct LoginOptions {
    std::string user, name, rights = "*", blocked, manager = "all", vendor;
    bool onTheRoad = false;
};

int Init(Context& context, const std::string& country) {
    const std::vector<std::string> created =
        InitDataFolder(context.session.workspace, context.DataFolder(), Upper(country));
    for (const std::string& name : SchemaNames())
        if (std::find(created.begin(), created.end(), DatabaseFile(name)) == created.end())
            context.err << DatabaseFile(name) << " exists and was left alone\n";
    context.Print({{"created", created}});
    return 0;
}

/// The agency's week-ending day, where the folder has an agency already.
std::string WeekEnding(Context& context) {
    const DatabasePlace main = PlaceOf(context.DataFolder(), "main");
    if (!Workspace::HasDatabase(main))
        return {};
    return context.session.workspace.OpenDatabase(main)->Lookup("select wkending from Agency").ToText();
}

/// Refused here, before anybody works with it: no save would go through.
void CheckLengths(const LoginOptions& login) {
    const std::tuple<const char*, const char*, const std::string&> options[] = {
        {"--user", "User", login.user},
        {"--vendor", "VENDOR", login.vendor},
        {"--manager", "Manager", login.manager},
    };
    for (const auto& [option, key, text] : options) {
        const auto most = static_cast<std::size_t>(LoginLimit(key).value());
        if (Length(text) > most)
            throw UnusableArgument(fmt::format("{} is {} characters long, and at most {} can be stored",
                                               option, Length(text), most));
    }
}

int Login(Context& context, const LoginOptions& login) {
    CheckLengths(login);
    SettingsStore& settings = context.session.settings;
    const std::pair<const char*, std::string> values[] = {
        {"DBloc", (context.DataFolder() / "").string()},
        {"User", login.user},
        {"user_name", login.name.empty() ? login.user : login.name},
        {"Screens", login.rights},
        {"Blocked", login.blocked},
        {"Manager", login.manager},
        {"VENDOR", login.vendor},
        {"OFF_LINE", login.onTheRoad ? "True" : "False"},
    };
    for (const auto& [key, value] : values)
        settings.Set("Setting", key, value);
    if (const std::string ending = WeekEnding(context); !ending.empty())
        settings.Set("Setting", "WKENDING", ending);
    settings.Set("STARTED", "STARTED", "Y");
    context.Print({{"settings", settings.File().string()}});
    return 0;
}

}  // namespace

Action PrepareInit(CLI::App& command) {
    auto country = std::make_shared<std::string>("US");
    command.add_option("--country", *country, "US or CANADA")
        ->capture_default_str()
        ->check(CLI::IsMember({"US", "CANADA"}, CLI::ignore_case));
    return [country](Context& context) { return Init(context, *country); };
}

Action PrepareLogin(CLI::App& command) {
    auto login = std::make_shared<LoginOptions>();
    command.add_option("--user", login->user, "The login id")->required();
    command.add_option("--name", login->name, "The name to show; left out, the id");
    command.add_option("--rights", login->rights, "The codes of the rights held")->capture_default_str();
    command.add_option("--blocked", login->blocked, "The codes of the rights taken away");
    command.add_option("--manager", login->manager, "The code of the manager whose clients are shown")
        ->capture_default_str();
    command.add_option("--vendor", login->vendor, "The vendor code of the installation");
    command.add_flag("--on-the-road", login->onTheRoad, "The seat works away from the office");
    return [login](Context& context) { return Login(context, *login); };
}

Action PrepareLogout(CLI::App& /*command*/) {
    return [](Context& context) {
        context.session.settings.Remove("STARTED", "STARTED");
        context.Print(Json::object());
        return 0;
    };
}

}  // namespace kv::tool
