#include "exchange/jet_values.h"

#include <limits>

#include <gtest/gtest.h>

#include "base/numbers.h"
#include "support/jet_file.h"

namespace kv {
namespace {

using namespace std::string_literals;
using test::JetDouble;
using test::JetNumber;
using test::JetText;

TEST(JetValues, Texts) {
    struct Case {
        std::string bytes;
        std::optional<std::string> text;
    };
    const Case cases[] = {
        {"", ""},
        {JetText(u"O'Brien"), "O'Brien"},
        {JetText(u"Zo\u00EB \U0001F600"), "Zo\u00EB \U0001F600"},
        {JetText(u"ab\0\0"), "ab"},
        // One byte a character, two between the zeros.
        {"\xFF\xFE", ""},
        {"\xFF\xFEZo\xEB", "Zo\u00EB"},
        {"\xFF\xFE"s + "a\0"s + JetText(u"\u4E09") + "\0b"s, "a\u4E09b"},
        // Half a character, half a pair, a zero within.
        {"abc", std::nullopt},
        {"\xFF\xFE"s + "a\0\x09"s, std::nullopt},
        {JetNumber(0xD83D, 2) + JetText(u"a"), std::nullopt},
        {JetText(u"a") + JetNumber(0, 2) + JetText(u"b"), std::nullopt},
    };
    for (const Case& c : cases)
        EXPECT_EQ(jet::Text(c.bytes), c.text) << testing::PrintToString(c.bytes);
}

TEST(JetValues, MomentsBeforeTheFirstDayCountTheirTimeForwards) {
    const std::pair<double, const char*> cases[] = {
        {0, "1899-12-30 00:00:00"},
        {0.625, "1899-12-30 15:00:00"},
        {-0.25, "1899-12-30 06:00:00"},
        {-1, "1899-12-29 00:00:00"},
        {-1.25, "1899-12-29 06:00:00"},
        {2, "1900-01-01 00:00:00"},
        {-657434.5, "0100-01-01 12:00:00"},
        {46022.99999421296, "2025-12-31 23:59:59"},
        {46022.999999, "2026-01-01 00:00:00"},
    };
    for (const auto& [serial, iso] : cases) {
        const auto moment = jet::Moment(JetDouble(serial));
        ASSERT_TRUE(moment) << iso;
        EXPECT_EQ(IsoText(moment->ToDate()), iso);
    }
    // The last half second would be the next day's.
    for (const double none : {-657435.0, 2958466.0, 2958465.999999, std::numeric_limits<double>::quiet_NaN(),
                              std::numeric_limits<double>::infinity()})
        EXPECT_FALSE(jet::Moment(JetDouble(none))) << none;
    EXPECT_FALSE(jet::Moment("short"));
}

TEST(JetValues, Numbers) {
    const auto decimal = [](const std::string& sign, std::uint64_t high, std::uint64_t low) {
        return sign + JetNumber(0, 4) + JetNumber(high, 4) + JetNumber(low >> 32, 4) + JetNumber(low, 4);
    };
    const std::string plus = "\0"s;
    const std::string minus = "\x80";
    struct Case {
        std::optional<Value> read, value;
    };
    const auto money = [](std::int64_t units) { return Value(Currency::FromTenThousandths(units)); };
    const Case cases[] = {
        {jet::Whole("\xC8"), 200},
        {jet::Whole("\xFB\xFF"), -5},
        {jet::Whole(JetNumber(0x80000000, 4)), -2147483647 - 1},
        {jet::Whole("abc"), std::nullopt},
        {jet::Money(JetNumber(static_cast<std::uint64_t>(-1), 8)), money(-1)},
        {jet::Money(JetNumber(9223372036854775807, 8)), money(9223372036854775807)},
        {jet::Floating(JetNumber(0x3DCCCCCD, 4)), 0.1},
        {jet::Floating(JetDouble(1.0 / 3)), 1.0 / 3},
        {jet::Floating(JetNumber(0x7F800000, 4)), std::nullopt},
        {jet::Decimal(decimal(minus, 0, 1250), 2, ValueType::Currency), money(-125000)},
        {jet::Decimal(decimal(plus, 0, 7), 0, ValueType::Currency), money(70000)},
        {jet::Decimal(decimal(plus, 1, 0), 0, ValueType::Currency), std::nullopt},
        {jet::Decimal(decimal(plus, 0, 5), 6, ValueType::Double), 0.000005},
        {jet::Decimal(decimal(minus, 1, 0), 5, ValueType::Text), "-184467440737095.51616"},
        {jet::Decimal(decimal(plus, 0, 0), 2, ValueType::Text), "0.00"},
        {jet::Decimal("short", 2, ValueType::Text), std::nullopt},
        {jet::Guid("\x33\x22\x11\x00\x55\x44\x77\x66\x88\x99\xAA\xBB\xCC\xDD\xEE\xFF"s),
         "{00112233-4455-6677-8899-AABBCCDDEEFF}"},
    };
    int number = 0;
    for (const Case& c : cases)
        EXPECT_TRUE(c.read == c.value)
            << "case " << number++ << ": " << (c.read ? c.read->ToText() : "nothing");
}

}  // namespace
}  // namespace kv
