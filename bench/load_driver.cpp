// Plays many seats at once on one data folder, or on a database server of its own: each a process that runs
// the real routines in a weighted mix. Seats are killed, connections cut, the server stopped, all at random
// moments. Checks meanwhile and at the end that nothing was lost or doubled, and tells what each routine
// took. docs/load.md keeps the figures.
#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <random>
#include <sstream>
#include <thread>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <libpq-fe.h>
#include <sys/wait.h>
#include <unistd.h>

#include "base/text.h"
#include "billing/authorization_save.h"
#include "billing/authorizations.h"
#include "clients/client_find.h"
#include "clients/client_id.h"
#include "clients/client_moves.h"
#include "clients/client_save.h"
#include "clients/new_client.h"
#include "matching/suggestion.h"
#include "scheduling/schedule_creation.h"
#include "session/start.h"
#include "support/plain_form.h"
#include "support/scripted_ports.h"
#include "support/test_server.h"
#include "tool/tool.h"

namespace kv {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

/// How many rows the seats count in.
constexpr int kSharedRows = 20;
constexpr const char* kWorkedVisits =
    "select sequence, act_hrs from sch_day where act_hrs <> 0 order by sequence";

struct Plan {
    int seats = 8;
    int seconds = 60;
    bool server = false;
    int kills = 0;
    int cuts = 0;   ///< connections that are cut
    int stops = 0;  ///< times that the server is stopped and started
    bool checkKills = false;
    unsigned seed = 1;
    long clients = 300;
    long caregivers = 400;
};

/// Answers Yes to every question and keeps what was said.
class SeatDialogs : public Dialogs {
  public:
    void ShowMessageWindow(const std::string& text, bool /*beep*/) override { said.push_back(text); }
    void ShowInformation(const std::string& /*title*/, const std::string& text) override {
        said.push_back(text);
    }
    bool AskQuestion(const std::string& /*question*/) override { return true; }
    void ShowFaults(const std::vector<std::string>& lines) override {
        said.insert(said.end(), lines.begin(), lines.end());
    }
    std::optional<std::string> AskInput(const std::string& /*title*/, const std::string& /*prompt*/,
                                        const std::string& /*initial*/) override {
        return std::nullopt;
    }
    std::vector<std::string> said;
};

/// One seat: a program of its own on the shared folder.
class Seat {
  public:
    Seat(const fs::path& folder, int number, unsigned seed)
        : random_(seed),
          log_(folder / fmt::format("seat{}.log", number), std::ios::app),
          settings_(folder / "settings.ini"),
          session_(settings_, {clock_, dialogs_, progress_}) {
        ReadLogin(session_);
        session_.User = fmt::format("SEAT{}", number);
        OpenSessionData(session_);
        session_.ClientSort = "client";
        form_ = std::make_unique<test::PlainForm>(session_);
        for (Recordset row = session_.dbMainWork->OpenRecordset("select sequence from Authorizations",
                                                                RecordsetType::Snapshot);
             !row.Eof(); row.MoveNext()) {
            authorizations_.push_back(static_cast<long>(row.Get("sequence").ToInteger()));
        }
    }

    void RunUntil(Clock::time_point end) {
        struct Routine {
            const char* name;
            int weight;
            void (Seat::*run)();
        };
        static constexpr std::array kRoutines = {Routine{"find", 30, &Seat::Find},
                                                 Routine{"next", 30, &Seat::Next},
                                                 Routine{"save", 12, &Seat::Save},
                                                 Routine{"new client", 3, &Seat::NewOne},
                                                 Routine{"authorization", 5, &Seat::SaveAnAuthorization},
                                                 Routine{"schedule", 8, &Seat::Schedule},
                                                 Routine{"suggestion", 10, &Seat::Suggest},
                                                 Routine{"count", 2, &Seat::Count}};
        while (Clock::now() < end) {
            int pick = Any(100);
            for (const Routine& routine : kRoutines) {
                pick -= routine.weight;
                if (pick < 0) {
                    Measure(routine.name, [&] { (this->*routine.run)(); });
                    break;
                }
            }
        }
    }

  private:
    int Any(int below) { return std::uniform_int_distribution<int>(0, below - 1)(random_); }

    template <typename Work>
    void Measure(const char* name, const Work& work) {
        dialogs_.said.clear();
        const auto start = Clock::now();
        std::string error;
        try {
            work();
        } catch (const EngineError& failure) {
            error = fmt::format("error {}", failure.Number());
        }
        const auto took = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start);
        log_ << name << '\t' << took.count() << '\t' << error << '\n';
        for (const std::string& line : dialogs_.said) {
            log_ << "said\t0\t" << ReplaceAll(ReplaceAll(line, "\r\n", " "), "\n", " ") << '\n';
        }
        log_.flush();
    }

