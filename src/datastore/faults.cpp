#include "datastore/faults.h"

#include <fmt/format.h>

namespace kv::faults {

using namespace engine_error;

EngineError TooFewParameters(std::size_t expected) {
    return {kTooFewParameters, fmt::format("Too few parameters. Expected {}.", expected)};
}

EngineError TableNotFound(std::string_view table) {
    return {
        kTableNotFound,
        fmt::format(
            "The database engine cannot find the input table or query '{}'. Make sure it exists and that its "
            "name is spelled correctly.",
            table)};
}

EngineError ItemNotFound(std::string_view name) {
    return {kItemNotFound, fmt::format("Item not found in this collection: '{}'.", name)};
}

EngineError TypeMismatch() {
    return {kTypeMismatch, "Data type mismatch in criteria expression."};
}

EngineError TypeConversion() {
    return {kTypeConversion, "Data type conversion error."};
}

EngineError InvalidUseOfNull() {
    return {kInvalidUseOfNull, "Invalid use of Null"};
}

EngineError NoCurrentRecord() {
    return {kNoCurrentRecord, "No current record."};
}

EngineError RecordDeleted() {
    return {kRecordDeleted, "Record is deleted."};
}

EngineError ReadOnly() {
    return {kReadOnly, "Cannot update. Database or object is read-only."};
}

EngineError FieldTooSmall() {
    return {kFieldTooSmall,
            "The field is too small to accept the amount of data you attempted to add. Try inserting or "
            "pasting less data."};
}

EngineError RequiredField(std::string_view field) {
    return {kRequiredField,
            fmt::format("The field '{}' cannot contain a Null value because it is required. Enter a value "
                        "in this field.",
                        field)};
}

EngineError LockedByOther() {
    return {kLockedByOther, "Could not save; currently locked by another user."};
}

EngineError ChangedMeanwhile() {
    return {kChangedMeanwhile,
            "The operation was stopped because you and another user are attempting to change the same "
            "data at the same time."};
}

EngineError DuplicateKey() {
    return {kDuplicateKey,
            "The changes you requested to the table were not successful because they would create duplicate "
            "values in the index or primary key. Change the data in the field or fields that contain "
            "duplicate data and try again."};
}

EngineError NotSupported(std::string_view what) {
    return {kNotSupported, fmt::format("Operation is not supported: {}.", what)};
}

}  // namespace kv::faults
