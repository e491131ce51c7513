#include "session/user_defaults.h"

#include "base/text.h"

namespace kv {
namespace {

constexpr const char* kMark = "DEFAULT~";

std::string Prefix(const std::string& user, const std::string& module, const std::string& screen) {
    return user + "|" + module + "|" + screen + "|";
}

/// "Always", "Never" or "Prompt".
std::string OptionOf(Database& work, const std::string& prefix, bool skipOptionCheck) {
    if (skipOptionCheck)
        return "Always";
    const Recordset rows =
        work.OpenRecordset(Sql("select * from user_Default_options where master_name = {}", prefix));
    return rows.Eof() ? "Always" : rows.Text("option_text");
}

}  // namespace

void LoadUserDefaults(Session& session, const std::string& user, const std::string& module,
                      const std::string& screen, const std::vector<DefaultControl>& controls,
                      bool skipOptionCheck) {
    const std::string prefix = Prefix(user, module, screen);
    const DatabasePtr work = session.OpenData("kestrava.mdb");
    if (OptionOf(*work, prefix, skipOptionCheck) == "Never")
        return;
    Recordset settings = work->OpenRecordset("select * from Default_settings");
    for (const DefaultControl& control : controls) {
        settings.FindFirst(Sql("master_name = {}", prefix + control.name));
        if (settings.NoMatch()) {
            control.setTag(kMark + control.content());
            continue;
        }
        const std::string text = settings.Text("field_text");
        control.enter(text);
        control.setTag(kMark + Trim(text));
    }
}

void SaveUserDefaults(Session& session, const std::string& user, const std::string& module,
                      const std::string& screen, const std::vector<DefaultControl>& controls,
                      bool skipOptionCheck) {
    const std::string prefix = Prefix(user, module, screen);
    const DatabasePtr work = session.OpenData("kestrava.mdb");
    const std::string option = OptionOf(*work, prefix, skipOptionCheck);
    if (option == "Never")
        return;
    bool asked = option != "Prompt";
    Recordset settings = work->OpenRecordset("select * from Default_settings");
    for (const DefaultControl& control : controls) {
        const std::string content = control.content();
        const std::vector<std::string> pieces = Split(control.tag(), '~');
        if (pieces.size() > 1 && Trim(content) == pieces[1])
            continue;
        if (!asked &&
            !session.dialogs.AskQuestion("The Default Settings have changed. Would you like to save them?"))
            return;
        asked = true;
        const std::string name = prefix + control.name;
        settings.FindFirst(Sql("master_name = {}", name));
        if (settings.NoMatch())
            settings.AddNew();
        else
            settings.Edit();
        settings.Set("master_name", name);
        settings.Set("field_text", content);
        settings.Update();
    }
}

}  // namespace kv
