#pragma once
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "session/session.h"
#include "support/scripted_ports.h"

namespace kv::test {

/// A folder of its own, in memory where there is room, removed with the object.
class TempFolder {
  public:
    TempFolder();
    explicit TempFolder(const std::filesystem::path& root);
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    const std::filesystem::path& Path() const { return path_; }

  private:
    std::filesystem::path path_;
};

/// Puts a fresh data folder, as `kvtool init` makes it, at a path that is not there yet. Where the tests run
/// on the server its shared databases are there, in a database of the folder's own.
void CopyFreshData(const std::filesystem::path& to);
/// Where the tests run on the server: makes the folder with a KESTRAVA.INI that names an empty database
/// there.
void NameEmptyServer(const std::filesystem::path& folder);
/// Where the tests run on the server: drops the database that the folder's KESTRAVA.INI names. Nobody has it
/// open any more.
void DropServerData(const std::filesystem::path& folder);

using Cells = std::vector<std::pair<std::string, Value>>;

/// A small real agency: a fresh data folder as `kvtool init` makes it, a settings file with the login of user
/// "ANN" (all rights, all managers), and a session that has gone through the start. All of it goes with the
/// object.
class TestAgency {
  public:
    TestAgency();
    ~TestAgency();
    TestAgency(const TestAgency&) = delete;
    TestAgency& operator=(const TestAgency&) = delete;

    const std::filesystem::path& Folder() const { return dataFolder_; }
    /// Where another seat finds a database: "kestrava", "main", "archive" or "trans".
    DatabasePlace Place(const std::string& name) const;
    Session& session() { return *session_; }
    Database& Work() { return *session_->dbMainWork; }
    Database& Code() { return *session_->dbMainCode; }
    /// "kestrava", "main", "archive" or "trans", opened on first use.
    Database& Data(const std::string& name);
    /// What was said since the last call.
    std::vector<std::string> Said() { return ports.dialogs.TakeSaid(); }

    /// Adds a row to the first of kestrava, main, archive and trans that has the table; "main.tasks" names
    /// one whose table stands in several. Columns left out have their defaults. Answers the row's counter, 0
    /// where the table has none.
    std::int64_t Insert(const std::string& table, const Cells& cells);
    /// Adds a client that passes the required information; `more` adds to or replaces its columns.
    void Client(const std::string& id, const std::string& last, const std::string& first,
                const Cells& more = {});
    /// The rows of a query as texts, their fields joined by "|", Null as "<Null>", dates as "YYYY-MM-DD
    /// HH:MM:SS".
    std::vector<std::string> Rows(const std::string& sql, const std::string& database = "kestrava");

    ScriptedPorts ports;

  private:
    TempFolder folder_;
    std::filesystem::path dataFolder_;
    SettingsStore settings_;
    std::unique_ptr<Session> session_;
    std::vector<std::pair<std::string, DatabasePtr>> others_;
};

}  // namespace kv::test
