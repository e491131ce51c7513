// The statements of dialect_cases.txt on the engine. Every engine answers the same file.
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "base/text.h"
#include "datastore/small_database.h"

namespace kv::test {
namespace {

struct Case {
    int line = 0;
    std::string group;
    std::string statement;
    std::string expected;  // the lines behind it
};

std::vector<Case> ReadCases() {
    std::ifstream file(std::filesystem::path(KV_SOURCE_DIR) / "tests/datastore/dialect_cases.txt");
    std::vector<Case> cases;
    std::string group;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (line.empty() || line[0] == '#')
            continue;
        if (line[0] == '=' && line[1] == '=')
            group = line.substr(3);
        else if (line[0] == '>')
            cases.push_back({number, group, line.substr(2), ""});
        else
            cases.back().expected += line + "\n";
    }
    return cases;
}

bool WantsNames(const Case& entry) {
    return StartsWithNoCase(entry.expected, "names ");
}

std::string Query(Database& database, const Case& entry) {
    std::string answer;
    if (WantsNames(entry)) {
        std::vector<std::string> names;
        for (const FieldInfo& field : database.OpenRecordset(entry.statement).Fields())
            names.push_back(field.name);
        answer = "names " + Join(names, ", ") + "\n";
    }
    for (const std::string& row : RowsOf(database, entry.statement))
        answer += "| " + row + "\n";
    return answer;
}

/// What the statement answers, in the words of the file.
std::string Answer(Database& database, const Case& entry) {
    try {
        if (!entry.expected.empty() && entry.expected[0] == '=')
            return "= " + std::to_string(database.Execute(entry.statement)) + "\n";
        const bool acts =
            StartsWithNoCase(entry.statement, "update") || StartsWithNoCase(entry.statement, "insert") ||
            StartsWithNoCase(entry.statement, "create") || StartsWithNoCase(entry.statement, "drop");
        return acts ? "= " + std::to_string(database.Execute(entry.statement)) + "\n"
                    : Query(database, entry);
    } catch (const EngineError& error) {
        return "! " + std::to_string(error.Number()) + " " + error.Description() + "\n";
    }
}

/// An expected error names its number and, where it matters, a piece of the words.
bool Meets(const std::string& answer, const std::string& expected) {
    if (expected.empty() || expected[0] != '!')
        return answer == expected;
    const std::string number = expected.substr(0, 6);
    const std::string piece(TrimView(std::string_view(expected).substr(6, expected.size() - 7)));
    return StartsWithNoCase(answer, number) && answer.find(piece) != std::string::npos;
}

TEST(Dialect, AnswersAsTheCasesSay) {
    const std::vector<Case> cases = ReadCases();
    ASSERT_GT(cases.size(), 150U);
    std::unique_ptr<SmallDatabase> small;
    std::string group;
    for (const Case& entry : cases) {
        if (!small || entry.group != group) {
            small.reset();
            small = std::make_unique<SmallDatabase>();
            group = entry.group;
        }
        // Twice where it changes nothing: the second time everything comes from the caches.
        const std::string answer = Answer(**small, entry);
        EXPECT_TRUE(Meets(answer, entry.expected))
            << "line " << entry.line << ": " << entry.statement << "\nexpected\n"
            << entry.expected << "answered\n"
            << answer;
        if (!entry.expected.empty() && entry.expected[0] == '|') {
            EXPECT_EQ(Answer(**small, entry), answer) << "line " << entry.line;
        }
    }
}

}  // namespace
}  // namespace kv::test
