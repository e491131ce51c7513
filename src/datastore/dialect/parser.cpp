#include "datastore/dialect/parser.h"

#include "datastore/dialect/expression_parser.h"
#include "datastore/engine_error.h"
#include "datastore/faults.h"

namespace kv::dialect {
namespace {

Statement ParseOne(TokenStream& tokens) {
    const Keyword first = tokens.Peek().keyword;
    switch (first) {
        case Keyword::Select:
            tokens.Take();
            return ParseSelect(tokens);
        case Keyword::Insert:
            tokens.Take();
            return ParseInsert(tokens);
        case Keyword::Update:
            tokens.Take();
            return ParseUpdate(tokens);
        case Keyword::Delete:
            tokens.Take();
            return ParseDelete(tokens);
        case Keyword::Create:
            tokens.Take();
            return ParseCreate(tokens);
        case Keyword::Drop:
            tokens.Take();
            return ParseDrop(tokens);
        default:
            throw EngineError(
                engine_error::kInvalidStatement,
                "Invalid SQL statement; expected 'DELETE', 'INSERT', 'SELECT', 'UPDATE', 'CREATE' or "
                "'DROP'.");
    }
}

void ExpectEnd(TokenStream& tokens) {
    if (tokens.At(Keyword::Union))
        throw faults::NotSupported("a union of queries");
    if (tokens.At(Symbol::RightParen))
        tokens.FailExpression(0);
    tokens.TakeIf(Symbol::Semicolon);
    if (!tokens.AtEnd())
        tokens.Fail(engine_error::kTextAfterEnd, "Characters found after end of SQL statement");
}

}  // namespace

Statement ParseStatement(const Lexed& lexed) {
    TokenStream tokens(lexed);
    Statement statement = ParseOne(tokens);
    ExpectEnd(tokens);
    return statement;
}

ExpressionPtr ParseCriteria(const Lexed& lexed) {
    TokenStream tokens(lexed);
    ExpressionPtr criteria = ExpressionParser(tokens).Parse();
    if (!tokens.AtEnd())
        tokens.FailExpression(0);
    return criteria;
}

ExpressionPtr ParseWhere(TokenStream& tokens) {
    return tokens.TakeIf(Keyword::Where) ? ExpressionParser(tokens).Parse() : nullptr;
}

}  // namespace kv::dialect
