#include "clients/quick_find.h"

#include <gtest/gtest.h>

#include "clients/client_fixture.h"

namespace kv {
namespace {

using test::Lines;
using test::PlainForm;

class ClientQuickFind : public test::ClientTest {
  protected:
    ClientQuickFind() {
        AddClient("00001", {{"LASTNAME", "Grant"}, {"FIRSTNAM", "Lee"}});
        AddClient("00002", {{"LASTNAME", "Lee"}, {"FIRSTNAM", "Ann"}});
        AddClient("00003", {{"LASTNAME", "Young"}, {"FIRSTNAM", "Bo"}});
    }
};

TEST_F(ClientQuickFind, OffersAChoiceOnlyWhereThereIsOne) {
    struct Case {
        const char* text;
        std::size_t offered;
        const char* chosen;
        bool moved;
        const char* id;
        Lines said;
    };
    const Lines nobody = {"message: There was no Client found"};
    const std::vector<Case> cases = {
        {"oun", 0, "", true, "00003", {}},         {"2", 0, "", true, "00002", {}},
        {"lee", 2, "00001", true, "00001", {}},    {"lee", 2, "", false, "00001", nobody},
        {"nobody", 0, "", false, "00001", nobody}, {"", 0, "", false, "00001", {}},
    };
    PlainForm form(session);
    for (const Case& each : cases) {
        std::size_t offered = 0;
        const bool moved =
            QuickFindClient(session, form, each.text, [&](const std::vector<QuickFindRow>& hits) {
                offered = hits.size();
                return each.chosen;
            });
        form.Show();
        EXPECT_EQ(moved, each.moved) << each.text;
        EXPECT_EQ(offered, each.offered) << each.text;
        EXPECT_EQ(form.List().Text("CLIENT"), each.id) << each.text;
        EXPECT_EQ(agency.Said(), each.said) << each.text;
    }
}

TEST_F(ClientQuickFind, WaitsForAClientAtFault) {
    PlainForm form(session);
    form.Type("TDBCombo1", "");
    EXPECT_FALSE(QuickFindClient(session, form, "Young", [](const auto&) { return std::string(); }));
    EXPECT_EQ(form.List().Text("CLIENT"), "00001");
}

}  // namespace
}  // namespace kv
