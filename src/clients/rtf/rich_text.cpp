#include "clients/rtf/rich_text.h"

#include <algorithm>
#include <cctype>

#include <unicode/utf16.h>

#include "base/text.h"

namespace kv::rtf {

namespace {

constexpr const char* kHead = "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fnil Arial;}}\\f0\\fs20 ";

std::string Escape(long unit, int standIns) {
    constexpr long kSigned = 0x8000;
    const long number = unit >= kSigned ? unit - 2 * kSigned : unit;
    // Without a stand-in the number needs its delimiter.
    return "\\u" + std::to_string(number) +
           (standIns == 0 ? " " : std::string(static_cast<std::size_t>(standIns), '?'));
}

std::string Encoded(char32_t code, int standIns) {
    constexpr char32_t kFirstEscaped = 0x7F;
    constexpr char32_t kBeyondPlane = 0xFFFF;
    switch (code) {
        case U'\n':
            return "\\par ";
        case U'\t':
            return "\\tab ";
        case U'\\':
            return "\\\\";
        case U'{':
            return "\\{";
        case U'}':
            return "\\}";
        default:
            break;
    }
    if (code < kFirstEscaped) {
        return std::string(1, static_cast<char>(code));
    }
    if (code > kBeyondPlane) {
        return Escape(U16_LEAD(code), standIns) + Escape(U16_TRAIL(code), standIns);
    }
    return Escape(static_cast<long>(code), standIns);
}

/// The words that turn one look into another.
std::string Turn(const Marks& from, const Marks& to) {
    std::string words;
    const auto add = [&](bool was, bool is, const char* on, const char* off) {
        if (was != is) {
            words += is ? on : off;
        }
    };
    add(from.bold, to.bold, "\\b", "\\b0");
    add(from.italic, to.italic, "\\i", "\\i0");
    add(from.underline, to.underline, "\\ul", "\\ulnone");
    add(from.isProtected, to.isProtected, "\\protect", "\\protect0");
    return words.empty() ? words : words + " ";
}

/// The words that give a stretch looks of its own within a group.
std::string WordsOf(const Looks& looks) {
    std::string words;
    const auto add = [&words](const char* word, int number, int whereUnset) {
        if (const int value = number < 0 ? whereUnset : number; value >= 0) {
            words += word + std::to_string(value);
        }
    };
    add("\\f", looks.font, -1);
    add("\\fs", looks.size, -1);
    add("\\cf", looks.colour, 0);
    add("\\highlight", looks.highlight, 0);
    return words + " ";
}

bool IsWordCharacter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0;
}

/// Would what follows be taken for a part of the control word that the source ends in?
bool RunsInto(const std::string& source, char next) {
    std::size_t at = source.size();
    while (at > 0 && (IsWordCharacter(source[at - 1]) || source[at - 1] == '-')) {
        --at;
    }
    const bool open = at > 0 && at < source.size() && source[at - 1] == '\\' &&
                      std::isalpha(static_cast<unsigned char>(source[at])) != 0 &&
                      (at < 2 || source[at - 2] != '\\');
    if (!open) {
        return false;
    }
    const bool numbered = std::isdigit(static_cast<unsigned char>(source.back())) != 0;
    return next == ' ' || (numbered ? std::isdigit(static_cast<unsigned char>(next)) != 0
                                    : IsWordCharacter(next) || next == '-');
}

bool IsSame(const RichText::Character& a, const RichText::Character& b) {
    // A line end has no looks that anybody sees.
    return a.code == b.code && (a.code == U'\n' || a.marks == b.marks);
}

Piece Kept(std::string source) {
    Piece piece;
    piece.source = std::move(source);
    return piece;
}

}  // namespace

bool IsRichText(std::string_view text) {
    return TrimView(text).starts_with("{\\rtf");
}

RichText::RichText(std::string_view source)
    : rich_(IsRichText(source)), pieces_(rich_ ? ReadRichText(source) : ReadPlainText(source)) {}

