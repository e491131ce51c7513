#pragma once
#include <cstdint>

#include <sqlite3.h>

namespace kv::sqlite {

/// Tells, without a query, whether anybody has committed to the database since the last look. The engine
/// keeps the head of its write-ahead log's index in memory that all programs share, and every commit changes
/// that head (its counter of changes and its checksum). Where there is no such memory the engine is asked.
class ChangeWatch {
  public:
    explicit ChangeWatch(sqlite3* database) : database_(database) {}
    bool Changed() {
        if (!head_)
            return ChangedSlowly();
        // A head that is just being written differs too; the next look then sees one change more, which does
        // no harm.
        const std::uint64_t counter = head_[kCounter];
        const std::uint64_t checksum = head_[kChecksum];
        const bool changed = counter != lastCounter_ || checksum != lastChecksum_;
        lastCounter_ = counter;
        lastChecksum_ = checksum;
        return changed;
    }

  private:
    // Places in the head, in words of eight bytes: the counter of changes, and the checksum over the whole
    // head.
    static constexpr std::size_t kCounter = 1;
    static constexpr std::size_t kChecksum = 5;

    bool ChangedSlowly();
    bool FindHead();
    bool AskEngine();

    sqlite3* database_;
    const volatile std::uint64_t* head_ = nullptr;
    bool looked_ = false;
    std::uint64_t lastCounter_ = 0;
    std::uint64_t lastChecksum_ = 0;
    std::uint32_t lastVersion_ = 0;
};

}  // namespace kv::sqlite
