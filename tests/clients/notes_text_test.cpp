#include "clients/notes_text.h"

#include <gtest/gtest.h>

namespace kv {
namespace {

struct Case {
    const char* what;
    std::string comments;
    std::string text;
};

TEST(NotesText, ReadsRichTextAsPlainText) {
    const std::vector<Case> cases = {
        {"empty", "", ""},
        {"plain text passes through", "Gate code {4711}\r\nC:\\keys", "Gate code {4711}\r\nC:\\keys"},
        {"a head and nothing", "{\\rtf1}", ""},
        {"formatting words vanish", "{\\rtf1\\ansi\\deff0 \\b Bold\\b0  plain}", "Bold plain"},
        {"lines and tabs", "{\\rtf1 a\\par b\\line c\\tab d}", "a\nb\nc\td"},
        {"line ends of the file are none of the text", "{\\rtf1 a\r\nb\n}", "ab"},
        {"a backslash before a line end is a paragraph", "{\\rtf1 a\\\r\nb}", "a\nb"},
        {"escaped marks", "{\\rtf1 \\{a\\} C:\\\\x}", "{a} C:\\x"},
        {"fixed blanks and hyphens", "{\\rtf1 a\\~b\\-c\\_d}", "a bc-d"},
        {"tables of the document are passed over",
         "{\\rtf1{\\fonttbl{\\f0\\fnil Arial;}}{\\colortbl;\\red0;}{\\stylesheet{\\s0 Normal;}}"
         "{\\info{\\author Doe}}{\\*\\generator Msftedit;}{\\pict\\wmetafile8 0102}seen}",
         "seen"},
        {"protected stamps are text like any other",
         "{\\rtf1 \\protect -------- Jan/05/2026\\protect0\\par done}", "-------- Jan/05/2026\ndone"},
        {"western bytes", "{\\rtf1\\ansi\\ansicpg1252 caf\\'e9 \\'80}", "café €"},
        {"another code page", "{\\rtf1\\ansi\\ansicpg1251 \\'cf\\'f0\\'e8}", "При"},
        {"the font's code page goes before the document's",
         "{\\rtf1\\ansi\\ansicpg1252{\\fonttbl{\\f0 A;}{\\f1\\fcharset204 B;}}\\f1 \\'cf{\\f0 \\'e9}\\'f0}",
         "Пéр"},
        {"a code page of double bytes", "{\\rtf1\\ansi\\ansicpg932 \\'83\\'41\\'83A}", "アア"},
        {"an unknown code page reads as western", "{\\rtf1\\ansicpg4711 \\'e9}", "é"},
        {"a Unicode character and its stand-in", "{\\rtf1 \\u8364?x}", "€x"},
        {"a negative number", "{\\rtf1 \\u-10179?\\u-8704?x}", "😀x"},
        {"a byte is one stand-in", "{\\rtf1\\uc2 \\u1055\\'3f\\'3fx}", "Пx"},
        {"no stand-in", "{\\rtf1\\uc0 \\u8364x}", "€x"},
        {"the number of stand-ins ends with its group", "{\\rtf1{\\uc0 \\u8364}\\u8364?x}", "€€x"},
        {"a word is no stand-in", "{\\rtf1 \\u8364\\par x}", "€\nx"},
        {"half a pair", "{\\rtf1 \\u-10179?x}", "\xEF\xBF\xBDx"},
        {"binary data", "{\\rtf1 a{\\*\\x\\bin3 }}}}b}", "ab"},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(NotesText(each.comments), each.text) << each.what;
    }
}

TEST(NotesText, ReadsOnInDamagedText) {
    const std::vector<Case> cases = {
        {"no end", "{\\rtf1 {\\b a", "a"},
        {"too many ends", "{\\rtf1 a}}} b", "a"},
        {"a lone backslash", "{\\rtf1 a\\", "a"},
        {"half a byte at the end", "{\\rtf1 a\\'4", "a4"},
        {"no byte at all", "{\\rtf1 a\\'zzb}", "azzb"},
        {"a number beyond all bounds", "{\\rtf1\\fs99999999999999999999 a\\u99999999999999999999?b}", "ab"},
        {"more binary data than there is", "{\\rtf1 a\\bin999999 b}", "a"},
        {"binary data of a negative length", "{\\rtf1 a\\bin-5 b}", "ab"},
        {"UTF-8 that no writer should have left", "{\\rtf1 é}", "é"},
        {"a zero character", std::string("{\\rtf1 a\0b}", 11), "ab"},
        {"half a double byte", "{\\rtf1\\ansicpg932 a\\'83}", "a\xEF\xBF\xBD"},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(NotesText(each.comments), each.text) << each.what;
    }
    const std::string deep = "{\\rtf1 " + std::string(100000, '{') + "a";
    EXPECT_EQ(NotesText(deep), "a");
}

TEST(NotesMerge, WhatBothSeatsWroteStands) {
    struct Case {
        const char* old;
        const char* mine;
        const char* theirs;
        const char* merged;
    };
    const Case cases[] = {
        {"", "mine", "theirs", "minetheirs"},
        {"One.", "One. Mine.", "One. Theirs.", "One. Mine. Theirs."},
        {"One.", "Zero. One.", "One. Theirs.", "Zero. One. Theirs."},
        {"One two.", "One.", "One two. Theirs.", "One. Theirs."},  // a removal here
        {"One two.", "One too.", "All new.", "All new.\r\no"},     // nowhere to put it: at the end
        {"One two.", "One.", "All new.", "All new."},              // nothing to remove there
        {"One.", "One.", "Theirs.", "Theirs."},
        {"One.", "One. Mine.", "One.", "One. Mine."},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(MergeNotes(each.old, each.mine, each.theirs), each.merged)
            << each.old << " / " << each.mine << " / " << each.theirs;
    }
    const std::string stamped = R"({\rtf1 A\protect -S-\protect0 B})";
    const std::string more = R"({\rtf1 A\protect -S-\protect0 B\protect -T-\protect0 })";
    EXPECT_TRUE(KeepsStamps(stamped, more));
    EXPECT_FALSE(KeepsStamps(more, stamped));
    EXPECT_FALSE(KeepsStamps(stamped, "A-S-B"));
    EXPECT_EQ(NotesText(MergeNotes(stamped, R"({\rtf1 A\protect -S-\protect0 Bye})", more)), "A-S-Bye-T-");
}

}  // namespace
}  // namespace kv
