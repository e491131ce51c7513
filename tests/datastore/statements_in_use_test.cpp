// Each statement that the suite sends runs on the real schema: what is not understood is an error number,
// never a guess.
#include <filesystem>
#include <fstream>
#include <map>

#include <gtest/gtest.h>

#include "base/text.h"
#include "datastore/schema.h"
#include "datastore/small_database.h"
#include "datastore/workspace.h"

namespace kv {
namespace {

class StatementsInUse : public testing::Test {
  protected:
    StatementsInUse() {
        for (const std::string& name : SchemaNames())
            open_[name] = workspace_.CreateDatabase(places_.Place(name), SchemaScript(name));
    }
    void Run(const std::vector<std::string>& line) {
        if (line[0] == "find") {
            Recordset rows = open_.at(line[1])->OpenRecordset(line[2]);
            rows.FindFirst(JoinRest(line, 3));
            EXPECT_TRUE(rows.NoMatch());
            return;
        }
        const std::string statement = JoinRest(line, 1);
        const bool reads = StartsWithNoCase(statement, "select") || statement.find(' ') == std::string::npos;
        if (reads)
            open_.at(line[0])->OpenRecordset(statement);
        else
            open_.at(line[0])->Execute(statement);
    }

    static std::string JoinRest(const std::vector<std::string>& line, std::size_t from) {
        return Join({line.begin() + static_cast<std::ptrdiff_t>(from), line.end()}, "|");
    }

    test::TestPlaces places_;
    Workspace workspace_;
    std::map<std::string, DatabasePtr> open_;
};

TEST_F(StatementsInUse, AllRun) {
    std::ifstream file(std::filesystem::path(KV_SOURCE_DIR) / "tests/datastore/statements_in_use.txt");
    std::size_t count = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#')
            continue;
        ++count;
        try {
            Run(Split(line, '|'));
        } catch (const EngineError& error) {
            ADD_FAILURE() << line << "\n    " << error.Number() << ": " << error.Description();
        }
    }
    EXPECT_GT(count, 150U);
}

}  // namespace
}  // namespace kv
