#pragma once
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "billing/authorizations.h"
#include "clients/list_move.h"
#include "session/session.h"

namespace kv {

/// A shift of the agency: its clock window, empty where the agency does not use it, and the column of its
/// rate.
struct ShiftWindow {
    const char* rate = "";     ///< "rate1"
    const char* meaning = "";  ///< "Bill Rate for Weekday, day shift"
    std::optional<Date> start;
    Value stop;
};
/// Weekday day, evening and night, then weekend day, evening and night. Throws EngineError, as everything
/// below does.
std::array<ShiftWindow, 6> ShiftWindows(Session& session);

/// The entries of "View Rates for this Payer:", the client himself first.
std::vector<std::string> RatePayers(Session& session);
/// The payer of the client's first authorization, or "Client".
std::string FirstPayer(Session& session, const std::string& client);
/// The rate rows that are looked at: the client's own are updatable, a payer's are to be read.
Recordset OpenRates(Session& session, const std::string& payer, const std::string& client);

/// What leaving txtVISitTYPE finds: the description to show, and whether the type may be billed.
struct BilledCallType {
    bool valid = false;
    std::string code;  ///< emptied where there is no such type
    std::string description;
};
BilledCallType CheckBilledCallType(Session& session, const std::string& code);
/// The call types that FRMIdFind offers for a rate: those that are billed.
std::vector<LookupItem> LoadBilledCallTypes(Session& session);

/// The keys of FRMbillRates. Each speaks to the operator and answers whether it did something.
bool SaveRate(Session& session, Recordset& rates, const std::string& client);
bool DeleteRate(Session& session, Recordset& rates, const std::string& client);
bool MoveRate(Session& session, Recordset& rates, ListMove move);

/// CMDsave_Rates: replaces the client's rates by those of another one, once the operator agrees.
bool PasteRates(Session& session, const std::string& client, const std::string& other);

/// FRMcopy: the billed call types that the client has no rate for, and the copying of one rate to several of
/// them. Answers how many rows were added.
std::vector<LookupItem> CallTypesWithoutRate(Session& session, const std::string& client);
long CopyRate(Session& session, const std::string& client, const std::string& fromCode,
              const std::vector<LookupItem>& to);

/// The statement of the history of a client's rates.
std::string RateHistoryStatement(const std::string& client);

}  // namespace kv
