#pragma once
#include "datastore/engine/generator.h"

namespace kv {

/// The embedded engine's spellings. Text columns bear the collation that compares without regard to case;
/// other text expressions get it here. Functions named kv_ are the connection's own (sqlite_functions).
class SqliteGenerator : public Generator {
  protected:
    std::string Placeholder(std::size_t place, ValueType type) const override;
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

/// A value as it stands in the engine's text.
std::string SqliteLiteral(const Value& value);

}  // namespace kv
