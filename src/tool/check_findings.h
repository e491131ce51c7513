// What the parts of `check` share: the databases they look at and what they find.
#pragma once
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "base/text.h"
#include "datastore/workspace.h"

namespace kv::tool {

/// Something wrong in one of the databases.
struct Finding {
    std::string database;  ///< "kestrava"
    std::string words;
    /// Where it has one right answer: puts it right, in a transaction that the caller holds, from what the
    /// database holds by then, and says what it did; "" where there was nothing to do any more. Empty where a
    /// person has to decide.
    std::function<std::string(Database&)> repair;
};
using Findings = std::vector<Finding>;

struct SameText {
    bool operator()(const std::string& a, const std::string& b) const { return CompareText(a, b) == 0; }
};
struct TextHash {
    std::size_t operator()(const std::string& text) const { return HashText(text); }
};
/// Ids and keys, without regard to case.
using Keys = std::unordered_set<std::string, TextHash, SameText>;
template <typename T>
using ByKey = std::unordered_map<std::string, T, TextHash, SameText>;

/// The databases of a data folder that could be opened.
class OpenDatabases {
  public:
    void Add(const std::string& name, DatabasePtr database) { open_[name] = std::move(database); }
    Database& At(std::string_view name) const { return *open_.find(name)->second; }
    bool Has(std::string_view name) const { return open_.count(name) > 0; }
    bool Has(std::string_view name, std::string_view table, std::string_view column) const;
    /// The table with every column that the schema gives it.
    bool HasWhole(std::string_view name, std::string_view table) const;

  private:
    std::map<std::string, DatabasePtr, std::less<>> open_;
};

/// "2026-03-31"; "no day" for Null.
std::string DayWords(const Value& date);

}  // namespace kv::tool
