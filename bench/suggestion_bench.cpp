// The caregiver search on made-up agencies of two sizes, split by its steps, beside the bare engine's reading
// of the same rows. docs/performance.md keeps the budget.
#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>

#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <strings.h>
#include <unistd.h>

#include "billing/visit_amounts.h"
#include "matching/suggestion.h"
#include "session/start.h"
#include "support/scripted_ports.h"
#include "tool/tool.h"

namespace kv {
namespace {

class Agency {
  public:
    static Agency& Of(long caregivers) {
        auto& one = All()[caregivers];
        if (!one) {
            one.reset(new Agency(caregivers));
        }
        return *one;
    }
    static void End() { All().clear(); }
    ~Agency() { std::filesystem::remove_all(folder_); }
    Agency(const Agency&) = delete;
    Agency& operator=(const Agency&) = delete;

    test::ScriptedPorts ports;
    std::unique_ptr<Session> session;
    SuggestionRequest request;
    SuggestionOptions options;
    std::string file;

  private:
    static std::map<long, std::unique_ptr<Agency>>& All() {
        static std::map<long, std::unique_ptr<Agency>> all;
        return all;
    }
    explicit Agency(long caregivers)
        : folder_(std::filesystem::temp_directory_path() /
                  ("kv_suggestion_bench_" + std::to_string(::getpid()) + "_" + std::to_string(caregivers))),
          settings_((std::filesystem::create_directories(folder_), folder_ / "settings.ini")) {
        Tool({"init"});
        Tool({"demo", "--clients", std::to_string(caregivers * 3 / 4), "--caregivers",
              std::to_string(caregivers)});
        Tool({"login", "--user", "DEMO"});
        session = std::make_unique<Session>(settings_, ports.Handles());
        ReadLogin(*session);
        OpenSessionData(*session);
        file = session->DataFile("kestrava.mdb").string();
        request.client = "00001";
        request.day = Date::FromCivil(2026, 3, 5);
        request.time = Date::FromTime(9, 0);
        request.hours = 4;
    }
    void Tool(std::vector<std::string> arguments) const {
        std::vector<std::string> all = {"--data",     (folder_ / "data").string(),
                                        "--settings", (folder_ / "settings.ini").string(),
                                        "--now",      "2026-03-04 09:30:00"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        std::ostringstream out;
        std::ostringstream err;
        if (RunTool(all, out, err) != 0) {
            throw std::runtime_error(err.str());
        }
    }

    std::filesystem::path folder_;
    SettingsStore settings_;
};

void BM_Suggestion(benchmark::State& state) {
    Agency& agency = Agency::Of(state.range(0));
    std::size_t shown = 0;
    std::size_t looked = 0;
    for (auto _ : state) {
        const ClientNeeds needs = PrepareClient(*agency.session, agency.request);
        const Suggestion found = SearchCaregivers(*agency.session, needs, agency.request, agency.options);
        shown = found.rows.size();
        looked = shown + found.leftOut.size();
    }
    state.counters["candidates"] = static_cast<double>(looked);
    state.counters["shown"] = static_cast<double>(shown);
}
BENCHMARK(BM_Suggestion)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);

void BM_Client(benchmark::State& state) {
    Agency& agency = Agency::Of(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(PrepareClient(*agency.session, agency.request));
    }
}
BENCHMARK(BM_Client)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);

void BM_Candidates(benchmark::State& state) {
    Agency& agency = Agency::Of(state.range(0));
    const ClientNeeds needs = PrepareClient(*agency.session, agency.request);
    for (auto _ : state) {
        for (Recordset row = agency.session->dbMainWork->OpenRecordset(
                 EmployeeStatement(needs, agency.request, agency.options), RecordsetType::Snapshot);
             !row.Eof(); row.MoveNext()) {
            benchmark::DoNotOptimize(ReadCandidate(row));
        }
    }
}
BENCHMARK(BM_Candidates)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);

