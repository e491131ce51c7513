#include "datastore/workspace.h"

#include <map>
#include <system_error>

#include "base/platform.h"
#include "base/text.h"
#include "datastore/engine/connection.h"
#include "datastore/engine/postgres/pg_open.h"
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
    /// By the file's path, or the server's connection string and the schema.
    std::map<std::string, std::weak_ptr<Connection>> open;
    std::function<Date()> clock;
    std::string seat;
};

namespace {

std::string KeyOf(const DatabasePlace& place, const fs::path& file) {
    if (!place.server.empty())
        return place.server + '\n' + Lower(place.schema);
    std::error_code error;
    const fs::path canonical = fs::weakly_canonical(file, error);
    return (error ? file : canonical).string();
}

}  // namespace

Workspace::Workspace() : connections_(std::make_unique<Connections>()) {}

Workspace::~Workspace() = default;

DatabasePtr Workspace::OpenDatabase(const DatabasePlace& place, SchemaCheck check) {
    const bool onServer = !place.server.empty();
    const fs::path file = onServer ? fs::path() : FilePath(place.file);
    std::erase_if(connections_->open, [](const auto& entry) { return entry.second.expired(); });
    std::weak_ptr<Connection>& known = connections_->open[KeyOf(place, file)];
    std::shared_ptr<Connection> connection = known.lock();
    if (!connection) {
        connection = onServer ? postgres::Open(place.server, place.schema, check) : sqlite::Open(file, check);
        if (connections_->clock)
            connection->clock = connections_->clock;
        if (!connections_->seat.empty())
            connection->SetSeat(connections_->seat);
        known = connection;
    } else if (check == SchemaCheck::Required) {
        onServer ? postgres::RequireSchema(*connection) : sqlite::RequireSchema(*connection);
    }
    return std::make_shared<Database>(std::move(connection));
}

DatabasePtr Workspace::CreateDatabase(const DatabasePlace& place, std::string_view script) {
    if (!place.server.empty())
        postgres::Create(place.server, place.schema, SplitScript(script));
    else
        sqlite::Create(FilePath(place.file), SplitScript(script));
    return OpenDatabase(place);
}

bool Workspace::HasDatabase(const DatabasePlace& place) {
    return place.server.empty() ? fs::exists(FilePath(place.file))
                                : postgres::Exists(place.server, place.schema);
}

void Workspace::DropDatabase(const DatabasePlace& place) {
    if (!place.server.empty())
        postgres::Drop(place.server, place.schema);
    else
        sqlite::Drop(FilePath(place.file));
}

void Workspace::SetSeat(const std::string& seat) {
    connections_->seat = seat;
    for (const auto& [key, open] : connections_->open)
        if (const std::shared_ptr<Connection> connection = open.lock())
            connection->SetSeat(seat);
}

void Workspace::SetClock(std::function<Date()> now) {
    connections_->clock = std::move(now);
}

}  // namespace kv
