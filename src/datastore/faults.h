#pragma once
#include <string>
#include <string_view>

#include "datastore/engine_error.h"

// The words of the failures that more than one place raises.
namespace kv::faults {

EngineError TooFewParameters(std::size_t expected);
EngineError TableNotFound(std::string_view table);
EngineError ItemNotFound(std::string_view name);
EngineError TypeMismatch();
EngineError TypeConversion();
EngineError InvalidUseOfNull();
EngineError NoCurrentRecord();
EngineError RecordDeleted();
EngineError ReadOnly();
EngineError FieldTooSmall();
EngineError RequiredField(std::string_view field);
EngineError LockedByOther();
EngineError ChangedMeanwhile();
EngineError DuplicateKey();
EngineError NotSupported(std::string_view what);

}  // namespace kv::faults
