#include "scheduling/authorization_tasks.h"

#include <algorithm>

#include "base/text.h"
#include "session/trans.h"
#include "session/whole_step.h"

namespace kv {

namespace {

constexpr std::size_t kDayLetters = 3;
constexpr std::size_t kCodeLetters = 4;

std::string DowOf(const std::string& caption) {
    return Upper(Left(caption, kDayLetters));
}

/// The tasks of any day stand first, then the week from Monday on.
std::size_t PlaceOf(const std::string& dow) {
    static const std::vector<std::string> order = {"AUT", "MON", "TUE", "WED", "THU", "FRI", "SAT", "SUN"};
    return static_cast<std::size_t>(
        std::find_if(order.begin(), order.end(),
                     [&](const std::string& day) { return EqualsNoCase(day, dow); }) -
        order.begin());
}

Recordset Open(Session& session, long authorization) {
    return session.dbMainWork->OpenRecordset(
        Sql("select * from assign_task where id = {} order by dow,DESCRIPTION", authorization));
}

bool Find(Recordset& tasks, const std::string& dow, const std::string& task) {
    tasks.FindFirst(Sql("dow = {} and task = {}", dow, task));
    return !tasks.NoMatch();
}

void Note(Session& session, long authorization) {
    NoteOnTheRoad(session, "E", "A", std::to_string(authorization));
}

}  // namespace

const std::vector<std::string>& TaskDays() {
    static const std::vector<std::string> days = {"Authorized", "Sunday",   "Monday", "Tuesday",
                                                  "Wednesday",  "Thursday", "Friday", "Saturday"};
    return days;
}

std::vector<LookupItem> LoadTaskCodes(Session& session) {
    Recordset rows = session.dbMainCode->OpenRecordset("Select * from tasks", RecordsetType::Snapshot);
    std::vector<LookupItem> codes;
    for (; !rows.Eof(); rows.MoveNext()) {
        codes.push_back({rows.Text("code"), rows.Text("Description")});
    }
    return codes;
}

std::vector<AuthorizationTask> LoadAuthorizationTasks(Session& session, long authorization) {
    std::vector<AuthorizationTask> tasks;
    for (Recordset rows = Open(session, authorization); !rows.Eof(); rows.MoveNext()) {
        tasks.push_back({rows.Text("dow"), rows.Text("task"), rows.Text("Description")});
    }
    std::stable_sort(tasks.begin(), tasks.end(),
                     [](const auto& a, const auto& b) { return PlaceOf(a.dow) < PlaceOf(b.dow); });
    return tasks;
}

void AddTasks(Session& session, long authorization, const std::vector<std::string>& days,
              const std::vector<std::string>& codes) {
    WholeStep step(session);
    Recordset tasks = Open(session, authorization);
    Recordset all = session.dbMainCode->OpenRecordset("Select * from tasks", RecordsetType::Snapshot);
    bool added = false;
    for (const std::string& day : days) {
        for (const std::string& code : codes) {
            const std::string dow = DowOf(day);
            const std::string task = Left(code, kCodeLetters);
            if (Find(tasks, dow, task)) {
                continue;
            }
            all.FindFirst(Sql("code= {}", code));
            tasks.AddNew();
            tasks.Set("ID", authorization);
            tasks.Set("dow", dow);
            tasks.Set("task", task);
            tasks.Set("Description", all.NoMatch() ? std::string() : all.Text("Description"));
            tasks.Update();
            added = true;
        }
    }
    if (added) {
        Note(session, authorization);
    }
    step.Finish();
}

bool RemoveTask(Session& session, long authorization, const AuthorizationTask& task) {
    Recordset tasks = Open(session, authorization);
    if (!Find(tasks, task.dow, task.task) ||
        !session.dialogs.AskToDestroy("Are you sure you wish to remove this task?\r\n" + task.dow + "  " +
                                      task.description)) {
        return false;
    }
    WholeStep step(session);
    tasks.Delete();
    Note(session, authorization);
    step.Finish();
    return true;
}

bool EditTask(Session& session, long authorization, const AuthorizationTask& task) {
    const std::optional<std::string> text =
        session.dialogs.AskInput("Edit Task Code", "Description:", task.description);
    Recordset tasks = Open(session, authorization);
    if (!text || !Find(tasks, task.dow, task.task)) {
        return false;
    }
    WholeStep step(session);
    tasks.Edit();
    tasks.Set("Description", *text);
    tasks.Update();
    Note(session, authorization);
    step.Finish();
    return true;
}

}  // namespace kv
