#include "tool/demo/rates.h"

#include <cmath>

#include "tool/demo/lists.h"

namespace kv::demo {
namespace {

constexpr double kShiftExtra[] = {0, 0.75, 1.50, 1.00, 1.75, 2.50};
constexpr double kLiveInHours = 9.5;  // that are paid of a day of living in

Rates RatesFrom(double usual) {
    Rates rates;
    for (std::size_t i = 0; i < rates.shift.size(); ++i) {
        rates.shift[i] =
            Currency::FromDouble(usual == 0 ? 0 : std::round((usual + kShiftExtra[i]) * 20) / 20);
    }
    rates.liveIn = Currency::FromDouble(std::round(usual * kLiveInHours));
    return rates;
}

}  // namespace

bool IsBilled(int visitType) {
    return kVisitTypes[visitType].bill > 0;
}

Rates PayerRates(int payer, int visitType) {
    return RatesFrom(kVisitTypes[visitType].bill * kPayers[payer].percent / 100.0);
}

Rates ClientRates(int client, int visitType) {
    return RatesFrom(kVisitTypes[visitType].bill + client % 4 * 0.50);
}

Rates PayRates(const Caregiver& caregiver, int visitType) {
    return RatesFrom(kVisitTypes[visitType].pay * caregiver.raise);
}

int UsualVisitType(const Caregiver& caregiver) {
    constexpr int kUsual[] = {kHomemaker, kPersonalCare, kHomeHealth, kNurse, kAssessment};
    return kUsual[caregiver.discipline];
}

bool HasOwnPayRow(int caregiver, const Caregiver& who, int visitType) {
    const VisitType& type = kVisitTypes[visitType];
    return type.pay > 0 && type.discipline <= who.discipline && visitType != UsualVisitType(who) &&
           (caregiver % 3 == 0 || visitType == kAssessment);
}

int ShiftOf(long day, int start) {
    const int weekday = Weekday(day);
    const int shift = start >= 7 * 60 && start < 15 * 60 ? 0 : start >= 15 * 60 && start < 23 * 60 ? 1 : 2;
    return (weekday == 1 || weekday == 7 ? 3 : 0) + shift;
}

double Amount(const Rates& rates, char method, bool liveIn, const Visit& visit) {
    if (liveIn) {
        return rates.liveIn.ToDouble() / 24 * visit.workedHours;
    }
    const double rate = rates.shift[static_cast<std::size_t>(ShiftOf(visit.day, visit.start))].ToDouble();
    return method == 'V' ? rate : rate * visit.workedHours;
}

}  // namespace kv::demo
