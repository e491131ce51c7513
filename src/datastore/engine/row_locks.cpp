#include "datastore/engine/row_locks.h"

#include <system_error>

#include <fmt/format.h>

#include "base/text.h"
#include "datastore/engine_error.h"

namespace kv {
namespace {

constexpr std::uint64_t kHashStart = 0xCBF29CE484222325U;
constexpr std::uint64_t kHashFactor = 0x100000001B3U;
// File offsets are signed.
constexpr std::uint64_t kLastByte = 0x3FFFFFFFFFFFFFFFU;

std::uint64_t Mix(std::uint64_t hash, std::uint64_t byte) {
    return (hash ^ byte) * kHashFactor;
}

}  // namespace

// Every program must come to the same byte, so the hash is written out here.
std::uint64_t RowLocks::ByteOf(std::string_view table, RowKey key) {
    std::uint64_t hash = kHashStart;
    for (const char c : Lower(table))
        hash = Mix(hash, static_cast<unsigned char>(c));
    for (int shift = 0; shift < 64; shift += 8)
        hash = Mix(hash, (static_cast<std::uint64_t>(key) >> shift) & 0xFF);
    return hash & kLastByte;
}

bool RowLocks::TryLock(std::string_view table, RowKey key, const void* owner) {
    const std::uint64_t byte = ByteOf(table, key);
    if (const auto held = owners_.find(byte); held != owners_.end())
        return held->second == owner;
    try {
        if (!bytes_)
            bytes_.emplace(file_, std::filesystem::path(file_).replace_extension());
        if (!bytes_->TryLock(byte))
            return false;
    } catch (const std::system_error& error) {
        throw EngineError(engine_error::kCannotOpenFile, fmt::format("The lock file '{}' can't be used: {}.",
                                                                     file_.string(), error.code().message()));
    }
    owners_.emplace(byte, owner);
    return true;
}

void RowLocks::Unlock(std::string_view table, RowKey key, const void* owner) {
    const std::uint64_t byte = ByteOf(table, key);
    const auto held = owners_.find(byte);
    if (held == owners_.end() || held->second != owner)
        return;
    owners_.erase(held);
    bytes_->Unlock(byte);
}

}  // namespace kv
