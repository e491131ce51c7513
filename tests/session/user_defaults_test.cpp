#include "session/user_defaults.h"

#include <gmock/gmock.h>

#include "support/test_agency.h"

namespace kv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Box {
    std::string content;
    std::string tag = "DEFAULT";
    DefaultControl AsControl(const std::string& name) {
        return {name, [this] { return content; }, [this](const std::string& text) { content = text; },
                [this] { return tag; }, [this](const std::string& text) { tag = text; }};
    }
};

class UserDefaults : public testing::Test {
  protected:
    void Load(bool skip = false) { LoadUserDefaults(session, "ANN", "KVCLI", "FRMtest", Controls(), skip); }
    void Save(bool skip = false) { SaveUserDefaults(session, "ANN", "KVCLI", "FRMtest", Controls(), skip); }
    std::vector<DefaultControl> Controls() {
        return {status.AsControl("CMBstatus"), days.AsControl("NUMdays1")};
    }
    void Option(const char* text) {
        agency.Insert("user_Default_options", {{"master_name", "ANN|KVCLI|FRMtest|"}, {"option_text", text}});
    }
    std::vector<std::string> Kept() {
        return agency.Rows("select master_name, field_text from Default_settings order by master_name");
    }
    test::TestAgency agency;
    Session& session = agency.session();
    Box status{"Open"};
    Box days{"7"};
};

TEST_F(UserDefaults, KeepWhatChanged) {
    Load();
    EXPECT_EQ(status.tag, "DEFAULT~Open");
    Save();
    EXPECT_THAT(Kept(), IsEmpty());
    days.content = "14";
    Save();
    EXPECT_THAT(Kept(), ElementsAre("ANN|KVCLI|FRMtest|NUMdays1|14"));
    days = {"7"};
    Load();
    EXPECT_EQ(days.content, "14");
    days.content = "21";
    Save();
    EXPECT_THAT(Kept(), ElementsAre("ANN|KVCLI|FRMtest|NUMdays1|21"));
}

TEST_F(UserDefaults, TheOptionSaysWhether) {
    Option("Prompt");
    Load();
    Save();
    EXPECT_THAT(agency.Said(), IsEmpty()) << "nothing changed, nothing asked";
    status.content = "Closed";
    days.content = "9";
    agency.ports.dialogs.Answer({false, true});
    Save();
    EXPECT_THAT(Kept(), IsEmpty());
    Save();
    EXPECT_EQ(Kept().size(), 2U);
    EXPECT_EQ(agency.Said().size(), 2U) << "asked once for both";
    agency.Work().Execute("update user_Default_options set option_text = 'Never'");
    status.content = "Other";
    Save();
    Load();
    EXPECT_EQ(status.content, "Other");
    Load(true);
    EXPECT_EQ(status.content, "Closed") << "the check can be passed over";
}

}  // namespace
}  // namespace kv
