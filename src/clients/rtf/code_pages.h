#pragma once
#include <string>
#include <string_view>

namespace kv::rtf {

inline constexpr int kWestern = 1252;
inline constexpr int kMacintosh = 10000;

/// The code page of a font's character set, or 0 for one that the document's page serves.
int CodePageOfCharset(int charset);
/// Do characters of the page take two bytes?
bool IsDoubleByte(int codePage);
/// The text in UTF-8. A page that nobody knows reads as the western one, bytes without meaning as U+FFFD.
std::string Decode(std::string_view bytes, int codePage);

}  // namespace kv::rtf
