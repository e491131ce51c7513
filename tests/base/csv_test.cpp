#include "base/csv.h"

#include <gmock/gmock.h>

namespace kv {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(Csv, CellsQuotesAndLineEnds) {
    CsvReader reader(
        "\xEF\xBB\xBFid,name,note\r\n\r\n1,\"Doe, \"\"Ann\"\"\",\n2,\"\",\"two\r\nlines\"\n3, x ,\"\"");
    EXPECT_THAT(*reader.Next(), ElementsAre("id", "name", "note"));
    EXPECT_EQ(reader.Line(), 1U);
    EXPECT_THAT(*reader.Next(), ElementsAre("1", "Doe, \"Ann\"", std::nullopt));
    EXPECT_EQ(reader.Line(), 3U);
    EXPECT_THAT(*reader.Next(), ElementsAre("2", "", "two\r\nlines"));
    EXPECT_THAT(*reader.Next(), ElementsAre("3", " x ", ""));
    EXPECT_EQ(reader.Line(), 6U);
    EXPECT_EQ(reader.Next(), std::nullopt);
}

TEST(Csv, FaultsNameTheirLine) {
    const std::pair<const char*, const char*> faults[] = {{"a\n\"b\nc", "line 2: "},
                                                          {"a\nb\"c", "line 2: "},
                                                          {"\"a\"b", "line 1: "},
                                                          {"\"a\nb\" ,c", "line 2: "}};
    for (const auto& [text, words] : faults) {
        try {
            CsvReader reader(text);
            while (reader.Next()) {
            }
            ADD_FAILURE() << text;
        } catch (const CsvError& error) {
            EXPECT_THAT(error.what(), HasSubstr(words)) << text;
        }
    }
}

TEST(Csv, WrittenRowsReadBack) {
    const CsvRow row = {"plain", std::nullopt, "", "a,b", "say \"hi\"", "two\r\nlines", " blanks "};
    const std::string line = CsvLine(row);
    EXPECT_EQ(line, "plain,,\"\",\"a,b\",\"say \"\"hi\"\"\",\"two\r\nlines\", blanks \r\n");
    EXPECT_EQ(CsvReader(line).Next(), row);
}

}  // namespace
}  // namespace kv
