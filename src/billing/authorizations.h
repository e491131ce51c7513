#pragma once
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "clients/lookups.h"
#include "clients/new_client.h"
#include "session/session.h"

namespace kv {

/// The payer by whose name the client himself is meant, and his bill code.
inline constexpr const char* kClientPays = "Client";
inline constexpr long kClientBillCode = 1;

/// Which of a client's authorizations the list holds.
struct AuthorizationLimit {
    std::string client;
    bool onlyActive = false;
    /// The main screen's filter, and the day above which its migration check lists what is not active.
    std::string filter;
    Date above;
};
/// RequeryAuthorizations: the rows, updatable. Throws EngineError, as everything below does.
Recordset OpenAuthorizations(Session& session, const AuthorizationLimit& limit);

/// Moves to the authorization that is in force today, or to the last one. Tells of each damaged row (without
/// a payer's code) on the way.
void MoveToAuthorizationInForce(Session& session, Recordset& authorizations);

/// The four states, as CMBAuthStatus lists them; the row keeps the first letter.
inline constexpr std::array<std::string_view, 4> kAuthorizationStates = {"Active", "Closed", "Suspended",
                                                                         "Deceased"};
inline constexpr std::array<std::string_view, 3> kHourCodes = {"Regular", "Bill Only", "Pay Only"};
inline constexpr std::array<std::string_view, 3> kCaregiverTypes = {"FIELD", "STAFFING", "BOTH"};
inline constexpr std::array<std::string_view, 3> kCobillingPeriods = {"Per Day", "Per Week", "Per Month"};
/// The item of a list whose first letter is that of the code; empty where none is.
std::string_view ItemOfLetter(const std::string_view* items, std::size_t count, std::string_view letter);
template <std::size_t N>
std::string_view ItemOfLetter(const std::array<std::string_view, N>& items, std::string_view letter) {
    return ItemOfLetter(items.data(), N, letter);
}
/// The letter that a row keeps of "Per Day", "Per Week", "Per Month"; empty for any other text.
std::string PeriodLetter(std::string_view period);

/// How client and payer share the bill, in the order of their types 0 to 6.
struct CobillingType {
    std::string_view text;
    std::string_view caption;  ///< of NUMcoBilling; empty where there is no amount
    std::string_view format;
    double largest = 0;
    bool perPeriod = false;   ///< CMBwhen_Cobilling is asked
    bool percentage = false;  ///< CMDcalc_Percentage helps
    std::string_view zeroMessage;
};
const std::array<CobillingType, 7>& CobillingTypes();

/// The call types that may be authorized with a payer, known by their code since two may bear one name: those
/// that the payer has rates for; for the client his own rates, or where he has none every call type that is
/// billed.
std::vector<LookupItem> CallTypesOfPayer(Session& session, const PayerItem& payer, const std::string& client);

/// A row of Visit_types.
struct CallType {
    std::string code;
    std::string description;
    std::string hourCode;  ///< the item of kHourCodes that its payroll_or_billing means; empty for none
};
/// By its code or by its description; an empty code where there is none.
CallType CallTypeOfCode(Session& session, const std::string& code);
CallType CallTypeOfDescription(Session& session, const std::string& description);

}  // namespace kv