    void Find() {
        const std::string letter(1, static_cast<char>('A' + Any(26)));
        FindClients(session_, {"LAST NAME", "ALL CLIENTS", "ALL", letter});
    }
    void Next() {
        shown_ = false;
        MoveInClientList(session_, *form_, Any(20) == 0 ? ListMove::First : ListMove::Next);
        Show();
    }
    /// What a failure left half shown is shown again before anything is typed into it.
    void Show() {
        if (!shown_) {
            form_->Show();
        }
        shown_ = true;
    }
    void Save() {
        Show();
        form_->EditRow();
        form_->Type("TXTcity", Value(fmt::format("City {}", Any(1000))));
        form_->Type("TxtPhone", Value(fmt::format("518555{:04}", Any(10000))));
        SaveClient(session_, *form_);
    }
    void NewOne() {
        NewClient client;
        client.id = NextClientId(session_, false).value_or("");
        client.start = clock_.Today();
        client.potential = true;
        SaveNewClient(session_, client);
    }
    long AnAuthorization() {
        return authorizations_[static_cast<std::size_t>(Any(static_cast<int>(authorizations_.size())))];
    }
    void SaveAnAuthorization() {
        Recordset rows = session_.dbMainWork->OpenRecordset(
            Sql("select * from Authorizations where sequence = {}", AnAuthorization()));
        if (rows.Eof()) {
            return;
        }
        AuthorizationEntry entry;
        entry.payer = rows.Text("bill_name");
        entry.billCode = static_cast<long>(rows.Get("bill_code").NumberOr(0));
        entry.visitType = rows.Text("visit_type");
        entry.visitDescription = rows.Text("vis_desc");
        entry.state = std::string(ItemOfLetter(kAuthorizationStates, rows.Text("status_code")));
        entry.hourCode = "Regular";
        const std::string client = rows.Text("CLIENT");
        test::PlainForm form(session_, {"ALL CLIENTS"}, client);
        rows.Edit();
        rows.Set("HRS", 5 + Any(30));
        rows.Set("to_DATE", rows.Get("to_DATE").ToDate().AddDays(Any(3) - 1));
        SaveAuthorization(session_, rows, entry, client, form, [](long) { return ImportantAnswer::Yes; });
    }
    void Schedule() {
        ScheduleCreation creation(session_);
        creation.RunAll(AssignmentsOf(session_, AnAuthorization()));
    }
    /// Counts one up in a row that all seats share: an update that is lost shows in the end.
    void Count() {
        Recordset row = session_.dbMainWork->OpenRecordset(
            Sql("select * from load_count where place = {}", Any(kSharedRows)));
        row.Edit();
        row.Set("number", row.Get("number").ToInteger() + 1);
        row.Update();
        log_ << "counted\t0\t\n";
    }
    void Suggest() {
        SuggestionRequest request;
        request.client = form_->List().Text("CLIENT");
        request.day = clock_.Today().AddDays(Any(7));
        request.time = Date::FromTime(Any(24), 15 * Any(4));
        request.hours = 1 + Any(8);
        const ClientNeeds needs = PrepareClient(session_, request);
        SearchCaregivers(session_, needs, request, {});
    }

    std::mt19937 random_;
    std::ofstream log_;
    SystemClock clock_;
    SeatDialogs dialogs_;
    test::RecordingProgress progress_;
    SettingsStore settings_;
    Session session_;
    std::unique_ptr<test::PlainForm> form_;
    std::vector<long> authorizations_;
    bool shown_ = true;
};

/// The agency in a folder of its own, and the seats on it.
class Load {
  public:
    explicit Load(const Plan& plan) : plan_(plan), place_(fs::temp_directory_path()), folder_(place_.Path()) {
        fs::create_directories(folder_ / "data");
        if (plan.server) {
            test::TestServer::OnDisk().MakeDatabase("agency");
            IniFile(folder_ / "data" / "KESTRAVA.INI")
                .Set("Database", "Server", test::TestServer::OnDisk().Connection("agency"));
        }
        Prepare({"init"});
        Prepare({"demo", "--clients", std::to_string(plan.clients), "--caregivers",
                 std::to_string(plan.caregivers)});
        Prepare({"login", "--user", "LOAD"});
        Prepare({"sql", "create table load_count (place LONG, number LONG)"});
        for (int place = 0; place < kSharedRows; ++place) {
            Prepare({"sql", fmt::format("insert into load_count values ({}, 0)", place)});
        }
        worked_ = Prepare({"sql", kWorkedVisits});
    }
    Load(const Load&) = delete;
    Load& operator=(const Load&) = delete;

