// What a client has several of: skills, extra call types, diagnoses.
#include <gtest/gtest.h>

#include "careplan/client_attributes.h"
#include "support/test_agency.h"

namespace kv {
namespace {

using Lines = std::vector<std::string>;

class Attributes : public ::testing::Test {
  protected:
    Lines Entries(AttributeList list) {
        Lines lines;
        for (Recordset rows = OpenAttributes(session, list, "00001"); !rows.Eof(); rows.MoveNext()) {
            lines.push_back(rows.Get("ID").ToText() + "|" + rows.Text("Area") + "|" +
                            rows.Text("Description"));
        }
        return lines;
    }
    test::TestAgency agency;
    Session& session = agency.session();
};

TEST_F(Attributes, ASkillIsAddedOnceAndTakesTheListsText) {
    agency.Insert("skills", {{"code", "OX"}, {"Description", "Oxygen"}, {"critical", 1}});
    agency.Insert("skills", {{"code", "CO"}, {"Description", "Cooking"}});
    auto skills = LoadAttributeItems(session, AttributeList::Skills);
    ASSERT_EQ(skills.size(), 2U);
    EXPECT_EQ(skills[0].code, "CO") << "by description";
    EXPECT_FALSE(skills[0].critical);
    EXPECT_TRUE(skills[1].critical);
    agency.Insert("cli_misc", {{"CLIENT", "00002"}, {"Area", "SKI"}, {"ID", "OX"}});
    agency.Insert("cli_misc", {{"CLIENT", "00001"}, {"Area", "ICD"}, {"ID", "OX"}});
    session.OffLine = true;
    AddAttributes(session, AttributeList::Skills, "00001", skills);
    skills[1].description = "Oxygen Tank";
    AddAttributes(session, AttributeList::Skills, "00001", {skills[1]});
    EXPECT_EQ(Entries(AttributeList::Skills), (Lines{"CO|SKI|Cooking", "OX|SKI|Oxygen Tank"}));
    EXPECT_EQ(agency.Rows("select Type, Module, ID from trans", "trans"), Lines{"E|C|00001"});

    Recordset entries = OpenAttributes(session, AttributeList::Skills, "00001");
    agency.ports.dialogs.Answer({false, true});
    EXPECT_FALSE(RemoveAttribute(session, AttributeList::Skills, entries, "00001"));
    EXPECT_TRUE(RemoveAttribute(session, AttributeList::Skills, entries, "00001"));
    EXPECT_EQ(agency.Said(), Lines(2, "question: Are you sure you wish to remove this item?\r\nCooking"));
    EXPECT_EQ(Entries(AttributeList::Skills), Lines{"OX|SKI|Oxygen Tank"});
    EXPECT_EQ(entries.Text("ID"), "OX") << "the first of what is left";
}

TEST_F(Attributes, ACallTypeOfNoListIsAskedFor) {
    const AttributeItem own = {"NEW", "Add a new Call Type"};
    int asked = 0;
    const AskCallType ask = [&]() -> std::optional<std::string> {
        return ++asked < 3 ? std::optional<std::string>("Dog walk") : std::nullopt;
    };
    const std::vector<AttributeItem> items = {own, {"ESC", "Escort"}};
    for (int i = 0; i < 3; ++i) {
        AddAttributes(session, AttributeList::CallTypes, "00001", items, ask);
    }
    EXPECT_EQ(Entries(AttributeList::CallTypes), (Lines{"|CTY|Dog walk", "ESC|CTY|Escort", "|CTY|Dog walk"}))
        << "the same words may stand twice, a listed one may not";
}

TEST_F(Attributes, ADiagnosisGoesThroughItsLine) {
    EXPECT_EQ(DiagnosisLine({"436", "Stroke"}), "436     Stroke");
    EXPECT_EQ(DiagnosisLine({"250.00", ""}), "250.00  ");
    for (const char* line : {"436     Stroke", "250.00  "}) {
        EXPECT_EQ(DiagnosisLine(DiagnosisOf(line)), line);
    }
    EXPECT_EQ(DiagnosisOf("436     Stroke").code, "436");
    AddAttributes(session, AttributeList::Diagnoses, "00001", {DiagnosisOf("436     Stroke")});
    Recordset entries = OpenAttributes(session, AttributeList::Diagnoses, "00001");
    EXPECT_TRUE(RemoveAttribute(session, AttributeList::Diagnoses, entries, "00001"));
    EXPECT_EQ(agency.Said(), Lines()) << "no question";
    EXPECT_FALSE(RemoveAttribute(session, AttributeList::Diagnoses, entries, "00001"));
}

TEST_F(Attributes, RightsAreAskedByList) {
    session.Screens = "Q";
    for (const AttributeList list :
         {AttributeList::Skills, AttributeList::CallTypes, AttributeList::Diagnoses}) {
        const AttributeRights rights = AskAttributeRights(session, list);
        EXPECT_TRUE(rights.add && rights.remove);
    }
    EXPECT_EQ(
        agency.Rows("select Screen, access_code, Description, System from Screens order by Screen", "main"),
        (Lines{"CETA|*|Extra Call Types - Add Entry|Client", "CETR|*|Extra Call Types - Remove Entry|Client",
               "CSKA|*|Skills Required - Add Entry|Client", "CSKR|*|Skills Required - Remove Entry|Client"}));
    EXPECT_TRUE(AskAttributeRights(session, AttributeList::Skills).add) << "everybody's as before";
}

}  // namespace
}  // namespace kv