RichText::Characters RichText::Shown() const {
    Characters shown;
    for (const Piece& piece : pieces_.all) {
        if (piece.IsShown()) {
            shown.push_back({piece.code, piece.marks, piece.looks});
        }
    }
    return shown;
}

std::string RichText::PlainText() const {
    std::string text;
    for (const Piece& piece : pieces_.all) {
        if (piece.IsShown()) {
            text += Utf8Of(piece.code);
        }
    }
    return text;
}

std::string RichText::Source() const {
    std::string source;
    for (const Piece& piece : pieces_.all) {
        source += piece.source;
    }
    return source;
}

std::vector<std::string> RichText::ProtectedTexts() const {
    std::vector<std::string> texts;
    bool inside = false;
    for (const Piece& piece : pieces_.all) {
        if (!piece.IsShown()) {
            continue;
        }
        if (piece.marks.isProtected && !inside) {
            texts.emplace_back();
        }
        inside = piece.marks.isProtected;
        if (inside) {
            texts.back() += Utf8Of(piece.code);
        }
    }
    return texts;
}

std::vector<std::size_t> RichText::ShownPieces() const {
    std::vector<std::size_t> shown;
    for (std::size_t i = 0; i < pieces_.all.size(); ++i) {
        if (pieces_.all[i].IsShown()) {
            shown.push_back(i);
        }
    }
    return shown;
}

/// Where a character is put: right behind the one before it, where its looks hold; else before the first one.
RichText::Place RichText::PlaceOf(const std::vector<std::size_t>& shown, std::size_t position) const {
    if (position > 0) {
        return {shown[position - 1] + 1, pieces_.all[shown[position - 1]]};
    }
    if (!shown.empty()) {
        return {shown.front(), pieces_.all[shown.front()]};
    }
    return {pieces_.all.size() - pieces_.behindFirst, pieces_.atFirst};
}

bool RichText::Update(const Characters& now, bool evenProtected) {
    const Characters before = Shown();
    std::size_t same = 0;
    while (same < before.size() && same < now.size() && IsSame(before[same], now[same])) {
        ++same;
    }
    std::size_t tail = 0;
    while (tail < before.size() - same && tail < now.size() - same &&
           IsSame(before[before.size() - 1 - tail], now[now.size() - 1 - tail])) {
        ++tail;
    }
    const std::size_t removed = before.size() - same - tail;
    const Characters added(now.begin() + static_cast<std::ptrdiff_t>(same),
                           now.end() - static_cast<std::ptrdiff_t>(tail));
    const auto isProtected = [](const Character& character) { return character.marks.isProtected; };
    const auto first = before.begin() + static_cast<std::ptrdiff_t>(same);
    const bool parts = !added.empty() && same > 0 && tail > 0 && isProtected(before[same - 1]) &&
                       isProtected(before[before.size() - tail]);
    if (!evenProtected &&
        (std::any_of(first, first + static_cast<std::ptrdiff_t>(removed), isProtected) || parts)) {
        return false;
    }
    if (removed > 0 || !added.empty()) {
        Replace(same, removed, added);
    }
    return true;
}

void RichText::Append(const Characters& added) {
    Replace(Shown().size(), 0, added);
}

void RichText::Replace(std::size_t position, std::size_t removed, const Characters& added) {
    const bool marked = std::any_of(added.begin(), added.end(), [](const Character& character) {
        return character.code != U'\n' && character.marks != Marks();
    });
    if (marked && !rich_) {
        Enrich();
    }
    const std::vector<std::size_t> shown = ShownPieces();
    const Place place = PlaceOf(shown, position);
    std::vector<Piece> fresh = Encode(place.looks, added);
    // What was shown goes; what lay between it stays.
    std::size_t lastTouched = place.piece;
    for (std::size_t i = position; i < position + removed; ++i) {
        pieces_.all[shown[i]] = Piece();
        lastTouched = shown[i] + 1;
    }
    lastTouched += fresh.size();
    pieces_.all.insert(pieces_.all.begin() + static_cast<std::ptrdiff_t>(place.piece),
                       std::make_move_iterator(fresh.begin()), std::make_move_iterator(fresh.end()));
    pieces_.all.erase(
        std::remove_if(pieces_.all.begin(), pieces_.all.end(),
                       [](const Piece& piece) { return piece.source.empty() && !piece.IsShown(); }),
        pieces_.all.end());
    if (rich_) {
        Separate(place.piece > 0 ? place.piece - 1 : 0, lastTouched);
    }
    Secure();
}

