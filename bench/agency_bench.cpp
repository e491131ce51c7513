// The program on the large made-up agency: what an operator waits for, drawing included, and the making of
// visits. docs/performance.md keeps the budgets.
#include <QApplication>
#include <QLineEdit>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <sstream>
#include <stdexcept>

#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "scheduling/schedule_creation.h"
#include "screens/frmCLIFIND.h"
#include "screens/frmClient.h"
#include "screens/widgets/theme.h"
#include "screens/widgets/tool_bar.h"
#include "session/start.h"
#include "support/scripted_ports.h"
#include "tool/tool.h"

namespace kv {
namespace {

constexpr double kKibibytesInAMegabyte = 1000.0 / 1.024;

/// The agency in a folder of its own, which goes with the program.
class Agency {
  public:
    static Agency& Get() {
        if (!one_) {
            one_.reset(new Agency);
        }
        return *one_;
    }
    /// The windows go before the application does.
    static void End() { one_.reset(); }
    ~Agency() {
        screen_.reset();
        std::filesystem::remove_all(folder_);
    }
    Agency(const Agency&) = delete;
    Agency& operator=(const Agency&) = delete;

    const std::filesystem::path& Folder() const { return folder_; }
    std::filesystem::path Settings() const { return folder_ / "settings.ini"; }

    frmClient& Screen() {
        if (!screen_) {
            screen_ = std::make_unique<frmClient>(session_);
            screen_->Start();
            screen_->resize(1280, 800);
            Show();
        }
        return *screen_;
    }
    void Show() {
        screen_->show();
        QApplication::processEvents();
    }
    Session& session() {
        Screen();
        return session_;
    }
    test::ScriptedPorts ports;

  private:
    Agency()
        : folder_(std::filesystem::temp_directory_path() / ("kv_agency_bench_" + std::to_string(::getpid()))),
          settings_((std::filesystem::create_directories(folder_), Settings())),
          session_(settings_, ports.Handles()) {
        Tool({"init"});
        Tool({"demo", "--clients", "1500", "--caregivers", "2000"});
        Tool({"login", "--user", "DEMO"});
        ReadLogin(session_);
    }
    void Tool(std::vector<std::string> arguments) const {
        std::vector<std::string> all = {"--data",     (folder_ / "data").string(),
                                        "--settings", Settings().string(),
                                        "--now",      "2026-03-04 09:30:00"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        std::ostringstream out;
        std::ostringstream err;
        if (RunTool(all, out, err) != 0) {
            throw std::runtime_error(err.str());
        }
    }

    inline static std::unique_ptr<Agency> one_;
    std::filesystem::path folder_;
    SettingsStore settings_;
    Session session_;
    std::unique_ptr<frmClient> screen_;
};

/// From the start of the process to the first client drawn, by the program itself; the picture's file is
/// written too. The counter is its largest size in memory.
void BM_StartToFirstClient(benchmark::State& state) {
    const std::string picture = (Agency::Get().Folder() / "first.png").string();
    const std::string settings = Agency::Get().Settings().string();
    long kibibytes = 0;
    for (auto _ : state) {
        const pid_t child = ::fork();
        if (child == 0) {
            ::setenv("KV_SETTINGS", settings.c_str(), 1);
            ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
            std::freopen("/dev/null", "w", stdout);
            std::freopen("/dev/null", "w", stderr);
            ::execl(KV_CLI, KV_CLI, "--draw-without-display", picture.c_str(), nullptr);
            ::_exit(1);
        }
        int status = 0;
        rusage usage{};
        ::wait4(child, &status, 0, &usage);
        if (status != 0) {
            state.SkipWithError("kvCli failed");
            return;
        }
        kibibytes = std::max(kibibytes, usage.ru_maxrss);
    }
    state.counters["MB"] = static_cast<double>(kibibytes) / kKibibytesInAMegabyte;
}
BENCHMARK(BM_StartToFirstClient)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_RefreshListAndTree(benchmark::State& state) {
    frmClient& screen = Agency::Get().Screen();
    for (auto _ : state) {
        screen.RefreshClientList();
        QApplication::processEvents();
    }
}
BENCHMARK(BM_RefreshListAndTree)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_NextClient(benchmark::State& state) {
    frmClient& screen = Agency::Get().Screen();
    QAction* next = screen.Toolbar1->ActionOf(QStringLiteral("next"));
    QAction* first = screen.Toolbar1->ActionOf(QStringLiteral("first"));
    long moved = 0;
    for (auto _ : state) {
        (++moved % 500 == 0 ? first : next)->trigger();
        QApplication::processEvents();
    }
}
BENCHMARK(BM_NextClient)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_FindClientKey(benchmark::State& state) {
    frmCLIFIND screen(Agency::Get().session());
    screen.show();
    QApplication::processEvents();
    bool typed = false;
    for (auto _ : state) {
        screen.Text1->setText(typed ? QString() : QStringLiteral("s"));
        typed = !typed;
        QApplication::processEvents();
    }
}
BENCHMARK(BM_FindClientKey)->Unit(benchmark::kMillisecond)->UseRealTime();

/// Eight weeks after the agency was made: every assignment is brought up to the horizon, each visit durable.
void BM_CreateSchedules(benchmark::State& state) {
    constexpr double kDays = 56;
    Agency& agency = Agency::Get();
    Session& session = agency.session();
    const Date before = session.clock.Now();
    agency.ports.clock.Set(before.AddDays(kDays));
    long created = 0;
    for (auto _ : state) {
        ScheduleCreation creation(session);
        creation.RunAll(AllAssignments(session));
        created = creation.Created();
    }
    agency.ports.clock.Set(before);
    state.SetItemsProcessed(created);
}
BENCHMARK(BM_CreateSchedules)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace
}  // namespace kv

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    kv::theme::Apply(application);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    kv::Agency::End();
    return 0;
}
