#include "datastore/like_pattern.h"

#include "base/text.h"

namespace kv {
namespace {

std::u32string CodePoints(std::string_view text) {
    std::u32string points;
    points.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const auto lead = static_cast<unsigned char>(text[at++]);
        const int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
        char32_t point = more == 0 ? lead : lead & (0x3FU >> more);
        for (int i = 0; i < more && at < text.size(); ++i)
            point = (point << 6) | (static_cast<unsigned char>(text[at++]) & 0x3FU);
        points += point;
    }
    return points;
}

}  // namespace

LikePattern::LikePattern(std::string_view pattern) {
    if (pattern.size() > 2 && pattern.front() == '*' && pattern.back() == '*') {
        contained_ = std::string(pattern.substr(1, pattern.size() - 2));
        plainContains_ = contained_.find_first_of("*?#[") == std::string::npos;
    }
    const std::u32string folded = CodePoints(Lower(pattern));
    const std::u32string_view points = folded;
    for (std::size_t at = 0; at < points.size(); ++at) {
        Piece piece;
        switch (points[at]) {
            case U'*':
                piece.kind = Piece::Kind::AnyRun;
                break;
            case U'?':
                piece.kind = Piece::Kind::AnyOne;
                break;
            case U'#':
                piece.kind = Piece::Kind::Digit;
                break;
            case U'[':
                if (points.find(U']', at + 1) != std::u32string_view::npos) {
                    ReadList(points, at);
                    continue;
                }
                [[fallthrough]];  // a bracket that is never closed is itself
            default:
                piece.character = points[at];
                break;
        }
        pieces_.push_back(std::move(piece));
    }
}

void LikePattern::ReadList(std::u32string_view pattern, std::size_t& at) {
    Piece piece;
    piece.kind = Piece::Kind::List;
    ++at;
    piece.negated = pattern[at] == U'!' && pattern[at + 1] != U']';
    if (piece.negated)
        ++at;
    for (; pattern[at] != U']'; ++at) {
        const char32_t first = pattern[at];
        char32_t last = first;
        if (pattern[at + 1] == U'-' && pattern[at + 2] != U']') {
            last = pattern[at + 2];
            at += 2;
        }
        piece.ranges.emplace_back(first, last);
    }
    if (!piece.ranges.empty())  // "[]" stands for nothing at all
        pieces_.push_back(std::move(piece));
}

bool LikePattern::Meets(const Piece& piece, char32_t character) {
    switch (piece.kind) {
        case Piece::Kind::Character:
            return piece.character == character;
        case Piece::Kind::AnyOne:
            return true;
        case Piece::Kind::Digit:
            return character >= U'0' && character <= U'9';
        case Piece::Kind::List:
            for (const auto& [first, last] : piece.ranges)
                if (character >= first && character <= last)
                    return !piece.negated;
            return piece.negated;
        case Piece::Kind::AnyRun:
            break;
    }
    return false;
}

bool LikePattern::Matches(std::string_view text) const {
    if (plainContains_)
        return ContainsNoCase(text, contained_);
    const std::u32string points = CodePoints(Lower(text));
    std::size_t at = 0;
    std::size_t piece = 0;
    // Where to go on when what follows the last run fails: the run takes one character more.
    std::size_t runPiece = pieces_.size();
    std::size_t runAt = 0;
    while (at < points.size()) {
        if (piece < pieces_.size() && pieces_[piece].kind == Piece::Kind::AnyRun) {
            runPiece = piece++;
            runAt = at;
        } else if (piece < pieces_.size() && Meets(pieces_[piece], points[at])) {
            ++piece;
            ++at;
        } else if (runPiece < pieces_.size()) {
            piece = runPiece + 1;
            at = ++runAt;
        } else {
            return false;
        }
    }
    while (piece < pieces_.size() && pieces_[piece].kind == Piece::Kind::AnyRun)
        ++piece;
    return piece == pieces_.size();
}

}  // namespace kv