/// Damaged notes may hide or swallow what is put into them: a table that never ends, a picture that was cut
/// off, halves of characters that become whole side by side. They are written anew then. The looks that this
/// program does not know are lost with that; the words never are.
void RichText::Secure() {
    const Characters wanted = Shown();
    const RichText read(Source());
    const Characters found = read.Shown();
    if (read.rich_ != rich_ ||
        !std::equal(wanted.begin(), wanted.end(), found.begin(), found.end(), IsSame)) {
        WriteAnew();
    }
}

void RichText::WriteAnew() {
    std::erase_if(pieces_.all, [](const Piece& piece) { return !piece.IsShown(); });
    for (Piece& piece : pieces_.all) {
        piece.source = piece.code == U'\n' ? "\r\n" : Utf8Of(piece.code);
    }
    pieces_.behindFirst = 0;
    if (rich_ || IsRichText(Source())) {
        Enrich();
    }
}

std::vector<Piece> RichText::Encode(const Piece& place, const Characters& added) const {
    std::vector<Piece> pieces;
    Marks marks = place.marks;
    Looks looks = place.looks;
    Marks outside;  // of the group that gives a stretch looks of its own
    const auto wear = [&](const Looks& wanted) {
        if (looks == wanted) {
            return;
        }
        if (looks != place.looks) {
            pieces.push_back(Kept("}"));
            marks = outside;
        }
        if (wanted != place.looks) {
            pieces.push_back(Kept("{" + WordsOf(wanted)));
            outside = marks;
        }
        looks = wanted;
    };
    for (const Character& character : added) {
        // A line end has no looks that anybody sees, and what says nothing of its own takes those of its
        // place.
        if (rich_ && character.code != U'\n') {
            wear(character.looks == Looks() ? place.looks : character.looks);
        }
        Marks wanted = character.marks;
        if (character.code == U'\n') {
            wanted = marks;
            wanted.isProtected = false;
        }
        if (rich_ && wanted != marks) {
            pieces.push_back(Kept(Turn(marks, wanted)));
        }
        marks = wanted;
        Piece piece;
        piece.code = character.code;
        piece.marks = marks;
        piece.looks = looks;
        piece.standIns = place.standIns;
        if (rich_) {
            piece.source = Encoded(character.code, piece.standIns);
        } else {
            piece.source = character.code == U'\n' ? "\r\n" : Utf8Of(character.code);
        }
        pieces.push_back(std::move(piece));
    }
    if (rich_) {
        wear(place.looks);
        if (marks != place.marks) {
            pieces.push_back(Kept(Turn(marks, place.marks)));
        }
    }
    return pieces;
}

/// Puts a delimiter between control words and what would continue them.
void RichText::Separate(std::size_t first, std::size_t last) {
    for (std::size_t i = first; i <= last && i + 1 < pieces_.all.size(); ++i) {
        const std::string& next = pieces_.all[i + 1].source;
        if (!next.empty() && RunsInto(pieces_.all[i].source, next.front())) {
            pieces_.all[i].source += ' ';
        }
    }
}

/// Makes rich text of pieces that are all shown.
void RichText::Enrich() {
    std::vector<Piece> rich = {Kept(kHead)};
    Marks marks;
    for (Piece& piece : pieces_.all) {
        if (piece.marks != marks) {
            rich.push_back(Kept(Turn(marks, piece.marks)));
        }
        marks = piece.marks;
        piece.standIns = 1;
        piece.source = Encoded(piece.code, piece.standIns);
        rich.push_back(std::move(piece));
    }
    rich.push_back(Kept("}"));
    pieces_.all = std::move(rich);
    pieces_.behindFirst = 1;
    rich_ = true;
}

}  // namespace kv::rtf
