#pragma once
#include <string>
#include <string_view>

namespace kv {

/// The digits of a pasted phone text: ten at most, the first digit left out when it is the long-distance "1".
/// A text with one to nine digits gets a "1" behind them; a text without digits gives "".
std::string PhoneDigits(std::string_view text);

}  // namespace kv
