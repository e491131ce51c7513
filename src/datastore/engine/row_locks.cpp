#include "datastore/engine/row_locks.h"

#include <optional>
#include <set>
#include <system_error>

#include <fmt/format.h>

#include "base/platform.h"
#include "base/text.h"
#include "datastore/engine_error.h"

namespace kv {
namespace {

constexpr std::uint64_t kHashStart = 0xCBF29CE484222325U;
constexpr std::uint64_t kHashFactor = 0x100000001B3U;
// File offsets, and the numbers of a server's locks, are signed.
constexpr std::uint64_t kLastNumber = 0x3FFFFFFFFFFFFFFFU;

std::uint64_t Mix(std::uint64_t hash, std::uint64_t byte) {
    return (hash ^ byte) * kHashFactor;
}

/// Signatures stand in the lock file's content, each row's in one of so many places. Where two rows share one
/// the later edit is the one that is known by name.
constexpr std::uint64_t kSignatures = 4096;
constexpr std::size_t kSignatureSize = 128;

std::uint64_t SignaturePlace(std::uint64_t row) {
    return row % kSignatures * kSignatureSize;
}

std::string RowText(std::uint64_t row) {
    return fmt::format("{:016x} ", row);
}

class FileLockBoard final : public LockBoard {
  public:
    explicit FileLockBoard(std::filesystem::path file) : file_(std::move(file)) {}

    bool TryLock(std::uint64_t row) override {
        try {
            if (!bytes_)
                bytes_.emplace(file_, std::filesystem::path(file_).replace_extension());
            return bytes_->TryLock(row);
        } catch (const std::system_error& error) {
            throw EngineError(
                engine_error::kCannotOpenFile,
                fmt::format("The lock file '{}' can't be used: {}.", file_.string(), error.code().message()));
        }
    }
    void Unlock(std::uint64_t row) override {
        if (signed_.erase(row) > 0)
            bytes_->WriteNote(SignaturePlace(row), std::string(kSignatureSize, '\0'));
        bytes_->Unlock(row);
    }
    void Sign(std::uint64_t row, std::string_view seat) override {
        std::string text = RowText(row) + std::string(seat);
        text.resize(kSignatureSize);
        bytes_->WriteNote(SignaturePlace(row), text);
        signed_.insert(row);
    }
    std::string Holder(std::uint64_t row) override {
        const std::string text =
            bytes_ ? bytes_->ReadNote(SignaturePlace(row), kSignatureSize) : std::string();
        const std::string head = RowText(row);
        return text.starts_with(head) ? text.substr(head.size()).c_str() : std::string();
    }

  private:
    std::filesystem::path file_;
    std::optional<ByteLocks> bytes_;
    std::set<std::uint64_t> signed_;
};

}  // namespace

std::unique_ptr<LockBoard> MakeFileLockBoard(std::filesystem::path file) {
    return std::make_unique<FileLockBoard>(std::move(file));
}

// The hash is written out, since no library promises the same one to every program.
std::uint64_t RowLocks::NumberOf(std::string_view table, RowKey key) {
    std::uint64_t hash = kHashStart;
    for (const char c : Lower(table))
        hash = Mix(hash, static_cast<unsigned char>(c));
    for (int shift = 0; shift < 64; shift += 8)
        hash = Mix(hash, (static_cast<std::uint64_t>(key) >> shift) & 0xFF);
    return hash & kLastNumber;
}

bool RowLocks::TryLock(std::string_view table, RowKey key, const void* owner) {
    const std::uint64_t row = NumberOf(table, key);
    if (const auto held = owners_.find(row); held != owners_.end())
        return held->second == owner;
    if (!board_->TryLock(row))
        return false;
    owners_.emplace(row, owner);
    return true;
}

bool RowLocks::Holds(std::string_view table, RowKey key, const void* owner) const {
    const auto held = owners_.find(NumberOf(table, key));
    return held != owners_.end() && held->second == owner;
}

void RowLocks::Sign(std::string_view table, RowKey key) {
    if (!seat_.empty())
        board_->Sign(NumberOf(table, key), seat_);
}

std::string RowLocks::Holder(std::string_view table, RowKey key) const {
    return HoldsAny(table, key) ? seat_ : board_->Holder(NumberOf(table, key));
}

void RowLocks::Unlock(std::string_view table, RowKey key, const void* owner) {
    const std::uint64_t row = NumberOf(table, key);
    const auto held = owners_.find(row);
    if (held == owners_.end() || held->second != owner)
        return;
    owners_.erase(held);
    board_->Unlock(row);
}

}  // namespace kv
