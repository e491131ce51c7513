#include "datastore/dialect/lexer.h"

#include <charconv>
#include <optional>

#include "base/numbers.h"
#include "datastore/dialect/keywords.h"

namespace kv::dialect {
namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}
bool StartsWord(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}
bool ContinuesWord(char c) {
    return StartsWord(c) || IsDigit(c) || c == '$';
}

/// Which numbers of a statement are not values but names or structure, told from the tokens before them.
/// These stay in the shape: an order-by position, a TOP count, the bare numeric columns that an UPDATE sets.
class Structure {
  public:
    bool OwnsNumber() const {
        return definition_ || afterTop_ || inByList_ || inColumnList_ || (inSetList_ && targetNext_);
    }

    void See(const Token& token) {
        afterTop_ = token.keyword == Keyword::Top;
        targetNext_ = token.keyword == Keyword::Set || (depth_ == 0 && token.symbol == Symbol::Comma);
        if (token.symbol == Symbol::LeftParen)
            ++depth_;
        if (token.symbol == Symbol::RightParen)
            --depth_;
        SeeKeyword(token.keyword);
        last_ = token.keyword;
    }

  private:
    void SeeKeyword(Keyword keyword) {
        switch (keyword) {
            case Keyword::Create:
            case Keyword::Drop:
                definition_ = definition_ || first_;
                break;
            case Keyword::Update:
                update_ = update_ || first_;
                break;
            case Keyword::Set:
                inSetList_ = update_;
                depth_ = 0;
                break;
            case Keyword::Where:
                inSetList_ = false;
                break;
            case Keyword::By:
                inByList_ = last_ == Keyword::Order || last_ == Keyword::Group;
                break;
            case Keyword::Having:
                inByList_ = false;
                break;
            case Keyword::Into:
                inColumnList_ = last_ == Keyword::Insert;
                break;
            case Keyword::Values:
            case Keyword::Select:
                inColumnList_ = false;
                break;
            default:
                break;
        }
        first_ = false;
    }

    bool first_ = true;
    bool definition_ = false;
    bool update_ = false;
    bool inSetList_ = false;
    bool targetNext_ = false;
    bool inByList_ = false;
    bool inColumnList_ = false;
    bool afterTop_ = false;
    int depth_ = 0;
    Keyword last_ = Keyword::None;
};

class Lexer {
  public:
    explicit Lexer(std::string_view text) { out_.text = text; }

    Lexed Run() {
        out_.tokens.reserve(out_.text.size() / 4 + 2);
        while (PassBlanks(), at_ < out_.text.size())
            out_.tokens.push_back(Next());
        Token end;
        end.begin = end.end = static_cast<std::uint32_t>(out_.text.size());
        out_.tokens.push_back(end);
        TakeOutLiterals();
        return std::move(out_);
    }

  private:
    char Peek(std::size_t ahead = 0) const {
        return at_ + ahead < out_.text.size() ? out_.text[at_ + ahead] : '\0';
    }

    void PassBlanks() {
        while (at_ < out_.text.size() && IsBlank(out_.text[at_]))
            ++at_;
    }

    Token Next() {
        Token token;
        token.begin = static_cast<std::uint32_t>(at_);
        const char c = Peek();
        if (StartsWord(c)) {
            TakeWord(token);
        } else if (IsDigit(c) || (c == '.' && IsDigit(Peek(1)))) {
            TakeNumber(token);
        } else if (c == '\'' || c == '"') {
            TakeText(token, c);
        } else if (c == '[') {
            TakeDelimited(token, ']', TokenKind::Bracketed);
        } else if (c == '#') {
            TakeDelimited(token, '#', TokenKind::Date);
        } else {
            TakeSymbol(token);
        }
        token.end = static_cast<std::uint32_t>(at_);
        // The engines' statements end at a nought character, within a text or name too.
        if (out_.TextOf(token).find('\0') != std::string_view::npos)
            token.kind = TokenKind::Bad;
        return token;
    }

    void TakeWord(Token& token) {
        while (ContinuesWord(Peek()))
            ++at_;
        token.kind = TokenKind::Word;
        token.keyword = FindKeyword(out_.text.substr(token.begin, at_ - token.begin));
    }

    void TakeDigits() {
        while (IsDigit(Peek()))
            ++at_;
    }

    void TakeNumber(Token& token) {
        TakeDigits();
        if (Peek() == '.') {
            ++at_;
            TakeDigits();
        }
        const std::size_t sign = Peek(1) == '+' || Peek(1) == '-' ? 1 : 0;
        if ((Peek() == 'e' || Peek() == 'E') && IsDigit(Peek(1 + sign))) {
            at_ += 1 + sign;
            TakeDigits();
        }
        token.kind = TokenKind::Number;
    }

