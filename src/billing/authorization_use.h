#pragma once
#include <optional>
#include <string>
#include <vector>

#include "session/session.h"

namespace kv {

/// What of an authorization is used: in the week or month of today, and in all. Hours.
struct AuthorizationUse {
    long sequence = 0;
    std::string client, clientName, payer, visitType;
    std::string per;  ///< "W" or "M"
    Date from, to;
    Date periodFrom, periodTo;  ///< the agency's week or the month
    double authorized = 0;      ///< in a period
    double scheduled = 0;       ///< in this one, by the visits that are not cancelled
    double worked = 0;          ///< in this one, by their actual hours
    double left = 0;            ///< of this one: what neither is worked nor still to be; below 0 for too much
    double totalAuthorized = 0;
    double totalUsed = 0;  ///< worked, or scheduled where a visit has no actual hours
    double totalLeft = 0;
    /// The last day it lasts: its To date, or the day before it at which the present pattern has used it up.
    Date lasts;
    bool runsOut = false;
};

/// Of one authorization; nothing where there is none. Throws EngineError, as the other does.
std::optional<AuthorizationUse> UseOfAuthorization(Session& session, long sequence);
/// Of all active ones, or those of one client, by client and From date.
std::vector<AuthorizationUse> UseOfAuthorizations(Session& session, const std::string& client);

}  // namespace kv
