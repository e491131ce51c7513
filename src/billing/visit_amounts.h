#pragma once
#include <array>
#include <map>
#include <optional>
#include <string>

#include "billing/client_rates.h"
#include "session/session.h"

namespace kv {

// What a payer is billed and a caregiver is paid for a visit that is not made yet.

/// The visit as far as money goes.
struct RatedVisit {
    std::string client;
    std::string visitType;
    long billCode = 0;
    bool liveIn = false;
    std::string emp_id;  ///< for the pay
};

/// A row of rates: the client's, a payer's, or a caregiver's.
struct RateRow {
    std::string method;             ///< "H" by the hour, "V" by the visit
    std::array<double, 6> rates{};  ///< weekday day, evening, night, then weekend
    double liveIn = 0;
};
RateRow ReadRates(const Recordset& row);

using ShiftTimes = std::array<ShiftWindow, 6>;

/// The bill: the whole visit by the shift in which it starts; 0 where no shift holds its start or there is no
/// row.
double RateVisitForBilling(const ShiftTimes& shifts, const RateRow* row, Date start, double hours);
/// The pay: the visit cut at the ends of the shifts and at midnight, each piece by its shift.
double RateVisitForPay(const ShiftTimes& shifts, const RateRow& row, Date start, double hours);

/// Both amounts for many visits: shifts and rows are read once. Throws EngineError.
class VisitAmounts {
  public:
    explicit VisitAmounts(Session& session);
    /// Reads the pay rates of all caregivers for visits of that client and type, for asking many of them.
    void ReadPayRates(const std::string& client, const std::string& visitType);

    /// In dollars, not rounded; 0 without a rate.
    double Bill(const RatedVisit& visit, Date start, double hours);
    /// The caregiver's rate for the client, else for the call type, else her general one.
    double Pay(const RatedVisit& visit, Date start, double hours);

  private:
    std::optional<RateRow> BillRow(const RatedVisit& visit);
    std::optional<RateRow> PayRow(const RatedVisit& visit);

    Session& session_;
    ShiftTimes shifts_;
    std::string client_, visitType_;  ///< whose pay rates were read
    bool read_ = false;
    std::map<std::string, RateRow> ofClient_, ofType_, general_;  ///< by the caregiver's id in capitals
};

/// One visit alone. Throws EngineError.
double BillAmountForVisit(Session& session, const RatedVisit& visit, Date start, double hours);
double PayAmountForVisit(Session& session, const RatedVisit& visit, Date start, double hours);

}  // namespace kv
