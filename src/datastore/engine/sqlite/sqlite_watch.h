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
    bool Changed();

  private:
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
