#include "datastore/engine/compiler.h"

#include "base/text.h"
#include "datastore/dialect/binder.h"
#include "datastore/dialect/lexer.h"
#include "datastore/dialect/parser.h"
#include "datastore/engine/connection.h"
#include "datastore/faults.h"

namespace kv {
namespace {

using dialect::Keyword;

/// Shapes as long as these are lists that hardly come twice.
constexpr std::size_t kLongestKept = 16384;

bool NamesSomethingUnknown(const EngineError& error) {
    return error.Number() == engine_error::kTableNotFound ||
           error.Number() == engine_error::kTooFewParameters ||
           error.Number() == engine_error::kUnknownInsertField;
}

/// True for a statement, false for what can only be a table's name.
bool IsStatement(const dialect::Lexed& lexed) {
    if (lexed.tokens.size() < 3 && lexed.sound)  // one word and the end
        return false;
    switch (lexed.tokens.front().keyword) {
        case Keyword::Select:
        case Keyword::Insert:
        case Keyword::Update:
        case Keyword::Delete:
        case Keyword::Create:
        case Keyword::Drop:
            return true;
        default:
            return false;
    }
}

std::string_view TableName(std::string_view text) {
    text = TrimView(text);
    if (text.size() > 2 && text.front() == '[' && text.back() == ']')
        text = text.substr(1, text.size() - 2);
    return text;
}

}  // namespace

// ------------------------------------------------------------------------------------------------------------
// Compiler

const Compiler::Cached* Compiler::Find(const dialect::Lexed& lexed) {
    const Entry* entry = lexed.sound ? cache_.Find(lexed.shape) : nullptr;
    return entry && entry->catalogue == connection_.Tables() ? &entry->compiled : nullptr;
}

const Compiler::Cached& Compiler::Keep(const dialect::Lexed& lexed, Cached compiled) {
    cache_.Put(lexed.shape, {connection_.Tables(), std::move(compiled)});
    return cache_.Find(lexed.shape)->compiled;
}

dialect::Statement Compiler::ParseAndBind(const dialect::Lexed& lexed) {
    dialect::Statement statement = dialect::ParseStatement(lexed);
    try {
        dialect::Bind(statement, *connection_.Tables());
        return statement;
    } catch (const EngineError& error) {
        if (!NamesSomethingUnknown(error) || !connection_.RefreshTables())
            throw;
    }
    // Another program has changed the tables since they were read.
    statement = dialect::ParseStatement(lexed);
    dialect::Bind(statement, *connection_.Tables());
    return statement;
}

Ready<CompiledSelect> Compiler::CompileSelect(std::string_view sqlOrTable) {
    dialect::Lexed lexed = dialect::Lex(sqlOrTable);
    if (!IsStatement(lexed)) {
        const std::string name(TableName(sqlOrTable));
        if (!connection_.Tables()->Find(name) &&
            !(connection_.RefreshTables() && connection_.Tables()->Find(name)))
            throw faults::TableNotFound(name);
        return CompileSelect("select * from [" + name + "]");
    }
    std::shared_ptr<const CompiledSelect> select;
    if (const Cached* found = Find(lexed)) {
        if (const auto* cached = std::get_if<std::shared_ptr<const CompiledSelect>>(found))
            select = *cached;
    }
    if (!select) {
        dialect::Statement statement = ParseAndBind(lexed);
        auto* tree = std::get_if<dialect::Select>(&statement);
        if (!tree)
            throw EngineError(engine_error::kInvalidOperation,
                              "Invalid operation: the statement has no rows to open.");
        select = std::make_shared<const CompiledSelect>(connection_.Tables(), std::move(*tree), connection_);
        if (lexed.shape.size() <= kLongestKept)
            Keep(lexed, select);
    }
    return {std::move(select), std::move(lexed.literals)};
}

Compiler::Action Compiler::CompileAction(std::string_view sql) {
    dialect::Lexed lexed = dialect::Lex(sql);
    std::shared_ptr<const CompiledChange> change;
    if (const Cached* found = Find(lexed)) {
        if (const auto* cached = std::get_if<std::shared_ptr<const CompiledChange>>(found))
            change = *cached;
    }
    if (!change) {
        dialect::Statement statement = ParseAndBind(lexed);
        if (auto* create = std::get_if<dialect::CreateTable>(&statement))
            return std::move(*create);
        if (auto* index = std::get_if<dialect::CreateIndex>(&statement))
            return std::move(*index);
        if (auto* drop = std::get_if<dialect::DropTable>(&statement))
            return std::move(*drop);
        if (std::holds_alternative<dialect::Select>(statement))
            throw EngineError(engine_error::kSelectIsNoAction, "Cannot execute a select query.");
        change = MakeChange(statement);
        if (lexed.shape.size() <= kLongestKept)
            Keep(lexed, change);
    }
    return Ready<CompiledChange>{std::move(change), std::move(lexed.literals)};
}

std::shared_ptr<const CompiledChange> Compiler::MakeChange(const dialect::Statement& statement) const {
    auto change = std::make_shared<CompiledChange>();
    change->catalogue = connection_.Tables();
    const Generator& generator = connection_.Sql();
    if (const auto* update = std::get_if<dialect::Update>(&statement)) {
        change->table = update->target.info;
        change->sql = generator.Update(*update);
    } else if (const auto* deletion = std::get_if<dialect::Delete>(&statement)) {
        change->table = deletion->target.info;
        change->sql = generator.Delete(*deletion);
    } else {
        const auto& insert = std::get<dialect::Insert>(statement);
        change->table = insert.target.info;
        const auto counter = change->table->Counter();
        for (const dialect::Assignment& assignment : insert.assignments)
            change->givesCounter |= counter && static_cast<std::size_t>(assignment.column) == *counter;
        change->takesCounter = counter && !change->givesCounter && !generator.FillsCounters();
        change->sql =
            generator.Insert(insert, change->takesCounter ? &change->table->columns[*counter] : nullptr);
        if (change->takesCounter && insert.query)
            change->count = generator.CountRows(*insert.query);
    }
    return change;
}

}  // namespace kv
