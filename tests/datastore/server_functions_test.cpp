// The functions of a server database answer as the program's own do.
#include <cmath>
#include <random>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <libpq-fe.h>

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "datastore/convert.h"
#include "datastore/like_pattern.h"
#include "datastore/server_comparison.h"
#include "support/test_server.h"

namespace kv {

/// Made by the build from data/server.
const char* EmbeddedText(std::string_view name);

}  // namespace kv

namespace kv::test {
namespace {

class ServerFunctionsTest : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        TestServer& server = TestServer::Get();
        name_ = server.FreshName();
        server.MakeDatabase(name_);
        connection_ = PQconnectdb(server.Connection(name_).c_str());
        ASSERT_EQ(PQstatus(connection_), CONNECTION_OK) << PQerrorMessage(connection_);
        // As the store does it: everything at once, by a role of no special rights.
        Execute("CREATE ROLE keeper; CREATE SCHEMA kv AUTHORIZATION keeper; SET ROLE keeper");
        Execute(std::string("BEGIN; ") + EmbeddedText("functions.sql") + "; COMMIT; RESET ROLE");
        Execute(Comparison::kAttempt);
    }
    static void TearDownTestSuite() {
        PQfinish(connection_);
        TestServer::Get().DropDatabase(name_);
    }
    static void Execute(const std::string& statements) {
        const Result result(PQexec(connection_, statements.c_str()), PQclear);
        ASSERT_EQ(PQresultStatus(result.get()), PGRES_COMMAND_OK) << PQerrorMessage(connection_);
    }
    void TearDown() override { comparison.Run(connection_); }

    double Between(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random_);
    }
    int Whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
    std::string_view OneOf(const std::vector<std::string>& list) {
        return list[static_cast<std::size_t>(Whole(0, static_cast<int>(list.size()) - 1))];
    }
    /// Up to so many of the pieces, one behind the other.
    std::string Row(const std::vector<std::string>& pieces, int most) {
        std::string row;
        for (int left = Whole(0, most); left > 0; --left)
            row += OneOf(pieces);
        return row;
    }
    std::vector<double> Serials();
    std::vector<double> Numbers();

    Comparison comparison;
    static PGconn* connection_;
    static std::string name_;

  private:
    std::mt19937 random_{20260131};
};

PGconn* ServerFunctionsTest::connection_ = nullptr;
std::string ServerFunctionsTest::name_;

/// Moments at all kinds of edges. The server's calendar ends with the years 1 and 9999.
std::vector<double> ServerFunctionsTest::Serials() {
    constexpr double kSecond = 1.0 / 86400;
    std::vector<double> serials = {0,        0.5,      -0.5,      1,           -1,
                                   0.999999, 0.99999,  -0.000001, -0.99999,    0.5 * kSecond,
                                   59,       60.25,    -693593,   2958465,     2958465.9999,
                                   45000.75, 45000.04, 1e-9,      -1e-9,       -kSecond,
                                   -1.25,    366.5,    367,       36585.99999, -0.5 * kSecond};
    for (const int second : {0, 1, 43199, 43200, 46800, 86399})
        for (const double shift : {-0.5, -0.4999, 0.0, 0.4999, 0.5})
            for (const double day : {-2.0, 0.0, 45716.0})
                serials.push_back(day + (second + shift) * kSecond);
    for (int i = 0; i < 100; ++i) {
        serials.push_back(Between(-690000, 2950000));
        serials.push_back(Whole(30000, 60000) + Whole(0, 86399) * kSecond);
    }
    return serials;
}

/// Numbers with halves at every decimal.
std::vector<double> ServerFunctionsTest::Numbers() {
    std::vector<double> numbers = {
        0,       -0.0,     1,       -1,      0.5,    1.5,      2.5,     -0.5,
        -2.5,    0.005,    1.005,   -1.005,  0.0049, 999.995,  1000,    1234567.891,
        0.00005, -0.00005, 2.675,   1e-7,    0.1,    99999.5,  -999999, 123456789012.0,
        32767.5, -32768.5, 32766.5, 1.0 / 3, 1e10,   0.000049, 70000,   2147483647.5};
    for (int i = 0; i < 150; ++i) {
        numbers.push_back(Whole(-2000000, 2000000) / 1000.0);
        numbers.push_back(Between(-1, 1) * std::pow(10.0, Whole(-6, 11)));
    }
    return numbers;
}

