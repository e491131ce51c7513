// The store beside hand-written SQL on the same file in the same run. The counter "ratio" is the store's time
// over the bare engine's; docs/performance.md keeps the budgets.
#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string>

#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <unistd.h>

#include "base/text.h"
#include "datastore/workspace.h"

namespace kv {
namespace {

constexpr int kRows = 100000;

constexpr const char* kScript = R"(
CREATE TABLE day (
    sequence COUNTER PRIMARY KEY,
    client TEXT(10),
    cli_name TEXT(40),
    st_date DATETIME,
    hrs DOUBLE,
    amount CURRENCY,
    cancelled YESNO
);
CREATE INDEX day_client ON day (client);
CREATE TABLE added (sequence COUNTER PRIMARY KEY, client TEXT(10), st_date DATETIME, hrs DOUBLE);
CREATE TABLE added_bare (sequence COUNTER PRIMARY KEY, client TEXT(10), st_date DATETIME, hrs DOUBLE);
)";

std::string ClientOf(int row) {
    const std::string digits = std::to_string(row * 7919 % kRows);
    return std::string(6 - digits.size(), '0') + digits;
}

/// The generated table, and the bare engine's own handle on its file.
class Fixture {
  public:
    static Fixture& Get() {
        static Fixture fixture;
        return fixture;
    }

    void Run(const char* sql) const { sqlite3_exec(raw, sql, nullptr, nullptr, nullptr); }
    sqlite3_stmt* Prepare(const char* sql) const {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(raw, sql, -1, &statement, nullptr) != SQLITE_OK)
            std::fprintf(stderr, "%s: %s\n", sql, sqlite3_errmsg(raw));
        return statement;
    }

    Workspace workspace;
    DatabasePtr database;
    sqlite3* raw = nullptr;

  private:
    Fixture() : folder_(std::filesystem::temp_directory_path() / ("kv_bench_" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(folder_);
        database = workspace.CreateDatabase(folder_ / "bench.mdb", kScript);
        Transaction rows = database->BeginTransaction();
        Recordset day = database->OpenRecordset("day");
        for (int i = 0; i < kRows; ++i) {
            day.AddNew();
            day.Set("client", ClientOf(i));
            day.Set("cli_name", "Somebody, Number " + ClientOf(i / 3));
            day.Set("st_date", 45000 + i / 100);
            day.Set("hrs", 0.25 * (i % 40));
            day.Set("amount", 12.5 * (i % 40));
            day.Set("cancelled", i % 10 == 0);
            day.Update();
        }
        rows.Commit();
        sqlite3_open_v2((folder_ / "bench.mdb").c_str(), &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX,
                        nullptr);
        const auto compare = [](void*, int n, const void* a, int m, const void* b) {
            return CompareText({static_cast<const char*>(a), static_cast<std::size_t>(n)},
                               {static_cast<const char*>(b), static_cast<std::size_t>(m)});
        };
        sqlite3_create_collation(raw, "KVTEXT", SQLITE_UTF8, nullptr, compare);
        Run("pragma synchronous = full; pragma cache_size = -16384");
    }
    ~Fixture() {
        sqlite3_close(raw);
        database.reset();
        std::filesystem::remove_all(folder_);
    }

    std::filesystem::path folder_;
};

/// Runs the store's way and the bare way in turn. The time reported is the store's; the ratio is of processor
/// time, which a busy machine disturbs less.
template <typename Store, typename Bare>
void Compare(benchmark::State& state, Store store, Bare bare) {
    using Clock = std::chrono::steady_clock;
    Fixture::Get();
    std::clock_t storeTicks = 0;
    std::clock_t bareTicks = 0;
    for (auto _ : state) {
        const auto start = Clock::now();
        const std::clock_t first = std::clock();
        store();
        const std::clock_t second = std::clock();
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
        bare();
        storeTicks += second - first;
        bareTicks += std::clock() - second;
    }
    const double ticks = static_cast<double>(state.iterations()) * CLOCKS_PER_SEC / 1000;
    state.counters["cpu_ms"] = static_cast<double>(storeTicks) / ticks;
    state.counters["bare_ms"] = static_cast<double>(bareTicks) / ticks;
    state.counters["ratio"] = static_cast<double>(storeTicks) / static_cast<double>(bareTicks);
}

/// What a program would read into: one variable for each column.
struct Day {
    std::int64_t sequence = 0;
    std::string client;
    std::string name;
    double date = 0;
    double hours = 0;
    double amount = 0;
    bool cancelled = false;
};

void WalkStore(const std::string& sql) {
    Day day;
    for (Recordset rows = Fixture::Get().database->OpenRecordset(sql); !rows.Eof(); rows.MoveNext()) {
        day.sequence = rows.Get(0).ToInteger();
        day.client = rows.Get(1).ToText();
        day.name = rows.Get(2).ToText();
        day.date = rows.Get(3).ToDate().Serial();
        day.hours = rows.Get(4).ToDouble();
        day.amount = rows.Get(5).ToDouble();
        day.cancelled = rows.Get(6).ToBoolean();
        benchmark::DoNotOptimize(day);
    }
}

/// As most programs do it: the fields by their names, and few of those that the query selects. The two blanks
/// make it another statement than the walk over all fields.
void WalkByName() {
    Day day;
    for (Recordset rows = Fixture::Get().database->OpenRecordset("select  * from day"); !rows.Eof();
         rows.MoveNext()) {
        day.client = rows.Text("client");
        day.hours = rows.Get("hrs").ToDouble();
        benchmark::DoNotOptimize(day);
    }
}

std::string TextAt(sqlite3_stmt* row, int column) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
    return text ? std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(row, column)))
                : std::string();
}

