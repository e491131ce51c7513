#pragma once
#include "datastore/catalogue.h"
#include "datastore/value.h"

namespace kv {

/// The value as the column's fields hold it. Throws EngineError 3421 where it is none of the column's type,
/// 3163 for a text longer than the column. Null stays Null, but a Boolean column knows none and takes it for
/// false.
Value ConvertToColumn(const Value& value, const ColumnInfo& column);

/// The value in that type; Null stays Null. Throws EngineError 3421.
Value ConvertTo(const Value& value, ValueType type);

/// The date to the whole second, so that equal moments are equal numbers in every engine's index.
double StoredSerial(Date date);

}  // namespace kv
