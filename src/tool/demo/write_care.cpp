#include <algorithm>
#include <map>
#include <set>

#include "base/text.h"
#include "tool/demo/lists.h"
#include "tool/demo/model.h"
#include "tool/demo/money.h"
#include "tool/demo/rates.h"
#include "tool/demo/rows.h"

namespace kv::demo {
namespace {

void WriteAuthorizations(Database& work, World& world, Random random) {
    constexpr const char* kNotes[] = {" ", " ", " ", "Renewal needs the physician orders.",
                                      "Units are counted by the week."};
    TableFiller filler(work, "Authorizations");
    for (Authorization& row : world.authorizations) {
        const bool blank = row.visitType < 0;
        const VisitType& type = kVisitTypes[blank ? 0 : row.visitType];
        const Payer& payer = kPayers[row.payer];
        const int longest = row.slots.empty() ? 0 : row.slots.front().minutes / 60;
        const bool limited = longest > 0 && random.Chance(30);
        const long changed = row.status == 'A' ? row.from : std::min(row.lastVisit, world.calendar.today - 1);
        const Date saved = std::min(
            Date(static_cast<double>(changed)).AddMinutes(540.0 + static_cast<double>(random.Below(480))),
            world.calendar.now);
        const char* howOften = row.coBilling < 3 ? "" : row.monthly ? "M" : "W";
        row.sequence = filler.Add(
            {{"CLIENT", world.ClientOf(row).id},
             {"bill_code", payer.code},
             {"bill_name", payer.name},
             {"Payer_Auth_ID", row.payer == 0 ? "" : "PA" + std::to_string(random.Between(100000, 999999))},
             {"visit_type", blank ? "" : type.code},
             {"vis_desc", blank ? "" : type.description},
             {"from_date", DayOrNull(row.from)},
             {"to_DATE", DayOrNull(row.to)},
             {"HRS", row.hours},
             {"WEEKORMONTH", row.monthly ? "M" : "W"},
             {"status_code", std::string(1, row.status)},
             {"status_date", saved},
             {"EMP_Type", row.employeeType},
             {"Live_in", row.visitType == kLiveIn ? "Y" : "N"},
             {"sch_type", "R"},
             {"SHIFT_CODE", std::string(1, row.shift)},
             {"Min_Sch_Hours", limited ? 1 : 0},
             {"Max_Sch_Hours", limited ? std::max(longest, 12) : 24},
             {"NOTES", random.Pick(kNotes)},
             {"vendor", kVendor},
             {"cobilling_type", row.coBilling},
             {"cobilling_amount", row.coBillingAmount},
             {"COBilling_HowOften", howOften}});
    }
}

/// The caregiver whom the assignment names: who came last under this authorization.
int NamedCaregiver(const Authorization& row, const Slot& slot) {
    return slot.predecessor >= 0 && row.lastVisit <= slot.switchDay ? slot.predecessor : slot.caregiver;
}

class AssignmentWriter {
  public:
    AssignmentWriter(Database& work, const World& world) : world_(world), filler_(work, "assign") {}

    void Write(Authorization& row) {
        for (Slot& slot : row.slots) {
            if (slot.removed) {
                slot.sequence = -1;
                continue;
            }
            const Client& client = world_.ClientOf(row);
            const int caregiver = NamedCaregiver(row, slot);
            const char* type = kVisitTypes[row.visitType].code;
            Add(slot.sequence,
                {row.sequence, client.id, client.Name(), std::string(1, client.status),
                 std::string(1, row.status), type, type + ("-" + Left(client.Name(), 9)),
                 kPayers[row.payer].code, caregiver, row.from, row.to, slot.lastDate, slot.howOften, "A"},
                {slot.weekday, slot.start, slot.minutes});
        }
    }

    void WriteUnavailability() {
        for (int i = 0; i < static_cast<int>(world_.caregivers.size()); ++i) {
            for (const Commitment& share : world_.CaregiverAt(i).week) {
                if (share.unavailable) {
                    long sequence = 0;
                    Add(sequence,
                        {0, "", "", "", "", "", "Not Available", 0, i, share.from, share.to, share.from, 1,
                         "N"},
                        {share.weekday, share.start, share.minutes});
                }
            }
        }
    }

    long Rows() const { return filler_.Rows(); }

  private:
    struct Row {
        long authorization;
        std::string client, clientName, clientStatus, status, visitType, description;
        long billTo;
        int caregiver;
        long from, to, lastDate;
        int howOften;
        const char* type;
    };
    struct When {
        int weekday, start, minutes;
    };

