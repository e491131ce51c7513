#pragma once
#include <stdexcept>
#include <string>

namespace kv {

/// A failure of the store, with the number and the words that the operators know. Event handlers catch it,
/// show the words and return; nothing below them does.
class EngineError : public std::runtime_error {
  public:
    EngineError(int number, const std::string& description)
        : std::runtime_error(description), number_(number) {}
    int Number() const { return number_; }
    std::string Description() const { return what(); }

  private:
    int number_;
};

namespace engine_error {
inline constexpr int kInvalidUseOfNull = 94;
inline constexpr int kReservedError = 3000;
inline constexpr int kTableExists = 3010;
inline constexpr int kUpdateWithoutEdit = 3020;
inline constexpr int kNoCurrentRecord = 3021;
inline constexpr int kDuplicateKey = 3022;
inline constexpr int kFileNotFound = 3024;
inline constexpr int kReadOnly = 3027;
inline constexpr int kDiskError = 3043;
inline constexpr int kCannotOpenFile = 3051;
inline constexpr int kTooFewParameters = 3061;
inline constexpr int kSelectIsNoAction = 3065;
inline constexpr int kSyntaxInExpression = 3075;
inline constexpr int kTableNotFound = 3078;
inline constexpr int kAmbiguousField = 3079;
inline constexpr int kUndefinedFunction = 3085;
inline constexpr int kOrderNotSelected = 3093;
inline constexpr int kAggregateInWhere = 3096;
inline constexpr int kNotInAggregate = 3122;
inline constexpr int kUnknownInsertField = 3127;
inline constexpr int kInvalidStatement = 3129;
inline constexpr int kSyntaxInFrom = 3131;
inline constexpr int kSyntaxInInsert = 3134;
inline constexpr int kSyntaxInOrderBy = 3138;
inline constexpr int kSyntaxInSelect = 3141;
inline constexpr int kTextAfterEnd = 3142;
inline constexpr int kSyntaxInUpdate = 3144;
inline constexpr int kConnectionFailed = 3151;
inline constexpr int kFieldTooSmall = 3163;
inline constexpr int kFieldNotUpdatable = 3164;
inline constexpr int kRecordDeleted = 3167;
inline constexpr int kDiskFull = 3183;
inline constexpr int kLockedByOther = 3186;
inline constexpr int kChangedMeanwhile = 3197;
inline constexpr int kDatabaseExists = 3204;
inline constexpr int kInvalidOperation = 3219;
inline constexpr int kNotSupported = 3251;
inline constexpr int kDatabaseBusy = 3260;
inline constexpr int kItemNotFound = 3265;
inline constexpr int kSyntaxInDefinition = 3290;
inline constexpr int kRequiredField = 3314;
inline constexpr int kUnrecognizedFormat = 3343;
inline constexpr int kValueCountDiffers = 3346;
inline constexpr int kTooComplex = 3360;
inline constexpr int kObjectClosed = 3420;
inline constexpr int kTypeConversion = 3421;
inline constexpr int kUpdateCancelled = 3426;
inline constexpr int kTypeMismatch = 3464;
}  // namespace engine_error

}  // namespace kv
