#pragma once
#include "datastore/dialect/statement.h"
#include "datastore/dialect/token.h"
#include "datastore/dialect/token_stream.h"

namespace kv::dialect {

/// Reads one statement; a semicolon may close it. Throws EngineError: 3075 for an expression, 3131, 3134,
/// 3138, 3141, 3144 for a clause, 3129 for what is no statement, 3142 for text behind it, a second statement
/// included.
Statement ParseStatement(const Lexed& lexed);

/// Reads a criteria text: what could stand behind WHERE. Throws as above.
ExpressionPtr ParseCriteria(const Lexed& lexed);

// The statements one by one, each from behind its first word.
Select ParseSelect(TokenStream& tokens);
Insert ParseInsert(TokenStream& tokens);
Update ParseUpdate(TokenStream& tokens);
Delete ParseDelete(TokenStream& tokens);
Statement ParseCreate(TokenStream& tokens);
DropTable ParseDrop(TokenStream& tokens);

/// WHERE and its condition, or none.
ExpressionPtr ParseWhere(TokenStream& tokens);

}  // namespace kv::dialect
