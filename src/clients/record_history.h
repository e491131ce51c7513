#pragma once
#include <string>

#include "session/session.h"

namespace kv {

/// What happened to an authorization ("AUT") or an assignment ("ASN"), told in the one changes row that such
/// a record has: the newest entry stands in front.
struct HistoryEntry {
    std::string type;
    long sequence = 0;
    std::string status;
    std::string text;
};
/// Adds the row where there is none. Throws EngineError.
void WriteHistory(Session& session, const HistoryEntry& entry);

/// The first line of an entry's text: "When: " and "    Who: ", without its line end.
std::string HistoryHead(const Session& session);
inline constexpr const char* kHistoryLine = "-----\r\n";

/// The statement of a record's history list.
std::string RecordHistoryStatement(const std::string& type, long sequence);

}  // namespace kv
