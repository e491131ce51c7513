#include "datastore/dialect/functions.h"

#include "base/text.h"

namespace kv::dialect {
namespace {

constexpr Argument kAny = Argument::Any;
constexpr Argument kCondition = Argument::Condition;
constexpr Argument kText = Argument::Text;
constexpr Argument kNumber = Argument::Number;
constexpr Argument kDate = Argument::Date;

// cdate() is a conversion and nothing else, so the binder turns it into one; format() is split there by what
// it formats.
constexpr FunctionInfo kFunctions[] = {
    {"format", Function::FormatText, 2, 2, {kAny, kText}, Yields::Fixed, ValueType::Text},
    {"left", Function::Left, 2, 2, {kText, kNumber}, Yields::Fixed, ValueType::Text},
    {"right", Function::Right, 2, 2, {kText, kNumber}, Yields::Fixed, ValueType::Text},
    {"mid", Function::Mid, 2, 3, {kText, kNumber, kNumber}, Yields::Fixed, ValueType::Text},
    {"len", Function::Len, 1, 1, {kText}, Yields::Fixed, ValueType::Integer},
    {"trim", Function::Trim, 1, 1, {kText}, Yields::Fixed, ValueType::Text},
    {"ltrim", Function::LTrim, 1, 1, {kText}, Yields::Fixed, ValueType::Text},
    {"rtrim", Function::RTrim, 1, 1, {kText}, Yields::Fixed, ValueType::Text},
    {"ucase", Function::UCase, 1, 1, {kText}, Yields::Fixed, ValueType::Text},
    {"lcase", Function::LCase, 1, 1, {kText}, Yields::Fixed, ValueType::Text},
    {"iif", Function::Iif, 3, 3, {kCondition, kAny, kAny}, Yields::CommonOfLastTwo, ValueType::Null},
    {"isnull", Function::IsNull, 1, 1, {kAny}, Yields::Fixed, ValueType::Boolean},
    {"nz", Function::Nz, 1, 2, {kAny, kAny}, Yields::CommonOfAll, ValueType::Null},
    {"val", Function::Val, 1, 1, {kText}, Yields::Fixed, ValueType::Double},
    {"int", Function::Int, 1, 1, {kNumber}, Yields::WholeOrDouble, ValueType::Null},
    {"abs", Function::Abs, 1, 1, {kNumber}, Yields::AsFirst, ValueType::Null},
    {"year", Function::Year, 1, 1, {kDate}, Yields::Fixed, ValueType::Integer},
    {"month", Function::Month, 1, 1, {kDate}, Yields::Fixed, ValueType::Integer},
    {"day", Function::Day, 1, 1, {kDate}, Yields::Fixed, ValueType::Integer},
    {"weekday", Function::Weekday, 1, 1, {kDate}, Yields::Fixed, ValueType::Integer},
    {"date", Function::Today, 0, 0, {}, Yields::Fixed, ValueType::Date},
    {"now", Function::Now, 0, 0, {}, Yields::Fixed, ValueType::Date},
    {"cdate", Function::None, 1, 1, {kDate}, Yields::Fixed, ValueType::Date},
    {"dateserial", Function::DateSerial, 3, 3, {kNumber, kNumber, kNumber}, Yields::Fixed, ValueType::Date},
};

}  // namespace

const FunctionInfo* FindFunction(std::string_view name) {
    for (const FunctionInfo& info : kFunctions)
        if (EqualsNoCase(info.name, name))
            return &info;
    return nullptr;
}

}  // namespace kv::dialect
