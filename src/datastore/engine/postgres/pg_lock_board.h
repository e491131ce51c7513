#pragma once
#include <set>
#include <span>

#include "datastore/engine/postgres/pg_link.h"
#include "datastore/engine/row_locks.h"

namespace kv::postgres {

/// Row locks that the server frees with the connection. Nobody else sees what a transaction wrote before its
/// end, so the rows that it lets go are kept until then: taking one again costs no way to the server.
class PgLockBoard final : public LockBoard {
  public:
    explicit PgLockBoard(Link& link) : link_(link) {}
    bool TryLock(std::uint64_t row) override;
    void Unlock(std::uint64_t row) override;
    /// A seat's name is its connection's own.
    std::string Holder(std::uint64_t row) override;
    /// Takes those of the rows that nobody else has, within a transaction and in one way to the server. They
    /// count as taken and let go again.
    void Reserve(std::span<const std::uint64_t> rows);
    /// Lets the server have what was let go.
    void Free() noexcept;
    /// The locks went with a connection that was lost.
    void Forget() { letGo_.clear(); }
    /// The row that was taken last had not been let go yet.
    bool WasKept() const { return kept_; }

  private:
    Link& link_;
    bool kept_ = false;
    std::set<std::uint64_t> letGo_;
};

}  // namespace kv::postgres
