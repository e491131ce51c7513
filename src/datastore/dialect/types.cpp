#include "datastore/dialect/types.h"

#include "datastore/faults.h"

namespace kv::dialect {

bool IsNumeric(ValueType type) {
    return type != ValueType::Null && type != ValueType::Text;
}

bool GoTogether(ValueType a, ValueType b) {
    return a == ValueType::Null || b == ValueType::Null || IsNumeric(a) == IsNumeric(b);
}

ValueType CommonType(ValueType a, ValueType b) {
    if (a == b || b == ValueType::Null)
        return a;
    if (a == ValueType::Null)
        return b;
    for (const ValueType wider : {ValueType::Text, ValueType::Date, ValueType::Double, ValueType::Currency})
        if (a == wider || b == wider)
            return wider;
    return ValueType::Integer;
}

ValueType ArithmeticType(Operator op, ValueType left, ValueType right) {
    if (!GoTogether(left, right))
        throw faults::TypeMismatch();
    const bool text = left == ValueType::Text || right == ValueType::Text;
    if (text && op == Operator::Add)
        return ValueType::Text;
    if (text)
        throw faults::TypeMismatch();
    switch (op) {
        case Operator::Divide:
            return ValueType::Double;
        case Operator::IntegerDivide:
        case Operator::Modulo:
            return ValueType::Integer;
        case Operator::Subtract:
            if (left == ValueType::Date && right == ValueType::Date)
                return ValueType::Double;
            break;
        case Operator::Multiply:
            if (left == ValueType::Date || right == ValueType::Date)
                return ValueType::Double;
            break;
        default:
            break;
    }
    const ValueType common = CommonType(left, right);
    return common == ValueType::Boolean ? ValueType::Integer : common;
}

ColumnType ColumnTypeOf(ValueType type) {
    switch (type) {
        case ValueType::Boolean:
            return ColumnType::Boolean;
        case ValueType::Integer:
            return ColumnType::Long;
        case ValueType::Double:
            return ColumnType::Double;
        case ValueType::Currency:
            return ColumnType::Currency;
        case ValueType::Date:
            return ColumnType::DateTime;
        default:
            return ColumnType::Text;
    }
}

}  // namespace kv::dialect
