#include "tool/demo/money.h"

#include <map>
#include <set>
#include <tuple>

#include "base/numbers.h"
#include "tool/demo/lists.h"
#include "tool/demo/rates.h"
#include "tool/demo/rows.h"

namespace kv::demo {
namespace {

constexpr long kKeptDays = 28;

struct Sum {
    double hours = 0;
    double amount = 0;
};
/// Week end, client, caregiver or payer, call type.
using Sums = std::map<std::tuple<long, int, int, int>, Sum>;

char MethodOf(int visitType) {
    return kVisitTypes[visitType].method[0];
}

double PayOf(const World& world, const Visit& visit, int visitType) {
    const Caregiver& who = world.CaregiverAt(visit.caregiver);
    const bool liveIn = visitType == kLiveIn;
    if (visit.payOverride > 0) {
        return visit.payOverride;
    }
    if (HasOwnPayRow(visit.caregiver, who, visitType)) {
        return Amount(PayRates(who, visitType), MethodOf(visitType), liveIn, visit);
    }
    return Amount(PayRates(who, UsualVisitType(who)), 'H', liveIn, visit);
}

double BillOf(const Authorization& authorization, const Visit& visit) {
    const int type = authorization.visitType;
    const Rates rates = authorization.payer == 0 ? ClientRates(authorization.client, type)
                                                 : PayerRates(authorization.payer, type);
    return Amount(rates, MethodOf(type), type == kLiveIn, visit);
}

void AddTo(Sum& sum, const Visit& visit, double amount) {
    sum.hours += visit.workedHours;
    sum.amount += amount;
}

/// Writes the sums; the value of the who column is made from the key's third member.
template <typename WhoOf>
void WriteSums(Database& work, Database& archive, const char* table, const char* who, WhoOf whoOf,
               const Sums& sums, const World& world) {
    const long lastOld = world.calendar.WeekEnd(world.calendar.today) - 7 - kKeptDays;
    const auto kept = sums.lower_bound({lastOld + 1, -1, -1, -1});
    TableFiller old(archive, table);
    // Archived rows have kept their numbers.
    work.SetNextCounter(table, std::distance(sums.begin(), kept) + 1);
    TableFiller present(work, table);
    for (const auto& [key, sum] : sums) {
        const auto& [week, client, other, type] = key;
        TableFiller& filler = week > lastOld ? present : old;
        filler.Add({{"CLIENT", world.clients[static_cast<std::size_t>(client)].id},
                    {who, whoOf(other)},
                    {"st_date", DayOrNull(week)},
                    {"visit_type", kVisitTypes[type].code},
                    {"HRS", sum.hours},
                    {"amount", Currency::FromDouble(RoundTo(sum.amount, 2))}});
    }
}

void AddRate(TableFiller& filler, const std::string& client, const Rates& rates, const VisitType& type) {
    filler.Add({{"CLIENT", client},
                {"visittype", type.code},
                {"Description", type.description},
                {"method", type.method},
                {"rate1", rates.shift[0]},
                {"rate2", rates.shift[1]},
                {"rate3", rates.shift[2]},
                {"rate4", rates.shift[3]},
                {"rate5", rates.shift[4]},
                {"rate6", rates.shift[5]},
                {"liveinrate", rates.liveIn}});
}

}  // namespace

void WriteClientRates(Database& work, const World& world) {
    std::set<std::pair<int, int>> needed;  // client and call type
    for (const Authorization& row : world.authorizations) {
        if (row.payer == 0 && row.visitType >= 0) {
            needed.insert({row.client, row.visitType});
            if (row.client % 3 == 0) {
                needed.insert({row.client, kMileage});
            }
        }
    }
    TableFiller filler(work, "clirate");
    for (const auto& [client, type] : needed) {
        AddRate(filler, world.clients[static_cast<std::size_t>(client)].id, ClientRates(client, type),
                kVisitTypes[type]);
    }
    for (const ClientTemplate& pattern : kTemplates) {
        AddRate(filler, pattern.id, ClientRates(0, pattern.visitType), kVisitTypes[pattern.visitType]);
    }
}

void WriteMoney(Database& work, Database& archive, const World& world) {
    Sums payroll;
    Sums billing;
    const long thisWeek = world.calendar.WeekEnd(world.calendar.today);
    for (const Visit& visit : world.visits) {
        const long week = world.calendar.WeekEnd(visit.day);
        if (visit.workedHours > 0 && week < thisWeek) {
            const Authorization& row = world.AuthorizationOf(visit);
            AddTo(payroll[{week, row.client, visit.caregiver, row.visitType}], visit,
                  PayOf(world, visit, row.visitType));
            AddTo(billing[{week, row.client, row.payer, row.visitType}], visit, BillOf(row, visit));
        }
    }
    WriteSums(
        work, archive, "Payroll", "emp_id", [&](int who) { return Value(world.CaregiverAt(who).id); },
        payroll, world);
    WriteSums(
        work, archive, "Billing", "billto", [](int payer) { return Value(kPayers[payer].code); }, billing,
        world);
}

}  // namespace kv::demo
