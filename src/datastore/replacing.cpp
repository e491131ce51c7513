#include "datastore/replacing.h"

#include "datastore/engine/postgres/pg_turn.h"
#include "datastore/engine/sqlite/sqlite_open.h"

namespace kv {

HeldFiles::HeldFiles(const std::vector<std::filesystem::path>& files) {
    for (const std::filesystem::path& file : files)
        files_.push_back(std::make_unique<sqlite::HeldFile>(file));
}

HeldFiles::~HeldFiles() = default;

void HeldFiles::Look(const TableLook& look) const {
    for (const auto& file : files_)
        file->Look(look);
}

void HeldFiles::Drop() {
    for (const auto& file : files_)
        file->Drop();
    files_.clear();
}

ServerTurn::ServerTurn(const std::string& server) : turn_(std::make_unique<postgres::Turn>(server)) {}

ServerTurn::~ServerTurn() = default;

void ServerTurn::Try(const std::vector<std::string>& databases, const TableLook& look) {
    turn_->Try(databases, look);
}

void ServerTurn::Move(const std::vector<std::pair<std::string, std::string>>& moves, const TableLook& look) {
    turn_->Move(moves, look);
}

}  // namespace kv
