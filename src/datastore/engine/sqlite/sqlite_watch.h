#pragma once
#include <array>
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

    static constexpr std::size_t kHeadSize = 48;
    sqlite3* database_;
    const volatile unsigned char* head_ = nullptr;
    bool looked_ = false;
    std::array<unsigned char, kHeadSize> last_{};
    std::uint32_t lastVersion_ = 0;
};

}  // namespace kv::sqlite
