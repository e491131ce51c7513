#pragma once
#include <string>
#include <string_view>

#include "datastore/dialect/token.h"

namespace kv::dialect {

/// The parser's place among the tokens, and the one spot where syntax faults become EngineErrors. Their words
/// quote the piece of the statement that can't be read.
class TokenStream {
  public:
    explicit TokenStream(const Lexed& lexed) : lexed_(lexed) {}

    const Token& Peek(std::size_t ahead = 0) const;
    Token Take();
    std::string_view TextOf(const Token& token) const { return lexed_.TextOf(token); }
    const Value& Literal(const Token& token) const {
        return lexed_.literals[static_cast<std::size_t>(token.slot)];
    }

    bool At(Keyword keyword, std::size_t ahead = 0) const;
    bool At(Symbol symbol, std::size_t ahead = 0) const;
    bool AtEnd() const { return Peek().kind == TokenKind::End; }
    /// "order by" and "group by": the first word alone is a name.
    bool AtClause(Keyword first) const { return At(first) && At(Keyword::By, 1); }
    bool TakeIf(Keyword keyword);
    bool TakeIf(Symbol symbol);
    bool TakeClause(Keyword first);

    std::uint32_t Begin() const { return Peek().begin; }
    std::uint32_t PreviousEnd() const { return previousEnd_; }

    /// 3075 about the expression that began there.
    [[noreturn]] void FailExpression(std::uint32_t begin) const;
    [[noreturn]] void FailExpression(std::uint32_t begin, std::string_view fault) const;
    /// A fault of a clause or statement, with its own number and what was found instead.
    [[noreturn]] void Fail(int number, std::string_view what) const;
    /// Takes the token or fails.
    void Expect(Symbol symbol, int number, std::string_view what);
    void Expect(Keyword keyword, int number, std::string_view what);

  private:
    std::string_view FragmentFrom(std::uint32_t begin) const;

    const Lexed& lexed_;
    std::size_t at_ = 0;
    std::uint32_t previousEnd_ = 0;
};

}  // namespace kv::dialect