TEST_F(ServerFunctionsTest, SerialsAndMoments) {
    for (const double serial : Serials()) {
        const Date date(serial);
        const double stored = StoredSerial(date);
        comparison.Add("kv.moment(" + Number(serial) + ")", IsoText(date));
        comparison.AddBits("kv.serial(" + Moment(date) + ")", stored);
        comparison.AddBits("kv.serial(kv.fit_date(" + Number(serial) + "))", stored);
        const CivilDate day = date.Civil();
        comparison.Add(
            fmt::format("(kv.year({0}), kv.month({0}), kv.day({0}), kv.weekday({0}))", Number(serial)),
            fmt::format("({},{},{},{})", day.year, day.month, day.day, date.Weekday()));
    }
    comparison.Add("kv.moment(-1e9)", "0001-01-01 00:00:00");
    comparison.Add("kv.moment(2958465.999999)", "9999-12-31 23:59:59");
    comparison.Add("kv.moment('infinity')", "9999-12-31 23:59:59");
    for (const char* function : {"kv.moment", "kv.year", "kv.weekday", "kv.fit_date", "kv.date_text"})
        comparison.Add(fmt::format("{}(NULL::float8)", function), "<Null>");
}

TEST_F(ServerFunctionsTest, DaysOfTheCalendarCarryOver) {
    for (int i = 0; i < 200; ++i) {
        const int year = Whole(100, 9999);
        const int month = Whole(-30, 40);
        const int day = Whole(-400, 800);
        comparison.AddBits(fmt::format("kv.date_serial({}, {}, {})", year, month, day),
                           Date::FromCivil(year, month, day).Serial());
    }
    comparison.AddBits("kv.date_serial(2024.9, 2.9, 29.9)", Date::FromCivil(2024, 2, 29).Serial());
    comparison.Add("kv.date_serial(2024, NULL, 1)", "<Null>");
}

TEST_F(ServerFunctionsTest, FormatsOfDates) {
    const std::vector<std::string> patterns = {"MM/DD/YYYY",       "M/D/YY",       "medium date",
                                               "Medium Time",      "SHORT DATE",   "HH:MM:SS",
                                               "h:m:s am/pm",      "HH:NN AM/PM",  "",
                                               "mmddyyyy",         "DDDD, MMMM D", "ddd mmm yyy y",
                                               "MM HH MM",         "hmm",          "hhh nnnn sss",
                                               "DDDDDD",           "MMMMMM",       "x\"y\\z'q",
                                               "Ärger \"dd\" TMx", "FMDDth",       "hh am/pmam/pm"};
    const std::vector<std::string> pieces = {"d", "D", "m", "M", "y", "h",  "H", "n",  "s",     ":",
                                             "/", "-", " ", "q", "a", "th", "T", "FM", "AM/PM", "am/PM"};
    const std::vector<double> serials = Serials();
    for (std::size_t i = 0; i < serials.size(); ++i) {
        const Date date(serials[i]);
        for (const std::string& pattern : {patterns[i % patterns.size()], Row(pieces, 8)})
            comparison.Add(fmt::format("kv.format_date({}, {})", Number(serials[i]), Text(pattern)),
                           FormatDate(date, pattern));
        comparison.Add("kv.date_text(" + Number(serials[i]) + ")", Value(date).ToText());
    }
    for (const std::string& pattern : patterns)
        comparison.Add(fmt::format("kv.format_date(45000.54321, {})", Text(pattern)),
                       FormatDate(Date(45000.54321), pattern));
    comparison.Add("kv.format_date(NULL, 'MM')", "");
    comparison.Add("kv.format_date(1, NULL)", "");
}

TEST_F(ServerFunctionsTest, FormatsOfNumbers) {
    const std::vector<std::string> patterns = {
        "##,##0.00", "000",   "0",           "#",   "0.##",      "#.##",      "$#,##0.00",
        "0%",        "0.0 %", "000-00-0000", ".00", "##0.0#0",   "abc",       "",
        ".",         "a.b",   "0.",          "#,#", "(0) x 0.0", "0,000,000", "0#",
        "#0#",       "%0",    "0 a %",       "0a%", "00:00",     "Ä0é0.0ö",   ",0,.0"};
    const std::vector<std::string> pieces = {"0", "#", ",", ".", "%", " ", "$", "-", "0", "#", "x"};
    const std::vector<double> numbers = Numbers();
    // Where a pattern asks for more than the fifteen digits that a double surely holds, the program shows
    // what happens to stand in the double behind them, and the server noughts: those are left out.
    constexpr double kMostForNinePlaces = 1e5;
    for (std::size_t i = 0; i < numbers.size(); ++i)
        for (const std::string& pattern :
             {patterns[i % patterns.size()], patterns[(7 * i + 3) % patterns.size()],
              std::fabs(numbers[i]) < kMostForNinePlaces ? Row(pieces, 9) : std::string("#,###")})
            comparison.Add(fmt::format("kv.format_number({}, {})", Number(numbers[i]), Text(pattern)),
                           FormatNumber(numbers[i], pattern));
    comparison.Add("kv.format_number(NULL, '0')", "");
    comparison.Add("kv.format_number(1, NULL)", "");
}

