// The commands of the daily work: visits, caregivers' time, money, and the caregiver search.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/platform.h"
#include "tool/tool_run.h"

namespace kv {
namespace {

using test::ToolFolder;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/// 2026-03-04 is a Wednesday; weeks end on Saturday.
class ServiceTool : public ::testing::Test {
  protected:
    ServiceTool() {
        for (const char* statement :
             {"insert into clientpr (client, lastname, firstnam, casestatcd, istemplate) values ('00001', "
              "'Grant', 'Ida', 'A', 0)",
              "insert into employee (emp_id, lastname, firstname, t_code, disp_level, hrsper_week, rate1) "
              "values ('E1', 'Ames', "
              "'Al', 'A', 2, 40, 20)",
              "insert into employee (emp_id, lastname, firstname, t_code, disp_level, hrsper_week) values "
              "('E2', 'Bell', 'Bo', 'A', 2, 30)",
              "insert into authorizations (client, status_code, visit_type, bill_code, from_date, to_date, "
              "hrs, weekormonth) values "
              "('00001', 'A', 'PCA', 1, #2026-03-01#, #2026-12-31#, 10, 'W')",
              "insert into assign (author_seq, client, cli_name, author_status, client_status, visit_type, "
              "billto, emp_id, day, st_time, "
              "end_time, hrs, howoften, st_date, end_date, last_date, type) values (1, '00001', 'Grant, "
              "Ida', 'A', 'A', 'PCA', 1, 'E1', "
              "'THU', #09:00:00#, #13:00:00#, 4, 1, #2026-03-01#, #2026-12-31#, #2026-02-28#, 'A')",
              "insert into clirate (client, visittype, method, rate1, rate4) values ('00001', 'PCA', 'H', "
              "30, 35)",
              "insert into sch_day (client, emp_id, st_date, day, st_time, end_time, cancelled) values ('', "
              "'E2', #2026-03-06#, 'FRI', "
              "#08:00:00#, #12:00:00#, false)",
              "insert into emp_willwork (emp_id, st_date, st_time, end_time) values ('E2', #2026-03-07#, "
              "#08:00:00#, #12:00:00#)"}) {
            folder.Do({"sql", statement});
        }
        folder.Do(
            {"sql", "--db", "main",
             "update Agency set sch_weeks = 2, wkending = 'SAT', start1 = #00:00:00#, stop1 = #00:00:00#"});
        folder.Do({"login", "--user", "ANN"});
    }
    /// On the Wednesday.
    nlohmann::ordered_json Now(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"--now", "2026-03-04 09:30:00"});
        const test::Answer answer = folder.Run(arguments);
        EXPECT_EQ(answer.status, 0) << answer.err;
        return answer.Document();
    }
    const ToolFolder folder;
};

TEST_F(ServiceTool, SchedulesAreMadeAndCounted) {
    EXPECT_EQ(Now({"schedule", "--all"}).dump(), R"({"assignments":1,"created":2,"removed":[]})");
    EXPECT_EQ(Now({"schedule", "--authorization", "1"}).dump(),
              R"({"assignments":1,"created":0,"removed":[]})");
    EXPECT_EQ(folder.Rows("select st_date from sch_day where assign_seq = 1"),
              R"([["2026-03-05 00:00:00"],["2026-03-12 00:00:00"]])");
    EXPECT_EQ(folder.Run({"schedule"}).status, 2);
    EXPECT_EQ(Now({"week-hours", "--emp", "E1", "--date", "2026-03-04"}).dump(), R"({"hours":4.0})");
    const auto use = Now({"authorization-use", "--client", "00001"})["authorizations"][0];
    EXPECT_EQ(use["period"]["scheduled"], 4.0);
    EXPECT_EQ(use["period"]["left"], 6.0);
}

TEST_F(ServiceTool, AStepThatIsSkippedIsInTheLog) {
    EXPECT_EQ(Now({"schedule", "--all"})["created"], 2);
    EXPECT_EQ(ReadFile(folder.Path("program.log")), std::nullopt) << "nothing was skipped";
    folder.Do({"sql", "update assign set visit_type = 'O''Brien', last_date = #2026-02-28#"});
    folder.Do({"sql", "delete * from sch_day where assign_seq = 1"});
    EXPECT_EQ(Now({"schedule", "--all"})["created"], 2) << "a description that can't be found costs no visit";
    const std::string log = ReadFile(folder.Path("program.log")).value_or("");
    EXPECT_THAT(log, HasSubstr(" kvtool ANN schedule_facts.cpp:"));
    EXPECT_THAT(log, HasSubstr(" error 3075: "));
    EXPECT_THAT(log, testing::Not(HasSubstr("Brien")));
}

