#include "session/rights.h"

#include <gmock/gmock.h>

#include "support/test_agency.h"

namespace kv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Rights, AStarWithNothingBlockedAsksNoDatabase) {
    test::TestAgency agency;
    agency.session().DBloc = "/nowhere/";
    EXPECT_TRUE(CheckScreenAccess(agency.session(), "CLIE"));
    agency.session().Screens = "CLIE";
    EXPECT_THROW(CheckScreenAccess(agency.session(), "CLIE"), EngineError);
}

TEST(Rights, TheFirstAskingRegistersTheCode) {
    struct Case {
        std::string screens, blocked, defaultAccess;
        bool held = false;
    };
    const Case cases[] = {
        {"AUTA", "", "*", true},  {"AUTA", "", "+", true},    {"AUTA", "", "~", false},
        {"AUTA~", "", "~", true}, {"AUTA", "", "auta", true}, {"AUTA", "", "", true},
        {"", "", "", false},      {"*", "CLIB", "~", true},   {"*", "CLIB", "CLIB", true},
        {"", "", "*", true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.screens + "/" + c.blocked + "/" + c.defaultAccess);
        test::TestAgency agency;
        agency.session().Screens = c.screens;
        agency.session().Blocked = c.blocked;
        EXPECT_EQ(CheckScreenAccess(agency.session(), "CLIB", false, "View", "Client", c.defaultAccess),
                  c.held);
        EXPECT_THAT(
            agency.Rows("select screen, access_code, access_ID, description, system from Screens", "main"),
            ElementsAre("CLIB|" + c.defaultAccess + "|<Null>|View|Client"));
    }
}

TEST(Rights, ARegisteredCodeIsAnsweredByItsRow) {
    struct Case {
        std::string code, id, screens, blocked;
        bool held = false;
    };
    const Case cases[] = {
        {"CLIB", "", "x|clib|y", "", true},
        {"CLIB", "", "AUTA", "", false},
        {"LIB", "", "XCLIBX", "", true},  // a code inside another counts as held
        {"+", "", "", "", true},          // anybody
        {"+", "", "AUTA", "a+b", false},  // unless blocked
        {"*", "", "AUTA", "", true},      // anybody, too
        {"*", "", "AUTA", "CLIB", true},  // who else is blocked where does not matter
        {"*", "", "AUTA", "x*", false},
        {"*", "", "*", "", true},
        {"~", "17", "|17|", "", true},  // by the second identifier, between its marks
        {"~", "17", "117", "", false},
        {"CLIB", "", "*", "clib", false},  // blocked wins over the star
        {"CLIB", "", "*", "AUTA", true},
        {"", "", "AUTA", "", true},  // an empty code is found in any text
        {"", "", "", "", false},
        {"", "", "*", "AUTA", false},  // and in any blocked text
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.code + "/" + c.id + "/" + c.screens + "/" + c.blocked);
        test::TestAgency agency;
        agency.Insert("Screens", {{"Screen", "CLIB"}, {"access_code", c.code}, {"access_ID", c.id}});
        agency.session().Screens = c.screens;
        agency.session().Blocked = c.blocked;
        EXPECT_EQ(CheckScreenAccess(agency.session(), "CLIB", false, "View", "Client", "+"), c.held);
        EXPECT_EQ(agency.Rows("select * from Screens", "main").size(), 1U)
            << "later defaults are not registered";
    }
}

TEST(Rights, WhatIsOpenStaysOpenOnTheSecondStart) {
    test::TestAgency agency;
    agency.session().Screens = "AUTA";
    for (const char* start : {"first", "second"}) {
        for (const char* open : {"*", "+"}) {
            EXPECT_TRUE(CheckScreenAccess(agency.session(), open == std::string("*") ? "CLIB" : "CLIG", false,
                                          "View", "Client", open))
                << start;
        }
    }
}

TEST(Rights, ARefusalIsToldWhenAsked) {
    test::TestAgency agency;
    agency.session().Screens = "AUTA";
    EXPECT_FALSE(CheckScreenAccess(agency.session(), "CLIS", false, "View Client SSN", "Client", "~"));
    EXPECT_THAT(agency.Said(), IsEmpty());
    EXPECT_FALSE(CheckScreenAccess(agency.session(), "CLIS", true, "View Client SSN", "Client", "~"));
    EXPECT_THAT(agency.Said(),
                ElementsAre("Security Message: Sorry, You do not have access to that option. Need "
                            "View Client SSN"));
    EXPECT_TRUE(CheckScreenAccess(agency.session(), "CLIG", true, "Change Client Groups", "Client", "*"));
    EXPECT_THAT(agency.Said(), IsEmpty());
}

}  // namespace
}  // namespace kv
