#include "datastore/name_index.h"

#include "base/text.h"

namespace kv {

std::size_t NameIndex::Hash(std::string_view name) {
    // Bytes beyond ASCII are left out: their case folds in ways that only the comparison knows.
    std::size_t hash = 5381;
    for (const char c : name)
        if (static_cast<unsigned char>(c) < 0x80)
            hash = hash * 33 + static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
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

int NameIndex::Find(std::string_view name) const {
    return slots_.empty() ? -1 : slots_[SlotOf(name)];
}

}  // namespace kv
