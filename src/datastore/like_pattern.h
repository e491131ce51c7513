#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace kv {

/// A pattern of LIKE: * any characters, ? one, # one digit, [a-z] one of a list, [!a-z] one outside it. Blind
/// to case.
class LikePattern {
  public:
    explicit LikePattern(std::string_view pattern);
    bool Matches(std::string_view text) const;

  private:
    struct Piece {
        enum class Kind { Character, AnyRun, AnyOne, Digit, List } kind = Kind::Character;
        char32_t character = 0;
        bool negated = false;
        std::vector<std::pair<char32_t, char32_t>> ranges;
    };

    void ReadList(std::u32string_view pattern, std::size_t& at);
    static bool Meets(const Piece& piece, char32_t character);

    std::vector<Piece> pieces_;
    /// "*text*", by far the most common form: the text alone.
    bool plainContains_ = false;
    std::string contained_;
};

}  // namespace kv
