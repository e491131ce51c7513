#pragma once
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace kv {

/// Keeps the things used last by name; the one not used for longest goes first.
template <typename Thing>
class LruCache {
  public:
    explicit LruCache(std::size_t most) : most_(most) {}

    Thing* Find(std::string_view name) {
        const auto found = byName_.find(name);
        if (found == byName_.end())
            return nullptr;
        things_.splice(things_.begin(), things_, found->second);
        return &found->second->second;
    }

    void Put(std::string name, Thing thing) {
        Remove(name);
        things_.emplace_front(std::move(name), std::move(thing));
        byName_[things_.front().first] = things_.begin();
        if (things_.size() > most_)
            Remove(things_.back().first);
    }

    void Remove(std::string_view name) {
        const auto found = byName_.find(name);
        if (found == byName_.end())
            return;
        const auto entry = found->second;
        byName_.erase(found);
        things_.erase(entry);
    }

    void Clear() {
        byName_.clear();
        things_.clear();
    }

  private:
    using Entries = std::list<std::pair<std::string, Thing>>;
    std::size_t most_;
    Entries things_;
    std::unordered_map<std::string_view, typename Entries::iterator> byName_;
};

}  // namespace kv
