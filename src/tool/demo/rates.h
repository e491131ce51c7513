#pragma once
#include <array>
#include <vector>

#include "datastore/value.h"
#include "tool/demo/model.h"

namespace kv::demo {

/// Weekday day, evening and night, weekend day, evening and night, and a day of living in.
struct Rates {
    std::array<Currency, 6> shift;
    Currency liveIn;
};

/// True for a call type that is billed, false for one of the payroll alone.
bool IsBilled(int visitType);
Rates PayerRates(int payer, int visitType);
/// What a client who pays himself is billed.
Rates ClientRates(int client, int visitType);
/// What a caregiver is paid for a call type at any client.
Rates PayRates(const Caregiver& caregiver, int visitType);
/// The call type whose pay is also the caregiver's own rate.
int UsualVisitType(const Caregiver& caregiver);
/// True when the caregiver's pay for the call type stands in a row of its own.
bool HasOwnPayRow(int caregiver, const Caregiver& who, int visitType);

/// The place of a visit's shift by its start: weekday or weekend, day from 7, evening from 15, night from 23.
int ShiftOf(long day, int start);
/// What a worked visit comes to at the rate of its start: by the hour for method "H", for the whole visit for
/// "V".
double Amount(const Rates& rates, char method, bool liveIn, const Visit& visit);

}  // namespace kv::demo
