#pragma once
#include <string_view>

#include "datastore/dialect/token.h"

namespace kv::dialect {

/// Cuts a statement, or a criteria text, into tokens. Never throws: what can't be a token is one of kind Bad,
/// so that the parser can name the clause it stands in. The result refers to the text, which must outlive it.
Lexed Lex(std::string_view text);

/// The content of a number, text or date token; Null for a date that the calendar lacks.
Value LiteralValue(std::string_view tokenText, TokenKind kind);

}  // namespace kv::dialect
