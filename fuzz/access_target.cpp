// "v", a number of decimals and bytes: whatever form of value a Jet file may hold is read from them, which is
// refused or says what the bytes say. "r", the form, a column's place and bytes: each field of the row that
// they are lies within it. "i" or any other letter, one of four sound files, and damage done to it: a page,
// an offset of two bytes, a count and as many bytes each time (page 255: the file ends at eight times the
// offset). What is read of the damaged file is sound, and of a table without damage what was in it. With "i"
// the file is imported: what is taken and what is told of add up. Else its tables are read again from the
// last to the first, and are the same.
#include <algorithm>
#include <bit>
#include <cmath>
#include <csignal>
#include <map>

#include <fmt/format.h>
#include <pthread.h>
#include <unistd.h>

#include "base/format.h"
#include "base/numbers.h"
#include "base/platform.h"
#include "base/text.h"
#include "clients/rtf/pieces.h"
#include "datastore/convert.h"
#include "exchange/access_file.h"
#include "exchange/jet_row.h"
#include "exchange/jet_values.h"
#include "fuzz/target.h"
#include "support/jet_file.h"
#include "support/scripted_ports.h"
#include "support/test_places.h"
#include "tool/import_file.h"
#include "tool/table_rows.h"

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KV_ASAN
#include <sanitizer/common_interface_defs.h>
#endif
#endif

namespace {

// The program reads each file first in a process of its own, where the library below may crash. That is no
// finding: the process ends as it would without the sanitizer, and nothing is reported or kept of it.
bool isApart = false;

void EndAsWithoutFuzzer() {
    isApart = true;
#ifdef KV_ASAN
    __sanitizer_set_death_callback(nullptr);
#endif
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGTRAP})
        std::signal(signal, SIG_DFL);
}

[[maybe_unused]] const int isWatched = pthread_atfork(nullptr, nullptr, EndAsWithoutFuzzer);

}  // namespace

#ifdef KV_ASAN
extern "C" void __asan_on_error() {
    if (isApart)
        _exit(EXIT_FAILURE);
}

/// A process with little memory is copied fast.
extern "C" const char* __asan_default_options() {
    return "quarantine_size_mb=4:malloc_context_size=8";
}
#endif

