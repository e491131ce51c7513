#pragma once
#include <string_view>
#include <vector>

#include "clients/pick_query.h"
#include "session/session.h"

namespace kv {

// frmCLIFIND: searches all clients, whatever the main screen's limits.

/// Combo1 and Combo2.
const std::vector<std::string_view>& ClientFindFields();
const std::vector<std::string_view>& ClientFindStatuses();
/// The label of the search text: "Last Name:" for "LAST NAME".
std::string ClientFindLabel(std::string_view field);

/// The search of a field from its left, or without a text all clients of the status and group, by name. A
/// text with an apostrophe throws EngineError 3075.
std::string ClientFindStatement(const PickQuery& query);
/// Id, last name, first name, phone as "(###) ###-####", group, status code. Throws EngineError.
PickRows FindClients(Session& session, const PickQuery& query);

}  // namespace kv
