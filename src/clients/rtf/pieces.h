#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace kv::rtf {

/// What the program shows of a character's looks, and whether it may be changed.
struct Marks {
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool isProtected = false;
    friend bool operator==(const Marks&, const Marks&) = default;
};

/// Looks that the program keeps without showing them, by the numbers that they have in their own notes; -1
/// where the notes do not say.
struct Looks {
    int font = -1;
    int size = -1;
    int colour = -1;
    int highlight = -1;
    friend bool operator==(const Looks&, const Looks&) = default;
};

/// A stretch of the source: one shown character, or what lies between two of them and is kept as it is
/// (fonts, colours, tables, pictures, all that this program does not know).
struct Piece {
    std::string source;
    char32_t code = 0;  ///< 0 for what is not shown
    Marks marks;
    Looks looks;
    int standIns = 1;  ///< how many characters stand in for a Unicode escape here
    bool IsShown() const { return code != 0; }
};

struct Pieces {
    std::vector<Piece> all;
    /// How many pieces stand behind the place where a text without any character takes its first one, and the
    /// looks that it has there.
    std::size_t behindFirst = 0;
    Piece atFirst;
};

/// Cuts rich text into its pieces; joined they are the source again, byte by byte. Whatever is damaged is
/// kept, and what follows is read on.
Pieces ReadRichText(std::string_view source);
/// The same of a plain text: each character, line ends as one.
Pieces ReadPlainText(std::string_view source);

/// UTF-8 of a character.
std::string Utf8Of(char32_t code);
/// The characters of a text; bytes that are no UTF-8 are read as Windows-1252.
std::u32string CodesOf(std::string_view text);

}  // namespace kv::rtf
