#pragma once
#include <string>

#include "datastore/dialect/token_stream.h"

namespace kv::dialect {

/// A word of the language that no place of an expression takes for a name.
bool IsReserved(Keyword keyword);

/// True where the next token is a bare or bracketed name; a reserved word counts only in brackets.
bool AtName(const TokenStream& tokens);

/// Takes a bare word (reserved or not) or a bracketed name.
bool AtAnyName(const TokenStream& tokens);
std::string TakeName(TokenStream& tokens);

/// A column that is written to: also a bare number, with letters right behind it ("915ID").
bool AtTarget(const TokenStream& tokens);
std::string TakeTarget(TokenStream& tokens);

}  // namespace kv::dialect
