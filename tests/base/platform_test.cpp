#include "base/platform.h"

#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <system_error>
#include <thread>

#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include "base/text.h"

namespace kv {
namespace {

namespace fs = std::filesystem;

/// An environment variable for one scope.
class Variable {
  public:
    Variable(const char* name, const std::string& value) : name_(name) {
        if (const char* old = std::getenv(name))
            old_ = old;
        ::setenv(name, value.c_str(), 1);
    }
    ~Variable() {
        if (old_)
            ::setenv(name_, old_->c_str(), 1);
        else
            ::unsetenv(name_);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

  private:
    const char* name_;
    std::optional<std::string> old_;
};

class Platform : public testing::Test {
  protected:
    Platform() {
        std::string pattern = (fs::temp_directory_path() / "kv-platform-XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data());
    }
    ~Platform() override { fs::remove_all(folder_); }
    fs::path folder_;
};

mode_t ModeOf(const fs::path& file) {
    struct stat about {};
    return ::stat(file.c_str(), &about) == 0 ? about.st_mode & 07777 : 0;
}

TEST_F(Platform, FilesAreReplacedWhole) {
    const fs::path file = folder_ / "settings.ini";
    EXPECT_EQ(ReadFile(file), std::nullopt);
    ReplaceFile(file, "first", true);
    EXPECT_EQ(ReadFile(file), "first");
    EXPECT_EQ(ModeOf(file), 0600U);
    fs::permissions(file, fs::perms(0640));
    const std::string large(300000, 'x');
    ReplaceFile(file, large);
    EXPECT_EQ(ReadFile(file), large);
    EXPECT_EQ(ModeOf(file), 0640U);
    fs::create_symlink(file, folder_ / "link.ini");
    ReplaceFile(folder_ / "link.ini", "through");
    EXPECT_EQ(ReadFile(file), "through");
    EXPECT_TRUE(fs::is_symlink(folder_ / "link.ini"));
    EXPECT_THROW(ReplaceFile(folder_ / "missing" / "x", ""), std::system_error);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()), 2)
        << "a working file was left";
}

TEST_F(Platform, NamesAreFoundWithoutRegardToCase) {
    std::ofstream(folder_ / "Main.MDB").put('x');
    EXPECT_EQ(FindNoCase(folder_, "main.mdb"), folder_ / "Main.MDB");
    EXPECT_EQ(FindNoCase(folder_, "other.mdb"), folder_ / "other.mdb");
    std::ofstream(folder_ / "main.mdb").put('x');
    EXPECT_EQ(FindNoCase(folder_, "main.mdb"), folder_ / "main.mdb");
    EXPECT_EQ(NativePath("PICTURES\\CLIENT/1.jpg"), fs::path("PICTURES/CLIENT/1.jpg"));
}

TEST_F(Platform, BytesAreLockedBetweenHandles) {
    ByteLocks a(folder_ / "rows.lck");
    auto b = std::make_unique<ByteLocks>(folder_ / "rows.lck");
    EXPECT_TRUE(a.TryLock(7));
    EXPECT_TRUE(a.TryLock(7));
    EXPECT_FALSE(b->TryLock(7));
    EXPECT_TRUE(b->TryLock(8));
    EXPECT_FALSE(a.TryLock(8));
    EXPECT_TRUE(a.TryLock(UINT64_MAX));
    a.Unlock(7);
    EXPECT_TRUE(b->TryLock(7));
    b.reset();
    EXPECT_TRUE(a.TryLock(7));
    EXPECT_TRUE(a.TryLock(8));
    EXPECT_THROW(ByteLocks(folder_ / "missing" / "x"), std::system_error);
}

TEST_F(Platform, AKilledProcessLetsItsLocksGo) {
    const fs::path file = folder_ / "rows.lck";
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        ByteLocks held(file);
        const char locked = held.TryLock(5) ? 'y' : 'n';
        if (::write(ready[1], &locked, 1) == 1)
            ::pause();
        ::_exit(0);
    }
    char locked = '?';
    ASSERT_EQ(::read(ready[0], &locked, 1), 1);
    ASSERT_EQ(locked, 'y');
    ByteLocks mine(file);
    EXPECT_FALSE(mine.TryLock(5));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    EXPECT_TRUE(mine.TryLock(5));
    ::close(ready[0]);
    ::close(ready[1]);
}

TEST_F(Platform, TheDesktopOpensWithoutBeingWaitedFor) {
    // The stand-in reports through a pipe by name.
    const fs::path answers = folder_ / "answers";
    ASSERT_EQ(::mkfifo(answers.c_str(), 0600), 0);
    std::ofstream(folder_ / "xdg-open") << "#!/bin/sh\necho \"$@\" > " << answers << "\n";
    fs::permissions(folder_ / "xdg-open", fs::perms(0755));
    const Variable path("PATH", folder_.string() + ":/usr/bin:/bin");
    const auto answer = [&] {
        // To its end, or the next look would find this stand-in with the pipe still open and nothing in it.
        std::ifstream pipe(answers);
        std::string line, rest;
        std::getline(pipe, line);
        while (std::getline(pipe, rest)) {
        }
        return line;
    };
    EXPECT_TRUE(OpenWithDesktop("mailto:a b@x.org?subject='$HOME'"));
    EXPECT_EQ(answer(), "mailto:a b@x.org?subject='$HOME'");
    EXPECT_TRUE(OpenWithDesktop("-help"));
    EXPECT_EQ(answer(), "./-help");
    EXPECT_TRUE(OpenWithDesktop((folder_ / "xdg-open").string(), "client"));
    EXPECT_EQ(answer(), "client");
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "a child was left behind";
    EXPECT_FALSE(OpenWithDesktop((folder_ / "kvhelp.exe").string(), "client"));
    EXPECT_FALSE(OpenWithDesktop(""));
}

/// A socket that answers and shows everybody out: a display server that does not take this user.
class ClosedDoor {
  public:
    /// A name that begins with a NUL stands in memory instead of the file system.
    explicit ClosedDoor(const std::string& name) : handle_(::socket(AF_UNIX, SOCK_STREAM, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        name.copy(address.sun_path, sizeof address.sun_path);
        const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());
        bound_ = ::bind(handle_, reinterpret_cast<const sockaddr*>(&address), length) == 0 &&
                 ::listen(handle_, 4) == 0;
        doorman_ = std::thread([this] {
            for (int visitor = 0; (visitor = ::accept(handle_, nullptr, nullptr)) >= 0;)
                ::close(visitor);
        });
    }
    ~ClosedDoor() {
        ::shutdown(handle_, SHUT_RDWR);
        doorman_.join();
        ::close(handle_);
    }
    ClosedDoor(const ClosedDoor&) = delete;
    ClosedDoor& operator=(const ClosedDoor&) = delete;
    bool IsBound() const { return bound_; }

