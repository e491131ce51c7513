#include "datastore/dialect/names.h"

namespace kv::dialect {

bool IsReserved(Keyword keyword) {
    switch (keyword) {
        case Keyword::And:
        case Keyword::As:
        case Keyword::Between:
        case Keyword::By:
        case Keyword::False:
        case Keyword::From:
        case Keyword::Having:
        case Keyword::In:
        case Keyword::Inner:
        case Keyword::Is:
        case Keyword::Join:
        case Keyword::Like:
        case Keyword::Mod:
        case Keyword::Not:
        case Keyword::Null:
        case Keyword::On:
        case Keyword::Or:
        case Keyword::Select:
        case Keyword::Set:
        case Keyword::True:
        case Keyword::Union:
        case Keyword::Where:
            return true;
        default:
            return false;
    }
}

bool AtAnyName(const TokenStream& tokens) {
    return tokens.Peek().kind == TokenKind::Word || tokens.Peek().kind == TokenKind::Bracketed;
}

bool AtName(const TokenStream& tokens) {
    if (tokens.AtClause(Keyword::Group) || tokens.AtClause(Keyword::Order))
        return false;
    return AtAnyName(tokens) && !IsReserved(tokens.Peek().keyword);
}

std::string TakeName(TokenStream& tokens) {
    const Token token = tokens.Take();
    std::string_view text = tokens.TextOf(token);
    if (token.kind == TokenKind::Bracketed)
        text = text.substr(1, text.size() - 2);
    return std::string(text);
}

bool AtTarget(const TokenStream& tokens) {
    return AtAnyName(tokens) || (tokens.Peek().kind == TokenKind::Number && tokens.Peek().slot < 0);
}

std::string TakeTarget(TokenStream& tokens) {
    if (tokens.Peek().kind != TokenKind::Number)
        return TakeName(tokens);
    std::string name(tokens.TextOf(tokens.Take()));
    if (tokens.Peek().kind == TokenKind::Word && tokens.Begin() == tokens.PreviousEnd())
        name += tokens.TextOf(tokens.Take());
    return name;
}

}  // namespace kv::dialect
