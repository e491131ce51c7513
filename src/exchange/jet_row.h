#pragma once
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace kv::jet {

/// Where the rows of a table have a column's field.
struct FieldPlace {
    /// Among the table's columns, with those that were deleted.
    std::size_t number = 0;
    bool fixed = false;
    /// A fixed field's bytes from the first such field on.
    std::size_t offset = 0;
    std::size_t size = 0;
    /// The other fields' order.
    std::size_t variable = 0;
};

/// The fields of a Jet row: how many columns it has, the fields of a fixed size, the others, where each of
/// these begins, and a mask of those that are there. Lasts no longer than the bytes.
class Row {
  public:
    /// Nothing where the bytes are no row.
    static std::optional<Row> Of(std::string_view bytes, bool jet3);

    /// False for Null, and for a column that the table got when the row was there already. A boolean has no
    /// other bytes: this is its value.
    bool Has(const FieldPlace& place) const;
    /// The bytes of a field that the row has; nothing where they lie outside it.
    std::optional<std::string_view> Field(const FieldPlace& place) const;

  private:
    void ReadOffsets(bool jet3);

    std::string_view bytes_;  // up to the mask
    std::string_view mask_;
    std::size_t columns_ = 0;
    std::size_t countSize_ = 0;
    std::vector<std::size_t> offsets_;  // of the variable fields, and where the last one ends
};

}  // namespace kv::jet