  private:
    int handle_;
    bool bound_ = false;
    std::thread doorman_;
};

TEST_F(Platform, OnlyALocalDisplayThatAnswersCounts) {
    const std::string number = std::to_string(100000 + ::getpid());
    const ClosedDoor server(std::string(1, '\0') + "/tmp/.X11-unix/X" + number);
    ASSERT_TRUE(server.IsBound());
    const Variable noWayland("WAYLAND_DISPLAY", "");
    for (const std::string& display :
         {std::string(), ":" + std::to_string(900000 + ::getpid()), ":" + number, "unix:" + number,
          std::string("host:0"), std::string("localhost:10.0"), std::string(":"), std::string(":../x")}) {
        const Variable set("DISPLAY", display);
        EXPECT_FALSE(HasLocalDisplay()) << display;
    }
    const Variable runtime("XDG_RUNTIME_DIR", folder_);
    const Variable wayland("WAYLAND_DISPLAY", "wayland-7");
    EXPECT_FALSE(FindLocalDisplays().wayland);
    const ClosedDoor compositor((folder_ / "wayland-7").string());
    EXPECT_TRUE(FindLocalDisplays().wayland);
    EXPECT_TRUE(HasLocalDisplay());
}

TEST_F(Platform, TheTemporaryFolderIsTheUsersAlone) {
    const Variable temporary("TMPDIR", folder_.string());
    const fs::path own = UserTempFolder();
    EXPECT_EQ(own.parent_path(), folder_);
    EXPECT_EQ(fs::status(own).permissions(), fs::perms::owner_all);
    EXPECT_EQ(UserTempFolder(), own) << "the same one each time";
    // One that others may write into, or a link laid in its place, is not taken.
    fs::permissions(own, fs::perms::all);
    const fs::path another = UserTempFolder();
    EXPECT_NE(another, own);
    EXPECT_EQ(fs::status(another).permissions(), fs::perms::owner_all);
    fs::remove(own);
    fs::create_symlink(another, own);
    EXPECT_NE(UserTempFolder(), own);
}

TEST_F(Platform, TheConfigurationFolderIsTheUsers) {
    const Variable home("HOME", folder_);
    {
        const Variable unset("XDG_CONFIG_HOME", "");
        EXPECT_EQ(UserConfigFolder(), folder_ / ".config");
    }
    const Variable other("XDG_CONFIG_HOME", "/etc/xdg");
    EXPECT_EQ(UserConfigFolder(), fs::path("/etc/xdg"));
}

TEST_F(Platform, WorkApartLeavesThisProgramAsItIs) {
    constexpr std::size_t kMegabyte = 1 << 20;
    const auto survives = [](const std::function<void()>& work) {
        return SurvivesApart(work, {std::chrono::seconds(1), 64 * kMegabyte});
    };
    int changed = 0;
    EXPECT_TRUE(survives([&] { changed = 1; }));
    EXPECT_EQ(changed, 0);
    EXPECT_FALSE(survives([] { throw std::runtime_error("no"); }));
    EXPECT_FALSE(survives([] { std::raise(SIGSEGV); }));
    EXPECT_FALSE(survives([] { std::abort(); }));
    EXPECT_TRUE(survives([] { std::vector<char>(32 * kMegabyte, 'x'); }));
    EXPECT_FALSE(survives([] { std::vector<char>(128 * kMegabyte, 'x'); }));
    EXPECT_FALSE(survives([] {
        for (volatile bool more = true; more;)
            continue;
    }));
}

}  // namespace
}  // namespace kv
