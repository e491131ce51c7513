#pragma once
#include <sqlite3.h>

namespace kv::sqlite {

/// Gives a connection the text order KVTEXT and the functions that generated statements call. They are the
/// program's own formats and dates, so that every engine answers alike.
void AddFunctions(sqlite3* database);

}  // namespace kv::sqlite
