#include "datastore/dialect/token_stream.h"

#include <fmt/format.h>

#include "base/text.h"
#include "datastore/engine_error.h"

namespace kv::dialect {
namespace {

bool EndsClause(const Token& token, const Token& next) {
    switch (token.keyword) {
        case Keyword::From:
        case Keyword::Where:
        case Keyword::Having:
            return true;
        case Keyword::Group:
        case Keyword::Order:
            return next.keyword == Keyword::By;
        default:
            return token.kind == TokenKind::End || token.symbol == Symbol::Semicolon;
    }
}

std::string_view FaultOf(const Token& token, std::string_view text) {
    if (token.kind == TokenKind::Bad && (text.front() == '\'' || text.front() == '"'))
        return "Syntax error in string";
    if (token.kind == TokenKind::Bad && text.front() == '#')
        return "Syntax error in date";
    if (token.symbol == Symbol::RightParen)
        return "Extra )";
    return "Syntax error (missing operator)";
}

}  // namespace

const Token& TokenStream::Peek(std::size_t ahead) const {
    return lexed_.tokens[std::min(at_ + ahead, lexed_.tokens.size() - 1)];
}

Token TokenStream::Take() {
    const Token token = Peek();
    previousEnd_ = token.end;
    if (at_ + 1 < lexed_.tokens.size())
        ++at_;
    return token;
}

bool TokenStream::At(Keyword keyword, std::size_t ahead) const {
    return Peek(ahead).keyword == keyword;
}

bool TokenStream::At(Symbol symbol, std::size_t ahead) const {
    return Peek(ahead).symbol == symbol;
}

bool TokenStream::TakeIf(Keyword keyword) {
    if (!At(keyword))
        return false;
    Take();
    return true;
}

bool TokenStream::TakeIf(Symbol symbol) {
    if (!At(symbol))
        return false;
    Take();
    return true;
}

bool TokenStream::TakeClause(Keyword first) {
    if (!AtClause(first))
        return false;
    Take();
    Take();
    return true;
}

std::string_view TokenStream::FragmentFrom(std::uint32_t begin) const {
    std::size_t end = at_;
    while (!EndsClause(lexed_.tokens[end], lexed_.tokens[std::min(end + 1, lexed_.tokens.size() - 1)]))
        ++end;
    const std::uint32_t stop = std::max(lexed_.tokens[end].begin, begin);
    return TrimView(lexed_.text.substr(begin, stop - begin));
}

void TokenStream::FailExpression(std::uint32_t begin) const {
    FailExpression(begin, FaultOf(Peek(), TextOf(Peek())));
}

void TokenStream::FailExpression(std::uint32_t begin, std::string_view fault) const {
    throw EngineError(engine_error::kSyntaxInExpression,
                      fmt::format("{} in query expression '{}'.", fault, FragmentFrom(begin)));
}

void TokenStream::Fail(int number, std::string_view what) const {
    if (AtEnd())
        throw EngineError(number, fmt::format("{}: it ends too early.", what));
    throw EngineError(number, fmt::format("{} at '{}'.", what, TrimView(lexed_.text.substr(Begin()))));
}

void TokenStream::Expect(Symbol symbol, int number, std::string_view what) {
    if (!TakeIf(symbol))
        Fail(number, what);
}

void TokenStream::Expect(Keyword keyword, int number, std::string_view what) {
    if (!TakeIf(keyword))
        Fail(number, what);
}

}  // namespace kv::dialect
