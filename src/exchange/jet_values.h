#pragma once
#include <optional>
#include <string>
#include <string_view>

#include <iconv.h>

#include "datastore/value.h"

// The forms in which a Jet database keeps its values, little end first. Each is handed the value's own bytes;
// nothing comes back where they are none of the form.
namespace kv::jet {

/// A Jet 4 text: UTF-16, or with FF FE in front one byte a character where that suffices. Zeros behind are
/// padding.
std::optional<std::string> Text(std::string_view bytes);
/// A Jet 3 text, of a code page that `toUtf8` converts from. Zeros behind are padding.
std::optional<std::string> CodedText(std::string_view bytes, iconv_t toUtf8);
/// Money: 8 bytes, ten-thousandths.
std::optional<Value> Money(std::string_view bytes);
/// A moment to the second. Jet counts the time of a day before 1899-12-30 away from that day too: -1.25 is
/// 1899-12-29 06:00.
std::optional<Value> Moment(std::string_view bytes);
/// "{00112233-4455-6677-8899-AABBCCDDEEFF}".
std::optional<Value> Guid(std::string_view bytes);
/// A number of 17 bytes with its sign in front and so many decimals, as money (at most 4 decimals), as a
/// double or in its decimal form: "-12.50".
std::optional<Value> Decimal(std::string_view bytes, int scale, ValueType as);
/// 1 (unsigned), 2 or 4 bytes.
std::optional<Value> Whole(std::string_view bytes);
/// 4 or 8 bytes. A number of 4 becomes the one that its shortest text names: 0.1, and not 0.100000001.
std::optional<Value> Floating(std::string_view bytes);

}  // namespace kv::jet
