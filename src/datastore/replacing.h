// What a copy needs to put databases in the place of others and lose nothing that is written there.
#pragma once
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kv {

namespace sqlite {
class HeldFile;
}
namespace postgres {
class Turn;
}

/// Is told of each table that is to be taken away, in which database, by its file or schema, and how many
/// rows it holds. What it throws keeps all of them where they are.
using TableLook = std::function<void(const std::string& database, const std::string& table, long rows)>;

/// Database files that no other program has open while this lives.
class HeldFiles {
  public:
    /// Throws EngineError 3260 where another program has one of them open, 3343 for one that is no database.
    explicit HeldFiles(const std::vector<std::filesystem::path>& files);
    ~HeldFiles();
    HeldFiles(const HeldFiles&) = delete;
    HeldFiles& operator=(const HeldFiles&) = delete;

    void Look(const TableLook& look) const;
    /// Takes the files away in their order, with all that lies beside them. A program that is just coming to
    /// one of them is told that it is no database of this program.
    void Drop();

  private:
    std::vector<std::unique_ptr<sqlite::HeldFile>> files_;
};

/// The turn to bring databases to a server. One program at a time has it, until it ends, however that ends.
class ServerTurn {
  public:
    /// Throws EngineError 3260 where another program has it, 3151 where the server can't be reached.
    explicit ServerTurn(const std::string& server);
    ~ServerTurn();
    ServerTurn(const ServerTurn&) = delete;
    ServerTurn& operator=(const ServerTurn&) = delete;

    /// Looks at those of the databases that are there, and whether they can be taken away: throws EngineError
    /// 3219 where another program has built something upon them, 3260 where somebody is at work in them.
    void Try(const std::vector<std::string>& databases, const TableLook& look);
    /// Puts databases in the place of others, from and to, all at once or none. Nobody writes to those that
    /// go from the look at them on. Throws as Try does, and 3151 where the turn was lost with the connection.
    void Move(const std::vector<std::pair<std::string, std::string>>& moves, const TableLook& look);

  private:
    std::unique_ptr<postgres::Turn> turn_;
};

}  // namespace kv
