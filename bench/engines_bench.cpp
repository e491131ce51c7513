// The same routines on the embedded engine and on a database server of this machine, both with what is
// committed on the disk, in one run: what the way to the server costs.
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <iostream>
#include <sstream>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <unistd.h>

#include "clients/client_moves.h"
#include "matching/suggestion.h"
#include "scheduling/schedule_creation.h"
#include "session/start.h"
#include "support/plain_form.h"
#include "support/scripted_ports.h"
#include "support/test_server.h"
#include "tool/tool.h"

namespace kv {
namespace {

namespace fs = std::filesystem;

constexpr const char* kNow = "2026-03-04 09:30:00";

void Tool(const fs::path& folder, std::vector<std::string> arguments) {
    std::vector<std::string> all = {
        "--data", folder.string(), "--settings", (folder / "settings.ini").string(), "--now", kNow};
    all.insert(all.end(), arguments.begin(), arguments.end());
    std::ostringstream out;
    std::ostringstream err;
    if (RunTool(all, out, err) != 0)
        throw std::runtime_error(arguments[0] + ": " + err.str());
}

double Milliseconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double Median(int runs, const std::function<void()>& work) {
    std::vector<double> times;
    for (int i = 0; i < runs; ++i)
        times.push_back(Milliseconds(work));
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

/// A session on one engine, and the routines to measure.
class Seat {
  public:
    explicit Seat(const fs::path& folder)
        : settings_((Tool(folder, {"login", "--user", "BENCH"}), folder / "settings.ini")),
          session_(settings_, ports_.Handles()) {
        ReadLogin(session_);
        OpenSessionData(session_);
        session_.ClientSort = "client";
    }

    void Search() {
        SuggestionRequest request;
        request.client = "00001";
        request.day = Date::FromCivil(2026, 3, 5);
        request.time = Date::FromTime(9, 0);
        request.hours = 4;
        const ClientNeeds needs = PrepareClient(session_, request);
        SearchCaregivers(session_, needs, request, {});
    }

    /// Every assignment, with the clock some weeks on; how many visits were made.
    long Schedule(int weeks) {
        ports_.clock.Set(ports_.clock.Now().AddDays(7.0 * weeks));
        ScheduleCreation creation(session_);
        creation.RunAll(AllAssignments(session_));
        return creation.Created();
    }

    void List() { test::PlainForm(session_, {"ALL CLIENTS"}).RefreshClientList(); }
    void Next(test::PlainForm& form) {
        MoveInClientList(session_, form, ListMove::Next);
        form.Show();
    }
    std::unique_ptr<test::PlainForm> Form() {
        return std::make_unique<test::PlainForm>(session_, ClientLimits{"ALL CLIENTS"});
    }

  private:
    test::ScriptedPorts ports_;
    SettingsStore settings_;
    Session session_;
};

struct Figures {
    double search = 0;
    double list = 0;
    double next = 0;
    double schedule = 0;
    long visits = 0;
};

Figures Measure(const fs::path& folder) {
    Seat seat(folder);
    Figures figures;
    constexpr int kRuns = 15;
    figures.search = Median(kRuns, [&] { seat.Search(); });
    figures.list = Median(kRuns, [&] { seat.List(); });
    const auto form = seat.Form();
    figures.next = Median(100, [&] { seat.Next(*form); });
    constexpr int kWeeks = 8;
    figures.schedule = Milliseconds([&] { figures.visits = seat.Schedule(kWeeks); });
    return figures;
}

int Run(long clients, long caregivers) {
    const fs::path root = fs::temp_directory_path() / fmt::format("kv_engines_{}", ::getpid());
    const fs::path embedded = root / "embedded";
    const fs::path remote = root / "server";
    fs::create_directories(embedded);
    fs::create_directories(remote);
    Tool(embedded, {"init"});
    const double demo = Milliseconds([&] {
        Tool(embedded,
             {"demo", "--clients", std::to_string(clients), "--caregivers", std::to_string(caregivers)});
    });
    test::TestServer& server = test::TestServer::OnDisk();
    server.MakeDatabase("agency");
    const double copy = Milliseconds([&] { Tool(embedded, {"copy", "--to", server.Connection("agency")}); });
    IniFile(remote / "KESTRAVA.INI").Set("Database", "Server", server.Connection("agency"));
    Tool(remote, {"init"});
    const Figures a = Measure(embedded);
    const Figures b = Measure(remote);
    fs::remove_all(root);

    std::cout << fmt::format("demo {:.0f} ms, copy to the server {:.0f} ms\n", demo, copy);
    std::cout << "| routine | embedded ms | server ms | times |\n|---|---|---|---|\n";
    const auto line = [](const char* name, double one, double two) {
        std::cout << fmt::format("| {} | {:.2f} | {:.2f} | {:.2f} |\n", name, one, two, two / one);
    };
    line("caregiver search", a.search, b.search);
    line("client list", a.list, b.list);
    line("next client", a.next, b.next);
    line("schedule creation", a.schedule, b.schedule);
    std::cout << fmt::format("{} and {} visits: {:.0f} and {:.0f} a second\n", a.visits, b.visits,
                             1000.0 * static_cast<double>(a.visits) / a.schedule,
                             1000.0 * static_cast<double>(b.visits) / b.schedule);
    return 0;
}

}  // namespace
}  // namespace kv

int main(int argc, char** argv) {
    long clients = 1500;
    long caregivers = 2000;
    CLI::App app("Measures both engines with the same routines");
    app.add_option("--clients", clients, "Clients of the made-up agency");
    app.add_option("--caregivers", caregivers, "Its caregivers");
    CLI11_PARSE(app, argc, argv);
    return kv::Run(clients, caregivers);
}
