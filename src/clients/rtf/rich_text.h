#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "clients/rtf/pieces.h"

namespace kv::rtf {

/// Notes as other programs write them too: rich text, or plain text of older rows. What is shown can be
/// edited; all the rest of the source stays where it stood, and a text that nobody edited is the same byte
/// for byte.
class RichText {
  public:
    RichText() = default;
    explicit RichText(std::string_view source);

    struct Character {
        char32_t code = 0;
        Marks marks;
        /// Kept where the character is put elsewhere in the same notes. Alone they are no change.
        Looks looks;
        friend bool operator==(const Character& a, const Character& b) {
            return a.code == b.code && a.marks == b.marks;
        }
    };
    using Characters = std::vector<Character>;

    /// What is shown, lines ended by U'\n'.
    Characters Shown() const;
    std::string PlainText() const;
    std::string Source() const;

    /// Takes the characters over as they are now, in as few changes of the source as one edit needs. A plain
    /// text becomes rich where marks make it. False, and nothing is changed, where the edit would alter or
    /// part protected characters, unless `evenProtected`.
    bool Update(const Characters& now, bool evenProtected = false);
    /// Adds characters at the end; protected ones may be among them.
    void Append(const Characters& added);
    /// The texts of the protected stretches, in their order.
    std::vector<std::string> ProtectedTexts() const;

  private:
    struct Place {
        std::size_t piece = 0;
        Piece looks;
    };
    Place PlaceOf(const std::vector<std::size_t>& shown, std::size_t position) const;
    std::vector<std::size_t> ShownPieces() const;
    void Replace(std::size_t position, std::size_t removed, const Characters& added);
    void Enrich();
    std::vector<Piece> Encode(const Piece& place, const Characters& added) const;
    void Separate(std::size_t first, std::size_t last);
    void Secure();
    void WriteAnew();

    bool rich_ = false;
    Pieces pieces_;
};

/// Does the text begin as rich text does?
bool IsRichText(std::string_view text);

}  // namespace kv::rtf
