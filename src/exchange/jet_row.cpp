#include "exchange/jet_row.h"

namespace kv::jet {
namespace {

/// A number of one byte or two, little end first; what lies outside the bytes counts as 0.
std::size_t NumberAt(std::string_view bytes, std::size_t at, std::size_t width) {
    std::size_t number = 0;
    for (std::size_t i = width; i-- > 0;)
        number = number << 8 | (at + i < bytes.size() ? static_cast<unsigned char>(bytes[at + i]) : 0U);
    return number;
}

}  // namespace

std::optional<Row> Row::Of(std::string_view bytes, bool jet3) {
    Row row;
    row.countSize_ = jet3 ? 1 : 2;
    row.columns_ = NumberAt(bytes, 0, row.countSize_);
    const std::size_t maskSize = (row.columns_ + 7) / 8;
    if (bytes.size() < row.countSize_ + maskSize)
        return std::nullopt;
    row.bytes_ = bytes.substr(0, bytes.size() - maskSize);
    row.mask_ = bytes.substr(row.bytes_.size());
    row.ReadOffsets(jet3);
    return row;
}

/// They stand at the end, their count last, before it the first one's offset, the second one's ... A row that
/// is older than the table's first variable column has none.
void Row::ReadOffsets(bool jet3) {
    constexpr std::size_t kJump = 256;
    // Of an offset Jet 3 has the lower byte here, and between count and offsets, for each 256 bytes of the
    // row, which field is the first behind them. One of these that the offsets don't need is no field's.
    const std::size_t jumps = jet3 ? (bytes_.size() + mask_.size() - 1) / kJump : 0;
    const std::size_t end = bytes_.size();
    const std::size_t count = NumberAt(bytes_, end - countSize_, countSize_);
    const std::size_t tail = countSize_ + jumps + (count + 1) * countSize_;
    if (end < countSize_ + tail)
        return;
    std::size_t jumped = 0;
    for (std::size_t i = 0; i <= count; ++i) {
        while (jumped < jumps && NumberAt(bytes_, end - 2 - jumped, 1) == i)
            ++jumped;
        const std::size_t at = end - countSize_ - jumps - (i + 1) * countSize_;
        offsets_.push_back(NumberAt(bytes_, at, countSize_) + kJump * jumped);
    }
}

bool Row::Has(const FieldPlace& place) const {
    return place.number < columns_ && (NumberAt(mask_, place.number / 8, 1) >> place.number % 8 & 1) != 0;
}

std::optional<std::string_view> Row::Field(const FieldPlace& place) const {
    std::size_t begin = 0;
    std::size_t end = 0;
    if (place.fixed) {
        begin = countSize_ + place.offset;
        end = begin + place.size;
    } else {
        if (place.variable + 1 >= offsets_.size())
            return std::nullopt;
        begin = offsets_[place.variable];
        end = offsets_[place.variable + 1];
    }
    if (begin < countSize_ || begin > end || end > bytes_.size())
        return std::nullopt;
    return bytes_.substr(begin, end - begin);
}

}  // namespace kv::jet
