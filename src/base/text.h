#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace kv {

// Texts are UTF-8. Case is folded for all scripts (ICU), with a fast path for ASCII.

std::string_view TrimView(std::string_view text);
/// Without the blanks (spaces, no other white space) at both ends.
std::string Trim(std::string_view text);
std::string Upper(std::string_view text);
std::string Lower(std::string_view text);

bool EqualsNoCase(std::string_view a, std::string_view b);
bool StartsWithNoCase(std::string_view text, std::string_view prefix);
/// Plain substring search without regard to case. An empty piece is found in every text that is not empty.
bool ContainsNoCase(std::string_view text, std::string_view piece);

/// Orders and equates texts as every engine of the store does: without regard to case, accents counting, by
/// the root collation. Below 0, 0 or above 0.
int CompareText(std::string_view a, std::string_view b);
/// A hash under which texts that CompareText calls equal are equal.
std::size_t HashText(std::string_view text);

/// The first, last or middle characters (not bytes). `start` of Mid counts from 1.
std::string Left(std::string_view text, std::size_t count);
std::string Right(std::string_view text, std::size_t count);
std::string Mid(std::string_view text, std::size_t start, std::size_t count = std::string::npos);
std::size_t Length(std::string_view text);

/// Trimmed, spaces in front up to the width, cut to the width when longer.
std::string PadLeftToWidth(std::string_view text, std::size_t width);
/// "1 visit", "12 visits": a number of things as a sentence has it.
std::string Counted(long long number, std::string_view thing);
/// Trimmed, filled behind with spaces, or with "0" when `zeros`, cut to the width when longer.
std::string PadRightToWidth(std::string_view text, std::size_t width, bool zeros = false);

std::vector<std::string> Split(std::string_view text, char separator);
std::string Join(const std::vector<std::string>& pieces, std::string_view separator);
std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view with);
/// The characters '0' to '9' of a text, in order.
std::string DigitsOf(std::string_view text);

bool IsUtf8(std::string_view bytes);
/// Valid UTF-8, of which nothing is lost where it was valid: bytes that are no UTF-8 are read as
/// Windows-1252.
std::string ToUtf8(std::string_view bytes);

}  // namespace kv
