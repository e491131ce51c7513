#include "tool/tool.h"

#include <cstdlib>
#include <sstream>

#include <gmock/gmock.h>

#include "session/ini_file.h"
#include "session/settings_store.h"
#include "tool/terminal.h"
#include "tool/tool_run.h"

namespace kv {
namespace {

using test::Answer;
using test::ToolFolder;
using testing::HasSubstr;
using testing::StartsWith;

TEST(Tool, UnusableArgumentsAreToldApartFromFailures) {
    const ToolFolder folder(ToolFolder::Empty);
    struct Case {
        std::vector<std::string> arguments;
        int status = 0;
        std::string words;
    };
    const Case cases[] = {
        {{}, 2, "error: "},
        {{"fly"}, 2, "error: "},
        {{"login"}, 2, "--user"},
        {{"init", "--country", "FRANCE"}, 2, "error: "},
        {{"init", "extra"}, 2, "error: "},
        {{"--yes", "--no", "logout"}, 2, "error: "},
        {{"--now", "2026-02-30 10:00:00", "logout"}, 2, "error: \"2026-02-30 10:00:00\""},
        {{"logout", "--now", "2026-02-28 24:00:00"}, 2, "error: "},
        {{"sql", "select * from ClientPR"}, 1, "error 3024: "},
        {{"load", "ClientPR", "nowhere.csv"}, 1, "error: The file nowhere.csv can't be read"},
    };
    for (const Case& c : cases) {
        const Answer answer = folder.Run(c.arguments);
        EXPECT_EQ(answer.status, c.status) << answer.err;
        EXPECT_THAT(answer.err, StartsWith("error"));
        EXPECT_THAT(answer.err, HasSubstr(c.words));
        EXPECT_EQ(answer.out, "");
    }
    const Answer help = folder.Run({"load", "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.out, HasSubstr("--replace"));
}

TEST(Tool, TheEnvironmentNamesMomentAndSettings) {
    const ToolFolder folder(ToolFolder::Empty);
    ::setenv("KV_NOW", "2026-02-30", 1);
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(RunTool({"--settings", folder.Path("s.ini").string(), "logout"}, out, err), 2);
    ::unsetenv("KV_NOW");
    ::setenv("KV_SETTINGS", folder.Path("other.ini").c_str(), 1);
    EXPECT_EQ(RunTool({"check"}, out, err), 1);
    EXPECT_THAT(err.str(), HasSubstr("No data folder is known"));
    EXPECT_EQ(RunTool({"--data", folder.Path("data").string(), "login", "--user", "ANN"}, out, err), 0);
    ::unsetenv("KV_SETTINGS");
    EXPECT_EQ(SettingsStore(folder.Path("other.ini")).Get("Setting", "User"), "ANN");
}

TEST(Tool, InitMakesAFolderThatWorks) {
    const ToolFolder folder(ToolFolder::Empty);
    EXPECT_EQ(folder.Do({"init", "--country", "canada"}).dump(),
              R"({"created":["kestrava.mdb","main.mdb","archive.mdb","trans.mdb","tempassign.mdb"]})");
    EXPECT_EQ(IniFile(folder.Data("KESTRAVA.INI")).Get("Kestrava System", "Country", ""), "CANADA");
    EXPECT_EQ(folder.Do({"check"}).dump(), R"({"problems":[],"repaired":[]})");
    const Answer again = folder.Run({"init"});
    EXPECT_EQ(again.status, 0);
    EXPECT_EQ(again.out, "{\"created\":[]}\n");
    EXPECT_THAT(again.err, HasSubstr("main.mdb exists and was left alone\n"));
}

TEST(Tool, LoginLeavesWhatTheMenuProgramLeaves) {
    const ToolFolder folder(ToolFolder::Empty);
    const std::string file = folder.Path("settings.ini").string();
    EXPECT_EQ(folder.Do({"login", "--user", "ANN"})["settings"], file);
    const SettingsStore settings(file);
    const auto setting = [&](const char* key) { return settings.Get("Setting", key, "<none>"); };
    EXPECT_EQ(settings.Get("STARTED", "STARTED"), "Y");
    EXPECT_EQ(setting("DBloc"), folder.Path("data").string() + "/");
    EXPECT_EQ(setting("User") + "|" + setting("user_name") + "|" + setting("Screens") + "|" +
                  setting("Blocked") + "|" + setting("Manager") + "|" + setting("VENDOR") + "|" +
                  setting("OFF_LINE"),
              "ANN|ANN|*||all||False");
    folder.Do({"login", "--user", "BOB", "--name", "Bob Roe", "--rights", "CLIE|AUTA", "--blocked", "CLIS",
               "--manager", "M1", "--vendor", "07", "--on-the-road"});
    EXPECT_EQ(setting("User") + "|" + setting("user_name") + "|" + setting("Screens") + "|" +
                  setting("Blocked") + "|" + setting("Manager") + "|" + setting("VENDOR") + "|" +
                  setting("OFF_LINE"),
              "BOB|Bob Roe|CLIE|AUTA|CLIS|M1|07|True");
    EXPECT_EQ(folder.Do({"logout"}).dump(), "{}");
    EXPECT_EQ(settings.Get("STARTED", "STARTED", "<none>"), "<none>");
    EXPECT_EQ(setting("User"), "BOB");
}

TEST(Tool, RefusesALoginThatNoColumnTakes) {
    const ToolFolder folder;
    struct Case {
        const char* option;
        const char* key;
        std::size_t most;
    };
    for (const Case& c :
         {Case{"--user", "User", 20}, {"--vendor", "VENDOR", 10}, {"--manager", "Manager", 10}}) {
        const auto login = [&](std::size_t length) {
            std::string text;
            for (std::size_t i = 0; i < length; ++i)
                text += "\xC3\xAB";  // one character of two bytes
            std::vector<std::string> arguments = {"login", c.option, text};
            if (c.key != std::string("User"))
                arguments.insert(arguments.end(), {"--user", "ANN"});
            return folder.Run(arguments);
        };
        SettingsStore settings(folder.Path("settings.ini"));
        EXPECT_EQ(login(c.most).status, 0);
        const std::string kept = settings.Get("Setting", c.key);
        const Answer refused = login(c.most + 1);
        EXPECT_EQ(refused.status, 2);
        EXPECT_EQ(refused.err, std::string("error: ") + c.option + " is " + std::to_string(c.most + 1) +
                                   " characters long, and at most " + std::to_string(c.most) +
                                   " can be stored\n");
        EXPECT_EQ(settings.Get("Setting", c.key), kept) << "nothing was written";
        // A login that another program left.
        settings.Set("Setting", c.key, std::string(c.most + 1, 'x'));
        const Answer work = folder.Run({"schedule", "--all"});
        EXPECT_EQ(work.status, 1);
        EXPECT_THAT(work.err, HasSubstr("can be stored. Please log in again"));
        settings.Set("Setting", c.key, "ANN");
    }
}

TEST(Tool, LoginTakesTheWeekEndingOfTheAgency) {
    const ToolFolder folder;
    folder.Do({"sql", "--db", "main", "update Agency set wkending = 'WED'"});
    folder.Do({"login", "--user", "ANN"});
    EXPECT_EQ(SettingsStore(folder.Path("settings.ini")).Get("Setting", "WKENDING"), "WED");
}

TEST(Tool, TheNextClientIdIsOnlyLookedUp) {
    const ToolFolder folder;
    folder.Do({"sql", "insert into clientpr (client) values ('00043')"});
    EXPECT_EQ(folder.Do({"next-id"}).dump(), R"({"id":"00001"})");
    IniFile(folder.Data("KESTRAVA.INI")).Set("KESTRAVA SYSTEM", "ClientID", "42");
    EXPECT_EQ(folder.Do({"next-id"}).dump(), R"({"id":"00044"})");
    EXPECT_EQ(folder.Do({"next-id"}).dump(), R"({"id":"00044"})") << "nothing was written";
    EXPECT_EQ(folder.Do({"next-id", "--template"}).dump(), R"({"id":"99900"})");
    IniFile(folder.Data("KESTRAVA.INI")).Set("KESTRAVA SYSTEM", "ClientID", "99899");
    EXPECT_EQ(folder.Run({"next-id"}).status, 1);
}

TEST(Tool, StatementsAnswerAsJson) {
    const ToolFolder folder;
    EXPECT_EQ(
        folder
            .Do({"sql",
                 "insert into clientpr (client, lastname, bdate, nurlastvis, billmile_rate, istemplate, "
                 "istelephony) values ('00001', 'Zo\xC3\xAB \"Z\"', #1931/05/06#, 46085.5, 0.405, 0, true)"})
            .dump(),
        R"({"affected":1})");
    const auto found = folder.Do({"sql",
                                  " SELECT client, lastname, firstnam, bdate, nurlastvis, billmile_rate, "
                                  "istemplate, istelephony as phones from clientpr"});
    EXPECT_EQ(
        found["columns"].dump(),
        R"(["CLIENT","LASTNAME","FIRSTNAM","BDATE","NURLASTVIS","Billmile_rate","ISTEMPLATE","phones"])");
    EXPECT_EQ(found["rows"].dump(),
              "[[\"00001\",\"Zo\xC3\xAB \\\"Z\\\"\",null,\"1931-05-06 00:00:00\","
              "\"2026-03-04 12:00:00\",0.405,0,true]]");
    EXPECT_EQ(folder.Rows("select start1 from Agency", "main"), R"([["1899-12-30 07:00:00"]])");
    EXPECT_EQ(folder.Rows("select client from clientpr where client = 'x'"), "[]");
    folder.Do({"sql", "--db", folder.Data("trans.mdb").string(), "create table extra (a long, b text(5))"});
    EXPECT_EQ(folder.Do({"sql", "--db", "trans", "insert into extra (a, b) values (1, null)"})["affected"],
              1);
    EXPECT_EQ(folder.Rows("select * from extra", "trans"), "[[1,null]]");
    const Answer wrong = folder.Run({"sql", "select * from nowhere"});
    EXPECT_EQ(wrong.status, 1);
    EXPECT_THAT(wrong.err, StartsWith("error 3078: "));
}

TEST(Terminal, SaysWhatAScreenWouldShow) {
    std::ostringstream err;
    bool answer = false;
    tool::TerminalDialogs dialogs(err, answer);
    dialogs.ShowMessageWindow("one\r\ntwo", true);
    dialogs.ShowFaults({"first", "second"});
    EXPECT_FALSE(dialogs.AskQuestion("Sure?"));
    answer = true;
    EXPECT_TRUE(dialogs.AskQuestion("Sure?"));
    EXPECT_EQ(dialogs.AskInput("Title", "Name:", "x"), std::nullopt);
    EXPECT_EQ(err.str(),
              "message: one\ntwo\nmessage: first\nmessage: second\nmessage: Sure? No\nmessage: Sure? Yes\n"
              "message: Title: Name:\n");
}

}  // namespace
}  // namespace kv