    void Add(long& sequence, const Row& row, const When& when) {
        const Caregiver* caregiver = row.caregiver < 0 ? nullptr : &world_.CaregiverAt(row.caregiver);
        sequence = filler_.Add({{"author_seq", row.authorization},
                                {"vendor", kVendor},
                                {"CLIENT", row.client},
                                {"cli_name", row.clientName},
                                {"CLIENT_STATUS", row.clientStatus},
                                {"author_status", row.status},
                                {"visit_type", row.visitType},
                                {"visit_desc", row.description},
                                {"billto", row.billTo},
                                {"emp_id", caregiver != nullptr ? caregiver->id : ""},
                                {"emp_name", caregiver != nullptr ? caregiver->Name() : ""},
                                {"Day", WeekdayName(when.weekday)},
                                {"Status", std::to_string(when.weekday - 1)},
                                {"St_time", TimeOf(when.start)},
                                {"END_TIME", TimeOf(when.start + when.minutes)},
                                {"HRS", when.minutes / 60.0},
                                {"howoften", row.howOften},
                                {"st_date", DayOrNull(row.from)},
                                {"END_DATE", DayOrNull(row.to)},
                                {"Last_date", DayOrNull(row.lastDate)},
                                {"Type", row.type}});
    }

    const World& world_;
    TableFiller filler_;
};

void WriteTasks(Database& work, const World& world, Random random) {
    TableFiller filler(work, "assign_task");
    for (const Authorization& row : world.authorizations) {
        const bool aided = row.visitType >= 0 && kVisitTypes[row.visitType].discipline <= 2;
        if (!aided || row.status != 'A' || !random.Chance(55)) {
            continue;
        }
        for (const ListRow& task : kTaskCodes) {
            const auto add = [&](const char* day) {
                filler.Add({{"ID", row.sequence},
                            {"dow", day},
                            {"task", task.code},
                            {"Description", task.description}});
            };
            if (random.Chance(12)) {
                add("AUT");
                continue;
            }
            if (!random.Chance(35)) {
                continue;
            }
            std::set<int> days;
            for (const Slot& slot : row.slots) {
                days.insert(slot.weekday);
            }
            for (const int day : days) {
                if (random.Chance(80)) {
                    add(WeekdayName(day));
                }
            }
        }
    }
}

class VisitWriter {
  public:
    VisitWriter(Database& database, std::string_view table, const World& world)
        : world_(world), calendar_(world.calendar), filler_(database, table) {}

    void Write(const Visit& visit) {
        const Authorization& authorization = world_.AuthorizationOf(visit);
        const Client& client = world_.ClientOf(authorization);
        const Payer& payer = kPayers[authorization.payer];
        const VisitType& type = kVisitTypes[authorization.visitType];
        const Caregiver* caregiver = visit.caregiver < 0 ? nullptr : &world_.CaregiverAt(visit.caregiver);
        const Caregiver* travels = visit.travels < 0 ? nullptr : &world_.CaregiverAt(visit.travels);
        const bool own = authorization.payer == 0;
        const bool worked = visit.workedHours > 0;
        const Slot* slot =
            visit.slot < 0 ? nullptr : &authorization.slots[static_cast<std::size_t>(visit.slot)];
        filler_.Add(
            {{"CLIENT", client.id},
             {"vendor", kVendor},
             {"emp_id", caregiver != nullptr ? caregiver->id : ""},
             {"emp_name", caregiver != nullptr ? caregiver->Name() : ""},
             {"emp_group", caregiver != nullptr ? kCaregiverGroups[caregiver->group].description : ""},
             {"assign_seq", slot != nullptr ? slot->sequence : 0},
             {"author_seq", authorization.sequence},
             {"sch_type", "R"},
             {"Sch_code", visit.cancelled ? "C" : "S"},
             {"WEEKEND", DayOrNull(calendar_.WeekEnd(visit.day))},
             {"st_date", DayOrNull(visit.day)},
             {"Manager", client.manager < 0 ? "" : kManagers[client.manager].code},
             {"St_time", TimeOf(visit.start)},
             {"END_TIME", TimeOf(visit.start + visit.minutes)},
             {"HRS", visit.minutes / 60.0},
             {"Day", WeekdayName(Weekday(visit.day))},
             {"visit_type", type.code},
             {"visit_desc", type.description},
             {"billto", payer.code},
             {"cli_name", client.Name()},
             {"disaster_code", kPriorities[client.priority].code},
             {"cli_group", kClientGroups[client.group].description},
             {"paperwork", calendar_.paperwork},
             {"PAY_TRAVEL", travels != nullptr && travels->payMileage},
             {"PAY_ERRAND", travels != nullptr && travels->payErrand},
             {"PAY_EXPENSE", travels != nullptr && travels->payExpenses},
             {"BILL_TRAVEL", own ? client.billMileage : payer.mileage},
             {"bill_errand", own ? client.billErrand : payer.errand},
             {"BILL_EXPENSE", own ? client.billExpenses : payer.expenses},
             {"act_hrs", visit.workedHours},
             {"visit_time", worked ? Value(TimeOf(visit.workedStart)) : Value()},
             {"pay_override", Currency::FromDouble(visit.payOverride)},
             {"bill_override", Currency()},
             {"Cancelled", visit.cancelled},
             {"edited_by", visit.editedBy < 0 ? "" : kUsers[visit.editedBy].id}});
    }

