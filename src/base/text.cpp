#include "base/text.h"

#include <algorithm>
#include <array>

#include <unicode/locid.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

namespace kv {
namespace {

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

char UpperAscii(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
}
char LowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

icu::UnicodeString FromUtf8(std::string_view text) {
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int>(text.size())));
}

template <typename Ascii, typename Unicode>
std::string Mapped(std::string_view text, Ascii ascii, Unicode unicode) {
    std::string out;
    if (IsAscii(text)) {
        out.resize(text.size());
        std::transform(text.begin(), text.end(), out.begin(), ascii);
        return out;
    }
    icu::UnicodeString wide = FromUtf8(text);
    unicode(wide);
    wide.toUTF8String(out);
    return out;
}

std::string Folded(std::string_view text) {
    return Mapped(text, LowerAscii, [](icu::UnicodeString& wide) { wide.foldCase(); });
}

bool EqualAscii(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                              [](char x, char y) { return LowerAscii(x) == LowerAscii(y); });
}

bool Continues(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

/// The byte at which the character after `count` characters begins.
std::size_t ByteOf(std::string_view text, std::size_t count) {
    std::size_t at = 0;
    for (; count > 0 && at < text.size(); --count) {
        ++at;
        while (at < text.size() && Continues(text[at]))
            ++at;
    }
    return at;
}

std::string Padded(std::string_view text, std::size_t width, char fill, bool inFront) {
    text = TrimView(text);
    const std::size_t length = Length(text);
    if (length >= width)
        return Left(text, width);
    const std::string padding(width - length, fill);
    return inFront ? padding + std::string(text) : std::string(text) + padding;
}

// What the bytes 0x80 to 0x9F of Windows-1252 mean; the five it leaves open stay control characters.
constexpr std::array<char16_t, 32> kWindows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

}  // namespace

std::string_view TrimView(std::string_view text) {
    const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
    text.remove_prefix(first);
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string Trim(std::string_view text) {
    return std::string(TrimView(text));
}

std::string Upper(std::string_view text) {
    return Mapped(text, UpperAscii, [](icu::UnicodeString& wide) { wide.toUpper(icu::Locale::getRoot()); });
}

std::string Lower(std::string_view text) {
    return Mapped(text, LowerAscii, [](icu::UnicodeString& wide) { wide.toLower(icu::Locale::getRoot()); });
}

bool EqualsNoCase(std::string_view a, std::string_view b) {
    return IsAscii(a) && IsAscii(b) ? EqualAscii(a, b) : Folded(a) == Folded(b);
}

bool StartsWithNoCase(std::string_view text, std::string_view prefix) {
    if (IsAscii(text) && IsAscii(prefix))
        return EqualAscii(text.substr(0, prefix.size()), prefix);
    const std::string folded = Folded(prefix);
    return Folded(text).compare(0, folded.size(), folded) == 0;
}

bool ContainsNoCase(std::string_view text, std::string_view piece) {
    return !text.empty() && Folded(text).find(Folded(piece)) != std::string::npos;
}

std::string Left(std::string_view text, std::size_t count) {
    return std::string(text.substr(0, ByteOf(text, count)));
}

std::string Right(std::string_view text, std::size_t count) {
    const std::size_t length = Length(text);
    return std::string(count >= length ? text : text.substr(ByteOf(text, length - count)));
}

std::string Mid(std::string_view text, std::size_t start, std::size_t count) {
    text.remove_prefix(ByteOf(text, start > 0 ? start - 1 : 0));
    return Left(text, count);
}

std::size_t Length(std::string_view text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return !Continues(c); }));
}

std::string PadLeftToWidth(std::string_view text, std::size_t width) {
    return Padded(text, width, ' ', true);
}

std::string PadRightToWidth(std::string_view text, std::size_t width, bool zeros) {
    return Padded(text, width, zeros ? '0' : ' ', false);
}

std::vector<std::string> Split(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    while (true) {
        const std::size_t end = text.find(separator);
        pieces.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return pieces;
        text.remove_prefix(end + 1);
    }
}

std::string Counted(long long number, std::string_view thing) {
    return std::to_string(number) + ' ' + std::string(thing) + (number == 1 ? "" : "s");
}

std::string Join(const std::vector<std::string>& pieces, std::string_view separator) {
    std::string joined;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (i > 0)
            joined += separator;
        joined += pieces[i];
    }
    return joined;
}

std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view with) {
    std::string out;
    for (std::size_t at = what.empty() ? std::string_view::npos : text.find(what);
         at != std::string_view::npos; at = text.find(what)) {
        out += text.substr(0, at);
        out += with;
        text.remove_prefix(at + what.size());
    }
    out += text;
    return out;
}

std::string DigitsOf(std::string_view text) {
    std::string digits;
    std::copy_if(text.begin(), text.end(), std::back_inserter(digits),
                 [](char c) { return c >= '0' && c <= '9'; });
    return digits;
}

bool IsUtf8(std::string_view bytes) {
    if (IsAscii(bytes))
        return true;
    const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    const auto size = static_cast<std::int32_t>(bytes.size());
    UChar32 character = 0;
    for (std::int32_t at = 0; at < size && character >= 0;) {
        U8_NEXT(data, at, size, character);
    }
    return character >= 0;
}

std::string ToUtf8(std::string_view bytes) {
    if (IsUtf8(bytes))
        return std::string(bytes);
    std::string out;
    const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    const auto size = static_cast<std::int32_t>(bytes.size());
    for (std::int32_t at = 0; at < size;) {
        const std::int32_t from = at;
        UChar32 character = 0;
        U8_NEXT(data, at, size, character);
        if (character >= 0) {
            out += bytes.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(at - from));
            continue;
        }
        at = from + 1;
        const std::uint8_t byte = data[from];
        icu::UnicodeString(static_cast<UChar32>(byte < 0xA0 ? kWindows1252[byte - 0x80] : byte))
            .toUTF8String(out);
    }
    return out;
}

}  // namespace kv
