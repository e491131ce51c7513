#pragma once
#include <string>

#include <sqlite3.h>

#include "datastore/engine_error.h"

namespace kv::sqlite {

/// The one place where the engine's results become EngineErrors: returns the good ones, throws for the rest
/// with words for the operator.
int Check(int result, sqlite3* database);

/// How a function of the connection hands an EngineError through the engine.
void FailFunction(sqlite3_context* context, const EngineError& error);

}  // namespace kv::sqlite