TEST_F(ServerFunctionsTest, FormatsAndPiecesOfTexts) {
    const std::vector<std::string> letters = {"a", "B", "1", "2", "ä", "É", "ß", "Ω", " ", "日", "'", "#"};
    const std::vector<std::string> places = {"#", "#", "#", "-", "(", ")", " ", "ü", ">"};
    for (int i = 0; i < 150; ++i) {
        const std::string text = Row(letters, 12);
        const std::string pattern = i % 3 == 0 ? "(###) ###-####" : Row(places, 14);
        const int count = Whole(-2, 14);
        comparison.Add(fmt::format("kv.format_text({}, {})", Text(text), Text(pattern)),
                       FormatText(text, pattern));
        comparison.Add(fmt::format("kv.right_text({}, {})", Text(text), count),
                       Right(text, static_cast<std::size_t>(std::max(count, 0))));
        comparison.Add("kv.ucase(" + Text(text) + ")", Upper(text));
        comparison.Add("kv.lcase(" + Text(text) + ")", Lower(text));
    }
    comparison.Add("kv.format_text(" + Text("straße") + ", '>')", Upper("straße"));
    comparison.Add("kv.format_text(NULL, '>')", "");
    comparison.Add("kv.format_text(" + Text("ab") + ", NULL)", "ab");
    comparison.Add("kv.right_text(" + Text("abc") + ", 2.9)", "bc");
    comparison.Add("kv.right_text(" + Text("abc") + ", 1e300)", "abc");
    comparison.Add("kv.right_text(NULL, 0)", "<Null>");
    comparison.Add("kv.right_text('abc', NULL)", "<Null>");
}

TEST_F(ServerFunctionsTest, NumbersAndTheirTexts) {
    std::vector<double> numbers = Numbers();
    for (const double huge : {1e15, 1234567890123456.0, 9999999999999998.0, 1e16, 1.5e22, 1e100, 1e-5, 9.2e18,
                              -9.3e18, 9.1e18, 1e300, 5e-310})
        numbers.push_back(huge);
    for (const double number : numbers) {
        comparison.Add("kv.number_text(" + Number(number) + ")", NumberText(number));
        comparison.Add("kv.round_even(" + Number(number) + ")",
                       Answer([&] { return std::to_string(Value(number).ToInteger()); }));
    }
    comparison.Add("kv.round_even('nan')", "KV421");
    std::vector<std::string> texts = {
        "",      "12abc",  ".5",     "-.5e2x", "1e5",   "1e",     "1.e2",     "+3",    "- 3",
        "$ 5",   "-$5",    "$-5",    "$$5",    "--5",   "1,234",  ",1",       "1,,2",  "1.2,3",
        "1e,5",  "1 2",    "  7  ",  "\t7",    "inf",   "nan",    "0x10",     "1.2.3", ".",
        "-",     "$",      "1e400",  "1e-400", "1e308", "1e5000", "00012",    "1e+05", "٣",
        "1.5e3", "12,345", "$1,2.5", "+ $ 4",  "-0",    "1-",     "0.1e0001", "5\n",   "é"};
    const std::vector<std::string> pieces = {"1", "2", "0", ".", ",", "-", "+", "$", " ", "e", "9", "E"};
    for (int i = 0; i < 300; ++i)
        texts.push_back(Row(pieces, 7));
    for (const std::string& text : texts) {
        comparison.AddBits("kv.val(" + Text(text) + ")", Val(text));
        comparison.Add(BitsOf("kv.to_number(" + Text(text) + ")"),
                       Answer([&] { return Bits(Value(text).ToDouble()); }));
    }
}

