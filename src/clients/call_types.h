#pragma once
#include <vector>

#include "clients/lookups.h"
#include "session/session.h"

namespace kv {

/// The call types that are both paid and billed, by code. Throws EngineError.
std::vector<LookupItem> LoadCallTypes(Session& session);

}  // namespace kv
