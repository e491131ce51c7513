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
using dialect::TokenKind;

/// Shapes as long as these are lists that hardly come twice.
constexpr std::size_t kLongestKept = 16384;
constexpr std::size_t kCriteriaKept = 64;

void ShiftSlots(dialect::Expression& expression, int by) {
    if (auto* slot = std::get_if<dialect::Slot>(&expression.node))
        slot->number += by;
    dialect::ForEachChild(expression, [by](dialect::ExpressionPtr& child) { ShiftSlots(*child, by); });
}

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

// ------------------------------------------------------------------------------------------------------
// CompiledSelect

CompiledSelect::CompiledSelect(std::shared_ptr<const Catalogue> catalogue, dialect::Select select,
                               const Generator& generator)
    : catalogue_(std::move(catalogue)),
      select_(std::move(select)),
      generator_(generator),
      criteria_(kCriteriaKept) {
    for (const dialect::OutputColumn& column : select_.columns) {
        FieldInfo field{column.name, column.type, column.size, false};
        field.updatable = Target() && TargetColumn(fields_.size()) >= 0 &&
                          !Target()->columns[static_cast<std::size_t>(TargetColumn(fields_.size()))].counter;
        fields_.push_back(std::move(field));
        types_.push_back(column.type);
        names_.Add(column.name);
    }
}

const TableInfo* CompiledSelect::Target() const {
    return KeyCount() == 1 ? select_.sources.front().info : nullptr;
}

int CompiledSelect::TargetColumn(std::size_t field) const {
    return select_.columns[field].column;
}

const EngineSql& CompiledSelect::Sql(Form form) const {
    std::optional<EngineSql>& sql = sql_[static_cast<std::size_t>(form)];
    if (!sql)
        sql = Generate(form);
    return *sql;
}

EngineSql CompiledSelect::Generate(Form form) const {
    if (form == Form::Count)
        return generator_.CountRows(select_);
    if (form == Form::LastKey)
        return generator_.LastKey(select_);
    SelectForm shape;
    shape.keys = Keyed() && form != Form::Fields && form != Form::FirstField;
    shape.fields = form != Form::RestKeys;
    switch (form) {
        case Form::FirstField:
            shape.limit = 1;
            break;
        case Form::ByKey:
            shape.rows = SelectForm::Rows::ByKey;
            break;
        case Form::KeyRange:
        case Form::RestKeys:
            shape.rows = SelectForm::Rows::KeyRange;
            break;
        case Form::NextRows:
            shape.rows = SelectForm::Rows::NextRows;
            break;
        default:
            break;
    }
    return generator_.Select(select_, shape);
}

const EngineSql& CompiledCriteria::Sql(const Scope& scope) const {
    const auto [place, added] = sql_.try_emplace(scope);
    if (added) {
        SelectForm form;
        form.keys = true;
        form.criteria = condition_.get();
        form.anyRow = scope.anyRow;
        form.behindKey = scope.behindKey;
        form.amongKeys = scope.amongKeys;
        place->second = generator_.Select(query_, form);
    }
    return place->second;
}

const CompiledCriteria& CompiledSelect::Criteria(const dialect::Lexed& lexed,
                                                 std::size_t queryLiterals) const {
    if (const auto* found = criteria_.Find(lexed.shape); found && lexed.sound)
        return **found;
    dialect::ExpressionPtr condition = dialect::ParseCriteria(lexed);
    ShiftSlots(*condition, static_cast<int>(queryLiterals));
    dialect::BindCriteria(condition, select_);
    criteria_.Put(lexed.shape, std::make_unique<CompiledCriteria>(std::move(condition), select_, generator_));
    return **criteria_.Find(lexed.shape);
}

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
        select =
            std::make_shared<const CompiledSelect>(connection_.Tables(), std::move(*tree), connection_.Sql());
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
        change->takesCounter = counter && !change->givesCounter;
        change->sql =
            generator.Insert(insert, change->takesCounter ? &change->table->columns[*counter] : nullptr);
        if (change->takesCounter && insert.query)
            change->count = generator.CountRows(*insert.query);
    }
    return change;
}

}  // namespace kv
