#pragma once
#include <string>
#include <vector>

#include "clients/lookups.h"
#include "session/session.h"

namespace kv {

/// What the caregiver is to do under an authorization, and on which days (assign_task).

inline constexpr int kMostTasks = 30;  ///< that can be chosen at once

/// The captions of CHKDay: "Authorized" for tasks of any day, then Sunday to Saturday.
const std::vector<std::string>& TaskDays();

/// The company's task codes. Throws EngineError, as the others do.
std::vector<LookupItem> LoadTaskCodes(Session& session);

struct AuthorizationTask {
    std::string dow;  ///< "AUT" for any day, "MON" to "SUN"
    std::string task;
    std::string description;
};
/// Those of any day first, then from Monday to Sunday, by description.
std::vector<AuthorizationTask> LoadAuthorizationTasks(Session& session, long authorization);

/// Adds each task to each of the days (captions of CHKDay); what is there stays as it is. Writes assign_task
/// and, On the Road, the journal.
void AddTasks(Session& session, long authorization, const std::vector<std::string>& days,
              const std::vector<std::string>& codes);
/// Asks, and removes the task from its day. False where it is gone already, or stays.
bool RemoveTask(Session& session, long authorization, const AuthorizationTask& task);
/// Asks for another description of the task on its day. False where the operator cancelled.
bool EditTask(Session& session, long authorization, const AuthorizationTask& task);

}  // namespace kv
