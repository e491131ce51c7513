// CREATE TABLE, CREATE INDEX and DROP TABLE.
#include <array>
#include <utility>

#include "base/numbers.h"
#include "base/text.h"
#include "datastore/convert.h"
#include "datastore/dialect/lexer.h"
#include "datastore/dialect/names.h"
#include "datastore/dialect/parser.h"
#include "datastore/engine_error.h"

namespace kv::dialect {
namespace {

constexpr int kFault = engine_error::kSyntaxInDefinition;
constexpr std::string_view kTableFault = "Syntax error in CREATE TABLE statement";
constexpr std::string_view kIndexFault = "Syntax error in CREATE INDEX statement";
constexpr std::string_view kDropFault = "Syntax error in DROP TABLE statement";

constexpr int kTextSize = 255;
constexpr std::string_view kPrimaryName = "PrimaryKey";

struct TypeName {
    std::string_view name;
    ColumnType type;
    bool counter = false;
};

constexpr std::array kTypes = {
    TypeName{"counter", ColumnType::Long, true}, TypeName{"long", ColumnType::Long},
    TypeName{"short", ColumnType::Short},        TypeName{"double", ColumnType::Double},
    TypeName{"currency", ColumnType::Currency},  TypeName{"datetime", ColumnType::DateTime},
    TypeName{"yesno", ColumnType::Boolean},      TypeName{"text", ColumnType::Text},
    TypeName{"memo", ColumnType::Memo},
};

class TableParser {
  public:
    explicit TableParser(TokenStream& tokens) : tokens_(tokens) {}

    CreateTable Parse() {
        table_.name = ParseName();
        Expect(Symbol::LeftParen);
        do {
            if (tokens_.At(Keyword::Constraint))
                ParseConstraint();
            else
                ParseColumn();
        } while (tokens_.TakeIf(Symbol::Comma));
        Expect(Symbol::RightParen);
        return {std::move(table_)};
    }

  private:
    [[noreturn]] void Fail() const { tokens_.Fail(kFault, kTableFault); }
    void Expect(Symbol symbol) { tokens_.Expect(symbol, kFault, kTableFault); }
    void Expect(Keyword keyword) { tokens_.Expect(keyword, kFault, kTableFault); }

    std::string ParseName() {
        if (!AtTarget(tokens_))
            Fail();
        return TakeTarget(tokens_);
    }

    void ParseColumn() {
        ColumnInfo column;
        column.name = ParseName();
        if (table_.Find(column.name))
            Fail();
        ParseType(column);
        while (ParseAttribute(column)) {
        }
        table_.columns.push_back(std::move(column));
    }

    void ParseType(ColumnInfo& column) {
        const std::string_view word = tokens_.TextOf(tokens_.Peek());
        for (const TypeName& entry : kTypes) {
            if (!EqualsNoCase(entry.name, word))
                continue;
            tokens_.Take();
            column.type = entry.type;
            column.counter = entry.counter;
            if (entry.counter && table_.Counter())
                Fail();
            if (entry.type == ColumnType::Text)
                column.size = ParseSize();
            if (entry.type == ColumnType::Boolean)
                column.defaultValue = false;
            return;
        }
        Fail();
    }

    int ParseSize() {
        if (!tokens_.TakeIf(Symbol::LeftParen))
            return kTextSize;
        const auto size = ParseInteger(tokens_.TextOf(tokens_.Peek()));
        if (!size || *size < 1 || *size > kTextSize)
            Fail();
        tokens_.Take();
        Expect(Symbol::RightParen);
        return static_cast<int>(*size);
    }

    bool ParseAttribute(ColumnInfo& column) {
        if (tokens_.TakeIf(Keyword::Not)) {
            Expect(Keyword::Null);
            column.required = true;
            return true;
        }
        if (tokens_.TakeIf(Keyword::Default)) {
            column.defaultValue = ConvertToColumn(ParseDefault(), column);
            return true;
        }
        if (tokens_.TakeIf(Keyword::Primary)) {
            Expect(Keyword::Key);
            AddIndex({std::string(kPrimaryName), {column.name}, true, true});
            column.required = true;
            return true;
        }
        return false;
    }

    Value ParseDefault() {
        const bool negative = tokens_.TakeIf(Symbol::Minus);
        const Token token = tokens_.Take();
        if (token.kind == TokenKind::Number) {
            Value number = LiteralValue(tokens_.TextOf(token), token.kind);
            return negative ? Value(-number.ToDouble()) : number;
        }
        if (negative)
            Fail();
        if (token.kind == TokenKind::Text || token.kind == TokenKind::Date)
            return LiteralValue(tokens_.TextOf(token), token.kind);
        if (token.keyword == Keyword::True || token.keyword == Keyword::False)
            return {token.keyword == Keyword::True};
        if (token.keyword != Keyword::Null)
            Fail();
        return {};
    }

    void ParseConstraint() {
        tokens_.Take();
        IndexInfo index;
        index.name = ParseName();
        index.unique = true;
        index.primary = tokens_.TakeIf(Keyword::Primary);
        if (index.primary)
            Expect(Keyword::Key);
        else
            Expect(Keyword::Unique);
        Expect(Symbol::LeftParen);
        do {
            index.columns.push_back(ParseName());
            const auto column = table_.Find(index.columns.back());
            if (!column)
                Fail();
            if (index.primary)
                table_.columns[*column].required = true;
        } while (tokens_.TakeIf(Symbol::Comma));
        Expect(Symbol::RightParen);
        AddIndex(std::move(index));
    }

    void AddIndex(IndexInfo index) {
        for (const IndexInfo& other : table_.indexes)
            if (other.primary && index.primary)
                Fail();
        table_.indexes.push_back(std::move(index));
    }

    TokenStream& tokens_;
    TableInfo table_;
};

CreateIndex ParseCreateIndex(TokenStream& tokens, bool unique) {
    const auto name = [&] {
        if (!AtTarget(tokens))
            tokens.Fail(kFault, kIndexFault);
        return TakeTarget(tokens);
    };
    CreateIndex create;
    create.index.unique = unique;
    create.index.name = name();
    tokens.Expect(Keyword::On, kFault, kIndexFault);
    create.table = name();
    tokens.Expect(Symbol::LeftParen, kFault, kIndexFault);
    do {
        create.index.columns.push_back(name());
        create.descending.push_back(tokens.TakeIf(Keyword::Desc));
        if (!create.descending.back())
            tokens.TakeIf(Keyword::Asc);
    } while (tokens.TakeIf(Symbol::Comma));
    tokens.Expect(Symbol::RightParen, kFault, kIndexFault);
    return create;
}

}  // namespace

Statement ParseCreate(TokenStream& tokens) {
    if (tokens.TakeIf(Keyword::Table))
        return TableParser(tokens).Parse();
    const bool unique = tokens.TakeIf(Keyword::Unique);
    tokens.Expect(Keyword::Index, kFault, unique ? kIndexFault : kTableFault);
    return ParseCreateIndex(tokens, unique);
}

DropTable ParseDrop(TokenStream& tokens) {
    tokens.Expect(Keyword::Table, kFault, kDropFault);
    if (!AtTarget(tokens))
        tokens.Fail(kFault, kDropFault);
    return {TakeTarget(tokens)};
}

}  // namespace kv::dialect
