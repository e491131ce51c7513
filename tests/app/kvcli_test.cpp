// The program itself, run as the menu program runs it.
#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/wait.h>
#include <unistd.h>

#include "base/platform.h"
#include "support/test_agency.h"
#include "support/test_server.h"

namespace kv {
namespace {

namespace fs = std::filesystem;

struct Result {
    int status = -1;
    std::string out;
    std::string err;
};

class Program : public testing::Test {
  protected:
    /// Runs kvCli with no display but what `environment` names.
    Result Run(const std::string& arguments, const std::string& environment = {}) {
        const fs::path out = folder_.Path() / "out";
        const fs::path err = folder_.Path() / "err";
        const std::string command = "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM XDG_RUNTIME_DIR='" +
                                    folder_.Path().string() + "' KV_SETTINGS='" + Settings().string() +
                                    "' KV_NOW='2026-03-04 09:30:00' " + environment + " " + KV_CLI + " " +
                                    arguments + " >'" + out.string() + "' 2>'" + err.string() +
                                    "' </dev/null";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(out).value_or(""),
                ReadFile(err).value_or("")};
    }
    fs::path Settings() { return agency_.session().settings.File(); }
    std::string Picture() { return (folder_.Path() / "screen.png").string(); }
    std::string Draw() { return "--draw-without-display '" + Picture() + "'"; }
    /// The states of the data folder's files, to tell whether anything touched them.
    std::string FolderState() {
        std::ostringstream state;
        for (const auto& entry : fs::directory_iterator(agency_.Folder())) {
            const std::string name = entry.path().filename().string();
            if (name.ends_with(".mdb")) {
                state << name << ' ' << std::hash<std::string>()(ReadFile(entry.path()).value_or("")) << '\n';
            }
        }
        return state.str();
    }

    test::TestAgency agency_;
    test::TempFolder folder_;
};

TEST_F(Program, EndsAtOnceUnlessTheMenuProgramStartedIt) {
    agency_.session().settings.Set("STARTED", "STARTED", "N");
    agency_.session().settings.Set("Setting", "DBloc", "/nowhere/");
    const Result result = Run("");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out + result.err, "");
}

TEST_F(Program, RefusesALoginThatNoColumnTakes) {
    agency_.session().settings.Set("Setting", "VENDOR", "12345678901");
    const std::string before = FolderState();
    const Result result = Run(Draw());
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(
        result.err,
        "kvCli: The login's vendor code is 11 characters long, and at most 10 can be stored. Please log "
        "in again with a shorter one.\n");
    EXPECT_FALSE(fs::exists(Picture()));
    EXPECT_EQ(FolderState(), before);
}

TEST_F(Program, NeedsADisplayThatAnswers) {
    const std::string before = FolderState();
    for (const char* environment : {"", "DISPLAY=:987654", "DISPLAY=far.example.org:0",
                                    "WAYLAND_DISPLAY=wayland-9", "DISPLAY=:987654 QT_QPA_PLATFORM=xcb"}) {
        const Result result = Run("", environment);
        EXPECT_EQ(result.status, 1) << environment;
        EXPECT_EQ(result.err, "kvCli: There is no display on this machine to show a window on.\n")
            << environment;
    }
    EXPECT_EQ(FolderState(), before);
}

TEST_F(Program, DrawsTheMainScreenWithoutADisplay) {
    agency_.Client("00001", "Grant", "Lee");
    const Result result = Run(Draw());
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, Picture() + "\n");
    const std::string png = ReadFile(Picture()).value_or("");
    ASSERT_GT(png.size(), 10000U);
    EXPECT_EQ(png.substr(1, 3), "PNG");
    const auto number = [&](std::size_t at) {
        return (static_cast<unsigned char>(png[at + 2]) << 8) + static_cast<unsigned char>(png[at + 3]);
    };
    EXPECT_EQ(number(16), 1280);
    EXPECT_EQ(number(20), 800);
    EXPECT_EQ(SettingsStore(Settings()).Get("Setting", "CLIENT"), "O");
    EXPECT_EQ(Run("--draw-without-display /nowhere/at/all.png").status, 1);
    EXPECT_EQ(Run(Draw(), "QT_QPA_PLATFORM=offscreen").out, Picture() + "\n");
}

TEST_F(Program, SaysWhyItCanNotReachTheServer) {
    agency_.session().Ini().Set("Database", "Server", "host=/nowhere dbname=agency");
    const Result result = Run(Draw());
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    EXPECT_NE(result.err.find("The database server can't be reached"), std::string::npos) << result.err;
}

TEST_F(Program, SaysWhyItCanNotStart) {
    if (test::TestServer::Wanted())
        GTEST_SKIP() << "about files";
    const fs::path data = agency_.Folder();
    agency_.session().dbMainWork.reset();
    const std::string whole = ReadFile(data / "kestrava.mdb").value_or("");
    struct Case {
        const char* what;
        std::string content;
    };
    const std::string access("\0\1\0\0Standard Jet DB\0", 20);
    for (const Case& each : {Case{"no database", "Dear Sir or Madam"},
                             Case{"an Access file", access + std::string(4096, '\0')}, Case{"missing", ""}}) {
        fs::remove(data / "kestrava.mdb");
        if (!each.content.empty()) {
            std::ofstream(data / "kestrava.mdb", std::ios::binary) << each.content;
        }
        const Result result = Run(Draw());
        EXPECT_EQ(result.status, 1) << each.what;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
        EXPECT_NE(result.err.find("kestrava.mdb"), std::string::npos) << result.err;
        EXPECT_EQ(ReadFile(data / "kestrava.mdb").value_or(""), each.content) << each.what;
        EXPECT_FALSE(fs::exists(Picture()));
    }
    std::ofstream(data / "kestrava.mdb", std::ios::binary) << whole;
    EXPECT_EQ(Run(Draw()).status, 0);
}

TEST_F(Program, RefusesAnImpossibleMomentAndUnknownOptions) {
    EXPECT_EQ(Run("", "KV_NOW=2026-02-30").status, 2);
    EXPECT_NE(Run("--no-such-option").status, 0);
}

TEST_F(Program, EndsWithTheSystemAndTellsTheMenu) {
    agency_.Client("00001", "Grant", "Lee");
    SettingsStore settings(Settings());
    const int watch = ::inotify_init1(IN_CLOEXEC);
    ASSERT_GE(::inotify_add_watch(watch, Settings().parent_path().c_str(), IN_MOVED_TO), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        ::setenv("KV_SETTINGS", Settings().c_str(), 1);
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
        ::execl(KV_CLI, "kvCli", nullptr);
        ::_exit(127);
    }
    constexpr int kMostMilliseconds = 30000;
    pollfd changes{watch, POLLIN, 0};
    std::array<char, 4096> events{};
    while (settings.Get("Setting", "CLIENT") != "1" && ::poll(&changes, 1, kMostMilliseconds) > 0) {
        ASSERT_GT(::read(watch, events.data(), events.size()), 0);
    }
    ::close(watch);
    EXPECT_EQ(settings.Get("Setting", "CLIENT"), "1");
    ::kill(child, SIGTERM);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status)) << "signal " << WTERMSIG(status);
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(settings.Get("Setting", "CLIENT"), "O");
}

}  // namespace
}  // namespace kv
