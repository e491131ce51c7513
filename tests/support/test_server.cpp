#include "support/test_server.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <thread>

#include <fcntl.h>
#include <fmt/format.h>
#include <grp.h>
#include <libpq-fe.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "base/text.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kPort = "5432";
constexpr const char* kUser = "postgres";
constexpr std::size_t kLongestSocketPath = 106;
constexpr std::chrono::seconds kLongestStart(20);
constexpr std::chrono::milliseconds kPause(10);

/// The programs of the newest server on this machine.
fs::path ServerPrograms() {
    const fs::path versions = "/usr/lib/postgresql";
    fs::path newest;
    double newestVersion = 0;
    std::error_code none;
    for (const fs::directory_entry& entry : fs::directory_iterator(versions, none)) {
        const double version = std::atof(entry.path().filename().c_str());
        if (version > newestVersion && fs::exists(entry.path() / "bin/postgres")) {
            newest = entry.path() / "bin";
            newestVersion = version;
        }
    }
    if (newest.empty())
        throw std::runtime_error("the package postgresql is not installed: no server in " +
                                 versions.string());
    return newest;
}

/// Whom the server runs as: it refuses to run as root.
struct Account {
    uid_t user = ::geteuid();
    gid_t group = ::getegid();
    bool change = false;
};

Account ServerAccount() {
    Account account;
    if (account.user != 0)
        return account;
    const passwd* entry = ::getpwnam(kUser);
    if (entry == nullptr)
        throw std::runtime_error("the package postgresql is not installed: there is no user postgres");
    return {entry->pw_uid, entry->pw_gid, true};
}

/// Becomes the program, in the child of a fork: nothing here may allocate.
[[noreturn]] void Become(char* const* arguments, const Account& account, pid_t parent, int log) {
    constexpr int kFailed = 127;
    ::umask(S_IRWXG | S_IRWXO);
    const int nothing = ::open("/dev/null", O_RDONLY);
    if (nothing < 0 || ::dup2(nothing, STDIN_FILENO) < 0 || ::dup2(log, STDOUT_FILENO) < 0 ||
        ::dup2(log, STDERR_FILENO) < 0 || ::chdir("/") != 0)
        ::_exit(kFailed);
    ::close_range(STDERR_FILENO + 1, ~0U, 0);
    if (account.change &&
        (::setgroups(0, nullptr) != 0 || ::setgid(account.group) != 0 || ::setuid(account.user) != 0))
        ::_exit(kFailed);
    // A change of user forgets this request, so it comes behind; the parent may be gone before it counts.
    if (::prctl(PR_SET_PDEATHSIG, SIGQUIT) != 0 || ::getppid() != parent)
        ::_exit(kFailed);
    ::execv(arguments[0], arguments);
    ::_exit(kFailed);
}

/// Starts a program whose words go to the end of the log, and which ends with this process.
pid_t StartProgram(std::vector<std::string> words, const fs::path& logFile) {
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const Account account = ServerAccount();
    const int log = ::open(logFile.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (log < 0)
        throw std::runtime_error("the server's log cannot be written: " + logFile.string());
    const pid_t parent = ::getpid();
    const pid_t child = ::fork();
    if (child == 0)
        Become(arguments.data(), account, parent, log);
    ::close(log);
    if (child < 0)
        throw std::runtime_error(fmt::format("{} cannot be started: {}", words[0], std::strerror(errno)));
    return child;
}

/// A folder that the server's user owns.
void MakeServerFolder(const fs::path& folder) {
    fs::create_directory(folder);
    const Account account = ServerAccount();
    if (account.change && ::chown(folder.c_str(), account.user, account.group) != 0)
        throw std::runtime_error("the server's folder cannot be handed over: " + folder.string());
}

std::string QuotedName(const std::string& name) {
    return '"' + ReplaceAll(name, "\"", "\"\"") + '"';
}

}  // namespace

TestServer& TestServer::Get() {
    static TestServer server(Keeps::InMemory);
    return server;
}

TestServer& TestServer::OnDisk() {
    static TestServer server(Keeps::OnDisk);
    return server;
}

bool TestServer::Wanted() {
    const char* engine = std::getenv("KV_TEST_ENGINE");
    return engine != nullptr && std::strcmp(engine, "server") == 0;
}

TestServer::TestServer(Keeps keeps)
    : keeps_(keeps),
      folder_(keeps == Keeps::OnDisk ? std::make_unique<TempFolder>(fs::temp_directory_path())
                                     : std::make_unique<TempFolder>()),
      owner_(::getpid()) {
    const fs::path root = folder_->Path();
    socketFolder_ = (root / "sock").string();
    if (socketFolder_.size() + std::strlen("/.s.PGSQL.") + std::strlen(kPort) > kLongestSocketPath)
        throw std::runtime_error("the path is too long for a socket: " + socketFolder_);
    fs::permissions(root, fs::perms::owner_all | fs::perms::group_exec | fs::perms::others_exec);
    MakeServerFolder(root / "data");
    MakeServerFolder(socketFolder_);
    const pid_t maker = StartProgram(
        {(ServerPrograms() / "initdb").string(), "-D", (root / "data").string(), "-A", "trust", "-U", kUser,
         "-E", "UTF8", "--locale=C.UTF-8", "--no-sync", "--no-instructions", "--wal-segsize=4"},
        root / "log");
    int status = 0;
    if (::waitpid(maker, &status, 0) != maker || status != 0)
        throw std::runtime_error("the test server's data cannot be made:\n" + LastWords());
    Start();
}

