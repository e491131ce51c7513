#include "datastore/recordset/key_list.h"

#include <algorithm>
#include <numeric>

namespace kv {
namespace {

constexpr std::size_t kMostUnsorted = 64;

}  // namespace

void KeyList::Clear() {
    keys_.clear();
    byKey_.clear();
    size_ = 0;
    ascending_ = true;
}

void KeyList::Add(std::span<const RowKey> key) {
    AddAll(key, 1);
}

void KeyList::AddAll(std::span<const RowKey> keys, std::size_t rows) {
    size_ += rows;
    if (width_ == 0)
        return;
    RowKey last = keys_.empty() ? kNoRow : keys_.back();
    ascending_ = ascending_ && width_ == 1;
    for (std::size_t i = 0; ascending_ && i < rows; last = keys[i], ++i)
        ascending_ = keys[i] > last;
    keys_.insert(keys_.end(), keys.begin(), keys.end());
}

void KeyList::Remove(std::size_t position) {
    const auto first = keys_.begin() + static_cast<std::ptrdiff_t>(position * width_);
    keys_.erase(first, first + static_cast<std::ptrdiff_t>(width_));
    byKey_.clear();
    --size_;
}

void KeyList::Truncate(std::size_t size) {
    keys_.resize(size * width_);
    byKey_.clear();
    size_ = size;
}

bool KeyList::Less(std::span<const RowKey> a, std::span<const RowKey> b) const {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end());
}

void KeyList::BuildOrder() const {
    byKey_.resize(Size());
    std::iota(byKey_.begin(), byKey_.end(), 0U);
    std::sort(byKey_.begin(), byKey_.end(), [this](std::uint32_t a, std::uint32_t b) {
        if (Less(At(a), At(b)))
            return true;
        return !Less(At(b), At(a)) && a < b;
    });
}

std::optional<std::size_t> KeyList::Find(std::span<const RowKey> key) const {
    if (ascending_ && width_ == 1) {
        const auto found = std::lower_bound(keys_.begin(), keys_.end(), key[0]);
        if (found == keys_.end() || *found != key[0])
            return std::nullopt;
        return static_cast<std::size_t>(found - keys_.begin());
    }
    if (Size() > byKey_.size() + kMostUnsorted || byKey_.empty())
        BuildOrder();
    const auto found =
        std::lower_bound(byKey_.begin(), byKey_.end(), key,
                         [this](std::uint32_t a, std::span<const RowKey> b) { return Less(At(a), b); });
    if (found != byKey_.end() && !Less(key, At(*found)))
        return *found;
    for (std::size_t position = byKey_.size(); position < Size(); ++position)
        if (!Less(At(position), key) && !Less(key, At(position)))
            return position;
    return std::nullopt;
}

}  // namespace kv