    void TakeText(Token& token, char quote) {
        token.kind = TokenKind::Bad;
        for (++at_; at_ < out_.text.size(); ++at_) {
            if (Peek() != quote)
                continue;
            ++at_;
            if (Peek() != quote) {
                token.kind = TokenKind::Text;
                return;
            }
        }
    }

    void TakeDelimited(Token& token, char close, TokenKind kind) {
        const std::size_t end = out_.text.find(close, at_ + 1);
        token.kind = end == std::string_view::npos ? TokenKind::Bad : kind;
        at_ = end == std::string_view::npos ? out_.text.size() : end + 1;
    }

    void TakeSymbol(Token& token) {
        const char c = out_.text[at_++];
        const char next = Peek();
        token.kind = TokenKind::Symbol;
        switch (c) {
            case '(':
                token.symbol = Symbol::LeftParen;
                break;
            case ')':
                token.symbol = Symbol::RightParen;
                break;
            case ',':
                token.symbol = Symbol::Comma;
                break;
            case '.':
                token.symbol = Symbol::Point;
                break;
            case ';':
                token.symbol = Symbol::Semicolon;
                break;
            case '*':
                token.symbol = Symbol::Star;
                break;
            case '+':
                token.symbol = Symbol::Plus;
                break;
            case '-':
                token.symbol = Symbol::Minus;
                break;
            case '/':
                token.symbol = Symbol::Slash;
                break;
            case '\\':
                token.symbol = Symbol::Backslash;
                break;
            case '&':
                token.symbol = Symbol::Ampersand;
                break;
            case '=':
                token.symbol = Symbol::Equal;
                break;
            case '<':
                token.symbol = next == '>'   ? Symbol::NotEqual
                               : next == '=' ? Symbol::LessEqual
                                             : Symbol::Less;
                break;
            case '>':
                token.symbol = next == '=' ? Symbol::GreaterEqual : Symbol::Greater;
                break;
            default:
                token.kind = TokenKind::Bad;
                break;
        }
        if (token.symbol == Symbol::NotEqual || token.symbol == Symbol::LessEqual ||
            token.symbol == Symbol::GreaterEqual)
            ++at_;
    }

    /// The expressions of a grouped query, and of one without doubles, are compared with each other, so its
    /// literals stay part of its shape.
    bool IsGrouped() const {
        for (std::size_t i = 1; i < out_.tokens.size(); ++i)
            if (out_.tokens[i].keyword == Keyword::Distinct ||
                (out_.tokens[i].keyword == Keyword::By && out_.tokens[i - 1].keyword == Keyword::Group))
                return true;
        return false;
    }

    void TakeOutLiterals() {
        out_.shape.reserve(out_.text.size());
        const bool grouped = IsGrouped();
        Structure structure;
        for (Token& token : out_.tokens) {
            const bool number = token.kind == TokenKind::Number;
            if (token.kind == TokenKind::Text || token.kind == TokenKind::Date || number)
                TakeOut(token, grouped || (number && structure.OwnsNumber()));
            if (token.kind == TokenKind::Bad)
                out_.sound = false;
            structure.See(token);
        }
        out_.shape.append(out_.text.substr(copied_));
    }

    /// Leaves a mark of the literal's type in the shape. The mark's first character stands in no sound
    /// statement.
    void TakeOut(Token& token, bool staysInShape) {
        Value value = LiteralValue(out_.TextOf(token), token.kind);
        if (value.IsNull())
            token.kind = TokenKind::Bad;
        if (value.IsNull() || staysInShape)
            return;
        token.slot = static_cast<std::int32_t>(out_.literals.size());
        out_.shape.append(out_.text.substr(copied_, token.begin - copied_));
        out_.shape += '\x01';
        out_.shape += static_cast<char>('0' + static_cast<int>(value.Type()));
        copied_ = token.end;
        out_.literals.push_back(std::move(value));
    }

    Lexed out_;
    std::size_t at_ = 0;
    std::size_t copied_ = 0;
};

Value NumberValue(std::string_view digits) {
    std::int64_t whole = 0;
    const char* end = digits.data() + digits.size();
    if (const auto [stop, error] = std::from_chars(digits.data(), end, whole);
        error == std::errc() && stop == end)
        return Value(static_cast<long long>(whole));
    double number = 0;
    std::from_chars(digits.data(), end, number);
    return {number};
}

std::string Unquoted(std::string_view text) {
    const char quote = text.front();
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        out += text[i];
        if (text[i] == quote)
            ++i;
    }
    return out;
}

}  // namespace

Lexed Lex(std::string_view text) {
    return Lexer(text).Run();
}

Value LiteralValue(std::string_view tokenText, TokenKind kind) {
    if (kind == TokenKind::Number)
        return NumberValue(tokenText);
    if (kind == TokenKind::Text)
        return {Unquoted(tokenText)};
    const std::optional<Date> date = ParseDate(tokenText.substr(1, tokenText.size() - 2));
    return date ? Value(*date) : Value();
}

}  // namespace kv::dialect
