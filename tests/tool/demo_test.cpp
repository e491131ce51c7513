#include "tool/demo.h"

#include <map>
#include <memory>
#include <set>

#include <gtest/gtest.h>

#include "base/numbers.h"
#include "session/data_folder.h"
#include "support/scripted_ports.h"
#include "support/test_agency.h"
#include "tool/tool_run.h"

namespace kv {
namespace {

using test::RecordingProgress;
using test::SettableClock;
using test::TempFolder;
using Rows = std::vector<std::vector<Value>>;

constexpr long kMinutes = 1440;

/// A made-up agency in a folder of its own.
class Made {
  public:
    explicit Made(const DemoOptions& options, Date now = Date::FromCivil(2026, 3, 4, 9, 30)) : clock(now) {
        counts = RunDemo(workspace_, folder_.Path(), clock, progress_, options);
    }

    Database& Data(const std::string& name) {
        DatabasePtr& database = open_[name];
        if (!database) {
            database = workspace_.OpenDatabase(folder_.Path() / DatabaseFile(name));
        }
        return *database;
    }
    Rows Query(const std::string& database, const std::string& sql) {
        Rows rows;
        for (Recordset row = Data(database).OpenRecordset(sql, RecordsetType::Snapshot); !row.Eof();
             row.MoveNext()) {
            std::vector<Value>& values = rows.emplace_back();
            for (std::size_t i = 0; i < row.Fields().size(); ++i) {
                values.push_back(row.Get(i));
            }
        }
        return rows;
    }
    /// The contents of one column, trimmed blanks and noughts left out: both stand for "none".
    std::set<std::string> Column(const std::string& database, const std::string& table,
                                 const std::string& column) {
        std::set<std::string> texts;
        const std::string query = Sql("select [{}] from [{}]", Raw{column}, Raw{table});
        for (const auto& row : Query(database, query)) {
            const std::string text = row[0].ToText();
            if (!text.empty() && text != "0") {
                texts.insert(text);
            }
        }
        return texts;
    }
    long Count(const std::string& database, const std::string& sql) {
        return static_cast<long>(Data(database).Lookup(sql).ToInteger());
    }
    /// Every row of every table.
    std::string Dump() {
        std::string dump;
        for (const char* name : {"kestrava", "main", "archive"}) {
            for (const std::string& table : Data(name).Tables().Names()) {
                dump += table + "\n";
                for (const auto& row : Query(name, "select * from [" + table + "]")) {
                    for (const Value& value : row) {
                        dump += value.ToText() + "|";
                    }
                    dump += "\n";
                }
            }
        }
        return dump;
    }
    const std::filesystem::path& Folder() const { return folder_.Path(); }
    Workspace& workspace() { return workspace_; }

    SettableClock clock;
    DemoCounts counts;

  private:
    TempFolder folder_;
    Workspace workspace_;
    RecordingProgress progress_;
    std::map<std::string, DatabasePtr> open_;
};

/// One agency for all tests that only read.
class DemoAgency : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        DemoOptions options;
        options.clients = 90;
        options.caregivers = 70;
        made_ = std::make_unique<Made>(options);
    }
    static void TearDownTestSuite() { made_.reset(); }
    static Made& Agency() { return *made_; }
    static Rows Work(const std::string& sql) { return made_->Query("kestrava", sql); }

  private:
    static std::unique_ptr<Made> made_;
};
std::unique_ptr<Made> DemoAgency::made_;

DemoOptions Small(std::uint64_t seed) {
    DemoOptions options;
    options.clients = 14;
    options.caregivers = 11;
    options.seed = seed;
    return options;
}

TEST(Demo, SameNumbersSeedAndMomentGiveTheSameRows) {
    const std::string first = Made(Small(5)).Dump();
    EXPECT_TRUE(first == Made(Small(5)).Dump());
    EXPECT_FALSE(first == Made(Small(6)).Dump());
    EXPECT_FALSE(first == Made(Small(5), Date::FromCivil(2026, 3, 5, 9, 30)).Dump());
}

