// CompareText and HashText: how every engine of the store orders and equates texts.
#include <array>
#include <cstdint>
#include <memory>
#include <stdexcept>

#include <unicode/coleitr.h>
#include <unicode/coll.h>
#include <unicode/tblcoll.h>

#include "base/text.h"

namespace kv {
namespace {

icu::StringPiece Piece(std::string_view text) {
    return {text.data(), static_cast<int>(text.size())};
}

void Check(UErrorCode status, const char* what) {
    if (U_FAILURE(status))
        throw std::runtime_error(std::string(what) + ": " + u_errorName(status));
}

constexpr std::size_t kHashSeed = 0xcbf29ce484222325U;

std::size_t Mix(std::size_t hash, std::uint32_t weight) {
    return (hash ^ weight) * 0x100000001b3U;
}

/// The root collation without regard to case. Texts of printable ASCII alone, which nearly all are, take
/// tables that are filled from the collation itself, so that both ways agree. Control characters count for
/// nothing in the collation and therefore take the long way.
class TextOrder {
  public:
    static const TextOrder& Instance() {
        static const TextOrder order;
        return order;
    }

    int Compare(std::string_view a, std::string_view b) const {
        const std::size_t shorter = std::min(a.size(), b.size());
        std::size_t at = 0;
        while (at < shorter && Rank(a[at]) == Rank(b[at]) && Rank(a[at]) != 0)
            ++at;
        if (!IsPlain(a.substr(at)) || !IsPlain(b.substr(at)))
            return CompareFully(a, b);
        const int left = at < a.size() ? Rank(a[at]) : 0;
        const int right = at < b.size() ? Rank(b[at]) : 0;
        return left - right;
    }

    /// Only the first level's weights enter: texts that differ in accents alone share a hash, which is
    /// allowed.
    std::size_t Hash(std::string_view text) const {
        std::size_t hash = kHashSeed;
        if (!IsPlain(text))
            return HashFully(icu::UnicodeString::fromUTF8(Piece(text)), hash);
        for (const char c : text)
            for (const std::uint32_t weight : plain_[static_cast<unsigned char>(c)].weights)
                if (weight != 0)
                    hash = Mix(hash, weight);
        return hash;
    }

  private:
    struct PlainCharacter {
        std::uint8_t rank = 0;  // 0: the character takes the long way
        std::array<std::uint32_t, 2> weights{};
    };

    TextOrder() {
        UErrorCode status = U_ZERO_ERROR;
        collator_.reset(icu::Collator::createInstance(icu::Locale::getRoot(), status));
        Check(status, "The text collation can't be loaded");
        rules_ = dynamic_cast<icu::RuleBasedCollator*>(collator_.get());
        collator_->setAttribute(UCOL_STRENGTH, UCOL_SECONDARY, status);
        Check(status, "The text collation can't be set up");
        for (unsigned char c = kFirst; c <= kLast; ++c)
            FillCharacter(c);
    }

    void FillCharacter(unsigned char c) {
        const std::string text(1, static_cast<char>(c));
        std::uint8_t smaller = 0;
        for (unsigned char other = kFirst; other <= kLast; ++other)
            smaller += CompareFully(std::string(1, static_cast<char>(other)), text) < 0 ? 1 : 0;
        plain_[c].rank = static_cast<std::uint8_t>(smaller + 1);
        std::size_t count = 0;
        EachWeight(icu::UnicodeString(static_cast<UChar32>(c)), [&](std::uint32_t weight) {
            if (count == plain_[c].weights.size())
                throw std::logic_error("A character has more collation weights than its table entry holds");
            plain_[c].weights[count++] = weight;
        });
    }

    std::uint8_t Rank(char c) const { return plain_[static_cast<unsigned char>(c)].rank; }

    bool IsPlain(std::string_view text) const {
        for (const char c : text)
            if (Rank(c) == 0)
                return false;
        return true;
    }

    int CompareFully(std::string_view a, std::string_view b) const {
        UErrorCode status = U_ZERO_ERROR;
        const int result = collator_->compareUTF8(Piece(a), Piece(b), status);
        Check(status, "Texts can't be compared");
        return result;
    }

    template <typename Take>
    void EachWeight(const icu::UnicodeString& text, Take take) const {
        const std::unique_ptr<icu::CollationElementIterator> elements(
            rules_->createCollationElementIterator(text));
        UErrorCode status = U_ZERO_ERROR;
        for (std::int32_t order = elements->next(status); order != icu::CollationElementIterator::NULLORDER;
             order = elements->next(status)) {
            const std::int32_t primary = icu::CollationElementIterator::primaryOrder(order);
            if (primary != 0)
                take(static_cast<std::uint32_t>(primary));
        }
        Check(status, "A text's collation weights can't be read");
    }

    std::size_t HashFully(const icu::UnicodeString& text, std::size_t hash) const {
        EachWeight(text, [&](std::uint32_t weight) { hash = Mix(hash, weight); });
        return hash;
    }

    static constexpr unsigned char kFirst = 0x20;
    static constexpr unsigned char kLast = 0x7E;
    std::unique_ptr<icu::Collator> collator_;
    const icu::RuleBasedCollator* rules_ = nullptr;
    std::array<PlainCharacter, 256> plain_{};
};

}  // namespace

int CompareText(std::string_view a, std::string_view b) {
    return TextOrder::Instance().Compare(a, b);
}

std::size_t HashText(std::string_view text) {
    return TextOrder::Instance().Hash(text);
}

}  // namespace kv
