#include "datastore/recordset/finder.h"

#include <algorithm>

#include "datastore/dialect/lexer.h"
#include "datastore/faults.h"

namespace kv {
namespace {

constexpr int kFewMembers[] = {8, 64, 256};

void ReadKey(const Cursor& cursor, std::vector<RowKey>& key) {
    for (std::size_t i = 0; i < key.size(); ++i)
        key[i] = cursor.Key(static_cast<int>(i));
}

}  // namespace

void Finder::Opened(std::int64_t stamp) {
    openedAt_ = stamp;
    MembersChanged();
}

void Finder::MembersChanged() {
    found_.clear();
    foundFor_.clear();
}

/// Once something was written a member may no longer meet the query's own condition, or never have met it,
/// and is searched all the same: few members by their keys, many by looking at all rows and passing over
/// those that are none.
Finder::Scope Finder::ScopeFor(std::int64_t stamp, const KeyList& keys) const {
    Scope scope;
    if (stamp == openedAt_ || !query_.Tree().where)
        return scope;
    scope.anyRow = true;
    if (keys.Width() != 1)
        return scope;
    for (const int few : kFewMembers)
        if (keys.Size() <= static_cast<std::size_t>(few)) {
            scope.amongKeys = few;
            break;
        }
    return scope;
}

std::vector<Value> Finder::Given(const Scope& scope, std::size_t from, const KeyList& keys) const {
    std::vector<Value> given;
    if (scope.behindKey)
        given.emplace_back(static_cast<long long>(keys.One(from - 1)));
    // The last key fills the places that are left.
    for (std::size_t i = 0; i < static_cast<std::size_t>(scope.amongKeys); ++i)
        given.emplace_back(static_cast<long long>(keys.One(std::min(i, keys.Size() - 1))));
    return given;
}

std::optional<std::size_t> Finder::Find(std::string_view criteria, std::size_t from, const KeyList& keys,
                                        std::span<const Value> queryLiterals) {
    if (!query_.Keyed())
        throw faults::NotSupported("a search in the rows of a query with totals or DISTINCT");
    const dialect::Lexed lexed = dialect::Lex(criteria);
    const CompiledCriteria& compiled = query_.Criteria(lexed, queryLiterals.size());
    if (from >= keys.Size())
        return std::nullopt;
    std::vector<Value> literals(queryLiterals.begin(), queryLiterals.end());
    literals.insert(literals.end(), lexed.literals.begin(), lexed.literals.end());

    const std::int64_t stamp = connection_.Stamp(query_.Watch());
    Scope scope = ScopeFor(stamp, keys);
    // Keys never change, so in their order the engine's first match is ours; in another order only while no
    // value changed.
    const bool byKey = query_.InKeyOrder() && keys.Ascending();
    if (byKey || (from == 0 && stamp == openedAt_)) {
        scope.behindKey = from > 0 && scope.amongKeys == 0;
        if (scope.behindKey || from == 0)
            return FirstMember(compiled.Sql(scope), literals, Given(scope, from, keys), keys);
    }
    if (foundFor_ != criteria || foundAt_ != stamp) {
        found_ = AllMembers(compiled.Sql(scope), literals, Given(scope, from, keys), keys);
        foundFor_ = criteria;
        foundAt_ = stamp;
    }
    const auto next = std::lower_bound(found_.begin(), found_.end(), from);
    return next == found_.end() ? std::nullopt : std::optional(*next);
}

std::optional<std::size_t> Finder::FirstMember(const EngineSql& sql, std::span<const Value> literals,
                                               std::span<const Value> given, const KeyList& keys) const {
    const auto cursor = connection_.Query(sql.text, ParameterValues(sql, literals, given, connection_.clock));
    std::vector<RowKey> key(keys.Width());
    while (cursor->Next()) {
        ReadKey(*cursor, key);
        if (const auto position = keys.Find(key))
            return position;
    }
    return std::nullopt;
}

std::vector<std::size_t> Finder::AllMembers(const EngineSql& sql, std::span<const Value> literals,
                                            std::span<const Value> given, const KeyList& keys) const {
    const auto cursor = connection_.Query(sql.text, ParameterValues(sql, literals, given, connection_.clock));
    std::vector<std::size_t> members;
    std::vector<RowKey> key(keys.Width());
    while (cursor->Next()) {
        ReadKey(*cursor, key);
        if (const auto position = keys.Find(key))
            members.push_back(*position);
    }
    std::sort(members.begin(), members.end());
    return members;
}

}  // namespace kv
