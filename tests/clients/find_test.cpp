#include "clients/banned_caregivers.h"
#include "clients/call_types.h"
#include "clients/caregiver_find.h"
#include "clients/change_history.h"
#include "clients/client_find.h"
#include "clients/client_fixture.h"
#include "clients/client_phones.h"
#include "clients/client_sort.h"
#include "clients/directions.h"
#include "clients/referrals.h"

namespace kv {
namespace {

using test::Lines;

class Finds : public test::ClientTest {
  protected:
    static Lines Ids(const PickRows& rows) {
        Lines ids;
        for (const auto& row : rows) {
            ids.push_back(row.front().ToText());
        }
        return ids;
    }
};

TEST_F(Finds, ClientsByEachFieldAndStatus) {
    AddClient("00001", {{"LASTNAME", "Smith"}, {"PHONE", "5185550100"}, {"grouping", "North"}});
    AddClient("00002", {{"LASTNAME", "smitherson"}, {"casestatcd", "C"}, {"grouping", "South"}});
    AddClient("99900", {{"LASTNAME", "Smith Model"}, {"ISTEMPLATE", 1}});
    struct Case {
        PickQuery query;
        Lines ids;
    };
    const Case cases[] = {
        {{"LAST NAME", "All Clients", "ALL", ""}, {"00001", "00002"}},
        {{"LAST NAME", "All Clients", "ALL", "SMI"}, {"00001", "00002"}},
        {{"LAST NAME", "All Clients", "ALL", "mith"}, {}},
        {{"LAST NAME", "Only Active Clients", "ALL", "smi"}, {"00001"}},
        {{"LAST NAME", "Only Non-Active Clients", "ALL", "smi"}, {"00002"}},
        {{"LAST NAME", "Templates", "ALL", ""}, {"99900"}},
        {{"LAST NAME", "All Clients", "South", "s"}, {"00002"}},
        {{"TELEPHONE #", "All Clients", "ALL", "(518) 555"}, {"00001"}},
        {{"GROUP", "All Clients", "ALL", "Nor"}, {"00001"}},
        {{"CLIENT ID", "All Clients", "ALL", "0000"}, {"00001", "00002"}},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(Ids(FindClients(session, each.query)), each.ids) << ClientFindStatement(each.query);
    }
    EXPECT_THROW(FindClients(session, {"LAST NAME", "All Clients", "ALL", "O'"}), EngineError);
    EXPECT_EQ(FindClients(session, cases[7].query)[0][3].ToText(), "(518) 555-0100");
    EXPECT_EQ(ClientFindLabel("TELEPHONE #"), "Telephone #:");
}

TEST_F(Finds, CaregiversByEachFieldAndStatus) {
    agency.Insert("Employee", {{"EMP_ID", "000001"},
                               {"LASTNAME", "Ash"},
                               {"FIRSTNAME", "Al"},
                               {"SS", "123456789"},
                               {"T_CODE", "A"},
                               {"DEPT", "West"}});
    agency.Insert("Employee",
                  {{"EMP_ID", "000002"}, {"LASTNAME", "Ashby"}, {"SS", "912345678"}, {"T_CODE", "I"}});
    agency.Insert("Employee", {{"EMP_ID", "000003"}, {"LASTNAME", "Birch"}, {"T_CODE", "T"}});
    struct Case {
        PickQuery query;
        Lines ids;
    };
    const Case cases[] = {
        {{"LAST NAME  ", "Only Active Caregivers", "ALL", ""}, {"000001"}},
        {{"LAST NAME  ", "All Caregivers", "ALL", "ash "}, {"000001", "000002"}},
        {{"LAST NAME  ", "Only Non-Active Caregivers", "ALL", ""}, {"000002", "000003"}},
        {{"LAST NAME  ", "Only InActive Caregivers", "ALL", "a"}, {"000002"}},
        {{"SSN        ", "All Caregivers", "ALL", "12"}, {"000001"}},
        {{"SSN - Hidden", "All Caregivers", "ALL", "12"}, {"000001", "000002", "000003"}},
        {{"CAREGIVER ID", "All Caregivers", "West", "0"}, {"000001"}},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(Ids(FindCaregivers(session, each.query)), each.ids) << CaregiverFindStatement(each.query);
    }
}

TEST_F(Finds, OrdersAreKeptForTheNextStart) {
    const ClientOrder order = OrderOf({{"Last Name", true}, {"Birthday", false}});
    EXPECT_EQ(order.columns, "lastname DESC ,bdate");
    EXPECT_EQ(order.description, "Last Name DESC  and Birthday");
    KeepClientOrder(session, order);
    EXPECT_EQ(session.settings.Get("CLIENT", "SORT"), "lastname DESC ,bdate");
    KeepClientOrder(session, {});
    EXPECT_EQ(session.ClientSort, "lastname DESC ,bdate") << "nothing chosen changes nothing";
    agency.Insert("Visit_types", {{"code", "B"}, {"Description", "Bath"}, {"payroll_or_billing", "Both"}});
    agency.Insert("Visit_types", {{"code", "A"}, {"payroll_or_billing", "Billing Only"}});
    ASSERT_EQ(LoadCallTypes(session).size(), 1U);
    EXPECT_EQ(LoadCallTypes(session)[0].description, "Bath");
}

TEST_F(Finds, ChangesByEachCriterion) {
    const auto add = [&](const char* type, const char* area, const char* user, int day, const char* time,
                         const char* status, const char* reason) {
        agency.Insert("changes", {{"Type", type},
                                  {"Area", area},
                                  {"User", user},
                                  {"Date", Date::FromCivil(2026, 3, day)},
                                  {"Time", time},
                                  {"Status", status},
                                  {"reason", reason}});
    };
    add("CLI", "00001", "ANN", 1, "09:00:00 AM", "Edit", "Street: Oak\r\nZip: 1 to 2");
    add("CLI", "00002", "BOB", 2, "02:00:00 PM", "DELETED", "Deleted Client");
    add("AUT", "17", "ANN", 3, "10:00:00 AM", "Edit", "hours: 3 to 4");
    const Date second = Date::FromCivil(2026, 3, 2);
    const Date third = Date::FromCivil(2026, 3, 3);
    struct Case {
        ChangeCriteria criteria;
        Lines areas;
    };
    const Case cases[] = {
        {{}, {"17", "00002", "00001"}},
        {{" ann ", "", "", {}, {}, ""}, {}},
        {{"ann", "", "", {}, {}, ""}, {"17", "00001"}},
        {{"", "CLI - Client", "", {}, {}, ""}, {"00002", "00001"}},
        {{"", "CLI - Client", "00001", {}, {}, ""}, {"00001"}},
        {{"", "", "00001", {}, {}, ""}, {"17", "00002", "00001"}},
        {{"", "", "", second, {}, ""}, {"00002"}},
        {{"", "", "", second, third, ""}, {"17", "00002"}},
        {{"", "", "", {}, second, ""}, {"17", "00002", "00001"}},
        {{"", "", "", {}, {}, "09:30 AM"}, {"17"}},
    };
    for (const Case& each : cases) {
        Lines areas;
        for (const HistoryRow& row : LoadHistory(agency.Work(), ChangeSearchStatement(each.criteria))) {
            areas.push_back(row.area);
        }
        EXPECT_EQ(areas, each.areas) << ChangeSearchStatement(each.criteria);
    }
    EXPECT_EQ(LoadHistory(agency.Work(), DeletedStatement("CLI - Client")).size(), 1U);

    HistoryList list{LoadHistory(agency.Work(), ChangeSearchStatement({})), 0};
    EXPECT_TRUE(FindInReasons(session.progress, list, "zip", false));
    EXPECT_EQ(list.at, 2U);
    EXPECT_FALSE(FindInReasons(session.progress, list, "zip", true));
    EXPECT_EQ(list.at, 0U);
    EXPECT_TRUE(FindInReasons(session.progress, list, "oak~~ZIP", false)) << "a line end reads as two tildes";
    EXPECT_EQ(agency.ports.progress.yields, 3 + 0 + 3);
    EXPECT_EQ(PlainText(HistoryPrint({list.rows[2]}, session.clock.Now())),
              "Edit History Print\nRun Date: Mar/04/2026\nRun Time: 09:30 AM\n"
              "Mar/01/26 = 00001  09:00 AM  ANN\nStreet: Oak\nZip: 1 to 2\n");
}

TEST_F(Finds, FurtherPhones) {
    AddClient("00001", {{"casestatcd", "S"}});
    agency.Insert("hkeylonglat", {{"CLTid", "00001"}, {"phonenum", "5550000001"}});
    const PhoneClient client = {"00001", "Doe, Jane", "5550000001", "1 Main", "12345"};
    Recordset phones = OpenClientPhones(session, client);
    EXPECT_EQ(phones.RecordCount(), 0) << "the main phone is never listed";
    EXPECT_FALSE(SavePhone(session, phones, client));
    const auto save = [&](const char* number) {
        phones.AddNew();
        phones.Set("phonenum", number);
        return SavePhone(session, phones, client);
    };
    EXPECT_FALSE(save("5550000001"));
    EXPECT_FALSE(save(""));
    EXPECT_FALSE(save("555"));
    session.OffLine = true;
    EXPECT_TRUE(save("5550000009"));
    EXPECT_TRUE(save("5550000002"));
    EXPECT_TRUE(save("5550000009"));
    EXPECT_EQ(phones.Text("phonenum"), "5550000009");
    EXPECT_FALSE(MayAddPhone(session, {}));
    EXPECT_EQ(agency.Said(), (Lines{"message: You must add a record before you can save!",
                                    "message: Phone number 5550000001 already exists on the client screen!",
                                    "message: Phone number must be entered before you can save!",
                                    "message: Invalid Phone number!",
                                    "message: Phone # (555) 000-0009 already exists, moving to record.",
                                    "message: There are no Clients added to add a phone number!"}));
    EXPECT_EQ(agency.Rows("select phonenum, branchid, addr, zip, status from hkeylonglat where cltid = "
                          "'00001' order by phonenum",
                          "main"),
              (Lines{"5550000001|<Null>|<Null>|<Null>|<Null>", "5550000002|01|1 Main|12345|S",
                     "5550000009|01|1 Main|12345|S"}));
    EXPECT_EQ(agency.Rows("select type, module, id from trans", "trans"), Lines{"E|C|00001"});
    MovePhone(session, phones, ListMove::Next);
    agency.ports.dialogs.Answer({true});
    EXPECT_TRUE(DeletePhone(session, phones));
    EXPECT_EQ(phones.Text("phonenum"), "5550000002");
    EXPECT_EQ(agency.Said(),
              (Lines{"message: End of file, moving to the Last record.",
                     "question: Are you sure you wish to delete this record?\r\n(555) 000-0009"}));
}

TEST_F(Finds, BannedCaregivers) {
    agency.Insert("Employee", {{"EMP_ID", "000001"}, {"LASTNAME", "Ash"}, {"FIRSTNAME", "Al"}});
    session.rsEmployee.Requery();
    EXPECT_EQ(CaregiverName(session, "000001"), "Ash, Al");
    EXPECT_EQ(CaregiverName(session, "9"), std::nullopt);
    Recordset banned = OpenBannedCaregivers(session, "00001");
    EXPECT_FALSE(SaveBannedCaregiver(session, banned, "00001"));
    EXPECT_FALSE(DeleteBannedCaregiver(session, banned, "00001"));
    banned.AddNew();
    EXPECT_FALSE(SaveBannedCaregiver(session, banned, "00001"));
    session.OffLine = true;
    for (int twice = 0; twice < 2; ++twice) {
        banned.AddNew();
        banned.Set("emp_id", "000001");
        banned.Set("Emp_name", "Ash, Al");
        EXPECT_TRUE(SaveBannedCaregiver(session, banned, "00001"));
    }
    EXPECT_EQ(agency.Rows("select client, emp_id, emp_name from emp_ban"),
              (Lines{"00001|000001|Ash, Al", "00001|000001|Ash, Al"}));
    EXPECT_EQ(agency.Rows("select type, module, id from trans", "trans"), Lines{"E|C|00001"});
    EXPECT_EQ(agency.Said(), (Lines{"message: You must add a record before you can save!",
                                    "message: There are no records to delete.",
                                    "message: You must enter in a valid Caregiver Id before saving"}));
}

TEST_F(Finds, ReferralSourcesAndContacts) {
    const auto add = [&](const char* name, const char* group, const char* category, const char* status) {
        return agency.Insert("referral", {{"FullName", name},
                                          {"Ref_Group", group},
                                          {"Category", category},
                                          {"Status", status},
                                          {"Phone", "5185550100"},
                                          {"State", "NY"},
                                          {"Zip", "12180"}});
    };
    const std::int64_t hospital = add("Hill Hospital", "Both", "Hospital", "Active");
    add("Elm Clinic", "Client", "Clinic", "Active");
    add("Old Clinic", "Client", "Clinic", "Closed");
    add("Staff Agency", "Employee", "Clinic", "Active");
    agency.Insert("referral_contacts", {{"referral_seq", hospital}, {"FullName", "Zoe"}});
    agency.Insert("referral_contacts",
                  {{"referral_seq", hospital}, {"FullName", "Amy"}, {"Phone", "5185550111"}, {"ext", "12"}});
    const auto names = [&](const ReferralLimits& limits) {
        Lines all;
        for (const ReferralSource& source : LoadReferrals(session, limits)) {
            all.push_back(source.name);
            all.insert(all.end(), source.contacts.begin(), source.contacts.end());
        }
        return all;
    };
    EXPECT_EQ(names({}), (Lines{"Elm Clinic", "Hill Hospital", "Amy", "Zoe"}));
    EXPECT_EQ(names({"Clinic", "All"}), (Lines{"Elm Clinic", "Old Clinic"}));
    EXPECT_EQ(SourceDetails(session, "hill hospital")[3].second, "NY,  12180");
    EXPECT_EQ(SourceDetails(session, "St. Mary's").size(), 0U);
    EXPECT_EQ(ContactDetails(session, "Hill Hospital", "Amy")[5].second, "(518) 555-0111  Ext: 12");

    ReferralEntry entry = {"O'Hara, MD", "Kim", "Doctor"};
    SaveReferral(session, entry);
    EXPECT_EQ(entry.source, "OHara MD");
    SaveReferral(session, entry);
    entry.source.clear();
    SaveReferral(session, entry);
    EXPECT_EQ(agency.Said(), (Lines{"message: You may not have a , or a ' in your Source",
                                    "message: You must choose a referral source, before adding a contact"}));
    EXPECT_EQ(agency.Rows("select fullname, category, ref_group, status, ranking, first_contact from "
                          "referral where fullname = 'OHara MD'"),
              Lines{"OHara MD|Doctor|Client|Active|0|2026-03-04 00:00:00"});
    EXPECT_EQ(agency.Rows("select fullname from referral_contacts where fullname = 'Kim'"), Lines{"Kim"});

    AddClient("00001", {{"ref_grouping", "Clinic"}, {"grouping", "North"}});
    AddClient("00002", {{"ref_grouping", "Clinic"}});
    AddClient("00003", {{"ref_grouping", "Hospital"}});
    const auto bars = [&](const std::vector<std::string>& ticked, const std::string& group) {
        const Document document = ReferralGraph(session, ticked, group);
        for (const Block& block : document.Blocks()) {
            if (const auto* chart = std::get_if<BarChart>(&block)) {
                return chart->bars;
            }
        }
        return decltype(BarChart::bars)();
    };
    using Bars = decltype(BarChart::bars);
    EXPECT_EQ(bars({}, "ALL"), (Bars{{"Clinic", 2}, {"Hospital", 1}}));
    EXPECT_EQ(bars({"Clinic"}, "North"), (Bars{{"Clinic", 1}}));
    EXPECT_EQ(bars({"Doctor"}, "ALL"), Bars());
}

TEST_F(Finds, AddressesOfMapsAndDirections) {
    const MapServers servers = {"https://d.example", "https://m.example", "Qwbke%7Cn", ""};
    const PostalAddress from = {"", "Troy", "NY", "12180"};
    const PostalAddress to = {"1 Main St #5", "New Troy", "NY", "12181"};
    EXPECT_EQ(
        DirectionsAddress(servers, from, to),
        "https://d.example/maps?hl=en&tab=wl&saddr=+Troy+NY+12180&daddr=1+Main+St+%235+New+Troy+NY+12181");
    EXPECT_EQ(
        MapAddress(servers, to, kScreenMapSize),
        "https://m.example/staticmap/v3/getplacemap?key=Qwbke%7Cn&location=1+Main+St+%235,New+Troy,NY,12181"
        "&size=750,550&type=map&zoom=12&imagetype=jpeg&showicon=green-1&style=european");
    EXPECT_EQ(BrowserAddress(" www.example.org "), "http://www.example.org");
    EXPECT_EQ(ReadMapServers(session).map, "");
    session.Ini().Set("Maps", "MapServer", "https://m.example");
    EXPECT_EQ(ReadMapServers(session).map, "https://m.example");
    WriteClientPicture(ClientPictureFile(session, "00001", ".jpg"), "bytes");
    EXPECT_TRUE(std::filesystem::exists(agency.Folder() / "PICTURES" / "CLIENT" / "00001.jpg"));
}

}  // namespace
}  // namespace kv