    /// Declared absences are schedules without a client.
    void WriteAbsences() {
        for (const Caregiver& who : world_.caregivers) {
            for (const Span& absence : who.absences) {
                const long day = static_cast<long>(absence.from / 1440);
                const int start = static_cast<int>(absence.from % 1440);
                const int minutes = static_cast<int>(absence.to - absence.from);
                filler_.Add({{"CLIENT", ""},
                             {"vendor", kVendor},
                             {"emp_id", who.id},
                             {"emp_name", who.Name()},
                             {"emp_group", kCaregiverGroups[who.group].description},
                             {"sch_type", "N"},
                             {"Sch_code", "N"},
                             {"WEEKEND", DayOrNull(calendar_.WeekEnd(day))},
                             {"st_date", DayOrNull(day)},
                             {"Manager", ""},
                             {"St_time", TimeOf(start)},
                             {"END_TIME", TimeOf(start + minutes)},
                             {"HRS", minutes / 60.0},
                             {"Day", WeekdayName(Weekday(day))},
                             {"visit_type", ""},
                             {"visit_desc", minutes == 1440 ? "Vacation" : "Appointment"},
                             {"cli_name", ""},
                             {"disaster_code", ""},
                             {"cli_group", ""},
                             {"edited_by", ""}});
            }
        }
    }

    long Rows() const { return filler_.Rows(); }

  private:
    const World& world_;
    const Calendar& calendar_;
    TableFiller filler_;
};

/// Writes the visits assignment by assignment, as schedule creation leaves them, which also keeps the
/// indexes' pages at hand. The oldest go into the archive. Answers the rows of kestrava.mdb.
long WriteVisits(Database& work, Database& archive, const World& world) {
    const auto isOld = [&](const Visit& visit) { return visit.day < world.calendar.keptFrom; };
    VisitWriter old(archive, "Sch_day", world);
    for (const Visit& visit : world.visits) {
        if (isOld(visit)) {
            old.Write(visit);
        }
    }
    // Archived rows have kept their numbers, so the numbers of the others lie behind them.
    work.SetNextCounter("sch_day", old.Rows() + 1);
    VisitWriter present(work, "sch_day", world);
    for (const Visit& visit : world.visits) {
        if (!isOld(visit)) {
            present.Write(visit);
        }
    }
    present.WriteAbsences();
    return present.Rows();
}

/// Who has visited whom, the archived visits counted too.
void WriteVisited(Database& work, const World& world) {
    std::map<std::pair<int, int>, std::pair<long, long>>
        visited;  // client and caregiver: last day and visits
    for (const Visit& visit : world.visits) {
        if (visit.workedHours > 0) {
            auto& [last, count] = visited[{world.AuthorizationOf(visit).client, visit.caregiver}];
            last = std::max(last, visit.day);
            ++count;
        }
    }
    TableFiller filler(work, "cli_emp");
    for (const auto& [pair, visits] : visited) {
        filler.Add({{"client", world.clients[static_cast<std::size_t>(pair.first)].id},
                    {"emp_id", world.CaregiverAt(pair.second).id},
                    {"Last_date", DayOrNull(visits.first)},
                    {"num_visits", visits.second}});
    }
}

}  // namespace

CareCounts WriteCare(Database& work, Database& archive, World& world, Random random) {
    WriteAuthorizations(work, world, random.Fork(1));
    AssignmentWriter assignments(work, world);
    for (Authorization& row : world.authorizations) {
        assignments.Write(row);
    }
    assignments.WriteUnavailability();
    WriteTasks(work, world, random.Fork(2));
    const long schedules = WriteVisits(work, archive, world);
    WriteVisited(work, world);
    WriteClientRates(work, world);
    WriteMoney(work, archive, world);
    return {static_cast<long>(world.authorizations.size()), assignments.Rows(), schedules};
}

}  // namespace kv::demo
