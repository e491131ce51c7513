#pragma once
#include "datastore/dialect/expression.h"

namespace kv::dialect {

/// Numbers, booleans, currencies and dates mix freely; texts keep to themselves. Null goes with all.
bool IsNumeric(ValueType type);
bool GoTogether(ValueType a, ValueType b);

/// The type of an arithmetic result. Throws 3464 for texts, apart from the sum of two.
ValueType ArithmeticType(Operator op, ValueType left, ValueType right);

/// The type that can hold values of both: text where one of them is text.
ValueType CommonType(ValueType a, ValueType b);

/// The column type under which a result of that type is shown.
ColumnType ColumnTypeOf(ValueType type);

}  // namespace kv::dialect
