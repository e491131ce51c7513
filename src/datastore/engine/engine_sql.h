#pragma once
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "datastore/catalogue.h"
#include "datastore/value.h"

namespace kv {

/// Where a placeholder of the engine's statement takes its value from.
struct Parameter {
    enum class From : std::uint8_t {
        Literal,  ///< the literal of that number in the dialect's text
        Given,    ///< the value of that number that the caller hands in: keys, counters, fields
        Today,
        Now,
    };
    From from = From::Literal;
    int number = 0;
    /// The column that the value is written to, whose type it takes; none for a value that is only compared.
    const ColumnInfo* column = nullptr;
    /// The form in which the engine wants a value that is only compared; Null for the value as it is.
    ValueType form = ValueType::Null;
};

/// A statement in the engine's own language, with its placeholders in order.
struct EngineSql {
    std::string text;
    std::vector<Parameter> parameters;
};

/// The values of a statement's placeholders. Throws EngineError where a literal does not fit its column.
std::vector<Value> ParameterValues(const EngineSql& sql, std::span<const Value> literals,
                                   std::span<const Value> given, const std::function<Date()>& clock);

}  // namespace kv
