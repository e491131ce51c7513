#include "session/start.h"

#include <algorithm>
#include <filesystem>
#include <optional>

#include "base/platform.h"
#include "base/text.h"
#include "datastore/try_step.h"

namespace kv {
namespace {

constexpr const char* kSetting = "Setting";
constexpr const char* kAllManagers = "All Managers";
constexpr double kDaysOfChanges = 60;

std::string WithSeparator(std::string folder) {
    if (!folder.empty() && folder.back() != '/' && folder.back() != '\\')
        folder += static_cast<char>(std::filesystem::path::preferred_separator);
    return folder;
}

/// Who is told of where another seat finds a row in this one's hands: "ANN (Ann Ames) at FRONT-DESK".
std::string SeatName(const Session& session) {
    const std::string user = session.User.empty() ? "a program without a login" : session.User;
    const std::string person = session.user_name.empty() ? "" : " (" + session.user_name + ")";
    const std::string machine = MachineName();
    return user + person + (machine.empty() ? "" : " at " + machine);
}

void GiveMileageRate(Session& session) {
    // An agency without a rate has none to give.
    if (const Value rate = session.dbMainCode->Lookup("select billmile_rate from Agency"); !rate.IsNull())
        session.dbMainWork->Execute(
            Sql("update clientpr set billmile_rate = {} where billmile_rate = 0", rate));
}

/// Runs steps that do not depend on each other's success and throws the first failure once all were tried.
class Steps {
  public:
    template <typename Step>
    void Try(Step step, CodePlace place = CodePlace::Here()) {
        try {
            step();
        } catch (const EngineError& error) {
            if (first_)
                LogSkipped(error, place);  // the operator is shown the first one alone
            else
                first_ = error;
        }
    }
    void Finish() const {
        if (first_)
            throw EngineError(*first_);
    }

  private:
    std::optional<EngineError> first_;
};

}  // namespace

bool IsStarted(SettingsStore& settings) {
    return settings.Get("STARTED", "STARTED") == "Y";
}

void ReadAgency(Session& session) {
    Recordset agency = session.dbMainCode->OpenRecordset("select * from Agency");
    session.AgencyName = agency.Text("ag_name");
    session.WKENDING = agency.Text("wkending");
}

void ReadLogin(Session& session) {
    struct LoginValue {
        const char* key;
        std::string Session::*field;
    };
    static constexpr LoginValue kLogin[] = {
        {"DBloc", &Session::DBloc},         {"User", &Session::User},         {"Screens", &Session::Screens},
        {"VENDOR", &Session::VENDOR},       {"WKENDING", &Session::WKENDING}, {"Blocked", &Session::Blocked},
        {"user_name", &Session::user_name}, {"Manager", &Session::Manager}};
    for (const LoginValue& value : kLogin)
        session.*value.field = session.settings.Get(kSetting, value.key);
    session.DBloc = WithSeparator(session.DBloc);
    session.COLOR = session.settings.GetBoolean(kSetting, "COLOR");
    SetLogUser(session.User);
}

void ReadCountry(Session& session) {
    session.Canada = Upper(session.Ini().Get("Kestrava System", "Country", "US", 50)) == "CANADA";
}

void OpenSessionData(Session& session) {
    session.workspace.SetSeat(SeatName(session));
    Steps steps;
    steps.Try([&] { session.dbMainWork = session.OpenData("kestrava.mdb"); });
    steps.Try([&] { session.dbMainCode = session.OpenData("main.mdb"); });
    if (session.dbMainWork && session.dbMainCode)
        steps.Try([&] {
            ReadAgency(session);
            GiveMileageRate(session);
        });
    if (session.dbMainWork) {
        steps.Try([&] { session.rsEmployee = session.dbMainWork->OpenRecordset("select * from Employee"); });
        steps.Try([&] {
            const Date from = session.clock.Today().AddDays(-kDaysOfChanges);
            session.rsChanges = session.dbMainWork->OpenRecordset(
                Sql("select * from changes where date > {}", from.DayNumber()));
        });
    }
    steps.Finish();
}

void ReadTempPath(Session& session) {
    std::string folder = UserTempFolder().string();
    folder.erase(std::remove(folder.begin(), folder.end(), '\0'), folder.end());
    session.TempPath = WithSeparator(folder);
}

std::string ReadClientSort(Session& session) {
    session.ClientSort = session.settings.Get("CLIENT", "SORT");
    session.ClientSortDescription = session.settings.Get("CLIENT", "SORT_DESC");
    if (session.ClientSort.empty()) {
        session.ClientSort = "client";
        session.ClientSortDescription = "Client ID";
    }
    return "Current Sort: " + session.ClientSortDescription;
}

void AnnounceUp(Session& session) {
    session.settings.Set(kSetting, "CLIENT", "1");
    session.settings.Set(kSetting, "Start", "YES");
}

void AnnounceEnded(Session& session) {
    session.rsChanges.Close();
    session.rsEmployee.Close();
    session.dbMainWork.reset();
    session.dbMainCode.reset();
    session.settings.Set(kSetting, "CLIENT", "O");
}

std::string TakeHandedClient(Session& session) {
    const std::string id = session.settings.Get(kSetting, "Sch_Cli");
    if (!id.empty())
        session.settings.Set(kSetting, "Sch_Cli", "");
    return id;
}

ManagerList LoadManagerList(Session& session) {
    ManagerList list;
    list.items = {kAllManagers};
    list.tag = "all~";
    Recordset managers = session.dbMainCode->OpenRecordset("select * from MANAGER order by description");
    for (; !managers.Eof(); managers.MoveNext()) {
        const std::string code = managers.Text("code");
        list.items.push_back(managers.Text("description"));
        list.tag += code + "~";
        if (list.chosen == 0 && EqualsNoCase(code, session.Manager))
            list.chosen = list.items.size() - 1;
    }
    if (list.items[list.chosen] == kAllManagers)
        session.Manager = "all";
    return list;
}

}  // namespace kv
