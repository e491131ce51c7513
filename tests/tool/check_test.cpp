#include <gmock/gmock.h>

#include "base/platform.h"
#include "session/data_folder.h"
#include "tool/tool_run.h"

namespace kv {
namespace {

using test::Answer;
using test::ToolFolder;
using testing::ElementsAre;

TEST(Check, FindsWhatTheRulesForbid) {
    struct Case {
        std::string database, statement;
        std::vector<std::string> problems;
    };
    const Case cases[] = {
        // What the rules leave behind is sound.
        {"kestrava", "insert into tasks (client, LoggingSeq) values ('gone', 77)", {}},
        {"kestrava", "insert into assign (client, author_seq) values ('', 0)", {}},
        {"kestrava", "insert into sch_day (client, assign_seq, author_seq) values ('abc', -1, 0)", {}},
        {"kestrava", "insert into logging (client) values ('')", {}},
        {"kestrava", "insert into clirate (client) values ('00001')", {}},
        {"kestrava", "insert into clirate (client) values ('ABC')", {}},
        {"main", "create table own (a long)", {}},
        // What they do not.
        {"kestrava",
         "insert into Emp_ban (client) values ('gone')",
         {"kestrava.mdb: Emp_ban.CLIENT gone names no row of ClientPR (1 rows)"}},
        {"kestrava",
         "insert into assign (author_seq) values (17)",
         {"kestrava.mdb: assign.author_seq 17 names no row of Authorizations (1 rows)"}},
        {"kestrava",
         "insert into sch_day (assign_seq, author_seq) values (5, 6)",
         {"kestrava.mdb: sch_day.author_seq 6 names no row of Authorizations (1 rows)",
          "kestrava.mdb: sch_day.assign_seq 5 names no row of assign (1 rows)"}},
        {"kestrava",
         "insert into assign_task (id) values (3)",
         {"kestrava.mdb: assign_task.ID 3 names no row of Authorizations (1 rows)"}},
        {"kestrava",
         "insert into cli_documents (client) values ('gone')",
         {"kestrava.mdb: cli_documents.CLIENT gone names no row of ClientPR (1 rows)"}},
        {"kestrava",
         "insert into tasks (OnGoing_Seq) values (4)",
         {"kestrava.mdb: tasks.OnGoing_Seq 4 names no row of ongoing (1 rows)"}},
        {"main",
         "insert into hkeylonglat (CLTid) values ('gone')",
         {"main.mdb: hkeylonglat.CLTid gone names no row of ClientPR (1 rows)"}},
        {"main",
         "insert into Agency (ag_name) values ('Second')",
         {"main.mdb: Agency holds 2 rows and not one"}},
        {"main", "delete * from Agency", {"main.mdb: Agency holds 0 rows and not one"}},
        {"main", "drop table Holidays", {"main.mdb: the table Holidays is missing"}},
    };
    for (const Case& c : cases) {
        const ToolFolder folder;
        folder.Do({"sql", "insert into clientpr (client) values ('00001')"});
        folder.Do({"sql", "insert into clientpr (client) values ('abc')"});
        folder.Do({"sql", "--db", c.database, c.statement});
        const Answer answer = folder.Run({"check"});
        EXPECT_EQ(answer.Document()["problems"], nlohmann::ordered_json(c.problems)) << c.statement;
        EXPECT_EQ(answer.status, c.problems.empty() ? 0 : 1);
    }
}

TEST(Check, FindsDamagedMissingAndOtherDatabases) {
    const ToolFolder folder;
    Workspace::DropDatabase(PlaceOf(folder.Path("data"), "archive"));
    ReplaceFile(folder.Data("tempassign.mdb"), "This is no database at all, only a text in its place.");
    const DatabasePlace trans = PlaceOf(folder.Path("data"), "trans");
    Workspace::DropDatabase(trans);
    Workspace().CreateDatabase(
        trans, "create table trans (Type text(3), Module text(1) not null, ID text(50) not null)");
    const Answer answer = folder.Run({"check"});
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(answer.Document()["problems"].get<std::vector<std::string>>(),
                ElementsAre(testing::StartsWith("archive.mdb: "),
                            "trans.mdb: the column trans.Type is TEXT(3) and not TEXT(1)",
                            "trans.mdb: the column trans.WHEN is missing",
                            "trans.mdb: the unique index of trans by ID, Module is missing",
                            testing::StartsWith("tempassign.mdb: ")));
}

/// A folder with one client, whose authorization, assignment, visits and phone agree.
class SoundFolder : public ToolFolder {
  public:
    SoundFolder() {
        Change({
            "insert into ClientPR (CLIENT,LASTNAME,FIRSTNAM,CASESTATCD,STARTSERVC,CASEEXPDAT,ISTEMPLATE) "
            "values ('00001','Grant','Ida','A',#2026/01/01#,#2026/03/31#,0)",
            "insert into Authorizations "
            "(CLIENT,status_code,from_date,to_DATE,bill_code,visit_type,status_date) values "
            "('00001','A',#2026/01/01#,#2026/03/31#,5,'PCA',#2026/02/02 10:00:00#)",
            "insert into assign "
            "(author_seq,CLIENT,cli_name,author_status,billto,st_date,END_DATE,visit_type,Type) values "
            "(1,'00001','Grant, Ida','A',5,#2026/01/01#,#2026/03/31#,'PCA','A')",
            kVisit + "#2026/03/02#,0,0)",
            kVisit + "#2026/02/02#,4,0)",
            "main|insert into hkeylonglat (CLTid,phonenum,Status) values ('00001','5185550100','A')",
        });
    }

