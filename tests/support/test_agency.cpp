#include "support/test_agency.h"

#include <algorithm>
#include <stdexcept>

#include <stdlib.h>
#include <unistd.h>

#include "base/numbers.h"
#include "base/text.h"
#include "session/data_folder.h"
#include "session/start.h"
#include "support/test_server.h"

namespace kv::test {
namespace {

std::string FieldText(const Value& value) {
    if (value.IsNull())
        return "<Null>";
    return value.Type() == ValueType::Date ? IsoText(value.ToDate()) : value.ToText();
}

/// Where tests write. Their small databases are synced at every statement, which costs nothing in memory.
std::filesystem::path TestRoot() {
    constexpr std::uintmax_t kEnough = std::uintmax_t{1} << 30;
    const std::filesystem::path memory = "/dev/shm";
    std::error_code none;
    const auto space = std::filesystem::space(memory, none);
    const bool usable = !none && space.available >= kEnough && ::access(memory.c_str(), W_OK) == 0;
    return usable ? memory : std::filesystem::temp_directory_path();
}

}  // namespace

TempFolder::TempFolder() : TempFolder(TestRoot()) {}

TempFolder::TempFolder(const std::filesystem::path& root) {
    std::string pattern = (root / "kv-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no temporary folder can be made: " + pattern);
    path_ = pattern;
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

namespace {

constexpr const char* kServersTemplate = "kv_fresh";

void NameServer(const std::filesystem::path& folder, const std::string& database) {
    IniFile(folder / "KESTRAVA.INI").Set("Database", "Server", TestServer::Get().Connection(database));
}

std::filesystem::path MakeFreshData(const std::filesystem::path& folder) {
    std::filesystem::create_directory(folder);
    if (TestServer::Wanted()) {
        TestServer::Get().MakeDatabase(kServersTemplate);
        NameServer(folder, kServersTemplate);
    }
    Workspace workspace;
    InitDataFolder(workspace, folder, "US");
    return folder;
}

}  // namespace

void CopyFreshData(const std::filesystem::path& to) {
    // Made once for the whole process.
    static const TempFolder folder;
    static const std::filesystem::path data = MakeFreshData(folder.Path() / "data");
    std::filesystem::copy(data, to);
    if (!TestServer::Wanted())
        return;
    const std::string database = TestServer::Get().FreshName();
    TestServer::Get().MakeDatabase(database, kServersTemplate);
    NameServer(to, database);
}

void NameEmptyServer(const std::filesystem::path& folder) {
    if (!TestServer::Wanted())
        return;
    std::filesystem::create_directory(folder);
    const std::string database = TestServer::Get().FreshName();
    TestServer::Get().MakeDatabase(database);
    NameServer(folder, database);
}

void DropServerData(const std::filesystem::path& folder) {
    const std::string server = TestServer::Wanted() ? ServerOf(folder) : "";
    if (const std::string database = TestServer::DatabaseOf(server); !database.empty())
        TestServer::Get().DropDatabase(database);
}

namespace {

struct ListEntry {
    const char* table;
    const char* code;
    const char* description;
};
/// One entry in each list that a client's required fields are chosen from.
constexpr ListEntry kRequiredLists[] = {{"SEX", "F", "Female"},
                                        {"PROVIDERS SEX", "E", "Either"},
                                        {"LANGUAGE", "EN", "English"},
                                        {"DISCIPLINE", "HHA", "Home Health Aide"}};

}  // namespace

TestAgency::TestAgency() : dataFolder_(folder_.Path() / "data"), settings_(folder_.Path() / "settings.ini") {
    const std::pair<const char*, std::string> login[] = {{"DBloc", dataFolder_.string()},
                                                         {"User", "ANN"},
                                                         {"user_name", "Ann Doe"},
                                                         {"Screens", "*"},
                                                         {"Blocked", ""},
                                                         {"VENDOR", "01"},
                                                         {"Manager", "all"},
                                                         {"WKENDING", "FRI"}};
    for (const auto& [key, value] : login)
        settings_.Set("Setting", key, value);
    settings_.Set("STARTED", "STARTED", "Y");
    session_ = std::make_unique<Session>(settings_, ports.Handles());
    CopyFreshData(dataFolder_);
    ReadLogin(*session_);
    ReadCountry(*session_);
    OpenSessionData(*session_);
    for (const ListEntry& entry : kRequiredLists)
        Insert(std::string("main.") + entry.table,
               {{"code", entry.code}, {"description", entry.description}});
    const std::filesystem::path temp = folder_.Path() / "temp";
    std::filesystem::create_directory(temp);
    session_->TempPath = temp.string() + "/";
    session_->ClientSort = "client";
}

TestAgency::~TestAgency() {
    others_.clear();
    session_.reset();
    DropServerData(dataFolder_);
}

DatabasePlace TestAgency::Place(const std::string& name) const {
    return PlaceOf(dataFolder_, name);
}

Database& TestAgency::Data(const std::string& name) {
    if (name == "kestrava")
        return Work();
    if (name == "main")
        return Code();
    for (const auto& [opened, database] : others_)
        if (opened == name)
            return *database;
    others_.emplace_back(name, session_->OpenData(DatabaseFile(name)));
    return *others_.back().second;
}

std::int64_t TestAgency::Insert(const std::string& table, const Cells& cells) {
    std::vector<std::string> names = {"kestrava", "main", "archive", "trans"};
    std::string plain = table;
    if (const std::size_t dot = table.find('.'); dot != std::string::npos) {
        names = {table.substr(0, dot)};
        plain = table.substr(dot + 1);
    }
    for (const std::string& name : names) {
        const TableInfo* info = Data(name).Tables().Find(plain);
        if (info == nullptr)
            continue;
        Recordset rows = Data(name).OpenRecordset(plain);
        rows.AddNew();
        for (const auto& [column, value] : cells)
            rows.Set(column, value);
        const auto counter = info->Counter();
        const std::int64_t given = counter ? rows.Get(info->columns[*counter].name).ToInteger() : 0;
        rows.Update();
        return given;
    }
    throw std::invalid_argument("no database has the table " + table);
}

void TestAgency::Client(const std::string& id, const std::string& last, const std::string& first,
                        const Cells& more) {
    Cells cells = {{"CLIENT", id},       {"LASTNAME", last}, {"FIRSTNAM", first},
                   {"casestatcd", "A"},  {"ISTEMPLATE", 0},  {"billmile_rate", Currency::FromDouble(0.5)},
                   {"SEX", "F"},         {"PROV_SEX", "E"},  {"LANGUAGE", "EN"},
                   {"ORD_DISCPL", "HHA"}};
    for (const auto& cell : more) {
        const auto same = std::find_if(cells.begin(), cells.end(),
                                       [&](const auto& old) { return EqualsNoCase(old.first, cell.first); });
        if (same == cells.end())
            cells.push_back(cell);
        else
            same->second = cell.second;
    }
    Insert("ClientPR", cells);
}

std::vector<std::string> TestAgency::Rows(const std::string& sql, const std::string& database) {
    std::vector<std::string> rows;
    for (Recordset found = Data(database).OpenRecordset(sql); !found.Eof(); found.MoveNext()) {
        std::vector<std::string> fields;
        for (std::size_t i = 0; i < found.Fields().size(); ++i)
            fields.push_back(FieldText(found.Get(i)));
        rows.push_back(Join(fields, "|"));
    }
    return rows;
}

}  // namespace kv::test
