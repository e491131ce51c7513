#include "base/csv.h"

#include <fmt/format.h>

namespace kv {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

[[noreturn]] void Fail(std::size_t line, std::string_view what) {
    throw CsvError(fmt::format("line {}: {}", line, what));
}

}  // namespace

CsvReader::CsvReader(std::string_view text) : text_(text) {
    if (text_.substr(0, kByteOrderMark.size()) == kByteOrderMark)
        at_ = kByteOrderMark.size();
}

bool CsvReader::TakeLineEnd() {
    const std::size_t length = text_.substr(at_, 2) == "\r\n" ? 2 : text_.substr(at_, 1) == "\n" ? 1 : 0;
    at_ += length;
    line_ += length > 0 ? 1 : 0;
    return length > 0;
}

std::string CsvReader::QuotedCell() {
    const std::size_t begun = line_;
    std::string cell;
    for (++at_; at_ < text_.size(); ++at_) {
        if (text_[at_] == '"') {
            if (text_.substr(at_ + 1, 1) != "\"") {
                ++at_;
                return cell;
            }
            ++at_;
        }
        if (text_[at_] == '\n')
            ++line_;
        cell += text_[at_];
    }
    Fail(begun, "a quoted cell does not end");
}

CsvCell CsvReader::Cell() {
    if (text_.substr(at_, 1) == "\"")
        return QuotedCell();
    const std::size_t from = at_;
    while (at_ < text_.size() && text_[at_] != ',' && text_[at_] != '\n' && text_.substr(at_, 2) != "\r\n") {
        if (text_[at_] == '"')
            Fail(line_, "a quote stands inside a cell that is not quoted");
        ++at_;
    }
    if (at_ == from)
        return std::nullopt;
    return std::string(text_.substr(from, at_ - from));
}

std::optional<CsvRow> CsvReader::Next() {
    while (columns_ != 1 && TakeLineEnd()) {
    }
    if (at_ >= text_.size())
        return std::nullopt;
    rowLine_ = line_;
    CsvRow row;
    while (true) {
        row.push_back(Cell());
        if (at_ >= text_.size() || TakeLineEnd()) {
            columns_ = columns_ == 0 ? row.size() : columns_;
            return row;
        }
        if (text_[at_] != ',')
            Fail(line_, "a character stands between a closing quote and the next comma");
        ++at_;
    }
}

std::string CsvLine(const CsvRow& row) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (i > 0)
            line += ',';
        if (!row[i])
            continue;
        const std::string& cell = *row[i];
        // At the front of a file a byte-order mark would be taken for the file's.
        if (!cell.empty() && cell.find_first_of("\",\r\n") == std::string::npos &&
            !cell.starts_with(kByteOrderMark)) {
            line += cell;
            continue;
        }
        line += '"';
        for (const char c : cell)
            line.append(c == '"' ? 2 : 1, c);
        line += '"';
    }
    return line + "\r\n";
}

}  // namespace kv
