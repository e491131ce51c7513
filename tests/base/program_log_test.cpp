#include "base/program_log.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "base/platform.h"
#include "base/text.h"

namespace kv {
namespace {

namespace fs = std::filesystem;
using testing::EndsWith;
using testing::MatchesRegex;

class ProgramLogTest : public testing::Test {
  protected:
    ProgramLogTest() {
        std::string pattern = (fs::temp_directory_path() / "kv-log-XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data());
        file_ = folder_ / "own" / "program.log";
    }
    ~ProgramLogTest() override {
        SetLogUser("");
        fs::remove_all(folder_);
    }
    std::vector<std::string> Lines() const { return LinesOf(file_); }
    static std::vector<std::string> LinesOf(const fs::path& file) {
        std::vector<std::string> lines = Split(ReadFile(file).value_or(""), '\n');
        EXPECT_EQ(lines.back(), "") << "every line has an end";
        lines.pop_back();
        return lines;
    }

    fs::path folder_;
    fs::path file_;
};

TEST_F(ProgramLogTest, SaysWhenWhoWhereAndWhat) {
    LogSkippedStep(94, "Invalid use of Null");
    {
        const ProgramLog log(file_.parent_path(), "kvCli");
        SetLogUser("ANN\nLEE");
        LogSkippedStep(94, "Invalid use of Null");
        {
            const ProgramLog inner(folder_, "kvtool");
            LogSkippedStep(1, "elsewhere");
        }
        SetLogUser("");
        const auto nameless = [] { LogSkippedStep(3186, "Could not save;\r\ncurrently locked"); };
        nameless();
    }
    LogSkippedStep(94, "Invalid use of Null");
    const std::string moment = "[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}";
    EXPECT_THAT(
        Lines(),
        testing::ElementsAre(
            MatchesRegex(moment + " kvCli ANN_LEE program_log_test.cpp:[0-9]+ TestBody error 94: Invalid use "
                                  "of Null"),
            MatchesRegex(
                moment +
                " kvCli - program_log_test.cpp:[0-9]+ error 3186: Could not save;  currently locked")));
    EXPECT_THAT(LinesOf(folder_ / "program.log"), testing::ElementsAre(EndsWith("error 1: elsewhere")));
}

TEST_F(ProgramLogTest, HoldsNothingOfTheData) {
    struct Case {
        const char *words, *kept;
    };
    const Case cases[] = {
        {"No current record.", "No current record."},
        {"Syntax error (missing operator) in query expression 'client = 'O'Brien' and x = 5'.",
         "Syntax error ... in query expression ..."},
        {"'/home/ann/kestrava.mdb' is not a database of this program.", "..."},
        {"The server can't be reached: host \"db\"", "The server can't be reached: host ..."},
        {"Too few parameters. Expected 12.", "Too few parameters. Expected ...."},
        {"Key (client)=(00001) exists", "Key ...=... exists"},
        {"Key (a (b) Smith", "Key ..."},
        {"born #1931/05/06#", "born #.../.../...#"},
        {"lastname = 'Smith", "lastname = ..."},
        {"", ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(WithoutValues(c.words), c.kept);
}

TEST_F(ProgramLogTest, IsKeptSmallAndToItsOwner) {
    constexpr std::size_t kFull = 1'000'000;
    constexpr mode_t kOwnerOnly = 0600;
    fs::create_directories(file_.parent_path());
    const ProgramLog log(file_.parent_path(), "kvCli");
    for (const char* first : {"1", "2", "3", "4", "5"}) {
        std::ofstream(file_) << first << std::string(kFull, '.') << '\n';
        LogSkippedStep(1, "next");
    }
    EXPECT_THAT(Lines(), testing::ElementsAre(EndsWith("next")));
    for (const auto& [name, first] : {std::pair{".1", '5'}, {".2", '4'}, {".3", '3'}})
        EXPECT_EQ(ReadFile(fs::path(file_) += name)->front(), first);
    EXPECT_FALSE(fs::exists(fs::path(file_) += ".4"));
    struct stat about {};
    ASSERT_EQ(::stat(file_.c_str(), &about), 0);
    EXPECT_EQ(about.st_mode & 0777, kOwnerOnly);
}

TEST_F(ProgramLogTest, LosesNothingOfSeveralThatWriteAtOnce) {
    constexpr int kWriters = 4;
    constexpr int kLines = 300;
    fs::create_directories(file_.parent_path());
    // As good as full: it is rotated while they write.
    std::ofstream(file_) << std::string(990'000, '.') << '\n';
    std::vector<std::thread> seats;
    for (int seat = 0; seat < kWriters; ++seat)
        seats.emplace_back([&, seat] {
            EXPECT_TRUE(SurvivesApart(
                [&] {
                    const ProgramLog log(file_.parent_path(), "seat" + std::to_string(seat));
                    for (int line = 0; line < kLines; ++line)
                        LogSkippedStep(line, "x");
                },
                {std::chrono::seconds(10), 100'000'000}));
        });
    for (std::thread& seat : seats)
        seat.join();
    std::size_t whole = 0;
    for (const fs::path& each : {file_, fs::path(file_) += ".1"})
        for (const std::string& line : LinesOf(each))
            whole += line.ends_with(": x") && line.find(" seat") != std::string::npos ? 1 : 0;
    EXPECT_EQ(whole, kWriters * kLines);
}

TEST_F(ProgramLogTest, NeverFailsForTheCaller) {
    const fs::path blocked = folder_ / "blocked";
    std::ofstream(blocked) << "a file where the folder should be";
    const ProgramLog log(blocked, "kvCli");
    LogSkippedStep(1, "lost");
    EXPECT_TRUE(fs::is_regular_file(blocked));
    // What somebody else put into its place is neither written nor followed.
    fs::create_directories(file_.parent_path());
    fs::create_symlink(blocked, file_);
    const ProgramLog linked(file_.parent_path(), "kvCli");
    LogSkippedStep(1, "lost");
    EXPECT_EQ(ReadFile(blocked), "a file where the folder should be");
}

}  // namespace
}  // namespace kv
