#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <system_error>
#include <vector>

#include <dlfcn.h>
#include <fcntl.h>
#include <pwd.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include "base/platform.h"
#include "base/text.h"

extern char** environ;

namespace kv {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const fs::path& file) {
    throw std::system_error(errno, std::generic_category(), file.string());
}

std::string_view Environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

fs::path HomeFolder() {
    if (const auto home = Environment("HOME"); !home.empty())
        return home;
    const passwd* user = ::getpwuid(::getuid());
    return user && user->pw_dir ? user->pw_dir : "/";
}

/// A descriptor that is closed with its scope.
class Descriptor {
  public:
    explicit Descriptor(int handle) : handle_(handle) {}
    ~Descriptor() {
        if (handle_ >= 0)
            ::close(handle_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int Get() const { return handle_; }

  private:
    int handle_;
};

void WriteAll(int handle, std::string_view content, const fs::path& file) {
    while (!content.empty()) {
        const ssize_t written = ::write(handle, content.data(), content.size());
        if (written < 0 && errno != EINTR)
            Fail(file);
        content.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
}

/// The rights a new content of the file gets: those of the old one, else those of any new file of this user.
mode_t ModeFor(const fs::path& file, bool ownerOnly) {
    struct stat old {};
    if (ownerOnly)
        return S_IRUSR | S_IWUSR;
    if (::stat(file.c_str(), &old) == 0)
        return old.st_mode & 07777;
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

/// Locks or lets go one byte on behalf of the open file rather than of the process.
int SetByteLock(int handle, std::uint64_t byte, short kind, bool wait = false) {
    struct flock lock {};
    lock.l_type = kind;
    lock.l_whence = SEEK_SET;
    lock.l_start = static_cast<off_t>(byte & 0x7FFFFFFFFFFFFFFFU);
    lock.l_len = 1;
    return ::fcntl(handle, wait ? F_OFD_SETLKW : F_OFD_SETLK, &lock);
}

/// Does somebody answer at the socket? An abstract one has a name in memory instead of a file.
bool SocketAnswers(const fs::path& path, bool abstract = false) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string name = (abstract ? std::string(1, '\0') : std::string()) + path.string();
    if (name.size() >= sizeof address.sun_path)
        return false;
    std::copy(name.begin(), name.end(), address.sun_path);
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());
    const Descriptor handle(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    return handle.Get() >= 0 &&
           ::connect(handle.Get(), reinterpret_cast<const sockaddr*>(&address), length) == 0;
}

bool WaylandAnswers(std::string_view display) {
    const fs::path folder = Environment("XDG_RUNTIME_DIR");
    return !display.empty() && SocketAnswers(folder / display);
}

/// While it lives, a write to a peer that has gone fails with an error in this thread instead of ending the
/// program: for libraries that write to sockets without asking for that themselves.
class BrokenPipesHeld {
  public:
    BrokenPipesHeld() {
        ::sigemptyset(&brokenPipe_);
        ::sigaddset(&brokenPipe_, SIGPIPE);
        sigset_t pending;
        ::sigpending(&pending);
        wasPending_ = ::sigismember(&pending, SIGPIPE) == 1;
        ::pthread_sigmask(SIG_BLOCK, &brokenPipe_, &before_);
    }
    ~BrokenPipesHeld() {
        const timespec atOnce{};
        // A signal that was waiting before is somebody else's.
        while (!wasPending_ && ::sigtimedwait(&brokenPipe_, nullptr, &atOnce) < 0 && errno == EINTR) {
        }
        ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }
    BrokenPipesHeld(const BrokenPipesHeld&) = delete;
    BrokenPipesHeld& operator=(const BrokenPipesHeld&) = delete;

  private:
    sigset_t brokenPipe_{};
    sigset_t before_{};
    bool wasPending_ = false;
};

/// Lets the X library say whether the server takes this user: a server that answers may still turn him away.
/// Without the library the socket's word holds.
bool XServerTakesUser(const std::string& display) {
    void* library = ::dlopen("libxcb.so.1", RTLD_NOW | RTLD_LOCAL);
    if (!library)
        return true;
    using Connect = void* (*)(const char*, int*);
    using HasError = int (*)(void*);
    using Disconnect = void (*)(void*);
    const auto connect = reinterpret_cast<Connect>(::dlsym(library, "xcb_connect"));
    const auto hasError = reinterpret_cast<HasError>(::dlsym(library, "xcb_connection_has_error"));
    const auto disconnect = reinterpret_cast<Disconnect>(::dlsym(library, "xcb_disconnect"));
    bool taken = true;
    if (connect && hasError && disconnect) {
        const BrokenPipesHeld held;
        void* connection = connect(display.c_str(), nullptr);
        taken = hasError(connection) == 0;
        disconnect(connection);
    }
    ::dlclose(library);
    return taken;
}

/// ":1", ":1.0" and "unix:1" are displays of this machine.
bool XServerAnswers(std::string_view display) {
    const std::string_view name = display.substr(0, 5) == "unix:" ? display.substr(4) : display;
    const std::string number(name.substr(0, name.find('.')).substr(name.empty() ? 0 : 1));
    const bool local = name.substr(0, 1) == ":" && !number.empty() &&
                       number.find_first_not_of("0123456789") == std::string::npos;
    const fs::path socket = "/tmp/.X11-unix/X" + number;
    return local && (SocketAnswers(socket) || SocketAnswers(socket, true)) &&
           XServerTakesUser(std::string(name));
}

int terminationWriter = -1;

void NoteTermination(int /*signal*/) {
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(terminationWriter, &byte, 1);
}

int MakeTerminationPipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return -1;
    terminationWriter = ends[1];
    struct sigaction action {};
    action.sa_handler = NoteTermination;
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        ::sigaction(signal, &action, nullptr);
    return ends[0];
}

/// The memory that this process can write to, as the system counts it for a limit.
std::optional<rlim_t> DataInUse() {
    std::ifstream counts("/proc/self/statm");
    rlim_t all = 0, resident = 0, shared = 0, text = 0, library = 0, data = 0;
    if (!(counts >> all >> resident >> shared >> text >> library >> data))
        return std::nullopt;
    return data * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE));
}

