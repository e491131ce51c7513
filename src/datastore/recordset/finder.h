#pragma once
#include <optional>
#include <string>
#include <vector>

#include "datastore/engine/compiler.h"
#include "datastore/engine/connection.h"
#include "datastore/recordset/key_list.h"

namespace kv {

/// Finds members of a recordset by a query of the engine, whose keys are mapped to positions. Rows that meet
/// the criteria but joined the table after the opening are passed over.
class Finder {
  public:
    Finder(Connection& connection, const CompiledSelect& query) : connection_(connection), query_(query) {}

    /// The first match at or behind a position in the recordset's order.
    std::optional<std::size_t> Find(std::string_view criteria, std::size_t from, const KeyList& keys,
                                    std::span<const Value> queryLiterals);
    /// The members were fetched anew, at that stamp.
    void Opened(std::int64_t stamp);
    void MembersChanged();

  private:
    using Scope = CompiledCriteria::Scope;
    Scope ScopeFor(std::int64_t stamp, const KeyList& keys) const;
    std::vector<Value> Given(const Scope& scope, std::size_t from, const KeyList& keys) const;
    std::optional<std::size_t> FirstMember(const EngineSql& sql, std::span<const Value> literals,
                                           std::span<const Value> given, const KeyList& keys) const;
    std::vector<std::size_t> AllMembers(const EngineSql& sql, std::span<const Value> literals,
                                        std::span<const Value> given, const KeyList& keys) const;

    Connection& connection_;
    const CompiledSelect& query_;
    std::int64_t openedAt_ = 0;
    // What the criteria found last, for the calls that go on from it.
    std::string foundFor_;
    std::int64_t foundAt_ = 0;
    std::vector<std::size_t> found_;
};

}  // namespace kv
