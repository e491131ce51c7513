// INSERT, UPDATE and DELETE.
#include "datastore/dialect/expression_parser.h"
#include "datastore/dialect/names.h"
#include "datastore/dialect/parser.h"
#include "datastore/engine_error.h"

namespace kv::dialect {
namespace {

constexpr std::string_view kInsertFault = "Syntax error in INSERT INTO statement";
constexpr std::string_view kUpdateFault = "Syntax error in UPDATE statement";
constexpr std::string_view kFromFault = "Syntax error in FROM clause";

Source ParseTarget(TokenStream& tokens, int number, std::string_view what) {
    if (!AtName(tokens))
        tokens.Fail(number, what);
    Source target;
    target.begin = tokens.Begin();
    target.table = TakeName(tokens);
    return target;
}

std::vector<Assignment> ParseColumnList(TokenStream& tokens) {
    std::vector<Assignment> columns;
    do {
        if (!AtTarget(tokens))
            tokens.Fail(engine_error::kSyntaxInInsert, kInsertFault);
        Assignment column;
        column.begin = tokens.Begin();
        column.name = TakeTarget(tokens);
        columns.push_back(std::move(column));
    } while (tokens.TakeIf(Symbol::Comma));
    tokens.Expect(Symbol::RightParen, engine_error::kSyntaxInInsert, kInsertFault);
    return columns;
}

Assignment ParseAssignment(TokenStream& tokens) {
    if (!AtTarget(tokens))
        tokens.Fail(engine_error::kSyntaxInUpdate, kUpdateFault);
    Assignment assignment;
    assignment.begin = tokens.Begin();
    assignment.name = TakeTarget(tokens);
    if (tokens.TakeIf(Symbol::Point)) {  // the table's name before the column
        if (!AtTarget(tokens))
            tokens.Fail(engine_error::kSyntaxInUpdate, kUpdateFault);
        assignment.name = TakeTarget(tokens);
    }
    tokens.Expect(Symbol::Equal, engine_error::kSyntaxInUpdate, kUpdateFault);
    assignment.value = ExpressionParser(tokens).Parse();
    return assignment;
}

}  // namespace

Insert ParseInsert(TokenStream& tokens) {
    tokens.Expect(Keyword::Into, engine_error::kSyntaxInInsert, kInsertFault);
    Insert insert;
    insert.target = ParseTarget(tokens, engine_error::kSyntaxInInsert, kInsertFault);
    insert.allColumns = !tokens.TakeIf(Symbol::LeftParen);
    if (!insert.allColumns)
        insert.assignments = ParseColumnList(tokens);
    if (tokens.TakeIf(Keyword::Select)) {
        insert.query = std::make_unique<Select>(ParseSelect(tokens));
        return insert;
    }
    tokens.Expect(Keyword::Values, engine_error::kSyntaxInInsert, kInsertFault);
    tokens.Expect(Symbol::LeftParen, engine_error::kSyntaxInInsert, kInsertFault);
    do
        insert.values.push_back(ExpressionParser(tokens).Parse());
    while (tokens.TakeIf(Symbol::Comma));
    tokens.Expect(Symbol::RightParen, engine_error::kSyntaxInInsert, kInsertFault);
    return insert;
}

Update ParseUpdate(TokenStream& tokens) {
    Update update;
    update.target = ParseTarget(tokens, engine_error::kSyntaxInUpdate, kUpdateFault);
    tokens.Expect(Keyword::Set, engine_error::kSyntaxInUpdate, kUpdateFault);
    do
        update.assignments.push_back(ParseAssignment(tokens));
    while (tokens.TakeIf(Symbol::Comma));
    update.where = ParseWhere(tokens);
    return update;
}

Delete ParseDelete(TokenStream& tokens) {
    if (!tokens.TakeIf(Symbol::Star) && tokens.At(Symbol::Point, 1) && tokens.At(Symbol::Star, 2)) {
        tokens.Take();
        tokens.Take();
        tokens.Take();
    }
    tokens.Expect(Keyword::From, engine_error::kSyntaxInFrom, kFromFault);
    Delete statement;
    statement.target = ParseTarget(tokens, engine_error::kSyntaxInFrom, kFromFault);
    statement.where = ParseWhere(tokens);
    return statement;
}

}  // namespace kv::dialect
