#include "session/trans.h"

#include <gmock/gmock.h>

#include "support/test_agency.h"

namespace kv {
namespace {

using testing::ElementsAreArray;

TEST(Trans, OneRowStatesTheNetEffect) {
    struct Case {
        const char* description;
        std::vector<std::string> types;
        std::vector<std::string>
            rows;  ///< Type, Module, ID, WHEN: each write comes a minute after the one before
    };
    const Case cases[] = {
        {"added", {"A"}, {"A|C|00042|2026-03-04 09:31:00"}},
        {"added and changed", {"A", "E"}, {"A|C|00042|2026-03-04 09:32:00"}},
        {"added, changed, removed", {"A", "E", "D"}, {}},
        {"changed twice", {"E", "E"}, {"E|C|00042|2026-03-04 09:32:00"}},
        {"changed and removed", {"E", "D"}, {"D|C|00042|2026-03-04 09:32:00"}},
        {"removed and changed", {"D", "E"}, {"D|C|00042|2026-03-04 09:32:00"}},
        {"removed twice", {"D", "D"}, {"D|C|00042|2026-03-04 09:32:00"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.description);
        test::TestAgency agency;
        for (const std::string& type : c.types) {
            agency.ports.clock.Set(agency.ports.clock.Now().AddMinutes(1));
            EXPECT_TRUE(WriteTransRecord(agency.session(), type, "C", " 00042 "));
        }
        EXPECT_THAT(agency.Rows("select Type, Module, ID, [WHEN] from trans", "trans"),
                    ElementsAreArray(c.rows));
    }
}

TEST(Trans, FamiliesAreKeptApart) {
    test::TestAgency agency;
    WriteTransRecord(agency.session(), "A", "C", "7");
    WriteTransRecord(agency.session(), "E", "T", "7");
    EXPECT_THAT(agency.Rows("select Module, Type from trans order by Module", "trans"),
                ElementsAreArray({"C|A", "T|E"}));
}

}  // namespace
}  // namespace kv