    /// False where something is not as it must be.
    bool Run() {
        std::mt19937 random(plan_.seed);
        const auto end = Clock::now() + std::chrono::seconds(plan_.seconds);
        for (int seat = 0; seat < plan_.seats; ++seat) {
            Start(seat, random(), end);
        }
        DoHarm(random, end);
        bool sound = true;
        for (const auto& [seat, child] : children_) {
            int status = 0;
            ::waitpid(child, &status, 0);
            if (status != 0) {
                std::cout << "seat " << seat << " ended with " << status << '\n';
                sound = false;
            }
        }
        std::cout << fmt::format("{} seats killed, {} connections cut, {} stops of the server\n",
                                 done_[Harm::Kill], done_[Harm::Cut], done_[Harm::Stop]);
        Report();
        return Check() && sound && sound_;
    }

  private:
    enum class Harm { Kill, Cut, Stop };

    /// Spreads what is done to the seats over the time, and looks after each few seconds whether all is well.
    void DoHarm(std::mt19937& random, Clock::time_point end) {
        std::vector<Harm> harms(static_cast<std::size_t>(plan_.kills), Harm::Kill);
        harms.insert(harms.end(), static_cast<std::size_t>(plan_.cuts), Harm::Cut);
        harms.insert(harms.end(), static_cast<std::size_t>(plan_.stops), Harm::Stop);
        std::shuffle(harms.begin(), harms.end(), random);
        constexpr std::chrono::seconds kBetweenLooks(10);
        const auto begin = Clock::now();
        const auto pause = (end - begin) / static_cast<int>(harms.size() + 1);
        auto looked = begin;
        for (std::size_t next = 0; Clock::now() < end;) {
            const auto until =
                next < harms.size() ? begin + pause * static_cast<int>(next + 1) : looked + kBetweenLooks;
            std::this_thread::sleep_until(std::min<Clock::time_point>(until, end));
            if (next < harms.size() && Clock::now() < end) {
                ++done_[harms[next]];
                Do(harms[next++], random, end);
            }
            if (Clock::now() - looked > kBetweenLooks) {
                looked = Clock::now();
                sound_ = CheckVisits() && sound_;
            }
        }
    }

    void Do(Harm harm, std::mt19937& random, Clock::time_point end) {
        if (harm == Harm::Kill) {
            const int seat = static_cast<int>(random() % static_cast<unsigned>(plan_.seats));
            ::kill(children_[seat], SIGKILL);
            ::waitpid(children_[seat], nullptr, 0);
            sound_ = (!plan_.checkKills || (CheckFolder() && CheckVisits())) && sound_;
            Start(seat, random(), end);
            return;
        }
        test::TestServer& server = test::TestServer::OnDisk();
        if (harm == Harm::Stop) {
            server.Stop();
            server.Start();
            return;
        }
        const std::unique_ptr<PGconn, decltype(&PQfinish)> connection(
            PQconnectdb(server.Connection("agency").c_str()), PQfinish);
        PQclear(
            PQexec(connection.get(),
                   "select pg_terminate_backend(pid) from pg_stat_activity where application_name = 'kvCli' "
                   "order by random() limit 1"));
    }

    struct Answer {
        int status;
        std::string words;  ///< behind what it printed, where it failed
    };
    Answer Tool(const std::vector<std::string>& arguments) const {
        std::vector<std::string> all = {"--data", (folder_ / "data").string(), "--settings",
                                        (folder_ / "settings.ini").string()};
        all.insert(all.end(), arguments.begin(), arguments.end());
        std::ostringstream out;
        std::ostringstream err;
        const int status = RunTool(all, out, err);
        return {status, status == 0 ? out.str() : out.str() + err.str()};
    }
    /// A step without which nothing can be measured.
    std::string Prepare(const std::vector<std::string>& arguments) const {
        Answer answer = Tool(arguments);
        if (answer.status != 0) {
            throw std::runtime_error(arguments.front() + " failed: " + answer.words);
        }
        return std::move(answer.words);
    }
    /// The rows of a statement; a failure's words, which are no rows that are looked for.
    std::string Rows(const std::string& statement) const { return Tool({"sql", statement}).words; }

    /// A seat from its start on; one that finds the server down tries again, as its operator does.
    int Play(int seat, unsigned seed, Clock::time_point end) const {
        while (Clock::now() < end) {
            try {
                Seat(folder_, seat, seed).RunUntil(end);
            } catch (const EngineError& failure) {
                if (failure.Number() != engine_error::kConnectionFailed) {
                    std::cerr << "seat " << seat << ": " << failure.what() << '\n';
                    return 1;
                }
                std::this_thread::sleep_for(std::chrono::milliseconds(100));
            } catch (const std::exception& failure) {
                std::cerr << "seat " << seat << ": " << failure.what() << '\n';
                return 1;
            }
        }
        return 0;
    }

    void Start(int seat, unsigned seed, Clock::time_point end) {
        const pid_t child = ::fork();
        if (child == 0) {
            ::_exit(Play(seat, seed, end));
        }
        children_[seat] = child;
    }

