#pragma once
#include <string>
#include <vector>

#include "session/session.h"

namespace kv {

/// The statement of a client's own history list, on kestrava.mdb: everything but the bill rates, the latest
/// first.
std::string ClientHistoryStatement(const std::string& id);

/// A row as the grid shows it.
struct HistoryRow {
    std::string date;  ///< "Jan/31/2026"
    std::string time;  ///< "03:05:00 PM"
    std::string user;
    std::string status;
    std::string reason;
};
/// Throws EngineError.
std::vector<HistoryRow> LoadClientHistory(Session& session, const std::string& id);

}  // namespace kv
