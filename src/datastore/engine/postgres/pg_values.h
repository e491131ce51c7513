#pragma once
#include <span>
#include <string>
#include <vector>

#include <libpq-fe.h>

#include "datastore/engine/row_block.h"

namespace kv::postgres {

/// A moment as the server reads it, held within the years that it knows.
std::string MomentText(Date moment);

/// The values of a statement's placeholders as the library takes them. Throws EngineError for what the server
/// can't hold.
class Bound {
  public:
    explicit Bound(std::span<const Value> values);
    Bound(Bound&&) = delete;
    int Count() const { return static_cast<int>(pointers_.size()); }
    std::size_t Bytes() const;
    const char* const* Pointers() const { return pointers_.data(); }

  private:
    std::vector<std::string> texts_;
    std::vector<const char*> pointers_;
};

/// Adds a row to those of a copy, which stand in lines with tabs between their values.
void AppendCopyRow(std::string& rows, std::span<const Value> values);
/// Throws EngineError where the server can't hold one of them.
void RequireStorable(std::span<const Value> values);

/// Whole numbers as a parameter of the server's type bigint[].
template <typename Numbers>
Value ArrayOf(const Numbers& numbers) {
    std::string text = "{";
    for (const auto number : numbers)
        text += (text.size() > 1 ? "," : "") + std::to_string(number);
    return text + "}";
}

/// A result's whole number; kNoRow for Null.
RowKey WholeAt(const PGresult* result, int row, int column);
std::string TextAt(const PGresult* result, int row, int column);

/// Reads results in the server's binary form into cells: dates as the store's numbers, true as -1.
class CellReader {
  public:
    explicit CellReader(const PGresult* result);
    void Read(RowBlock& block, RowBlock::Cell& cell, int row, int column) const;

  private:
    const PGresult* result_;
    std::vector<Oid> types_;
};

}  // namespace kv::postgres