TEST_F(ServerFunctionsTest, DatesOfTexts) {
    std::vector<std::string> texts = {"",
                                      "1/31/2026",
                                      "01/31/2026 3:05 PM",
                                      "2026-01-31",
                                      "2026/1/31 23:59:59",
                                      "2026-01/31",
                                      "Jan/5/2026",
                                      "sept/5/2026",
                                      "FEB/29/2024",
                                      "Feb/29/2025",
                                      "2/29/1900",
                                      "12:30",
                                      "12:30 am",
                                      "0:30 pm",
                                      "13:00 PM",
                                      "24:00",
                                      "23:60",
                                      "1:2",
                                      "1:02:3",
                                      "1:02:03PM",
                                      "1:02:60",
                                      "99/1/2026",
                                      "0/1/2026",
                                      "1/0/2026",
                                      "1/1/99",
                                      "1/1/0099",
                                      "1/1/0100",
                                      "12/30/1899",
                                      "12/30/1899 1:00",
                                      "1/1/1800 18:00",
                                      "2026-1-1x",
                                      "2026-1-1 ",
                                      " 2026-1-1   4:00  ",
                                      "2026-1-112:00",
                                      "1/1/2026 4:00 xm",
                                      "1/1/2026\n",
                                      "12/31/9999 23:59:59",
                                      "4:00 1/1/2026",
                                      "1/1/2026 PM",
                                      "PM",
                                      "12",
                                      "012/1/2026",
                                      "Ма/1/2026",
                                      "１/1/2026"};
    const std::vector<std::string> pieces = {"1", "2", "12", "2026", "/",  "/", "-",
                                             ":", ":", "30", " ",    "am", "PM"};
    for (int i = 0; i < 200; ++i)
        texts.push_back(Row(pieces, 9));
    const std::vector<double> serials = Serials();
    const std::vector<std::string> patterns = {"MM/DD/YYYY HH:NN:SS", "YYYY-M-D H:NN",
                                               "MMM/D/YYYY h:nn am/pm"};
    for (std::size_t i = 0; i < serials.size(); ++i)
        texts.push_back(FormatDate(Date(serials[i]), patterns[i % patterns.size()]));
    for (const std::string& text : texts) {
        const auto stored = [&] { return Bits(StoredSerial(Value(text).ToDate())); };
        comparison.Add(BitsOf("kv.to_date(" + Text(text) + ")"), Answer(stored));
        comparison.Add(BitsOf("kv.serial(kv.fit_date(" + Text(text) + "))"), Answer(stored));
    }
}

TEST_F(ServerFunctionsTest, PatternsOfLike) {
    // Left out are the few characters whose small or folded form is another count of characters or not their
    // own small letter's: the dotted capital I, the Kelvin sign, the long and the sharp s.
    const std::vector<std::string> letters = {"a",  "B", "c", "Z", "1", "7",  "ä", "É", "日",
                                              "-",  "]", "[", "!", ".", "\\", "^", "$", "(",
                                              "\n", "*", " ", "_", "#", "σ",  "Ж"};
    const std::vector<std::string> pieces = {
        "a",  "b",    "C",     "*",      "*", "?", "#",  "[",     "]",     "!",    "-",     "[a-c]", "[!a-c]",
        "[]", "[!]",  "[z-a]", "[!b-a]", "Ä", "é", "日", ".",     "\\",    "^",    "$",     "(",     "\n",
        "1",  "[Z-]", "[-z]",  "[0-9]",  "{", "|", "+",  "[[:a]", "[\\w]", "[^a]", "[a-й]", "Σ",     "_"};
    const auto add = [&](const std::string& text, const std::string& pattern) {
        // As columns, whose collation gives way to the one that is stated.
        comparison.Add(fmt::format("SELECT v COLLATE \"und-x-icu\" ~* kv.like_regex(p) "
                                   "FROM (VALUES ({}, {})) AS t (v, p)",
                                   Text(text), Text(pattern)),
                       LikePattern(pattern).Matches(text) ? "true" : "false");
    };
    for (int i = 0; i < 1200; ++i)
        add(Row(letters, 4), Row(pieces, 5));
    const std::vector<std::string> patterns = {
        "",       "*",       "**",    "***", "?",   "*a*", "a*",     "*a",    "a",    "#*",
        "[a-c]*", "[!a-c]*", "*[*",   "[",   "a]",  "*]*", "[*]",    "*[?]*", "[!!]", "[a-]",
        "[--1]",  "***:a",   "(?i)a", "*.*", "?*?", "*ä*", "[Ä-Ö]*", "*\\*"};
    for (const std::string& pattern : patterns)
        for (const char* text : {"",  "a", "A", "abc", "cab", "Ä",    "xäy", "[",  "]",     "a]",
                                 "1", "-", "!", "a.b", "*",   "a\nb", "\n",  "\\", "***:a", "?"})
            add(text, pattern);
}

