#include "datastore/dialect/keywords.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

namespace kv::dialect {
namespace {

using Entry = std::pair<std::string_view, Keyword>;

constexpr std::size_t kLongest = 10;

// Sorted by word.
constexpr std::array kKeywords = {
    Entry{"all", Keyword::All},
    Entry{"and", Keyword::And},
    Entry{"as", Keyword::As},
    Entry{"asc", Keyword::Asc},
    Entry{"between", Keyword::Between},
    Entry{"by", Keyword::By},
    Entry{"constraint", Keyword::Constraint},
    Entry{"create", Keyword::Create},
    Entry{"cross", Keyword::Cross},
    Entry{"default", Keyword::Default},
    Entry{"delete", Keyword::Delete},
    Entry{"desc", Keyword::Desc},
    Entry{"distinct", Keyword::Distinct},
    Entry{"drop", Keyword::Drop},
    Entry{"exists", Keyword::Exists},
    Entry{"false", Keyword::False},
    Entry{"from", Keyword::From},
    Entry{"full", Keyword::Full},
    Entry{"group", Keyword::Group},
    Entry{"having", Keyword::Having},
    Entry{"in", Keyword::In},
    Entry{"index", Keyword::Index},
    Entry{"inner", Keyword::Inner},
    Entry{"insert", Keyword::Insert},
    Entry{"into", Keyword::Into},
    Entry{"is", Keyword::Is},
    Entry{"join", Keyword::Join},
    Entry{"key", Keyword::Key},
    Entry{"left", Keyword::Left},
    Entry{"like", Keyword::Like},
    Entry{"mod", Keyword::Mod},
    Entry{"not", Keyword::Not},
    Entry{"null", Keyword::Null},
    Entry{"on", Keyword::On},
    Entry{"or", Keyword::Or},
    Entry{"order", Keyword::Order},
    Entry{"outer", Keyword::Outer},
    Entry{"primary", Keyword::Primary},
    Entry{"right", Keyword::Right},
    Entry{"select", Keyword::Select},
    Entry{"set", Keyword::Set},
    Entry{"table", Keyword::Table},
    Entry{"top", Keyword::Top},
    Entry{"true", Keyword::True},
    Entry{"union", Keyword::Union},
    Entry{"unique", Keyword::Unique},
    Entry{"update", Keyword::Update},
    Entry{"values", Keyword::Values},
    Entry{"where", Keyword::Where},
};

}  // namespace

Keyword FindKeyword(std::string_view word) {
    if (word.size() < 2 || word.size() > kLongest)
        return Keyword::None;
    std::array<char, kLongest> lower{};
    std::transform(word.begin(), word.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; });
    const std::string_view wanted(lower.data(), word.size());
    const auto* found =
        std::lower_bound(kKeywords.begin(), kKeywords.end(), wanted,
                         [](const Entry& entry, std::string_view key) { return entry.first < key; });
    return found != kKeywords.end() && found->first == wanted ? found->second : Keyword::None;
}

}  // namespace kv::dialect
