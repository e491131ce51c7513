#include "tool/demo/history.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/format.h"
#include "tool/demo/lists.h"
#include "tool/demo/people.h"
#include "tool/demo/rates.h"
#include "tool/demo/rows.h"

namespace kv::demo {
namespace {

constexpr int kKeptDays = 120;
constexpr const char* kLineEnd = "\r\n";

Date At(long day, Random& random) {
    return Date(static_cast<double>(day)).AddMinutes(static_cast<double>(random.Between(480, 1050)));
}

const char* PickUser(Random& random) {
    return kUsers[random.Below(kActiveUsers)].id;
}

std::string DayText(long day) {
    return FormatDate(Date(static_cast<double>(day)), "MMM/DD/YYYY");
}

std::string Heading(Date when, const char* user) {
    return "When: " + FormatDate(when, "MMM/DD/YY HH:MM AM/PM") + "    Who: " + user + kLineEnd;
}

void AddClientChanges(History& history, const Client& client, long today, Random random) {
    for (long n = random.Below(3); n > 0; --n) {
        const Address old = MakeAddress(random);
        const std::string phone = MakePhone(random.Below(1800));
        const std::string reasons[] = {"Street: " + old.street + " to " + client.street + kLineEnd,
                                       "Phone: " + phone + " to " + client.phone + kLineEnd,
                                       std::string("Client Group:") + random.Pick(kClientGroups).description +
                                           " to " + kClientGroups[client.group].description + kLineEnd,
                                       std::string("Holiday Coverate:") +
                                           (client.holidayCover ? "NO" : "YES") + " to " +
                                           (client.holidayCover ? "YES" : "NO") + kLineEnd};
        const Date when = At(today - random.Between(1, 200), random);
        history.Add({when, "CLI", client.id, PickUser(random), "Edit", random.Pick(reasons)});
    }
}

void AddRateChange(History& history, const World& world, const Authorization& row, Random& random) {
    const Rates rates = ClientRates(row.client, row.visitType);
    std::string reason =
        fmt::format("Call Type: {}  Desc: {}\r\nMethod: {}\r\n", kVisitTypes[row.visitType].code,
                    kVisitTypes[row.visitType].description, kVisitTypes[row.visitType].method);
    for (std::size_t i = 0; i < rates.shift.size(); ++i) {
        reason += fmt::format("Rate {}: {}\r\n", i + 1, rates.shift[i].ToDouble());
    }
    reason += fmt::format("Live-in: {}\r\n", rates.liveIn.ToDouble());
    const Date when = At(std::min(row.from, world.calendar.today - 1), random);
    history.Add({when, "CLI", world.ClientOf(row).id, PickUser(random), "Bill Rate", reason});
}

void AddAuthorizationChange(History& history, const World& world, const Authorization& row, Random& random) {
    const bool blank = row.visitType < 0;
    const long day = row.status == 'A' ? row.from : row.lastVisit;
    const Date when = At(std::min(day, world.calendar.today - 1), random);
    const char* user = PickUser(random);
    const std::string reason =
        Heading(when, user) + "Start Date: " + DayText(row.from) + kLineEnd +
        "  End Date: " + DayText(row.to) + kLineEnd + "     Payor: " + kPayers[row.payer].name + kLineEnd +
        " Call Type: " + (blank ? "" : kVisitTypes[row.visitType].description) + kLineEnd +
        "    Status: " + row.status + kLineEnd + "   24 Hour: " + (row.visitType == kLiveIn ? "Y" : "N") +
        kLineEnd + "-----" + kLineEnd;
    history.Add({when, "AUT", std::to_string(row.sequence), user, "AUTH", reason});
}

void AddAssignmentChange(History& history, const World& world, const Authorization& row, const Slot& slot,
                         Random& random) {
    if (slot.sequence <= 0 || slot.caregiver < 0 || row.status != 'A') {
        return;
    }
    const Caregiver& who = world.CaregiverAt(slot.caregiver);
    const long today = world.calendar.today;
    const Date when = At(today - 1 - random.Below(std::clamp(today - row.from, 1L, 150L)), random);
    const char* user = PickUser(random);
    const std::string reason =
        Heading(when, user) + "Start Time: " + FormatDate(TimeOf(slot.start), "HH:MM Am/PM") + kLineEnd +
        "     Hours: " + FormatNumber(slot.minutes / 60.0, "#0.00") + kLineEnd + " Caregiver: " + who.id +
        " - " + who.Name() + kLineEnd + " How Often: " + std::to_string(slot.howOften) + kLineEnd +
        "      Date: " + DayText(slot.lastDate) + kLineEnd + "       Day: " + WeekdayName(slot.weekday) +
        kLineEnd + "-----" + kLineEnd;
    history.Add({when, "ASN", std::to_string(slot.sequence), user, "Edit", reason});
}

}  // namespace

void History::Write(Database& work, Database& archive) {
    std::stable_sort(changes_.begin(), changes_.end(),
                     [](const Change& a, const Change& b) { return a.when < b.when; });
    TableFiller present(work, "changes");
    TableFiller old(archive, "changes");
    for (const Change& change : changes_) {
        TableFiller& filler = change.when.DayNumber() < calendar_.today - kKeptDays ? old : present;
        filler.Add({{"Type", change.type},
                    {"Area", change.area},
                    {"Date", change.when.DayOnly()},
                    {"Time", FormatDate(change.when, "HH:MM:SS AM/PM")},
                    {"User", change.user},
                    {"Status", change.status},
                    {"reason", change.reason}});
    }
}

void AddRecordHistory(History& history, const World& world, Random random) {
    for (const Client& client : world.clients) {
        AddClientChanges(history, client, world.calendar.today, random.Fork(random.Next()));
    }
    for (const Authorization& row : world.authorizations) {
        AddAuthorizationChange(history, world, row, random);
        if (row.payer == 0 && row.visitType >= 0 && random.Chance(30)) {
            AddRateChange(history, world, row, random);
        }
        for (const Slot& slot : row.slots) {
            if (random.Chance(12)) {
                AddAssignmentChange(history, world, row, slot, random);
            }
        }
    }
    for (const Caregiver& who : world.caregivers) {
        if (random.Chance(15)) {
            const Date when = At(world.calendar.today - random.Between(1, 180), random);
            history.Add({when, "EMP", who.id, PickUser(random), "Edit", "Phone: to " + who.phone + kLineEnd});
        }
    }
}

}  // namespace kv::demo
