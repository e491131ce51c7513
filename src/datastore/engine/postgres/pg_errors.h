#pragma once
#include <functional>
#include <string>
#include <string_view>

#include <libpq-fe.h>

#include "datastore/engine_error.h"

namespace kv::postgres {

/// How a column of a table is spelled, by the server's names of both.
using Speller = std::function<std::string(const std::string& table, const std::string& column)>;

/// The EngineError of a result that failed, with words for the operator.
EngineError ErrorOf(const PGresult* result, const Speller& spelled);
/// The connection could not be made, with what the library says of it.
EngineError NotReached(std::string_view detail);
/// The connection broke. `writing`: in the middle of a change, so that nobody knows whether it was made.
EngineError ConnectionLost(std::string_view detail, bool writing);

}  // namespace kv::postgres
