#include "datastore/engine/compiled_select.h"

#include <algorithm>
#include <numeric>

#include "datastore/dialect/binder.h"
#include "datastore/dialect/parser.h"
#include "datastore/engine/connection.h"

namespace kv {
namespace {

constexpr std::size_t kCriteriaKept = 64;

void ShiftSlots(dialect::Expression& expression, int by) {
    if (auto* slot = std::get_if<dialect::Slot>(&expression.node))
        slot->number += by;
    dialect::ForEachChild(expression, [by](dialect::ExpressionPtr& child) { ShiftSlots(*child, by); });
}

std::vector<const TableInfo*> TablesOf(const dialect::Select& select) {
    std::vector<const TableInfo*> tables;
    for (const dialect::Source& source : select.sources)
        tables.push_back(source.info);
    return tables;
}

}  // namespace

// -------------------------------------------------------------------------------------------------- fields
// to fetch

FieldSubset::FieldSubset(std::vector<int> fields, const dialect::Select& query, const Generator& generator)
    : fields_(std::move(fields)), cells_(query.columns.size(), -1), query_(query), generator_(generator) {
    for (std::size_t cell = 0; cell < fields_.size(); ++cell) {
        const auto field = static_cast<std::size_t>(fields_[cell]);
        cells_[field] = static_cast<int>(cell);
        const dialect::OutputColumn& column = query_.columns[field];
        if (query_.Keyed() && query_.sources.size() == 1 && column.column >= 0 &&
            query_.sources[0].info->columns[static_cast<std::size_t>(column.column)].counter)
            keyCell_ = cell;
    }
}

const EngineSql& FieldSubset::Sql(Form form) const {
    std::optional<EngineSql>& sql = sql_[static_cast<std::size_t>(form)];
    if (sql)
        return *sql;
    SelectForm shape;
    shape.keys = query_.Keyed() && !(keyCell_ && (form == Form::OfQuery || form == Form::NextRows));
    shape.fields = fields_;
    switch (form) {
        case Form::OfQuery:
            break;
        case Form::ByKey:
            shape.rows = SelectForm::Rows::ByKey;
            break;
        case Form::KeyRange:
            shape.rows = SelectForm::Rows::KeyRange;
            break;
        case Form::NextRows:
            shape.rows = SelectForm::Rows::NextRows;
            break;
    }
    sql = generator_.Select(query_, shape);
    return *sql;
}

// ------------------------------------------------------------------------------------------------------ the
// query

CompiledSelect::CompiledSelect(std::shared_ptr<const Catalogue> catalogue, dialect::Select select,
                               Connection& connection)
    : catalogue_(std::move(catalogue)),
      select_(std::move(select)),
      generator_(connection.Sql()),
      watch_(connection.Watch(TablesOf(select_))),
      criteria_(kCriteriaKept),
      used_(select_.columns.size(), 0) {
    for (const dialect::OutputColumn& column : select_.columns) {
        FieldInfo field{column.name, column.type, column.size, false};
        field.updatable = Target() && TargetColumn(fields_.size()) >= 0 &&
                          !Target()->columns[static_cast<std::size_t>(TargetColumn(fields_.size()))].counter;
        fields_.push_back(std::move(field));
        names_.Add(column.name);
    }
    std::vector<int> all(fields_.size());
    std::iota(all.begin(), all.end(), 0);
    all_ = std::make_shared<const FieldSubset>(std::move(all), select_, generator_);
}

std::shared_ptr<const FieldSubset> CompiledSelect::UsedFields() const {
    if (!std::exchange(openedBefore_, true) || !Keyed())
        return all_;
    if (subset_ && used_ == subsetFor_)
        return subset_;
    subsetFor_ = used_;
    std::vector<int> fields;
    for (std::size_t field = 0; field < used_.size(); ++field)
        if (used_[field] != 0)
            fields.push_back(static_cast<int>(field));
    subset_ = 2 * fields.size() > used_.size()
                  ? all_
                  : std::make_shared<const FieldSubset>(std::move(fields), select_, generator_);
    return subset_;
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
    SelectForm shape;
    switch (form) {
        case Form::Count:
            return generator_.CountRows(select_);
        case Form::LastKey:
            return generator_.LastKey(select_);
        case Form::FirstField:
            shape.fields = {0};
            shape.limit = 1;
            break;
        case Form::RestKeys:
            shape.keys = true;
            shape.rows = SelectForm::Rows::KeyRange;
            break;
    }
    return generator_.Select(select_, shape);
}

// -------------------------------------------------------------------------------------------------------
// criteria

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

}  // namespace kv