namespace kv {
namespace {

namespace fs = std::filesystem;
using namespace test::jet_type;
using test::JetDouble;
using test::JetForm;
using test::JetLong;
using test::JetNumber;
using test::JetRow;
using test::JetTable;
using test::JetVersion;

// ------------------------------------------------------------------------------------------------- values

constexpr std::size_t kLongest = 4096;

void ExpectText(const std::string& text) {
    Expect(ToUtf8(text) == text, "a text that is no UTF-8");
    Expect(text.find('\0') == std::string::npos, "a text with a nought in it");
}

void ExpectDate(Date date) {
    Expect(date.Civil().year >= 100 && date.Civil().year <= 9999, "a date outside the calendar");
    Expect(ParseDate(IsoText(date)) == date, "a date that can't be read back");
}

std::string Utf16Of(std::string_view text) {
    std::string bytes;
    for (const char32_t code : rtf::CodesOf(text)) {
        if (code < 0x10000) {
            bytes += JetNumber(code, 2);
            continue;
        }
        bytes += JetNumber(0xD800 + ((code - 0x10000) >> 10), 2);
        bytes += JetNumber(0xDC00 + ((code - 0x10000) & 0x3FF), 2);
    }
    return bytes;
}

void CheckText(std::string_view bytes) {
    if (const auto text = jet::Text(bytes)) {
        ExpectText(*text);
        const std::string plain = Utf16Of(*text);
        Expect(jet::Text(plain) == text, "a text written again is read as another");
        if (bytes.substr(0, 2) != "\xFF\xFE")
            Expect(bytes.substr(0, plain.size()) == plain &&
                       bytes.find_first_not_of('\0', plain.size()) == std::string_view::npos,
                   "a text that its bytes do not say");
    }
    static const iconv_t western = iconv_open("UTF-8", "WINDOWS-1252");
    static const iconv_t japanese = iconv_open("UTF-8", "SHIFT-JIS");
    for (const iconv_t toUtf8 : {western, japanese})
        ExpectText(jet::CodedText(bytes, toUtf8).value_or(""));
    std::string any = ReplaceAll(ToUtf8(bytes), std::string_view("\0", 1), "0");
    if (any.starts_with("\uFEFF"))
        any.erase(0, 3);
    Expect(jet::Text(Utf16Of(any)) == any, "a text was refused or read as another");
}

void CheckNumbers(std::string_view bytes) {
    if (const auto whole = jet::Whole(bytes))
        Expect(JetNumber(static_cast<std::uint64_t>(whole->ToInteger()), static_cast<int>(bytes.size())) ==
                   bytes,
               "a whole number is another");
    if (const auto money = jet::Money(bytes))
        Expect(JetNumber(static_cast<std::uint64_t>(money->ToCurrency().TenThousandths()), 8) == bytes,
               "an amount is another");
    if (const auto floating = jet::Floating(bytes)) {
        const double number = floating->ToDouble();
        Expect(std::isfinite(number), "a number that is none");
        const std::string written =
            bytes.size() == 8 ? JetDouble(number)
                              : JetNumber(std::bit_cast<std::uint32_t>(static_cast<float>(number)), 4);
        Expect(written == bytes, "a number is another");
    }
    if (const auto guid = jet::Guid(bytes))
        Expect(guid->ToText().size() == 38, "an identifier of another form");
}

void CheckMoment(std::string_view bytes) {
    const auto moment = jet::Moment(bytes);
    if (!moment)
        return;
    std::uint64_t number = 0;
    for (std::size_t i = bytes.size(); i-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes[i]);
    const auto serial = std::bit_cast<double>(number);
    const double day = std::trunc(serial);
    constexpr double kHalfSecond = 0.5001 / 86400;
    ExpectDate(moment->ToDate());
    Expect(std::fabs(moment->ToDate().Serial() - (day + std::fabs(serial - day))) < kHalfSecond,
           "a moment is another");
}

void CheckDecimal(std::string_view bytes, int scale) {
    const auto text = jet::Decimal(bytes, scale, ValueType::Text);
    const auto number = jet::Decimal(bytes, scale, ValueType::Double);
    Expect(text.has_value() == number.has_value(), "a number with decimals is both read and refused");
    if (!text)
        return;
    Expect(Value(*text).ToDouble() == number->ToDouble(), "a number with decimals is two");
    const std::string digits = text->ToText();
    Expect(scale == 0 || digits.find('.') == digits.size() - static_cast<std::size_t>(scale) - 1,
           "a number with other decimals");
    if (scale > 4)
        return;
    const auto money = jet::Decimal(bytes, scale, ValueType::Currency);
    const double tenThousandths = number->ToDouble() * 10000;
    Expect(money || std::fabs(tenThousandths) > 9.2e18, "an amount was refused");
    if (money)
        Expect(std::fabs(static_cast<double>(money->ToCurrency().TenThousandths()) - tenThousandths) <=
                   std::fabs(tenThousandths) * 1e-12,
               "an amount is another");
}

void CheckValues(FuzzInput input) {
    const int scale = input.Byte() % 32;
    const std::string_view bytes = input.Rest();
    CheckText(bytes);
    // Also what begins the bytes, so that one input is of each size.
    for (const std::size_t size : {1U, 2U, 4U, 8U, 16U, 17U}) {
        CheckNumbers(bytes.substr(0, size));
        CheckMoment(bytes.substr(0, size));
        CheckDecimal(bytes.substr(0, size), scale);
    }
}

/// Each field lies within its row, whatever the table says of the columns' places.
void CheckRow(FuzzInput input) {
    const bool jet3 = input.Byte() % 2 != 0;
    jet::FieldPlace place;
    place.offset = input.Byte();
    place.size = input.Byte();
    const std::string_view bytes = input.Rest();
    const auto row = jet::Row::Of(bytes, jet3);
    if (!row)
        return;
    for (place.number = 0; place.number < 300; ++place.number) {
        place.variable = place.number;
        for (const bool fixed : {false, true}) {
            place.fixed = fixed;
            const auto field = row->Field(place);
            Expect(!field || (field->data() >= bytes.data() &&
                              field->data() + field->size() <= bytes.data() + bytes.size()),
                   "a field outside its row");
            Expect(!field || !place.fixed || field->size() == place.size, "a field of another size");
        }
        Expect(place.number / 8 < bytes.size() || !row->Has(place), "a field of a column that is not there");
    }
}

// -------------------------------------------------------------------------------------------------- files

/// All that is read of a table.
struct TableRead {
    TableInfo info;
    std::vector<std::string> untaken;
    long stated = 0;
    std::vector<std::vector<Value>> rows;
    std::vector<std::string> faults;
    std::string refused;  ///< the words, where nothing can be read
    friend bool operator==(const TableRead&, const TableRead&) = default;
};
using FileRead = std::map<std::string, TableRead>;

void ExpectSound(const TableInfo& info) {
    for (std::size_t i = 0; i < info.columns.size(); ++i) {
        ExpectText(info.columns[i].name);
        Expect(info.Find(info.columns[i].name) == i, "two columns of one name");
        Expect(info.columns[i].size >= 0 && info.columns[i].size <= 255, "a column of an impossible size");
    }
    for (const IndexInfo& index : info.indexes) {
        ExpectText(index.name);
        Expect(!index.columns.empty(), "an index of nothing");
        for (const std::string& column : index.columns)
            Expect(info.Find(column).has_value(), "an index of a column that is not there");
    }
}

void ExpectSound(const std::vector<Value>& row, const TableInfo& info) {
    Expect(row.size() == info.columns.size(), "a row with other columns than its table");
    for (std::size_t i = 0; i < row.size(); ++i) {
        const ColumnType type = info.columns[i].type;
        Expect(row[i].Type() == FieldType(type) || (row[i].IsNull() && type != ColumnType::Boolean),
               "a value of another type than its column");
        if (const std::string* text = row[i].IfText())
            ExpectText(*text);
        if (row[i].Type() == ValueType::Date)
            ExpectDate(row[i].ToDate());
        if (row[i].Type() == ValueType::Double)
            Expect(std::isfinite(row[i].ToDouble()), "a number that is none");
    }
}

TableRead ReadTable(const AccessFile& file, const std::string& name, std::size_t mostRows) {
    TableRead read;
    try {
        AccessTable table = file.OpenTable(name);
        read.info = table.Info();
        read.untaken = table.Untaken();
        read.stated = table.StatedRows();
        ExpectSound(read.info);
        std::vector<Value> row;
        for (bool more = true; more;) {
            try {
                more = table.Next(row);
                if (!more)
                    break;
                ExpectSound(row, read.info);
                read.rows.push_back(row);
            } catch (const AccessError& error) {
                read.faults.emplace_back(error.what());
            }
            Expect(read.rows.size() + read.faults.size() <= mostRows, "more rows than the file has room for");
        }
    } catch (const AccessError& error) {
        read.refused = error.what();
        Expect(!read.refused.empty(), "a table refused without words");
    }
    return read;
}

FileRead ReadTables(const AccessFile& file, const std::vector<std::string>& names) {
    constexpr std::size_t kLeastBytesARow = 4;
    FileRead read;
    for (const std::string& name : names)
        read[name] = ReadTable(file, name, fs::file_size(file.Path()) / kLeastBytesARow);
    return read;
}

/// A sound file, what is read of it, and where its tables lie.
struct Base {
    std::string content;
    std::size_t pageSize = 0;
    FileRead read;
    /// The pages of each table, the first and the one behind the last, and those of the list of tables.
    std::map<std::string, std::pair<std::size_t, std::size_t>> pages;
    std::size_t listAt = 0;
};

const fs::path& Place() {
    static const test::TempFolder folder;
    static const fs::path path = folder.Path() / "damaged.mdb";
    return path;
}

std::string TextOf(const JetForm& form, const std::string& text) {
    return form.version == JetVersion::Jet3 ? text : Utf16Of(text);
}

std::vector<JetTable> SomeTables(const JetForm& form) {
    const auto text = [&](const std::string& words) { return TextOf(form, words); };
    JetTable kinds{"Kinds",
                   {{"id", kLong, 4, true},
                    {"yes", kBoolean},
                    {"byte", kByte},
                    {"short", kShort},
                    {"money", kMoney},
                    {"gone", kLong},
                    {"single", kSingle},
                    {"double", kDouble},
                    {"date", kMoment},
                    {"words", kText, 100},
                    {"picture", kOle, 0},
                    {"guid", kGuid},
                    {"memo", kMemo, 0}},
                   {{"PrimaryKey", {0}, true, true}, {"byWords", {9, 0}, false, false}},
                   {},
                   {1},
                   1};
    kinds.columns[5].deleted = true;
    for (int i = 0; i < 4; ++i) {
        kinds.rows.push_back({JetLong(i), "", "\x07", JetNumber(7, 2), JetNumber(125000, 8), JetLong(5),
                              JetNumber(0x3DCCCCCD, 4), JetDouble(1.5), JetDouble(46000.25),
                              text("some words"), "pic", std::string(16, 'g'), text("a memo")});
        kinds.rows.push_back(JetRow(9 + static_cast<std::size_t>(i)));
    }
    if (form.version != JetVersion::Jet3) {
        kinds.columns.push_back({.name = "decimal", .type = kDecimal, .precision = 18, .scale = 2});
        kinds.columns.push_back({.name = "fine", .type = kDecimal, .precision = 28, .scale = 10});
        const std::string number = std::string(13, '\0') + JetNumber(1250, 4);
        kinds.rows[0].insert(kinds.rows[0].end(), {number, number});
    }
    JetTable notes{"Notes", {{"id", kLong, 4, true}, {"note", kMemo, 0}}, {}, {}, {}, 1};
    for (const int length : {10, 900, 9000})
        notes.rows.push_back({JetLong(length), text(std::string(static_cast<std::size_t>(length), 'n'))});
    JetTable many{"Many", {{"id", kLong, 4, true}, {"name", kText, 60}}, {}, {}, {2, 5}, 1};
    for (int i = 0; i < 150; ++i)
        many.rows.push_back({JetLong(i), text("somebody")});
    // Its definition goes on on other pages.
    JetTable wide{"Wide", {}, {}, {{}}, {}, 1};
    for (int i = 0; i < 60; ++i) {
        wide.columns.push_back({.name = fmt::format("{}_{:_>50}", i, ""), .type = kShort});
        wide.rows[0].push_back(JetNumber(static_cast<std::uint64_t>(i), 2));
    }
    return {kinds, notes, many, wide, {"Away", {}, {}, {}, {}, 6}};
}

/// The file of a form, its tables placed by making it with one table more each time.
Base MadeBase(const JetForm& form) {
    const std::vector<JetTable> tables = SomeTables(form);
    Base base;
    base.content = JetFile(tables, form);
    base.pageSize = JetPageSize(form.version);
    const std::size_t listPages = JetFile({}, form).size() / base.pageSize - 3;
    std::size_t page = 3;
    for (std::size_t count = 1; count <= tables.size(); ++count) {
        const std::string part =
            JetFile({tables.begin(), tables.begin() + static_cast<std::ptrdiff_t>(count)}, form);
        const std::size_t end = part.size() / base.pageSize - listPages;
        base.pages[tables[count - 1].name] = {page, end};
        page = end;
    }
    base.listAt = page;
    return base;
}

const Base& BaseOf(std::uint8_t letter) {
    static const std::vector<Base> bases = [] {
        std::vector<Base> made;
        for (const JetVersion version : {JetVersion::Jet4, JetVersion::Jet3, JetVersion::Ace2007})
            made.push_back(MadeBase({.version = version}));
        made.emplace_back();
        made.back().content = ReadFile(KV_SOURCE_DIR "/tests/exchange/data/users.mdb").value();
        made.back().pageSize = test::JetPageSize(JetVersion::Jet4);
        for (Base& base : made) {
            ReplaceFile(Place(), base.content);
            const AccessFile file(Place());
            base.read = ReadTables(file, file.TableNames());
            for (const auto& [name, table] : base.read)
                Expect(table.refused.empty() && table.faults.empty() && !table.rows.empty(),
                       "a sound file is not read");
        }
        return made;
    }();
    return bases[letter % bases.size()];
}

/// The file with the damage done to it; the pages that have some.
struct Damaged {
    std::string content;
    std::vector<bool> pages;
    bool IsIntact(std::size_t first, std::size_t end) const {
        return std::none_of(pages.begin() + static_cast<std::ptrdiff_t>(first),
                            pages.begin() + static_cast<std::ptrdiff_t>(end), [](bool hit) { return hit; });
    }
};

Damaged DamagedFile(const Base& base, FuzzInput& input) {
    constexpr std::uint8_t kCut = 255;
    constexpr std::size_t kCutUnit = 8;
    Damaged damaged{base.content, std::vector<bool>(base.content.size() / base.pageSize)};
    while (!input.Rest().empty()) {
        const std::uint8_t page = input.Byte();
        const std::size_t low = input.Byte();
        const std::size_t offset = low | static_cast<std::size_t>(input.Byte()) << 8;
        if (page == kCut) {
            const std::size_t size = std::min(damaged.content.size(), offset * kCutUnit);
            damaged.content.resize(size);
            std::fill(damaged.pages.begin() + static_cast<std::ptrdiff_t>(size / base.pageSize),
                      damaged.pages.end(), true);
            continue;
        }
        const std::size_t number = page % damaged.pages.size();
        std::size_t at = number * base.pageSize + offset % base.pageSize;
        damaged.pages[number] = true;
        for (std::size_t count = input.Byte(); count > 0 && !input.Rest().empty(); --count, ++at)
            if (at < std::min((number + 1) * base.pageSize, damaged.content.size()))
                damaged.content[at] = static_cast<char>(input.Byte());
    }
    return damaged;
}

bool AreAmong(const std::vector<std::vector<Value>>& some, const std::vector<std::vector<Value>>& all) {
    std::size_t at = 0;
    for (const auto& row : all)
        if (at < some.size() && some[at] == row)
            ++at;
    return at == some.size();
}

/// A table that the damage did not touch is read as if there were none, and where the damage is to the map of
/// its pages alone no row is read that it has not.
void CheckIntact(const Base& base, const Damaged& damaged, const FileRead& read) {
    if (base.pages.empty() || !damaged.IsIntact(0, 1) || !damaged.IsIntact(2, 3) ||
        !damaged.IsIntact(base.listAt, damaged.pages.size()))
        return;
    for (const auto& [name, table] : base.read) {
        const auto& [first, end] = base.pages.at(name);
        constexpr char kDefinition = 2;
        const bool endsWithMap = base.content[(end - 1) * base.pageSize] != kDefinition;
        if (!damaged.IsIntact(first, endsWithMap ? end - 1 : end))
            continue;
        Expect(read.contains(name), "damage elsewhere hid the table " + name);
        const TableRead& now = read.at(name);
        if (damaged.IsIntact(first, end))
            Expect(now == table, "damage elsewhere changed the table " + name);
        else
            Expect(now.faults.empty() && AreAmong(now.rows, table.rows), "rows that are not in " + name);
    }
}

long LinesAbout(const std::vector<std::string>& lines, const std::string& begin) {
    return std::count_if(lines.begin(), lines.end(),
                         [&](const std::string& line) { return StartsWithNoCase(line, begin); });
}

/// As the command imports it: each row that was read is there or told of, and so is each table.
void CheckImport(const AccessFile& file, const FileRead& read) {
    static const test::TestPlaces places;
    static Workspace workspace;
    static const DatabasePtr database = workspace.CreateDatabase(places.Place("import"), "");
    const auto said = [&](const std::string& name) {
        return fmt::format("{}: table {}", file.Path().filename().string(), name);
    };
    try {
        test::RecordingProgress progress;
        const tool::ImportCounts counts = tool::ImportFile(*database, file, progress);
        long rows = 0;
        for (const auto& [name, table] : read) {
            const TableInfo* made = database->Tables().Find(name);
            if (!made || made->name != name) {
                Expect(LinesAbout(counts.skipped, said(name) + ":") > 0, "a table vanished without a word");
                continue;
            }
            const long there = database->Lookup("select count(*) from " + tool::Bracketed(name)).ToInteger();
            const long all = static_cast<long>(table.rows.size() + table.faults.size());
            Expect(there + LinesAbout(counts.skipped, said(name) + ", row ") == all,
                   "a row vanished without a word");
            Expect(table.stated <= all || LinesAbout(counts.skipped, said(name) + ": ") > 0,
                   "lost rows are not told of");
            rows += there;
        }
        Expect(rows == counts.rows, "an import counts other rows than it brought");
    } catch (const EngineError& error) {
        Expect(!error.Description().empty(), "an error without words");
    }
    const std::vector<std::string> names = database->Tables().Names();
    for (const std::string& name : names)
        database->Execute("drop table " + tool::Bracketed(name));
}

void CheckFile(FuzzInput input, bool import) {
    const Base& base = BaseOf(input.Byte());
    const Damaged damaged = DamagedFile(base, input);
    ReplaceFile(Place(), damaged.content);
    FileRead read;
    try {
        const AccessFile file(Place());
        std::vector<std::string> names = file.TableNames();
        read = ReadTables(file, names);
        std::reverse(names.begin(), names.end());
        if (import)
            CheckImport(file, read);
        else
            Expect(ReadTables(file, names) == read, "what is read depends on what was read before");
    } catch (const AccessError& error) {
        Expect(std::string_view(error.what()).size() > Place().string().size(),
               "a file refused without words");
    }
    CheckIntact(base, damaged, read);
}

}  // namespace
}  // namespace kv

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, std::min(size, kv::kLongest));
    const std::uint8_t letter = input.Byte();
    if (letter == 'v')
        kv::CheckValues(input);
    else if (letter == 'r')
        kv::CheckRow(input);
    else
        kv::CheckFile(input, letter == 'i');
    return 0;
}
