#include "session/rights.h"

#include "base/text.h"

namespace kv {
namespace {

struct Right {
    const std::string& screen;
    const std::string& description;
    const std::string& system;
    const std::string& defaultAccess;
};

/// Anybody holds the right.
bool IsOpen(const std::string& code) {
    return code == "+" || code == "*";
}

/// The first to ask for a code registers it. The blocked list has no say on this call, as it always was.
bool RegisterRight(Recordset& screens, const std::string& held, const Right& right) {
    screens.AddNew();
    screens.Set("access_code", right.defaultAccess);
    screens.Set("Description", right.description);
    screens.Set("Screen", right.screen);
    screens.Set("System", right.system);
    screens.Update();
    return ContainsNoCase(held, "*") || IsOpen(right.defaultAccess) ||
           ContainsNoCase(held, right.defaultAccess);
}

/// A code is held where it stands anywhere in the user's text, inside another code too, and an empty code in
/// any text that is not empty. "*" and "+" are everybody's, on the day they are registered as later.
bool HoldsRegistered(const Recordset& screens, const Session& session) {
    const std::string code = screens.Text("access_code");
    const bool granted = ContainsNoCase(session.Screens, "*") || IsOpen(code) ||
                         ContainsNoCase(session.Screens, code) ||
                         ContainsNoCase(session.Screens, "|" + screens.Text("access_ID") + "|");
    return granted && !ContainsNoCase(session.Blocked, code);
}

bool AskScreens(Session& session, const Right& right) {
    const DatabasePtr main = session.OpenData("main.mdb");
    Recordset screens = main->OpenRecordset("Screens");
    screens.FindFirst(Sql("screen = {}", right.screen));
    return screens.NoMatch() ? RegisterRight(screens, session.Screens, right)
                             : HoldsRegistered(screens, session);
}

}  // namespace

bool CheckScreenAccess(Session& session, const std::string& screen, bool showMessage,
                       const std::string& description, const std::string& system,
                       const std::string& defaultAccess) {
    if (ContainsNoCase(session.Screens, "*") && session.Blocked.empty())
        return true;
    const bool held = AskScreens(session, {screen, description, system, defaultAccess});
    if (!held && showMessage)
        session.dialogs.ShowInformation("Security Message",
                                        "Sorry, You do not have access to that option. Need " + description);
    return held;
}

}  // namespace kv
