#include "datastore/workspace.h"

#include <map>
#include <system_error>

#include "base/platform.h"
#include "datastore/engine/connection.h"
#include "datastore/engine/sqlite/sqlite_open.h"
#include "datastore/script.h"

namespace kv {
namespace {

namespace fs = std::filesystem;

/// The path with the system's separators and the file's name as it is spelled on the disk.
fs::path FilePath(const fs::path& path) {
    const fs::path native = NativePath(path.string());
    return FindNoCase(native.parent_path(), native.filename().string());
}

}  // namespace

struct Workspace::Connections {
    std::map<fs::path, std::weak_ptr<Connection>> open;
    std::function<Date()> clock;
};

Workspace::Workspace() : connections_(std::make_unique<Connections>()) {}

Workspace::~Workspace() = default;

DatabasePtr Workspace::OpenDatabase(const fs::path& path, SchemaCheck check) {
    const fs::path file = FilePath(path);
    std::error_code error;
    const fs::path canonical = fs::weakly_canonical(file, error);
    std::erase_if(connections_->open, [](const auto& entry) { return entry.second.expired(); });
    std::weak_ptr<Connection>& known = connections_->open[error ? file : canonical];
    std::shared_ptr<Connection> connection = known.lock();
    if (!connection) {
        connection = sqlite::Open(file, check);
        if (connections_->clock)
            connection->clock = connections_->clock;
        known = connection;
    } else if (check == SchemaCheck::Required) {
        sqlite::RequireSchema(*connection);
    }
    return std::make_shared<Database>(std::move(connection));
}

DatabasePtr Workspace::CreateDatabase(const fs::path& path, std::string_view script) {
    const fs::path file = FilePath(path);
    sqlite::Create(file, SplitScript(script));
    return OpenDatabase(file);
}

void Workspace::SetClock(std::function<Date()> now) {
    connections_->clock = std::move(now);
}

}  // namespace kv
