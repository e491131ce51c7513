// Any bytes as a CSV file: it is refused with a line's number, or written again it is read as the same; each
// cell is taken by a column of each type or refused with words.
#include <array>

#include "base/csv.h"
#include "fuzz/target.h"
#include "tool/cells.h"

namespace kv {
namespace {

constexpr std::size_t kLongest = 8192;

std::vector<CsvRow> ReadAll(std::string_view text) {
    CsvReader reader(text);
    std::vector<CsvRow> rows;
    while (auto row = reader.Next())
        rows.push_back(std::move(*row));
    return rows;
}

void CheckCell(const CsvCell& cell, const ColumnInfo& column) {
    Value value;
    try {
        value = tool::ReadCell(cell, column);
    } catch (const tool::CellError&) {
        return;
    }
    Expect(value.IsNull() == !cell, "a cell and its value are not both Null");
    tool::JsonValue(value);
    Expect(tool::ReadCell(tool::WriteCell(value), column) == value,
           "a written cell is read back as another value");
}

void CheckCells(const std::vector<CsvRow>& rows) {
    constexpr std::array kTypes = {ColumnType::Boolean, ColumnType::Short,    ColumnType::Long,
                                   ColumnType::Double,  ColumnType::Currency, ColumnType::DateTime,
                                   ColumnType::Text,    ColumnType::Memo};
    for (const CsvRow& row : rows)
        for (const CsvCell& cell : row)
            for (const ColumnType type : kTypes) {
                ColumnInfo column;
                column.type = type;
                column.size = type == ColumnType::Text ? 20 : 0;
                CheckCell(cell, column);
            }
}

}  // namespace
}  // namespace kv

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = FuzzInput(data, std::min(size, kv::kLongest)).Rest();
    std::vector<kv::CsvRow> rows;
    try {
        rows = kv::ReadAll(text);
    } catch (const kv::CsvError&) {
        return 0;
    }
    std::string written;
    for (const kv::CsvRow& row : rows)
        written += kv::CsvLine(row);
    Expect(kv::ReadAll(written) == rows, "a written file is read back as another");
    kv::CheckCells(rows);
    return 0;
}
