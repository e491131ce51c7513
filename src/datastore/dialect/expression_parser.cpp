#include "datastore/dialect/expression_parser.h"

#include <array>
#include <optional>
#include <utility>

#include "base/text.h"
#include "datastore/dialect/lexer.h"
#include "datastore/dialect/names.h"
#include "datastore/faults.h"

namespace kv::dialect {
namespace {

// Every engine bounds how deep an expression may nest; this stays below all of them.
constexpr int kDeepest = 400;
constexpr int kMostParentheses = 100;

std::optional<Operator> ComparisonOf(const Token& token) {
    switch (token.symbol) {
        case Symbol::Equal:
            return Operator::Equal;
        case Symbol::NotEqual:
            return Operator::NotEqual;
        case Symbol::Less:
            return Operator::Less;
        case Symbol::LessEqual:
            return Operator::LessEqual;
        case Symbol::Greater:
            return Operator::Greater;
        case Symbol::GreaterEqual:
            return Operator::GreaterEqual;
        default:
            return std::nullopt;
    }
}

struct Level {
    std::size_t level;
    Symbol symbol;
    Keyword keyword;
    Operator op;
};

constexpr std::size_t kArithmeticLevels = 5;
constexpr std::array kArithmetic = {
    Level{0, Symbol::Ampersand, Keyword::None, Operator::Concatenate},
    Level{1, Symbol::Plus, Keyword::None, Operator::Add},
    Level{1, Symbol::Minus, Keyword::None, Operator::Subtract},
    Level{2, Symbol::None, Keyword::Mod, Operator::Modulo},
    Level{3, Symbol::Backslash, Keyword::None, Operator::IntegerDivide},
    Level{4, Symbol::Star, Keyword::None, Operator::Multiply},
    Level{4, Symbol::Slash, Keyword::None, Operator::Divide},
};

std::optional<Operator> ArithmeticOf(const Token& token, std::size_t level) {
    for (const Level& entry : kArithmetic) {
        const bool fits =
            entry.symbol != Symbol::None ? token.symbol == entry.symbol : token.keyword == entry.keyword;
        if (entry.level == level && fits)
            return entry.op;
    }
    return std::nullopt;
}

std::optional<AggregateKind> AggregateOf(std::string_view name) {
    static constexpr std::array<std::pair<std::string_view, AggregateKind>, 5> kAggregates = {{
        {"count", AggregateKind::Count},
        {"sum", AggregateKind::Sum},
        {"min", AggregateKind::Min},
        {"max", AggregateKind::Max},
        {"avg", AggregateKind::Avg},
    }};
    for (const auto& [word, kind] : kAggregates)
        if (EqualsNoCase(word, name))
            return kind;
    return std::nullopt;
}

}  // namespace

ExpressionPtr ExpressionParser::Parse() {
    begin_ = tokens_.Begin();
    ExpressionPtr expression = ParseOr();
    if (!AtEndOfExpression())
        tokens_.FailExpression(begin_);
    return expression;
}

bool ExpressionParser::AtEndOfExpression() const {
    if (tokens_.AtClause(Keyword::Group) || tokens_.AtClause(Keyword::Order))
        return true;
    switch (tokens_.Peek().keyword) {
        case Keyword::As:
        case Keyword::Asc:
        case Keyword::Cross:
        case Keyword::Desc:
        case Keyword::From:
        case Keyword::Full:
        case Keyword::Having:
        case Keyword::Inner:
        case Keyword::Join:
        case Keyword::Left:
        case Keyword::Right:
        case Keyword::Union:
        case Keyword::Where:
            return true;
        default:
            break;
    }
    const Symbol symbol = tokens_.Peek().symbol;
    return tokens_.AtEnd() || symbol == Symbol::Comma || symbol == Symbol::RightParen ||
           symbol == Symbol::Semicolon;
}

template <typename Node>
ExpressionPtr ExpressionParser::Make(Node node, std::uint32_t begin, ValueType type) {
    ExpressionPtr made = MakeExpression(std::move(node), begin, tokens_.PreviousEnd(), type);
    if (made->depth > kDeepest)
        throw EngineError(engine_error::kTooComplex, "Query is too complex.");
    return made;
}

ExpressionPtr ExpressionParser::MakeBinary(Operator op, ExpressionPtr left, ExpressionPtr right,
                                           std::uint32_t begin) {
    return Make(Binary{op, std::move(left), std::move(right)}, begin);
}

ExpressionPtr ExpressionParser::ParseOr() {
    const std::uint32_t begin = tokens_.Begin();
    ExpressionPtr left = ParseAnd();
    while (tokens_.TakeIf(Keyword::Or))
        left = MakeBinary(Operator::Or, std::move(left), ParseAnd(), begin);
    return left;
}

ExpressionPtr ExpressionParser::ParseAnd() {
    const std::uint32_t begin = tokens_.Begin();
    ExpressionPtr left = ParseNot();
    while (tokens_.TakeIf(Keyword::And))
        left = MakeBinary(Operator::And, std::move(left), ParseNot(), begin);
    return left;
}

ExpressionPtr ExpressionParser::ParseNot() {
    const std::uint32_t begin = tokens_.Begin();
    bool negated = false;
    while (tokens_.TakeIf(Keyword::Not))
        negated = !negated;
    ExpressionPtr operand = ParseComparison();
    return negated ? Make(Not{std::move(operand)}, begin) : std::move(operand);
}

ExpressionPtr ExpressionParser::ParseComparison() {
    const std::uint32_t begin = tokens_.Begin();
    ExpressionPtr left = ParseArithmetic(0);
    while (true) {
        const std::optional<Operator> op = ComparisonOf(tokens_.Peek());
        if (op) {
            tokens_.Take();
            left = MakeBinary(*op, std::move(left), ParseArithmetic(0), begin);
            continue;
        }
        const bool negated = tokens_.At(Keyword::Not);
        const Keyword keyword = tokens_.Peek(negated ? 1 : 0).keyword;
        if (keyword != Keyword::Like && keyword != Keyword::In && keyword != Keyword::Between &&
            (keyword != Keyword::Is || negated))
            return left;
        left = ParsePredicate(std::move(left), begin);
    }
}

ExpressionPtr ExpressionParser::ParsePredicate(ExpressionPtr value, std::uint32_t begin) {
    bool negated = tokens_.TakeIf(Keyword::Not);
    if (tokens_.TakeIf(Keyword::Like)) {
        ExpressionPtr like = MakeBinary(Operator::Like, std::move(value), ParseArithmetic(0), begin);
        return negated ? Make(Not{std::move(like)}, begin) : std::move(like);
    }
    if (tokens_.TakeIf(Keyword::In))
        return ParseInList(std::move(value), negated, begin);
    if (tokens_.TakeIf(Keyword::Between)) {
        ExpressionPtr low = ParseArithmetic(0);
        if (!tokens_.TakeIf(Keyword::And))
            tokens_.FailExpression(begin_, "Between operator without And");
        ExpressionPtr high = ParseArithmetic(0);
        return Make(Between{negated, std::move(value), std::move(low), std::move(high)}, begin);
    }
    tokens_.Take();  // is
    negated = tokens_.TakeIf(Keyword::Not);
    if (!tokens_.TakeIf(Keyword::Null))
        tokens_.FailExpression(begin_);
    return Make(IsNull{negated, std::move(value)}, begin);
}

ExpressionPtr ExpressionParser::ParseInList(ExpressionPtr value, bool negated, std::uint32_t begin) {
    if (!tokens_.TakeIf(Symbol::LeftParen))
        tokens_.FailExpression(begin_, "In operator without ()");
    if (tokens_.At(Keyword::Select))
        throw faults::NotSupported("a query inside an In list");
    InList node{negated, std::move(value), {}};
    do
        node.list.push_back(ParseArithmetic(0));
    while (tokens_.TakeIf(Symbol::Comma));
    CloseParenthesis();
    return Make(std::move(node), begin);
}

ExpressionPtr ExpressionParser::ParseArithmetic(std::size_t level) {
    if (level == kArithmeticLevels)
        return ParseSigned();
    const std::uint32_t begin = tokens_.Begin();
    ExpressionPtr left = ParseArithmetic(level + 1);
    while (const std::optional<Operator> op = ArithmeticOf(tokens_.Peek(), level)) {
        tokens_.Take();
        left = MakeBinary(*op, std::move(left), ParseArithmetic(level + 1), begin);
    }
    return left;
}

ExpressionPtr ExpressionParser::ParseSigned() {
    const std::uint32_t begin = tokens_.Begin();
    bool negative = false;
    while (tokens_.At(Symbol::Minus) || tokens_.At(Symbol::Plus))
        negative ^= tokens_.Take().symbol == Symbol::Minus;
    ExpressionPtr operand = ParsePrimary();
    return negative ? Make(Negate{std::move(operand)}, begin) : std::move(operand);
}

ExpressionPtr ExpressionParser::ParsePrimary() {
    switch (tokens_.Peek().kind) {
        case TokenKind::Number:
        case TokenKind::Text:
        case TokenKind::Date:
            return ParseLiteral();
        case TokenKind::Word:
        case TokenKind::Bracketed:
            return ParseNamed();
        default:
            break;
    }
    if (!tokens_.At(Symbol::LeftParen))
        tokens_.FailExpression(begin_);
    return ParseParenthesis();
}

ExpressionPtr ExpressionParser::ParseParenthesis() {
    tokens_.Take();
    if (tokens_.At(Keyword::Select))
        throw faults::NotSupported("a query inside an expression");
    if (++nesting_ > kMostParentheses)
        throw EngineError(engine_error::kTooComplex, "Query is too complex.");
    ExpressionPtr inner = ParseOr();
    --nesting_;
    CloseParenthesis();
    return inner;
}

ExpressionPtr ExpressionParser::ParseLiteral() {
    const Token token = tokens_.Take();
    if (token.slot >= 0)
        return Make(Slot{token.slot}, token.begin, tokens_.Literal(token).Type());
    Value value = LiteralValue(tokens_.TextOf(token), token.kind);
    const ValueType type = value.Type();
    return Make(Constant{std::move(value)}, token.begin, type);
}

ExpressionPtr ExpressionParser::ParseNamed() {
    const std::uint32_t begin = tokens_.Begin();
    switch (tokens_.Peek().keyword) {
        case Keyword::Null:
            tokens_.Take();
            return Make(Constant{}, begin);
        case Keyword::True:
        case Keyword::False: {
            const bool value = tokens_.Take().keyword == Keyword::True;
            return Make(Constant{value}, begin, ValueType::Boolean);
        }
        default:
            break;
    }
    if (!AtName(tokens_))
        tokens_.FailExpression(begin_);
    const bool bare = tokens_.Peek().kind == TokenKind::Word;
    std::string name = TakeName(tokens_);
    return bare && tokens_.At(Symbol::LeftParen) ? ParseCall(std::move(name), begin)
                                                 : ParseColumn(std::move(name), begin);
}

ExpressionPtr ExpressionParser::ParseColumn(std::string name, std::uint32_t begin) {
    ColumnName column;
    if (tokens_.At(Symbol::Point)) {
        tokens_.Take();
        if (!AtAnyName(tokens_))
            tokens_.FailExpression(begin_);
        column.qualifier = std::move(name);
        name = TakeName(tokens_);
    }
    column.name = std::move(name);
    return Make(std::move(column), begin);
}

ExpressionPtr ExpressionParser::ParseCall(std::string name, std::uint32_t begin) {
    if (const std::optional<AggregateKind> kind = AggregateOf(name))
        return ParseAggregate(*kind, begin);
    tokens_.Take();
    Call call{std::move(name), {}};
    if (!tokens_.At(Symbol::RightParen)) {
        do
            call.arguments.push_back(ParseOr());
        while (tokens_.TakeIf(Symbol::Comma));
    }
    CloseParenthesis();
    return Make(std::move(call), begin);
}

ExpressionPtr ExpressionParser::ParseAggregate(AggregateKind kind, std::uint32_t begin) {
    tokens_.Take();
    Aggregate aggregate{kind, nullptr};
    const bool star = kind == AggregateKind::Count && tokens_.TakeIf(Symbol::Star);
    if (!star)
        aggregate.argument = ParseOr();
    CloseParenthesis();
    return Make(std::move(aggregate), begin);
}

void ExpressionParser::CloseParenthesis() {
    if (tokens_.TakeIf(Symbol::RightParen))
        return;
    if (tokens_.AtEnd() || tokens_.At(Symbol::Semicolon))
        tokens_.FailExpression(begin_, "Missing ), ], or item");
    tokens_.FailExpression(begin_);
}

}  // namespace kv::dialect
