#pragma once
#include "datastore/engine/generator.h"

namespace kv::postgres {

/// The server's spellings. Names are lower case, so that other programs reach the tables without quotes; text
/// columns bear the collation kv.ci, which compares without regard to case. Functions of the schema kv are
/// the program's own (data/server/functions.sql).
class PgGenerator : public Generator {
  public:
    std::string Name(std::string_view name) const override;
    bool FillsCounters() const override { return true; }
    /// Takes rows of the keys given, as an array, until the transaction's end, in the order in which every
    /// seat takes them; the keys of those that are there.
    std::string LockRows(const TableInfo& table) const;

  protected:
    std::string NextCounter(const TableInfo& table, const ColumnInfo& column) const override;
    std::string Placeholder(std::size_t place, ValueType type) const override;
    bool SeparatesTypes() const override { return true; }
    std::string ColumnNumber(const std::string& column, ColumnType type) const override;
    std::string Moment(const std::string& number) const override;
    std::string ColumnConstant(const Value& value) const override;
    std::string Ordered(const std::string& value, bool descending) const override;
    std::string ReturningKey(const TableInfo& table) const override;
    std::string Divided(const std::string& a, const std::string& b) const override;

    std::string FunctionCall(dialect::Function function,
                             const std::vector<std::string>& arguments) const override;
    std::string CaseBlind(const std::string& text, bool ofColumns) const override;
    std::string Like(const std::string& value, const std::string& pattern) const override;
    std::string Converted(const std::string& value, ValueType from, ValueType to) const override;
    std::string FittedTo(const std::string& value, ColumnType to, int size) const override;
    std::string IntegerDivided(const std::string& a, const std::string& b) const override;
    std::string Remainder(const std::string& a, const std::string& b) const override;
    std::string ConditionAsNumber(const std::string& condition) const override;
    std::string ConstantText(const Value& value) const override;
};

/// A text as it stands in the engine's statements.
std::string Quoted(std::string_view text);
/// A value as it stands in the engine's statements, in its column's own type.
std::string Literal(const Value& value);

}  // namespace kv::postgres