TEST_F(ServerFunctionsTest, ValuesOnTheirWayIntoColumns) {
    struct Kind {
        ColumnType type;
        const char* call;
        int size = 0;
    };
    // Money from 1e11 on has more digits than a double is sure of.
    const Kind kinds[] = {{ColumnType::Text, "kv.fit_text({}, 4)", 4},
                          {ColumnType::Text, "kv.fit_text({}, 0)"},
                          {ColumnType::Memo, "kv.fit_memo({})"},
                          {ColumnType::Short, "kv.fit_short({})"},
                          {ColumnType::Long, "kv.fit_long({})"},
                          {ColumnType::Double, "encode(float8send(kv.fit_double({})), 'hex')"},
                          {ColumnType::Currency, "(kv.fit_currency({}) * 10000)::bigint"},
                          {ColumnType::Boolean, "kv.fit_boolean({})"}};
    const auto add = [&](const Value& value, const std::string& literal) {
        for (const Kind& kind : kinds) {
            ColumnInfo column;
            column.type = kind.type;
            column.size = kind.size;
            comparison.Add(fmt::format(fmt::runtime(kind.call), literal), Answer([&]() -> std::string {
                               const Value fitted = ConvertToColumn(value, column);
                               if (fitted.IsNull())
                                   return "<Null>";
                               if (kind.type == ColumnType::Currency)
                                   return std::to_string(fitted.ToCurrency().TenThousandths());
                               if (kind.type == ColumnType::Boolean)
                                   return fitted.ToBoolean() ? "true" : "false";
                               return kind.type == ColumnType::Double ? Bits(fitted.ToDouble())
                                                                      : fitted.ToText();
                           }));
        }
    };
    add(Value(), "NULL::text");
    add(Value(), "NULL::float8");
    for (const double number : Numbers())
        if (std::fabs(number) < 1e11)
            add(Value(number), Number(number));
    for (const double number :
         {1e15, -1e15, 2147483647.4, 2147483648.0, -2147483648.5, -2147483649.0, 32767.4, -32769.0})
        add(Value(number), Number(number));
    for (const char* text : {"",      " ",    "True",  "YES",          "no",   "false",    "-1",
                             "0",     "1.5",  "2.5",   "$1,234.56785", "ABCD", "ABCDE",    "äöüß",
                             "äöüßé", "1e30", "99999", "32768",        "x'y",  "1/2/2026", " yes"})
        add(Value(text), Text(text));
}

/// Servers that have the functions already take a change with a higher version only.
TEST(ServerFunctionsVersion, RisesWithEveryChange) {
    constexpr int kVersion = 2;
    constexpr std::size_t kTextOfTheVersion = 17209033611381178935U;
    const std::string text = EmbeddedText("functions.sql");
    EXPECT_THAT(text, testing::HasSubstr(fmt::format("-- version {}\n", kVersion)));
    EXPECT_EQ(HashText(text), kTextOfTheVersion) << "raise the version, and note it here with its text";
}

TEST_F(ServerFunctionsTest, WhatScansCallStandsInThePlanItself) {
    Execute("CREATE TABLE visits (at timestamp, code text COLLATE kv.ci, hours float8)");
    const Result plan(PQexec(connection_,
                             "EXPLAIN VERBOSE SELECT kv.serial(at), kv.moment(hours + 30), "
                             "kv.weekday(kv.serial(at)), kv.format_date(kv.serial(at), 'MM/DD/YYYY'), "
                             "kv.ucase(code), kv.right_text(code, 2), kv.number_text(hours), "
                             "kv.fit_boolean(hours) FROM visits "
                             "WHERE code COLLATE \"und-x-icu\" ~* kv.like_regex('*a*')"),
                      PQclear);
    std::string text;
    for (int row = 0; row < PQntuples(plan.get()); ++row)
        text += PQgetvalue(plan.get(), row, 0);
    EXPECT_NE(text.find("Scan"), std::string::npos) << PQerrorMessage(connection_);
    EXPECT_EQ(text.find("kv."), std::string::npos) << text;
}

}  // namespace
}  // namespace kv::test