    /// The time under which a part of the sorted runs lies.
    static double Milliseconds(const std::vector<long>& sorted, double part) {
        constexpr double kMicroseconds = 1000;
        const auto at = static_cast<std::size_t>(part * static_cast<double>(sorted.size() - 1));
        return static_cast<double>(sorted[at]) / kMicroseconds;
    }

    void Report() {
        std::map<std::string, std::vector<long>> times;
        std::map<std::string, long> words;
        for (int seat = 0; seat < plan_.seats; ++seat) {
            std::ifstream log(folder_ / fmt::format("seat{}.log", seat));
            for (std::string line; std::getline(log, line);) {
                const std::vector<std::string> parts = Split(line, '\t');
                if (parts.size() < 3) {
                    continue;  // its seat was killed while it wrote
                }
                if (parts[0] == "counted") {
                    ++counted_;
                    continue;
                }
                if (parts[0] != "said" && parts[2].empty()) {
                    times[parts[0]].push_back(std::atol(parts[1].c_str()));
                }
                if (!parts[2].empty()) {
                    ++words[parts[2]];
                }
            }
        }
        std::cout << "| routine | runs | median ms | 99th percentile ms |\n|---|---|---|---|\n";
        for (auto& [name, all] : times) {
            std::sort(all.begin(), all.end());
            std::cout << fmt::format("| {} | {} | {:.1f} | {:.1f} |\n", name, all.size(),
                                     Milliseconds(all, 0.5), Milliseconds(all, 0.99));
        }
        for (const auto& [text, count] : words) {
            std::cout << count << " times: " << text << '\n';
        }
    }

    static bool Fail(const std::string& what) {
        std::cout << "FAILED: " << what << '\n';
        return false;
    }

    bool CheckFolder() const {
        const std::string problems = Tool({"check"}).words;
        return Trim(problems).rfind("{\"problems\":[]}", 0) == 0 || Fail(problems);
    }

    bool Check() const {
        bool sound = CheckFolder();
        sound = CheckVisits() && sound;
        // A seat that is killed, or loses its connection, between the save and its note has counted all the
        // same.
        const long unsure = plan_.kills + plan_.cuts + static_cast<long>(plan_.stops) * plan_.seats;
        const std::string answer = Rows("select sum(number) from load_count");
        const long stored = std::atol(answer.substr(std::min(answer.find("[[") + 2, answer.size())).c_str());
        if (stored < counted_ || stored > counted_ + unsure) {
            sound = Fail(fmt::format("{} were counted and {} stand there", counted_, stored));
        }
        std::cout << fmt::format("counted {} times in {} shared rows, {} stand there\n", counted_,
                                 kSharedRows, stored);
        return sound;
    }

    bool CheckVisits() const {
        bool sound = Rows(kWorkedVisits) == worked_ || Fail("visits that were worked are not as they were");
        const std::string doubled = Rows(
            "select assign_seq, st_date, count(*) as visits from sch_day where assign_seq > 0 group by "
            "assign_seq, "
            "st_date having count(*) > 1");
        if (doubled.find("\"rows\":[]") == std::string::npos) {
            sound = Fail("visits stand twice: " + doubled.substr(0, 400));
        }
        return sound;
    }

    Plan plan_;
    test::TempFolder place_;
    fs::path folder_;
    std::map<int, pid_t> children_;
    std::string worked_;
    bool sound_ = true;
    std::map<Harm, int> done_;
    long counted_ = 0;
};

}  // namespace
}  // namespace kv

int main(int argc, char** argv) {
    kv::Plan plan;
    CLI::App app("Plays many seats on one data folder or database server");
    app.add_option("--seats", plan.seats, "How many seats");
    app.add_option("--seconds", plan.seconds, "How long");
    app.add_flag("--server", plan.server,
                 "On a database server of its own, with what is committed on the disk");
    app.add_option("--cuts", plan.cuts, "How many connections are cut");
    app.add_option("--stops", plan.stops, "How many times the server is stopped and started");
    app.add_option("--kills", plan.kills, "How many times a seat is killed and started anew");
    app.add_flag("--check-kills", plan.checkKills,
                 "Check the databases after every kill; for one seat alone");
    app.add_option("--seed", plan.seed, "Of what the seats do");
    app.add_option("--clients", plan.clients, "Clients of the made-up agency");
    app.add_option("--caregivers", plan.caregivers, "Its caregivers");
    CLI11_PARSE(app, argc, argv);
    if (plan.checkKills && plan.seats != 1) {
        std::cerr << "--check-kills is for one seat: others would be in the middle of their steps\n";
        return 2;
    }
    try {
        return kv::Load(plan).Run() ? 0 : 1;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
