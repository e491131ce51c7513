#pragma once
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "datastore/workspace.h"
#include "tool/demo/random.h"

// The made-up agency as its makers hand it on; each step fills its share, then the rows are written. Days are
// day numbers of the store, times are minutes since midnight, people and things are named by their place in
// the vectors.
namespace kv::demo {

/// The agency's week and the span that is made.
struct Calendar {
    Date now;
    long today = 0;
    int endWeekday = 7;      ///< the day on which the week ends, 1 is Sunday
    int horizonWeeks = 4;    ///< weeks that are scheduled ahead
    bool paperwork = false;  ///< new visits are marked for paperwork
    double mileageRate = 0;
    long firstDay = 0;  ///< the first day with visits
    long keptFrom = 0;  ///< older visits lie in the archive
    std::set<long> holidays;

    /// The first week end on or after the day.
    long WeekEnd(long day) const;
    /// The last week end that schedule creation reaches.
    long Horizon() const { return today + 7L * horizonWeeks; }
};
/// Reads the agency's week, horizon and holidays.
Calendar ReadCalendar(Database& code, Date now);

struct Holiday {
    long day;
    const char* name;
};
std::vector<Holiday> HolidaysOf(int year);

/// 1 is Sunday.
int Weekday(long day);
/// "SUN" for 1.
const char* WeekdayName(int weekday);

/// Minutes of an absolute time line: day * 1440 + minute.
struct Span {
    std::int64_t from = 0;
    std::int64_t to = 0;
    bool Overlaps(const Span& other) const { return from < other.to && other.from < to; }
};

/// What a week holds for a caregiver from one day to another.
struct Commitment {
    int weekday = 1;
    int start = 0;
    int minutes = 0;
    long from = 0;
    long to = 0;
    bool unavailable = false;
};

struct Caregiver {
    std::string id, last, first, phone, zip, town, street;
    bool female = true;
    int discipline = 0;  ///< place in the disciplines; the level is one more
    int group = 0;
    std::vector<int> languages, districts, skills;
    const char* type = "FIELD";
    bool liveIn = false;
    char status = 'A';
    long endDay = 0;  ///< the last day of work; 0 for none
    double hoursWanted = 40;
    bool payMileage = false, payErrand = false, payExpenses = false;
    double raise = 1;  ///< of the usual pay

    double committedHours = 0;
    std::vector<Commitment> week;
    std::vector<Span> absences;  ///< declared for single days
    std::vector<Span> busy;      ///< visits of single days

    std::string Name() const { return last + ", " + first; }
    bool WorksOn(long day) const { return status == 'A' || (endDay != 0 && endDay >= day); }
};

/// A row of Emp_willwork.
struct WillWork {
    int caregiver = 0;
    long day = 0;
    int from = 0;
    int to = 0;
};

enum class Care { Regular, Closed, Suspended, Deceased, Potential, PotentialInactive, JustAdded };

struct Client {
    std::string id, last, first, street, town, zip, phone, secondPhone;
    bool female = true;
    char caregiverSex = 'E';
    int district = 0, language = 0, discipline = 0, group = 0, priority = 0, payer = 0;
    int manager = -1;
    bool holidayCover = true;
    bool telephony = false;
    bool billMileage = false, billErrand = false, billExpenses = false;
    std::vector<int> skills;
    std::vector<int> banned;
    Care care = Care::Regular;
    char status = 'A';
    long firstContact = 0, start = 0, end = 0;  ///< 0 for none

    std::string Name() const { return last + ", " + first; }
};

/// A weekly visit of an authorization: a row of assign.
struct Slot {
    int weekday = 1;
    int start = 0;
    int minutes = 0;
    int howOften = 1;
    int caregiver = -1;    ///< -1 for an open one
    int predecessor = -1;  ///< who came before switchDay
    long switchDay = 0;
    long lastDate = 0;     ///< the week end that schedule creation has reached
    bool removed = false;  ///< the assignment was deleted after its visits
    long sequence = 0;
};

struct Authorization {
    int client = 0;
    int payer = 0;
    int visitType = -1;  ///< -1 for a blank one
    long from = 0;
    long to = 0;
    long lastVisit = 0;  ///< no visit after it, whatever `to` says
    char status = 'A';
    char shift = '1';
    double hours = 0;
    bool monthly = false;
    const char* employeeType = "FIELD";
    int coBilling = 0;
    double coBillingAmount = 0;
    std::vector<Slot> slots;
    long sequence = 0;
};

struct Visit {
    int authorization = 0;
    int slot = -1;  ///< -1 for a visit that was typed in by hand
    long day = 0;
    int start = 0;
    int minutes = 0;
    int caregiver = -1;
    int travels = -1;  ///< whose pay options the row bears: the caregiver's before she was taken off
    bool cancelled = false;
    double workedHours = 0;
    int workedStart = 0;
    double payOverride = 0;
    int editedBy = -1;

    Span Time() const { return {day * 1440 + start, day * 1440 + start + minutes}; }
};

struct World {
    Calendar calendar;
    std::vector<Caregiver> caregivers;
    std::vector<Client> clients;
    std::vector<Authorization> authorizations;
    std::vector<Visit> visits;
    std::vector<WillWork> willWork;

    const Client& ClientOf(const Authorization& row) const {
        return clients[static_cast<std::size_t>(row.client)];
    }
    const Authorization& AuthorizationOf(const Visit& visit) const {
        return authorizations[static_cast<std::size_t>(visit.authorization)];
    }
    const Caregiver& CaregiverAt(int place) const { return caregivers[static_cast<std::size_t>(place)]; }
};

// The steps, in their order.
void MakeCaregivers(World& world, long count, Random random);
void MakeClients(World& world, long count, Random random);
/// Plans authorizations and their weekly visits, finds caregivers for them, and sets the clients' status and
/// dates.
void PlanCare(World& world, Random random);
/// Turns the weekly visits into day schedules as schedule creation does, and lets the past ones be worked.
void MakeVisits(World& world, Random random);

/// Writes the caregivers with all that is told of them, but not their visits.
void WriteCaregivers(Database& work, const World& world, Random random);
/// Writes clients, templates, referral sources, and what is kept of each client beside his care.
void WriteClients(Database& work, Database& code, const World& world, Random random);
struct CareCounts {
    long authorizations = 0;
    long assignments = 0;
    long schedules = 0;
};
/// Writes authorizations, assignments, schedules, rates, and what payroll and billing have made of them;
/// notes the sequences.
CareCounts WriteCare(Database& work, Database& archive, World& world, Random random);
/// Writes events, To Do items, documents, the history of changes and remembered settings.
void WriteJournal(Database& work, Database& archive, const World& world, Random random);

}  // namespace kv::demo
