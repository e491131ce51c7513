#include "datastore/name_index.h"

#include "base/text.h"

namespace kv {
namespace {

/// Bytes beyond ASCII count for nothing: their case folds in ways that only the comparison knows.
std::size_t Folded(char c) {
    if (static_cast<unsigned char>(c) >= 0x80)
        return 0;
    return static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
}

}  // namespace

/// Four characters tell the names of one table apart well enough.
std::size_t NameIndex::Hash(std::string_view name) {
    const std::size_t size = name.size();
    if (size < 2)
        return size == 0 ? 0 : Folded(name[0]);
    std::size_t hash = Folded(name[0]);
    for (const std::size_t place : {size - 1, size / 2, std::size_t{1}})
        hash = hash * 31 + Folded(name[place]);
    return hash;
}

std::size_t NameIndex::SlotOf(std::string_view name) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = Hash(name) & mask;
    for (; slots_[slot] >= 0; slot = (slot + 1) & mask) {
        const std::string& known = names_[static_cast<std::size_t>(slots_[slot])];
        if (known == name || EqualsNoCase(known, name))
            break;
    }
    return slot;
}

void NameIndex::Grow() {
    slots_.assign(slots_.empty() ? 16 : slots_.size() * 2, -1);
    for (std::size_t place = 0; place < names_.size(); ++place) {
        std::int32_t& slot = slots_[SlotOf(names_[place])];
        if (slot < 0)
            slot = static_cast<std::int32_t>(place);
    }
}

void NameIndex::Add(std::string_view name) {
    if (2 * (names_.size() + 1) > slots_.size())
        Grow();
    std::int32_t& slot = slots_[SlotOf(name)];
    if (slot < 0)
        slot = static_cast<std::int32_t>(names_.size());
    names_.emplace_back(name);
}

int NameIndex::FindSlowly(std::string_view name) const {
    const int place = slots_.empty() ? -1 : slots_[SlotOf(name)];
    // The memo serves the spelling of the table alone, which it is compared with.
    if (place >= 0 && names_[static_cast<std::size_t>(place)] == name)
        memos_[(reinterpret_cast<std::uintptr_t>(name.data()) >> 2) % memos_.size()] = {name.data(), place};
    return place;
}

}  // namespace kv
