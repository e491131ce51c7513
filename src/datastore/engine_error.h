#pragma once
#include <stdexcept>
#include <string>

namespace kv {

/// A failure of the store, with the number and the words that the operators know. Event handlers catch it, show the words
/// and return; nothing below them does.
class EngineError : public std::runtime_error {
 public:
    EngineError(int number, const std::string& description) : std::runtime_error(description), number_(number) {}
    int Number() const { return number_; }
    std::string Description() const { return what(); }

 private:
    int number_;
};

namespace engine_error {
inline constexpr int kInvalidUseOfNull = 94;
inline constexpr int kNoCurrentRecord = 3021;
inline constexpr int kDuplicateKey = 3022;
inline constexpr int kFileNotFound = 3024;
inline constexpr int kUpdateWithoutEdit = 3020;
inline constexpr int kReadOnly = 3027;
inline constexpr int kCannotOpenFile = 3051;
inline constexpr int kTooFewParameters = 3061;
inline constexpr int kSyntaxInExpression = 3075;
inline constexpr int kTableNotFound = 3078;
inline constexpr int kSyntaxInFrom = 3131;
inline constexpr int kSyntaxInUpdate = 3144;
inline constexpr int kRecordDeleted = 3167;
inline constexpr int kLockedByOther = 3186;
inline constexpr int kChangedMeanwhile = 3197;
inline constexpr int kNotSupported = 3251;
inline constexpr int kDatabaseBusy = 3260;
inline constexpr int kItemNotFound = 3265;
inline constexpr int kRequiredField = 3314;
inline constexpr int kUnrecognizedFormat = 3343;
inline constexpr int kTypeConversion = 3421;
inline constexpr int kObjectClosed = 3420;
inline constexpr int kUpdateCancelled = 3426;
inline constexpr int kDiskFull = 3183;
inline constexpr int kTypeMismatch = 3464;
}  // namespace engine_error

}  // namespace kv
