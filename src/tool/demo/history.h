#pragma once
#include <string>
#include <vector>

#include "tool/demo/model.h"

namespace kv::demo {

/// The rows of `changes`, gathered record by record and written by time: the older ones into the archive.
class History {
  public:
    struct Change {
        Date when;
        const char* type;
        std::string area;
        std::string user;
        const char* status;
        std::string reason;
    };

    explicit History(const Calendar& calendar) : calendar_(calendar) {}
    void Add(Change change) { changes_.push_back(std::move(change)); }
    void Write(Database& work, Database& archive);

  private:
    const Calendar& calendar_;
    std::vector<Change> changes_;
};

/// Adds what was changed on clients, caregivers, authorizations, assignments and schedules.
void AddRecordHistory(History& history, const World& world, Random random);

}  // namespace kv::demo
