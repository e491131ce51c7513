#include "base/text.h"

#include <memory>
#include <random>

#include <gmock/gmock.h>
#include <unicode/coll.h>

namespace kv {
namespace {

using testing::ElementsAre;

TEST(Text, CaseAndSearch) {
    EXPECT_EQ(Upper("Zo\xC3\xAB stra\xC3\x9F"
                    "e"),
              "ZO\xC3\x8B STRASSE");
    EXPECT_EQ(Lower("\xC3\x89"
                    "ABC"),
              "\xC3\xA9"
              "abc");
    EXPECT_TRUE(EqualsNoCase("\xC3\x89t\xC3\xA9", "\xC3\xA9T\xC3\x89"));
    EXPECT_FALSE(EqualsNoCase("abc", "abcd"));
    EXPECT_TRUE(StartsWithNoCase("CLIENT", "cli"));
    EXPECT_FALSE(StartsWithNoCase("CL", "cli"));
    EXPECT_TRUE(
        StartsWithNoCase("\xC3\x89"
                         "A",
                         "\xC3\xA9"));
    EXPECT_TRUE(ContainsNoCase("|CLIE|clid|", "CLID"));
    EXPECT_TRUE(ContainsNoCase("x", ""));
    EXPECT_FALSE(ContainsNoCase("", ""));
    EXPECT_FALSE(ContainsNoCase("", "x"));
}

TEST(Text, PiecesAreCharactersNotBytes) {
    const std::string name = "Zo\xC3\xABy";
    EXPECT_EQ(Left(name, 3), "Zo\xC3\xAB");
    EXPECT_EQ(Right(name, 2), "\xC3\xABy");
    EXPECT_EQ(Right(name, 9), name);
    EXPECT_EQ(Mid(name, 3, 1), "\xC3\xAB");
    EXPECT_EQ(Mid(name, 4), "y");
    EXPECT_EQ(Mid(name, 9), "");
    EXPECT_EQ(Length(name), 4U);
    EXPECT_EQ(PadLeftToWidth(" \xC3\xAB ", 3), "  \xC3\xAB");
    EXPECT_EQ(PadLeftToWidth("abcdef", 3), "abc");
    EXPECT_EQ(PadRightToWidth("7", 3, true), "700");
    EXPECT_EQ(PadRightToWidth(" ab", 4), "ab  ");
    EXPECT_EQ(Trim("  a b "), "a b");
    EXPECT_EQ(Trim("   "), "");
}

TEST(Text, ListsAndReplacing) {
    EXPECT_THAT(Split("a~~b~", '~'), ElementsAre("a", "", "b", ""));
    EXPECT_THAT(Split("", '~'), ElementsAre(""));
    EXPECT_EQ(Join({"a", "", "b"}, ", "), "a, , b");
    EXPECT_EQ(ReplaceAll("aaa", "aa", "b"), "ba");
    EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(DigitsOf("(718) 555-1234 x9"), "71855512349");
}

TEST(Text, BytesOfOldFilesBecomeUtf8) {
    EXPECT_EQ(ToUtf8("Zo\xC3\xAB"), "Zo\xC3\xAB");
    EXPECT_EQ(ToUtf8("Zo\xEB \x80 \x81"), "Zo\xC3\xAB \xE2\x82\xAC \xC2\x81");
    EXPECT_EQ(ToUtf8("\xC3\xAB\xEB"), "\xC3\xAB\xC3\xAB");
    EXPECT_EQ(ToUtf8("\xC3"), "\xC3\x83");
    EXPECT_EQ(ToUtf8("\xE2\x82"), "\xC3\xA2\xE2\x80\x9A");
    EXPECT_EQ(ToUtf8("\xC0\xAF"), "\xC3\x80\xC2\xAF");
}

int Sign(int number) {
    return (number > 0) - (number < 0);
}

/// The collation asked directly, without the tables of the fast path.
int AskCollator(const std::string& a, const std::string& b) {
    static const std::unique_ptr<icu::Collator> collator = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::Collator> made(icu::Collator::createInstance(icu::Locale::getRoot(), status));
        made->setStrength(icu::Collator::SECONDARY);
        return made;
    }();
    UErrorCode status = U_ZERO_ERROR;
    return collator->compareUTF8(a, b, status);
}

TEST(Text, OrderIsTheCollationsOnBothPaths) {
    const std::vector<std::string> pieces = {" ",
                                             "-",
                                             "'",
                                             "_",
                                             "~",
                                             "0",
                                             "9",
                                             "a",
                                             "A",
                                             "b",
                                             "B",
                                             "z",
                                             "Z",
                                             ".",
                                             "\xC3\xA9",
                                             "e\xCC\x81",
                                             "\xC3\x89",
                                             "\xEF\xBC\xA1",
                                             "\xE2\x84\xAA",
                                             "\xC3\x9F",
                                             "ss",
                                             "\x01",
                                             "\n",
                                             "l",
                                             "\xC2\xB7",
                                             "e"};
    std::mt19937 random(7);
    const auto text = [&] {
        std::string made;
        for (std::size_t length = random() % 6; length > 0; --length)
            made += pieces[random() % pieces.size()];
        return made;
    };
    int equal = 0;
    for (int i = 0; i < 20000; ++i) {
        const std::string a = text();
        const std::string b = i % 3 == 0 ? Upper(a) : text();
        ASSERT_EQ(Sign(CompareText(a, b)), Sign(AskCollator(a, b))) << a << " and " << b;
        if (CompareText(a, b) == 0) {
            ++equal;
            ASSERT_EQ(HashText(a), HashText(b)) << a << " and " << b;
        }
    }
    EXPECT_GT(equal, 3000);
}

TEST(Text, EqualTextsOfDifferentScriptsHashAlike) {
    const std::pair<const char*, const char*> equals[] = {{"Abc",
                                                           "\xEF\xBC\xA1"
                                                           "bc"},
                                                          {"kelvin",
                                                           "\xE2\x84\xAA"
                                                           "elvin"},
                                                          {"ab",
                                                           "a\x01"
                                                           "b"},
                                                          {"SMITH", "smith"}};
    for (const auto& [a, b] : equals) {
        EXPECT_EQ(CompareText(a, b), 0) << a << " and " << b;
        EXPECT_EQ(HashText(a), HashText(b)) << a << " and " << b;
    }
    EXPECT_NE(CompareText("resume", "r\xC3\xA9sum\xC3\xA9"), 0);
    EXPECT_NE(HashText("smith"), HashText("smyth"));
    EXPECT_LT(CompareText("smith", "smith "), 0);
    EXPECT_LT(CompareText("O'Brien", "Obrien"), 0);
}

}  // namespace
}  // namespace kv
