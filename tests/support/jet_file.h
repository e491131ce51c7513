#pragma once
#include <bit>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kv::test {

// Writes Jet files for the tests that read them: tables, rows and long texts as the format has them, without
// the pages that only Access itself needs. Debian has no program that writes such files.

/// The types of columns by their numbers in the file.
namespace jet_type {
inline constexpr int kBoolean = 1, kByte = 2, kShort = 3, kLong = 4, kMoney = 5, kSingle = 6, kDouble = 7,
                     kMoment = 8, kBinary = 9, kText = 10, kOle = 11, kMemo = 12, kGuid = 15, kDecimal = 16;
}

struct JetColumn {
    std::string name;
    int type = jet_type::kText;
    /// Bytes; two a character, in Jet 3 one.
    int size = 510;
    bool counter = false;
    int precision = 0;
    int scale = 0;
    /// It was deleted: rows keep its place, the definition lacks it.
    bool deleted = false;
    /// Worked out from others; from Access 2010 on.
    bool calculated = false;
};

struct JetIndex {
    std::string name;
    /// The columns by their places.
    std::vector<int> columns;
    bool primary = false;
    bool unique = false;
};

/// A row's fields as bytes; nothing is Null, and for a boolean false. One with fewer fields than the table
/// has columns was written before the others were added.
using JetRow = std::vector<std::optional<std::string>>;

struct JetTable {
    std::string name;
    std::vector<JetColumn> columns;
    std::vector<JetIndex> indexes;
    std::vector<JetRow> rows;
    /// The rows, by their places, that were deleted.
    std::set<std::size_t> deleted;
    /// As the list of tables has it: 1 a table, 6 one that is linked.
    int kind = 1;
};

/// Little end first.
std::string JetNumber(std::uint64_t number, int bytes);
inline std::string JetLong(int number) {
    return JetNumber(static_cast<std::uint32_t>(number), 4);
}
inline std::string JetDouble(double number) {
    return JetNumber(std::bit_cast<std::uint64_t>(number), 8);
}
std::string JetText(std::u16string_view text);

enum class JetVersion { Jet3 = 0, Jet4 = 1, Ace2007 = 2, Ace2010 = 3 };

struct JetForm {
    JetVersion version = JetVersion::Jet4;
    /// All pages but the head are in cipher with it; 0 for none.
    std::uint32_t key = 0;
    /// What Jet 3 texts are in.
    int codePage = 1252;
};

std::size_t JetPageSize(JetVersion version);
/// The whole file. The pages of one table lie together, its definition in front, in the order of the tables;
/// behind them lies what the list of tables on page 2 needs.
std::string JetFile(const std::vector<JetTable>& tables, const JetForm& form = {});

}  // namespace kv::test
