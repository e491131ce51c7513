#pragma once
#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

/// A fault in a CSV text; the words name the line, counted from 1.
class CsvError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A cell: nothing for an empty unquoted one (Null), a text otherwise ("" is the empty text).
using CsvCell = std::optional<std::string>;
using CsvRow = std::vector<CsvCell>;

/// Reads RFC 4180 text (UTF-8, an initial byte-order mark is passed over, CR LF or LF) row by row.
class CsvReader {
  public:
    /// The text must outlive the reader.
    explicit CsvReader(std::string_view text);
    /// The next row, or nothing at the end. A blank line is passed over, but in a table of one column it is a
    /// row with a Null. Throws CsvError.
    std::optional<CsvRow> Next();
    /// The line on which the row last read began, counted from 1.
    std::size_t Line() const { return rowLine_; }

  private:
    bool TakeLineEnd();
    CsvCell Cell();
    std::string QuotedCell();

    std::string_view text_;
    std::size_t at_ = 0;
    std::size_t line_ = 1;
    std::size_t rowLine_ = 1;
    std::size_t columns_ = 0;  // of the first row
};

/// One line with its CR LF; texts are quoted when empty, when they hold a quote, a comma or a line end, and
/// when they begin with a byte-order mark.
std::string CsvLine(const CsvRow& row);

}  // namespace kv