void Limit(__rlimit_resource resource, rlim_t most) {
    const rlimit limit{most, most};
    ::setrlimit(resource, &limit);
}

}  // namespace

fs::path UserConfigFolder() {
    const auto folder = Environment("XDG_CONFIG_HOME");
    return folder.empty() ? HomeFolder() / ".config" : fs::path(folder);
}

Date LocalNow() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    return Date::FromCivil(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                           local.tm_sec);
}

fs::path UserTempFolder() {
    constexpr mode_t kOwnerOnly = 0700;
    constexpr mode_t kOthers = 0077;
    std::error_code none;
    fs::path shared = fs::temp_directory_path(none);
    if (none)
        shared = "/tmp";
    fs::path own = shared / ("kestrava-" + std::to_string(::getuid()));
    if (::mkdir(own.c_str(), kOwnerOnly) != 0 && errno != EEXIST)
        Fail(own);
    // Somebody else may have been there first, with a folder or a link of that name.
    struct stat found {};
    if (::lstat(own.c_str(), &found) == 0 && S_ISDIR(found.st_mode) && found.st_uid == ::getuid() &&
        (found.st_mode & kOthers) == 0)
        return own;
    std::string another = (shared / "kestrava-XXXXXX").string();
    if (::mkdtemp(another.data()) == nullptr)
        Fail(another);
    return another;
}

bool OpenWithDesktop(const std::string& target, const std::string& argument) {
    // The shell starts the program in the background and ends at once, so that nothing is waited for and the
    // program, which may live long, is no child of ours.
    const char* script = R"(command -v "$1" >/dev/null || exit 1; "$@" </dev/null >/dev/null 2>&1 &)";
    const std::string safe = target.empty() || target[0] != '-' ? target : "./" + target;
    std::vector<std::string> words = {"sh", "-c", script, "sh"};
    if (argument.empty())
        words.insert(words.end(), {"xdg-open", safe});
    else
        words.insert(words.end(), {safe, argument});
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);

    pid_t shell = 0;
    if (target.empty() || ::posix_spawn(&shell, "/bin/sh", nullptr, nullptr, pointers.data(), environ) != 0)
        return false;
    int status = 0;
    while (::waitpid(shell, &status, 0) < 0)
        if (errno != EINTR)
            return false;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

fs::path NativePath(std::string_view path) {
    return ReplaceAll(path, "\\", "/");
}

fs::path FindNoCase(const fs::path& folder, std::string_view name) {
    const fs::path exact = folder / name;
    std::error_code none;
    if (fs::exists(exact, none))
        return exact;
    for (fs::directory_iterator entry(folder, none), end; !none && entry != end; entry.increment(none))
        if (EqualsNoCase(entry->path().filename().string(), name))
            return entry->path();
    return exact;
}

void ReplaceFile(const fs::path& file, std::string_view content, bool ownerOnly) {
    std::error_code none;
    const fs::path place = fs::is_symlink(file, none) ? fs::weakly_canonical(file) : file;
    std::string beside = (place.parent_path() / ("." + place.filename().string() + ".XXXXXX")).string();
    const Descriptor handle(::mkostemp(beside.data(), O_CLOEXEC));
    if (handle.Get() < 0)
        Fail(file);
    try {
        WriteAll(handle.Get(), content, file);
        if (::fchmod(handle.Get(), ModeFor(place, ownerOnly)) != 0 || ::fsync(handle.Get()) != 0 ||
            ::rename(beside.c_str(), place.c_str()) != 0)
            Fail(file);
    } catch (...) {
        ::unlink(beside.c_str());
        throw;
    }
}

