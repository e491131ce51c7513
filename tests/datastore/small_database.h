#pragma once
#include <filesystem>
#include <string>
#include <vector>

#include "datastore/workspace.h"
#include "support/test_agency.h"
#include "support/test_places.h"

namespace kv::test {

/// A database of a few tables in a place of its own, for the store's own tests.
class SmallDatabase {
  public:
    SmallDatabase();

    Database& operator*() { return *database; }
    Database* operator->() { return database.get(); }
    DatabasePlace Place() const { return places.Place("small"); }
    /// Its file, where it has one.
    std::filesystem::path File() const { return Place().file; }

    TestPlaces places;
    Workspace workspace;
    DatabasePtr database;
};

/// A value as the dialect writes it: 'text', 12.5, #2026/01/31#, true, null, and $12.5 for money.
std::string Shown(const Value& value);
/// The rows of a query, each as its values joined by " | ".
std::vector<std::string> RowsOf(Database& database, const std::string& sql);
/// The number of the EngineError that the call raises; 0 for none.
template <typename Call>
int ErrorOf(Call call) {
    try {
        call();
    } catch (const EngineError& error) {
        return error.Number();
    }
    return 0;
}
/// Its number and words; "none" for none.
template <typename Call>
std::string WordsOf(Call call) {
    try {
        call();
    } catch (const EngineError& error) {
        return std::to_string(error.Number()) + " " + error.Description();
    }
    return "none";
}

}  // namespace kv::test