TEST(Demo, RefusesAFolderInUseAndNumbersOutOfRange) {
    Made made(Small(5));
    RecordingProgress progress;
    const std::string before = made.Dump();
    EXPECT_THROW(RunDemo(made.workspace(), made.Folder(), made.clock, progress, Small(6)), DemoRefused);
    EXPECT_TRUE(before == made.Dump());

    const TempFolder folder;
    Workspace workspace;
    DemoOptions none = Small(5);
    none.clients = 0;
    EXPECT_THROW(RunDemo(workspace, folder.Path(), made.clock, progress, none), DemoRefused);
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(Demo, OneClientAndOneCaregiverAreEnough) {
    DemoOptions options;
    options.clients = 1;
    options.caregivers = 1;
    Made made(options);
    EXPECT_EQ(made.Count("kestrava", "select count(*) as n from ClientPR where ISTEMPLATE = 0"), 1);
    EXPECT_EQ(made.Count("kestrava", "select count(*) as n from Employee"), 1);
}

TEST(Demo, TheCommandPrintsWhatItMadeAndLeavesASoundFolder) {
    const test::ToolFolder folder;
    const std::vector<std::string> demo = {"--now", "2026-01-01 00:05:00", "demo", "--clients",
                                           "26",    "--caregivers",        "20"};
    const test::Answer made = folder.Run(demo);
    ASSERT_EQ(made.status, 0) << made.err;
    EXPECT_EQ(made.Document()["clients"], 26);
    EXPECT_EQ(made.Document()["caregivers"], 20);
    EXPECT_EQ(folder.Rows("select count(*) as n from assign"),
              "[[" + made.Document()["assignments"].dump() + "]]");
    EXPECT_EQ(folder.Do({"check"}).dump(), R"({"problems":[],"repaired":[]})");
    const test::Answer again = folder.Run(demo);
    EXPECT_EQ(again.status, 1);
    EXPECT_NE(again.err.find("already holds"), std::string::npos) << again.err;
    EXPECT_EQ(folder.Run({"demo", "--clients", "0"}).status, 2);
}

TEST_F(DemoAgency, CountsAreThoseOfTheTables) {
    const auto count = [](const char* table) {
        return Agency().Count("kestrava", std::string("select count(*) as n from ") + table);
    };
    EXPECT_EQ(Agency().counts.clients, 90);
    EXPECT_EQ(count("ClientPR where ISTEMPLATE = 0"), 90);
    EXPECT_EQ(count("Employee"), Agency().counts.caregivers);
    EXPECT_EQ(count("Authorizations"), Agency().counts.authorizations);
    EXPECT_EQ(count("assign"), Agency().counts.assignments);
    EXPECT_EQ(count("sch_day"), Agency().counts.schedules);
}

TEST_F(DemoAgency, EveryTableHasRowsButTheJournalAndTheTemplate) {
    for (const char* name : {"kestrava", "main", "archive", "trans", "tempassign"}) {
        for (const std::string& table : Agency().Data(name).Tables().Names()) {
            const bool empty = Agency().Count(name, "select count(*) as n from [" + table + "]") == 0;
            EXPECT_EQ(empty, table == "trans" || table == "assign_head") << name << "." << table;
        }
    }
}

struct Reference {
    const char* database;
    const char* table;
    const char* column;
    const char* targetDatabase;
    const char* target;
    const char* key;
};
constexpr Reference kReferences[] = {
    {"kestrava", "Authorizations", "CLIENT", "kestrava", "ClientPR", "CLIENT"},
    {"kestrava", "Authorizations", "bill_code", "kestrava", "billcode_imaster", "billcode"},
    {"kestrava", "Authorizations", "visit_type", "main", "Visit_types", "code"},
    {"kestrava", "assign", "author_seq", "kestrava", "Authorizations", "sequence"},
    {"kestrava", "assign", "CLIENT", "kestrava", "ClientPR", "CLIENT"},
    {"kestrava", "assign", "emp_id", "kestrava", "Employee", "emp_id"},
    {"kestrava", "assign_task", "ID", "kestrava", "Authorizations", "sequence"},
    {"kestrava", "assign_task", "task", "main", "tasks", "code"},
    {"kestrava", "sch_day", "CLIENT", "kestrava", "ClientPR", "CLIENT"},
    {"kestrava", "sch_day", "emp_id", "kestrava", "Employee", "emp_id"},
    {"kestrava", "sch_day", "author_seq", "kestrava", "Authorizations", "sequence"},
    {"archive", "Sch_day", "author_seq", "kestrava", "Authorizations", "sequence"},
    {"kestrava", "clirate", "CLIENT", "kestrava", "ClientPR", "CLIENT"},
    {"kestrava", "billcode_idetail", "billcode", "kestrava", "billcode_imaster", "billcode"},
    {"kestrava", "emprate", "employee", "kestrava", "Employee", "emp_id"},
    {"kestrava", "Emp_ban", "CLIENT", "kestrava", "ClientPR", "CLIENT"},
    {"kestrava", "Emp_ban", "emp_id", "kestrava", "Employee", "emp_id"},
    {"kestrava", "Emp_willwork", "emp_id", "kestrava", "Employee", "emp_id"},
    {"kestrava", "emp_locations", "district", "main", "BOROUGH", "description"},
    {"kestrava", "emp_misc", "ID", "main", "skills", "code"},
    {"kestrava", "cli_emp", "emp_id", "kestrava", "Employee", "emp_id"},
    {"kestrava", "cli_personnel", "ID", "main", "cli_PERSONNEL", "ID"},
    {"kestrava", "CLI_Required", "ID", "main", "cli_requirements", "ID"},
    {"kestrava", "logging", "CLIENT", "kestrava", "ClientPR", "CLIENT"},
    {"kestrava", "tasks", "LoggingSeq", "kestrava", "logging", "id"},
    {"kestrava", "tasks", "OnGoing_Seq", "kestrava", "ongoing", "sequence"},
    {"kestrava", "tasks", "OnGoingOriginal", "kestrava", "tasks", "sequence"},
    {"kestrava", "tasks", "contact", "kestrava", "referral", "sequence"},
    {"kestrava", "referral_contacts", "referral_seq", "kestrava", "referral", "sequence"},
    {"kestrava", "ClientPR", "MANAGER", "main", "MANAGER", "code"},
    {"kestrava", "ClientPR", "LANGUAGE", "main", "LANGUAGE", "code"},
    {"kestrava", "ClientPR", "PROV_SEX", "main", "PROVIDERS SEX", "code"},
    {"kestrava", "ClientPR", "ORD_DISCPL", "main", "DISCIPLINE", "code"},
    {"kestrava", "ClientPR", "BORO", "main", "BOROUGH", "description"},
    {"kestrava", "ClientPR", "ref_source", "kestrava", "referral", "FullName"},
    {"main", "hkeylonglat", "CLTid", "kestrava", "ClientPR", "CLIENT"},
};

TEST_F(DemoAgency, WhatRowsPointToIsThere) {
    for (const Reference& reference : kReferences) {
        const auto keys = Agency().Column(reference.targetDatabase, reference.target, reference.key);
        for (const std::string& value :
             Agency().Column(reference.database, reference.table, reference.column)) {
            EXPECT_TRUE(keys.count(value) != 0) << reference.table << "." << reference.column << " " << value;
        }
    }
}

struct Shift {
    std::string client;
    long from = 0;
    long to = 0;
};

TEST_F(DemoAgency, NobodyIsAtTwoPlacesAtOnceOrAwayAndAtWork) {
    std::map<std::string, std::vector<Shift>> shifts;
    for (const auto& row :
         Work("select emp_id,CLIENT,st_date,St_time,HRS from sch_day where Cancelled = 0 and emp_id <> '' "
              "order by emp_id,st_date,St_time")) {
        const long start = row[2].ToDate().DayNumber() * kMinutes + row[3].ToDate().SecondOfDay() / 60;
        shifts[row[0].ToText()].push_back(
            {row[1].ToText(), start, start + static_cast<long>(row[4].ToDouble() * 60)});
    }
    std::map<std::string, std::vector<Shift>> willing;
    for (const auto& row : Work("select emp_id,st_date,St_time,END_TIME from Emp_willwork")) {
        const long day = row[1].ToDate().DayNumber() * kMinutes;
        const long end = row[3].ToDate().SecondOfDay() / 60;
        willing[row[0].ToText()].push_back(
            {"", day + row[2].ToDate().SecondOfDay() / 60, day + (end == 0 ? kMinutes : end)});
    }
    long covered = 0;
    for (const auto& [caregiver, list] : shifts) {
        for (std::size_t i = 0; i < list.size(); ++i) {
            for (std::size_t j = i + 1; j < list.size() && list[j].from < list[i].to; ++j) {
                ASSERT_NE(list[i].client.empty(), list[j].client.empty())
                    << caregiver << " twice at " << IsoText(Date(list[j].from / 1440.0));
                const Shift& visit = list[i].client.empty() ? list[j] : list[i];
                bool comes = false;
                for (const Shift& span : willing[caregiver]) {
                    comes = comes || (span.from <= visit.from && visit.to <= span.to);
                }
                EXPECT_TRUE(comes) << caregiver << " is away on " << IsoText(Date(visit.from / 1440.0));
                ++covered;
            }
        }
    }
    EXPECT_GT(covered, 0) << "nobody comes in spite of an absence";
}

TEST_F(DemoAgency, WeeklyUnavailabilityIsKept) {
    std::map<std::string, std::vector<Shift>> away;  // minutes of the week
    for (const auto& row : Work("select emp_id,Status,St_time,HRS from assign where Type = 'N'")) {
        const long start =
            static_cast<long>(row[1].ToDouble()) * kMinutes + row[2].ToDate().SecondOfDay() / 60;
        away[row[0].ToText()].push_back({"", start, start + static_cast<long>(row[3].ToDouble() * 60)});
    }
    ASSERT_FALSE(away.empty());
    constexpr long kWeek = 7 * kMinutes;
    for (const auto& row :
         Work("select emp_id,st_date,St_time,HRS from sch_day where CLIENT <> '' and emp_id <> ''")) {
        const Date day = row[1].ToDate();
        const long start = (day.Weekday() - 1) * kMinutes + row[2].ToDate().SecondOfDay() / 60;
        const long end = start + static_cast<long>(row[3].ToDouble() * 60);
        for (const Shift& span : away[row[0].ToText()]) {
            for (const long turn : {-kWeek, 0L, kWeek}) {
                EXPECT_FALSE(span.from < end + turn && start + turn < span.to)
                    << row[0].ToText() << " on " << IsoText(day);
            }
        }
    }
}

TEST_F(DemoAgency, BannedCaregiversNeverVisit) {
    std::set<std::pair<std::string, std::string>> banned;
    for (const auto& row : Work("select CLIENT,emp_id from Emp_ban")) {
        banned.insert({row[0].ToText(), row[1].ToText()});
    }
    ASSERT_FALSE(banned.empty());
    for (const char* name : {"kestrava", "archive"}) {
        for (const auto& row : Agency().Query(name, "select CLIENT,emp_id from sch_day")) {
            EXPECT_EQ(banned.count({row[0].ToText(), row[1].ToText()}), 0U)
                << row[0].ToText() << " " << row[1].ToText();
        }
    }
}

TEST_F(DemoAgency, StatusAndDatesOfClientsFollowTheirAuthorizations) {
    struct State {
        std::string status = "C";
        long from = 0, to = 0;
        bool ended = false;
    };
    std::map<std::string, State> states;
    for (const auto& row : Work("select CLIENT,status_code,from_date,to_DATE from Authorizations order by "
                                "status_code,from_date")) {
        const bool first = states.count(row[0].ToText()) == 0;
        State& state = states[row[0].ToText()];
        if (state.ended) {
            continue;
        }
        const std::string code = row[1].ToText();
        const long from = row[2].ToDate().DayNumber();
        const long to = row[3].ToDate().DayNumber();
        state.from = first ? from : std::min(state.from, from);
        state.to = first ? to : std::max(state.to, to);
        state.ended = code == "D";
        if (code == "A" || code == "D" || (code == "S" && state.status == "C")) {
            state.status = code;
        }
    }
    std::set<std::string> seen;
    for (const auto& row :
         Work("select CLIENT,CASESTATCD,STARTSERVC,CASEEXPDAT from ClientPR where ISTEMPLATE = 0")) {
        const auto state = states.find(row[0].ToText());
        seen.insert(row[1].ToText());
        if (state == states.end()) {
            EXPECT_EQ(row[1].ToText() == "Z", row[2].IsNull()) << row[0].ToText();
            continue;
        }
        EXPECT_EQ(row[1].ToText(), state->second.status) << row[0].ToText();
        EXPECT_EQ(row[2].ToDate().DayNumber(), state->second.from) << row[0].ToText();
        EXPECT_EQ(row[3].ToDate().DayNumber(), state->second.to) << row[0].ToText();
    }
    EXPECT_EQ(seen, (std::set<std::string>{"A", "C", "D", "S", "Z"}));
}

// What schedule creation would do to the folder: nothing. The days are worked out afresh from the
// assignments.
TEST_F(DemoAgency, EveryWeeklyVisitStandsUpToTheHorizon) {
    std::map<long, std::set<long>> visits;
    long first = 1000000;
    for (const auto& row : Work("select assign_seq,st_date,[Day],WEEKEND from sch_day where CLIENT <> ''")) {
        const Date day = row[1].ToDate();
        visits[static_cast<long>(row[0].ToInteger())].insert(day.DayNumber());
        first = std::min(first, day.DayNumber());
        EXPECT_EQ(row[3].ToDate().Weekday(), 7);
        EXPECT_EQ(row[3].ToDate().DayNumber() - day.DayNumber(), 7 - day.Weekday());
    }
    std::set<long> holidays;
    for (const auto& row : Agency().Query("main", "select [date] from Holidays")) {
        holidays.insert(row[0].ToDate().DayNumber());
    }
    std::set<std::string> uncovered;
    for (const auto& row : Work("select CLIENT from ClientPR where HOL_COV = 'NO'")) {
        uncovered.insert(row[0].ToText());
    }
    const long lastWeekEnd =
        Date::FromCivil(2026, 3, 28).DayNumber();  // the last Saturday within four weeks of today
    long holidaysOff = 0;
    for (const auto& row :
         Work("select sequence,CLIENT,Status,st_date,END_DATE,Last_date from assign where Type = 'A' and "
              "author_status = 'A' and howoften = 1")) {
        std::set<long> expected;
        const long from = std::max(first, row[3].ToDate().DayNumber());
        const long to = std::min(lastWeekEnd, row[4].ToDate().DayNumber());
        for (long day = from; day <= to; ++day) {
            const bool off = holidays.count(day) != 0 && uncovered.count(row[1].ToText()) != 0;
            if (Date(static_cast<double>(day)).Weekday() - 1 == static_cast<int>(row[2].ToDouble())) {
                holidaysOff += off ? 1 : 0;
                if (!off) {
                    expected.insert(day);
                }
            }
        }
        EXPECT_EQ(visits[static_cast<long>(row[0].ToInteger())], expected) << row[0].ToText();
        if (to == lastWeekEnd) {
            EXPECT_EQ(row[5].ToDate().DayNumber(), lastWeekEnd) << row[0].ToText();
        }
    }
    EXPECT_GT(holidaysOff, 0) << "no client keeps a holiday";
}

TEST_F(DemoAgency, VisitsBearWhatTheirAssignmentAndClientSay) {
    std::map<std::string, std::vector<Value>> assignments;
    for (auto& row :
         Work("select sequence,CLIENT,St_time,END_TIME,HRS,[Day],visit_type,billto,cli_name,author_seq from "
              "assign")) {
        assignments[row[0].ToText()] = std::move(row);
    }
    for (const auto& row : Work(
             "select assign_seq,CLIENT,St_time,END_TIME,HRS,[Day],visit_type,billto,cli_name,author_seq from "
             "sch_day where assign_seq > 0")) {
        ASSERT_EQ(row, assignments[row[0].ToText()]);
    }
    std::map<std::string, std::vector<Value>> clients;
    for (auto& row : Work("select CLIENT,MANAGER,DISASTER_CODE,grouping from ClientPR")) {
        clients[row[0].ToText()] = std::move(row);
    }
    for (const auto& row :
         Work("select CLIENT,Manager,disaster_code,cli_group from sch_day where CLIENT <> ''")) {
        ASSERT_EQ(row, clients[row[0].ToText()]);
    }
}

TEST_F(DemoAgency, TotalsAgree) {
    std::map<std::pair<std::string, std::string>, long> visits;
    double worked = 0;
    const Date thisWeek = Date::FromCivil(2026, 3, 1);  // its Sunday
    for (const char* name : {"kestrava", "archive"}) {
        for (const auto& row :
             Agency().Query(name, "select CLIENT,emp_id,act_hrs,st_date from sch_day where act_hrs > 0")) {
            ++visits[{row[0].ToText(), row[1].ToText()}];
            worked += row[3].ToDate() < thisWeek ? row[2].ToDouble() : 0;
        }
    }
    const Rows visited = Work("select client,emp_id,num_visits from cli_emp");
    EXPECT_EQ(visited.size(), visits.size());
    for (const auto& row : visited) {
        EXPECT_EQ(row[2].ToInteger(), (visits[{row[0].ToText(), row[1].ToText()}]));
    }
    for (const char* table : {"Payroll", "Billing"}) {
        double hours = 0;
        for (const char* name : {"kestrava", "archive"}) {
            for (const auto& row : Agency().Query(name, std::string("select HRS from ") + table)) {
                hours += row[0].ToDouble();
            }
        }
        EXPECT_NEAR(hours, worked, 0.01) << table;
    }
}

TEST_F(DemoAgency, TheWorkListsFindSomebody) {
    const long today = Date::FromCivil(2026, 3, 4).DayNumber();
    EXPECT_FALSE(
        Work(
            "SELECT CLIENTPR.client, Authorizations.Client AS Authorizations_Client, Authorizations.To_Date, "
            "Authorizations.Status_Code FROM CLIENTPR INNER JOIN Authorizations ON CLIENTPR.[CLIENT] = "
            "Authorizations.[Client] where  (Authorizations.Status_Code <> 'A' and Authorizations.to_date "
            "> " +
            std::to_string(today + 7) + ") or len(Authorizations.visit_Type) = 0")
            .empty());
    EXPECT_FALSE(Work("select client from clientpr where ISTEMPLATE = 0 and STARTSERVC < first_Contact and "
                      "first_contact > "
                      "#1901/01/01#")
                     .empty());
    EXPECT_FALSE(Work("select client from clientpr where ISTEMPLATE = 0 and bdate < #1901/01/01#").empty());
}

}  // namespace
}  // namespace kv
