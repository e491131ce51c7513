#include <algorithm>

#include <fmt/format.h>

#include "base/format.h"
#include "base/numbers.h"
#include "tool/demo/history.h"
#include "tool/demo/lists.h"
#include "tool/demo/model.h"
#include "tool/demo/rows.h"
#include "tool/demo/texts.h"
#include "tool/demo/todo.h"

namespace kv::demo {
namespace {

/// A caregiver of the client's authorizations, or -1.
std::vector<int> UsualCaregivers(const World& world) {
    std::vector<int> usual(world.clients.size(), -1);
    for (const Authorization& row : world.authorizations) {
        for (const Slot& slot : row.slots) {
            if (slot.caregiver >= 0) {
                usual[static_cast<std::size_t>(row.client)] = slot.caregiver;
            }
        }
    }
    return usual;
}

class EventWriter {
  public:
    EventWriter(Database& work, const World& world, ToDoWriter& toDo, History& history)
        : world_(world),
          usual_(UsualCaregivers(world)),
          events_(work, "logging"),
          toDo_(toDo),
          history_(history) {}

    void Write(int place, Random random) {
        const Client& client = world_.clients[static_cast<std::size_t>(place)];
        for (long n = random.Below(client.status == 'Z' ? 2 : 5); n > 0; --n) {
            WriteEvent(client, random.Chance(70) ? usual_[static_cast<std::size_t>(place)] : -1, random);
        }
    }

  private:
    void WriteEvent(const Client& client, int caregiver, Random& random) {
        const Calendar& calendar = world_.calendar;
        const long day = calendar.today - random.Below(170) - 1;
        const int minute = static_cast<int>(random.Between(480, 1080));
        const User& user = kUsers[random.Below(kActiveUsers)];
        const std::string id = caregiver < 0 ? "" : world_.CaregiverAt(caregiver).id;
        const std::string type = random.Chance(4)   ? ""
                                 : random.Chance(4) ? "Delete a schedule"
                                                    : random.Pick(kEventTypes).description;
        const std::string note = random.Pick(kEventNotes);
        const long sequence =
            events_.Add({{"CLIENT", client.id},
                         {"cli_name", client.Name()},
                         {"EMP", id},
                         {"Emp_name", caregiver < 0 ? "" : world_.CaregiverAt(caregiver).Name()},
                         {"LOG_DATE", DayOrNull(day)},
                         {"LOG_TIME", TimeOf(minute)},
                         {"Description", type},
                         {"LONG_DESC", note},
                         {"log_emp", user.id},
                         {"edit_DATE", DayOrNull(day)}});
        if (random.Chance(35)) {
            toDo_.AddReminder(client, id, sequence, day, random);
        }
        if (random.Chance(12)) {
            const Date edited = Date(static_cast<double>(day)).AddMinutes(minute + 30.0);
            history_.Add({edited, "LOG", std::to_string(sequence), user.id, "Edit",
                          "Documented Event before changes were saved:\r\nCaregiver ID: " + id +
                              "   Date: " + FormatDate(edited, "M/D/YYYY") +
                              "   Time: " + FormatDate(TimeOf(minute), "H:NN:SS AM/PM") +
                              "\r\nType: " + type + "\r\nNote: Called."});
        }
    }

    const World& world_;
    std::vector<int> usual_;
    TableFiller events_;
    ToDoWriter& toDo_;
    History& history_;
};

void RememberSettings(Database& work) {
    TableFiller settings(work, "Default_settings");
    settings.Add({{"master_name", "DEMO|KVCLI|frmClient|CMBwhichMap"}, {"field_text", "Map Quest"}});
    settings.Add({{"master_name", "LEONA|KVSCH|FRMempsug|CHKDiscipline"}, {"field_text", "0"}});
    settings.Add({{"master_name", "LEONA|KVREP|frm2005|cmbSort"}, {"field_text", "Event Date"}});
    TableFiller options(work, "user_Default_options");
    options.Add({{"master_name", "LEONA|KVSCH|FRMempsug|"}, {"option_text", "Always"}});
    options.Add({{"master_name", "OSCAR|KVCLI|frmClient|"}, {"option_text", "Never"}});
}

}  // namespace

void WriteJournal(Database& work, Database& archive, const World& world, Random random) {
    History history(world.calendar);
    ToDoWriter toDo(work, world);
    EventWriter events(work, world, toDo, history);
    for (std::size_t i = 0; i < world.clients.size(); ++i) {
        events.Write(static_cast<int>(i), random.Fork(3 * i));
        toDo.WriteClientItems(static_cast<int>(i), random.Fork(3 * i + 1));
    }
    toDo.WriteOfficeItems(random.Fork(1000003));
    AddRecordHistory(history, world, random.Fork(1000004));
    history.Write(work, archive);
    RememberSettings(work);
}

}  // namespace kv::demo
