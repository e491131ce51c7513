#include "base/format.h"

#include <string>

#include <gmock/gmock.h>

#include "base/numbers.h"

namespace kv {
namespace {

TEST(Format, Dates) {
    const Date afternoon = Date::FromCivil(2026, 1, 31, 15, 5, 9);
    const Date midnight = Date::FromCivil(2026, 3, 4);
    const Date noon = Date::FromCivil(2026, 3, 4, 12, 0);
    struct Case {
        Date date;
        std::string_view pattern, text;
    };
    const Case cases[] = {
        {afternoon, "MM/DD/YYYY", "01/31/2026"},
        {afternoon, "mm/dd/yyyy", "01/31/2026"},
        {afternoon, "MMM/DD/YY", "Jan/31/26"},
        {afternoon, "MMM/DD/YYYY HH:NN", "Jan/31/2026 15:05"},
        {afternoon, "YYYY/MM/DD HH:MM", "2026/01/31 15:05"},
        {afternoon, "MMM/DD/YYYY  HH:NN Am/PM", "Jan/31/2026  03:05 PM"},
        {afternoon, "HH:MM:SS AM/PM", "03:05:09 PM"},
        {afternoon, "HH:MM Am/Pm", "03:05 PM"},
        {afternoon, "hh:mm am/pm", "03:05 pm"},
        {afternoon, "H AM/PM", "3 PM"},
        {afternoon, "hhmm", "1505"},
        {afternoon, "YYYYMMDD", "20260131"},
        {afternoon, "YYYYMMDDHHNNSS", "20260131150509"},
        {afternoon, "nn", "05"},
        {afternoon, "h:m:s", "15:5:9"},
        {afternoon, "HH:MM MM", "15:05 01"},
        {afternoon, "ddd", "Sat"},
        {afternoon, "DDDD", "Saturday"},
        {afternoon, "MMMM D", "January 31"},
        {afternoon, "Medium Date", "31-Jan-26"},
        {afternoon, "medium time", "03:05 PM"},
        {afternoon, "Short Date", "1/31/2026"},
        {midnight, "HH:MM AM/PM", "12:00 AM"},
        {midnight, "HH:MM", "00:00"},
        {noon, "HH:MM AM/PM", "12:00 PM"},
        {noon, "d.m.yy", "4.3.26"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(FormatDate(c.date, c.pattern), c.text) << c.pattern;
}

TEST(Format, Numbers) {
    struct Case {
        double number = 0;
        std::string_view pattern, text;
    };
    const Case cases[] = {
        {1234567.891, "##,##0.00", "1,234,567.89"},
        {0, "##,##0.00", "0.00"},
        {999, "##,##0", "999"},
        {1000, "##,##0", "1,000"},
        {-1234.5, "#,##0.00", "-1,234.50"},
        {1234.5, "$ ##,##0.00", "$ 1,234.50"},
        {1234.5, "$###,##0.00", "$1,234.50"},
        {-5, "$##0.00", "-$5.00"},
        {12.5, "##0.##", "12.5"},
        {12, "##0.##", "12"},
        {12.345, "##0.##", "12.35"},
        {5, "##,000", "005"},
        {1234, "##,000", "1,234"},
        {7.5, "00.00", "07.50"},
        {0.5, "###.00", ".50"},
        {7, "000", "007"},
        {12345, "000", "12345"},
        {33.3333, "##0.000 %", "33.333 %"},
        {0.25, "0%", "25%"},
        {0.5, "0", "1"},
        {-0.5, "0", "-1"},
        {1.005, "0.00", "1.01"},
        {2.675, "0.00", "2.68"},
        {-0.004, "0.00", "0.00"},
        {123456789, "000-00-0000", "123-45-6789"},
        {0, "#", ""},
        {3, "hrs", "hrs"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(FormatNumber(c.number, c.pattern), c.text) << c.number << " by " << c.pattern;
}

TEST(Format, TextsAndPhones) {
    EXPECT_EQ(FormatText("7185551234", "(###) ###-####"), "(718) 555-1234");
    EXPECT_EQ(FormatText("5551234", "(###) ###-####"), "(   ) 555-1234");
    EXPECT_EQ(FormatText("17185551234", "(###) ###-####"), "(1718) 555-1234");
    EXPECT_EQ(FormatText("", "(###) ###-####"), "");
    EXPECT_EQ(FormatText("ab\xC3\xA9", "#-#-#"), "a-b-\xC3\xA9");
    EXPECT_EQ(FormatText("o\xC3\xA9", ">"), "O\xC3\x89");
    EXPECT_EQ(FormatPhone("718.555.1234"), "(718) 555-1234");
    EXPECT_EQ(FormatPhone("none"), "");
}

TEST(Numbers, ValReadsTheFront) {
    struct Case {
        std::string_view text;
        double number = 0;
    };
    const Case cases[] = {{"12abc", 12},     {".5", 0.5}, {"", 0},       {" 1 615 198th", 1615198},
                          {"-3.25x", -3.25}, {"abc", 0},  {"1,234", 1},  {"1.2.3", 1.2},
                          {"-", 0},          {"inf", 0},  {"1e3", 1000}, {"+7", 7}};
    for (const Case& c : cases)
        EXPECT_EQ(Val(c.text), c.number) << c.text;
}

TEST(Numbers, WholeTextsParse) {
    using testing::Optional;
    EXPECT_THAT(ParseNumber(" $ 1,234.50 "), Optional(1234.5));
    EXPECT_THAT(ParseNumber("-$5"), Optional(-5.0));
    EXPECT_THAT(ParseNumber(".5"), Optional(0.5));
    EXPECT_THAT(ParseNumber("1e-05"), Optional(1e-5));
    EXPECT_THAT(ParseInteger("-1,200"), Optional(-1200));
    EXPECT_THAT(ParseInteger("9223372036854775807"), Optional(INT64_MAX));
    for (const char* text :
         {"", " ", "12abc", "1.2.3", "--1", "$$1", "1,2.3,4", ",5", "nan", "inf", "0x10", "- -1", "1 2"})
        EXPECT_EQ(ParseNumber(text), std::nullopt) << text;
    for (const char* text : {"", "1.0", "9223372036854775808", "1e3", "abc"})
        EXPECT_EQ(ParseInteger(text), std::nullopt) << text;
}

TEST(Numbers, TextsReadBackAsTheSameNumber) {
    EXPECT_EQ(NumberText(12), "12");
    EXPECT_EQ(NumberText(-0.0), "0");
    EXPECT_EQ(NumberText(61.5), "61.5");
    EXPECT_EQ(NumberText(123456789), "123456789");
    for (const double number : {0.1, 1.0 / 3, -2.5e-9, 1e300, 37.45})
        EXPECT_EQ(ParseNumber(NumberText(number)), number);
}

TEST(Numbers, RoundingGoesAwayFromZeroOnDecimals) {
    EXPECT_EQ(RoundTo(2.345, 2), 2.35);
    EXPECT_EQ(RoundTo(-2.345, 2), -2.35);
    EXPECT_EQ(RoundTo(1.1 + 2.2, 2), 3.3);
    EXPECT_EQ(RoundTo(1250, -2), 1300);
    EXPECT_EQ(RoundTo(0.49999999999999, 0), 0);
}

TEST(Numbers, DatesParse) {
    struct Case {
        std::string_view text, iso;
    };
    const Case cases[] = {
        {"01/31/2026", "2026-01-31 00:00:00"},
        {"1/31/2026 3:05:09 PM", "2026-01-31 15:05:09"},
        {"2026/01/31", "2026-01-31 00:00:00"},
        {" 2026-01-31 15:05 ", "2026-01-31 15:05:00"},
        {"Jan/31/2026  12:00 am", "2026-01-31 00:00:00"},
        {"JAN/31/2026", "2026-01-31 00:00:00"},
        {"15:05", "1899-12-30 15:05:00"},
        {"3:05PM", "1899-12-30 15:05:00"},
        {"1901/01/01", "1901-01-01 00:00:00"},
    };
    for (const Case& c : cases) {
        const auto date = ParseDate(c.text);
        ASSERT_TRUE(date) << c.text;
        EXPECT_EQ(IsoText(*date), c.iso) << c.text;
    }
    for (const char* text :
         {"", "__/__/____", "02/29/2026", "2026-13-01", "13/01/2026", "31/01/2026", "01/31/26", "24:00",
          "12:60", "13:00 PM", "0:30 AM", "2026-01-31T15:05", "2026-01-31 ", "2026-01-31 x", "Foo/31/2026",
          "2026-01/31", "12", "1:5", "2026-01-31 15:05:09.5"}) {
        const bool blankBehindIsFine = std::string_view(text) == "2026-01-31 ";
        EXPECT_EQ(ParseDate(text).has_value(), blankBehindIsFine) << text;
    }
}

}  // namespace
}  // namespace kv
