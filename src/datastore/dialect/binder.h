#pragma once
#include "datastore/catalogue.h"
#include "datastore/dialect/statement.h"

namespace kv::dialect {

/// Finds the tables and columns that a parsed statement names, works out the types, puts conversions in their
/// place and checks what the parser can't know. Throws EngineError: 3078 for a missing table, 3061 with the
/// number of names that are unknown, 3079 for a name that several tables have, 3464 where types do not go
/// together, 3085 for an unknown function, 3122 and 3096 about totals, 3127 and 3346 about INSERT.
void Bind(Statement& statement, const Catalogue& catalogue);

/// Binds a criteria text over the rows of a bound query: its columns by the names that they have in the
/// result, else any column of its tables.
void BindCriteria(ExpressionPtr& criteria, const Select& query);

}  // namespace kv::dialect
