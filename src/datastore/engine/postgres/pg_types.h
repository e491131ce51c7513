#pragma once
#include <libpq-fe.h>

// The numbers under which every server knows its own types.
namespace kv::postgres::types {

inline constexpr Oid kBoolean = 16;
inline constexpr Oid kBig = 20;
inline constexpr Oid kShort = 21;
inline constexpr Oid kLong = 23;
inline constexpr Oid kText = 25;
inline constexpr Oid kSingle = 700;
inline constexpr Oid kDouble = 701;
inline constexpr Oid kFixedText = 1042;
inline constexpr Oid kSizedText = 1043;
inline constexpr Oid kDay = 1082;
inline constexpr Oid kTimestamp = 1114;
inline constexpr Oid kNumeric = 1700;

}  // namespace kv::postgres::types