TEST_F(ServiceTool, DeclaredTimeIsAskedFor) {
    EXPECT_EQ(
        Now({"conflicts", "--emp", "E2", "--date", "2026-03-06", "--start", "11:00", "--hours", "2"}).dump(),
        R"({"count":1})");
    EXPECT_EQ(
        Now({"conflicts", "--emp", "E2", "--date", "2026-03-06", "--start", "12:00", "--hours", "2"}).dump(),
        R"({"count":0})");
    EXPECT_EQ(
        Now({"will-work", "--emp", "E2", "--date", "2026-03-07", "--start", "09:00", "--hours", "3"}).dump(),
        R"({"covered":true})");
    EXPECT_EQ(
        folder.Run({"conflicts", "--emp", "E2", "--date", "2026-02-30", "--start", "12:00", "--hours", "2"})
            .status,
        2);
    EXPECT_EQ(Now({"cobilling", "--total", "100", "--payer", "80"}).dump(),
              R"({"client":20.0,"total":100.0,"percent":20.0})");
}

TEST_F(ServiceTool, AVisitHasTwoAmounts) {
    const std::vector<std::string> visit = {"--client",         "00001",   "--visit-type", "PCA", "--start",
                                            "2026-03-04 09:00", "--hours", "2.5"};
    const auto amount = [&](std::vector<std::string> more) {
        more.insert(more.begin(), "amount");
        more.insert(more.end(), visit.begin(), visit.end());
        return Now(more).dump();
    };
    EXPECT_EQ(amount({"--bill", "--bill-code", "1"}), R"({"amount":75.0})");
    EXPECT_EQ(amount({"--bill", "--bill-code", "7"}), R"({"amount":0.0})");
    EXPECT_EQ(amount({"--pay", "--emp", "E1"}), R"({"amount":50.0})");
    EXPECT_EQ(folder
                  .Run({"amount", "--bill", "--pay", "--client", "1", "--visit-type", "PCA", "--start",
                        "2026-03-04 09:00", "--hours", "1"})
                  .status,
              2);
    EXPECT_EQ(folder
                  .Run({"amount", "--bill", "--client", "1", "--visit-type", "PCA", "--start", "9 o'clock",
                        "--hours", "1"})
                  .status,
              2);
}

TEST_F(ServiceTool, ACaregiverIsSuggested) {
    Now({"schedule", "--all"});
    const std::vector<std::string> visit = {"suggest",    "--client",        "00001", "--date",
                                            "2026-03-05", "--time",          "10:00", "--hours",
                                            "2",          "--authorization", "1"};
    EXPECT_EQ(
        Now(visit).dump(),
        R"({"count":1,"rows":[{"emp_id":"E2","emp_name":"Bell, Bo","max_hours":30.0,"skills":null,"longest":96,)"
        R"("banned":false,"selectable":true,"bill":60.0,"pay":0.0,"margin":null,"slots":{}}],"rejected":[")" +
            std::string(42, ' ') + R"(Ames, Al is already scheduled"],"warnings":[]})");
    std::vector<std::string> later = visit;
    later[6] = "13:00";
    later.emplace_back("--skills");
    const auto rows = Now(later)["rows"];
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0]["emp_id"], "E1") << "36 hours left against 30";
    EXPECT_EQ(rows[0]["skills"], 100);
    EXPECT_EQ(rows[0]["margin"], 33.33);
    EXPECT_EQ(rows[0]["slots"].size(), 16U);
    EXPECT_EQ(rows[0]["slots"]["1245"], "Grant, Ida");
    // Who may be less free than shown is named, and stays in the result.
    folder.Do({"sql",
               "insert into sch_day (emp_id,cli_name,st_date,st_time,end_time,hrs,cancelled) values "
               "('E2','Day, Dot',#2026-03-05#,#15:05:00#,#16:00:00#,1,0)"});
    const auto unsure = Now(later);
    EXPECT_EQ(unsure["count"], 2);
    EXPECT_EQ(
        unsure["warnings"].dump(),
        R"([{"emp_id":"E2","emp_name":"Bell, Bo","reason":"Scheduled from 3:05 PM to 4:00 PM (Day, Dot) )"
        R"(is not shown: it does not begin on a quarter of an hour."}])");
    folder.Do({"sql", "delete from sch_day where cli_name = 'Day, Dot'"});
    std::vector<std::string> why = visit;
    why.insert(why.end(), {"--why", "E1"});
    EXPECT_EQ(Now(why).dump(),
              R"({"emp_id":"E1","emp_name":"Ames, Al","shown":false,"reason":"Is already scheduled then.",)"
              R"("change":"Start at 1:00 PM, 3 hours later."})");
    why.back() = "E9";
    EXPECT_THAT(folder.Run(why).err, StartsWith("error: There is no caregiver E9"));
    std::vector<std::string> nobody = visit;
    nobody[2] = "99999";
    EXPECT_THAT(folder.Run(nobody).err, HasSubstr("There is no client 99999"));
}

}  // namespace
}  // namespace kv
