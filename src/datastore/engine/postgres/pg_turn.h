#pragma once
#include <string>
#include <utility>
#include <vector>

#include "datastore/engine/postgres/pg_link.h"
#include "datastore/replacing.h"

namespace kv::postgres {

/// What ServerTurn promises: a lock that the server keeps for this connection, on which the move is made too.
class Turn {
  public:
    explicit Turn(const std::string& server);
    ~Turn();
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
    void Try(const std::vector<std::string>& databases, const TableLook& look);
    void Move(const std::vector<std::pair<std::string, std::string>>& moves, const TableLook& look);

  private:
    class Step;

    Link link_;
    std::int64_t epoch_;
};

}  // namespace kv::postgres
