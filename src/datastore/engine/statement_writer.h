#pragma once
#include <initializer_list>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "datastore/engine/generator.h"

namespace kv {

/// Writes one statement and notes its parameters.
class Generator::Writer {
  public:
    /// With sources every column is written behind its source's name; without, it is a column of the one
    /// table.
    Writer(const Generator& engine, const std::vector<dialect::Source>* sources, const TableInfo* table)
        : engine_(engine), sources_(sources), table_(table) {}

    std::string Condition(const dialect::Expression& expression);
    /// A value to calculate with.
    std::string Number(const dialect::Expression& expression);
    /// A value as it stands in its column: to show, to count, to test for Null.
    std::string Plain(const dialect::Expression& expression);
    /// A value that is grouped or ordered by.
    std::string Compared(const dialect::Expression& expression);
    /// A value on its way into a column: a literal takes the column's type.
    std::string Written(const dialect::Expression& expression, const ColumnInfo& column);
    std::string Add(Parameter parameter, ValueType type) {
        if (engine_.SeparatesTypes())
            parameter.form = type;
        parameters.push_back(parameter);
        return engine_.Placeholder(parameters.size(), type);
    }
    std::string Given(int number) { return Add({Parameter::From::Given, number}, ValueType::Integer); }
    std::string Key(std::size_t source) const {
        return fmt::format("s{}.{}", source, engine_.Name(KeyColumnOf(*(*sources_)[source].info)));
    }
    std::string Joins(const dialect::JoinTree& tree);
    std::string Named(std::size_t source) const {
        return fmt::format("{} AS s{}", engine_.Name((*sources_)[source].info->name), source);
    }

    std::vector<Parameter> parameters;

  private:
    struct ConditionWriter;
    struct ValueWriter;

    const ColumnInfo& InfoOf(const dialect::ColumnName& name) const;
    std::string Column(const dialect::ColumnName& name) const;
    bool IsDateColumn(const dialect::Expression& expression) const;
    /// Whether operands are compared as dates of the engine's own.
    bool AsMoments(std::initializer_list<const dialect::Expression*> operands) const;
    std::string Operand(const dialect::Expression& expression, bool moments);
    std::string MomentOf(const dialect::Expression& expression);
    std::string LeftOperand(const dialect::Expression& expression, bool moments);
    static bool HoldsTextColumn(const dialect::Expression& expression);
    /// The form in which a value is calculated with: a date is a number.
    ValueType NumberForm(ValueType type) const {
        return engine_.SeparatesTypes() && type == ValueType::Date ? ValueType::Double : type;
    }
    std::string Binary(const dialect::Binary& node);
    /// A left side of the same kind needs no parentheses, so that long chains do not nest.
    std::string Chained(const dialect::Expression& left, std::initializer_list<dialect::Operator> kind,
                        bool condition);
    std::string List(const std::vector<dialect::ExpressionPtr>& list, bool moments);

    const Generator& engine_;
    const std::vector<dialect::Source>* sources_;
    const TableInfo* table_;
};

}  // namespace kv