void WalkBare(const char* sql) {
    sqlite3_stmt* rows = Fixture::Get().Prepare(sql);
    Day day;
    while (sqlite3_step(rows) == SQLITE_ROW) {
        day.sequence = sqlite3_column_int64(rows, 0);
        day.client = TextAt(rows, 1);
        day.name = TextAt(rows, 2);
        day.date = sqlite3_column_double(rows, 3);
        day.hours = sqlite3_column_double(rows, 4);
        day.amount = sqlite3_column_double(rows, 5);
        day.cancelled = sqlite3_column_int(rows, 6) != 0;
        benchmark::DoNotOptimize(day);
    }
    sqlite3_finalize(rows);
}

void BM_Walk(benchmark::State& state) {
    Compare(
        state, [] { WalkStore("select * from day"); }, [] { WalkBare("select * from day"); });
}
BENCHMARK(BM_Walk)->UseManualTime()->Unit(benchmark::kMillisecond);

void BM_WalkTwoFields(benchmark::State& state) {
    Compare(
        state, [] { WalkByName(); }, [] { WalkBare("select * from day"); });
}
BENCHMARK(BM_WalkTwoFields)->UseManualTime()->Unit(benchmark::kMillisecond);

void BM_WalkOrdered(benchmark::State& state) {
    Compare(
        state, [] { WalkStore("select * from day order by cli_name, st_date"); },
        [] { WalkBare("select * from day order by cli_name, st_date"); });
}
BENCHMARK(BM_WalkOrdered)->UseManualTime()->Unit(benchmark::kMillisecond);

void BM_WalkByIndex(benchmark::State& state) {
    Compare(
        state, [] { WalkStore("select * from day order by client"); },
        [] { WalkBare("select * from day order by client"); });
}
BENCHMARK(BM_WalkByIndex)->UseManualTime()->Unit(benchmark::kMillisecond);

/// The lists of one client: a thousand short recordsets, inside a read span and without one.
void BM_ShortLists(benchmark::State& state) {
    Fixture& fixture = Fixture::Get();
    const bool span = state.range(0) != 0;
    sqlite3_stmt* bare = fixture.Prepare("select * from day where client = ?1 order by st_date");
    Compare(
        state,
        [&] {
            std::optional<ReadSpan> view;
            if (span)
                view.emplace(fixture.database->BeginRead());
            for (int i = 0; i < 1000; ++i)
                WalkStore(Sql("select * from day where client = {} order by st_date", ClientOf(i)));
        },
        [&] {
            if (span)
                fixture.Run("begin");
            for (int i = 0; i < 1000; ++i) {
                const std::string client = ClientOf(i);
                sqlite3_bind_text(bare, 1, client.c_str(), -1, SQLITE_TRANSIENT);
                while (sqlite3_step(bare) == SQLITE_ROW)
                    benchmark::DoNotOptimize(TextAt(bare, 2));
                sqlite3_reset(bare);
            }
            if (span)
                fixture.Run("commit");
        });
    sqlite3_finalize(bare);
}
BENCHMARK(BM_ShortLists)->Arg(0)->Arg(1)->ArgName("span")->UseManualTime()->Unit(benchmark::kMillisecond);

