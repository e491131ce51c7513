#pragma once
#include <array>
#include <string_view>

#include "datastore/dialect/expression.h"

namespace kv::dialect {

/// What a function wants in one place.
enum class Argument : std::uint8_t { Any, Condition, Text, Number, Date };

/// What a function yields where its name alone does not say.
enum class Yields : std::uint8_t { Fixed, AsFirst, WholeOrDouble, CommonOfAll, CommonOfLastTwo };

struct FunctionInfo {
    std::string_view name;
    Function function = Function::None;
    std::size_t fewest = 0;
    std::size_t most = 0;
    std::array<Argument, 3> arguments{};
    Yields yields = Yields::Fixed;
    ValueType type = ValueType::Text;
};

/// The function of that name without regard to case, or null.
const FunctionInfo* FindFunction(std::string_view name);

}  // namespace kv::dialect