bool AppendForOwner(const fs::path& file, std::string_view content) noexcept {
    constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;
    const Descriptor handle(::open(
        file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, kOwnerOnly));
    return handle.Get() >= 0 && ::fchmod(handle.Get(), kOwnerOnly) == 0 &&
           ::write(handle.Get(), content.data(), content.size()) == static_cast<ssize_t>(content.size());
}

std::optional<std::string> ReadFile(const fs::path& file) {
    const Descriptor handle(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
    if (handle.Get() < 0)
        return std::nullopt;
    std::string content;
    std::array<char, 65536> buffer{};
    while (true) {
        const ssize_t got = ::read(handle.Get(), buffer.data(), buffer.size());
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return std::nullopt;
        if (got == 0)
            return content;
        content.append(buffer.data(), static_cast<std::size_t>(got));
    }
}

std::string MachineName() {
    std::array<char, 256> name{};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : std::string();
}

ByteLocks::ByteLocks(const fs::path& file, const fs::path& like)
    : handle_(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666)) {
    if (handle_ < 0)
        Fail(file);
    // Whoever may use the file that is locked must be able to lock it. Only the maker may change the rights.
    struct stat model {
    }, made{};
    if (!like.empty() && ::stat(like.c_str(), &model) == 0 && ::fstat(handle_, &made) == 0 &&
        made.st_uid == ::geteuid() && made.st_mode != model.st_mode &&
        ::fchmod(handle_, model.st_mode & 0777) != 0) {
        ::close(handle_);
        Fail(file);
    }
}

ByteLocks::~ByteLocks() {
    ::close(handle_);
}

bool ByteLocks::TryLock(std::uint64_t byte) {
    if (SetByteLock(handle_, byte, F_WRLCK) == 0)
        return true;
    if (errno != EAGAIN && errno != EACCES)
        Fail("byte lock");
    return false;
}

void ByteLocks::Unlock(std::uint64_t byte) noexcept {
    // Where even this fails the byte comes free with the handle.
    SetByteLock(handle_, byte, F_UNLCK);
}

void ByteLocks::Lock(std::uint64_t byte) {
    while (SetByteLock(handle_, byte, F_WRLCK, true) != 0)
        if (errno != EINTR)
            Fail("byte lock");
}

void ByteLocks::WriteNote(std::uint64_t place, std::string_view text) noexcept {
    [[maybe_unused]] const ssize_t written =
        ::pwrite(handle_, text.data(), text.size(), static_cast<off_t>(place));
}

std::string ByteLocks::ReadNote(std::uint64_t place, std::size_t size) const {
    std::string text(size, '\0');
    const ssize_t got = ::pread(handle_, text.data(), size, static_cast<off_t>(place));
    text.resize(got < 0 ? 0 : static_cast<std::size_t>(got));
    return text;
}

LocalDisplays FindLocalDisplays() {
    return {WaylandAnswers(Environment("WAYLAND_DISPLAY")), XServerAnswers(Environment("DISPLAY"))};
}

bool HasLocalDisplay() {
    const LocalDisplays displays = FindLocalDisplays();
    return displays.wayland || displays.x11;
}

int WatchTermination() {
    static const int descriptor = MakeTerminationPipe();
    return descriptor;
}

bool SurvivesApart(const std::function<void()>& work, const ApartLimits& limits) {
    const pid_t child = ::fork();
    if (child < 0)
        throw std::system_error(errno, std::generic_category(), "fork");
    if (child == 0) {
        // Ends without the exit handlers, which would write this process's buffers a second time. A crash is
        // expected here, so that the system need keep no image of it.
        Limit(RLIMIT_CORE, 0);
        Limit(RLIMIT_CPU, static_cast<rlim_t>(limits.time.count()));
        if (const auto inUse = DataInUse())
            Limit(RLIMIT_DATA, *inUse + limits.memory);
        const Descriptor nowhere(::open("/dev/null", O_WRONLY | O_CLOEXEC));
        ::dup2(nowhere.Get(), STDERR_FILENO);
        try {
            work();
        } catch (...) {
            ::_exit(EXIT_FAILURE);
        }
        ::_exit(EXIT_SUCCESS);
    }
    int status = 0;
    while (::waitpid(child, &status, 0) < 0)
        if (errno != EINTR)
            throw std::system_error(errno, std::generic_category(), "waitpid");
    return WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS;
}

}  // namespace kv
