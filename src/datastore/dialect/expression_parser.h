#pragma once
#include "datastore/dialect/expression.h"
#include "datastore/dialect/token_stream.h"

namespace kv::dialect {

/// Reads expressions, loosest operator first: or, and, not, comparisons, &, + -, mod, \, * /, the sign.
class ExpressionParser {
  public:
    explicit ExpressionParser(TokenStream& tokens) : tokens_(tokens) {}

    /// One whole expression; what follows it must be the end of a clause or list. 3075 otherwise.
    ExpressionPtr Parse();

  private:
    ExpressionPtr ParseOr();
    ExpressionPtr ParseAnd();
    ExpressionPtr ParseNot();
    ExpressionPtr ParseComparison();
    ExpressionPtr ParsePredicate(ExpressionPtr value, std::uint32_t begin);
    ExpressionPtr ParseInList(ExpressionPtr value, bool negated, std::uint32_t begin);
    ExpressionPtr ParseArithmetic(std::size_t level);
    ExpressionPtr ParseSigned();
    ExpressionPtr ParsePrimary();
    ExpressionPtr ParseParenthesis();
    ExpressionPtr ParseLiteral();
    ExpressionPtr ParseNamed();
    ExpressionPtr ParseCall(std::string name, std::uint32_t begin);
    ExpressionPtr ParseAggregate(AggregateKind kind, std::uint32_t begin);
    ExpressionPtr ParseColumn(std::string name, std::uint32_t begin);

    template <typename Node>
    ExpressionPtr Make(Node node, std::uint32_t begin, ValueType type = ValueType::Null);
    ExpressionPtr MakeBinary(Operator op, ExpressionPtr left, ExpressionPtr right, std::uint32_t begin);
    void CloseParenthesis();
    bool AtEndOfExpression() const;

    TokenStream& tokens_;
    std::uint32_t begin_ = 0;
    int nesting_ = 0;
};

}  // namespace kv::dialect
