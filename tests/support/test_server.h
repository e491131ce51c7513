#pragma once
#include <memory>
#include <string>

#include <sys/types.h>

#include "support/test_agency.h"

namespace kv::test {

/// A private PostgreSQL for one process: on a Unix socket in a folder of its own, closed to the network. It
/// ends with the process, however that ends. Every failure throws std::runtime_error with the server's own
/// words.
class TestServer {
  public:
    /// Started on first use, by a thread that must live as long as the server is wanted: the main one. It
    /// lies in memory where there is room and syncs nothing.
    static TestServer& Get();
    /// One that keeps its data on the disk as an office's server does, to measure with.
    static TestServer& OnDisk();
    /// True where the tests shall run on the server: KV_TEST_ENGINE is "server".
    static bool Wanted();
    /// The database that a connection string names; the empty text for an empty one.
    static std::string DatabaseOf(const std::string& connection);

    ~TestServer();
    TestServer(const TestServer&) = delete;
    TestServer& operator=(const TestServer&) = delete;

    /// What libpq takes to connect to one of its databases.
    std::string Connection(const std::string& database) const;
    /// A copy of the template, to which nobody may be connected meanwhile.
    void MakeDatabase(const std::string& name, const std::string& templateName = "template0");
    /// Throws everybody out of the database first. One that is not there is as good as dropped.
    void DropDatabase(const std::string& name);
    /// A database name that nobody else has in this server.
    std::string FreshName();

    /// Cuts every connection at once, as a fall of the server does; what was committed stays. Both may be
    /// called at any time: a server that stands or runs already is left so.
    void Stop();
    void Start();

  private:
    enum class Keeps { InMemory, OnDisk };
    explicit TestServer(Keeps keeps);
    std::string LastWords() const;
    void WaitUntilReady();
    void Run(const std::string& statement);

    Keeps keeps_;
    std::unique_ptr<TempFolder> folder_;
    std::string socketFolder_;
    pid_t owner_ = 0;
    pid_t server_ = 0;
    int names_ = 0;
};

}  // namespace kv::test
