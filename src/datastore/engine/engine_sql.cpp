#include "datastore/engine/engine_sql.h"

#include "datastore/convert.h"

namespace kv {

namespace {

Value InForm(Value value, ValueType form) {
    return form == ValueType::Null ? value : ConvertTo(value, form);
}

}  // namespace

std::vector<Value> ParameterValues(const EngineSql& sql, std::span<const Value> literals,
                                   std::span<const Value> given, const std::function<Date()>& clock) {
    std::vector<Value> values;
    values.reserve(sql.parameters.size());
    for (const Parameter& parameter : sql.parameters) {
        const auto number = static_cast<std::size_t>(parameter.number);
        switch (parameter.from) {
            case Parameter::From::Literal:
                values.push_back(parameter.column ? ConvertToColumn(literals[number], *parameter.column)
                                                  : InForm(literals[number], parameter.form));
                break;
            case Parameter::From::Given:
                values.push_back(given[number]);
                break;
            case Parameter::From::Today:
                values.push_back(InForm(clock().DayOnly(), parameter.form));
                break;
            case Parameter::From::Now:
                values.push_back(InForm(clock(), parameter.form));
                break;
        }
    }
    return values;
}

}  // namespace kv