    /// Runs statements, those that begin with "main|" or "archive|" in that database.
    void Change(const std::vector<std::string>& statements) const {
        Workspace workspace;
        for (const std::string& statement : statements) {
            const std::size_t bar = statement.find('|');
            const std::string name = bar == std::string::npos ? "kestrava" : statement.substr(0, bar);
            workspace.OpenDatabase(PlaceOf(Path("data"), name))
                ->Execute(statement.substr(bar == std::string::npos ? 0 : bar + 1));
        }
    }

    static inline const std::string kVisit =
        "insert into sch_day (CLIENT,cli_name,author_seq,assign_seq,st_date,act_hrs,pay_override) values "
        "('00001','Grant, Ida',1,1,";
};

struct BrokenState {
    const char* what;
    std::vector<std::string> statements;
    std::vector<std::string> problems;
    std::vector<std::string> repaired;
    std::vector<std::string> left;  ///< the problems after the repair
    const char* query;              ///< of what the repair wrote, or left alone
    const char* rows;
};

const std::string kKept = ": kept on purpose, or left by an interrupted save";
const std::string kTrace = "insert into changes (Type,Area,[Date],Status,reason) values ";

const std::vector<BrokenState>& BrokenStates() {
    static const std::vector<BrokenState> states = {
        {"visits after the authorization's end",
         {SoundFolder::kVisit + "#2026/03/31 15:00:00#,0,0)", SoundFolder::kVisit + "#2026/04/01#,0,0)",
          SoundFolder::kVisit + "#2026/04/02#,0,12)", SoundFolder::kVisit + "#2026/04/03#,3,0)",
          SoundFolder::kVisit + "#2026/04/04#,0,0)",
          "update sch_day set Cancelled = true where st_date = #2026/04/04#"},
         {"2 visits not worked after 2026-03-31, the end of authorization 1 of client 00001" + kKept},
         {},
         {"2 visits not worked after 2026-03-31, the end of authorization 1 of client 00001" + kKept},
         "select count(*) from sch_day",
         "[[7]]"},
        {"visits after the assignment's end alone",
         {"update Authorizations set status_code = 'C'",
          "update assign set author_status = 'C', END_DATE = #2026/03/01#",
          "update ClientPR set CASESTATCD = 'C'", "main|update hkeylonglat set Status = 'C'"},
         {"1 visit not worked after 2026-03-01, the end of assignment 1 of client 00001" + kKept},
         {},
         {"1 visit not worked after 2026-03-01, the end of assignment 1 of client 00001" + kKept},
         "select END_DATE from assign",
         R"([["2026-03-01 00:00:00"]])"},
        {"an authorization stored, and nothing of what follows",
         {"update Authorizations set status_code = 'S', to_DATE = #2026/02/28#, from_date = #2026/01/05#, "
          "bill_code = 6, visit_type = 'HHA'"},
         {"assignment 1 differs from its authorization 1: author_status \"A\" and not \"S\", billto "
          "\"5\" and not \"6\", st_date \"2026-01-01\" and not \"2026-01-05\", END_DATE "
          "\"2026-03-31\" and not \"2026-02-28\", visit_type \"PCA\" and not \"HHA\"",
          "client 00001 differs from what the authorizations say: casestatcd \"A\" and not \"S\", "
          "startservc 2026-01-01 and not 2026-01-05, caseexpdat 2026-03-31 and not 2026-02-28",
          "1 visit not worked after 2026-02-28, the end of authorization 1 of client 00001" + kKept},
         {"assignment 1 holds now what its authorization 1 does; it held author_status \"A\" and not "
          "\"S\", billto \"5\" and not \"6\", st_date \"2026-01-01\" and not \"2026-01-05\", "
          "END_DATE \"2026-03-31\" and not \"2026-02-28\", visit_type \"PCA\" and not \"HHA\"",
          "client 00001 holds now what the authorizations say; it held casestatcd \"A\" and not \"S\", "
          "startservc 2026-01-01 and not 2026-01-05, caseexpdat 2026-03-31 and not 2026-02-28",
          "main: the telephony numbers of client 00001 have status \"S\" now"},
         {"1 visit not worked after 2026-02-28, the end of authorization 1 of client 00001" + kKept},
         "select CLIENT_STATUS,author_status,billto,st_date,END_DATE,visit_type,visit_desc from assign",
         R"([["S","S",6,"2026-01-05 00:00:00","2026-02-28 00:00:00","HHA","HHA-Grant, Id"]])"},
        {"an assignment that stops before its authorization",
         {"update assign set END_DATE = #2026/03/20#"},
         {"assignment 1 differs from its authorization 1: END_DATE \"2026-03-20\" and not \"2026-03-31\""},
         {"assignment 1 holds now what its authorization 1 does; it held END_DATE \"2026-03-20\" and not "
          "\"2026-03-31\""},
         {},
         "select END_DATE from assign",
         R"([["2026-03-31 00:00:00"]])"},
        {"an assignment of another client",
         {"insert into ClientPR (CLIENT) values ('00002')", "update assign set CLIENT = '00002', billto = 9"},
         {"assignment 1 is of client 00002, and its authorization 1 of client 00001"},
         {},
         {"assignment 1 is of client 00002, and its authorization 1 of client 00001"},
         "select CLIENT,billto from assign",
         R"([["00002",9]])"},
        {"telephony numbers",
         {"main|update hkeylonglat set Status = 'Z'"},
         {"main: 1 telephony number of client 00001 with status \"Z\" and not \"A\""},
         {"main: the telephony numbers of client 00001 have status \"A\" now"},
         {},
         "select CASESTATCD from ClientPR",
         R"([["A"]])"},
        {"names, and what was worked or changed by hand is not looked at",
         {"update ClientPR set LASTNAME = ' Grant-Roe'", SoundFolder::kVisit + "#2026/03/09#,0,12)"},
         {"1 assignment of client 00001 under another name than the client's",
          "1 visit of client 00001 under another name than the client's"},
         {"1 assignment of client 00001 under the client's name now",
          "1 visit of client 00001 under the client's name now"},
         {},
         "select cli_name from sch_day order by sequence",
         R"([["Grant-Roe, Ida"],["Grant, Ida"],["Grant, Ida"]])"},
        {"an assignment that is gone",
         {"delete * from assign", SoundFolder::kVisit + "#2026/03/09#,0,12)"},
         {"sch_day.assign_seq 1 names no row of assign (3 rows)"},
         {"1 visit of the assignment 1, which is gone: assign_seq is -1 now"},
         {"sch_day.assign_seq 1 names no row of assign (2 rows)"},
         "select assign_seq,act_hrs from sch_day order by sequence",
         "[[-1,0.0],[1,4.0],[1,0.0]]"},
        {"a To Do item of a series that is gone",
         {"insert into tasks (OnGoing_Seq,Ongoing_Desc) values (4,'Weekly')"},
         {"tasks.OnGoing_Seq 4 names no row of ongoing (1 rows)"},
         {"1 To Do item of the series 4, which is gone: OnGoing_Seq is 0 now"},
         {},
         "select OnGoing_Seq,Ongoing_Desc from tasks",
         R"([[0,""]])"},
        {"what should have gone with a deleted client",
         {kTrace + "('CLI','00009',#2026/02/02#,'DELETED','Deleted Client')",
          "insert into Authorizations (CLIENT) values ('00009')",
          "insert into Emp_ban (CLIENT) values ('00009')",
          "insert into sch_day (CLIENT,author_seq) values ('00009',2)",
          "insert into care_plan (CLIENT) values ('00009')", "insert into cli_misc (CLIENT) values ('00008')",
          "main|insert into hkeylonglat (CLTid) values ('00009')"},
         {"cli_misc.CLIENT 00008 names no row of ClientPR (1 rows)",
          "care_plan.CLIENT 00009 names no row of ClientPR (1 rows)",
          "main: hkeylonglat.CLTid 00009 names no row of ClientPR (1 rows)"},
         {"1 row of care_plan deleted, whose client 00009 was deleted",
          "main: 1 row of hkeylonglat deleted, whose client 00009 was deleted"},
         {"cli_misc.CLIENT 00008 names no row of ClientPR (1 rows)"},
         "select CLIENT from sch_day where CLIENT = '00009'",
         R"([["00009"]])"},
        {"a client deleted under an id that another one had afterwards",
         {"archive|" + kTrace + "('CLI','00009',#2025/02/02#,'DELETED','Deleted Client')",
          kTrace + "('CLI','00009',#2026/02/02#,'Edit','')",
          "insert into care_plan (CLIENT) values ('00009')"},
         {"care_plan.CLIENT 00009 names no row of ClientPR (1 rows)"},
         {},
         {"care_plan.CLIENT 00009 names no row of ClientPR (1 rows)"},
         "select CLIENT from care_plan",
         R"([["00009"]])"},
        {"what should have gone with a deleted authorization, and one that visits hang from",
         {kTrace + "('AUT','17',#2026/02/02#,'DELETED','Deleted Authorization on client: 00001')",
          kTrace + "('AUT','18',#2026/02/02#,'DELETED','Deleted Authorization on client: 00001')",
          "insert into assign (author_seq) values (17)", "insert into assign_task (ID) values (17)",
          "insert into assign (author_seq) values (18)", "insert into sch_day (author_seq) values (18)"},
         {"assign.author_seq 17 names no row of Authorizations (1 rows)",
          "assign.author_seq 18 names no row of Authorizations (1 rows)",
          "assign_task.ID 17 names no row of Authorizations (1 rows)",
          "sch_day.author_seq 18 names no row of Authorizations (1 rows)"},
         {"1 row of assign deleted, whose authorization 17 was deleted",
          "1 row of assign_task deleted, whose authorization 17 was deleted"},
         {"assign.author_seq 18 names no row of Authorizations (1 rows)",
          "sch_day.author_seq 18 names no row of Authorizations (1 rows)"},
         "select author_seq from assign order by sequence",
         "[[1],[18]]"},
        {"a status beside days of service that were typed",
         {"update ClientPR set CASESTATCD = 'C', STARTSERVC = #2025/12/01#",
          kTrace + "('CLI','00001',#2026/02/03#,'Edit','Start of Care: 1/1/2026 to 12/1/2025')"},
         {"client 00001 differs from what the authorizations say: casestatcd \"C\" and not \"A\"",
          "main: 1 telephony number of client 00001 with status \"A\" and not \"C\""},
         {"client 00001 holds now what the authorizations say; it held casestatcd \"C\" and not \"A\""},
         {},
         "select CASESTATCD,STARTSERVC from ClientPR",
         R"([["A","2025-12-01 00:00:00"]])"},
    };
    return states;
}

/// Lines without a database's name are of kestrava.
nlohmann::ordered_json InDatabase(const std::vector<std::string>& lines) {
    nlohmann::ordered_json named = nlohmann::ordered_json::array();
    for (const std::string& line : lines)
        named.push_back(line.starts_with("main: ") ? "main.mdb" + line.substr(4) : "kestrava.mdb: " + line);
    return named;
}

TEST(Check, FindsAndRepairsWhatAnInterruptedStepLeaves) {
    for (const BrokenState& state : BrokenStates()) {
        SCOPED_TRACE(state.what);
        const SoundFolder folder;
        folder.Change(state.statements);
        const Answer found = folder.Run({"check"});
        EXPECT_EQ(found.Document()["problems"], InDatabase(state.problems));
        EXPECT_EQ(found.Document()["repaired"].dump(), "[]");
        EXPECT_EQ(found.status, 1);
        const Answer repaired = folder.Run({"check", "--repair"});
        EXPECT_EQ(repaired.Document()["repaired"], InDatabase(state.repaired));
        EXPECT_EQ(repaired.Document()["problems"], InDatabase(state.left));
        EXPECT_EQ(repaired.status, state.left.empty() ? 0 : 1);
        EXPECT_EQ(folder.Rows(state.query), state.rows);
        EXPECT_EQ(folder.Run({"check", "--repair"}).Document()["repaired"].dump(), "[]");
    }
}

TEST(Check, LetsStandWhatTheRulesLeave) {
    struct Case {
        const char* what;
        std::vector<std::string> statements;
    };
    const Case cases[] = {
        {"nothing changed", {}},
        {"a client without authorizations",
         {"insert into ClientPR (CLIENT,CASESTATCD,STARTSERVC) values ('00002','C',#2020/01/01#)"}},
        {"a potential client, and a template",
         {"update ClientPR set CASESTATCD = 'Z', STARTSERVC = null",
          "insert into ClientPR (CLIENT,CASESTATCD,ISTEMPLATE) values ('99900','A',1)",
          "insert into Authorizations (CLIENT,status_code) values ('99900','C')"}},
        {"a client who had an authorization deleted since",
         {"update ClientPR set CASESTATCD = 'C', CASEEXPDAT = #2030/01/01#",
          "main|update hkeylonglat set Status = 'C'",
          "archive|" + kTrace +
              "('AUT','7',#2026/02/02#,'DELETED','When: now\r\nDeleted Authorization on client: "
              "00001\r\n-----')"}},
        {"days of service that were typed since",
         {"update ClientPR set CASEEXPDAT = #2030/01/01#",
          kTrace + "('CLI','00001',#2026/02/02#,'Edit','End of Care: 3/31/2026 to 1/1/2030')"}},
        {"an end that was moved forward on an authorization that is not active",
         {"update Authorizations set status_code = 'S'",
          "update assign set author_status = 'S', END_DATE = #2026/03/20#",
          "update ClientPR set CASESTATCD = 'S'", "main|update hkeylonglat set Status = 'S'"}},
        {"rows of a deleted potential client",
         {kTrace + "('CLI','00009',#2026/02/02#,'DELETED','Deleted Client')",
          "insert into Authorizations (CLIENT) values ('00009')",
          "insert into assign (CLIENT,author_seq) values ('00009',0)",
          "insert into Emp_ban (CLIENT) values ('00009')"}},
    };
    for (const Case& c : cases) {
        const SoundFolder folder;
        folder.Change(c.statements);
        const Answer answer = folder.Run({"check", "--repair"});
        EXPECT_EQ(answer.out, "{\"problems\":[],\"repaired\":[]}\n") << c.what;
        EXPECT_EQ(answer.status, 0);
    }
}

TEST(Check, RepairsWhatItCanWhileAnotherSeatHoldsARow) {
    const SoundFolder folder;
    folder.Change({"update assign set billto = 9", "update ClientPR set CASESTATCD = 'C'"});
    Workspace seat;
    const DatabasePtr work = seat.OpenDatabase(PlaceOf(folder.Path("data"), "kestrava"));
    Recordset held = work->OpenRecordset("select * from ClientPR");
    held.Edit();
    const Answer answer = folder.Run({"check", "--repair"});
    EXPECT_THAT(answer.Document()["repaired"].get<std::vector<std::string>>(),
                ElementsAre(testing::StartsWith("kestrava.mdb: assignment 1 holds now"),
                            testing::StartsWith("main.mdb: the telephony numbers of client 00001")));
    EXPECT_THAT(answer.Document()["problems"].get<std::vector<std::string>>(),
                ElementsAre(testing::StartsWith("kestrava.mdb: not repaired, error 3186: "),
                            testing::StartsWith("kestrava.mdb: client 00001 differs")));
    EXPECT_EQ(answer.status, 1);
    held.CancelUpdate();
    EXPECT_EQ(folder.Run({"check", "--repair"}).status, 0);
}

}  // namespace
}  // namespace kv