void BM_Commitments(benchmark::State& state) {
    Agency& agency = Agency::Of(state.range(0));
    const Window window = WindowOf(agency.request, agency.options);
    for (auto _ : state) {
        benchmark::DoNotOptimize(AllCommitments(*agency.session, agency.request, window));
    }
}
BENCHMARK(BM_Commitments)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);

void BM_WriteAssignHead(benchmark::State& state) {
    Agency& agency = Agency::Of(state.range(0));
    const ClientNeeds needs = PrepareClient(*agency.session, agency.request);
    const Suggestion found = SearchCaregivers(*agency.session, needs, agency.request, agency.options);
    const DatabasePtr working = agency.session->OpenData("tempassign.mdb");
    for (auto _ : state) {
        WriteAssignHead(*working, found, agency.request);
    }
}
BENCHMARK(BM_WriteAssignHead)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);

/// The rows that the search reads, by statements of one's own, each value taken out of the engine.
void BM_BareReading(benchmark::State& state) {
    Agency& agency = Agency::Of(state.range(0));
    sqlite3* database = nullptr;
    if (sqlite3_open_v2(agency.file.c_str(), &database, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
        state.SkipWithError("the file can't be opened");
        return;
    }
    // The store's own order of texts, as plain as it can be.
    sqlite3_create_collation(database, "KVTEXT", SQLITE_UTF8, nullptr,
                             [](void*, int sizeA, const void* a, int sizeB, const void* b) {
                                 const int order =
                                     ::strncasecmp(static_cast<const char*>(a), static_cast<const char*>(b),
                                                   static_cast<std::size_t>(std::min(sizeA, sizeB)));
                                 return order != 0 ? order : sizeA - sizeB;
                             });
    const std::string day = std::to_string(agency.request.day.DayNumber());
    const std::string statements[] = {
        "select emp_id,LastName,FirstName,hrsper_week from Employee where (t_code = 'A' or t_date >= " + day +
            ") and disp_level >= 0 order by emp_id",
        "select emp_id,[day],St_time,END_TIME from assign where [day] in ('THU') and type = 'N' order by "
        "sequence",
        "select emp_id,[day],St_time,END_TIME,cli_name,visit_desc from assign where [day] in ('THU','WED') "
        "and type "
        "= 'A' and st_date <= " +
            day + " and END_DATE >= " + day + " and Last_date < " + day + " order by sequence",
        "select emp_id,st_date,St_time,END_TIME,cli_name,visit_desc from sch_day where cancelled = 0 and "
        "st_date "
        "between " +
            day + " - 1 and " + day + " order by sequence",
        "select emp_id,st_date,St_time,END_TIME from Emp_willwork where st_date between " + day + " and " +
            day + " + 1",
        "select emp_id,act_hrs,HRS from sch_day where cancelled = 0 and st_date between " + day +
            " - 4 and " + day + " + 2",
        "select emp,ID from emp_misc where area = 'SKI'"};
    long rows = 0;
    for (auto _ : state) {
        rows = 0;
        for (const std::string& text : statements) {
            sqlite3_stmt* statement = nullptr;
            if (sqlite3_prepare_v2(database, text.c_str(), -1, &statement, nullptr) != SQLITE_OK) {
                state.SkipWithError(sqlite3_errmsg(database));
                break;
            }
            for (; sqlite3_step(statement) == SQLITE_ROW; ++rows) {
                for (int column = 0; column < sqlite3_column_count(statement); ++column) {
                    benchmark::DoNotOptimize(
                        sqlite3_column_type(statement, column) == SQLITE_TEXT
                            ? static_cast<double>(*sqlite3_column_text(statement, column))
                            : sqlite3_column_double(statement, column));
                }
            }
            sqlite3_finalize(statement);
        }
    }
    sqlite3_close(database);
    state.counters["rows"] = static_cast<double>(rows);
}
BENCHMARK(BM_BareReading)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kv

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    kv::Agency::End();
    benchmark::Shutdown();
    return 0;
}
