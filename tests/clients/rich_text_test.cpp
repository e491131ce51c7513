#include "clients/rtf/rich_text.h"

#include <random>

#include <gtest/gtest.h>

#include "clients/notes_text.h"
#include "datastore/engine_error.h"

namespace kv::rtf {
namespace {

using Characters = RichText::Characters;

/// Notes as other editors leave them: fonts, colours, a table, a picture, escapes of many kinds.
const std::string kForeign =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fnil\\fcharset0 Courier New;}{\\f1\\fcharset204 "
    "Arial;}}\r\n"
    "{\\colortbl ;\\red255\\green0\\blue0;}{\\*\\generator Other 1.0;}\\viewkind4\\uc1\\pard\\cf1\\f0\\fs20 "
    "Gate "
    "\\b code\\b0  4711\\par\r\n{\\f1\\'cf\\'f0\\'e8} \\u8364?\\u-10179?\\u-8704? caf\\'e9\\par\r\n"
    "{\\pict\\wmetafile8 0102}\\trowd\\cellx1000 Mon\\cell Tue\\cell\\row\\pard\r\n"
    "\\protect -------- Jan/05/2026  09:30 Am -------\\protect0\\par\r\ncalled\\par\r\n}\r\n\0";

std::string Words(const RichText& text) {
    return text.PlainText();
}

/// The characters with a word replaced, as the box hands them over.
Characters Edited(const RichText& text, const std::string& old, const std::string& fresh, Marks marks = {}) {
    const Characters shown = text.Shown();
    const std::u32string wanted = CodesOf(old);
    for (std::size_t at = 0; at + wanted.size() <= shown.size(); ++at) {
        bool found = true;
        for (std::size_t i = 0; i < wanted.size(); ++i)
            found = found && shown[at + i].code == wanted[i];
        if (!found)
            continue;
        Characters now(shown.begin(), shown.begin() + static_cast<std::ptrdiff_t>(at));
        for (const char32_t code : CodesOf(fresh))
            now.push_back({code, marks});
        now.insert(now.end(), shown.begin() + static_cast<std::ptrdiff_t>(at + wanted.size()), shown.end());
        return now;
    }
    ADD_FAILURE() << old << " is not shown";
    return shown;
}

TEST(RichText, KeepsEveryByteOfWhatNobodyEdited) {
    for (const std::string& source :
         {kForeign, std::string(), std::string("plain\r\ntext\n\xE9"), std::string("{\\rtf1}"),
          std::string("  {\\rtf1 a}}} b"), std::string("{\\rtf1 {\\b a"),
          std::string("{\\rtf1\\uc2 \\u1055\\'3f\\'3fx}"), std::string("{\\rtf1 a\\bin999999 b}"),
          std::string("{\\rtf1 \\u-10179?x\\'8}")}) {
        RichText text(source);
        EXPECT_EQ(text.Source(), source);
        EXPECT_TRUE(text.Update(text.Shown()));
        EXPECT_EQ(text.Source(), source);
    }
    const Characters shown = RichText(kForeign).Shown();
    EXPECT_TRUE(shown[5].marks.bold);
    EXPECT_FALSE(shown[10].marks.bold);
    EXPECT_EQ(RichText(kForeign).ProtectedTexts(),
              std::vector<std::string>{"-------- Jan/05/2026  09:30 Am -------"});
}

TEST(RichText, AnEditChangesOnlyWhatWasEdited) {
    struct Case {
        const char* old;
        const char* fresh;
        const char* sourceOld;
        const char* sourceFresh;
    };
    const Case cases[] = {
        {"4711", "08{15}\\", "4711\\par", "08\\{15\\}\\\\\\par"},
        {"called", "", "\r\ncalled\\par", "\r\n\\par"},
        {"При €", "При €!", "\\u8364?", "\\u8364?!"},
        {"café", "cafés", "caf\\'e9", "caf\\'e9s"},
        {"Mon", "Monday", "Mon\\cell", "Monday\\cell"},
    };
    for (const Case& each : cases) {
        RichText text(kForeign);
        const std::string words = Words(text);
        ASSERT_TRUE(text.Update(Edited(text, each.old, each.fresh)));
        std::string expected = kForeign;
        expected.replace(expected.find(each.sourceOld), std::string(each.sourceOld).size(), each.sourceFresh);
        EXPECT_EQ(text.Source(), expected);
        EXPECT_EQ(Words(RichText(text.Source())), Words(text)) << "it reads back as it was written";
    }
}

TEST(RichText, ControlWordsDoNotSwallowWhatFollows) {
    struct Case {
        const char* source;
        const char* old;
        const char* fresh;
    };
    const Case cases[] = {
        {"{\\rtf1 a\\par\\'e9b}", "\xC3\xA9", ""},         // \par and b
        {"{\\rtf1 a\\f0\\'e9 b}", "\xC3\xA9", ""},         // a blank behind a word
        {"{\\rtf1\\fs20\\'e95}", "\xC3\xA9", ""},          // a number and a digit
        {"{\\rtf1\\fs20\\'e9}", "\xC3\xA9", "7\xC3\xA9"},  // a digit put behind a number
        {"{\\rtf1\\uc0\\u8364{x}}", "x", "5x"},            // and inside a group
        {"{\\rtf1\\uc0\\u8364}", "\xE2\x82\xAC", "\xE2\x82\xAC 5"},
        {"{\\rtf1}", "", "first"},
        {"{\\rtf1\\b {\\i}}", "", "first"},
    };
    for (const Case& each : cases) {
        RichText text(each.source);
        Characters now = Edited(text, each.old, each.fresh);
        for (RichText::Character& character : now)
            character.marks = text.Shown().empty() ? Marks() : text.Shown().front().marks;
        ASSERT_TRUE(text.Update(now)) << each.source;
        EXPECT_EQ(Words(RichText(text.Source())), Words(text)) << each.source << " became " << text.Source();
    }
}

TEST(RichText, PlainNotesStayPlainUntilTheyAreMarked) {
    RichText text("Gate code {4711}\r\nsecond");
    ASSERT_TRUE(text.Update(Edited(text, "second", "2nd\nline")));
    EXPECT_EQ(text.Source(), "Gate code {4711}\r\n2nd\r\nline");
    Marks bold;
    bold.bold = true;
    ASSERT_TRUE(text.Update(Edited(text, "line", "line", bold)));
    EXPECT_TRUE(IsRichText(text.Source()));
    const RichText again(text.Source());
    EXPECT_EQ(Words(again), "Gate code {4711}\n2nd\nline");
    EXPECT_EQ(again.Shown(), text.Shown());
}

TEST(RichText, StampsCanNotBeEdited) {
    RichText text(kForeign);
    for (const auto& [old, fresh] : {std::pair("Jan/05", "Jan/06"), std::pair("09:30 Am", ""),
                                     std::pair("Jan/05", "Jan/x05"), std::pair("------- Jan", "Jan")}) {
        EXPECT_FALSE(text.Update(Edited(text, old, fresh))) << old;
        EXPECT_EQ(text.Source(), kForeign);
    }
    EXPECT_TRUE(text.Update(Edited(text, "called", "called back"))) << "around them it may";
    const Date now = Date::FromCivil(2026, 3, 4, 15, 5);
    text.Append(StampOf(text.Shown(), now));
    EXPECT_EQ(text.ProtectedTexts().back(), "-------- Mar/04/2026  03:05 PM -------");
    const RichText again(text.Source());
    EXPECT_EQ(again.ProtectedTexts(), text.ProtectedTexts());
    EXPECT_NE(text.Source().find("\\protect -------- Mar/04/2026  03:05 PM -------\\protect0 \\par "),
              std::string::npos);
    RichText empty;
    empty.Append(StampOf({}, now));
    EXPECT_EQ(Words(RichText(empty.Source())), "-------- Mar/04/2026  03:05 PM -------\n");
}

TEST(RichText, StampsThatWereRemovedOutsideStopASave) {
    EXPECT_NO_THROW(CheckStamps(kForeign, kForeign));
    RichText elsewhere(kForeign);
    elsewhere.Update(Edited(elsewhere, "called", "rang"));
    EXPECT_NO_THROW(CheckStamps(kForeign, elsewhere.Source()))
        << "the last writer wins where no stamp is at stake";
    for (const char* stored :
         {"{\\rtf1 called}", "", "{\\rtf1 \\protect -------- Jan/05/2026\\protect0\\par}"}) {
        try {
            CheckStamps(kForeign, stored);
            ADD_FAILURE() << stored;
        } catch (const EngineError& error) {
            EXPECT_EQ(error.Number(), 3426);
        }
    }
}

TEST(RichText, RandomEditsReadBackAsTheyWereMade) {
    std::mt19937 random(7);
    const std::u32string alphabet = CodesOf("ab 5{}\\\n\t-é€Ж😀");
    RichText text(kForeign);
    for (int step = 0; step < 400; ++step) {
        const Characters shown = text.Shown();
        const std::size_t from = random() % (shown.size() + 1);
        const std::size_t length = std::min<std::size_t>(random() % 4, shown.size() - from);
        Characters now(shown.begin(), shown.begin() + static_cast<std::ptrdiff_t>(from));
        for (std::size_t i = random() % 4; i > 0; --i) {
            Marks marks;
            marks.bold = random() % 4 == 0;
            marks.underline = random() % 5 == 0;
            now.push_back({alphabet[random() % alphabet.size()], marks});
        }
        now.insert(now.end(), shown.begin() + static_cast<std::ptrdiff_t>(from + length), shown.end());
        const std::string before = text.Source();
        if (!text.Update(now)) {
            ASSERT_EQ(text.Source(), before);
            continue;
        }
        const RichText again(text.Source());
        ASSERT_EQ(Words(again), Words(text)) << "step " << step << "\n" << before << "\n" << text.Source();
        for (std::size_t i = 0; i < now.size(); ++i)
            ASSERT_TRUE(now[i].code == U'\n' || again.Shown()[i] == now[i]) << "step " << step << " at " << i;
    }
    EXPECT_NE(text.Source().find("{\\pict\\wmetafile8 0102}"), std::string::npos);
}

}  // namespace
}  // namespace kv::rtf
