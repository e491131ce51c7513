#pragma once
#include <string>
#include <string_view>

namespace kv {

/// The plain text of notes: rich text without its marks (UTF-8, lines end in "\n"), any other text as it
/// stands. Damaged rich text gives what can be read of it.
std::string NotesText(std::string_view comments);
/// Does the text begin as rich text does?
bool IsRichText(std::string_view comments);

}  // namespace kv
