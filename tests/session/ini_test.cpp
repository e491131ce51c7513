#include <cstdlib>
#include <system_error>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "base/platform.h"
#include "session/ini_file.h"
#include "session/ini_text.h"
#include "session/settings_store.h"
#include "support/test_agency.h"

namespace kv {
namespace {

using testing::Optional;

TEST(IniText, KeepsWhatItDoesNotChange) {
    const std::string text =
        "; made by set-up\r\n[Kestrava System]\r\nCountry = CANADA \r\n; a "
        "remark\r\n\r\n[BILLING]\r\nname=a=b\r\n"
        "[kestrava system]\r\nCountry=US\r\nOther=1\r\n";
    IniText ini(text);
    EXPECT_EQ(ini.ToText(), text);
    EXPECT_THAT(ini.Get("KESTRAVA SYSTEM", "country"), Optional(std::string("CANADA")));
    EXPECT_THAT(ini.Get("billing", "NAME"), Optional(std::string("a=b")));
    EXPECT_EQ(ini.Get("Kestrava System", "Other"), std::nullopt) << "the second section of a name has no say";
    EXPECT_EQ(ini.Get("Kestrava System", "; a remark"), std::nullopt);

    ini.Set("kestrava system", "COUNTRY", "US");
    ini.Set("KESTRAVA SYSTEM", "LastID", "00042");
    ini.Set("Database", "Server", "host=db");
    ini.Remove("BILLING", "Name");
    EXPECT_EQ(ini.ToText(),
              "; made by set-up\r\n[Kestrava System]\r\nCountry=US\r\n; a "
              "remark\r\nLastID=00042\r\n\r\n[BILLING]\r\n"
              "[kestrava system]\r\nCountry=US\r\nOther=1\r\n\r\n[Database]\r\nServer=host=db\r\n");
}

TEST(IniText, AnyValueSurvivesAndNoneBreaksOut) {
    IniText ini;
    const std::pair<const char*, const char*> values[] = {
        {" ends in blanks ", " ends in blanks "},
        {"\"quoted\"", "\"quoted\""},
        {"\"", "\""},
        {"", ""},
        {"[Setting]", "[Setting]"},
        {"; no remark", "; no remark"},
        {"a\r\n[Setting]\nUser=EVE", "a [Setting] User=EVE"}};
    for (const auto& [written, read] : values) {
        ini.Set("S", "K", written);
        EXPECT_THAT(IniText(ini.ToText()).Get("s", "k"), Optional(std::string(read)));
        EXPECT_EQ(IniText(ini.ToText()).Get("Setting", "User"), std::nullopt);
    }
    for (const char* text : {"", "[", "[]", "=", "[S", "key without section=1", "\n\n"})
        EXPECT_EQ(IniText(text).Get("S", "K"), std::nullopt) << text;
}

TEST(IniFile, ReadsAsThroughABufferAndSeesOthersWriting) {
    const test::TempFolder folder;
    const IniFile ini(folder.Path() / "KESTRAVA.INI");
    EXPECT_EQ(ini.Get("Kestrava System", "Country", "US", 50), "US");
    ini.Set("Kestrava System", "Country", "Canada");
    EXPECT_EQ(IniFile(ini.File()).Get("KESTRAVA SYSTEM", "COUNTRY", "US", 50), "Canada");
    EXPECT_EQ(ini.Get("Kestrava System", "Country", "US", 4), "Can");
    // Files of older programs are not UTF-8, and a cut never leaves half a character.
    ReplaceFile(ini.File(), "[S]\nName=Zo\xEB\n");
    EXPECT_EQ(ini.Get("S", "Name", ""), "Zo\xC3\xAB");
    EXPECT_EQ(ini.Get("S", "Name", "", 4), "Zo");
    EXPECT_THROW(IniFile(folder.Path() / "missing" / "x.ini").Set("S", "K", "V"), std::system_error);
}

TEST(SettingsStore, IsSharedAndReadableByItsOwnerAlone) {
    const test::TempFolder folder;
    SettingsStore mine(folder.Path() / "KESTRAVA" / "settings.ini");
    SettingsStore others(mine.File());
    EXPECT_EQ(mine.Get("Setting", "User", "nobody"), "nobody");
    mine.Remove("Setting", "User");
    EXPECT_FALSE(std::filesystem::exists(mine.File())) << "made at the first Set";
    mine.Set("Setting", "User", "ANN");
    EXPECT_EQ(others.Get("SETTING", "USER"), "ANN");
    others.Set("Setting", "User", "BOB");
    EXPECT_EQ(mine.Get("Setting", "User"), "BOB") << "another module's writing is seen";
    mine.Remove("Setting", "user");
    EXPECT_EQ(others.Get("Setting", "User"), "");
    struct stat about {};
    ASSERT_EQ(::stat(mine.File().c_str(), &about), 0);
    EXPECT_EQ(about.st_mode & 0777, 0600U);
}

TEST(SettingsStore, BooleansAndTheDefaultPlace) {
    const test::TempFolder folder;
    SettingsStore store(folder.Path() / "settings.ini");
    const std::pair<const char*, bool> texts[] = {{"True", true}, {"yes", true}, {"Y", true},
                                                  {"1", true},    {"-1", true},  {"False", false},
                                                  {"", false},    {"0", false}};
    for (const auto& [text, value] : texts) {
        store.Set("Setting", "OFF_LINE", text);
        EXPECT_EQ(store.GetBoolean("SETTING", "off_line"), value) << text;
    }
    ::setenv("KV_SETTINGS", "/somewhere/else.ini", 1);
    EXPECT_EQ(SettingsStore::DefaultFile(), "/somewhere/else.ini");
    ::unsetenv("KV_SETTINGS");
    EXPECT_EQ(SettingsStore::DefaultFile(), UserConfigFolder() / "KESTRAVA" / "settings.ini");
}

TEST(SystemClock, TakesTheMomentOfTheEnvironment) {
    ::setenv("KV_NOW", "2026-03-04 09:30:15", 1);
    EXPECT_EQ(SystemClockFromEnvironment().Now(), Date::FromCivil(2026, 3, 4, 9, 30, 15));
    EXPECT_EQ(SystemClockFromEnvironment().Today(), Date::FromCivil(2026, 3, 4));
    for (const char* wrong : {"2026-02-30 09:30:15", "2026-03-04 24:00:00", "03/04/2026", "2026-03-04 09:30",
                              "09:30", "yesterday"}) {
        ::setenv("KV_NOW", wrong, 1);
        EXPECT_THROW(SystemClockFromEnvironment(), std::invalid_argument) << wrong;
    }
    ::unsetenv("KV_NOW");
    EXPECT_GT(SystemClockFromEnvironment().Now(), Date::FromCivil(2020, 1, 1));
}

}  // namespace
}  // namespace kv
