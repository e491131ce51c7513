#include <gmock/gmock.h>

#include "tool/tool_run.h"

namespace kv {
namespace {

using test::Answer;
using test::ToolFolder;
using testing::HasSubstr;

TEST(LoadAndDump, EveryTypeGoesRoundTrip) {
    const ToolFolder folder;
    folder.Do({"sql",
               "create table every (id counter primary key, t text(40), m memo, b yesno, s short, l long, d "
               "double, "
               "c currency, w datetime)"});
    const std::string csv =
        "id,t,m,b,s,l,d,c,w\r\n"
        "1,\"O'Brien, \"\"Pat\"\"\",\"two\r\nlines\",true,-32768,2147483647,0.1,12.7505,2026-03-04 "
        "15:05:09\r\n"
        "2,\"\",,false,,,,,2026-03-04\r\n"
        "7,Zo\xC3\xAB, blanks ,true,0,0,-1.5e-09,-0.01,15:05:00\r\n";
    const std::string file = folder.Write("every.csv", csv);
    EXPECT_EQ(folder.Do({"load", "EVERY", file}).dump(), R"({"table":"every","rows":3})");
    EXPECT_EQ(folder.Run({"dump", "every"}).out, csv);
    EXPECT_EQ(folder.Rows("select t, m, s from every where id = 2"), R"([["",null,null]])");
    // The counter goes on behind the numbers that were given.
    folder.Do({"load", "every", folder.Write("more.csv", "t\nmore\n")});
    EXPECT_EQ(folder.Rows("select id, b from every where t = 'more'"), "[[8,false]]");
    EXPECT_EQ(folder.Do({"load", "every", file, "--replace"})["rows"], 3);
    EXPECT_EQ(folder.Run({"dump", "every"}).out, csv);
}

TEST(LoadAndDump, AFaultNamesItsPlaceAndLoadsNothing) {
    const ToolFolder folder;
    folder.Do({"load", "sch_day", folder.Write("good.csv", "sequence,client\n5,00001\n")});
    struct Case {
        std::string text, words;
    };
    const Case cases[] = {
        {"st_date,client\n,2\n2026-02-30,2\n",
         "error: row 2 (line 3), column st_date, value \"2026-02-30\": it is no date or time"},
        {"st_date\n03/04/2026\n", "it is no date or time"},
        {"st_time\n24:00\n", "it is no date or time"},
        {"client,hrs\n2,8\n\n2,eight\n",
         "error: row 2 (line 4), column HRS, value \"eight\": it is no number"},
        {"hrs\n\"\"\n", "value \"\": it is no number"},
        {"hrs\n\"1,5\"\n", "it is no number"},
        {"assign_seq\n1.5\n", "a whole number is wanted"},
        {"assign_seq\n3000000000\n", "the number is too large"},
        {"paperwork\nmaybe\n", "true or false is wanted"},
        {"day\nMON\nMONDAY\n", "it has 6 characters and the column holds 3"},
        {"day,hrs\nMON,1\nMON\n", "error: row 2 (line 3): 1 cells for 2 columns"},
        {"client,nowhere\n2,x\n", "error: sch_day has no column \"nowhere\""},
        {"day,DAY\nMON,TUE\n", "is named twice"},
        {"day\n\"MON\n", "error: line 2: a quoted cell does not end"},
        {"", "no row of column names"},
        {"sequence\n9\n9\n", "error 3022: row 2 (line 3): "},
    };
    for (const Case& c : cases) {
        const Answer answer = folder.Run({"load", "sch_day", folder.Write("bad.csv", c.text), "--replace"});
        EXPECT_EQ(answer.status, 1) << c.text;
        EXPECT_THAT(answer.err, HasSubstr(c.words)) << c.text;
        EXPECT_EQ(folder.Rows("select sequence, client from sch_day"), R"([[5,"00001"]])") << c.text;
    }
}

TEST(LoadAndDump, ATableIsFoundInItsDatabase) {
    const ToolFolder folder;
    folder.Do(
        {"load", "[providers sex]", folder.Write("sex.csv", "code,description\nF,Female\n"), "--db", "main"});
    EXPECT_EQ(folder.Run({"dump", "PROVIDERS SEX", "--db", "main"}).out, "code,description\r\nF,Female\r\n");
    const Answer wrong = folder.Run({"dump", "providers sex"});
    EXPECT_EQ(wrong.status, 1);
    EXPECT_THAT(wrong.err, HasSubstr("error 3078: "));
    // Rows come in the order of the key, whatever the order in which they were loaded.
    folder.Do(
        {"load", "employee", folder.Write("emp.csv", "emp_id,lastname\n000300,C\n000100,A\n000200,B\n")});
    EXPECT_EQ(folder.Rows("select count(*) from employee"), "[[3]]");
    const std::string dumped = folder.Run({"dump", "Employee"}).out;
    EXPECT_LT(dumped.find("000100"), dumped.find("000200"));
    EXPECT_LT(dumped.find("000200"), dumped.find("000300"));
}

}  // namespace
}  // namespace kv
