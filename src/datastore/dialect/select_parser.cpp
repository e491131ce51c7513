#include "base/numbers.h"
#include "datastore/dialect/expression_parser.h"
#include "datastore/dialect/names.h"
#include "datastore/dialect/parser.h"
#include "datastore/engine_error.h"
#include "datastore/faults.h"

namespace kv::dialect {
namespace {

constexpr std::string_view kFromFault = "Syntax error in FROM clause";
constexpr std::string_view kSelectFault =
    "The SELECT statement includes a word that is misspelled or missing, or the punctuation is incorrect";

/// A word behind a table that is no second name for it.
bool ClosesSource(const TokenStream& tokens) {
    switch (tokens.Peek().keyword) {
        case Keyword::Cross:
        case Keyword::Full:
        case Keyword::Left:
        case Keyword::Right:
            return true;
        default:
            return !AtName(tokens);
    }
}

class SelectParser {
  public:
    explicit SelectParser(TokenStream& tokens) : tokens_(tokens) {}

    Select Parse() {
        ParseQuantity();
        do
            ParseItem();
        while (tokens_.TakeIf(Symbol::Comma));
        if (tokens_.TakeIf(Keyword::From))
            select_.from = ParseFrom();
        select_.where = ParseWhere(tokens_);
        if (tokens_.TakeClause(Keyword::Group))
            ParseGroupBy();
        if (tokens_.TakeIf(Keyword::Having))
            select_.having = ExpressionParser(tokens_).Parse();
        if (tokens_.TakeClause(Keyword::Order))
            ParseOrderBy();
        return std::move(select_);
    }

  private:
    void ParseQuantity() {
        if (tokens_.At(Keyword::Distinct) && !tokens_.At(Symbol::Comma, 1)) {
            tokens_.Take();
            select_.distinct = true;
        }
        if (tokens_.At(Keyword::Top) && tokens_.Peek(1).kind == TokenKind::Number) {
            tokens_.Take();
            const auto count = ParseInteger(tokens_.TextOf(tokens_.Take()));
            if (!count)
                tokens_.Fail(engine_error::kSyntaxInSelect, kSelectFault);
            select_.top = static_cast<long>(*count);
        }
    }

    void ParseItem() {
        SelectItem item;
        item.begin = tokens_.Begin();
        if (tokens_.TakeIf(Symbol::Star)) {
            select_.items.push_back(std::move(item));
            return;
        }
        if (AtAnyName(tokens_) && tokens_.At(Symbol::Point, 1) && tokens_.At(Symbol::Star, 2)) {
            item.starOf = TakeName(tokens_);
            tokens_.Take();
            tokens_.Take();
            select_.items.push_back(std::move(item));
            return;
        }
        if (tokens_.AtEnd() || tokens_.At(Keyword::From) || tokens_.At(Symbol::Comma))
            tokens_.Fail(engine_error::kSyntaxInSelect, kSelectFault);
        item.expression = ExpressionParser(tokens_).Parse();
        if (tokens_.TakeIf(Keyword::As)) {
            if (!AtAnyName(tokens_))
                tokens_.Fail(engine_error::kSyntaxInSelect, kSelectFault);
            item.alias = TakeName(tokens_);
        }
        select_.items.push_back(std::move(item));
    }

    std::unique_ptr<JoinTree> ParseFrom() {
        auto tree = ParseJoins();
        while (tokens_.TakeIf(Symbol::Comma))
            tree = Joined(JoinKind::Cross, std::move(tree), ParseJoins(), nullptr);
        return tree;
    }

    std::unique_ptr<JoinTree> ParseJoins() {
        auto tree = ParseSource();
        while (const std::optional<JoinKind> kind = TakeJoin()) {
            auto right = ParseSource();
            tokens_.Expect(Keyword::On, engine_error::kSyntaxInFrom, kFromFault);
            tree = Joined(*kind, std::move(tree), std::move(right), ExpressionParser(tokens_).Parse());
        }
        return tree;
    }

    std::optional<JoinKind> TakeJoin() {
        if (tokens_.At(Keyword::Right) || tokens_.At(Keyword::Full) || tokens_.At(Keyword::Cross))
            throw faults::NotSupported("a join other than INNER JOIN and LEFT JOIN");
        const bool inner = tokens_.TakeIf(Keyword::Inner);
        const bool left = !inner && tokens_.TakeIf(Keyword::Left);
        if (left)
            tokens_.TakeIf(Keyword::Outer);
        if (!inner && !left && !tokens_.At(Keyword::Join))
            return std::nullopt;
        tokens_.Expect(Keyword::Join, engine_error::kSyntaxInFrom, kFromFault);
        return left ? JoinKind::Left : JoinKind::Inner;
    }

    std::unique_ptr<JoinTree> ParseSource() {
        if (tokens_.TakeIf(Symbol::LeftParen)) {
            auto tree = ParseJoins();
            tokens_.Expect(Symbol::RightParen, engine_error::kSyntaxInFrom, kFromFault);
            return tree;
        }
        if (!AtName(tokens_))
            tokens_.Fail(engine_error::kSyntaxInFrom, kFromFault);
        Source source;
        source.begin = tokens_.Begin();
        source.table = TakeName(tokens_);
        const bool named = tokens_.TakeIf(Keyword::As);
        if (named && !AtAnyName(tokens_))
            tokens_.Fail(engine_error::kSyntaxInFrom, kFromFault);
        if (named || !ClosesSource(tokens_))
            source.alias = TakeName(tokens_);
        auto leaf = std::make_unique<JoinTree>();
        leaf->source = static_cast<int>(select_.sources.size());
        select_.sources.push_back(std::move(source));
        return leaf;
    }

    static std::unique_ptr<JoinTree> Joined(JoinKind kind, std::unique_ptr<JoinTree> left,
                                            std::unique_ptr<JoinTree> right, ExpressionPtr on) {
        auto tree = std::make_unique<JoinTree>();
        tree->kind = kind;
        tree->left = std::move(left);
        tree->right = std::move(right);
        tree->on = std::move(on);
        return tree;
    }

    void ParseGroupBy() {
        do
            select_.groupBy.push_back(ExpressionParser(tokens_).Parse());
        while (tokens_.TakeIf(Symbol::Comma));
    }

    void ParseOrderBy() {
        do {
            if (tokens_.AtEnd() || tokens_.At(Symbol::Comma))
                tokens_.Fail(engine_error::kSyntaxInOrderBy, "Syntax error in ORDER BY clause");
            OrderItem item;
            item.expression = ExpressionParser(tokens_).Parse();
            item.descending = tokens_.TakeIf(Keyword::Desc);
            if (!item.descending)
                tokens_.TakeIf(Keyword::Asc);
            select_.orderBy.push_back(std::move(item));
        } while (tokens_.TakeIf(Symbol::Comma));
    }

    TokenStream& tokens_;
    Select select_;
};

}  // namespace

Select ParseSelect(TokenStream& tokens) {
    return SelectParser(tokens).Parse();
}

}  // namespace kv::dialect
