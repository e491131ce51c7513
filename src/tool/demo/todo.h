#pragma once
#include <string>

#include "tool/demo/model.h"
#include "tool/demo/rows.h"

namespace kv::demo {

/// Writes To Do items: single ones, reminders of documented events, and recurring series with all their
/// occurrences.
class ToDoWriter {
  public:
    ToDoWriter(Database& work, const World& world);
    /// A reminder of an event that was documented on the day.
    void AddReminder(const Client& client, const std::string& caregiver, long event, long day,
                     Random& random);
    void WriteClientItems(int place, Random random);
    /// Items of caregivers, referral sources and of the office itself.
    void WriteOfficeItems(Random random);

  private:
    struct Item {
        long day = 0;
        std::string client, caregiver;
        long referral = 0;
        long event = 0;
        const char* category = "Tasks";
        long series = 0;
        std::string seriesText;
        Value original;
    };
    /// What the occurrences of one item have in common.
    struct Content {
        const char* creator;
        const char* creatorName;
        const char* assigned;
        const char* subject;
        const char* action;
        const char* priority;
        std::string memo;
        int start;
        bool alarm;
    };
    Content MakeContent(Random& random) const;
    long Add(const Item& item, const Content& content, bool completed);
    void AddSeries(const Client& client, int kind, Random& random);

    Database& work_;
    const World& world_;
    long today_;
    TableFiller tasks_;
    TableFiller series_;
};

}  // namespace kv::demo