TestServer::~TestServer() {
    // A fork of the test process that ends in the usual way must leave the server to its owner.
    if (::getpid() == owner_)
        Stop();
    else
        static_cast<void>(folder_.release());
}

std::string TestServer::DatabaseOf(const std::string& connection) {
    const std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)> options(
        PQconninfoParse(connection.c_str(), nullptr), PQconninfoFree);
    for (const PQconninfoOption* option = options.get(); option && option->keyword; ++option)
        if (std::string_view(option->keyword) == "dbname" && option->val)
            return option->val;
    return {};
}

std::string TestServer::Connection(const std::string& database) const {
    return fmt::format("host={} port={} user={} dbname='{}'", socketFolder_, kPort, kUser,
                       ReplaceAll(ReplaceAll(database, "\\", "\\\\"), "'", "\\'"));
}

void TestServer::MakeDatabase(const std::string& name, const std::string& templateName) {
    // Where nothing is synced, copying files takes less than half the time of writing pages to the log.
    Run(fmt::format("CREATE DATABASE {} TEMPLATE {} STRATEGY = FILE_COPY", QuotedName(name),
                    QuotedName(templateName)));
}

void TestServer::DropDatabase(const std::string& name) {
    Run(fmt::format("DROP DATABASE IF EXISTS {} WITH (FORCE)", QuotedName(name)));
}

std::string TestServer::FreshName() {
    return fmt::format("kv_test_{}", ++names_);
}

void TestServer::Stop() {
    if (server_ == 0)
        return;
    ::kill(server_, SIGQUIT);
    ::waitpid(server_, nullptr, 0);
    server_ = 0;
}

void TestServer::Start() {
    if (server_ != 0)
        return;
    std::vector<std::string> words = {(ServerPrograms() / "postgres").string(),
                                      "-D",
                                      (folder_->Path() / "data").string(),
                                      "-k",
                                      socketFolder_,
                                      "-p",
                                      kPort};
    // Commits stay synchronous: what was committed must outlive Stop.
    std::vector<std::string> settings = {"listen_addresses=", "max_connections=300", "jit=off"};
    const auto add = [&](std::initializer_list<const char*> more) {
        settings.insert(settings.end(), more.begin(), more.end());
    };
    if (keeps_ == Keeps::OnDisk)
        add({"shared_buffers=256MB"});
    else
        add({"fsync=off", "full_page_writes=off", "wal_level=minimal", "max_wal_senders=0", "autovacuum=off",
             "shared_buffers=64MB"});
    for (std::string& setting : settings) {
        words.emplace_back("-c");
        words.push_back(std::move(setting));
    }
    server_ = StartProgram(std::move(words), folder_->Path() / "log");
    WaitUntilReady();
}

void TestServer::WaitUntilReady() {
    const auto latest = std::chrono::steady_clock::now() + kLongestStart;
    const std::string connection = Connection(kUser);
    while (PQping(connection.c_str()) != PQPING_OK) {
        const bool gone = ::waitpid(server_, nullptr, WNOHANG) == server_;
        if (!gone && std::chrono::steady_clock::now() < latest) {
            std::this_thread::sleep_for(kPause);
            continue;
        }
        if (gone)
            server_ = 0;
        Stop();
        throw std::runtime_error("the test server does not come up:\n" + LastWords());
    }
}

std::string TestServer::LastWords() const {
    constexpr std::size_t kMostLines = 20;
    std::ifstream log(folder_->Path() / "log");
    std::vector<std::string> lines;
    for (std::string line; std::getline(log, line);)
        lines.push_back(line);
    const std::size_t first = lines.size() - std::min(lines.size(), kMostLines);
    return Join({lines.begin() + static_cast<std::ptrdiff_t>(first), lines.end()}, "\n");
}

void TestServer::Run(const std::string& statement) {
    const std::unique_ptr<PGconn, decltype(&PQfinish)> connection(PQconnectdb(Connection(kUser).c_str()),
                                                                  PQfinish);
    if (PQstatus(connection.get()) != CONNECTION_OK)
        throw std::runtime_error(PQerrorMessage(connection.get()));
    // Notices, as of a database that is not there, are nothing to print.
    PQsetNoticeProcessor(
        connection.get(), [](void*, const char*) {}, nullptr);
    const std::unique_ptr<PGresult, decltype(&PQclear)> result(PQexec(connection.get(), statement.c_str()),
                                                               PQclear);
    if (PQresultStatus(result.get()) != PGRES_COMMAND_OK)
        throw std::runtime_error(PQerrorMessage(connection.get()));
}

}  // namespace kv::test
