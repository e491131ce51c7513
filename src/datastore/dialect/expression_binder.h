#pragma once
#include <set>
#include <string>
#include <vector>

#include "datastore/dialect/functions.h"
#include "datastore/dialect/statement.h"

namespace kv::dialect {

/// Binds the expressions of one statement. Unknown names are gathered, since the engine counts them as
/// parameters that nobody gave; CheckNames throws once all have been seen.
class ExpressionBinder {
  public:
    explicit ExpressionBinder(const std::vector<Source>& sources) : sources_(sources) {}

    /// How names are looked up: in the tables alone; there, then among the result's columns; or the result's
    /// first.
    enum class Names { OfTables, TablesThenResult, ResultThenTables };
    void UseResult(const Select& query, Names names) {
        result_ = &query;
        names_ = names;
    }
    void AllowAggregates(bool allowed) { aggregatesAllowed_ = allowed; }

    void Bind(ExpressionPtr& expression);
    /// A condition: anything but a text.
    void BindCondition(ExpressionPtr& condition);
    /// Puts a text conversion around an expression of another type.
    static void MakeText(ExpressionPtr& expression);
    static void MakeType(ExpressionPtr& expression, ValueType type);

    bool SawAggregate() const { return sawAggregate_; }
    /// 3061 when a name was unknown.
    void CheckNames() const;
    void NoteUnknown(const std::string& name);

  private:
    void BindColumn(ExpressionPtr& expression);
    bool FindInTables(ColumnName& name) const;
    bool FindInResult(ExpressionPtr& expression) const;
    ValueType BindBinary(Binary& node);
    ValueType BindComparison(Operator op, ExpressionPtr& left, ExpressionPtr& right);
    void BindCall(ExpressionPtr& expression);
    ValueType CallType(const FunctionInfo& info, Call& call) const;
    static void FitArgument(ExpressionPtr& argument, Argument wanted);
    ValueType BindAggregate(Aggregate& node);

    const std::vector<Source>& sources_;
    const Select* result_ = nullptr;
    Names names_ = Names::OfTables;
    bool aggregatesAllowed_ = false;
    bool sawAggregate_ = false;
    std::set<std::string> unknown_;
};

}  // namespace kv::dialect