/// A thousand searches on an indexed column of all rows; the budget is 50 microseconds each.
void BM_FindFirst(benchmark::State& state) {
    Fixture& fixture = Fixture::Get();
    const char* order = state.range(0) == 0 ? "" : " order by cli_name";
    Recordset rows = fixture.database->OpenRecordset(std::string("select * from day") + order);
    sqlite3_stmt* bare = fixture.Prepare("select rowid from day where client = ?1 limit 1");
    int next = 0;
    Compare(
        state,
        [&] {
            for (int i = 0; i < 1000; ++i) {
                rows.FindFirst(Sql("client = {}", ClientOf(next + i)));
                if (rows.NoMatch())
                    state.SkipWithError("not found");
            }
        },
        [&] {
            for (int i = 0; i < 1000; ++i) {
                const std::string client = ClientOf(next + i);
                sqlite3_bind_text(bare, 1, client.c_str(), -1, SQLITE_TRANSIENT);
                benchmark::DoNotOptimize(sqlite3_step(bare));
                sqlite3_reset(bare);
            }
            next = (next + 1000) % kRows;
        });
    sqlite3_finalize(bare);
}
BENCHMARK(BM_FindFirst)->Arg(0)->Arg(1)->ArgName("ordered")->UseManualTime()->Unit(benchmark::kMillisecond);

void AddRows(Recordset& rows, int count) {
    for (int i = 0; i < count; ++i) {
        rows.AddNew();
        rows.Set("client", ClientOf(i));
        rows.Set("st_date", 46000 + i);
        rows.Set("hrs", 2.5);
        rows.Update();
    }
}

void AddBare(sqlite3_stmt* insert, int count) {
    for (int i = 0; i < count; ++i) {
        const std::string client = ClientOf(i);
        sqlite3_bind_text(insert, 1, client.c_str(), -1, SQLITE_TRANSIENT);
        sqlite3_bind_int(insert, 2, 46000 + i);
        sqlite3_bind_double(insert, 3, 2.5);
        sqlite3_step(insert);
        sqlite3_reset(insert);
    }
}

void BM_AddInTransaction(benchmark::State& state) {
    Fixture& fixture = Fixture::Get();
    sqlite3_stmt* insert =
        fixture.Prepare("insert into added_bare (client, st_date, hrs) values (?1, ?2, ?3)");
    Compare(
        state,
        [&] {
            Transaction step = fixture.database->BeginTransaction();
            Recordset rows = fixture.database->OpenRecordset("select * from added where sequence < 0");
            AddRows(rows, 10000);
        },
        [&] {
            fixture.Run("begin immediate");
            AddBare(insert, 10000);
            fixture.Run("rollback");
        });
    sqlite3_finalize(insert);
    state.SetItemsProcessed(10000 * state.iterations());
}
BENCHMARK(BM_AddInTransaction)->UseManualTime()->Unit(benchmark::kMillisecond);

void BM_AddOneByOne(benchmark::State& state) {
    Fixture& fixture = Fixture::Get();
    sqlite3_stmt* insert =
        fixture.Prepare("insert into added_bare (client, st_date, hrs) values (?1, ?2, ?3)");
    Recordset rows = fixture.database->OpenRecordset("select * from added where sequence < 0");
    Compare(
        state, [&] { AddRows(rows, 100); }, [&] { AddBare(insert, 100); });
    sqlite3_finalize(insert);
    state.SetItemsProcessed(100 * state.iterations());
}
BENCHMARK(BM_AddOneByOne)->UseManualTime()->Unit(benchmark::kMillisecond);

/// The statement that the suggestion sends most: slot columns of one row.
void BM_UpdateSlots(benchmark::State& state) {
    Fixture& fixture = Fixture::Get();
    Transaction step = fixture.database->BeginTransaction();
    for (auto _ : state)
        for (int i = 0; i < 1000; ++i)
            fixture.database->Execute(
                Sql("update day set cli_name = {},hrs = {} where client = {} and cancelled = 0",
                    "Smith, John", i, ClientOf(i)));
}
BENCHMARK(BM_UpdateSlots)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kv

BENCHMARK_MAIN();
